#include "examples/sheet.h"

using namespace test;

namespace {

struct LeadIn : testing::Test {
    static void SetUpTestSuite() { Sheet::Manager().LoadTechnicsPlugIn(LEADIN); }
};

// Parts and holes of random kinds, one over the other.
std::vector<std::string> RandomObjects(Random& random) {
    const char* const kinds[] = {"circle %g %g %g", "rectangle %g %g %g %g %g", "ellipse %g %g %g %g %g"};
    std::vector<std::string> objects;
    for (int i = random.Int(1, 12); i > 0; --i) {
        char text[200];
        const math::DPOINT2 at = random.Point(40);
        const double size = random.Uniform(2, 30), other = random.Uniform(2, 30);
        std::snprintf(text, sizeof text, kinds[random.Int(0, 2)], at.x, at.y, size, other,
                      random.Uniform(0, 3));
        objects.emplace_back(text);
    }
    return objects;
}

// In how many of the outlines a point lies, by the crossings of a ray with the polygon through their samples.
bool IsInMaterial(const std::vector<std::vector<math::DPOINT2>>& outlines, const math::DPOINT2& p) {
    bool isIn = false;
    for (const auto& outline : outlines)
        for (std::size_t i = 0, last = outline.size() - 1; i < outline.size(); last = i++) {
            const math::DPOINT2 &a = outline[i], &b = outline[last];
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y))
                isIn = !isIn;
        }
    return isIn;
}

// Whatever the drawing: a lead starts in the scrap and stays there up to the contour, and keeps its clearance
// from all outlines but for the last bit before its own.
TEST_F(LeadIn, StaysInTheScrapAndKeepsClear) {
    constexpr int kSamples = 1000;
    Random random;
    math::DPOINT2 nearest;
    int placed = 0;
    while (random.Rounds(40)) {
        Sheet sheet(RandomObjects(random));
        const char* const kind = random.Coin() ? "Line" : "Arc";
        sheet.Add(std::string("T={LeadIn={Clearance=2,LeadOut='Line',Overlap=1,Type='") + kind + "'}}");
        std::vector<std::vector<math::DPOINT2>> outlines;
        for (const qev::CCadObject* each : sheet.root.GetObjectsList()) {
            const CurvePoint outline = Along(*each);
            for (auto& samples = outlines.emplace_back(); samples.size() < kSamples;)
                samples.push_back(outline(static_cast<double>(samples.size()) / kSamples));
        }
        for (qev::CCadObject* each : sheet.root.GetObjectsList()) {
            placed += !each->GetToolPathList().empty();
            for (const char* role : {qev::kit::kLeadInRole, qev::kit::kLeadOutRole})
                for (const qev::CCadObject* path : Sheet::Paths(*each, role)) {
                    const bool isIn = role == qev::kit::kLeadInRole;
                    for (double share = 0; share < 0.99; share += 0.02) { // 0 the far end
                        const math::DPOINT2 p = Along(*path)(isIn ? share : 1 - share);
                        EXPECT_FALSE(IsInMaterial(outlines, p)) << role << " at " << share;
                        for (const qev::CCadObject* other : sheet.root.GetObjectsList()) {
                            if (other == each && share > 0) continue;
                            EXPECT_GE(qev::GetMinDistance(other, p, nearest), 2 - 1e-6) << role;
                        }
                    }
                    const math::DPOINT2 meet = isIn ? path->GetEndPoint() : path->GetStartPoint();
                    EXPECT_LT(qev::GetMinDistance(each, meet, nearest), 2 * qev::kit::kConversionError);
                }
        }
    }
    EXPECT_GT(placed, 100) << "what is refused proves nothing";
}

