#include "platform/headless/headlessdialogs.h"

#include "formats/base/latin1.h"
#include "platform/host/screen/boxbuttons.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <ostream>
#include <utility>
#include <vector>

namespace platform {

namespace {

std::string hexadecimal(std::uint32_t value) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    return "0x" + std::string(digits.data(), end);
}

} // namespace

HeadlessDialogs::HeadlessDialogs(const Timeline& timeline, const VirtualClock& clock,
                                 TimedEvents& events, HostFiles& files, HeadlessDesk& desk,
                                 SpokenBoxes& spoken, Notices& notices, std::ostream& notes)
    : clock_(clock), events_(events), files_(files), desk_(desk), spoken_(spoken),
      notices_(notices), notes_(notes) {
    for (const TimelineEvent& event : timeline) {
        if (const auto* answer = std::get_if<TimelineAnswer>(&event.what)) {
            waiting_.push_back({event.timeMs, *answer});
        }
    }
}

std::optional<TimelineAnswer> HeadlessDialogs::nextAnswer() {
    events_.boxOpens();
    if (waiting_.empty() || waiting_.front().timeMs > clock_.loopMs()) return std::nullopt;
    TimelineAnswer answer = std::move(waiting_.front().answer);
    waiting_.pop_front();
    if (answer.closesWindow) events_.closeWindow();
    return answer;
}

std::size_t HeadlessDialogs::choose(std::string_view caption,
                                    std::span<const std::string_view> buttons, std::size_t closing,
                                    const std::optional<TimelineAnswer>& answer) {
    if (!answer) return 0;
    if (answer->closesWindow) return closing;
    const auto isMeant = [&](std::string_view text) {
        return formats::equalIgnoringCase(text, answer->button);
    };
    const auto found = std::ranges::find_if(buttons, isMeant);
    if (found != buttons.end()) return static_cast<std::size_t>(found - buttons.begin());
    notes_ << "the box \"" << formats::utf8FromLatin1(caption) << "\" has no button \""
           << formats::utf8FromLatin1(answer->button) << "\"; it is answered with \""
           << formats::utf8FromLatin1(buttons[0]) << '"' << std::endl;
    return 0;
}

Button HeadlessDialogs::messageBox(std::string_view text, std::string_view caption,
                                   std::uint32_t style) {
    const std::span<const Button> buttons = boxButtons(style);
    std::vector<std::string_view> texts;
    std::ranges::transform(buttons, std::back_inserter(texts), buttonText);
    const std::size_t chosen = choose(caption, texts, closingButton(buttons), nextAnswer());
    desk_.boxShown(text);
    spoken_.boxOpens(text, texts);
    notices_.line("box", {caption, hexadecimal(style), text, texts[chosen]});
    return buttons[chosen];
}

WarningAnswer HeadlessDialogs::warning(const WarningRequest& request) {
    const std::array<std::string_view, 2> texts{request.goOn, request.stop};
    const std::optional<TimelineAnswer> answer = nextAnswer();
    const std::size_t chosen = choose(request.caption, texts, 1, answer);
    const bool checked = answer && answer->checked;
    desk_.boxShown(request.text);
    spoken_.boxOpens(request.text, texts);
    notices_.line("dialog", {request.caption, request.text, texts[chosen],
                             checked ? "checked" : "unchecked"});
    return {.goOn = chosen == 0, .checked = checked};
}

std::string HeadlessDialogs::openFile(std::string_view title, std::string_view pattern,
                                      std::size_t limit) {
    std::string path = chosenFile(title, limit);
    notices_.line("dialog", {title, pattern, path, "unchecked"});
    return path;
}

std::string HeadlessDialogs::chosenFile(std::string_view title, std::size_t limit) {
    const std::optional<TimelineAnswer> answer = nextAnswer();
    if (!answer || answer->closesWindow ||
        formats::equalIgnoringCase(answer->button, buttonText(Button::Cancel)))
        return {};
    std::string path = files_.fullPath(answer->button);
    files_.admit(path);
    if (files_.exists(path) && path.size() < limit) return path;
    notes_ << "the file \"" << formats::utf8FromLatin1(answer->button)
           << "\" cannot be chosen in the dialog \"" << formats::utf8FromLatin1(title)
           << "\"; it is cancelled" << std::endl;
    return {};
}

} // namespace platform
