// Which animation and sequence a speech is, and which sounds are streamed while it is heard.
//
// A speech is a sound entry in a sequence of an animation; its id is that of the sound. What was
// read of an animation is kept for all characters until the end of the application.
//
// `audio.map` names sounds of sequences that shall be read piece by piece: long ones. They are told
// to the resource layer while their sequence is spoken. Its sequences count from 1, as in scripts.
#pragma once

#include "formats/map/audiomap.h"
#include "ominstalled.h"
#include "omlink.h"

#include <array>
#include <map>
#include <utility>
#include <vector>

struct RSpeechRecord {
    int speech;
    int animation; ///< resource id
    int sequence;  ///< from 0
};

/// The memory of all that. There is one while there are characters.
class RSpeechRecords : public OMInstalled<RSpeechRecords> {
  public:
    using SoundLink = OMLinkTo<void(int sound)>;

    /// Told when a sound begins to be a streamed one, and when it is none any more.
    RSpeechRecords(SoundLink begin, SoundLink end);

    /// The speeches of an animation in the order of its sequences; null when it cannot be loaded.
    [[nodiscard]] const std::vector<RSpeechRecord>* of(int animation);
    /// All that was read of resources; who is spoken for at the moment is not.
    void forgetResources();
    /// Adds a line of `audio.map`.
    void addSequenceSound(const formats::map::SequenceSound& sound);

    /// Whether the animations of speeches are kept by their character for the next time.
    bool caching = false;
    /// Told of each speech: the first for the selector 0, the second for any other.
    std::array<SoundLink, 2> listeners;

  private:
    friend class RStreamedSpeech;

    std::map<int, std::vector<RSpeechRecord>> speeches_; ///< by animation
    std::multimap<std::pair<int, int>, int> sounds_;     ///< by animation and sequence, from 1
    std::map<int, int> streams_;                         ///< how many want a sound streamed
    SoundLink begin_;
    SoundLink end_;
};

/// The sounds of a sequence are streamed while this lives; a sound of several until the last of
/// them goes.
class RStreamedSpeech {
  public:
    /// `sequence` counts from 0.
    RStreamedSpeech(int animation, int sequence);
    ~RStreamedSpeech();
    RStreamedSpeech& operator=(RStreamedSpeech&&) = delete;

  private:
    std::vector<int> sounds_;
};
