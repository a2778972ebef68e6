#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"
#include "technics/test_operator.h"

namespace {

using test::Objects;

#ifdef _WIN32
constexpr char kExtension[] = ".dll";
#else
constexpr char kExtension[] = ".so";
#endif

// The path of a plug-in that stands beside this program.
std::string PathOf(const std::string& name) {
    static const char inHere = 0;
    const std::string folder = platform::RemoveFileSpec(platform::ModulePathOf(&inHere));
    return platform::AppendPath(folder, name + kExtension);
}

// A place in a plug-in; it stays loaded only if somebody else uses it.
char** PlaceIn(const std::string& path) {
    const HMODULE module = platform::LoadDynamicLibrary(path.c_str());
    void* const place = platform::FindSymbol(module, "g_directory");
    EXPECT_NE(place, nullptr) << path;
    platform::FreeDynamicLibrary(module);
    return static_cast<char**>(place);
}

struct PlugIns : testing::Test {
    ~PlugIns() override { manager.FreeTechnicsPlugIn(); }
    // Where the host's directory arrives in the good plug-in.
    std::string Directory() {
        char directory[] = "here";
        char** const place = PlaceIn(good);
        *place = nullptr;
        manager.SetCadTempDir(directory);
        return *place ? *place : "";
    }
    const std::string good = PathOf("plugin_good");
    test::TestManager manager;
};

TEST_F(PlugIns, LoadOnceAndFree) {
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(good)) << manager.GetLastErrorText();
    EXPECT_FALSE(manager.LoadTechnicsPlugIn(good));
    EXPECT_EQ(manager.GetTehcnisItemVector()->size(), 2u);
    EXPECT_TRUE(manager.Add("T={Tiny={}}"));
    EXPECT_EQ(Directory(), "here");
    manager.FreeTechnicsPlugIn();
    EXPECT_EQ(platform::ModulePathOf(PlaceIn(good)), "");
    EXPECT_TRUE(manager.GetTehcnisItemVector()->empty());
}

TEST_F(PlugIns, RefusalsRegisterNothingAndUnload) {
    const std::pair<const char*, const char*> refusals[] = {
        {"no_load", "has no Load_plugin_no_load_Technics"},
        {"null", "Load_plugin_null_Technics gives null"},
        {"no_name", "gives an operator without a name"},
        {"throws_text", "throws: a text"},
        {"throws_its_own", "throws: its own"},
        {"throws_in_type", "_Technics throws"}};
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(good));
    const auto registered = *manager.GetTehcnisItemVector();
    for (const auto& [name, why] : refusals) {
        const std::string path = PathOf(std::string("plugin_") + name);
        EXPECT_FALSE(manager.LoadTechnicsPlugIn(path)) << name;
        EXPECT_EQ(manager.GetLastErrorText().find(path), 0u) << manager.GetLastErrorText();
        EXPECT_NE(manager.GetLastErrorText().find(why), std::string::npos) << manager.GetLastErrorText();
        EXPECT_EQ(*manager.GetTehcnisItemVector(), registered) << name;
        EXPECT_EQ(platform::ModulePathOf(PlaceIn(path)), "") << name;
        EXPECT_EQ(Directory(), "here") << name;
    }
    for (const std::string& path :
         {std::string(), std::string("nowhere"), std::string(platform::kLongestPath + 1, 'x')}) {
        EXPECT_FALSE(manager.LoadTechnicsPlugIn(path));
        EXPECT_NE(manager.GetLastErrorText(), "");
    }
    EXPECT_FALSE(manager.LoadTechnicsPlugIn(PathOf("plugin_no_set")));
    EXPECT_EQ(Directory(), "") << "no other plug-in in its place";
}

TEST_F(PlugIns, WhatAnOperatorThrowsReachesTheHost) {
    ASSERT_TRUE(manager.LoadTechnicsPlugIn(PathOf("plugin_throws_later")));
    qev::CCadLine line({0, 0}, {1, 0});
    line.AddTechnics(new qev::CTechnics);
    line.SetTechnicsString("T={Tiny={}}");
    Objects objects = {&line};
    for (int round = 0; round < 20; ++round) {
        EXPECT_THROW(manager.Add("T={Tiny={}}"), std::runtime_error);
        EXPECT_THROW(manager.LoadTechnics(&line), std::runtime_error);
        EXPECT_THROW(manager.RemoveTechnics(&objects, 21, &objects, &objects, manager.message),
                     std::runtime_error);
        EXPECT_THROW(manager.SingleMudifyNotify(&line, &line, {}, 0), std::runtime_error);
        EXPECT_THROW(manager.MultipleMudifyNotify(&objects, &objects, 0), std::runtime_error);
        EXPECT_THROW(manager.UpdataViewDataNotify(&objects), std::runtime_error);
    }
}

TEST_F(PlugIns, ManyRounds) {
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(manager.LoadTechnicsPlugIn(good)) << manager.GetLastErrorText();
        manager.FreeTechnicsPlugIn();
    }
}

TEST(LoadLibrary, LooksBesideTheLibrary) {
    EXPECT_EQ(qev::_LoadLibrary("nowhere"), nullptr);
    EXPECT_EQ(qev::_LoadLibrary(nullptr), nullptr);
    const HINSTANCE beside = qev::_LoadLibrary((std::string("beside/plugin_beside") + kExtension).c_str());
    EXPECT_NE(beside, nullptr);
    platform::FreeDynamicLibrary(beside);
    const HINSTANCE known = qev::_LoadLibrary(PathOf("plugin_good").c_str());
    EXPECT_NE(known, nullptr);
    platform::FreeDynamicLibrary(known);
}

} // namespace
