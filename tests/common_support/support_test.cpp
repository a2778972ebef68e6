#include <cstdio>
#include <fstream>
#include <string>

#include <qev/support.h>
#include <qevdata/qevdata.h>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

bool Loads(const std::string& bytes) {
    const std::string path = testing::TempDir() + "qev_support_test";
    std::ofstream(path, std::ios::binary) << bytes;
    CImage image;
    const bool loaded = qev::LoadImageFile(image, path.c_str());
    EXPECT_EQ(image.IsNull(), !loaded);
    EXPECT_EQ(std::remove(path.c_str()), 0) << "still open";
    return loaded;
}

const std::string kGif = "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;"s;
// One pixel; the numbers are the size of the file, the width and the height.
const std::string kBmp =
    "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0"s + std::string(28, '\0');
// A grey block, behind a preview with an end of its own.
const std::string kCodes = "\1"s + std::string(17, '\0');
const std::string kJpeg = "\xFF\xD8\xFF\xE1\0\4\xFF\xD9\xFF\xDB\0\x43\0"s + std::string(64, '\1')
                          + "\xFF\xC0\0\x0B\x08\0\x08\0\x08\1\1\x11\0\xFF\xC4\0\x14\0"s + kCodes
                          + "\xFF\xC4\0\x14\x10"s + kCodes + "\xFF\xDA\0\x08\1\1\0\0\x3F\0\x3F\xFF\xD9"s;

TEST(ImageFile, WholePicturesWithinTheLimits) {
    for (const std::string& whole : {kBmp, kGif, kJpeg}) {
        EXPECT_TRUE(Loads(whole)) << whole;
        for (std::size_t size = 0; size < whole.size() - 1; ++size)
            EXPECT_FALSE(Loads(whole.substr(0, size))) << whole.substr(0, 3) << size;
    }
    EXPECT_TRUE(Loads(kBmp + std::string(10'485'760 - kBmp.size(), '\0')));
    EXPECT_FALSE(Loads(kBmp + std::string(10'485'761 - kBmp.size(), '\0')));
    EXPECT_FALSE(Loads(std::string(kBmp).replace(18, 8, "\x10\x27\0\0\x11\x27\0\0"s)))
        << "10,000 x 10,001 pixels";
    CImage image;
    for (const char* path : {"", ".", "no such file"}) EXPECT_FALSE(qev::LoadImageFile(image, path));
    EXPECT_FALSE(qev::LoadImageFile(image, nullptr));
}

struct Member : qev::CCadObject { // counts the living
    explicit Member(unsigned id) : CCadObject(false) { SetID(id), ++s_living; }
    ~Member() override { --s_living; }
    static inline int s_living = 0;
};

TEST(TestData, GroupsOfATestBecomeOne) {
    qev::CCadGroup target;
    qev::CZoneManager zones;
    unsigned id = 0;
    const auto add = [&](const char* name, qev::CZoneManager* manager) {
        auto* group = new qev::CCadGroup;
        group->SetKey("TestName", name);
        for (int i = 0; i < 2; ++i) group->PushBack(new Member(++id));
        qev::CTestDataHandle::AddToZoneManager(group, manager);
    };
    add("A", nullptr);
    add("A", &zones);
    zones.SetTargetGroup(&target);
    qev::CTestDataHandle::SetIgnoreList({"B", "C"});
    for (const char* dropped : {"", "B", "C"}) add(dropped, &zones);
    EXPECT_EQ(Member::s_living + target.GetNumOfChild(), 0);

    target.PushBack(new qev::CCadDot({0, 0}));
    target.GetFront()->SetKey("TestName", "A");
    for (const char* name : {"A", "b", "A"}) add(name, &zones);
    for (auto* there :
         {static_cast<qev::CCadGroup*>(target.GetBack()), &target, static_cast<qev::CCadGroup*>(nullptr)})
        qev::CTestDataHandle::AddToZoneManager(there, &zones);
    EXPECT_EQ(target.GetNumOfChild(), 3);
    EXPECT_EQ(Member::s_living, 6);
    std::string order; // of the merged group, behind the dot
    const auto* merged = static_cast<qev::CCadGroup*>(*std::next(target.GetObjectsList().begin()));
    for (const qev::CCadObject* object : merged->GetObjectsList())
        order += std::to_string(object->GetID()) + " ";
    EXPECT_EQ(order, "15 16 11 12 ");
}

} // namespace
