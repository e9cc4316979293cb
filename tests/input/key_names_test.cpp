#include "input/key_names.h"

#include <gtest/gtest.h>

#include <string>

namespace kalmora {

TEST(KeyNames, LettersAndDigitsAreTheirOwnNamesAndVirtualKeys) {
    for (int i = 0; i < 26; ++i) {
        const char letter = static_cast<char>('A' + i);
        EXPECT_EQ(KeyName(kKeyA + i), std::string(1, letter));
        EXPECT_EQ(VirtualKeyOf(kKeyA + i), 0x41 + i);
    }
    for (int i = 0; i < 10; ++i) {
        const char digit = static_cast<char>('0' + i);
        EXPECT_EQ(KeyName(kKey0 + i), std::string(1, digit));
        EXPECT_EQ(VirtualKeyOf(kKey0 + i), 0x30 + i);
    }
}

TEST(KeyNames, FunctionKeysAreNumberedFromOne) {
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(KeyName(kKeyF1 + i), "F" + std::to_string(i + 1));
        EXPECT_EQ(VirtualKeyOf(kKeyF1 + i), 0x70 + i);
    }
}

TEST(KeyNames, NamedKeysStandInTheirOrder) {
    const struct {
        KeyCode key;
        const char* name;
        VirtualKey virtualKey;
    } rows[] = {{48, "SPACE", 0x20},  {49, "UP", 0x26},    {50, "DOWN", 0x28},
                {51, "LEFT", 0x25},   {52, "RIGHT", 0x27}, {53, "PAUSE", 0x13},
                {54, "ESCAPE", 0x1B}, {55, "HOME", 0x24},  {56, "END", 0x23}};
    for (const auto& row : rows) {
        EXPECT_EQ(KeyName(row.key), row.name);
        EXPECT_EQ(VirtualKeyOf(row.key), row.virtualKey) << row.name;
    }
}

TEST(KeyNames, VirtualKeysLeadBackToTheirKeys) {
    for (KeyCode key = 0; key < kKeyCount; ++key) EXPECT_EQ(KeyCodeOf(VirtualKeyOf(key)), key);
    EXPECT_EQ(KeyCodeOf(kVirtualAlt), kNoKey);
    EXPECT_EQ(KeyCodeOf(0), kNoKey);
}

TEST(KeyNames, NumberThatIsNoKeyHasNoName) {
    for (const KeyCode key : {-2, -1, 57, 1000}) {
        EXPECT_FALSE(IsKeyCode(key));
        EXPECT_EQ(KeyName(key), "");
        EXPECT_EQ(VirtualKeyOf(key), 0);
    }
    EXPECT_TRUE(IsKeyCode(0));
    EXPECT_TRUE(IsKeyCode(56));
}

}  // namespace kalmora
