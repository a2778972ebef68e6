#include <chrono>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

std::unique_ptr<CCadPolyline> ConvertBy(const char* settings, const CCadObject& object) {
    auto* out = reinterpret_cast<CCadPolyline*>(1); // whatever stood there
    const bool made = CConvertCadObjectToCadPolyline(settings)(&object, out);
    EXPECT_EQ(made, out != nullptr);
    return std::unique_ptr<CCadPolyline>(out);
}

std::unique_ptr<CCadPolyline> Convert(const CCadObject& object, const std::string& word, double error) {
    const std::string settings = "SegmentType=" + word + ";AbsoluteError=" + std::to_string(error) + ";";
    return ConvertBy(settings.c_str(), object);
}

// The largest distance between the two, sampled densely both ways.
double Deviation(const CCadObject& object, const CCadPolyline& polyline) {
    double worst = 0;
    DPOINT2 nearest;
    for (int k = 0, n = 300 * object.GetPieceCount(); k <= n; ++k)
        worst = std::max(worst, GetMinDistance(&polyline, Along(object)(k / double(n)), nearest));
    for (int k = 0, n = 8 * polyline.GetPieceCount(); k <= n; ++k)
        worst = std::max(worst, GetMinDistance(&object, Along(polyline)(k / double(n)), nearest));
    return worst;
}

// The fewest chords are 538 and 300; biarcs along the tangents would be 80 and 54 at least.
TEST(Converter, CountsAreNearMinimal) {
    const struct {
        const char* object;
        int chords, arcs;
    } kCases[] = {{"ellipse 1e4 -1e4 100 40 0.7", 540, 72}, {"0 0 B 60 140 120 -90 160 50", 303, 48}};
    for (const auto& [object, chords, arcs] : kCases) {
        EXPECT_LE(Convert(*Object(object), "Line", 0.001)->GetSegmentCount(), chords) << object;
        EXPECT_LE(Convert(*Object(object), "Both", 0.001)->GetSegmentCount(), arcs) << object;
    }
}

// A cusp, a loop, doubled control points, there and back, a point; flat, nearly flat and needle-like
// ellipses; arcs without length.
TEST(Converter, DegenerateCurves) {
    for (const char* text :
         {"0 0 B 1 1 0 1 1 0", "0 0 B 3 2 -2 2 1 0", "0 0 B 0 0 5 5 5 5", "0 0 B 1 0 -1 0 0 0",
          "1 1 B 1 1 1 1 1 1", "ellipse 3 4 50 0 1", "ellipse 3 4 50 1e-9 1", "ellipse 3 4 50 1e-3 1",
          "ellipsearc 0 0 2 1 0 0 0", "2 0 A 2 0 1"})
        for (const char* word : {"Both", "Line"}) {
            const auto object = Object(text);
            EXPECT_LE(Deviation(*object, *Convert(*object, word, 1e-4)), 1e-4) << text << ", " << word;
        }
    for (const char* text : {"ellipsearc 0 0 2 1 0 0 0", "2 0 A 2 0 1"})
        EXPECT_EQ(Convert(*Object(text), "Line", 1)->GetNodeCount(), 1) << text;
    EXPECT_EQ(Convert(CCadCircle({0, 0}, 1), "Line", 100)->GetSegmentCount(), 4) << "no circle vanishes";
}

TEST(Converter, KeepsArcs) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 2.5 L 10 10 A 0 0 -1e-7");
    for (const char* word : {"Both", "Arc"}) {
        const auto kept = Convert(*contour, word, 1);
        ASSERT_EQ(kept->GetSegmentCount(), 4) << word;
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(kept->GetAt(i).bulge, contour->GetAt(i).bulge) << word << i;
            EXPECT_POINT_NEAR(kept->GetSegment(i).ptEnd, contour->GetSegment(i).ptEnd, 0);
        }
    }
    const auto chords = Convert(*contour, "Line", 0.01);
    for (const auto& node : chords->GetNodes()) EXPECT_EQ(node.bulge, 0);
    EXPECT_EQ(Convert(CCadCircle({1, 2}, 3, false), "Both", 1)->GetAt(1).bulge, -1) << "of two half circles";
    EXPECT_EQ(Convert(CCadArc({0, 0}, 3, 1, 7, true), "Both", 1)->GetSegmentCount(), 2) << "a whole circle";
}

TEST(Converter, MakesNothingOfUnusableSettings) {
    for (const char* settings :
         {"SegmentType=Both;AbsoluteError=0,001;", "SegmentType=Both;AbsoluteError=nan;",
          "SegmentType=both;AbsoluteError=1;", "AbsoluteError=1;"})
        EXPECT_FALSE(ConvertBy(settings, CCadCircle({0, 0}, 5))) << settings;
    EXPECT_FALSE(ConvertBy(nullptr, CCadCircle({0, 0}, 5)));
}

// What takes too many pieces is refused before they are made.
TEST(Converter, RefusesPromptlyWhatHasNoFiniteOutlineOrTakesTooManyPieces) {
    const auto start = std::chrono::steady_clock::now();
    for (const char* object :
         {"dot 0 0", "group", "text", "polyline", "circle 0 0 1e12", "ellipse 0 0 1e9 4e8 0",
          "ellipse 0 0 3e5 2.5e5 0", "ellipsearc 0 0 8e8 7e8 0 1 2", "0 0 L 5 5 B 1e300 1 1 1 2 0",
          "0 0 L 5 5 B 1e8 1e8 2e8 -1e8 3e8 0", "0 0 B 7e5 16e5 13e5 -10e5 18e5 6e5"})
        EXPECT_FALSE(Convert(*Object(object), "Line", 0)) << object << ", for 0 counts as 1e-6";
    for (const double bad : {kNaN, kInf, 1e70}) { // the last is too far out for a curve
        CCadPolylineEx bezier;
        bezier.AddBezier({bad, 0}, {1, 1}, {2, 0});
        EXPECT_FALSE(Convert(bezier, "Line", 1e60)) << bad;
        EXPECT_FALSE(Convert(CCadCircle({0, 0}, bad), "Line", 1e-6)) << bad;
        EXPECT_FALSE(Convert(CCadEllipseArc({bad, 0}, bad, 1, bad, 1, 2, true), "Line", 1e-6)) << bad;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    CCadPolyline most;
    for (int i = 0; i < 1'000'000; ++i) most.AddLine({0, 0});
    EXPECT_TRUE(Convert(most, "Both", 1));
    most.AddLine({0, 0});
    EXPECT_FALSE(Convert(most, "Both", 1));
}

} // namespace
