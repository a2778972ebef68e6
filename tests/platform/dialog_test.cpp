#include <string>

#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "support/dialog.h"

namespace {

TEST(DialogItem, TextsOfControls) {
    const test::Dialog dialog({101, 102});
    const std::string longText(5000, 'x');
    platform::SetItemText(dialog.Get(), 101, "12.7");
    platform::SetItemText(dialog.Get(), 102, longText.c_str());
    EXPECT_EQ(platform::GetItemText(dialog.Get(), 101), "12.7");
    EXPECT_EQ(platform::GetItemText(dialog.Get(), 102), longText.c_str());
    platform::SetItemText(dialog.Get(), 101, nullptr);
    EXPECT_TRUE(platform::GetItemText(dialog.Get(), 101).IsEmpty());
}

TEST(DialogItem, AbsentOnes) {
    const test::Dialog dialog({101});
    for (const HWND window : {dialog.Get(), HWND{}}) {
        platform::SetItemText(window, 7, "text");
        EXPECT_TRUE(platform::GetItemText(window, 7).IsEmpty());
    }
}

} // namespace
