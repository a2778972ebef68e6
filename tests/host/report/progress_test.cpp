#include <chrono>
#include <thread>

#include "host/fixture.h"
#include "host/report/progress.h"

namespace {

// What a step of so many seconds shows.
std::string Shown(double seconds, bool isTerminal) {
    std::ostringstream errors;
    {
        const host::Progress progress("part.dxf: reading", errors, isTerminal);
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }
    return errors.str();
}

TEST(Progress, OfWhatTakesLongerThanASecondAndOnATerminalAlone) {
    const std::string line = "\rpart.dxf: reading, 1 s",
                      wiped = "\r" + std::string(line.size() - 1, ' ') + "\r";
    EXPECT_EQ(Shown(1.3, true), line + wiped);
    EXPECT_EQ(Shown(1.3, false), "");
    EXPECT_EQ(Shown(0, true), "");
}

} // namespace
