#include "host/fixture.h"

using namespace test;
using host::UnitSource;

namespace {

// A circle of radius 2 in the file's unit, and a line in a block of it.
std::string FileOf(const std::string& variables) {
    return DxfFile("0 CIRCLE 10 5 20 0 40 2 0 INSERT 2 B 10 0 20 0", "0 BLOCK 2 B 0 LINE 10 0 20 0 11 1 21 0",
                   variables);
}

TEST(DxfUnits, TheUnitScalesTheDrawing) {
    const struct {
        const char* name;
        const char* variables;
        const char* asked;
        double mm;
        const char* unit;
        UnitSource source;
        std::size_t remarks;
    } cases[] = {
        {"nothing said", "", "", 1, "mm", UnitSource::kAssumed, 0},
        {"unitless", "9 $INSUNITS 70 0 9 $MEASUREMENT 70 1", "", 1, "mm", UnitSource::kAssumed, 0},
        {"imperial alone", "9 $INSUNITS 70 0 9 $MEASUREMENT 70 0", "", 1, "mm", UnitSource::kHint, 1},
        {"no such number", "9 $INSUNITS 70 25", "", 1, "mm", UnitSource::kAssumed, 1},
        {"inches", "9 $INSUNITS 70 1 9 $MEASUREMENT 70 1", "", 25.4, "in", UnitSource::kFile, 0},
        {"feet", "9 $INSUNITS 70 2", "", 304.8, "ft", UnitSource::kFile, 0},
        {"miles", "9 $INSUNITS 70 3", "", 1609344, "mi", UnitSource::kFile, 0},
        {"mm", "9 $INSUNITS 70 4", "", 1, "mm", UnitSource::kFile, 0},
        {"metres", "9 $INSUNITS 70 6", "", 1000, "m", UnitSource::kFile, 0},
        {"mils", "9 $INSUNITS 70 9", "", 0.0254, "mil", UnitSource::kFile, 0},
        {"yards", "9 $INSUNITS 70 10", "", 914.4, "yd", UnitSource::kFile, 0},
        {"microns", "9 $INSUNITS 70 13", "", 0.001, "um", UnitSource::kFile, 0},
        {"hectometres", "9 $INSUNITS 70 16", "", 1e5, "hm", UnitSource::kFile, 0},
        {"survey feet", "9 $INSUNITS 70 21", "", 304.800609601219, "survey ft", UnitSource::kFile, 0},
        {"survey miles", "9 $INSUNITS 70 24", "", 1609347.21869444, "survey mi", UnitSource::kFile, 0},
        {"asked", "9 $INSUNITS 70 1", "MM", 1, "mm", UnitSource::kSettings, 0},
        {"asked by its name", "9 $INSUNITS 70 4", "Inches", 25.4, "in", UnitSource::kSettings, 0},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.name);
        const DrawingOf read(FileOf(expected.variables), {.drawingUnit = expected.asked});
        ASSERT_EQ(read.objects.size(), 2u);
        EXPECT_NEAR(read.objects[0]->GetBoundRect().width, 4 * expected.mm, 1e-12 * expected.mm);
        EXPECT_NEAR(read.objects[1]->GetLength(), expected.mm, 1e-12 * expected.mm) << "once, not twice";
        EXPECT_EQ(read.drawing.unit.name, expected.unit);
        EXPECT_EQ(read.drawing.unit.source, expected.source);
        EXPECT_EQ(read.log.Remarks().size(), expected.remarks);
    }
}

TEST(DxfUnits, UnitsThatCannotBeReadIn) {
    EXPECT_THROW(DrawingOf(FileOf("9 $INSUNITS 70 20")), host::DrawingError) << "parsecs";
    EXPECT_THROW(DrawingOf(FileOf(""), {.drawingUnit = "cubits"}), host::DrawingError);
}

} // namespace
