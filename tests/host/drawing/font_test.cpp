#include <ft2build.h>

#include "host/drawing/font.h"
// after the library's settings
#include <freetype/freetype.h>
#include <freetype/ftbbox.h>
#include <freetype/ftoutln.h>

#include "host/drawing/glyph_contour.h"
#include "support/shapes.h"

using namespace test;
using math::DPOINT2;

namespace {

// Beside the program's folder, where the build has put it.
const std::string kFontFile = QEV_FONT;

TEST(Font, LettersHaveTheBoxesAndAdvancesOfTheFile) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    ASSERT_EQ(FT_Init_FreeType(&library), 0);
    ASSERT_EQ(FT_New_Face(library, kFontFile.c_str(), 0, &face), 0);
    ASSERT_EQ(FT_Load_Char(face, 'H', FT_LOAD_NO_SCALE), 0);
    const auto capital = static_cast<double>(face->glyph->metrics.height);
    const auto font = host::Font::Open();
    for (const char32_t letter : U"HsSC\x41D\x2300 \xFFFE") {
        const host::Glyph& glyph = font->GlyphOf(letter);
        ASSERT_EQ(FT_Load_Char(face, letter, FT_LOAD_NO_SCALE), 0);
        EXPECT_EQ(glyph.contours.size(), static_cast<std::size_t>(face->glyph->outline.n_contours));
        EXPECT_NEAR(glyph.advance * capital, static_cast<double>(face->glyph->metrics.horiAdvance), 1e-9);
        EXPECT_EQ(glyph.isLacking, FT_Get_Char_Index(face, letter) == 0);
        // leaning, so that its box touches the middle of curves
        const FT_Matrix lean{0x10000, 0x8000, 0x4000, 0x10000};
        FT_BBox box;
        FT_Outline_Transform(&face->glyph->outline, &lean);
        FT_Outline_Get_BBox(&face->glyph->outline, &box);
        math::Bounds bounds;
        for (const auto& contour : glyph.contours) {
            const auto own = host::GlyphContour(contour, {{1, 0.25}, {0.5, 1}, {}}).GetBoundRect();
            bounds.Add(DPOINT2{own.x, own.y});
            bounds.Add(DPOINT2{own.x + own.width, own.y + own.height});
        }
        if (bounds.IsEmpty()) continue;
        const DPOINT2 lower{static_cast<double>(box.xMin), static_cast<double>(box.yMin)};
        const DPOINT2 upper{static_cast<double>(box.xMax), static_cast<double>(box.yMax)};
        EXPECT_POINT_NEAR(bounds.lower * capital, lower, 2) << "the file's box is rounded";
        EXPECT_POINT_NEAR(bounds.upper * capital, upper, 2);
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
}

TEST(Font, FilesThatAreNone) {
    EXPECT_EQ(host::Font::Open("nowhere.ttf"), nullptr);
}

TEST(GlyphContour, AnswersWhatItsSegmentsAnswer) {
    const auto font = host::Font::Open();
    for (Random random; random.Rounds(100);) {
        const host::Glyph& glyph = font->GlyphOf(static_cast<char32_t>(random.Int('!', '~')));
        host::Affine map{random.Point(3), random.Point(3), random.Point()};
        if (random.Coin()) map.x.y = map.y.x = 0;
        if (random.Coin()) map.y = math::LeftOf(map.x);
        const host::GlyphContour contour(glyph.contours.back(), map);
        math::Bounds bounds;
        double length = 0, area = 0;
        DPOINT2 end = contour.GetStartPoint();
        for (int i = 0; i < contour.GetSegmentCount(); ++i) {
            const qev::SEGMENT segment = contour.GetSegment(i);
            EXPECT_POINT_NEAR(segment.ptStart, end, 1e-12);
            end = segment.ptEnd;
            bounds.Add(segment.GetBounds());
            length += segment.GetLength();
            area += math::Cross(segment.ptStart - map.shift, end - map.shift) / 2 + segment.GetChordArea();
        }
        EXPECT_POINT_NEAR(end, contour.GetEndPoint(), 1e-12);
        const qev::CadRect box = contour.GetBoundRect();
        EXPECT_POINT_NEAR((DPOINT2{box.x, box.y}), bounds.lower, 1e-9);
        EXPECT_POINT_NEAR((DPOINT2{box.x + box.width, box.y + box.height}), bounds.upper, 1e-9);
        EXPECT_NEAR(contour.GetLength(), length, 1e-8 * length);
        EXPECT_EQ(contour.GetDirection(), qev::DirectionOf(area > 0));
        const std::unique_ptr<qev::CCadObject> clone(contour.Clone(true));
        EXPECT_EQ(clone->GetLength(), contour.GetLength());
    }
}

} // namespace