TEST_F(LeadIn, PlacesAndMeasures) {
    for (const auto& [what, fields, others, from, to] :
         Table<const char*, std::string, std::vector<std::string>, math::DPOINT2, math::DPOINT2>{
             {"into a part from outside", "Length=4", {}, {14, 5}, {10, 5}},
             {"into a hole from its inside", "Length=4", {"circle 5 5 20"}, {6, 5}, {10, 5}},
             {"a neighbour as near as may be", "Length=4,Clearance=1", {"circle 12 5 1"}, {14, 3}, {10, 3}},
             {"shut in: a quarter", "Length=4", {"rectangle -3 -3 16 16 0", "circle 5 5 4"}, {9, 2}, {10, 2}},
             {"where it was saved", "Side='Right',Scale=0.4,Segment=0,Ratio=0.25", {}, {2.5, -2}, {2.5, 0}},
             {"on the side that is asked for", "Length=4,Side='Left'", {}, {6, 5}, {10, 5}}}) {
        SCOPED_TRACE(what);
        std::vector<std::string> objects = {kSquare};
        objects.insert(objects.end(), others.begin(), others.end());
        Sheet sheet(objects);
        sheet.Add("T={LeadIn={" + fields + "}}");
        const auto paths = Sheet::Paths(*sheet.root.GetFront(), qev::kit::kLeadInRole);
        ASSERT_EQ(paths.size(), 1u);
        EXPECT_POINT_NEAR(paths[0]->GetStartPoint(), from, 1e-9);
        EXPECT_POINT_NEAR(paths[0]->GetEndPoint(), to, 1e-9);
    }
}

TEST_F(LeadIn, ALeadOutIsTheMirrorImageBehindTheOverlap) {
    Sheet sheet({kSquare});
    sheet.Add("T={LeadIn={Type='Arc',LeadOut='Arc',Radius=2,Angle=90,Overlap=1.5}}");
    const qev::CCadObject& part = *sheet.root.GetFront();
    ASSERT_EQ(part.GetToolPathList().size(), 3u);
    const auto in = Sheet::Paths(part, qev::kit::kLeadInRole),
               out = Sheet::Paths(part, qev::kit::kLeadOutRole);
    EXPECT_POINT_NEAR(in.at(0)->GetStartPoint(), (math::DPOINT2{12, 3}), 1e-9);
    EXPECT_POINT_NEAR(in.at(0)->GetEndPoint(), (math::DPOINT2{10, 5}), 1e-9);
    EXPECT_POINT_NEAR(out.at(0)->GetStartPoint(), (math::DPOINT2{10, 6.5}), 1e-9);
    EXPECT_POINT_NEAR(out.at(0)->GetEndPoint(), (math::DPOINT2{12, 8.5}), 1e-9);
    EXPECT_NEAR(Sheet::Paths(part, qev::kit::kOverlapRole).at(0)->GetLength(), 1.5, 1e-9);
}

TEST_F(LeadIn, WhatFindsNoRoomIsToldInTheOrderOfTheObjects) {
    Sheet sheet({"circle 0 0 5", "circle 0 0 4.9", "circle 20 0 5", "0 0 L 0.5 0 L 0.5 0.5 L 0 0"});
    const std::string shut = "  no room: nowhere in the scrap does a lead keep 0.5 mm away from the "
                             "contours, down to an eighth of its size\n";
    EXPECT_EQ(sheet.Add("T={LeadIn={}}"), "lead-ins added to 1 of 4 objects\n" + shut + shut
                                              + "  no room: its sharp corners leave no free stretch");
    const qev::kit::Surroundings around(&sheet.root);
    EXPECT_TRUE(around.IsClear(*Object("line 10 0 10 1"), 5, *sheet.root.GetBack())) << "no less than 5 mm";
    EXPECT_FALSE(around.IsScrap({25, 0}, *sheet.root.GetBack())) << "on the outline of another";
    EXPECT_EQ(sheet.Add("T={LeadIn={Zone=-1}}"), "LeadIn.Zone = -1 is not a number from 0.01 to 1000 mm");
}

} // namespace
