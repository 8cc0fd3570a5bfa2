#include "platform/host/screen/consolepanel.h"

#include "formats/base/latin1.h"
#include "platform/host/screen/panelpaint.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace platform {

namespace {

// Colours of the picture.
enum : std::uint8_t {
    kConsoleBack,
    kConsoleBar,
    kConsoleTab, ///< of the view that is shown, and of the line that is typed
    kConsoleInk,
    kConsoleDim,
    kConsoleWarning,
    kConsoleRun,
    kConsoleResult,
    kConsoleChosen,
};
constexpr Rgb kConsoleColours[] = {{22, 24, 34},    {44, 50, 70},    {70, 80, 112},
                                   {240, 238, 230}, {160, 166, 184}, {255, 170, 110},
                                   {140, 200, 255}, {180, 230, 160}, {56, 92, 60}};

// In pixels.
constexpr int kConsoleMargin = 6;
constexpr int kBarHeight = 20;
constexpr int kFieldHeight = 20;
constexpr int kTabPadding = 8;
constexpr int kMarkWidth = 3;
constexpr int kCaretWidth = 2;
constexpr int kLeastHeight = kBarHeight + kFieldHeight + 2 * paint::kLine;

// Columns begin at these parts of the width, in per cent.
constexpr int kTypeColumn = 32;
constexpr int kValueColumn = 54;

constexpr std::string_view kRunPrompt = "> ";
constexpr std::string_view kFindPrompt = "find: ";

std::uint8_t colourOf(ConsolePanel::Told kind) {
    switch (kind) {
    case ConsolePanel::Told::Warning: return kConsoleWarning;
    case ConsolePanel::Told::Run: return kConsoleRun;
    case ConsolePanel::Told::Result: return kConsoleResult;
    case ConsolePanel::Told::Said: break;
    }
    return kConsoleInk;
}

/// Other control characters than line ends would be seen as boxes.
std::string inOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

bool isObject(const InspectedVariable& variable) {
    constexpr std::string_view kPlain[] = {"number", "text", "procedure"};
    return std::ranges::find(kPlain, variable.type) == std::end(kPlain);
}

bool hasPart(std::string_view text, std::string_view lowerPart) {
    return formats::lowerLatin1(text).find(lowerPart) != std::string::npos;
}

} // namespace

const std::array<Rgb, kPaletteSize>& ConsolePanel::palette() const {
    static const auto colours = paint::paletteOf(kConsoleColours);
    return colours;
}

ConsolePanel::ConsolePanel(const Rect& screen) { fit(screen); }

void ConsolePanel::toggle() {
    open_ = !open_;
    changed_ = true;
}

void ConsolePanel::openMessages() {
    open_ = changed_ = true;
    below_ = 0;
    show(View::Messages);
}

void ConsolePanel::fit(const Rect& screen) {
    if (screen == screen_) return;
    screen_ = screen;
    layOut();
}

void ConsolePanel::layOut() {
    const Rect& screen = screen_;
    const int height = std::min(std::max(screen.height() / 2, kLeastHeight), screen.height());
    const int top = atTop_ ? screen.top : screen.bottom - height;
    place_ = {screen.left, top, screen.right, top + height};
    picture_ = Surface(place_.width(), place_.height(), 8);
    below_ = firstVariable_ = firstProperty_ = 0;
    changed_ = true;
}

/// Below properties one line is kept for the last message, such as what came of the line.
Rect ConsolePanel::list() const {
    const int kept = view_ == View::Properties ? paint::kLine : 0;
    return {kConsoleMargin, kBarHeight + 2, picture_.width() - kConsoleMargin,
            picture_.height() - kFieldHeight - 2 - kept};
}

Rect ConsolePanel::field() const {
    return {0, picture_.height() - kFieldHeight, picture_.width(), picture_.height()};
}

int ConsolePanel::rows() const { return std::max(1, list().height() / paint::kLine); }

bool ConsolePanel::isInside(Point point) const { return paint::contains(place_, point); }

// ---------------------------------------------------------------------------- what is told

