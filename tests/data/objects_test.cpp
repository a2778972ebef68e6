#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::DPOINT2;
using math::kPi;

// One of each kind, with what the kind table says of it.
struct Row {
    std::unique_ptr<CCadObject> object;
    cad_t kind;
    bool closed;
    double length;
    CContourDirection::ContourDirection_T direction;
    CadRect box;
};

std::vector<Row> OneOfEach() {
    std::vector<Row> rows;
    const auto add = [&](CCadObject* object, cad_t kind, bool closed, double length, int direction,
                         const CadRect& box) {
        rows.push_back({std::unique_ptr<CCadObject>(object), kind, closed, length,
                        static_cast<CContourDirection::ContourDirection_T>(direction), box});
    };
    add(new CCadDot({1, 2}), 0x1100, false, 0, 0, {1, 2, 0, 0});
    add(new CCadLine({4, 0}, {1, 4}), 0x1200, false, 5, 0, {1, 0, 3, 4});
    add(new CCadCircle({1, 1}, -2, false), 0x1400, true, 4 * kPi, 1, {-1, -1, 4, 4});
    add(new CCadArc({0, 0}, 2, -kPi / 4, kPi / 2, true), 0x1500, false, kPi, 2,
        {std::sqrt(2), -std::sqrt(2), 2 - std::sqrt(2), std::sqrt(8)});
    add(new CCadArc({0, 0}, 1, 1, 9, false), 0x1500, true, 2 * kPi, 1, {-1, -1, 2, 2});
    add(new CCadArc({0, 0}, 1, 0, -kPi / 2, true), 0x1500, false, 1.5 * kPi, 2, {-1, -1, 2, 2});
    add(new CCadEllipse({0, 0}, 2, 1, kPi / 2), 0x1600, true, 9.688448220547675, 2, {-1, -2, 2, 4});
    add(new CCadEllipseArc({0, 0}, 2, 1, 0, 0, kPi, false), 0x1700, false, 9.688448220547675 / 2, 1,
        {-2, -1, 4, 1});
    add(new CCadRectangle({1, 1}, -3, 2), 0x1810, true, 10, 2, {-2, 1, 3, 2});
    add(test::Polyline("0 0 L 2 0 A 0 0 1").release(), 0x1840, true, 2 + kPi, 2, {0, 0, 2, 1});
    add(test::PolylineEx("0 0 B 0 1 2 1 2 0 L 0 0").release(), 0x1860, true, 0, 1, {0, 0, 2, 0.75});
    add(test::Polyline("3 3 L 3 3").release(), 0x1840, true, 0, 0, {3, 3, 0, 0});
    add(new CCadPolyline, 0x1840, false, 0, 0, {});
    add(new CCadGroup, 0x1900, false, 0, 0, {});
    add(new CCadRelationGroup, 0x1920, false, 0, 0, {});
    add(new CCadText("a"), 0x1A00, false, 0, 0, {});
    return rows;
}

TEST(Objects, AnswerAsTheirKind) {
    for (const Row& row : OneOfEach()) {
        SCOPED_TRACE(row.kind);
        const CCadObject& o = *row.object;
        EXPECT_EQ(o.GetType(), row.kind);
        EXPECT_EQ(o.IsClose(), row.closed);
        EXPECT_EQ(GetContourDirectionEx(&o), row.direction);
        if (row.length > 0) EXPECT_NEAR(o.GetLength(), row.length, 1e-11);
        const CadRect box = o.GetBoundRect();
        EXPECT_NEAR(box.x, row.box.x, 1e-12);
        EXPECT_NEAR(box.y, row.box.y, 1e-12);
        EXPECT_NEAR(box.width, row.box.width, 1e-12);
        EXPECT_NEAR(box.height, row.box.height, 1e-12);
    }
    EXPECT_EQ(GetContourDirectionEx(nullptr), CContourDirection::NONE);
}

// Pieces are what everything else is computed from: they join, run from start to end, and add up.
TEST(Objects, PiecesMakeTheOutline) {
    for (const Row& row : OneOfEach()) {
        SCOPED_TRACE(row.kind);
        DPOINT2 at = row.object->GetStartPoint();
        double length = 0;
        for (int i = 0; i < row.object->GetPieceCount(); ++i) {
            const OutlinePiece piece = row.object->GetPiece(i);
            length += std::visit([](const auto& p) { return p.GetLength(); }, piece);
            if (const auto* segment = std::get_if<SEGMENT>(&piece)) {
                EXPECT_POINT_NEAR(segment->ptStart, at, 1e-12);
                at = segment->ptEnd;
            } else {
                at = row.object->GetEndPoint();
            }
        }
        EXPECT_NEAR(length, row.object->GetLength(), 1e-11);
        if (row.object->GetPieceCount() > 0) EXPECT_POINT_NEAR(at, row.object->GetEndPoint(), 1e-12);
    }
}

