// Memory refused to everything that asks for some, once for each block that it asks for. Lua's and the
// manager's stand with their own tests.
#include "support/refuse_memory.h"
#include "support/support.h"
#include "support/temp_path.h"

using namespace qev;
using namespace test;

namespace {

// A group with texts, polylines, attributes and a chain of inner objects, nested twice.
std::unique_ptr<CCadGroup> Nested() {
    auto root = std::make_unique<CCadGroup>();
    Fill(*root, {TextOf(new CCadLine({0, 5}, {10, 5})), Object("0 0 L 2 0 B 0 1 2 1 2 0").release()});
    Fill(*AddGroup(*root), {TextOf(new CCadGroup), Object(kCircleOf10).release(), Object(kSquare).release()});
    root->SetKey("a name that is too long for the object itself", "and its value as well");
    root->SetInnerObject(Object("0 0 L 2 0 A 0 0 1").release());
    root->GetInnerObject()->SetInnerObject(new CCadGroup);
    root->GetInnerObject()->GetInnerObject()->SetInnerObject(new CCadDot({1, 2}));
    return root;
}

std::unique_ptr<CCadPolyline> Star() {
    auto star = std::make_unique<CCadPolyline>();
    for (int i = 0; i <= 200; ++i) star->AddLine(math::Rotated({i % 2 ? 9.0 : 5.0, 0}, 0.05 * i));
    return star;
}

const auto group = Nested();
const auto star = Star();
const std::list<CCadObject*> all{group.get()};
const auto closed = Polyline("0 0 L 5 0 L 10 1 L 10 20 A 0 20 1 L 0 0");
const auto extended = PolylineEx("0 0 L 10 0 B 22 5 28 5 30 0 L 40 0");
const auto ellipse = Object("ellipse 0 0 50 20 1");
const std::vector<PosRange> zones{{{0, 0.5}, {1, 0.5}}, {{1, 0.2}, {2, 0.5}}, {{3, 0}, {4, 0}}};

// The length of a new object, which is deleted; 0 for null.
double Length(CCadObject* made) {
    const std::unique_ptr<CCadObject> owned(made);
    return GetCadLength(made);
}
template <class List>
double Count(const List& list) {
    return static_cast<double>(list.size());
}

// Answers a number; NaN where it says that it could not.
double Clone() {
    return Length(group->Clone(true));
}
double Convert() {
    std::vector<int> map;
    return Length(Convert2Polyline(ellipse.get(), map, 0.1))
           + Length(Convert2Polyline(extended.get(), 1, 0.01)) + Count(map);
}
double Cut() {
    return Length(GetMultiSementsByRange(closed.get(), {{3, 0.5}, {1, 0.5}}))
           + Length(CutStretch(extended.get(), {{0, 0.5}, {1, 0.5}}))
           + Length(GetMultiSementsByRangeRound(extended.get(), {{0, 0.5}, {2, 0.5}}, 2));
}
double GroupSegments() {
    const std::unique_ptr<CTopoMultiPolyline> made(CTopoMultiPolyline::CreateTopoMultiPolyline(closed.get()));
    made->GetPoint(0, 0.5);
    CTopoMultiPolyline copy(*made);
    copy = *made;
    return copy.GetPoint(0, 0.5).x;
}
double MapSegments() {
    std::vector<int> map;
    GetSegMap(closed.get(), star.get(), map);
    POLYPOS pos;
    GetMapPos(closed.get(), {2, 0.5}, star.get(), pos, map);
    return PolyPosToDouble(pos);
}
double Hull() {
    std::vector<CConvexHelper::Point> points;
    for (int i = 0; i < 50; ++i) points.push_back({std::cos(i), std::sin(i), i});
    CConvexHelper::ConvexGrahamScan(points, points);
    return Count(points);
}
double ContourIndex() {
    const std::unique_ptr<CCadObject> fresh(star->Clone(false)),
        round(ellipse->Clone(false)); // keep nothing yet
    POLYPOS pos;
    for (int question = 0; question < 3; ++question) CoorToPos(fresh.get(), {7, 3}, pos, 10);
    DPOINT2 p = math::NoPoint();
    PosToCoor(round.get(), 0, 0.3, p);
    return PolyPosToDouble(pos) + fresh->GetLength() + p.x;
}
double IndexGroup() {
    CGroupIndex index(group.get());
    index.Build();
    index.Update(group->GetFront());
    std::vector<CCadObject*> found;
    index.Collect({0, 0, 4, 4}, found);
    return index.Hit({10, 5}, 1) ? Count(found) : -1;
}
double Pick() {
    const CCadObject* object = nullptr;
    POLYPOS pos;
    std::vector<POLYPOS> positions;
    FindCadAndPosByPoint(group.get(), {10, 6}, object, pos, 2);
    CoorToPos(closed.get(), {5, 0}, positions);
    return PolyPosToDouble(pos) + Count(positions);
}
double RangeSet() {
    std::vector<PosRange> list = zones, free;
    CRangeSet(closed.get(), zones).GetFree(free);
    CombineRange(&list, 5);
    GenerateCornerInvalidRange(closed.get(), 1, 30, &list);
    return 10 * Count(free) + Count(list) + IsRangeIntersected(&list, &zones);
}
double Corners() {
    std::vector<int> joints, second, steps;
    CollectTurnDirPos(star.get(), 30, joints, 4, second);
    GetOffsetTable(10, 10, 0.5, steps);
    return Count(joints) + 1000 * Count(second) + 1e6 * Count(steps);
}
double Nest() {
    std::vector<ContourNesting> nesting;
    GetNesting(&all, nesting);
    return Count(nesting) + GetClearance(group.get(), star.get());
}
double Select() {
    std::list<CCadObject*> leaves, closedOnes, kept;
    CollectLeafNode(&all, &leaves);
    CollectCloseCad(&all, &closedOnes);
    RemoveCadByType(&all, &kept, kCadLine);
    return Count(leaves) + 100 * Count(closedOnes) + 1e4 * Count(kept);
}
double MakeStock() {
    return Length(std::unique_ptr<Adobe>(Make_RectPlane(100, 50, 20))->GetSectionData()->Clone(false));
}
double LoadPicture() {
    using namespace std::string_literals;
    static const std::string path = TempPath("picture"); // of two pixels
    std::ofstream(path, std::ios::binary)
        << "BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0"s + std::string(24, '\0')
               + "\1\2\3\0\4\5\6\0"s;
    CImage image;
    const bool isLoaded = LoadImageFile(image, path.c_str());
    std::remove(path.c_str());
    return isLoaded ? image.GetHeight() : kNaN;
}
double FillDot() {
    CCadDot dot({0, 0});
    dot.AddTechnics(new CTechnics);
    dot.GetToolPathList().resize(1);
    dot.GetToolPathList().front() = new CCadDot({1, 1});
    dot.SetKey("a long name that takes memory", "a long value that takes memory as well");
    dot.SetTechnicsString("T={} -- and a long text behind it");
    return ToStringPrecision(1.0 / 3, 40).GetLength() + dot.GetTechnicsString().GetLength();
}
double Publish() {
    const auto count = [](const char*, void* user, int, const char*) { return ++*static_cast<int*>(user); };
    int calls = 0;
    const int id = SubscribeMsgTopic("A topic of thirty characters", count, &calls);
    PublishMsgTopic("A topic of thirty characters", 0, "");
    UnsubscribeMsgTopic(id);
    return id < 0 ? kNaN : calls;
}
double SortTestData() {
    CCadGroup target;
    CZoneManager manager;
    manager.SetTargetGroup(&target);
    CTestDataHandle::SetIgnoreList({"An ignored test's name"});
    for (int i = 0; i < 2; ++i) {
        auto tests = std::make_unique<CCadGroup>();
        tests->SetKey("TestName", "Another test's long name");
        CTestDataHandle::AddToZoneManager(tests.release(), &manager);
    }
    return target.GetNumOfChild();
}

TEST(Refusal, LosesNothingAndTheNextCallWorks) {
    const Table<const char*, double (*)()> works{{"clone", Clone},
                                                 {"convert", Convert},
                                                 {"cut", Cut},
                                                 {"group", GroupSegments},
                                                 {"map segments", MapSegments},
                                                 {"hull", Hull},
                                                 {"contour index", ContourIndex},
                                                 {"group index", IndexGroup},
                                                 {"pick", Pick},
                                                 {"range set", RangeSet},
                                                 {"corners", Corners},
                                                 {"nest", Nest},
                                                 {"select", Select},
                                                 {"stock", MakeStock},
                                                 {"picture", LoadPicture},
                                                 {"what a dot carries", FillDot},
                                                 {"publish", Publish},
                                                 {"test data", SortTestData}};
    for (const auto& [name, work] : works) {
        SCOPED_TRACE(name);
        ExpectNothingLeaksWhenRefused(work);
    }
}

TEST(Refusal, AContourIsReversedOrAsBefore) {
    const auto contour = Polyline("0 0 L 2 0 A 4 0 0.5");
    for (const long blocks : {0, 1}) {
        try {
            const RefuseMemory refusal(blocks);
            contour->ReverseDir(true);
        } catch (const std::bad_alloc&) { // the contour shows
        }
        EXPECT_EQ(contour->IsNormalDir(), contour->GetStartPoint().x == 0) << blocks;
    }
    EXPECT_FALSE(contour->IsNormalDir());
}

} // namespace