/// Who reads what came before goes on reading it.
void ConsolePanel::tell(Told kind, std::string_view text) {
    for (std::string& line : paint::brokenText(std::string(text), list().width() - kMarkWidth)) {
        lines_.push_back({kind, inOneLine(std::move(line))});
        if (below_ > 0) ++below_;
    }
    while (lines_.size() > kMostLines) lines_.pop_front();
    below_ = std::min(below_, lines_.size());
    changed_ = true;
}

void ConsolePanel::look(const Inspection* game) {
    const auto take = [this](auto& known, auto now) {
        if (known == now) return;
        known = std::move(now);
        changed_ = true;
    };
    if (view_ == View::Variables) {
        const auto before = found();
        const std::string name = selected_ < before.size() ? before[selected_]->name : "";
        take(variables_, game ? game->variables() : decltype(variables_)());
        // The choice stays with its variable when others come and go.
        const auto now = found();
        const auto again = std::ranges::find(now, name, &InspectedVariable::name);
        moveTo(again == now.end() ? static_cast<std::ptrdiff_t>(selected_) : again - now.begin());
    } else if (view_ == View::Properties) {
        take(properties_, game ? game->properties(chosen_) : decltype(properties_)());
        scroll(0);
    }
}

std::vector<const InspectedVariable*> ConsolePanel::found() const {
    const std::string part = formats::lowerLatin1(filter_.text());
    std::vector<const InspectedVariable*> all;
    for (const InspectedVariable& variable : variables_)
        if (hasPart(variable.name, part) || hasPart(variable.type, part)) all.push_back(&variable);
    return all;
}

// ---------------------------------------------------------------------------- input

bool ConsolePanel::take(const Message& message) {
    switch (message.kind) {
    case Message::Kind::Key:
        if (!open_) return false;
        key(message.key); // may be its end
        return true;
    case Message::Kind::MouseDown:
    case Message::Kind::DoubleClick:
        holdsPress_ = open_ && isInside(message.position);
        gameHasPress_ = !holdsPress_;
        if (holdsPress_) pointerDown(message.position, message.kind == Message::Kind::DoubleClick);
        return holdsPress_;
    case Message::Kind::MouseUp: gameHasPress_ = false; return std::exchange(holdsPress_, false);
    case Message::Kind::MouseMove:
        return holdsPress_ || (open_ && !gameHasPress_ && isInside(message.position));
    default: return false;
    }
}

void ConsolePanel::key(const KeyPress& press) {
    const std::uint16_t code = press.code;
    const auto key = static_cast<Key>(code);
    changed_ = true;
    if (press.control && (key == Key::Up || key == Key::Down)) {
        atTop_ = key == Key::Up;
        return layOut();
    }
    switch (key) {
    case Key::Esc: return toggle();
    case Key::Tab: return show(static_cast<View>((static_cast<int>(view_) + 1) % 3));
    case Key::PageUp: return scroll(-rows());
    case Key::PageDown: return scroll(rows());
    default: break;
    }
    if (view_ == View::Variables)
        keyInVariables(code);
    else
        keyBesideLine(code);
}

void ConsolePanel::keyBesideLine(std::uint16_t code) {
    if (static_cast<Key>(code) != Key::Enter) return line_.key(code);
    std::string line = line_.take();
    if (!line.empty()) wanted_ = std::move(line);
}

void ConsolePanel::keyInVariables(std::uint16_t code) {
    switch (static_cast<Key>(code)) {
    case Key::Up: return moveTo(static_cast<std::ptrdiff_t>(selected_) - 1);
    case Key::Down: return moveTo(static_cast<std::ptrdiff_t>(selected_) + 1);
    case Key::Enter: return choose(selected_);
    default: filter_.key(code); moveTo(static_cast<std::ptrdiff_t>(selected_));
    }
}

void ConsolePanel::pointerDown(Point point, bool isDouble) {
    const Point at{point.x - place_.left, point.y - place_.top};
    changed_ = true;
    for (const Tab& tab : tabs())
        if (paint::contains(tab.area, at)) return show(tab.view);
    if (view_ != View::Variables || !paint::contains(list(), at)) return;
    const auto row = static_cast<std::size_t>((at.y - list().top) / paint::kLine);
    moveTo(static_cast<std::ptrdiff_t>(firstVariable_ + row));
    if (isDouble) choose(selected_);
}

