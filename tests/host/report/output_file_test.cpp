#include "host/fixture.h"
#include "host/report/output_file.h"
#include "platform/output_path.h"

#ifndef _WIN32
#include <csignal>

#include <sys/resource.h>
#endif

using namespace test;

namespace {

// A file that is there before something is written over it.
struct OutputFile : testing::Test {
    OutputFile() { std::ofstream(path) << "old"; }
    ~OutputFile() override { std::remove(path.c_str()); }

    // Nothing is left beside the file.
    void ExpectHolds(const std::string& text) const {
        EXPECT_EQ(BytesOf(path), text);
        EXPECT_EQ(BytesOf(qev::platform::PathBeside(path.c_str())), "");
    }

    const std::string path = TempPath("output");
};

TEST_F(OutputFile, TakesItsPlaceWhenItIsKept) {
    host::OutputFile file(path, "text");
    file.Stream() << "new\n";
    EXPECT_EQ(BytesOf(path), "old");
    file.Keep();
    ExpectHolds("new\n");
}

TEST_F(OutputFile, IsForgottenWhenSomethingIsThrown) {
    try {
        host::OutputFile file(path, "text");
        file.Stream() << "half";
        throw host::DrawingError("something else");
    } catch (const host::DrawingError&) {
    }
    ExpectHolds("old");
}

#ifndef _WIN32

TEST_F(OutputFile, AFullDiscLeavesTheOldFile) {
    rlimit all{};
    getrlimit(RLIMIT_FSIZE, &all);
    const rlimit little{1000, all.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &little);
    try {
        host::OutputFile file(path, "text");
        file.Stream() << std::string(100'000, 'x');
        file.Keep();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const host::DrawingError& error) {
        EXPECT_EQ(std::string(error.what()), "the text " + path + " cannot be written: File too large");
    }
    setrlimit(RLIMIT_FSIZE, &all);
    ExpectHolds("old");
}

TEST_F(OutputFile, AnInterruptWaitsUntilTheFileIsWhole) {
    EXPECT_EXIT(
        {
            host::OutputFile file(path, "text");
            file.Stream() << "first half, ";
            std::raise(SIGINT);
            file.Stream() << "second half";
            file.Keep();
        },
        testing::KilledBySignal(SIGINT), "");
    ExpectHolds("first half, second half");
}

TEST(OutputFiles, ADeviceIsWrittenToDirectly) {
    host::OutputFile file("/dev/full", "text");
    file.Stream() << "x";
    EXPECT_THROW(file.Keep(), host::DrawingError);
    EXPECT_TRUE(qev::platform::IsSpecial("/dev/full"));
}

#endif

} // namespace
