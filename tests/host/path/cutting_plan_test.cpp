#include "host/fixture.h"

using namespace test;

namespace {

// A plate with a hole in which an island stands with a hole of its own, a plate to the right, and a line.
struct CuttingPlan : HostRun {
    CuttingPlan() {
        Write(DxfFile("0 LWPOLYLINE 70 1 10 0 20 0 10 100 20 0 10 100 20 100 10 0 20 100 "
                      "0 CIRCLE 10 50 20 50 40 40 0 CIRCLE 10 50 20 50 40 20 0 CIRCLE 10 50 20 50 40 10 "
                      "0 LWPOLYLINE 70 1 10 110 20 0 10 120 20 0 10 120 20 10 10 110 20 10 "
                      "0 LINE 10 10 20 10 11 90 21 10"));
    }
};

TEST_F(CuttingPlan, InsideComesBeforeOutsideAndTheNearestNext) {
    ExpectRuns(
        {{"--rows 9 --order --feed 600 --rapid 6000 --pierce 2",
          0,
          {"   cut  object       rapid mm         cut mm  pierces     time s\n"
           "     1       3         78.102         62.832        1       9.06\n"
           "     2       2         10.000        125.664        1      14.67\n"
           "     3       1         20.000        251.327        1      27.33\n"
           "     4       4         53.852         40.000        1       6.54\n"
           "     5       0        110.000        400.000        1      43.10\n"
           "5 cuts: 879.823 mm cut, 271.954 mm rapid, 5 pierces, about 1 min 41 s; 1 objects are not cut"}},
         {"--rows 1 --order", 0, {"... and 4 more\n5 cuts:"}}});
}

TEST_F(CuttingPlan, DataHasItTooAndNothingForWhatIsNotCut) {
    const std::string line = RunHost(drawing + " --json --order --feed 600 --rapid 6000 --pierce 2").out;
    ExpectContains(line,
                   {R"("plan":{"feed_mm_per_min":600.0,"rapid_mm_per_min":6000.0,"pierce_s":2.0,)"
                    R"("cuts":5,"not_cut":1,"cut_mm":879.82297150257)",
                    R"("cut_number":2,"rapid_mm":10.0,"cut_mm":125.66370614359172,"pierces":1,)",
                    R"("cut_number":null,"rapid_mm":null,"cut_mm":null,"pierces":null,"time_s":null}]})"});
    ExpectContains(
        RunHost(drawing + " --csv --order").out,
        {"corners,cut_number,rapid_mm,cut_mm,pierces,time_s\n", ",5,line,0,1,80.0,false,,,0,,,,,\n"});
}

// The contour is cut from the end of the lead-in, and in pieces between the bridges; what is open comes
// first.
TEST_F(CuttingPlan, LeadInsAndBridgesChangeWhereAndHowMuchIsCut) {
    const std::string line =
        "--join 0 --rows 9 --order --pick 50,10 --technics T={LeadIn={Length=4}}" + kPlugIns;
    ExpectRuns({{line, 0, {"     1       5 ", " 84.000        1 "}}});
}

} // namespace
