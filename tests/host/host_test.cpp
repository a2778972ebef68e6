#include <iomanip>
#include <list>

#include "host/drawing/join.h"
#include "host/dxf/dxf_objects.h"
#include "host/dxf_text.h"
#include "host/host.h"
#include "host/report/report.h"
#include "support/support.h"
#include "support/temp_path.h"

namespace {

const std::string kSquare = "0 LWPOLYLINE 70 1 10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10 ";

struct Ran {
    int code;
    std::string out, errors;
};

// Runs the program with arguments from one line of words, or of 'words with blanks'.
Ran RunHost(const std::string& line) {
    std::istringstream in("qev_host " + line);
    std::list<std::string> words;
    std::vector<const char*> arguments;
    for (std::string word; in >> std::quoted(word, '\'', '\1');)
        arguments.push_back(words.emplace_back(word).c_str());
    std::ostringstream out, errors;
    const auto options = host::ParseOptions(static_cast<int>(arguments.size()), arguments.data());
    return {host::Run(options, out, errors), out.str(), errors.str()};
}

void ExpectContains(const std::string& text, const std::vector<const char*>& parts) {
    for (const char* part : parts) EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
}

host::Drawing& Join(host::Drawing& drawing, const std::string& entities, double tolerance) {
    host::ErrorLog log(false);
    host::ReadDxfBytes(DxfFile(entities), log, drawing);
    host::JoinOpenPieces(drawing.root, tolerance);
    return drawing;
}

// A rounded rectangle in pieces of every order comes back as one closed contour.
TEST(Join, PiecesOfAnyOrderBecomeOneContour) {
    std::vector<std::string> pieces = {
        "0 LINE 8 a 10 1 20 0 11 9 21 0 ",          "0 LINE 8 a 10 10 20 5 11 10 21 1 ",
        "0 ARC 8 a 10 9 20 1 40 1 50 270 51 360 ",  "0 ARC 8 a 10 1 20 1 40 1 50 180 51 270 ",
        "0 LINE 8 a 10 -0.004 20 0.996 11 0 21 5 ", "0 LWPOLYLINE 8 a 70 0 10 10 20 5 10 5 20 8 10 0 20 5 "};
    std::sort(pieces.begin(), pieces.end());
    do {
        std::string entities = "0 LINE 8 b 10 1 20 0 11 1 21 -5 ";
        for (const std::string& piece : pieces) entities += piece;
        host::Drawing drawing;
        const auto objects = Join(drawing, entities, 0.01).Objects();
        ASSERT_EQ(objects.size(), 2u) << "another layer is left alone";
        const CCadObject& contour = objects[0]->GetSegmentCount() > 1 ? *objects[0] : *objects[1];
        EXPECT_TRUE(contour.IsClose() && contour.GetSegmentCount() == 7);
        EXPECT_NEAR(contour.GetLength(), 8 + 4 + 4 + kPi + 2 * std::sqrt(34.0), 0.02);
    } while (std::next_permutation(pieces.begin(), pieces.end()));
}

TEST(Join, LeavesWhatDoesNotTouch) {
    host::Drawing apart, curved;
    const std::string pieces = "0 LINE 10 0 20 0 11 1 21 0 0 LINE 10 1.02 20 0 11 2 21 0 "
                               "0 CIRCLE 10 0 20 0 40 1 0 LINE 10 5 20 5 11 5 21 5";
    EXPECT_EQ(Join(apart, pieces, 0.01).Objects().size(), 4u);
    const std::string half = "0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 41 0 42 3.141592653589793 ";
    const auto joined = Join(curved, half + "0 LINE 10 -2 20 0 11 2 21 0", 0.01).Objects();
    ASSERT_TRUE(joined.size() == 1 && joined[0]->GetType() == kCadPolylineEx);
    EXPECT_NEAR(joined[0]->GetLength(), 4 + 9.688448220547675 / 2, 1e-6);
}

// Of a circle, a triangle, two lines that turn by 14 degrees and an ellipse.
TEST(Report, AreasCornersAndClosedness) {
    host::Drawing drawing;
    const std::string entities = "0 CIRCLE 10 0 20 0 40 2 0 LWPOLYLINE 70 1 10 0 20 0 10 4 20 0 10 4 20 3 "
                                 "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 1 "
                                 "0 ELLIPSE 10 0 20 0 11 4 21 0 40 0.5 41 0 42 6.283185307179586";
    const auto reports = host::ReportOf(Join(drawing, entities, 0));
    ASSERT_EQ(reports.size(), 4u);
    const double areas[] = {4 * kPi, 6, 0, 8 * kPi};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(reports[i].area, areas[i], i == 3 ? 0.02 : 1e-9);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(reports[i].corners.size(), i == 1 ? 3u : 0u);
}

struct HostRun : testing::Test {
    // The process's technics manager keeps the plug-ins from one case to the next.
    static void SetUpTestSuite() {
        const std::string plugIns = "' --plugin '" LEADIN "' --plugin '" MICROJOINT "'";
        EXPECT_EQ(RunHost("--rows 0 '" FLANGE + plugIns).code, 0);
    }
    void Write(const std::string& bytes) { std::ofstream(m_drawing, std::ios::binary) << bytes; }
    static std::string Text(const std::string& path) {
        return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
    }
    ~HostRun() override {
        for (const auto* path : {&m_drawing, &m_picture, &m_saved}) std::remove(path->c_str());
    }
    const std::string m_drawing = TempPath("host.dxf"), m_picture = TempPath("host.svg"),
                      m_saved = TempPath("host.technics");
};

TEST_F(HostRun, PrintsDrawsConvertsAndCuts) {
    Write(DxfFile(kSquare + "0 CIRCLE 10 5 20 5 40 2 0 TEXT 10 1 20 1 40 1 1 A"));
    const std::string picture = " --svg " + m_picture;
    const Ran ran = RunHost(m_drawing + picture + " --polyline 0.01 --cut 0:3.5:1.25 --rows 2");
    EXPECT_EQ(ran.code, 0) << ran.errors;
    ExpectContains(ran.out,
                   {"polyline                    4         40.000  yes    ccw                100.000       4",
                    "... and 1 more", "3 objects: 1 circle, 1 polyline, 1 text",
                    "2 objects converted within 0.01 mm: 6 lines and arcs",
                    "cut: 3 segments, 17.5 mm of 40 mm", "picture: "});
    ExpectContains(Text(m_picture),
                   {"class='outline' d='M0 0L10 0L10 10L0 10L0 0'", "class='cut' d='M0 5L0 0L10 0L10 2.5'",
                    "class='converted'", "class='corner'", "A2 2 0 0 1 3 5"});
    EXPECT_EQ(RunHost(m_drawing + " --cut 1:0.25:0.75").code, 0) << "a circle is cut out of its polyline";
    for (const char* bad : {" --cut 7:0:1", " --cut 0:-1:1", " --cut 0:1:1", " --cut 2:0:1", " --cut -1:0:1",
                            " --svg /nowhere/x.svg", " --walk 9:0.5:42"})
        EXPECT_EQ(RunHost(m_drawing + bad).code, 1) << bad;
    ExpectContains(
        RunHost(m_drawing + " --pick 10.5,4 --walk 0:0.5:42").out,
        {"picked: object 0, segment 1, ratio 0.400000, 0.5 mm away at (10.000000, 4.000000)",
         "walked: object 0 by 42 mm to segment 0, ratio 0.700000 at (7.000000, 0.000000), 1 laps"});
    ExpectContains(RunHost(m_drawing + " --start-zones 2" + picture).out,
                   {"     0      4      4        6.000     1 + 0.5000  (10.000, 5.000)\n"
                    "     1      0      1       12.566     1 + 0.0000  (3.000, 5.000)"});
    ExpectContains(Text(m_picture), {"class='zone' d='M0 2L0 0L2 0'"});
    ExpectContains(RunHost(m_drawing + " --start-zones 5.1").out, {"     0      1      0        0.000\n"});
}

// Two squares, one run counter-clockwise from the lower left, one clockwise; a circle and a line.
TEST_F(HostRun, TechnicsAreAddedSavedLoadedAndRemoved) {
    Write(DxfFile(kSquare
                  + "0 LWPOLYLINE 70 1 10 20 20 0 10 20 20 10 10 30 20 10 10 30 20 0 "
                    "0 CIRCLE 10 50 20 5 40 5 0 LINE 10 60 20 0 11 60 21 9 0 POINT 10 0 20 0"));
    const auto run = [this](const std::string& line) {
        const Ran ran = RunHost(m_drawing + " --join 0 --svg " + m_picture + line);
        EXPECT_EQ(ran.code, 0) << ran.errors;
        return ran.out + Text(m_picture);
    };
    const std::string save = " --save " + m_saved, load = " --load " + m_saved + save;
    ExpectContains(run(" --technics T={LeadIn={Length=4}} --params MouseSegment=1;MouseRatio=0.75"),
                   {"lead-ins added to 4 of 4 objects", "class='path' d='M6 7.5L10 7.5'",
                    "class='path' d='M25 6L25 10'", "L60 0'"});
    ExpectContains(run(" --technics T={LeadIn={Type='Arc',Angle=90}} --pick 30,5"),
                   {"added to 1 of 1", "class='path' d='M23 8A2 2 0 0 0 25 10'"});
    ExpectContains(run(" --technics T={MicroJoint={Width=2,Spacing=5,Zone=1}}" + save),
                   {"class='path' d='M6 0L10 0L10 4'", "class='path' d='M60 0L60 3.5'"});
    run(load + " --technics T={LeadIn={}}");
    const std::string saved = Text(m_saved);
    ExpectContains(saved,
                   {"\nT={LeadIn={Type=\"Line\",Length=5,Angle=90,Radius=2,Zone=1,Segment=1,Ratio=0.5},"
                    "MicroJoint={Width=2,Spacing=5,Zone=1},};\n"});
    run(load);
    EXPECT_EQ(Text(m_saved), saved);
    for (const char* remove : {" --remove 1", " --remove 2"})
        ExpectContains(run(load + remove), {"removed from 4 of 4"});
    EXPECT_EQ(Text(m_saved), "");
}

TEST_F(HostRun, TechnicsOfThousandsOfObjects) {
    std::string circles, saved;
    for (Random random; random.Rounds(3000);)
        circles += "0 CIRCLE 10 5 20 " + std::to_string(random.Point().x) + " 40 "
                   + std::to_string(random.Uniform(0.1, 20)) + " ";
    Write(DxfFile(circles));
    for (const std::string& line :
         {std::string(" --technics T={LeadIn={Angle=30.7}}"), " --load " + m_saved}) {
        const Ran ran = RunHost(m_drawing + " --save " + m_saved + line);
        ASSERT_EQ(ran.code, 0) << ran.errors;
        if (saved.empty()) saved = Text(m_saved);
        EXPECT_EQ(Text(m_saved), saved);
    }
    EXPECT_GT(saved.size(), 200'000u);
}

TEST_F(HostRun, RefusedTechnicsEndInOneLine) {
    Write(DxfFile("0 CIRCLE 10 50 20 5 40 5"));
    std::ofstream(m_saved) << "7 3\nT={\n";
    const std::pair<std::string, const char*> refusals[] = {
        {" --plugin nowhere.so", "nowhere.so: "},
        {" --technics T={Other={}}", "no operator has a table"},
        {" --plugin '" LEADIN "'", "is loaded already"},
        {" --technics T={LeadIn={Angle=0}}", "LeadIn.Angle = 0 "},
        {" --technics os.exit()", "no technics: technics:1: "},
        {" --remove 1", "removed from 0 of 1"},
        {" --load " + m_saved, "do not fit"},
        {" --load " + m_drawing, "are damaged"}};
    for (const auto& [line, why] : refusals) {
        const Ran ran = RunHost(m_drawing + line);
        EXPECT_EQ(ran.code, 1) << why;
        ExpectContains(ran.errors, {why});
    }
}

TEST_F(HostRun, DamageEndsInOneLineAndExitCodeOne) {
    const Ran missing = RunHost("nowhere.dxf --lenient");
    EXPECT_EQ(missing.code, 1);
    EXPECT_EQ(missing.errors, "nowhere.dxf: cannot be opened\n");
    Write("");
    EXPECT_EQ(RunHost(m_drawing).errors, m_drawing + ": the file is empty\n");
    Write(DxfFile("0 LINE 10 1 20 2 0 CIRCLE 10 0 20 0 40 1"));
    const Ran strict = RunHost(m_drawing), lenient = RunHost(m_drawing + " --lenient");
    EXPECT_EQ(strict.code + lenient.code, 2);
    EXPECT_EQ(strict.errors, lenient.errors);
    EXPECT_TRUE(strict.out.empty());
    ExpectContains(lenient.out, {"1 objects: 1 circle"});
}

TEST(Options, Refusals) {
    for (const char* words :
         {"", "a b", "a --what", "a --svg", "a --rows x", "a --rows -1", "a --join nan", "a --polyline -1",
          "a --cut 1:2", "a --pick 1,2,3", "a --walk 1:0.5", "a --cut 1:x:2"})
        EXPECT_THROW(RunHost(words), host::UsageError) << words;
}

} // namespace
