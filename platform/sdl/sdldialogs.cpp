#include "platform/sdl/sdldialogs.h"

#include "formats/base/latin1.h"
#include "platform/sdl/filechooser.h"
#include "platform/sdl/shownpanel.h"

#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

namespace {

constexpr int kGoOn = 0;
constexpr int kStop = 1;

} // namespace

/// What was typed ahead is not meant for the box, nor what happens in it for the program.
SdlDialogs::Answer SdlDialogs::show(BoxContents contents) {
    contents.caption = labelOf(labels_, contents.caption);
    for (std::string& button : contents.buttons) button = labelOf(labels_, button);
    const std::vector<std::string_view> buttons(contents.buttons.begin(), contents.buttons.end());
    BoxPanel panel(contents, display_.shown().bounds());
    events_.dropInput();
    if (events_.quitWaits()) {
        panel.close();
    } else {
        spoken_.boxOpens(contents.text, buttons);
        waitForAnswer(panel);
        spoken_.boxCloses();
    }
    events_.dropInput();
    return {*panel.answer(), panel.isChecked()};
}

void SdlDialogs::waitForAnswer(BoxPanel& panel) {
    const ShownPanel shown(display_, panel);
    while (!panel.answer()) {
        display_.flush();
        if (const auto input = events_.waitForInput()) {
            const std::string before = panel.focusLabel();
            panel.handle(*input);
            if (panel.focusLabel() != before) spoken_.movedTo(panel.focusLabel());
            display_.lay(SdlDisplay::Layer::Box, &panel);
        }
        if (events_.quitWaits()) panel.close();
    }
}

Button SdlDialogs::messageBox(std::string_view text, std::string_view caption,
                              std::uint32_t style) {
    const std::span<const Button> buttons = boxButtons(style);
    BoxContents box{.caption = std::string(caption),
                    .text = std::string(text),
                    .buttons = {},
                    .closing = static_cast<int>(closingButton(buttons)),
                    .checkBox = {},
                    .isError = (style & boxstyle::kIconStop) != 0};
    for (const Button button : buttons) box.buttons.emplace_back(buttonText(button));
    return buttons[static_cast<std::size_t>(show(std::move(box)).button)];
}

/// Who ends the program with the box open has not decided anything for good.
WarningAnswer SdlDialogs::warning(const WarningRequest& request) {
    const Answer answer = show({.caption = request.caption,
                                .text = request.text,
                                .buttons = {request.goOn, request.stop},
                                .closing = kStop,
                                .checkBox = request.checkBox});
    return {.goOn = answer.button == kGoOn, .checked = answer.checked && !events_.quitWaits()};
}

std::string SdlDialogs::openFile(std::string_view title, std::string_view pattern,
                                 std::size_t limit) {
    if (events_.isKiosk()) return {}; // the chooser shows all that the machine has
    const auto stillWaiting = [this] {
        events_.collect();
        display_.flush();
        return !events_.quitWaits();
    };
    const FileQuestion question{formats::utf8FromLatin1(title), formats::utf8FromLatin1(pattern),
                                files_.hostPath(files_.currentDirectory()).value_or("")};
    const auto answer = chooseFile(question, stillWaiting);
    events_.dropInput();
    const auto* hostPath = std::get_if<std::string>(&answer);
    if (!hostPath) {
        messageBox("Choosing a file needs zenity or kdialog to be installed.", title,
                   boxstyle::kOk);
        return {};
    }
    if (hostPath->empty()) return {};
    std::string path = files_.programPath(*hostPath).value_or("");
    if (path.size() >= limit) return {};
    files_.admit(path);
    return path;
}

} // namespace platform
