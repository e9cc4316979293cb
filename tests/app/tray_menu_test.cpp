#include "app/tray_menu.h"

#include <gmock/gmock.h>

namespace kalmora {
namespace {

TEST(TrayMenu, HasItsItemsInOrder) {
    std::vector<std::string> texts;
    for (const TrayMenuItem& item : TrayMenu())
        texts.push_back(item.kind == TrayMenuItem::Kind::Separator ? "-" : item.text);
    EXPECT_THAT(texts, testing::ElementsAre("Kalmora", "-", "&Show", "&Get Screenshot", "-", "E&xit"));
    EXPECT_EQ(TrayMenu()[0].kind, TrayMenuItem::Kind::Caption) << "it can be read and not chosen";
}

TEST(TrayMenu, ScreenshotItemShowsTheWindow) {
    EXPECT_EQ(TrayMenu()[2].command, 1001);
    EXPECT_EQ(TrayMenu()[3].command, 1001);
}

TEST(TrayMenu, ExitIsTheDefaultAndNoOther) {
    for (const TrayMenuItem& item : TrayMenu()) EXPECT_EQ(item.isDefault, item.command == 1002) << item.text;
}

TEST(TrayTip, NamesTheHotKeysThatCannotBeHad) {
    const std::vector<std::string> keys = {"[Ctrl+F1]", "[Ctrl+Alt+T]"};
    EXPECT_EQ(TrayTip({}, false), "Kalmora");
    EXPECT_EQ(TrayTip(keys, false), "Kalmora\nHot keys that cannot be had: [Ctrl+F1] [Ctrl+Alt+T]");
    EXPECT_EQ(TrayTip(keys, true), "Kalmora\n使えないホットキー: [Ctrl+F1] [Ctrl+Alt+T]");
}

}  // namespace
}  // namespace kalmora
