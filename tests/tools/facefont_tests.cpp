#include "fonts/facefont.h"

#include "fonts/fontbuilder.h"
#include "testfonts.h"

#include <gtest/gtest.h>

namespace {

using rsc::BitmapFont;
using rsc::Bytes;
using rsc::Glyph;
using rsc::Refusal;

constexpr int kSize = 16; ///< four units of the face are a pixel

class FaceFont : public testing::Test {
    void SetUp() override {
        if (rsc::canRenderFaces()) return;
        EXPECT_THROW((void)rsc::renderFace(testfonts::smallFace(), {kSize}), Refusal);
        GTEST_SKIP() << "built without FreeType";
    }
};

TEST_F(FaceFont, RendersTheCharactersOfTheFace) {
    const BitmapFont font = rsc::renderFace(testfonts::smallFace(), {kSize});
    EXPECT_EQ(font.ascent, 12);
    EXPECT_EQ(font.descent, 4);
    EXPECT_EQ(font.leading, 2);
    rsc::FontPlan plan;
    plan.face = rsc::FaceStyle{kSize};
    EXPECT_EQ(rsc::buildFont(plan, testfonts::smallFace())[22], 2);
    plan.leading = 0;
    EXPECT_EQ(rsc::buildFont(plan, testfonts::smallFace())[22], 0);
    ASSERT_EQ(font.glyphs.size(), 2U);
    EXPECT_EQ(font.glyphs.at('A'), (Glyph{6, 0, 8, 4, 8, std::vector<bool>(32, true)}));
    EXPECT_EQ(font.glyphs.at('B'), (Glyph{4, -1, 2, 2, 4, std::vector<bool>(8, true)}));
}

TEST_F(FaceFont, IsBoldOrSlantedOnlyWhenAsked) {
    const BitmapFont bold = rsc::renderFace(testfonts::smallFace(), {kSize, true, false});
    EXPECT_EQ(bold.glyphs.at('A'), (Glyph{7, 0, 8, 5, 8, std::vector<bool>(40, true)}));
    const BitmapFont italic = rsc::renderFace(testfonts::smallFace(), {kSize, false, true});
    const Glyph& a = italic.glyphs.at('A');
    EXPECT_EQ(a.advance, 6);
    EXPECT_FALSE(a.ink[a.at(0, 0)]) << "the top leans to the right";
    EXPECT_TRUE(a.ink[a.at(0, a.height - 1)]);
}

TEST_F(FaceFont, RefusesOrTakesAnyDamage) {
    const Bytes face = testfonts::smallFace();
    EXPECT_THROW((void)rsc::renderFace({}, {kSize}), Refusal);
    const auto examine = [](const Bytes& damaged) {
        try {
            for (const auto& [code, glyph] : rsc::renderFace(damaged, {kSize}).glyphs)
                EXPECT_LE(std::max(glyph.width, glyph.height), rsc::kLargestGlyph);
        } catch (const Refusal& refusal) {
            EXPECT_STRNE(refusal.what(), "");
        }
    };
    for (std::size_t at = 0; at < face.size(); ++at) {
        examine(Bytes(face.begin(), face.begin() + static_cast<long>(at)));
        Bytes damaged = face;
        damaged[at] ^= 0x7F;
        examine(damaged);
    }
}

} // namespace
