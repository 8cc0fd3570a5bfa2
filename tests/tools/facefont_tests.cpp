// Fonts out of faces.
#include "fonts/facefont.h"

#include "fonts/fontbuilder.h"
#include "manifest/manifest.h"
#include "tooltest.h"

namespace {

using namespace testfiles;
using rsc::Glyph;

Bytes words(std::initializer_list<int> values) {
    formats::ByteWriter data(std::endian::big);
    for (const int value : values) data.u16(value);
    return data.take();
}

/// One outline of points 0 to 3, all on the curve.
Bytes rectangle(int left, int bottom, int right, int top) {
    return join({words({1, left, bottom, right, top, 3, 0}), Bytes(4, 1),
                 words({left, 0, right - left, 0, bottom, top - bottom, 0, bottom - top})});
}

/// A face of 64 units an em with rectangles as characters: "A" from (0, 0) to (16, 32), advance 24,
/// and "B" from (-4, -8) to (4, 8), advance 16. Ascent 48, descent 16, line gap 8.
Bytes smallFace() {
    const int half = static_cast<int>(rectangle(0, 0, 0, 0).size()) / 2; // so are places told
    const std::pair<std::string, Bytes> tables[] = {
        {"cmap", words({0, 1, 3, 1, 0, 12, 6, 14, 0, 65, 2, 1, 2})},
        {"glyf", join({rectangle(0, 0, 16, 32), rectangle(-4, -8, 4, 8)})},
        {"head", words({1, 0, 1, 0, 0,  0,  0x5F0F, 0x3CF5, 0, 64, 0, 0, 0, 0,
                        0, 0, 0, 0, -4, -8, 16,     32,     0, 8,  2, 0, 0})},
        {"hhea", words({1, 0, 48, -16, 8, 24, 0, 0, 16, 1, 0, 0, 0, 0, 0, 0, 0, 3})},
        {"hmtx", words({10, 0, 24, 0, 16, -4})},
        {"loca", words({0, 0, half, half * 2})},
        {"maxp", words({1, 0, 3, 4, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0})},
    };
    Bytes face = words({1, 0, std::size(tables), 64, 2, 48});
    formats::ByteWriter data;
    for (const auto& [tag, bytes] : tables) {
        const auto offset = static_cast<int>(12 + std::size(tables) * 16 + data.size());
        face =
            join({face, asBytes(tag), words({0, 0, 0, offset, 0, static_cast<int>(bytes.size())})});
        data.block(bytes).padTo(4);
    }
    return join({face, data.bytes()});
}

TEST(FaceFont, RendersTheCharactersOfTheFace) {
    constexpr int kSize = 16; // four units of the face are a pixel
    const Bytes face = smallFace();
    const auto refusal = [](const Bytes& damaged) {
        return refusalOf([&] {
            for (const auto& [code, glyph] : rsc::renderFace(damaged, {kSize}).glyphs)
                EXPECT_LE(std::max(glyph.width, glyph.height), rsc::kLargestGlyph);
            return 0;
        });
    };
    EXPECT_NE(refusal({}), "");
    if (!rsc::canRenderFaces()) GTEST_SKIP() << refusal(face);
    rsc::BitmapFont font = rsc::renderFace(face, {kSize});
    EXPECT_TRUE(font.ascent == 12 && font.descent == 4 && font.leading == 2);
    const std::map<int, Glyph> expected = {{'A', {6, 0, 8, 4, 8, std::vector<bool>(32, true)}},
                                           {'B', {4, -1, 2, 2, 4, std::vector<bool>(8, true)}}};
    EXPECT_EQ(font.glyphs, expected);
    font = rsc::renderFace(face, {kSize, true, false}); // bold
    EXPECT_EQ(font.glyphs.at('A'), (Glyph{7, 0, 8, 5, 8, std::vector<bool>(40, true)}));
    font = rsc::renderFace(face, {kSize, false, true}); // italic
    const Glyph& a = font.glyphs.at('A');
    EXPECT_EQ(a.advance, 6);
    EXPECT_TRUE(!a.ink[a.at(0, 0)] && a.ink[a.at(0, a.height - 1)]) << "the top leans to the right";
    rsc::FontPlan plan{.face = rsc::FaceStyle{kSize}};
    EXPECT_EQ(rsc::buildFont(plan, face)[22], 2) << "leading";
    plan.leading = 0;
    EXPECT_EQ(rsc::buildFont(plan, face)[22], 0);
    const auto manifest = rsc::parseManifest("library a.rsc\nfont 1 a.ttf 14 italic", "M");
    const auto& [size, isBold, isItalic] =
        std::get<rsc::FontPlan>(manifest.libraries.at(0).resources.at(0).content).face.value();
    EXPECT_TRUE(size == 14 && !isBold && isItalic);
    for (std::size_t at = 0; at < face.size(); ++at) { // any damage is refused or taken
        refusal(Bytes(face.begin(), face.begin() + static_cast<long>(at)));
        refusal(changed(face, at, face[at] ^ 0x7F));
    }
}

} // namespace