void ConsolePanel::show(View view) {
    view_ = view;
    firstProperty_ = 0;
}

/// Anything but an object has no properties.
void ConsolePanel::choose(std::size_t row) {
    const auto all = found();
    if (row >= all.size() || !isObject(*all[row])) return;
    chosen_ = all[row]->name;
    properties_.clear();
    show(View::Properties);
}

/// To a variable of those found, as far as there are any, so that it is seen.
void ConsolePanel::moveTo(std::ptrdiff_t row) {
    const auto count = std::ssize(found());
    const auto seen = static_cast<std::ptrdiff_t>(rows());
    const std::ptrdiff_t chosen =
        std::clamp<std::ptrdiff_t>(row, 0, std::max<std::ptrdiff_t>(count - 1, 0));
    const std::ptrdiff_t last = std::max<std::ptrdiff_t>(count - seen, 0);
    auto first = std::min(static_cast<std::ptrdiff_t>(firstVariable_), last);
    first = std::clamp(first, std::max<std::ptrdiff_t>(chosen - seen + 1, 0), chosen);
    selected_ = static_cast<std::size_t>(chosen);
    firstVariable_ = static_cast<std::size_t>(first);
}

void ConsolePanel::scroll(int lines) {
    const auto last = [this](std::size_t all) {
        return std::max<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(all) - rows(), 0);
    };
    const auto moved = [](std::size_t from, std::ptrdiff_t by, std::ptrdiff_t most) {
        return static_cast<std::size_t>(
            std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(from) + by, 0, most));
    };
    switch (view_) {
    case View::Messages: below_ = moved(below_, -lines, last(lines_.size())); break;
    case View::Variables: moveTo(static_cast<std::ptrdiff_t>(selected_) + lines); break;
    case View::Properties: firstProperty_ = moved(firstProperty_, lines, last(properties_.size()));
    }
}

// ---------------------------------------------------------------------------- drawing

bool ConsolePanel::draw() {
    if (!std::exchange(changed_, false)) return false;
    if (!open_) return true;
    paint::fill(picture_, picture_.bounds(), kConsoleBack);
    drawBar();
    switch (view_) {
    case View::Messages: drawMessages(); break;
    case View::Variables: drawVariables(); break;
    case View::Properties: drawProperties(); break;
    }
    drawField();
    return true;
}

std::vector<ConsolePanel::Tab> ConsolePanel::tabs() const {
    std::vector<Tab> all{{View::Messages, "Messages", {}},
                         {View::Variables, "Variables", {}},
                         {View::Properties,
                          chosen_.empty() ? "Properties" : "Properties of " + inOneLine(chosen_),
                          {}}};
    int left = 0;
    for (Tab& tab : all) {
        const int right = left + paint::widthOf(tab.label) + 2 * kTabPadding;
        tab.area = {left, 0, right, kBarHeight};
        left = right;
    }
    return all;
}

void ConsolePanel::drawBar() {
    paint::fill(picture_, {0, 0, picture_.width(), kBarHeight}, kConsoleBar);
    int left = 0;
    for (const Tab& tab : tabs()) {
        const bool isShown = tab.view == view_;
        if (isShown) paint::fill(picture_, tab.area, kConsoleTab);
        paint::writeCentred(picture_, tab.area, tab.label, isShown ? kConsoleInk : kConsoleDim);
        left = tab.area.right;
    }
    const std::string_view help = view_ == View::Variables
                                      ? "Enter: its properties   Tab: next view   Esc: close"
                                      : "Enter: run   Tab: next view   Esc: close";
    const int from = picture_.width() - kConsoleMargin - paint::widthOf(help);
    if (from <= left) return;
    paint::writeCentred(picture_, {from, 0, picture_.width() - kConsoleMargin, kBarHeight}, help,
                        kConsoleDim);
}

/// The last one stands at the bottom, as long as nobody has scrolled.
void ConsolePanel::drawMessages() {
    const Rect area = list();
    const auto seen = static_cast<std::size_t>(rows());
    const std::size_t end = lines_.size() - std::min(below_, lines_.size());
    const std::size_t first = end - std::min(end, seen);
    Point at{area.left, area.top};
    for (std::size_t k = first; k < end; ++k, at.y += paint::kLine)
        paint::write(picture_, area, at, lines_[k].text, colourOf(lines_[k].kind));
    drawMark(first, lines_.size());
}

