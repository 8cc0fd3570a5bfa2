#include "platform/host/screen/comfortpanel.h"

#include "platform/host/screen/panelpaint.h"
#include "platform/host/screen/pointers.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace platform {

namespace {

// Colours of the picture.
enum : std::uint8_t {
    kPanelPaper,
    kPanelInk,
    kPanelBar,
    kPanelWhite,
    kPanelFocus,
    kPanelPill,
    kPanelDown,
    kPanelChosen
};
constexpr Rgb kPanelColours[] = {{250, 248, 242}, {32, 32, 44},    {45, 74, 115},   {255, 255, 255},
                                 {255, 226, 138}, {226, 228, 234}, {190, 198, 214}, {24, 96, 168}};

// In pixels where letters are as large as in the system's font.
constexpr int kTitleHeight = 22;
constexpr int kRowHeight = 28;
constexpr int kPillHeight = 22;
constexpr int kPillPadding = 5;
constexpr int kPillGap = 3;
constexpr int kPanelMargin = 6;
constexpr int kRowPadding = 4;
constexpr int kLabelGap = 8;
constexpr int kPillRounding = 5;

int pillWidth(std::string_view label) { return paint::widthOf(label) + 2 * kPillPadding; }

int choicesWidth(const ComfortSetting& setting) {
    int width = -kPillGap;
    for (const std::string& choice : setting.choices) width += pillWidth(choice) + kPillGap;
    return width;
}

/// How far the row `y` of an area begins behind its side, for a corner of this radius.
int cornerInset(int y, int height, int radius) {
    const int fromEdge = std::min(y, height - 1 - y);
    if (fromEdge >= radius) return 0;
    const int up = 2 * (radius - fromEdge) - 1; // of half pixels, as is all here
    int inset = 0;
    while (inset < radius) {
        const int across = 2 * (radius - inset) - 1;
        if (across * across + up * up <= 4 * radius * radius) break;
        ++inset;
    }
    return inset;
}

void fillRounded(Surface& picture, const Rect& area, int radius, std::uint8_t colour) {
    for (int y = 0; y < area.height(); ++y) {
        const int inset = cornerInset(y, area.height(), radius);
        paint::fill(picture,
                    {area.left + inset, area.top + y, area.right - inset, area.top + y + 1},
                    colour);
    }
}

} // namespace

const std::array<Rgb, kPaletteSize>& ComfortPanel::palette() const {
    static const auto colours = paint::paletteOf(kPanelColours);
    return colours;
}

ComfortPanel::ComfortPanel(std::string title, std::vector<ComfortSetting> settings,
                           std::string button, const Rect& screen)
    : title_(std::move(title)), settings_(std::move(settings)), button_(std::move(button)),
      picture_(1, 1, 8) {
    for (int times = 2; times <= kMostPointerScale; ++times)
        if (widthAt(times) <= screen.width() && heightAt(times) <= screen.height()) times_ = times;
    layOut(screen);
    draw();
}

int ComfortPanel::widthAt(int times) const {
    int width = std::max(paint::widthOf(title_), pillWidth(button_));
    for (const ComfortSetting& setting : settings_)
        width = std::max(width, paint::widthOf(setting.label) + kLabelGap + choicesWidth(setting) +
                                    2 * kRowPadding);
    return (width + 2 * kPanelMargin) * times;
}

int ComfortPanel::heightAt(int times) const {
    const int rows = static_cast<int>(settings_.size()) * kRowHeight;
    return (kTitleHeight + 3 * kPanelMargin + rows + kPillHeight) * times;
}

void ComfortPanel::layOut(const Rect& screen) {
    picture_ = Surface(widthAt(times_), heightAt(times_), 8);
    corner_ = {(screen.left + screen.right - picture_.width()) / 2,
               (screen.top + screen.bottom - picture_.height()) / 2};
    const int pillHeight = kPillHeight * times_;
    int y = (kTitleHeight + kPanelMargin) * times_;
    for (const ComfortSetting& setting : settings_) {
        Row row{{kPanelMargin * times_, y, picture_.width() - kPanelMargin * times_,
                 y + kRowHeight * times_},
                {}};
        int x = row.area.right - (kRowPadding + choicesWidth(setting)) * times_;
        const int top = y + (row.area.height() - pillHeight) / 2;
        for (const std::string& choice : setting.choices) {
            const int right = x + pillWidth(choice) * times_;
            row.choices.push_back({x, top, right, top + pillHeight});
            x = right + kPillGap * times_;
        }
        y = row.area.bottom;
        rows_.push_back(std::move(row));
    }
    y += kPanelMargin * times_;
    const int width = pillWidth(button_) * times_;
    const int left = (picture_.width() - width) / 2;
    buttonArea_ = {left, y, left + width, y + pillHeight};
}

Rect ComfortPanel::place() const { return shifted(picture_.bounds(), corner_.x, corner_.y); }

std::string ComfortPanel::focusText() const {
    if (isButton(focus_)) return button_;
    const ComfortSetting& setting = settings_[focus_];
    return setting.label + ": " + setting.choices[setting.chosen()];
}

// ---------------------------------------------------------------------------- drawing

