#include "platform/host/screen/boxpanel.h"

#include "platform/host/faces/systemfont.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace platform {

namespace {

// Colours of the picture.
enum : std::uint8_t {
    kBoxPaper,
    kBoxInk,
    kBoxCaption,
    kBoxError,
    kBoxFace,
    kBoxPressed,
    kBoxWhite
};
constexpr Rgb kBoxColours[] = {{250, 248, 242}, {32, 32, 44},    {45, 74, 115},  {160, 44, 44},
                               {226, 228, 234}, {196, 202, 214}, {255, 255, 255}};

// In pixels.
constexpr int kBoxLine = systemfont::kHeight + systemfont::kLeading;
constexpr int kBoxMargin = 16; ///< inside, and between the box and the edge of the screen
constexpr int kCaptionHeight = 26;
constexpr int kButtonHeight = 28;
constexpr int kButtonWidth = 84; ///< at least
constexpr int kButtonPadding = 14;
constexpr int kButtonGap = 12;
constexpr int kCheckSide = 15;
constexpr int kCheckGap = 8;
constexpr int kWidestText = 460;
constexpr int kScrollMark = 3;

int widthOf(std::string_view text) {
    int width = 0;
    for (const char c : text) width += systemfont::glyph(static_cast<unsigned char>(c)).advance;
    return width;
}

/// How many characters of the text fit; at least one.
std::size_t fitting(std::string_view text, int width) {
    std::size_t count = 0;
    while (count < text.size() &&
           (width -= systemfont::glyph(static_cast<unsigned char>(text[count])).advance) >= 0)
        ++count;
    return std::max<std::size_t>(count, std::min<std::size_t>(text.size(), 1));
}

/// Breaks a paragraph at blanks, and in a word only when that is too long for a line.
void breakParagraph(std::string_view text, int width, std::vector<std::string>& lines) {
    do {
        std::size_t end = fitting(text, width);
        std::size_t next = end;
        if (end < text.size()) {
            const std::size_t blank = text.substr(0, end + 1).rfind(' ');
            if (blank != std::string_view::npos && blank > 0) {
                end = blank;
                next = blank + 1;
            }
        }
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(next);
    } while (!text.empty());
}

std::vector<std::string> brokenText(std::string text, int width) {
    std::erase(text, '\r');
    std::ranges::replace(text, '\t', ' ');
    while (text.ends_with('\n')) text.pop_back();
    std::vector<std::string> lines;
    std::string_view rest = text;
    while (true) {
        const std::size_t end = rest.find('\n');
        breakParagraph(rest.substr(0, end), width, lines);
        if (end == std::string_view::npos) return lines;
        rest.remove_prefix(end + 1);
    }
}

void fill(Surface& picture, const Rect& area, std::uint8_t colour) {
    const Rect part = intersection(area, picture.bounds());
    if (part.empty()) return;
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(picture.row(y) + part.left, part.width(), colour);
}

/// With a border inside the area.
void frame(Surface& picture, const Rect& area, int border, std::uint8_t edge, std::uint8_t face) {
    fill(picture, area, edge);
    fill(picture,
         {area.left + border, area.top + border, area.right - border, area.bottom - border}, face);
}

/// `top` is that of the line; what lies outside of the area is left out.
void write(Surface& picture, const Rect& area, Point at, std::string_view text,
           std::uint8_t colour) {
    const Rect part = intersection(area, picture.bounds());
    for (const char c : text) {
        const systemfont::Glyph& glyph = systemfont::glyph(static_cast<unsigned char>(c));
        for (int y = 0; y < systemfont::kHeight; ++y) {
            if (at.y + y < part.top || at.y + y >= part.bottom) continue;
            for (int x = 0; x < glyph.width; ++x) {
                const int column = at.x + glyph.left + x;
                const bool ink = (glyph.rows[static_cast<std::size_t>(y)] << x & 0x8000) != 0;
                if (ink && column >= part.left && column < part.right)
                    picture.row(at.y + y)[column] = colour;
            }
        }
        at.x += glyph.advance;
    }
}

void writeCentred(Surface& picture, const Rect& area, std::string_view text, std::uint8_t colour) {
    const int left = std::max(area.left, (area.left + area.right - widthOf(text)) / 2);
    write(picture, area, {left, (area.top + area.bottom - systemfont::kHeight) / 2}, text, colour);
}

bool contains(const Rect& area, Point point) {
    return point.x >= area.left && point.x < area.right && point.y >= area.top &&
           point.y < area.bottom;
}

} // namespace

