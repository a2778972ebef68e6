#include "examples/sheet.h"

using namespace test;

namespace {

struct MicroJoint : testing::Test {
    static void SetUpTestSuite() {
        for (const char* plugIn : {LEADIN, MICROJOINT}) Sheet::Manager().LoadTechnicsPlugIn(plugIn);
    }
};

// The least length of contour in mm between two bridges, a bridge and a corner of 30 degrees or more, and a
// bridge and a point where a lead meets the contour.
double LeastGap(const qev::CCadObject& object) {
    const auto contour = qev::kit::ContourOf(object);
    std::vector<math::PosRange> bridges, others = qev::kit::FindEntries(object, *contour);
    for (const auto& bridge : qev::kit::FindBridges(object, *contour)) bridges.push_back(bridge.range);
    std::vector<int> corners;
    qev::CollectPos(contour.get(), 30, corners);
    for (const int corner : corners) others.emplace_back(math::POLYPOS{corner, 0}, math::POLYPOS{corner, 0});
    double least = contour->GetLength();
    const auto measure = [&](const math::POLYPOS& from, const math::POLYPOS& to) {
        double length = 0;
        qev::GetLineLength_Dot2Dot2(contour.get(), from, to, length);
        least = std::min({least, length, contour->GetLength() - length});
    };
    for (std::size_t i = 0; i < bridges.size(); ++i) {
        if (bridges.size() > 1) measure(bridges[i].end, bridges[(i + 1) % bridges.size()].start);
        for (const auto& other : others)
            for (const math::POLYPOS& end : {bridges[i].start, bridges[i].end}) measure(other.start, end);
    }
    return least;
}

// Bridges have their width, keep off corners, leads and each other, and are the same again after every way
// that leads to the same technics.
TEST_F(MicroJoint, BridgesKeepOffCornersLeadsAndEachOther) {
    const std::string joints = "MicroJoint={Width=1,Spacing=12,Zone=1.5}", leads = "LeadIn={LeadOut='Line'}";
    for (const auto& [what, contour, bridges] : Table<const char*, const char*, std::size_t>{
             {"one field a side, its middle taken once", "0 0 L 20 0 L 20 20 L 0 20 L 0 0", 4},
             {"a round contour", "circle 0 0 20", 10},
             {"a smooth slot", "0 0 L 40 0 A 40 10 1 L 0 10 A 0 0 1", 9},
             {"short sides: one bridge in all", "0 0 L 9 0 L 9 8 L 0 8 L 0 0", 1}}) {
        SCOPED_TRACE(what);
        Sheet both({contour}), leadsFirst({contour}), jointsFirst({contour});
        both.Add("T={" + leads + "," + joints + "}");
        for (const auto& text : {leads, joints}) leadsFirst.Add("T={" + text + "}");
        for (const auto& text : {joints, leads}) jointsFirst.Add("T={" + text + "}");
        for (const Sheet* sheet : {&both, &leadsFirst, &jointsFirst}) {
            const qev::CCadObject& object = *sheet->root.GetFront();
            EXPECT_EQ(object.GetTechnicsList().front()->m_nType, 1) << "the one that is loaded first";
            const auto own = qev::kit::ContourOf(object);
            const auto found = qev::kit::FindBridges(object, *own);
            EXPECT_EQ(found.size(), bridges);
            for (const auto& bridge : found) EXPECT_NEAR(bridge.length, 1, 1e-6);
            EXPECT_GE(LeastGap(object), 1 - 1e-6);
            if (bridges == 1) EXPECT_EQ(found.at(0).range.start.nSegIndex % 2, 0) << "on a longer side";
            double length = 0;
            for (const qev::CCadObject* cut : Sheet::Paths(object, qev::kit::kCutRole))
                length += cut->GetLength();
            EXPECT_NEAR(length + static_cast<double>(bridges), own->GetLength(), 1e-6);
        }
    }
}

TEST_F(MicroJoint, TakesNoMoreThanHalfOfTheContour) {
    Sheet sheet({kSquare});
    EXPECT_EQ(sheet.Add("T={MicroJoint={Width=2,Spacing=3}}"),
              "MicroJoint.Spacing = 3 is less than twice the Width");
    EXPECT_EQ(sheet.Add("T={MicroJoint={Width=9,Spacing=20}}"),
              "micro-joints added to 0 of 1 objects\n  no room: no free stretch takes a bridge");
    qev::CCadObject* const object = sheet.root.GetFront();
    object->SetTechnicsString("T={MicroJoint={Width=9,Spacing=20}};"); // saved when there was room
    EXPECT_THROW(Sheet::Manager().LoadTechnics(object), char*);
    EXPECT_TRUE(object->GetTechnicsList().empty());
}

TEST_F(MicroJoint, ALeadTakesTheBridgesTheirRoom) {
    Sheet round({"circle 0 0 5"});
    const std::list<qev::CCadObject*>& objects = round.root.GetObjectsList();
    for (const char* text : {"T={MicroJoint={Width=2,Zone=15}}", "T={LeadIn={}}"}) round.Add(text);
    EXPECT_EQ(objects.front()->GetToolPathList().size(), 1u) << "the lead, which takes the bridge's room";
    EXPECT_EQ(qev::kit::WhyLostPaths(*objects.front(), "MicroJoint"),
              "no room: no free stretch takes a bridge");
    std::list<qev::CCadObject*> changed;
    std::string message;
    for (const bool isThere : {true, false})
        EXPECT_EQ(Sheet::Manager().RemoveTechnics(&objects, 2, &changed, nullptr, message), isThere);
    EXPECT_EQ(message, "micro-joints removed from 0 of 1 objects");
}

} // namespace
