#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

TEST(PointSide, NamedPlaces) {
    constexpr auto kIn = PointSide::kInside, kOn = PointSide::kOn, kOut = PointSide::kOutside;
    for (const auto& [name, contour, p, tolerance, side] :
         Table<const char*, const char*, DPOINT2, double, PointSide>{
             {"on a level with two joints", "0 0 L 2 2 L 4 0 L 2 -2 L 0 0", {1, 0}, 0, kIn},
             {"on a level with a peak", "0 0 L 2 2 L 4 0 L 2 -2 L 0 0", {0, 2}, 0, kOut},
             {"level edge to the right", "0 0 L 2 0 L 2 1 L 4 1 L 4 2 L 0 2 L 0 0", {1, 1}, 0, kIn},
             {"level edge of a hollow", "0 0 L 1 0 L 1 1 L 2 1 L 2 0 L 3 0 L 1 9 L 0 0", {0.5, 1}, 0, kIn},
             {"a gap between the ends", "0 0 L 9 0 L 9 9 L 0 9 L 0 1e-10", {-1, 5e-11}, 0, kOut},
             {"a joint", kSquare, {10, 10}, 0, kOn},
             {"on a line that no number between hits", "0 0 L 3 0 L 3 1 L 0 0", {0.3, 0.1}, 1e-15, kOn},
             {"within the tolerance", kSquare, {5, -0.1}, 0.1, kOn},
             {"a negative tolerance is 0", kSquare, {5, 0}, -1, kOn},
             {"no tolerance is 0", kSquare, {5, 5}, kNaN, kIn},
             {"all is within infinity", kSquare, {500, 5}, kInf, kOn},
             {"gone round twice", "0 0 L 9 0 L 9 9 L 0 9 L 0 0 L 9 0 L 9 9 L 0 9 L 0 0", {1, 1}, 0, kIn},
             {"gone round there and back", "0 0 L 9 0 L 9 9 L 0 0 L 9 9 L 9 0 L 0 0", {8, 1}, 0, kOut},
             {"the cap of a nearly straight arc", "0 0 A 1000 0 1e-6 L 500 -1 L 0 0", {500, -4e-4}, 0, kOut},
             {"beyond it", "0 0 A 1000 0 1e-6 L 500 -1 L 0 0", {500, -6e-4}, 0, kIn},
             {"a chord next to nothing", "0 0 A 1e-6 0 1e9 L 0 0", {0, -100}, 0, kIn},
             {"a doubled control point", "0 0 B 0 0 9 9 9 0 L 0 0", {5, 1}, 0, kIn},
             {"a whole ellipse arc", "ellipsearc 0 0 5 2 1 4 6.283185307179586", {0, 0}, 0, kIn},
             {"no width", "ellipse 0 0 5 0 0", {1, 1e-9}, 0, kOut},
             {"open", kOpenSquare, {5, 5}, 0, kOut},
             {"no object", "null", {5, 5}, 0, kOut},
             {"a group", "group", {0, 0}, 0, kOut},
             {"no segments", "polyline", {0, 0}, 0, kOut},
             {"no point", kSquare, {kNaN, 5}, 1, kOut},
             {"a point at infinity", kSquare, {5, -kInf}, kInf, kOut},
             {"a coordinate beyond measure", "0 0 L 1e80 0 L 1e80 1e80 L 0 0", {2, 1}, 0, kOut}}) {
        const auto object = Object(contour);
        // Gone round so often that it is searched by an index from the second question on.
        auto* const polyline = dynamic_cast<CCadPolyline*>(object.get());
        for (int i = 0, count = polyline ? 40 * polyline->GetSegmentCount() : 0; i < count; ++i)
            polyline->AddArc(polyline->GetSegment(i).ptEnd, polyline->GetSegment(i).dBulge);
        for (int question = 1; question <= 3; ++question)
            EXPECT_EQ(GetPointSide(object.get(), p, tolerance), side) << name << ", question " << question;
    }
    const auto square = Polyline(kSquare);
    square->AddArc({0, 0}, kNaN);
    EXPECT_EQ(GetPointSide(square.get(), {5, 5}, 0), kOut) << "a bulge that is no number";
}

} // namespace