const std::array<Rgb, kPaletteSize>& BoxPanel::palette() {
    static const auto colours = [] {
        std::array<Rgb, kPaletteSize> all{};
        std::ranges::copy(kBoxColours, all.begin());
        return all;
    }();
    return colours;
}

BoxPanel::BoxPanel(BoxContents contents, const Rect& screen)
    : contents_(std::move(contents)), screen_(screen), picture_(1, 1, 8) {
    const int most = std::max(1, screen.width() - 4 * kBoxMargin);
    lines_ = brokenText(contents_.text, std::min(kWidestText, most));
    int width = widthOf(contents_.caption);
    for (const std::string& line : lines_) width = std::max(width, widthOf(line));
    int row = -kButtonGap;
    for (const std::string& label : contents_.buttons) {
        const int wide = std::max(kButtonWidth, widthOf(label) + 2 * kButtonPadding);
        controls_.push_back({label, {0, 0, wide, kButtonHeight}});
        row += wide + kButtonGap;
    }
    width = std::max(width, row);
    if (!contents_.checkBox.empty()) {
        const int wide = kCheckSide + kCheckGap + widthOf(contents_.checkBox);
        controls_.push_back({contents_.checkBox, {0, 0, wide, kCheckSide + 2}});
        width = std::max(width, wide);
    }
    layOut(std::min(width, most));
    corner_ = {(screen.left + screen.right - picture_.width()) / 2,
               (screen.top + screen.bottom - picture_.height()) / 2};
    draw();
}

/// `width` is that of what is inside the margins.
void BoxPanel::layOut(int width) {
    int fixed = kCaptionHeight + 3 * kBoxMargin + kButtonHeight;
    const bool check = isCheckBox(controls_.size() - 1);
    if (check) fixed += kCheckSide + kBoxMargin;
    const int room = (screen_.height() - 2 * kBoxMargin - fixed) / kBoxLine;
    visibleLines_ = std::max(1, std::min(room, static_cast<int>(lines_.size())));
    int y = kCaptionHeight + kBoxMargin;
    textArea_ = {kBoxMargin, y, kBoxMargin + width, y + visibleLines_ * kBoxLine};
    y = textArea_.bottom + kBoxMargin;
    if (check) {
        controls_.back().area = shifted(controls_.back().area, kBoxMargin, y - 1);
        y += kCheckSide + kBoxMargin;
    }
    int row = -kButtonGap;
    for (std::size_t k = 0; k < contents_.buttons.size(); ++k)
        row += controls_[k].area.width() + kButtonGap;
    int x = kBoxMargin + std::max(0, (width - row) / 2);
    for (std::size_t k = 0; k < contents_.buttons.size(); ++k) {
        controls_[k].area = shifted(controls_[k].area, x, y);
        x = controls_[k].area.right + kButtonGap;
    }
    picture_ = Surface(width + 2 * kBoxMargin, y + kButtonHeight + kBoxMargin, 8);
}

Rect BoxPanel::place() const { return shifted(picture_.bounds(), corner_.x, corner_.y); }

// ---------------------------------------------------------------------------- drawing

void BoxPanel::draw() {
    const std::uint8_t accent = contents_.isError ? kBoxError : kBoxCaption;
    frame(picture_, picture_.bounds(), 2, accent, kBoxPaper);
    const Rect bar{0, 0, picture_.width(), kCaptionHeight};
    fill(picture_, bar, accent);
    write(picture_, {kBoxMargin, 0, bar.right - kBoxMargin, bar.bottom},
          {kBoxMargin, (kCaptionHeight - systemfont::kHeight) / 2}, contents_.caption, kBoxWhite);
    for (int k = 0; k < visibleLines_; ++k)
        write(picture_, textArea_, {textArea_.left, textArea_.top + k * kBoxLine},
              lines_[static_cast<std::size_t>(firstLine_ + k)], kBoxInk);
    drawScrollMark();
    for (std::size_t k = 0; k < controls_.size(); ++k)
        drawControl(controls_[k], k == focus_, armed_ == k);
}

