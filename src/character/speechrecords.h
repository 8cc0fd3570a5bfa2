// Which animation and sequence a speech is, and which sounds are streamed while it is heard.
//
// A speech is a sound entry in a sequence of an animation; its id is that of the sound. What was
// read of an animation is kept for all characters until the end of the application.
//
// `audio.map` names sounds of sequences that shall be read piece by piece: long ones. They are told
// to the resource layer while their sequence is spoken. Its sequences count from 1, as in scripts.
#pragma once

#include "formats/map/audiomap.h"
#include "omlink.h"

#include <vector>

struct RSpeechRecord {
    int speech;
    int animation; ///< resource id
    int sequence;  ///< from 0
};

/// The process-wide memory of all that. Main thread only.
class RSpeechRecords {
  public:
    using SoundLink = OMLinkTo<void(int sound)>;

    /// The speeches of an animation in the order of its sequences; null when it cannot be loaded.
    /// They stay until `clear`.
    [[nodiscard]] static const std::vector<RSpeechRecord>* of(int animation);
    /// Adds a line of `audio.map`.
    static void addSequenceSound(const formats::map::SequenceSound& sound);
    /// Told when a sound begins to be a streamed one, and when it is none any more.
    static void setStreamLinks(SoundLink begin, SoundLink end);
    /// Forgets everything, and the links.
    static void clear();
};

/// The sounds of a sequence are streamed while this lives; a sound of several until the last of
/// them goes.
class RStreamedSpeech {
  public:
    /// `sequence` counts from 0.
    RStreamedSpeech(int animation, int sequence);
    ~RStreamedSpeech();
    RStreamedSpeech(const RStreamedSpeech&) = delete;
    RStreamedSpeech& operator=(const RStreamedSpeech&) = delete;

  private:
    std::vector<int> sounds_;
};
