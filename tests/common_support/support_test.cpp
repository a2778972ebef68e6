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
    return qev::LoadImageFile(image, path.c_str()) && std::remove(path.c_str()) == 0 && !image.IsNull();
}

// Of 24 bits a pixel; the pixels are left out.
std::string BmpHeader(std::uint32_t width, std::uint32_t height, std::uint32_t size) {
    const std::uint32_t words[] = {size, 0, 54, 40, width, height, 24u << 16 | 1, 0, 0, 0, 0, 0, 0};
    return "BM" + std::string(reinterpret_cast<const char*>(words), sizeof words);
}

TEST(ImageFile, SizeLimits) {
    const std::string bmp = BmpHeader(1, 2, 62) + "\1\2\3\0\4\5\6\0"s;
    EXPECT_TRUE(Loads(bmp + std::string(10'485'760 - bmp.size(), '\0')));
    EXPECT_FALSE(Loads(bmp + std::string(10'485'761 - bmp.size(), '\0')));
    EXPECT_FALSE(Loads(BmpHeader(10'001, 10'000, 0))) << "too many pixels";
}

TEST(ImageFile, OnlyWholePicturesLoad) {
    const std::string codes = "\1"s + std::string(16, '\0'); // one code of one bit, for 0
    const std::string start = "\xFF\xD8"s, preview = "\xFF\xE1\0\4\xFF\xD9"s;
    const std::string rest = "\xFF\xDB\0\x43\0"s + std::string(64, '\1')
                             + "\xFF\xC0\0\x0B\x08\0\x08\0\x08\1\1\x11\0"s + "\xFF\xC4\0\x14\0"s + codes
                             + "\xFF\xC4\0\x14\x10"s + codes + "\xFF\xDA\0\x08\1\1\0\0\x3F\0\x3F"s;
    const std::string bmp = BmpHeader(1, 2, 62) + "\1\2\3\0\4\5\6\0"s;
    const std::string gif = "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;"s;
    const std::string jpeg = start + preview + rest + "\xFF\xD9"s;
    for (const std::string& whole : {bmp, gif, jpeg}) {
        EXPECT_TRUE(Loads(whole)) << whole;
        for (std::size_t size = 0; size + 1 < whole.size(); ++size)
            EXPECT_FALSE(Loads(whole.substr(0, size))) << whole.substr(0, 3) << size;
    }
    CImage image;
    for (const char* path : {static_cast<const char*>(nullptr), "", ".", "no such file"})
        EXPECT_FALSE(qev::LoadImageFile(image, path));
}

struct Member : qev::CCadObject { // counts the living
    explicit Member(unsigned id) : CCadObject(false) { SetID(id), ++s_living; }
    ~Member() override { --s_living; }
    static inline int s_living = 0;
};

qev::CCadGroup* TestGroup(const char* name, std::initializer_list<unsigned> ids) {
    auto* group = new qev::CCadGroup;
    group->SetKey("TestName", name);
    for (const unsigned id : ids) group->PushBack(new Member(id));
    return group;
}

TEST(TestData, GroupsOfATestBecomeOne) {
    qev::CCadGroup target;
    qev::CZoneManager zones;
    const auto add = [&](qev::CCadGroup* group) { qev::CTestDataHandle::AddToZoneManager(group, &zones); };
    qev::CTestDataHandle::AddToZoneManager(TestGroup("A", {1}), nullptr);
    add(TestGroup("A", {1}));
    zones.SetTargetGroup(&target);
    qev::CTestDataHandle::SetIgnoreList({"B", "C"});
    for (const char* dropped : {"", "B", "C"}) add(TestGroup(dropped, {1}));
    EXPECT_EQ(Member::s_living + target.GetNumOfChild(), 0);

    auto* dot = new qev::CCadDot({0, 0});
    dot->SetKey("TestName", "A");
    target.PushBack(dot);
    add(nullptr), add(&target);
    add(TestGroup("A", {1, 2}));
    add(TestGroup("A", {3, 4}));
    add(TestGroup("b", {5}));
    add(static_cast<qev::CCadGroup*>(target.GetBack())); // stands there already
    ASSERT_EQ(target.GetNumOfChild(), 3);
    EXPECT_EQ(Member::s_living, 5);
    std::string order;
    const auto* merged = static_cast<qev::CCadGroup*>(*std::next(target.GetObjectsList().begin()));
    for (const qev::CCadObject* object : merged->GetObjectsList()) order += std::to_string(object->GetID());
    EXPECT_EQ(order, "3412");
}

} // namespace
