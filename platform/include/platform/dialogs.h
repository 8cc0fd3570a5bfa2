// Boxes that stop the program until a person answers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// Bits of a message box's style, as the program's texts of the log and the tests show them.
namespace boxstyle {
inline constexpr std::uint32_t kOk = 0x0;
inline constexpr std::uint32_t kOkCancel = 0x1;
inline constexpr std::uint32_t kYesNoCancel = 0x3;
inline constexpr std::uint32_t kYesNo = 0x4;
inline constexpr std::uint32_t kRetryCancel = 0x5;
inline constexpr std::uint32_t kButtonMask = 0xF;
inline constexpr std::uint32_t kCancelFirst = 0x100; ///< of RetryCancel: Cancel is the default
inline constexpr std::uint32_t kIconStop = 0x10;
inline constexpr std::uint32_t kSystemModal = 0x1000;
inline constexpr std::uint32_t kTaskModal = 0x2000;
} // namespace boxstyle

enum class Button : std::uint8_t { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct WarningRequest {
    std::string caption;
    std::string text;
    std::string checkBox; ///< label of the check box
    std::string goOn;     ///< text of the first button, the default one
    std::string stop;     ///< text of the second button
};

struct WarningAnswer {
    bool goOn = true;
    bool checked = false;
};

/// All texts are Latin-1.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    /// Shows a box with the buttons that `style` names (boxstyle::k...) and returns the one
    /// pressed.
    virtual Button messageBox(std::string_view text, std::string_view caption,
                              std::uint32_t style) = 0;

    /// A warning with a check box and two buttons.
    virtual WarningAnswer warning(const WarningRequest& request) = 0;

    /// Lets the person choose an existing file that matches `pattern` ("*.mps"). The path, in the
    /// form of `Files`, is empty when nothing was chosen or when it has `limit` bytes or more.
    virtual std::string openFile(std::string_view title, std::string_view pattern,
                                 std::size_t limit) = 0;
};

} // namespace platform
