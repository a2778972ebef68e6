#include <qev/support.h>
#include <qevdata/qevdata.h>

#include <gtest/gtest.h>

namespace {

// What is deleted or leaks is left to the sanitizers.
TEST(TestData, GroupsOfATestBecomeOne) {
    qev::CCadGroup target;
    qev::CZoneManager zones;
    unsigned id = 0;
    const auto add = [&](const char* test, qev::CZoneManager* manager) {
        auto* group = new qev::CCadGroup;
        group->SetKey("TestName", test);
        group->PushBack(new qev::CCadDot({0, 0}, false));
        group->GetBack()->SetID(++id);
        qev::CTestDataHandle::AddToZoneManager(group, manager);
    };
    add("A", nullptr);
    add("A", &zones);
    zones.SetTargetGroup(&target);
    qev::CTestDataHandle::SetIgnoreList({"B", "C"});
    for (const char* dropped : {"", "B", "C"}) add(dropped, &zones);
    EXPECT_TRUE(target.IsEmpty());

    target.PushBack(new qev::CCadDot({0, 0}));
    target.GetFront()->SetKey("TestName", "A");
    for (const char* name : {"A", "b", "A"}) add(name, &zones);
    auto* const last = static_cast<qev::CCadGroup*>(target.GetBack());
    for (qev::CCadGroup* there : {last, &target}) qev::CTestDataHandle::AddToZoneManager(there, &zones);
    EXPECT_EQ(target.GetNumOfChild(), 3);
    std::string order;
    for (const auto* object : *(*++target.GetObjectsList().begin())->GetMembers())
        order += std::to_string(object->GetID());
    EXPECT_EQ(order, "86");
}

} // namespace
