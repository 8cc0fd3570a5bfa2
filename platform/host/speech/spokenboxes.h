// What of the program's own boxes is spoken: the text, what stands on the buttons, and the one that
// the keys are on.
#pragma once

#include "platform/host/screen/boxbuttons.h"
#include "platform/speech.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

class SpokenBoxes {
  public:
    /// `labels` are what people see in place of words, `language` is theirs. The speech must
    /// outlive it.
    SpokenBoxes(Speech& speech, ButtonLabels labels, std::string language)
        : speech_(speech), labels_(std::move(labels)), language_(std::move(language)) {}

    /// `buttons` are words or labels, the default one first.
    void boxOpens(std::string_view text, std::span<const std::string_view> buttons);
    void movedTo(std::string_view button);
    void boxCloses() { speech_.hush(); }

  private:
    Speech& speech_;
    ButtonLabels labels_;
    std::string language_;
};

} // namespace platform
