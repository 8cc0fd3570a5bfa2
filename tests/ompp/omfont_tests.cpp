// Fonts: bitmap fonts out of resources, how texts are measured, and their ink on canvases.
#include "canvasfixture.h"
#include "memorystream.h"
#include "nfntbuilder.h"

#include "omfont.h"
#include "omnfntfont.h"
#include "omttfont.h"
#include "omwndcanvas.h"

#include <gtest/gtest.h>

#include <random>

using platform::Rect;
using testing_support::Bytes;
using testing_support::MemoryStream;
using testing_support::NFNTFont;
using testing_support::pixelAt;
using testing_support::Process;
using testing_support::setPixel;
using testing_support::smallFont;

namespace {

using Messages = std::vector<std::string>;

std::unique_ptr<OMNFNTFont> loadFont(Bytes bytes) {
    MemoryStream stream(std::move(bytes));
    return std::make_unique<OMNFNTFont>(stream);
}

TEST(OMNFNTFont, textsAreMeasuredFromTheFirstPictureToTheLast) {
    Process process(8);
    const struct {
        std::string_view text;
        int width;
        Rect extent;
    } rows[] = {
        {"", 0, {0, -3, 0, 1}},    {"A", 4, {0, -3, 3, 1}},    {"D", 2, {-1, -3, 0, 1}},
        {"B", 13, {2, -3, 12, 1}}, {"AB", 17, {0, -3, 16, 1}}, {"DAD", 8, {-1, -3, 6, 1}},
        {"AC", 9, {0, -3, 4, 1}},  {"?", 3, {0, -3, 2, 1}}, // stands in
    };
    NFNTFont description = smallFont();
    const auto font = loadFont(description.bytes());
    EXPECT_EQ(font->ascent(), 3);
    EXPECT_EQ(font->descent(), 1);
    EXPECT_EQ(font->lineHeight(), 6);
    for (const auto& row : rows) {
        EXPECT_EQ(font->textWidth(row.text), row.width) << row.text;
        EXPECT_EQ(font->textExtent(row.text), row.extent) << row.text;
    }
    // What is missing looks like the character before the last.
    for (const auto& [lastChar, width] : {std::pair{0x100 + 'B', 4}, // A: the low byte counts
                                          {100, 0},                  // 99 is missing too
                                          {0x100, 0}}) {             // there is no -1
        description.lastChar = lastChar;
        EXPECT_EQ(loadFont(description.bytes())->textWidth("?"), width) << lastChar;
    }
    MemoryStream stream(smallFont().bytes());
    stream.setDstBuffer(16);
    EXPECT_TRUE(OMNFNTFont(stream).isEmpty());
    EXPECT_EQ(process.takeMessages(),
              Messages{"OMNFNTFont::OMNFNTFont - OMIStream source must be cached!"});
}

TEST(OMNFNTFont, damagedRecordsAreEmptyOrLackWhatIsDamaged) {
    Process process(8);
    const Bytes whole = smallFont().bytes();
    OMMemCanvas canvas(40, 8, 8);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const auto cut = loadFont({whole.begin(), whole.begin() + static_cast<long>(at)});
        EXPECT_TRUE(cut->isEmpty()) << at;
        EXPECT_EQ(cut->textWidth("AB") + cut->lineHeight(), 0);
        for (const int value : {0x00, 0x7F, 0x80, 0xFF}) { // what numbers overflow with
            Bytes damaged = whole;
            damaged[at] = static_cast<std::byte>(value);
            const auto font = loadFont(damaged);
            canvas.setFont(font.get());
            canvas.drawText(3, 4, "ABCD?\xFF");
            (void)font->textExtent("BD");
            canvas.setFont(nullptr);
        }
    }
}

/// Where the ink of a text lies, from the description of its font.
bool isInk(const NFNTFont& font, std::string_view text, int x, int y) {
    for (const char c : text) {
        const auto& character = font.characters.at(c == '?' ? 126 : c);
        const int column = x - character.offset - font.kern;
        x -= character.advance;
        if (character.rows.empty() || y < 0 || y >= font.ascent + font.descent) continue;
        const std::string& row = character.rows[static_cast<std::size_t>(y)];
        if (column >= 0 && column < std::ssize(row) && row[static_cast<std::size_t>(column)] == '#')
            return true;
    }
    return false;
}