void ComfortPanel::draw() {
    paint::frame(picture_, picture_.bounds(), times_, kPanelBar, kPanelPaper);
    const Rect bar{0, 0, picture_.width(), kTitleHeight * times_};
    paint::fill(picture_, bar, kPanelBar);
    write(bar, (bar.width() - paint::widthOf(title_) * times_) / 2, title_, kPanelWhite);
    for (std::size_t k = 0; k < rows_.size(); ++k) drawRow(k);
    const int edge = 2 * times_;
    if (isButton(focus_))
        fillRounded(picture_,
                    {buttonArea_.left - edge, buttonArea_.top - edge, buttonArea_.right + edge,
                     buttonArea_.bottom + edge},
                    kPillRounding * times_ + edge, kPanelFocus);
    drawPill(buttonArea_, button_, false, armed_ && isButton(armed_->row));
}

void ComfortPanel::drawRow(std::size_t index) {
    const ComfortSetting& setting = settings_[index];
    const Row& row = rows_[index];
    if (index == focus_) fillRounded(picture_, row.area, kPillRounding * times_, kPanelFocus);
    write(row.area, row.area.left + kRowPadding * times_, setting.label, kPanelInk);
    const std::size_t chosen = setting.chosen();
    for (std::size_t k = 0; k < row.choices.size(); ++k)
        drawPill(row.choices[k], setting.choices[k], k == chosen, armed_ == Target{index, k});
}

/// What is chosen has a border besides its colour, for who sees no colours.
void ComfortPanel::drawPill(const Rect& area, std::string_view label, bool isChosen, bool isDown) {
    const std::uint8_t face = isChosen ? kPanelChosen : isDown ? kPanelDown : kPanelPill;
    const int border = isChosen ? times_ : (times_ + 1) / 2;
    fillRounded(picture_, area, kPillRounding * times_, kPanelInk);
    fillRounded(picture_,
                {area.left + border, area.top + border, area.right - border, area.bottom - border},
                kPillRounding * times_ - border, face);
    write(area, area.left + kPillPadding * times_, label, isChosen ? kPanelWhite : kPanelInk);
}

/// In the middle of the area's height.
void ComfortPanel::write(const Rect& area, int left, std::string_view text, std::uint8_t colour) {
    const int top = (area.top + area.bottom - systemfont::kHeight * times_) / 2;
    paint::writeLarge(picture_, area, {left, top}, text, colour, times_);
}

// ---------------------------------------------------------------------------- input

void ComfortPanel::handle(const Message& message) {
    switch (message.kind) {
    case Message::Kind::MouseDown:
    case Message::Kind::DoubleClick:
        armed_ = targetAt(message.position);
        if (armed_) focus_ = armed_->row;
        break;
    case Message::Kind::MouseUp: {
        const auto held = std::exchange(armed_, std::nullopt);
        if (held && targetAt(message.position) == held) press(*held);
        break;
    }
    case Message::Kind::Key: key(message.key); break;
    default: return;
    }
    draw();
}

std::optional<ComfortPanel::Target> ComfortPanel::targetAt(Point point) const {
    const Point inside{point.x - corner_.x, point.y - corner_.y};
    const auto isHit = [inside](const Rect& area) { return paint::contains(area, inside); };
    if (isHit(buttonArea_)) return Target{settings_.size(), std::nullopt};
    const auto row = std::ranges::find_if(rows_, isHit, &Row::area);
    if (row == rows_.end()) return std::nullopt;
    Target target{static_cast<std::size_t>(row - rows_.begin()), std::nullopt};
    const auto choice = std::ranges::find_if(row->choices, isHit);
    if (choice != row->choices.end())
        target.choice = static_cast<std::size_t>(choice - row->choices.begin());
    return target;
}

void ComfortPanel::press(const Target& target) {
    if (isButton(target.row)) return close();
    const ComfortSetting& setting = settings_[target.row];
    const std::size_t next = (setting.chosen() + 1) % setting.choices.size();
    setting.choose(target.choice.value_or(next));
}

void ComfortPanel::key(const KeyPress& key) {
    const std::size_t rows = settings_.size() + 1;
    switch (static_cast<Key>(key.code)) {
    case Key::Esc: close(); break;
    case Key::Up: focus_ = (focus_ + rows - 1) % rows; break;
    case Key::Down: focus_ = (focus_ + 1) % rows; break;
    case Key::Tab: focus_ = (focus_ + (key.shift ? rows - 1 : 1)) % rows; break;
    case Key::Left: step(-1); break;
    case Key::Right: step(1); break;
    case Key::Enter: press({focus_, std::nullopt}); break;
    default:
        if (key.code == ' ') press({focus_, std::nullopt});
    }
}

/// Stays in the row at its ends.
void ComfortPanel::step(int by) {
    if (isButton(focus_)) return;
    const ComfortSetting& setting = settings_[focus_];
    const std::size_t chosen = setting.chosen();
    if (by < 0 ? chosen > 0 : chosen + 1 < setting.choices.size())
        setting.choose(by < 0 ? chosen - 1 : chosen + 1);
}

} // namespace platform
