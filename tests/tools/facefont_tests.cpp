// Fonts out of faces.
#include "fonts/facefont.h"

#include "fonts/fontbuilder.h"
#include "manifest/manifest.h"
#include "tooltest.h"

namespace {

using namespace testfiles;
using rsc::Glyph;

/// A face of 64 units an em with rectangles as characters: "A" from (0, 0) to (16, 32), advance 24,
/// and "B" from (-4, -8) to (4, 8), advance 16. Ascent 48, descent 16, line gap 8.
const Bytes kFace = bytesOf(
    "0001(3)07004000020030636D6170(7)7C(3)1A676C7966(7)98(3)4468656164(7)DC(3)3668686561(6)0114(3)"
    "24686D7478(6)0138(3)0C6C6F6361(6)0144(3)086D617870(6)014C(3)20(3)0100030001(3)0C0006000E(3)41"
    "000200010002(3)01(5)1000200003000001010101(5)10(5)200000FFE00001FFFCFFF800040008000300000101"
    "0101FFFC(3)080000FFF800100000FFF00001(3)01(6)5F0F3CF5(3)40(16)FFFCFFF800100020(3)080002(7)01"
    "(3)30FFF000080018(5)100001(15)03000A(3)18(3)10FFFC(5)1100220001(3)0300040001(5)01(11)01(4)");

TEST(FaceFont, RendersTheCharactersOfTheFace) {
    const auto refusal = [](const Bytes& damaged) {
        return refusalOf([&] {
            for (const auto& [code, glyph] : rsc::renderFace(damaged, {16}).glyphs)
                EXPECT_LE(std::max(glyph.width, glyph.height), rsc::kLargestGlyph);
            return 0;
        });
    };
    EXPECT_NE(refusal({}), "");
    if (!rsc::canRenderFaces()) GTEST_SKIP() << refusal(kFace);
    rsc::BitmapFont font = rsc::renderFace(kFace, {16}); // four units of the face are a pixel
    EXPECT_TRUE(font.ascent == 12 && font.descent == 4 && font.leading == 2);
    const std::map<int, Glyph> expected = {{'A', {6, 0, 8, 4, 8, std::vector<bool>(32, true)}},
                                           {'B', {4, -1, 2, 2, 4, std::vector<bool>(8, true)}}};
    EXPECT_EQ(font.glyphs, expected);
    font = rsc::renderFace(kFace, {16, true, false}); // bold
    EXPECT_EQ(font.glyphs.at('A'), (Glyph{7, 0, 8, 5, 8, std::vector<bool>(40, true)}));
    font = rsc::renderFace(kFace, {16, false, true}); // italic
    const Glyph& a = font.glyphs.at('A');
    EXPECT_EQ(a.advance, 6);
    EXPECT_TRUE(!a.ink[a.at(0, 0)] && a.ink[a.at(0, a.height - 1)]) << "the top leans to the right";
    rsc::FontPlan plan{.face = rsc::FaceStyle{16}};
    EXPECT_EQ(rsc::buildFont(plan, kFace)[22], 2) << "leading";
    plan.leading = 0;
    EXPECT_EQ(rsc::buildFont(plan, kFace)[22], 0);
    const auto manifest = rsc::parseManifest("library a.rsc\nfont 1 a.ttf 14 italic", "M");
    const auto& [size, isBold, isItalic] =
        std::get<rsc::FontPlan>(manifest.libraries.at(0).resources.at(0).content).face.value();
    EXPECT_TRUE(size == 14 && !isBold && isItalic);
    for (std::size_t at = 0; at < kFace.size(); ++at) { // any damage is refused or taken
        refusal(Bytes(kFace.begin(), kFace.begin() + static_cast<long>(at)));
        refusal(changed(kFace, at, kFace[at] ^ 0x7F));
    }
}

} // namespace
