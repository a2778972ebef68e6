#include <sstream>

#include <qevtechnics/parameters.h>

#include "support/shapes.h"

using namespace qev;

namespace {

struct Groove {
    int tool = 0, passes = 1;
    double depth = 5;
    bool isCooled = false;
    std::string remark = "none";
};

const kit::ParameterTable<Groove>& Table() {
    static const kit::ParameterTable<Groove> table("Groove", {{"Tool", &Groove::tool, {"Ball", "Flat"}},
                                                              {"Depth", &Groove::depth, 0.1, 20, "mm"},
                                                              {"Passes", &Groove::passes, 1, 99},
                                                              {"Coolant", &Groove::isCooled},
                                                              {"Remark", &Groove::remark, 80}});
    return table;
}

std::string TextOf(const Groove& groove) {
    std::ostringstream out;
    Table().Write(out, groove);
    return out.str();
}

// Reads the table of a text into a groove; answers what was thrown.
std::string Read(const std::string& text, Groove& groove) {
    CLuaScriptEngine engine;
    EXPECT_EQ(engine.DoString(("T={" + text + "}").c_str()), 0) << text;
    CLuaAccess& cursor = *engine.GetLuaAccess();
    cursor.EnterGlobal("T");
    cursor.Enter("Groove");
    try {
        Table().Read(cursor, groove);
        return "";
    } catch (const char* why) {
        return why;
    }
}

TEST(Parameters, WhatIsWrongIsNamedWithWhatWasExpected) {
    for (const auto& [fields, error] : test::Table<std::string, std::string>{
             {"dpeth=5", "dpeth = 5 is no parameter; did you mean Depth?"},
             {"Mark={}", "Mark = table is no parameter; there are Tool, Depth, Passes, Coolant, Remark"},
             {"7", "[1] = 7 is no parameter; there are Tool, Depth, Passes, Coolant, Remark"},
             {"Coolant=1,Toolan='Ball'", "Toolan = Ball is no parameter; did you mean Tool?"},
             {"Tool='Bull'", "Tool = Bull is not one of Ball, Flat"},
             {"Depth='big'", "Depth = big is not a number from 0.1 to 20 mm"},
             {"Depth=20.001", "Depth = 20.001 is not a number from 0.1 to 20 mm"},
             {"Passes=1.5", "Passes = 1.5 is not a whole number from 1 to 99"},
             {"Coolant=1", "Coolant = 1 is not true or false"},
             {"Remark={}", "Remark = table is not a text of up to 80 bytes"},
             {"MouseSegment=2,MouseRatio=0.5,StartX=1,StartY=1", ""}}) {
        Groove groove;
        EXPECT_EQ(Read("Groove={" + fields + "}", groove), error.empty() ? "" : "T.Groove." + error)
            << fields;
        EXPECT_EQ(TextOf(groove), TextOf(Groove())) << "nothing was taken of " << fields;
    }
}

TEST(Parameters, WhatIsWrittenReadsBackEqual) {
    test::Random random;
    for (int i = 0; i < 500; ++i) {
        Groove groove, back;
        groove.tool = random.Int(0, 1);
        groove.passes = random.Int(1, 99);
        groove.depth = random.Uniform(0.1, 20);
        groove.isCooled = random.Coin();
        groove.remark.clear();
        for (int length = random.Int(0, 80); length > 0; --length)
            groove.remark += static_cast<char>(random.Int(1, 255));
        ASSERT_EQ(Read(TextOf(groove), back), "");
        EXPECT_EQ(back.depth, groove.depth);
        EXPECT_EQ(back.remark, groove.remark);
        EXPECT_EQ(TextOf(back), TextOf(groove));
    }
}

TEST(Parameters, ANumberOutsideOfItsRangeIsNotWritten) {
    Groove groove;
    groove.depth = -1;
    groove.passes = 0;
    EXPECT_EQ(TextOf(groove), "Groove={Tool=\"Ball\",Coolant=false,Remark=\"none\"},");
}

} // namespace
