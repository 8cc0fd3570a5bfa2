#include "platform/host/screen/panelpaint.h"

#include "platform/host/screen/pointers.h"

#include <algorithm>

namespace platform {

namespace {

/// How many characters of the text fit; at least one.
std::size_t fitting(std::string_view text, int width) {
    std::size_t count = 0;
    while (count < text.size() &&
           (width -= systemfont::glyph(static_cast<unsigned char>(text[count])).advance) >= 0)
        ++count;
    return std::max<std::size_t>(count, std::min<std::size_t>(text.size(), 1));
}

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

/// The ink of a letter that has any, as a picture of ones.
CursorImage inkOf(const systemfont::Glyph& glyph) {
    CursorImage ink{glyph.width, systemfont::kHeight, {}, {}};
    for (const std::uint16_t row : glyph.rows)
        for (int x = 0; x < glyph.width; ++x) ink.pixels.push_back((row << x & 0x8000) != 0);
    return ink;
}

} // namespace

std::array<Rgb, kPaletteSize> paint::paletteOf(std::span<const Rgb> colours) {
    std::array<Rgb, kPaletteSize> palette{};
    std::ranges::copy(colours, palette.begin());
    return palette;
}

int paint::widthOf(std::string_view text) {
    int width = 0;
    for (const char c : text) width += systemfont::glyph(static_cast<unsigned char>(c)).advance;
    return width;
}

std::vector<std::string> paint::brokenText(std::string text, int width) {
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

void paint::fill(Surface& picture, const Rect& area, std::uint8_t colour) {
    const Rect part = intersection(area, picture.bounds());
    if (part.empty()) return;
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(picture.row(y) + part.left, part.width(), colour);
}

void paint::frame(Surface& picture, const Rect& area, int border, std::uint8_t edge,
                  std::uint8_t face) {
    fill(picture, area, edge);
    fill(picture,
         {area.left + border, area.top + border, area.right - border, area.bottom - border}, face);
}

void paint::write(Surface& picture, const Rect& area, Point at, std::string_view text,
                  std::uint8_t colour) {
    const Rect part = intersection(area, picture.bounds());
    for (const char c : text) {
        if (at.x >= part.right) return;
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

void paint::writeLarge(Surface& picture, const Rect& area, Point at, std::string_view text,
                       std::uint8_t colour, int times) {
    const Rect part = intersection(area, picture.bounds());
    for (const char c : text) {
        const systemfont::Glyph& glyph = systemfont::glyph(static_cast<unsigned char>(c));
        const int left = at.x + glyph.left * times;
        at.x += glyph.advance * times;
        if (glyph.width == 0) continue;
        const CursorImage ink = enlarged(inkOf(glyph), times);
        for (std::size_t k = 0; k < ink.pixels.size(); ++k) {
            const int pixel = static_cast<int>(k);
            const Point place{left + pixel % ink.width, at.y + pixel / ink.width};
            if (ink.pixels[k] != 0 && contains(part, place)) picture.row(place.y)[place.x] = colour;
        }
    }
}

void paint::writeCentred(Surface& picture, const Rect& area, std::string_view text,
                         std::uint8_t colour) {
    const int left = std::max(area.left, (area.left + area.right - widthOf(text)) / 2);
    write(picture, area, {left, (area.top + area.bottom - systemfont::kHeight) / 2}, text, colour);
}

void paint::scrollMark(Surface& picture, const Rect& area, int first, int visible, int all,
                       std::uint8_t back, std::uint8_t mark) {
    const int height = area.height();
    fill(picture, area, back);
    fill(picture,
         {area.left, area.top + height * first / all, area.right,
          area.top + height * (first + visible) / all},
         mark);
}

bool paint::contains(const Rect& area, Point point) {
    return point.x >= area.left && point.x < area.right && point.y >= area.top &&
           point.y < area.bottom;
}

} // namespace platform
