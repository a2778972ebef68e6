#include <gtest/gtest.h>

#include "host/dxf/dxf_colour.h"
#include "support/shapes.h"

// Against values of the published palette.
TEST(DxfColour, OfThePalette) {
    for (const auto& [index, colour] : test::Table<int, const char*>{
             {0, ""},          {1, "#ff0000"},   {6, "#ff00ff"},   {7, ""},          {9, "#c0c0c0"},
             {10, "#ff0000"},  {11, "#ff7f7f"},  {12, "#a50000"},  {20, "#ff3f00"},  {30, "#ff7f00"},
             {50, "#ffff00"},  {94, "#007f00"},  {132, "#00a5a5"}, {170, "#0000ff"}, {212, "#a500a5"},
             {249, "#261317"}, {250, "#333333"}, {255, "#ffffff"}, {256, ""},        {-3, ""},
         })
        EXPECT_EQ(host::PaletteColour(index), colour) << index;
}
