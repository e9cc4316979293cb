#include "app/desktop_keyboard.h"

#include <gtest/gtest.h>

#include "base/commands.h"

namespace kalmora {
namespace {

constexpr int kF1 = 0x70;

TEST(DesktopKeyboard, KeyThatWouldDoNothingIsLeftToTheOtherPrograms) {
    DesktopKeyboard keyboard;
    for (const int command :
         {kCommandScreenshot, kCommandScreenshotOfWindow, kCommandScrapSelection, kCommandScrapClipboard})
        EXPECT_TRUE(keyboard.Register({command, HotKey::kControl, kF1})) << "nothing is missing: " << command;
    EXPECT_FALSE(keyboard.Register({kCommandShow, HotKey::kControl, kF1})) << "there is no window for it";
}

}  // namespace
}  // namespace kalmora
