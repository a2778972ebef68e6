#include "support/support.h"

// One of each kind with its code, whether it is closed, its length, its direction and its box.
using Row = std::tuple<std::string, std::string, int, bool, double, int, std::vector<double>>;
const std::vector<Row> kOneOfEach = Rows<std::string, int, bool, double, int, std::vector<double>>(
    "'dot 1 2' 0x1100 0 0 0 1,2,0,0; 'line 4 0 1 4' 0x1200 0 5 0 1,0,3,4;"
    "'circle 1 1 -2 cw' 0x1400 1 12.566370614359172 1 -1,-1,4,4;"
    "'arc 0 0 2 -0.7853981633974483 1.5707963267948966' 0x1500 0 3.141592653589793 2"
    " 1.4142135623730951,-1.4142135623730951,0.5857864376269049,2.8284271247461903;"
    "'arc 0 0 1 1 9 cw' 0x1500 1 6.283185307179586 1 -1,-1,2,2;"
    "'arc 0 0 1 0 -1.5707963267948966' 0x1500 0 4.71238898038469 2 -1,-1,2,2;"
    "'ellipse 0 0 2 1 1.5707963267948966' 0x1600 1 9.688448220547675 2 -1,-2,2,4;"
    "'ellipsearc 0 0 2 1 0 0 3.141592653589793 cw' 0x1700 0 4.8442241102738375 1 -2,-1,4,1;"
    "'rectangle 1 1 -3 2' 0x1810 1 10 2 -2,1,3,2; '0 0 L 2 0 A 0 0 1' 0x1840 1 5.141592653589793 2 0,0,2,1;"
    "'0 0 B 0 1 2 1 2 0 L 0 0' 0x1860 1 nan 1 0,0,2,0.75; '3 3 L 3 3' 0x1840 1 0 0 3,3,0,0;"
    "polyline 0x1840 0 0 0 0,0,0,0; group 0x1900 0 0 0 0,0,0,0; relation 0x1920 0 0 0 0,0,0,0;"
    "text 0x1A00 0 0 0 0,0,0,0");

// Pieces are what everything else is computed from: they join, run from start to end, and add up.
TEST(Objects, KindsAndPieces) {
    for (const auto& [row, text, kind, closed, length, direction, box] : kOneOfEach) {
        SCOPED_TRACE(row);
        const auto object = Object(text);
        EXPECT_TRUE(object->GetType() == static_cast<cad_t>(kind) && object->IsClose() == closed);
        EXPECT_EQ(GetContourDirectionEx(object.get()), direction);
        if (!std::isnan(length)) EXPECT_NEAR(object->GetLength(), length, 1e-11);
        const CadRect bounds = object->GetBoundRect();
        EXPECT_POINT_NEAR((DPOINT2{bounds.x, bounds.y}), (DPOINT2{box[0], box[1]}), 1e-12);
        EXPECT_POINT_NEAR((DPOINT2{bounds.width, bounds.height}), (DPOINT2{box[2], box[3]}), 1e-12);
        DPOINT2 at = object->GetStartPoint();
        double sum = 0;
        for (int i = 0; i < object->GetPieceCount(); ++i) {
            const OutlinePiece piece = object->GetPiece(i);
            sum += std::visit([](const auto& p) { return p.GetLength(); }, piece);
            const auto* segment = std::get_if<SEGMENT>(&piece);
            if (segment) EXPECT_POINT_NEAR(segment->ptStart, at, 1e-12);
            at = segment ? segment->ptEnd : object->GetEndPoint();
        }
        EXPECT_NEAR(sum, object->GetLength(), 1e-11);
        if (object->GetPieceCount() > 0) EXPECT_POINT_NEAR(at, object->GetEndPoint(), 1e-12);
    }
    EXPECT_EQ(GetContourDirectionEx(nullptr), CContourDirection::NONE);
}

TEST(Objects, CloneCopiesEverythingButMachining) {
    for (const Row& row : kOneOfEach) {
        SCOPED_TRACE(std::get<0>(row));
        const auto object = Object(std::get<1>(row));
        CCadObject& o = *object;
        o.SetKey("a", "1");
        o.Select(true);
        o.SetParamIndex(4);
        o.SetInnerObject(new CCadDot({0, 0}));
        o.SetTechnicsString("T={};");
        o.AddTechnics(new CTechnics);
        o.GetToolPathList().push_back(new CCadLine({0, 0}, {1, 1}));
        const std::unique_ptr<CCadObject> same(o.Clone(false)), fresh(o.Clone(true));
        EXPECT_TRUE(same->GetID() == o.GetID() && fresh->GetID() != o.GetID());
        EXPECT_TRUE(fresh->GetType() == o.GetType() && fresh->GetLength() == o.GetLength());
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
    EXPECT_TRUE(!own.GetInnerObject() && own.GetType() == 0 && !own.Clone(true));
    EXPECT_TRUE(math::IsNoPoint(own.GetStartPoint()) && math::IsNoPoint(own.GetEndPoint()));
    EXPECT_EQ(own.GetSegmentCount() + own.GetLength() + own.GetBoundRect().width + own.IsClose(), 0);
    EXPECT_TRUE(own.GetKey(nullptr).IsEmpty() && own.GetKey("x").IsEmpty());
    own.SetKey(nullptr, "x");
    own.SetKey("x", nullptr);
    EXPECT_TRUE(own.GetID() + 1 == CCadDot({0, 0}).GetID() && CCadDot({0, 0}, false).GetID() == 0);
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
    for (const auto& [dot, index] : {std::pair{b, 7}, {a, 0}, {c, -1}}) group.Insert(dot, index);
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
