#include "input/shortcut.h"

#include <gtest/gtest.h>

#include "key_fixture.h"

namespace kalmora {

TEST(Shortcut, EachKeyIsReadByItsName) {
    for (KeyCode key = 0; key < kKeyCount; ++key) {
        EXPECT_EQ(Press(KeyName(key)), (Shortcut{false, false, false, key})) << KeyName(key);
    }
}

TEST(Shortcut, EveryShortcutIsReadBackAsItIsWritten) {
    for (KeyCode key = kNoKey; key < kKeyCount; ++key) {
        for (int bits = 0; bits < 8; ++bits) {
            const Shortcut shortcut{(bits & 4) != 0, (bits & 2) != 0, (bits & 1) != 0, key};
            EXPECT_EQ(Press(ShortcutText(shortcut)), shortcut) << ShortcutText(shortcut);
        }
    }
}

TEST(Shortcut, ModifiersAreWrittenInOneOrder) {
    EXPECT_EQ(ShortcutText(Press("S+A+C+END")), "C+A+S+END");
    EXPECT_EQ(ShortcutText(Press("A+")), "A+");
    EXPECT_EQ(ShortcutText({}), "");
}

struct SpellingRow {
    const char* text;
    const char* meaning;  // in the spelling of the files
};

class Spelling : public testing::TestWithParam<SpellingRow> {};

TEST_P(Spelling, GivesTheKeysThatItsCharactersSpell) {
    EXPECT_EQ(ShortcutText(Press(GetParam().text)), GetParam().meaning) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Spelling,
    testing::Values(SpellingRow{"", ""}, SpellingRow{"\t\n", ""}, SpellingRow{"\tC+A+S+END\n", "C+A+S+END"},
                    // function keys take one digit, or 10 to 12
                    SpellingRow{"F1", "F1"}, SpellingRow{"F9", "F9"}, SpellingRow{"F10", "F10"},
                    SpellingRow{"F12", "F12"}, SpellingRow{"F13", "3"}, SpellingRow{"F20", "0"},
                    SpellingRow{"F0", "0"}, SpellingRow{"F", "F"}, SpellingRow{"F1\n", "F1"},
                    // a word that is no key gives its first letter
                    SpellingRow{"ENTER", "E"}, SpellingRow{"TAB", "T"}, SpellingRow{"INSERT", "I"},
                    SpellingRow{"AB", "A"}, SpellingRow{"A B", "B"}, SpellingRow{"A1B", "B"},
                    // a key's name is found everywhere, also inside a word
                    SpellingRow{"BACKSPACE", "SPACE"}, SpellingRow{"PAGEUP", "UP"},
                    SpellingRow{"SPACEX", "SPACE"}, SpellingRow{"EF5", "F5"}, SpellingRow{"UPDOWN", "DOWN"},
                    // lower case spells nothing
                    SpellingRow{"c+f", ""}, SpellingRow{"space", ""}, SpellingRow{"cA", "A"},
                    // the last key wins, modifiers stay
                    SpellingRow{"A B C", "C"}, SpellingRow{"1 2", "2"}, SpellingRow{"A C+ B", "C+B"},
                    SpellingRow{"LEFT S+", "S+LEFT"},
                    // a modifier wants its sign at once
                    SpellingRow{"C +A", "A"}, SpellingRow{"C-A", "A"}, SpellingRow{"C+", "C+"},
                    SpellingRow{"C+C+C", "C+C"}, SpellingRow{"CTRL+A", "A"}, SpellingRow{"CC+A", "C+A"},
                    // other text is skipped
                    SpellingRow{"  [C+] <A> !", "C+A"}, SpellingRow{"\xE3\x82\xA2 HOME", "HOME"}));

TEST(Shortcut, ModifiersAndKeyAreAddedToWhatIsThere) {
    Shortcut shortcut = Press("C+A");
    ParseShortcut("S+", shortcut);
    EXPECT_EQ(ShortcutText(shortcut), "C+S+A");
    ParseShortcut("B", shortcut);
    EXPECT_EQ(ShortcutText(shortcut), "C+S+B");
}

}  // namespace kalmora
