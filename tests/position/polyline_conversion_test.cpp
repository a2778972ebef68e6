#include <clocale>

#include "../../common/kinds/conversion_settings.h"
#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Convert2Polyline, SettingsTextInAnyLocale) {
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // where there is one, it writes a comma
    EXPECT_EQ(ConversionSettings("Line", 0.01), "SegmentType=Line;AbsoluteError=      0.010000;");
    EXPECT_EQ(ConversionSettings("Both", -1e300).size(), 32u + 309) << "longer than the field";
    std::setlocale(LC_ALL, "C");
}

TEST(Convert2Polyline, TypesOfSegments) {
    const CCadCircle circle({0, 0}, 5);
    const auto count = [&](int type) {
        const std::unique_ptr<CCadPolyline> made(Convert2Polyline(&circle, type, 0.001));
        return made ? made->GetSegmentCount() : 0;
    };
    EXPECT_EQ(count(0), 2) << "lines and arcs";
    EXPECT_EQ(count(1), 158) << "lines";
    EXPECT_EQ(count(3), 0);
    EXPECT_EQ(Convert2Polyline(&circle, kNaN), nullptr);
}

// Each map held 7 before.
TEST(Convert2Polyline, SegmentMapsGrow) {
    for (const auto& [object, expected] :
         Table<const char*, std::vector<int>>{{"circle 0 0 5", {0, 0, 7}},
                                              {"line 0 0 1 1", {7, 0}},
                                              {"0 0 L 1 0 A 1 1 1 L 0 0", {7, 0, 1, 2}},
                                              {"null", {7}}}) {
        std::vector<int> map{7};
        const std::unique_ptr<CCadPolyline> made(Convert2Polyline(Object(object).get(), map, 0.1));
        EXPECT_EQ(map, expected) << object;
    }
}