void ConsolePanel::drawVariables() {
    const Rect area = list();
    const auto all = found();
    if (all.empty())
        paint::write(picture_, area, {area.left, area.top},
                     filter_.text().empty() ? "No variable holds anything."
                                            : "No name or class has this in it.",
                     kConsoleDim);
    const auto column = [&](int percent) { return area.left + area.width() * percent / 100; };
    const auto last = std::min(all.size(), firstVariable_ + static_cast<std::size_t>(rows()));
    int y = area.top;
    for (std::size_t k = firstVariable_; k < last; ++k, y += paint::kLine) {
        const InspectedVariable& variable = *all[k];
        if (k == selected_)
            paint::fill(picture_, {0, y, area.right - kMarkWidth, y + paint::kLine},
                        kConsoleChosen);
        const auto write = [&](int from, int to, const std::string& text, std::uint8_t colour) {
            paint::write(picture_, {from, area.top, to - kMarkWidth, area.bottom}, {from, y},
                         inOneLine(text), colour);
        };
        write(area.left, column(kTypeColumn), variable.name, kConsoleInk);
        write(column(kTypeColumn), column(kValueColumn), variable.type, kConsoleDim);
        write(column(kValueColumn), area.right, variable.value, kConsoleResult);
    }
    drawMark(firstVariable_, all.size());
}

void ConsolePanel::drawProperties() {
    const Rect area = list();
    if (properties_.empty()) {
        const std::string text = chosen_.empty()
                                     ? "Choose an object among the variables with Enter."
                                     : inOneLine(chosen_) + " holds no object with properties.";
        paint::write(picture_, area, {area.left, area.top}, text, kConsoleDim);
    }
    const int values = area.left + area.width() * kTypeColumn / 100;
    const auto last =
        std::min(properties_.size(), firstProperty_ + static_cast<std::size_t>(rows()));
    int y = area.top;
    for (std::size_t k = firstProperty_; k < last; ++k, y += paint::kLine) {
        const InspectedProperty& property = properties_[k];
        paint::write(picture_, {area.left, area.top, values - kMarkWidth, area.bottom},
                     {area.left, y}, property.name, kConsoleInk);
        paint::write(picture_, {values, area.top, area.right - kMarkWidth, area.bottom},
                     {values, y}, inOneLine(property.value), kConsoleResult);
    }
    drawMark(firstProperty_, properties_.size());
    if (!lines_.empty())
        paint::write(picture_, picture_.bounds(), {area.left, area.bottom}, lines_.back().text,
                     colourOf(lines_.back().kind));
}

/// The part of the line around the caret.
void ConsolePanel::drawField() {
    const bool finds = view_ == View::Variables;
    const InputLine& input = finds ? filter_ : line_;
    const Rect area = field();
    paint::fill(picture_, area, kConsoleTab);
    const int top = area.top + (kFieldHeight - paint::kLine) / 2;
    const std::string_view prompt = finds ? kFindPrompt : kRunPrompt;
    paint::write(picture_, area, {kConsoleMargin, top}, prompt, kConsoleRun);
    const Rect room{kConsoleMargin + paint::widthOf(prompt), area.top, area.right - kConsoleMargin,
                    area.bottom};
    const int caret = paint::widthOf(std::string_view(input.text()).substr(0, input.caret()));
    const int left = room.left - std::max(0, caret + kCaretWidth - room.width());
    paint::write(picture_, room, {left, top}, input.text(), kConsoleInk);
    paint::fill(picture_, {left + caret, area.top + 2, left + caret + kCaretWidth, area.bottom - 2},
                kConsoleInk);
}

void ConsolePanel::drawMark(std::size_t first, std::size_t all) {
    const int seen = rows();
    if (all <= static_cast<std::size_t>(seen)) return;
    const Rect area = list();
    paint::scrollMark(picture_, {area.right - kMarkWidth, area.top, area.right, area.bottom},
                      static_cast<int>(first), seen, static_cast<int>(all), kConsoleBar,
                      kConsoleDim);
}

} // namespace platform
