// The buttons of a message box, named by its style.
#pragma once

#include "platform/dialogs.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// From left to right; the first is the default one. A style whose buttons are not known has OK
/// only.
[[nodiscard]] std::span<const Button> boxButtons(std::uint32_t style);

/// The index of what closing the box means: Cancel, where there is none the last one.
[[nodiscard]] std::size_t closingButton(std::span<const Button> buttons);

/// The word for a button in input files and reports, in every language.
[[nodiscard]] std::string_view buttonText(Button button);

/// What people see in place of such words, Latin-1.
using ButtonLabels = std::map<std::string, std::string, std::less<>>;
/// The word itself when there is no label for it.
[[nodiscard]] std::string labelOf(const ButtonLabels& labels, std::string_view word);

} // namespace platform
