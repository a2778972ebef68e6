#include "support/support.h"

namespace {

using namespace qev;
using namespace test;

constexpr auto kNone = CContourDirection::NONE;
constexpr auto kCw = CContourDirection::CLOCKWISE;
constexpr auto kCcw = CContourDirection::COUNTERCLOCKWISE;

constexpr double kHalf = 4.8442241102738375; // the length of half an ellipse with the semi-axes 2 and 1
const double kC = 2 * std::cos(1), kS = 2 * std::sin(1);
using Direction = CContourDirection::ContourDirection_T;
// Text as Object takes it, type, closed, length (NaN where there is no closed form), direction, corner and
// size of the box.
const Table<const char*, cad_t, bool, double, Direction, DPOINT2, DPOINT2> kKinds{
    {"dot 1 2", kCadDot, false, 0, kNone, {1, 2}, {0, 0}},
    {"line 4 0 1 4", kCadLine, false, 5, kNone, {1, 0}, {3, 4}},
    {"circle 1 1 -2 cw", kCadCircle, true, 4 * kPi, kCw, {-1, -1}, {4, 4}},
    {"arc 0 0 2 -1 2", kCadArc, false, 4, kCcw, {kC, -kS}, {2 - kC, 2 * kS}},
    {"arc 0 0 1 1 9 cw", kCadArc, true, 2 * kPi, kCw, {-1, -1}, {2, 2}},
    {"arc 0 0 1 0 -1.5707963267948966", kCadArc, false, 1.5 * kPi, kCcw, {-1, -1}, {2, 2}},
    {"ellipse 0 0 2 1 1.5707963267948966", kCadEllipse, true, 2 * kHalf, kCcw, {-1, -2}, {2, 4}},
    {"ellipsearc 0 0 2 1 0 0 3.14159265358979 cw", kCadEllipseArc, false, kHalf, kCw, {-2, -1}, {4, 1}},
    {"ellipsearc 0 0 2 1 0 0 0 cw", kCadEllipseArc, true, 0, kCw, {2, 0}, {0, 0}},
    {"rectangle 1 1 -3 2", kCadRectangle, true, 10, kCcw, {-2, 1}, {3, 2}},
    {"0 0 L 2 0 A 0 0 1", kCadPolyline, true, 2 + kPi, kCcw, {0, 0}, {2, 1}},
    {"3 3 L 3 3", kCadPolyline, true, 0, kNone, {3, 3}, {0, 0}},
    {"polyline", kCadPolyline, false, 0, kNone, {}, {}},
    {"0 0 B 0 1 2 1 2 0 L 0 0", kCadPolylineEx, true, kNaN, kCw, {0, 0}, {2, 0.75}},
    {"group", kCadGroup, false, 0, kNone, {}, {}},
    {"relation", kCadRelationGroup, false, 0, kNone, {}, {}},
    {"text", kCadText, false, 0, kNone, {}, {}},
};

// Pieces are what everything else is computed from: they join, run from start to end, and add up.
TEST(Kinds, AnswerForTheirOutlineAndPieces) {
    for (const auto& [text, code, isClosed, length, direction, corner, size] : kKinds) {
        SCOPED_TRACE(text);
        const auto object = Object(text);
        EXPECT_EQ(object->GetType(), code);
        EXPECT_EQ(object->IsClose(), isClosed);
        EXPECT_EQ(GetContourDirectionEx(object.get()), direction);
        if (!std::isnan(length)) EXPECT_NEAR(object->GetLength(), length, 1e-11);
        const CadRect box = object->GetBoundRect();
        EXPECT_POINT_NEAR((DPOINT2{box.x, box.y}), corner, 1e-12);
        EXPECT_POINT_NEAR((DPOINT2{box.width, box.height}), size, 1e-12);
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
    EXPECT_EQ(GetContourDirectionEx(nullptr), kNone);
}

TEST(Kinds, AnArcIsHalvedWhenItsChordIsTooShortForABulge) {
    CCadArc arc({0, 0}, 5, 1, 2 * kPi - 0.5, true);
    EXPECT_EQ(arc.GetPieceCount(), 1);
    arc.SetEndAngle(1 - 1e-3);
    EXPECT_EQ(arc.GetPieceCount(), 2);
}

TEST(Kinds, TheVerticesOfARectangleRunCounterClockwise) {
    const CCadRectangle turned({1, 1}, 4, 2, math::kHalfPi);
    const DPOINT2 ends[] = {{1, 5}, {-1, 5}, {-1, 1}, {1, 1}, {0, 0}}; // the last one of no side
    for (int i = 0; i < 5; ++i) EXPECT_POINT_NEAR(turned.GetSegment(i).ptEnd, ends[i], 1e-15) << i;
}

TEST(Kinds, AreClonedWithoutTheirMachining) {
    for (const auto& kind : kKinds) {
        const char* text = std::get<0>(kind);
        SCOPED_TRACE(text);
        const auto object = Object(text);
        object->SetKey("a", "1");
        object->SetInnerObject(new CCadDot({0, 0}));
        object->SetTechnicsString("T={};");
        object->AddTechnics(new CTechnics);
        EXPECT_TRUE(HasTechnics(object.get(), 0, 0)) << "its numbers at first";
        EXPECT_FALSE(object->GetTechnicsList().front()->Refresh(object.get(), nullptr)) << "nothing is done";
        object->GetToolPathList().push_back(new CCadLine({0, 0}, {1, 1}));
        const std::unique_ptr<CCadObject> sameId(object->Clone(false)), clone(object->Clone(true));
        EXPECT_EQ(sameId->GetID(), object->GetID());
        EXPECT_NE(clone->GetID(), object->GetID());
        EXPECT_NE(object->GetID(), 0u) << "a fresh one unless told otherwise";
        EXPECT_EQ(clone->GetLength(), object->GetLength());
        EXPECT_EQ(clone->GetKey("a"), "1");
        ASSERT_TRUE(clone->GetInnerObject());
        EXPECT_NE(clone->GetInnerObject(), object->GetInnerObject());
        EXPECT_EQ(clone->GetTechnicsString(), "T={};");
        EXPECT_TRUE(clone->GetTechnicsList().empty());
        EXPECT_TRUE(clone->GetToolPathList().empty());
    }
    const CCadText label("Bore");
    EXPECT_EQ(label.GetText(), "Bore");
    EXPECT_EQ(label.GetTextGroup()->GetNumOfChild(), 0);
    EXPECT_TRUE(math::IsNoPoint(CCadPolyline().GetStartPoint()));
}

} // namespace
