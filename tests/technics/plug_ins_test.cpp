#include <future>

#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"
#include "technics/test_operator.h"

namespace {

// The path of a plug-in that stands beside this program.
std::string PathOf(const std::string& name) {
    static const char inHere = 0;
    return qev::platform::AppendPath(qev::platform::RemoveFileSpec(qev::platform::ModulePathOf(&inHere)),
                                     name + EXTENSION);
}

// A place in a plug-in; it stays loaded only if somebody else uses it.
char** PlaceIn(const std::string& path) {
    const HMODULE module = qev::platform::LoadDynamicLibrary(path.c_str());
    void* const place = qev::platform::FindSymbol(module, "g_directory");
    EXPECT_NE(place, nullptr) << path;
    qev::platform::FreeDynamicLibrary(module);
    return static_cast<char**>(place);
}

struct PlugIns : testing::Test {
    ~PlugIns() override { manager.FreeTechnicsPlugIn(); }
    // Whether the host's directory arrives in the good plug-in.
    bool IsTold() {
        char directory[] = "here";
        *PlaceIn(good) = nullptr;
        manager.SetCadTempDir(directory);
        return *PlaceIn(good) == directory;
    }
    const std::string good = PathOf("plugin_good");
    test::TestManager manager;
};

TEST_F(PlugIns, LoadOnceAndFreeManyTimes) {
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(manager.LoadTechnicsPlugIn(good)) << manager.GetLastErrorText();
        EXPECT_FALSE(manager.LoadTechnicsPlugIn(good));
        EXPECT_EQ(manager.GetTehcnisItemVector()->size(), 2u);
        manager.FreeTechnicsPlugIn();
    }
    EXPECT_EQ(qev::platform::ModulePathOf(PlaceIn(good)), "");
}

TEST_F(PlugIns, RefusalsRegisterNothingAndUnload) {
    const std::pair<std::string, const char*> refusals[] = {
        {"no_load", "has no Load_plugin_no_load_Technics"},
        {"other", "is made for interface 42, and this library has 1"},
        {"null", "Load_plugin_null_Technics gives null"},
        {"no_name", "gives an operator without a name"},
        {"throws_text", "throws: a text"},
        {"throws_its_own", "throws: its own"},
        {"throws_anything", "_Technics throws"}};
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(good));
    for (const auto& [name, why] : refusals) {
        const std::string path = PathOf("plugin_" + name);
        EXPECT_FALSE(manager.LoadTechnicsPlugIn(path)) << name;
        EXPECT_NE(manager.GetLastErrorText().find(why), std::string::npos) << manager.GetLastErrorText();
        EXPECT_EQ(manager.GetTehcnisItemVector()->size(), 2u) << name;
        EXPECT_TRUE(IsTold()) << name;
        EXPECT_EQ(qev::platform::ModulePathOf(PlaceIn(path)), "") << name;
    }
    EXPECT_FALSE(manager.LoadTechnicsPlugIn(PathOf("plugin_no_set")));
    EXPECT_FALSE(IsTold()) << "nobody is, after one that cannot be told";
}

TEST_F(PlugIns, WhatAnOperatorThrowsReachesTheHost) {
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(PathOf("plugin_throws_later")));
    qev::CCadLine line({0, 0}, {1, 0});
    line.SetTechnicsString("T={Tiny={}}");
    test::Objects objects = {&line}, out;
    for (int round = 0; round < 20; ++round) {
        auto added = std::async(std::launch::async, [&] { manager.Add("T={Tiny={}}"); });
        EXPECT_THROW(added.get(), std::runtime_error) << "in a thread that finds the lock free";
        EXPECT_THROW(manager.LoadTechnics(&line), std::runtime_error);
        EXPECT_THROW(manager.RemoveTechnics(&objects, 21, &out, &out, manager.message), std::runtime_error);
    }
}

// A plug-in that goes while one of the host's operators is called: nobody calls it any more, but its code,
// which might be running, stays to the end. Operators that join are called by the next walk.
TEST_F(PlugIns, FreedDuringAWalk) {
    std::list<test::TestOperator> joined; // enough to move the manager's list
    test::TestOperator first(1, "First"), last(2, "Last");
    int calls = 0;
    manager.RegisterTechnicsItem(&first);
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(PathOf("plugin_throws_later")));
    manager.RegisterTechnicsItem(&last);
    char** const place = PlaceIn(PathOf("plugin_throws_later"));
    first.onNotify = [&](qev::CCadObject*) {
        manager.FreeTechnicsPlugIn();
        EXPECT_NE(qev::platform::ModulePathOf(place), "");
        for (int type = 100; type < 200; ++type) {
            manager.RegisterTechnicsItem(&joined.emplace_back(type, "Joined"));
            joined.back().onNotify = [](qev::CCadObject*) { ADD_FAILURE(); };
        }
    };
    last.onNotify = [&](qev::CCadObject*) { ++calls; };
    EXPECT_NO_THROW(manager.SingleMudifyNotify(nullptr, nullptr, {}, 0));
    EXPECT_EQ(calls, 1) << "the host's own operators stay";
    EXPECT_EQ(qev::platform::ModulePathOf(place), "");
}

TEST(LoadLibrary, LooksBesideTheLibrary) {
    const HINSTANCE found = qev::_LoadLibrary("beside/plugin_beside" EXTENSION);
    EXPECT_NE(found, nullptr);
    qev::platform::FreeDynamicLibrary(found);
    for (const char* none : {"nowhere", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(qev::_LoadLibrary(none), nullptr);
}

} // namespace