TEST(OMCanvas, textInksItsPixelsAndNoOthers) {
    std::mt19937 generator{99};
    const auto random = [&](int least, int most) {
        return std::uniform_int_distribution(least, most)(generator);
    };
    NFNTFont description = smallFont();
    for (const int depth : {8, 16, 24, 32}) {
        Process process(depth);
        description.bigEndian = depth > 16;
        const auto font = loadFont(description.bytes());
        for (int round = 0; round < 200; ++round) {
            OMMemCanvas canvas(random(1, 40), random(1, 10), depth);
            for (int y = 0; y < canvas.height(); ++y)
                for (int x = 0; x < canvas.width(); ++x)
                    setPixel(canvas, x, y, static_cast<std::uint32_t>(generator()));
            OMMemCanvas before(canvas.width(), canvas.height(), depth);
            before.blt(canvas, 0, 0, canvas.width(), canvas.height(), 0, 0);
            OMRegion clip(canvas.bounds());
            if (random(0, 2) > 0) {
                const int left = random(-5, 30);
                clip = Rect{left, random(-3, 6), left + random(0, 20), random(0, 10)};
                clip.unite(Rect{random(0, 9), 2, random(9, 40), 4});
                canvas.setClipRegion(clip);
            }
            std::string text;
            for (int i = random(0, 5); i > 0; --i) text += "ABCD?"[random(0, 4)];
            const int x = random(-15, canvas.width());
            const int baseline = random(-3, canvas.height() + 4);
            canvas.setFont(font.get());
            canvas.setTextColor(OMColor(9));
            canvas.drawText(x, baseline, text);
            const std::uint32_t ink = canvas.pixelValue(OMColor(9));
            for (int py = 0; py < canvas.height(); ++py)
                for (int px = 0; px < canvas.width(); ++px) {
                    const bool inked = clip.contains(platform::Point{px, py}) &&
                                       isInk(description, text, px - x, py - baseline + 3);
                    ASSERT_EQ(pixelAt(canvas, px, py), inked ? ink : pixelAt(before, px, py))
                        << depth << " " << text << " at " << px << ", " << py;
                }
        }
    }
    Process process(8);
    OMWndCanvas canvas({0, 0, 64, 48});
    const auto font = loadFont(smallFont().bytes());
    canvas.setFont(font.get());
    canvas.drawText(10, 20, "BA");
    EXPECT_EQ(canvas.changedPixels(), 56U) << "from the first column of B to the last one of A";
    canvas.drawText(10, 20, "C");
    canvas.drawText(70, 20, "B");
    canvas.drawText(std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), "B");
    EXPECT_EQ(canvas.changedPixels(), 56U) << "nothing else was seen";
    canvas.setFont(nullptr);
    EXPECT_EQ(canvas.font().name(), "System font");
}

TEST(OMTTFont, asksForItsStyleAndRegistersFiles) {
    Process process(8);
    auto& faces = process.machine.typefaces();
    auto& files = process.machine.files();
    faces.families = {"Lumo"};
    OMTTFont font("Lumo");
    EXPECT_EQ(faces.asked->size, 16);
    font.setSize(20);
    font.setStyle(OMFont::kBold | OMFont::kUnderline);
    EXPECT_TRUE(faces.asked->bold && faces.asked->underline && !faces.asked->italic);
    EXPECT_EQ(font.lineHeight(), 20 + 5 + 1);
    const char* const resource = "C:\\TMP\\fen.fot";
    files.put("C:\\FONTS\\FEN.TTF", "outlines");
    faces.newFamily = "Fenwyx";
    for (const bool wasThere : {false, true}) {
        if (wasThere) files.put(resource, "somebody's");
        {
            const OMTTFont registered(
                "Fenwyx", {.name = "fen", .folder = "C:\\FONTS", .resourceFolder = "C:\\TMP\\"});
            EXPECT_TRUE(files.exists(resource));
            EXPECT_EQ(faces.resources, Messages{resource});
        }
        EXPECT_EQ(files.exists(resource), wasThere) << "one that was there stays";
        EXPECT_TRUE(faces.resources.empty());
    }
    EXPECT_EQ(process.takeMessages(), Messages{});
    const OMTTFont nameless("");
    EXPECT_EQ(OMTTFont("Nowhere").ascent(), OMSysFont().ascent());
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMTTFont::OMTTFont - facename cannot be NULL or empty!",
                        "OMTTFont::OMTTFont - missing TrueType Font!"}));
}

} // namespace
