#include "host/fixture.h"

using namespace test;

namespace {

const std::string kLayers = "0 LAYER 2 off 62 -1 70 0 0 LAYER 2 frozen 62 3 70 1 0 LAYER 2 red 62 1 70 0 "
                            "0 LAYER 2 true 62 1 420 1193046 70 0 ";
const std::string kEnds = " 10 0 20 0 11 1 21 0 ";
// A block with a line on layer 0, one on the layer "red", and one that is as its insert is.
const std::string kBlock = "0 BLOCK 2 B 0 LINE 8 0 10 0 20 0 11 1 21 0 0 LINE 8 RED 10 0 20 1 11 1 21 1 "
                           "0 LINE 8 a 62 0 10 0 20 2 11 1 21 2 0 ENDBLK ";

struct Case {
    const char* name;
    std::string entity;
    std::size_t taken;                // objects
    int host::ReadCounts::*left = {}; // what counts the entity when it is left out
    std::vector<std::string> layers = {};
};

TEST(DxfLayers, WhatIsNotShownIsLeftOutAndCounted) {
    using host::ReadCounts;
    const Case cases[] = {
        {"shown", "0 LINE 8 red" + kEnds, 1},
        {"a layer that is not listed", "0 LINE 8 new" + kEnds, 1},
        {"off", "0 LINE 8 OFF" + kEnds, 0, &ReadCounts::hidden},
        {"frozen", "0 LINE 8 frozen" + kEnds, 0, &ReadCounts::hidden},
        {"invisible", "0 LINE 8 red 60 1" + kEnds, 0, &ReadCounts::invisible},
        {"a hidden attribute", "0 ATTRIB 8 red 40 1 1 x 70 1" + kEnds, 0, &ReadCounts::invisible},
        {"paper", "0 LINE 8 red 67 1" + kEnds, 0, &ReadCounts::paperSpace},
        {"a sheet", "0 LINE 8 red 410 Layout1" + kEnds, 0, &ReadCounts::paperSpace},
        {"the model", "0 LINE 8 red 67 0 410 Model" + kEnds, 1},
        {"an insert on a frozen layer", "0 INSERT 8 frozen 2 B 10 0 20 0", 0, &ReadCounts::hidden},
        {"an insert on a layer that is off", "0 INSERT 8 off 2 B 10 0 20 0", 2, &ReadCounts::hidden},
        {"a wanted layer", "0 LINE 8 red" + kEnds, 1, nullptr, {"Red", "off"}},
        {"another layer", "0 LINE 8 red" + kEnds, 0, &ReadCounts::otherLayers, {"off"}},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.name);
        const std::string file = DxfFile(expected.entity, kBlock, "", kLayers);
        const DrawingOf read(file, {.layers = expected.layers});
        EXPECT_EQ(read.log.Errors(), std::vector<std::string>());
        EXPECT_EQ(read.objects.size(), expected.taken);
        for (const host::ReadCountRow& row : host::kReadCounts)
            EXPECT_EQ(read.drawing.counts.*row.count, row.count == expected.left ? 1 : 0) << row.key;
        if (expected.layers.empty()) EXPECT_GE(DrawingOf(file, {.takeAll = true}).objects.size(), 1u);
    }
    EXPECT_THROW(DrawingOf(DxfFile("", "", "", kLayers), {.layers = {"rde"}}), host::DrawingError);
}

TEST(DxfLayers, AreListedWithWhatLiesOnThem) {
    const DrawingOf read(DxfFile("0 INSERT 8 off 2 B 10 0 20 0 0 LINE 8 new" + kEnds, kBlock, "", kLayers));
    std::string listed;
    for (const auto& [name, layer] : read.drawing.layers)
        listed +=
            name + (layer.isShown ? " " : " hidden ") + layer.colour + std::to_string(layer.entities) + "; ";
    EXPECT_EQ(listed,
              "a 1; frozen hidden #00ff000; new 1; off hidden #ff00001; red #ff00001; true #1234560; ");
}

TEST(DxfLayers, ColoursOfObjects) {
    for (const auto& [name, entity, colours] : Table<const char*, std::string, std::vector<std::string>>{
             {"of the layer", "0 LINE 8 red" + kEnds, {"#ff0000"}},
             {"of the layer, true", "0 LINE 8 true 62 256" + kEnds, {"#123456"}},
             {"its own", "0 LINE 8 red 62 5" + kEnds, {"#0000ff"}},
             {"its own, true", "0 LINE 8 red 62 5 420 255" + kEnds, {"#0000ff"}},
             {"the foreground", "0 LINE 8 red 62 7" + kEnds, {""}},
             {"of an insert", "0 INSERT 8 true 62 3 2 B 10 0 20 0", {"#123456", "#ff0000", "#00ff00"}},
         }) {
        SCOPED_TRACE(name);
        const DrawingOf read(DxfFile(entity, kBlock, "", kLayers));
        ASSERT_EQ(read.objects.size(), colours.size());
        for (std::size_t i = 0; i < colours.size(); ++i)
            EXPECT_STREQ(read.objects[i]->GetKey("Color"), colours[i].c_str());
    }
}

} // namespace
