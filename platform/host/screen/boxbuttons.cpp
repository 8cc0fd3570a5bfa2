#include "platform/host/screen/boxbuttons.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

constexpr std::array kOk{Button::Ok};
constexpr std::array kOkCancel{Button::Ok, Button::Cancel};
constexpr std::array kYesNoCancel{Button::Yes, Button::No, Button::Cancel};
constexpr std::array kYesNo{Button::Yes, Button::No};
constexpr std::array kRetryCancel{Button::Retry, Button::Cancel};
constexpr std::array kCancelRetry{Button::Cancel, Button::Retry};

} // namespace

std::span<const Button> boxButtons(std::uint32_t style) {
    switch (style & boxstyle::kButtonMask) {
    case boxstyle::kOkCancel: return kOkCancel;
    case boxstyle::kYesNoCancel: return kYesNoCancel;
    case boxstyle::kYesNo: return kYesNo;
    case boxstyle::kRetryCancel:
        return (style & boxstyle::kCancelFirst) != 0 ? std::span<const Button>(kCancelRetry)
                                                     : std::span<const Button>(kRetryCancel);
    default: return kOk;
    }
}

std::size_t closingButton(std::span<const Button> buttons) {
    const auto cancel = std::ranges::find(buttons, Button::Cancel);
    return static_cast<std::size_t>(cancel - buttons.begin()) - (cancel == buttons.end() ? 1 : 0);
}

std::string_view buttonText(Button button) {
    switch (button) {
    case Button::Ok: return "OK";
    case Button::Cancel: return "Cancel";
    case Button::Retry: return "Retry";
    case Button::Yes: return "Yes";
    case Button::No: return "No";
    }
    return {};
}

std::string labelOf(const ButtonLabels& labels, std::string_view word) {
    const auto found = labels.find(word);
    return found == labels.end() ? std::string(word) : found->second;
}

} // namespace platform
