// The keys that work whichever program has the focus.
#include <gmock/gmock.h>

#include "key_fixture.h"

namespace kalmora {

using testing::ElementsAre;
using testing::IsEmpty;

using HotKeys = KeyTest;
using Kind = KeyStroke::Kind;

TEST_F(HotKeys, DefaultsAreRegisteredInListOrder) {
    LoadDefaults();
    EXPECT_TRUE(keys.RegisterHotKeys());
    EXPECT_THAT(registered, ElementsAre(HotKey{2000, 2, 0x70}, HotKey{2001, 2, 0x71},
                                        HotKey{2002, 2 | 4, 0x54}, HotKey{2005, 2 | 1, 0x54}));
}

TEST_F(HotKeys, CommandWithoutAKeyIsNotRegistered) {
    keys.LoadKeyText("Get Screenshot\t\nGet Screenshot of Active Window\tC+\n", KeyContext::Main);
    keys.RegisterHotKeys();
    EXPECT_THAT(registered, ElementsAre(HotKey{2002, 6, 0x54}, HotKey{2005, 3, 0x54}));
}

TEST_F(HotKeys, ShowWindowIsRegisteredWhenItHasAKey) {
    keys.LoadKeyText("Show Window\tA+S+PAUSE\n", KeyContext::Main);
    keys.RegisterHotKeys();
    ASSERT_EQ(registered.size(), 5u);
    EXPECT_EQ(registered.back(), (HotKey{1001, 1 | 4, 0x13}));
}

TEST_F(HotKeys, DigitsButZeroAndHomeAndEndTakeTheKeyOfTheEntryBefore) {
    for (KeyCode key = 0; key < kKeyCount; ++key) {
        const bool hasNone = (key >= 27 && key <= 35) || key == 55 || key == 56;
        EXPECT_EQ(HotKeyVirtualKey(key, 0x99), hasNone ? 0x99 : VirtualKeyOf(key)) << KeyName(key);
    }
    EXPECT_EQ(HotKeyVirtualKey(kNoKey, 0x99), 0x99);
}

TEST_F(HotKeys, HotKeyOnOneUsesTheKeyOfTheEntryBefore) {
    keys.LoadKeyText("Get Screenshot\tC+F7\nGet Screenshot of Active Window\tC+1\n", KeyContext::Main);
    keys.RegisterHotKeys();
    EXPECT_EQ(registered[1], (HotKey{2001, 2, 0x76}));
}

TEST_F(HotKeys, FirstHotKeyOnOneHasNoKeyAtFirstAndTheLastOneTheNextTime) {
    keys.LoadKeyText("Get Screenshot\tC+1\n", KeyContext::Main);
    EXPECT_EQ(keys.HotKeys().front().virtualKey, 0);
    EXPECT_EQ(keys.HotKeys().front().virtualKey, 0x54);  // of the last entry, Ctrl+Alt+T
}

TEST_F(HotKeys, RefusedHotKeyDoesNotKeepTheNextFromItsTurn) {
    LoadDefaults();
    refusedHotKey = 2001;
    EXPECT_TRUE(keys.RegisterHotKeys());
    EXPECT_EQ(registered.size(), 4u);
}

// The key that is asked of the system for "1" is another one, which nobody has written anywhere.
TEST_F(HotKeys, MissingOneIsNamedAsItStandsInTheFile) {
    keys.LoadKeyText("Get Screenshot\tC+F7\nGet Screenshot of Active Window\tC+1\n", KeyContext::Main);
    refusedHotKey = 2001;
    keys.RegisterHotKeys();
    EXPECT_THAT(keys.MissingHotKeys(), ElementsAre("[Ctrl+1]"));
    refusedHotKey = 0;
    keys.RegisterHotKeys();
    EXPECT_THAT(keys.MissingHotKeys(), IsEmpty());
}

TEST_F(HotKeys, AnswerIsThatOfTheLastHotKey) {
    LoadDefaults();
    refusedHotKey = 2005;
    EXPECT_FALSE(keys.RegisterHotKeys());
}

TEST_F(HotKeys, AllNineAreUnregisteredInTheirOrder) {
    keys.UnregisterHotKeys();
    EXPECT_THAT(unregistered, ElementsAre(1001, 2001, 2000, 2002, 2003, 2004, 2005, 2006, 2007));
}

TEST_F(HotKeys, TextNamesModifiersAndKey) {
    EXPECT_EQ(HotKeyText(Press("C+A+S+X")), "[Ctrl+Alt+Shift+X]");
    EXPECT_EQ(HotKeyText(Press("C+F12")), "[Ctrl+F12]");
    EXPECT_EQ(HotKeyText(Press("SPACE")), "[SPACE]");
}

TEST_F(HotKeys, HeldKeysOfABindingAreLetGo) {
    LoadDefaults();
    keys.ReleaseBoundKeys(2002);
    EXPECT_THAT(sent,
                ElementsAre(KeyStroke{0x11, Kind::Up}, KeyStroke{0x10, Kind::Up}, KeyStroke{0x54, Kind::Up}));
    sent.clear();
    keys.ReleaseBoundKeys(1002);
    EXPECT_THAT(sent, ElementsAre(KeyStroke{0x12, Kind::Up}, KeyStroke{0x73, Kind::Up}));
}

TEST_F(HotKeys, NothingIsLetGoForACommandWithoutAKeyOrOffTheMainList) {
    LoadDefaults();
    keys.ReleaseBoundKeys(1014);
    keys.ReleaseBoundKeys(1058);  // Ctrl+D, but of the slide show
    keys.ReleaseBoundKeys(2003);
    EXPECT_THAT(sent, IsEmpty());
}

}  // namespace kalmora
