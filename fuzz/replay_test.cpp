// Runs the fuzz programs' functions as ordinary tests: on their corpus, on changed copies of it, and on
// random bytes. The runs are the same everywhere.
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "targets.h" // which the build writes: TARGET(name, runs) for each

#define TARGET(name, runs) extern "C" int name##_fuzz(const unsigned char*, std::size_t);
TARGETS
#undef TARGET

namespace {

using Target = int (*)(const unsigned char*, std::size_t);

struct Replay : testing::Test {
    Replay(const char* itsName, Target itsTarget, int itsRuns)
        : name(itsName), target(itsTarget), runs(itsRuns) {}
    void TestBody() override {
        const std::vector<std::string> corpus = Corpus();
        std::mt19937_64 random(20261122);
        for (const std::string& bytes : corpus) Run(bytes, "of the corpus");
        for (int i = 0; i < runs; ++i) {
            std::string bytes = corpus[random() % corpus.size()];
            if (bytes.empty()) bytes.resize(random() % 400);
            const bool isNew = bytes.find_first_not_of('\0') == std::string::npos;
            for (char& byte : bytes)
                if (isNew || random() % 32 == 0) byte = static_cast<char>(random());
            Run(bytes, std::to_string(i));
        }
    }
    void Run(const std::string& bytes, const std::string& number) {
        SCOPED_TRACE("run " + number + ": " + testing::PrintToString(bytes));
        EXPECT_NO_THROW(target(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    }
    // The files whose paths stand in a list that the build writes; nothing at first.
    std::vector<std::string> Corpus() const {
        std::vector<std::string> corpus{""};
        std::ifstream list(CORPUS);
        for (std::string path; std::getline(list, path);) {
            if (path.find("/corpus/" + name + "/") == std::string::npos) continue;
            std::ifstream file(path, std::ios::binary);
            EXPECT_TRUE(file) << path;
            corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
        return corpus;
    }

    std::string name;
    Target target;
    int runs;
};

#define TARGET(name, runs)                                                                                   \
    [[maybe_unused]] const auto* const g_##name =                                                            \
        testing::RegisterTest("fuzz", #name, nullptr, nullptr, __FILE__, __LINE__,                           \
                              [] { return new Replay(#name, name##_fuzz, runs); });
TARGETS
#undef TARGET

} // namespace
