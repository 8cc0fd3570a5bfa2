#include "platform/host/speech/spokenboxes.h"

namespace platform {

void SpokenBoxes::boxOpens(std::string_view text, std::span<const std::string_view> buttons) {
    speech_.speak(text, language_, Speech::Turn::AtOnce);
    for (const std::string_view button : buttons)
        speech_.speak(labelOf(labels_, button), language_, Speech::Turn::Next);
}

void SpokenBoxes::movedTo(std::string_view button) {
    speech_.speak(labelOf(labels_, button), language_, Speech::Turn::AtOnce);
}

} // namespace platform
