// The buttons of a message box, named by its style.
#pragma once

#include "platform/dialogs.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace platform {

/// From left to right; the first is the default one, the last is what closing the box means. A
/// style whose buttons are not known has OK only.
[[nodiscard]] std::span<const Button> boxButtons(std::uint32_t style);

[[nodiscard]] std::string_view buttonText(Button button);

} // namespace platform
