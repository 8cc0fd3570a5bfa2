#include "platform/sdl/sdldialogs.h"

#include "platform/host/latin1.h"
#include "platform/sdl/filechooser.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace platform {

namespace {

constexpr int kGoOn = 0;
constexpr int kStop = 1;
constexpr int kCheckBox = 2;

std::vector<SDL_MessageBoxButtonData> buttonData(const std::vector<std::string>& texts,
                                                 int closing) {
    std::vector<SDL_MessageBoxButtonData> data;
    for (const std::string& text : texts) {
        const int index = static_cast<int>(data.size());
        Uint32 flags = index == 0 ? SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT : 0;
        if (index == closing) flags |= SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT;
        data.push_back({flags, index, text.c_str()});
    }
    return data;
}

SDL_MessageBoxFlags flagsOf(std::uint32_t style) {
    const bool stop = (style & boxstyle::kIconStop) != 0;
    return stop ? SDL_MESSAGEBOX_ERROR : SDL_MESSAGEBOX_INFORMATION;
}

} // namespace

int SdlDialogs::show(const Box& box) {
    display_.flush();
    const auto label = [this](std::string_view word) {
        return utf8FromLatin1(labelOf(labels_, word));
    };
    std::vector<std::string> texts;
    std::ranges::transform(box.buttons, std::back_inserter(texts), label);
    const std::vector<SDL_MessageBoxButtonData> buttons = buttonData(texts, box.closing);
    const std::string caption = label(box.caption);
    const std::string text = utf8FromLatin1(box.text);
    SDL_MessageBoxData data{};
    data.flags = static_cast<Uint32>(box.flags) | SDL_MESSAGEBOX_BUTTONS_LEFT_TO_RIGHT;
    data.window = display_.windowIsShown() ? display_.window() : nullptr;
    data.title = caption.c_str();
    data.message = text.c_str();
    data.numbuttons = static_cast<int>(buttons.size());
    data.buttons = buttons.data();
    int pressed = -1;
    if (SDL_ShowMessageBox(&data, &pressed) != 0) pressed = 0; // nobody can be asked
    events_.dropInput();
    display_.windowDamaged();
    return pressed < 0 ? box.closing : pressed;
}

Button SdlDialogs::messageBox(std::string_view text, std::string_view caption,
                              std::uint32_t style) {
    const std::span<const Button> buttons = boxButtons(style);
    Box box{flagsOf(style), caption, text, {}, static_cast<int>(closingButton(buttons))};
    for (const Button button : buttons) box.buttons.emplace_back(buttonText(button));
    return buttons[static_cast<std::size_t>(show(box))];
}

WarningAnswer SdlDialogs::warning(const WarningRequest& request) {
    bool checked = false;
    int pressed = kCheckBox;
    while (true) {
        const std::string mark = checked ? "[x] " : "[ ] ";
        pressed = show({SDL_MESSAGEBOX_WARNING,
                        request.caption,
                        request.text,
                        {request.goOn, request.stop, mark + request.checkBox},
                        kStop});
        if (pressed != kCheckBox) return {.goOn = pressed == kGoOn, .checked = checked};
        checked = !checked;
    }
}

std::string SdlDialogs::openFile(std::string_view title, std::string_view pattern,
                                 std::size_t limit) {
    display_.flush();
    const auto stillWaiting = [] {
        SDL_PumpEvents();
        return SDL_HasEvent(SDL_QUIT) == SDL_FALSE;
    };
    const FileQuestion question{utf8FromLatin1(title), utf8FromLatin1(pattern),
                                files_.hostPath(files_.currentDirectory()).value_or("")};
    const auto answer = chooseFile(question, stillWaiting);
    events_.dropInput();
    display_.windowDamaged();
    const auto* hostPath = std::get_if<std::string>(&answer);
    if (!hostPath) {
        messageBox("Choosing a file needs zenity or kdialog to be installed.", title,
                   boxstyle::kOk);
        return {};
    }
    if (hostPath->empty()) return {};
    std::string path = files_.programPath(*hostPath).value_or("");
    return path.size() < limit ? path : std::string();
}

} // namespace platform
