#include "host/drawing/affine.h"
#include "host/drawing/font.h"
#include "host/fixture.h"

using namespace test;
using host::Affine, math::DPOINT2;

namespace {

// A drawing of texts with what its header and its tables declare. %%32 stands for a blank.
DrawingOf TextsOf(const std::string& entities, const std::string& header = "",
                  const std::string& styles = "") {
    return DrawingOf(DxfFile(entities, "0 ENDSEC 0 SECTION 2 HEADER " + header
                                           + " 0 ENDSEC 0 SECTION 2 TABLES 0 TABLE 2 STYLE " + styles
                                           + " 0 ENDTAB"));
}

struct Box {
    DPOINT2 lower, upper;
};

Box BoxOf(const std::string& entity, const std::string& styles = "") {
    const DrawingOf read = TextsOf(entity, "", styles);
    const qev::CadRect box = read.objects.at(0)->GetBoundRect();
    return {{box.x, box.y}, {box.x + box.width, box.y + box.height}};
}

// The box of a text beside the one that a map of the box of another text gives.
void ExpectBox(const Box& box, const Box& from, const Affine& map) {
    const DPOINT2 p = map.Point(from.lower), q = map.Point(from.upper);
    EXPECT_POINT_NEAR(box.lower, (DPOINT2{std::min(p.x, q.x), std::min(p.y, q.y)}), 1e-9);
    EXPECT_POINT_NEAR(box.upper, (DPOINT2{std::max(p.x, q.x), std::max(p.y, q.y)}), 1e-9);
}

const auto font = host::Font::Open();
const double kWidth = font->GlyphOf('H').advance + font->GlyphOf('p').advance; // of "Hp", in text heights
const double kDepth = font->Depth();

TEST(DxfTexts, AlignmentsOfALine) {
    const Box plain = BoxOf("0 TEXT 10 0 20 0 40 2 1 Hp");
    EXPECT_NEAR(plain.upper.y, 2, 1e-9) << "capitals have the text's height";
    EXPECT_NEAR(plain.lower.y, -2 * kDepth, 1e-9);
    const struct {
        int along, across;
        double x, y; // of the text's point in it, in text heights
    } cases[] = {
        {0, 1, 0, -kDepth},
        {0, 2, 0, 0.5},
        {0, 3, 0, 1},
        {1, 0, kWidth / 2, 0},
        {1, 1, kWidth / 2, -kDepth},
        {1, 2, kWidth / 2, 0.5},
        {1, 3, kWidth / 2, 1},
        {2, 0, kWidth, 0},
        {2, 1, kWidth, -kDepth},
        {2, 2, kWidth, 0.5},
        {2, 3, kWidth, 1},
        {4, 0, kWidth / 2, (1 - kDepth) / 2},
    };
    for (const auto& [along, across, x, y] : cases) {
        SCOPED_TRACE(std::to_string(along) + ", " + std::to_string(across));
        const Box box = BoxOf("0 TEXT 10 99 20 99 11 7 21 5 40 2 1 Hp 72 " + std::to_string(along) + " 73 "
                              + std::to_string(across));
        ExpectBox(box, plain, Affine::Translation({7 - 2 * x, 5 - 2 * y}));
    }
    const double fitting = 30 / kWidth / 2;
    const std::string points = "0 TEXT 10 1 20 2 11 31 21 2 40 2 1 Hp 72 ";
    ExpectBox(BoxOf(points + "3"), plain, Affine::Translation({1, 2}) * Affine::Scale(fitting, fitting));
    ExpectBox(BoxOf(points + "5"), plain, Affine::Translation({1, 2}) * Affine::Scale(fitting, 1));
}

TEST(DxfTexts, WhatChangesATextChangesItsBox) {
    const std::string line = "0 TEXT 10 0 20 0 40 2 1 Hp ", paragraph = "0 MTEXT 71 7 10 0 20 0 40 2 1 Hp ";
    const std::string styles =
        "0 STYLE 2 Wide 40 3 41 2 0 STYLE 2 Fixed 40 4 41 1 0 STYLE 2 STANDARD 40 0 41 0";
    const struct {
        std::string entity;
        Affine map; // of the text without it
    } cases[] = {
        {line + "41 2", Affine::Scale(2, 1)},
        {line + "41 0", {}},
        {"0 ATTRIB 10 0 20 0 40 2 1 Hp 2 TAG 73 3", {}},
        {"0 ATTRIB 10 9 20 9 11 0 21 2 40 2 1 Hp 73 0 74 3", {}},
        {line + "71 2", Affine::Scale(-1, 1)},
        {line + "71 4", Affine::Scale(1, -1)},
        {line + "230 -1", Affine::Scale(-1, 1)},
        {line + "50 180", Affine::Scale(-1, -1)},
        {line + "50 90", Affine::Rotation(math::kPi / 2)},
        {line + "7 Wide", {}},
        {"0 TEXT 10 0 20 0 1 Hp 7 FIXED", Affine::Scale(2, 2)},
        {paragraph, {}},
        {paragraph + "7 wide", Affine::Scale(2, 1)},
        {paragraph + "50 90", Affine::Rotation(math::kPi / 2)},
        {paragraph + "50 45 11 0 21 3", Affine::Rotation(math::kPi / 2)},
        {paragraph + "11 1 21 1 50 90", Affine::Rotation(math::kPi / 2)},
        {paragraph + "230 -1", Affine::Scale(-1, 1)},
        {paragraph + "101 Embedded 1 HHH 11 0 21 1", {}},
    };
    for (const auto& [entity, map] : cases) {
        SCOPED_TRACE(entity);
        ExpectBox(BoxOf(entity, styles), BoxOf(line), map);
    }
    EXPECT_NEAR(BoxOf("0 TEXT 10 0 20 0 40 1 1 H 51 45").upper.x - BoxOf("0 TEXT 10 0 20 0 40 1 1 H").upper.x,
                1, 1e-9)
        << "capitals lean by their height";
}

TEST(DxfTexts, AttachmentsOfParagraphs) {
    const std::string entity = "0 MTEXT 10 0 20 0 40 2 1 Hp\\PHp ";
    const Box first = BoxOf(entity + "71 1");
    EXPECT_NEAR(first.upper.y, 0, 1e-9);
    EXPECT_NEAR(first.lower.y, -2 * (1 + 5 / 3.0 + kDepth), 1e-9);
    for (int place = 2; place <= 9; ++place) {
        SCOPED_TRACE(place);
        const int column = (place - 1) % 3, row = (place - 1) / 3;
        ExpectBox(BoxOf(entity + "71 " + std::to_string(place)), first,
                  Affine::Translation({-column * kWidth, row * (1 + 5 / 3.0)}));
    }
    EXPECT_NEAR(BoxOf(entity + "44 2").lower.y, -2 * (1 + 10 / 3.0 + kDepth), 1e-9);
    const std::string larger = "0 MTEXT 10 0 20 0 40 2 1 H\\P\\H2x;H ";
    EXPECT_NEAR(BoxOf(larger).lower.y, -2 * (1 + 10 / 3.0), 1e-9);
    EXPECT_NEAR(BoxOf(larger + "73 2").lower.y, -2 * (1 + 5 / 3.0), 1e-9);
}

TEST(DxfTexts, LinesUnderLettersAreClosedContours) {
    const DrawingOf plain = TextsOf("0 TEXT 10 0 20 0 40 2 1 Hp"),
                    read = TextsOf("0 TEXT 10 0 20 0 40 2 1 %%uHp");
    EXPECT_EQ(read.objects.at(0)->GetMembers()->size(), plain.objects.at(0)->GetMembers()->size() + 1);
    const qev::CCadObject& bar = *read.objects[0]->GetMembers()->back();
    EXPECT_TRUE(bar.IsClose());
    EXPECT_NEAR(bar.GetBoundRect().width, 2 * kWidth, 1e-9);
    EXPECT_LT(bar.GetBoundRect().y + bar.GetBoundRect().height, 0);
}

TEST(DxfTexts, OneLetterInAllEncodings) {
    const std::string text = "0 TEXT 10 0 20 0 40 1 1 ";
    const struct {
        const char *header, *bytes, *utf8;
    } cases[] = {
        {"", "\\U+041D", "\xD0\x9D"},
        {"", "\xD0\x9D", "\xD0\x9D"},
        {"9 $ACADVER 1 AC1021 9 $DWGCODEPAGE 3 ANSI_1252", "\xD0\x9D", "\xD0\x9D"},
        {"9 $ACADVER 1 AC1021 9 $DWGCODEPAGE 3 ANSI_1251", "\xCD", "\xD0\x9D"},
        {"9 $ACADVER 1 AC1015 9 $DWGCODEPAGE 3 ansi_1251", "\xCD", "\xD0\x9D"},
        {"9 $DWGCODEPAGE 3 dos866", "\x8D", "\xD0\x9D"},
        {"9 $DWGCODEPAGE 3 gb2312", "\xC4\x5C", "\xE8\x85\xAC"}, // its second byte is a backslash
        {"9 $DWGCODEPAGE 3 nonsense", "\xC4", "\xC3\x84"},
        {"", "\xC4", "\xC3\x84"},
    };
    for (const auto& [header, bytes, utf8] : cases) {
        const DrawingOf read = TextsOf(text + bytes + " 8 " + bytes, header), plain = TextsOf(text + utf8);
        EXPECT_STREQ(dynamic_cast<const qev::CCadText&>(*read.objects.at(0)).GetText(), utf8) << header;
        EXPECT_STREQ(read.objects[0]->GetKey("Layer"), utf8) << header;
        EXPECT_EQ(read.objects[0]->GetBoundRect().width, plain.objects[0]->GetBoundRect().width) << header;
    }
}

TEST(DxfTexts, WhatCannotBeDrawnIsTold) {
    const DrawingOf read =
        TextsOf("0 TEXT 10 0 20 0 40 1 1 A\\U+4E2D\\U+4E2D 0 TEXT 10 0 20 0 1 A 0 TEXT 10 0 20 0 40 1 1 "
                    + std::string(10'001, 'x') + " 0 TEXT 10 0 20 0 1 A 7 Bad",
                "", "0 STYLE 2 BAD 40 x");
    EXPECT_EQ(read.drawing.skipped.at("letters that the font lacks"), 2);
    ASSERT_EQ(read.objects.size(), 1u);
    ASSERT_EQ(read.log.Errors().size(), 3u);
    ExpectContains(read.log.Errors()[0], {"TEXT has no height"});
    ExpectContains(read.log.Errors()[1], {"has a text of 10001 characters"});
    ExpectContains(read.log.Errors()[2], {"'x' is not a number"});
}

} // namespace