TEST(Objects, CloneCopiesEverythingButMachining) {
    for (const Row& row : OneOfEach()) {
        SCOPED_TRACE(row.kind);
        CCadObject& o = *row.object;
        o.SetKey("a", "1");
        o.Select(true);
        o.SetParamIndex(4);
        o.SetInnerObject(new CCadDot({0, 0}));
        o.SetTechnicsString("T={};");
        o.AddTechnics(new CTechnics);
        o.GetToolPathList().push_back(new CCadLine({0, 0}, {1, 1}));
        const std::unique_ptr<CCadObject> same(o.Clone(false)), fresh(o.Clone(true));
        EXPECT_EQ(same->GetID(), o.GetID());
        EXPECT_NE(fresh->GetID(), o.GetID());
        EXPECT_EQ(fresh->GetType(), row.kind);
        EXPECT_DOUBLE_EQ(fresh->GetLength(), o.GetLength());
        EXPECT_TRUE(fresh->GetKey("a") == "1" && fresh->IsSelected() && fresh->GetParamIndex() == 4);
        EXPECT_TRUE(fresh->GetInnerObject() && fresh->GetInnerObject() != o.GetInnerObject());
        EXPECT_TRUE(fresh->GetTechnicsString() == "T={};" && fresh->GetTechnicsList().empty()
                    && fresh->GetToolPathList().empty());
        EXPECT_EQ(o.GetToolPathBoundRect().width, 1);
    }
}

TEST(Objects, DefaultsOfAHostsKind) {
    class Own : public CCadObject {};
    Own own;
    own.SetInnerObject(&own);
    EXPECT_EQ(own.GetInnerObject(), nullptr);
    EXPECT_EQ(own.GetType(), 0);
    EXPECT_TRUE(math::IsNoPoint(own.GetStartPoint()) && math::IsNoPoint(own.GetEndPoint()));
    EXPECT_EQ(own.GetSegmentCount() + own.GetLength() + own.GetBoundRect().width + own.IsClose(), 0);
    EXPECT_EQ(own.Clone(true), nullptr);
    EXPECT_TRUE(own.GetKey(nullptr).IsEmpty() && own.GetKey("x").IsEmpty());
    own.SetKey(nullptr, "x");
    own.SetKey("x", nullptr);
    EXPECT_EQ(own.GetID() + 1, CCadDot({0, 0}).GetID());
    EXPECT_EQ(CCadDot({0, 0}, false).GetID(), 0u);
}

TEST(Arc, EndAngleAndBulge) {
    for (const bool ccw : {true, false}) {
        CCadArc arc({0, 0}, 5, 1, 2, ccw);
        arc.SetEndAngle(ccw ? 0.5 : 1.5);
        EXPECT_NEAR(arc.GetCentralAngle(), 2 * kPi - 0.5, 1e-15);
        EXPECT_NEAR(arc.GetBulge(), (ccw ? 1 : -1) * std::tan((2 * kPi - 0.5) / 4), 1e-14);
        EXPECT_EQ(arc.GetPieceCount(), 1);
        arc.SetEndAngle(ccw ? 1 - 1e-3 : 1 + 1e-3);
        EXPECT_EQ(arc.GetPieceCount(), 2) << "its chord is too short for a bulge";
    }
}

TEST(Transform, RotatesAndMirrorsPoints) {
    EXPECT_POINT_NEAR(RotatePoint({2, 1}, {1, 1}, kPi / 2), (DPOINT2{1, 2}), 1e-15);
    EXPECT_POINT_NEAR(GetMirrorPoint({2, 0}, {5, 5}, kPi / 4), (DPOINT2{0, 2}), 1e-14);
    EXPECT_POINT_NEAR(GetMirrorPoint({2, 3}, {0, 1}, 0), (DPOINT2{2, -1}), 1e-15);
}

TEST(Group, InsertsAndGivesBack) {
    CCadGroup group;
    auto *a = new CCadDot({0, 0}), *b = new CCadDot({5, 5}), *c = new CCadDot({0, 0});
    group.PushBack(nullptr);
    group.Insert(b, 7);
    group.Insert(a, 0);
    group.Insert(c, -1);
    EXPECT_TRUE(group.GetFront() == a && group.GetBack() == c && group.GetNumOfChild() == 3);
    EXPECT_EQ(group.GetBoundRect().width, 5) << "a dot at the origin counts";
    group.PopBack();
    delete c;
    group.PickOffAll();
    group.PopBack();
    EXPECT_TRUE(group.IsEmpty() && !group.GetFront() && !group.GetBack());
    delete a;
    delete b;
}

} // namespace