/// At the right of the text: which part of it is seen.
void BoxPanel::drawScrollMark() {
    const int all = static_cast<int>(lines_.size());
    if (visibleLines_ == all) return;
    const int height = textArea_.height();
    const int left = textArea_.right + kBoxMargin / 2;
    fill(picture_, {left, textArea_.top, left + kScrollMark, textArea_.bottom}, kBoxFace);
    fill(picture_,
         {left, textArea_.top + height * firstLine_ / all, left + kScrollMark,
          textArea_.top + height * (firstLine_ + visibleLines_) / all},
         kBoxInk);
}

void BoxPanel::drawControl(const Control& control, bool focused, bool down) {
    const std::uint8_t edge = focused ? kBoxCaption : kBoxInk;
    const std::uint8_t face = down ? kBoxPressed : kBoxFace;
    if (&control != &controls_.back() || !isCheckBox(controls_.size() - 1)) {
        frame(picture_, control.area, focused ? 2 : 1, edge, face);
        writeCentred(picture_, control.area, control.label, kBoxInk);
        return;
    }
    const Rect& area = control.area;
    const Rect square{area.left, area.top + 1, area.left + kCheckSide, area.top + 1 + kCheckSide};
    frame(picture_, square, focused ? 2 : 1, edge, down ? kBoxPressed : kBoxWhite);
    if (checked_)
        fill(picture_, {square.left + 4, square.top + 4, square.right - 4, square.bottom - 4},
             kBoxInk);
    write(picture_, area, {square.right + kCheckGap, area.top}, control.label, kBoxInk);
}

// ---------------------------------------------------------------------------- input

void BoxPanel::handle(const Message& message) {
    switch (message.kind) {
    case Message::Kind::MouseDown:
    case Message::Kind::DoubleClick: pointerDown(message.position); break;
    case Message::Kind::MouseUp: pointerUp(message.position); break;
    case Message::Kind::MouseMove: pointerMoved(message.position); break;
    case Message::Kind::Key: key(message.key.code); break;
    default: return;
    }
    draw();
}

std::optional<std::size_t> BoxPanel::controlAt(Point point) const {
    const auto found = std::ranges::find_if(
        controls_, [&](const Control& each) { return contains(each.area, inside(point)); });
    if (found == controls_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - controls_.begin());
}

void BoxPanel::press(std::size_t control) {
    if (isCheckBox(control))
        checked_ = !checked_;
    else
        answer_ = static_cast<int>(control);
}

void BoxPanel::pointerDown(Point point) {
    armed_ = controlAt(point);
    if (armed_)
        focus_ = *armed_;
    else if (contains({0, 0, picture_.width(), kCaptionHeight}, inside(point)))
        carried_ = inside(point);
}

void BoxPanel::pointerUp(Point point) {
    const auto held = std::exchange(armed_, std::nullopt);
    carried_.reset();
    if (held && controlAt(point) == held) press(*held);
}

/// The caption stays on the screen.
void BoxPanel::pointerMoved(Point point) {
    if (!carried_) return;
    const Rect corners{screen_.left, screen_.top,
                       std::max(screen_.left, screen_.right - picture_.width()) + 1,
                       std::max(screen_.top, screen_.bottom - kCaptionHeight) + 1};
    corner_ = nearestInside({point.x - carried_->x, point.y - carried_->y}, corners);
}

void BoxPanel::key(std::uint16_t code) {
    const std::size_t count = controls_.size();
    switch (static_cast<Key>(code)) {
    case Key::Enter: press(focus_); break;
    case Key::Esc: close(); break;
    case Key::Tab:
    case Key::Right: focus_ = (focus_ + 1) % count; break;
    case Key::Left: focus_ = (focus_ + count - 1) % count; break;
    case Key::Up: scroll(-1); break;
    case Key::Down: scroll(1); break;
    case Key::PageUp: scroll(-visibleLines_); break;
    case Key::PageDown: scroll(visibleLines_); break;
    default:
        if (code == ' ') press(focus_);
    }
}

void BoxPanel::scroll(int lines) {
    firstLine_ = std::clamp(firstLine_ + lines, 0, static_cast<int>(lines_.size()) - visibleLines_);
}

} // namespace platform
