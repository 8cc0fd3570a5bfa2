#include "platform/host/screen/boxpanel.h"

#include "platform/host/faces/systemfont.h"
#include "platform/host/screen/panelpaint.h"

#include <algorithm>
#include <cstdint>
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
constexpr int kBoxLine = paint::kLine;
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

} // namespace

const std::array<Rgb, kPaletteSize>& BoxPanel::palette() const {
    static const auto colours = paint::paletteOf(kBoxColours);
    return colours;
}

BoxPanel::BoxPanel(BoxContents contents, const Rect& screen)
    : contents_(std::move(contents)), screen_(screen), picture_(1, 1, 8) {
    const int most = std::max(1, screen.width() - 4 * kBoxMargin);
    lines_ = paint::brokenText(contents_.text, std::min(kWidestText, most));
    int width = paint::widthOf(contents_.caption);
    for (const std::string& line : lines_) width = std::max(width, paint::widthOf(line));
    int row = -kButtonGap;
    for (const std::string& label : contents_.buttons) {
        const int wide = std::max(kButtonWidth, paint::widthOf(label) + 2 * kButtonPadding);
        controls_.push_back({label, {0, 0, wide, kButtonHeight}});
        row += wide + kButtonGap;
    }
    width = std::max(width, row);
    if (!contents_.checkBox.empty()) {
        const int wide = kCheckSide + kCheckGap + paint::widthOf(contents_.checkBox);
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
    paint::frame(picture_, picture_.bounds(), 2, accent, kBoxPaper);
    const Rect bar{0, 0, picture_.width(), kCaptionHeight};
    paint::fill(picture_, bar, accent);
    paint::write(picture_, {kBoxMargin, 0, bar.right - kBoxMargin, bar.bottom},
                 {kBoxMargin, (kCaptionHeight - systemfont::kHeight) / 2}, contents_.caption,
                 kBoxWhite);
    for (int k = 0; k < visibleLines_; ++k)
        paint::write(picture_, textArea_, {textArea_.left, textArea_.top + k * kBoxLine},
                     lines_[static_cast<std::size_t>(firstLine_ + k)], kBoxInk);
    drawScrollMark();
    for (std::size_t k = 0; k < controls_.size(); ++k)
        drawControl(controls_[k], k == focus_, armed_ == k);
}

/// At the right of the text: which part of it is seen.
void BoxPanel::drawScrollMark() {
    const int all = static_cast<int>(lines_.size());
    if (visibleLines_ == all) return;
    const int left = textArea_.right + kBoxMargin / 2;
    paint::scrollMark(picture_, {left, textArea_.top, left + kScrollMark, textArea_.bottom},
                      firstLine_, visibleLines_, all, kBoxFace, kBoxInk);
}

void BoxPanel::drawControl(const Control& control, bool focused, bool down) {
    const std::uint8_t edge = focused ? kBoxCaption : kBoxInk;
    const std::uint8_t face = down ? kBoxPressed : kBoxFace;
    if (&control != &controls_.back() || !isCheckBox(controls_.size() - 1)) {
        paint::frame(picture_, control.area, focused ? 2 : 1, edge, face);
        paint::writeCentred(picture_, control.area, control.label, kBoxInk);
        return;
    }
    const Rect& area = control.area;
    const Rect square{area.left, area.top + 1, area.left + kCheckSide, area.top + 1 + kCheckSide};
    paint::frame(picture_, square, focused ? 2 : 1, edge, down ? kBoxPressed : kBoxWhite);
    if (checked_)
        paint::fill(picture_,
                    {square.left + 4, square.top + 4, square.right - 4, square.bottom - 4},
                    kBoxInk);
    paint::write(picture_, area, {square.right + kCheckGap, area.top}, control.label, kBoxInk);
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
        controls_, [&](const Control& each) { return paint::contains(each.area, inside(point)); });
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
    else if (paint::contains({0, 0, picture_.width(), kCaptionHeight}, inside(point)))
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
