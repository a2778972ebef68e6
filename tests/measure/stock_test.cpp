#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Stock = std::unique_ptr<Adobe>;

TEST(Stock, RectangularPlate) {
    const Stock plate(Make_RectPlane(100, 50, 20));
    const auto* outline = static_cast<const CCadPolyline*>(plate->GetSectionData()->GetFront());
    EXPECT_POINT_NEAR(outline->GetStartPoint(), (DPOINT2{-50, -25}), 0);
    EXPECT_EQ(GetCadPolylineArea(outline, false), 5000);
    const std::unique_ptr<CCadObject> given(plate->GetSectionData()->GetFront());
    plate->GetSectionData()->PopBack();
    plate->GetSectionData()->PushBack(Polyline("-50 -25 L 50 -25 L 50 25").release()); // two sides tell
    double width = 0, height = 0, thickness = 0;
    EXPECT_FALSE(GetRectPlaneParam(plate.get(), width, height, thickness)) << "though it has read them";
    EXPECT_EQ((std::vector{width, height, thickness}), (std::vector<double>{100, 50, 20}));
}

TEST(Stock, SameOutlines) {
    for (const auto& [name, a, b, isSame] : Table<const char*, const char*, const char*, bool>{
             {"one without segments", "polyline", kSquare, false},
             {"1e-6 mm apart", "0 0 L 5 0", "0 0 L 5 0.000001", true},
             {"farther apart", "0 0 L 5 0", "0 0 L 5 0.0000011", false},
             {"other bulges", "0 0 A 1 0 1", "0 0 A 1 0 1.01", false}}) {
        CCadGroup left, right;
        left.PushBack(Object(a).release());
        right.PushBack(Object(b).release());
        EXPECT_EQ(CAdobeHelper::IsSameProjectContour(&left, &right), isSame) << name;
    }
    const Stock thick(Make_RectPlane(100, 50, 20)), thin(Make_RectPlane(100, 50, 3));
    EXPECT_TRUE(CAdobeHelper::IsSameProjectContour(thick->GetSectionData(), thin->GetSectionData()));
}

} // namespace
