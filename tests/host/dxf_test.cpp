#include "host/drawing/join.h"
#include "host/drawing/stroke_font.h"
#include "host/dxf/dxf_objects.h"
#include "host/dxf_text.h"
#include "host/host.h"
#include "support/support.h"

namespace {

// The objects of a file that must be sound.
struct Read {
    explicit Read(const std::string& bytes, bool lenient = false) : log(lenient) {
        host::ReadDxfBytes(bytes, log, drawing);
        objects = drawing.Objects();
    }
    host::ErrorLog log;
    host::Drawing drawing;
    std::vector<const CCadObject*> objects;
};

// What becomes of each entity: code, length, start point, direction (0: not asked).
TEST(Dxf, Entities) {
    for (const auto& [row, entity, kind, length, start, direction] :
         Rows<std::string, int, double, DPOINT2, int>(
             "'0 LINE 10 1 20 2 11 4 21 6' 0x1200 5 1,2 0; '0 POINT 10 1 20 2' 0x1100 0 1,2 0;"
             "'0 CIRCLE 10 1 20 2 40 3' 0x1400 18.849555921538759 4,2 2;"
             "'0 CIRCLE 10 1 20 2 40 3 230 -1' 0x1400 18.849555921538759 2,2 1;" // seen from below
             "'0 ARC 10 0 20 0 40 2 50 90 51 0' 0x1500 9.42477796076938 0,2 2;"
             "'0 ARC 10 0 20 0 40 2 50 90 51 180 230 -1' 0x1500 3.141592653589793 0,2 1;"
             "'0 ELLIPSE 10 0 20 0 11 0 21 2 40 0.5 41 0 42 6.283185307179586' 0x1600 9.68844822054768 0,2 2;"
             "'0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 41 3.141592653589793 42 6.283185307179586' 0x1700 "
             "4.844224110273838 -2,0 2; '0 ELLIPSE 10 0 20 0 11 2 21 0 40 1 41 0 42 1' 0x1500 2 2,0 2;"
             "'0 LWPOLYLINE 90 2 70 1 10 0 20 0 42 1 10 2 20 0' 0x1840 5.141592653589793 0,0 2;"
             "'0 POLYLINE 70 0 0 VERTEX 10 0 20 0 42 -1 0 VERTEX 10 2 20 0 0 VERTEX 70 16 10 9 20 9 "
             "0 VERTEX 10 2 20 1 0 SEQEND' 0x1840 4.141592653589793 0,0 0;"
             "'0 SPLINE 70 8 71 1 40 0 40 0 40 1 40 2 40 2 10 0 20 0 10 3 20 4 10 3 20 0' 0x1860 9 0,0 1;"
             "'0 SPLINE 70 8 71 2 40 0 40 0 40 0 40 1 40 1 40 1 10 0 20 0 10 0.5 20 0 10 1 20 1' 0x1860 "
             "1.4789428575445975 0,0 2; '0 SPLINE 70 0 71 3 11 0 21 0 11 1 21 0 11 5 21 0' 0x1860 5 0,0 0")) {
        SCOPED_TRACE(row);
        const std::string file = DxfFile(entity);
        for (const Read& read : {Read(file), Read(BinaryFile(file))}) {
            ASSERT_EQ(read.objects.size(), 1u);
            EXPECT_EQ(read.objects[0]->GetType(), static_cast<cad_t>(kind));
            EXPECT_NEAR(read.objects[0]->GetLength(), length, 1e-9);
            EXPECT_POINT_NEAR(read.objects[0]->GetStartPoint(), start, 1e-12);
            if (direction) EXPECT_EQ(GetCadOBjectDir(read.objects[0]), direction);
        }
    }
}

// A quarter circle as a rational spline of degree two: every piece lies on the circle.
TEST(Dxf, RationalSplines) {
    const Read read(DxfFile("0 SPLINE 71 2 40 0 40 0 40 0 40 1 40 1 40 1 41 1 41 0.7071067811865476 41 1 "
                            "10 1 20 0 10 1 20 1 10 0 20 1"));
    const CCadObject& arc = *read.objects.at(0);
    EXPECT_NEAR(arc.GetLength(), kPi / 2, 1e-7);
    for (int i = 0; i < arc.GetSegmentCount(); ++i)
        EXPECT_NEAR(math::Norm(arc.GetSegment(i).GetPoint(0.5)), 1, 1e-7);
}

// Inserts nested, scaled, turned and mirrored: the points of the block go where the maps send them.
TEST(Dxf, Inserts) {
    const std::string blocks = "0 BLOCK 2 A 10 1 20 0 0 ARC 10 1 20 0 40 1 50 0 51 90 0 LWPOLYLINE 70 0 10 1 "
                               "20 0 42 1 10 3 20 0 0 ENDBLK "
                               "0 BLOCK 2 B 10 0 20 0 0 INSERT 2 A 10 5 20 0 50 90 0 ENDBLK";
    const Read mirrored(DxfFile("0 INSERT 2 B 10 100 20 0 41 -2 42 2", blocks));
    ASSERT_TRUE(mirrored.objects.size() == 2 && mirrored.objects[0]->GetType() == kCadArc);
    EXPECT_POINT_NEAR(mirrored.objects[0]->GetStartPoint(), (DPOINT2{90, 2}), 1e-12);
    EXPECT_POINT_NEAR(mirrored.objects[0]->GetEndPoint(), (DPOINT2{92, 0}), 1e-12);
    EXPECT_EQ(GetCadOBjectDir(mirrored.objects[0]), 1);
    EXPECT_NEAR(mirrored.objects[1]->GetSegment(0).dBulge, -1, 1e-12);

    const Read squeezed(DxfFile("0 INSERT 2 A 10 0 20 0 41 3 42 1 70 2 71 2 44 10 45 20", blocks));
    ASSERT_TRUE(squeezed.objects.size() == 8 && squeezed.objects[0]->GetType() == kCadEllipseArc);
    EXPECT_POINT_NEAR(squeezed.objects[6]->GetStartPoint(), (DPOINT2{13, 20}), 1e-12);
    EXPECT_EQ(squeezed.objects[1]->GetType(), kCadPolylineEx) << "its arc is no circle any more";
    // the half circle 1 below (2, 0) becomes an ellipse with the axes 3 and 1
    for (int i = 0; i < squeezed.objects[1]->GetSegmentCount(); ++i) {
        const DPOINT2 p = squeezed.objects[1]->GetSegment(i).GetPoint(0.4);
        EXPECT_NEAR((p.x - 3) * (p.x - 3) / 9 + p.y * p.y, 1, 1e-6);
    }
}

TEST(Dxf, TextsAreStrokes) {
    EXPECT_EQ(host::PlainText("{\\fArial|b0;A\\PB} 30%%d \\\\C\\H2.5x;"), "A\nB 30 \\C");
    const Read read(DxfFile("0 TEXT 10 5 20 5 40 2 50 90 1 I-1"));
    ASSERT_EQ(read.objects.size(), 1u);
    EXPECT_STREQ(static_cast<const CCadText*>(read.objects[0])->GetText(), "I-1");
    const CadRect box = read.objects[0]->GetBoundRect(); // height 2, turned to the left
    EXPECT_POINT_NEAR((DPOINT2{box.x, box.y}), (DPOINT2{3, 5 + 1 / 3.0}), 1e-12);
    EXPECT_NEAR(box.width, 2, 1e-12);
    EXPECT_FALSE(host::StrokesOf("\xe4").empty()) << "what the font lacks is a box";
}

void ExpectError(const std::string& file, const std::string& message) {
    try {
        Read{file};
        ADD_FAILURE() << "no error: " << message;
    } catch (const host::DrawingError& error) {
        const std::string text = error.what();
        EXPECT_TRUE(text.find(message) != std::string::npos && text.find('\n') == std::string::npos) << text;
    }
}

// Each damage ends in one line that says where.
TEST(Dxf, Damage) {
    const std::string good = DxfFile("0 LINE 10 1 20 2 11 4 21 6");
    const std::string loop = "0 BLOCK 2 L 0 INSERT 2 L 10 0 20 0 0 ENDBLK";
    std::string levels; // ten inserts of each level in the next
    for (int i = 1; i < 12; ++i) {
        levels += " 0 BLOCK 2 B" + std::to_string(i);
        for (int k = 0; k < 10; ++k) levels += " 0 INSERT 10 0 20 0 2 B" + std::to_string(i - 1);
        levels += " 0 ENDBLK";
    }
    const std::string bomb = "0 BLOCK 2 B0 0 LINE 10 1 20 2 11 4 21 6 0 ENDBLK" + levels;
    std::string vertices = "0 LWPOLYLINE 70 0";
    for (int i = 0; i < 600'000; ++i) vertices += " 10 1 20 2";
    const std::string binary = BinaryFile(good);
    const std::pair<std::string, const char*> cases[] = {
        {"", "holds no section"},
        {"\x7f\x45LF\x01\n\n", "line 1: '?ELF?' is no group code"},
        {good.substr(0, good.size() - 6), "ends before its EOF mark"},
        {good.substr(0, good.size() / 2), "line 11: the file ends"},
        {binary.substr(0, binary.size() - 3), "the file ends within a group"},
        {binary.substr(0, 40), "byte "},
        {std::string(binary.substr(0, 22) + std::string(40, '\xff')), "byte "},
        {Groups("0 EOF").substr(0, 3), "line 2"},
        {DxfFile("0 INSERT 2 L 10 0 20 0", loop), "deeper than 32 inserts"},
        {DxfFile("0 INSERT 2 B11 10 0 20 0", bomb), "inserts"},
        {DxfFile("0 INSERT 2 B11 10 0 20 0", "0 BLOCK 2 B0 0 ENDBLK" + levels), "inserts"},
        {DxfFile("0 INSERT 2 B0 10 0 20 0 41 1e9 42 1e9 70 30000 71 30000 44 1e9", bomb), "out of range"},
        {DxfFile(vertices), "larger than 500000 segments"}};
    for (const auto& [file, message] : cases) ExpectError(file, message);
    for (const auto& [row, entity, message] : Rows<std::string, std::string>(
             "'0 LINE 10 1e300 20 2 11 4 21 6' 'line 16: the number |1e300| is out of range';"
             "'0 POINT 10 nan 20 2' 'is out of range'; '0 LINE 10 1x 20 2 11 4 21 6' '|1x| is not a number';"
             "'0 LINE 10 1 20 2 11 4' 'line 14: LINE lacks its group 21';"
             "'0 LWPOLYLINE 90 1 70 0 10 1 20 1' 'LWPOLYLINE has fewer than two points';"
             "'0 LWPOLYLINE 70 0.5 10 1 20 1' 'is not a whole number';"
             "'0 SPLINE 71 99 10 0 20 0 10 1 20 1' 'unusable degree';"
             "'0 SPLINE 71 3 40 0 40 1 10 0 20 0 10 1 20 1 10 1 20 2 10 3 20 3' 'SPLINE has the wrong';"
             "'0 INSERT 2 nowhere 10 0 20 0' 'INSERT names the block |nowhere|'")) {
        std::string quoted = message;
        std::replace(quoted.begin(), quoted.end(), '|', '\'');
        ExpectError(DxfFile(entity), quoted);
    }
}

TEST(Dxf, LenientReadingKeepsTheRest) {
    const std::string whole =
        DxfFile("0 LINE 10 1 20 2 0 CIRCLE 10 0 20 0 40 1 0 HATCH 10 1 0 CIRCLE 10 0 20 0 40 1 230 0.5");
    const Read read(whole.substr(0, whole.find("0\nENDSEC\n0\nEOF") + 3), true);
    ASSERT_TRUE(read.objects.size() == 1 && read.log.Errors().size() == 2);
    EXPECT_NE(read.log.Errors()[0].find("the file ends"), std::string::npos);
    EXPECT_NE(read.log.Errors()[1].find("LINE lacks"), std::string::npos);
    EXPECT_EQ(read.drawing.skipped.at("HATCH"), 1);
}

} // namespace
