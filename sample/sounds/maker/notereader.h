// Reads the notes of one voice, word by word.
#pragma once

#include "score.h"

#include <string>
#include <string_view>
#include <vector>

class NoteReader {
  public:
    static constexpr std::size_t kMaxNotes = 20000;
    static constexpr std::int64_t kMaxTicks = 4096 * kTicksPerBeat;
    static constexpr std::size_t kMaxNesting = 16;

    /// Notes are added to `voice`, from `start` on. Bars of `barTicks` are checked; 0: none are.
    NoteReader(Voice& voice, std::int64_t start, std::int64_t barTicks)
        : voice_(voice), now_(start), barTicks_(barTicks) {
        voice_.end = start;
    }

    /// What is wrong with the word, or an empty text.
    [[nodiscard]] std::string take(std::string_view word);
    /// What is wrong with the end of the voice.
    [[nodiscard]] std::string finish() const;

  private:
    struct Repeat {
        std::size_t note; ///< the first one in it
        std::int64_t start;
    };

    std::string takeNote(std::string_view word);
    std::string takeBar() const;
    std::string open();
    std::string close(std::string_view times);
    std::string advance(std::int64_t ticks);

    Voice& voice_;
    std::int64_t now_;
    std::int64_t barTicks_;
    std::int64_t length_ = kTicksPerBeat;
    int volume_ = 100;
    std::vector<Repeat> repeats_;
};

/// Ticks of a length in beats: "2", "1.5", "3/4"; 0 when it is none.
[[nodiscard]] std::int64_t readBeats(std::string_view text);
/// A whole number from `low` to `high`, or `low` - 1.
[[nodiscard]] int readNumber(std::string_view text, int low, int high);
