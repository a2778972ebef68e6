#include <sstream>

#include "host/dxf/dxf_writer.h"
#include "host/fixture.h"

using namespace test;
using math::kPi;

namespace {

struct Written {
    std::string name;
    std::unique_ptr<qev::CCadObject> object;
    qev::cad_t readAs;
};

template <class Object, class... Arguments>
Written Case(const char* name, qev::cad_t readAs, Arguments... arguments) {
    return {name, std::make_unique<Object>(arguments...), readAs};
}

std::vector<Written> Cases() {
    using math::DPOINT2;
    std::vector<Written> cases;
    const DPOINT2 c{3, 4};
    cases.push_back(Case<qev::CCadLine>("line", qev::kCadLine, DPOINT2{1, 2}, DPOINT2{0.1, -1e-7}));
    cases.push_back(Case<qev::CCadCircle>("circle", qev::kCadCircle, c, 5.0));
    cases.push_back(Case<qev::CCadCircle>("clockwise circle", qev::kCadPolyline, c, 5.0, false));
    cases.push_back(Case<qev::CCadArc>("arc over 0", qev::kCadArc, c, 5.0, 6.0, 1.0, true));
    cases.push_back(Case<qev::CCadArc>("clockwise arc", qev::kCadPolyline, c, 5.0, 6.0, 1.0, false));
    cases.push_back(Case<qev::CCadEllipse>("ellipse", qev::kCadEllipse, c, 5.0, 2.0, 0.5));
    for (const bool isCcw : {true, false})
        for (const double b : {2.0, 8.0})
            cases.push_back(Case<qev::CCadEllipseArc>("elliptic arc", qev::kCadEllipseArc, c, 5.0, b, 0.5,
                                                      1.0, 2.0, isCcw));
    auto slot = std::make_unique<qev::CCadPolyline>();
    slot->SetStartPoint({0, 0});
    slot->AddLine({10, 0});
    slot->AddArc({10, 4}, 1);
    slot->AddLine({0, 4});
    slot->AddArc({0, 0}, 1);
    cases.push_back({"slot", std::move(slot), qev::kCadPolyline});
    return cases;
}

// What was written is read back in the same place, of the same size, and running the same way.
TEST(DxfWriter, WhatIsWrittenIsReadBack) {
    for (const Written& written : Cases()) {
        SCOPED_TRACE(written.name);
        std::ostringstream out;
        host::DxfWriter writer(out, {{"CUT", 1}});
        writer.Add(*written.object, "CUT");
        writer.End();
        const DrawingOf read(out.str());
        EXPECT_TRUE(read.log.Errors().empty());
        ASSERT_EQ(read.objects.size(), 1u);
        const qev::CCadObject& object = *read.objects[0];
        EXPECT_EQ(object.GetType(), written.readAs);
        EXPECT_EQ(object.GetKey("Layer"), "CUT");
        EXPECT_EQ(object.IsClose(), written.object->IsClose());
        EXPECT_EQ(object.GetDirection(), written.object->GetDirection());
        EXPECT_NEAR(object.GetLength(), written.object->GetLength(), 1e-9);
        EXPECT_LT(math::Norm(object.GetStartPoint() - written.object->GetStartPoint()), 1e-9);
        EXPECT_LT(math::Norm(object.GetEndPoint() - written.object->GetEndPoint()), 1e-9);
        const qev::CadRect box = object.GetBoundRect(), before = written.object->GetBoundRect();
        EXPECT_NEAR(box.width, before.width, 1e-9);
        EXPECT_NEAR(box.height, before.height, 1e-9);
    }
}

TEST_F(HostRun, ToolPathsStandOnLayersOfTheirOwn) {
    Write(DxfFile(kSquareWords + "0 TEXT 10 1 20 1 40 1 1 I"));
    ExpectRuns({{"--dxf " + saved + kPlugIns + "--technics T={MicroJoint={Width=2,Spacing=5,Zone=1}}",
                 0,
                 {"tool paths: " + saved}},
                {"--dxf /nowhere/x.dxf", 1, {"the tool paths /nowhere/x.dxf cannot be written"}}});
    const DrawingOf read(BytesOf(saved));
    std::map<std::string, int> layers;
    for (const qev::CCadObject* object : read.objects) ++layers[object->GetKey("Layer").GetString()];
    EXPECT_EQ(layers,
              (std::map<std::string, int>{{"BRIDGES", 4}, {"CONTOURS", 1}, {"CUT", 4}, {"TEXTS", 1}}));
}

} // namespace
