#include "input/accelerators.h"

#include <gtest/gtest.h>

#include "key_fixture.h"
#include "platform/keys.h"

namespace kalmora {

struct ModifierRow {
    const char* modifiers;
    int base;
};

class Accelerators : public testing::TestWithParam<ModifierRow> {};

TEST_P(Accelerators, EveryKeyWithTheModifiersHasItsNumber) {
    for (KeyCode key = 0; key < kKeyCount; ++key) {
        Shortcut press = Press(GetParam().modifiers);
        press.key = key;
        EXPECT_EQ(AcceleratorId(press), GetParam().base + key) << ShortcutText(press);
        EXPECT_EQ(DecodeAccelerator(GetParam().base + key), press);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, Accelerators,
                         testing::Values(ModifierRow{"A+", 50100}, ModifierRow{"A+S+", 50300},
                                         ModifierRow{"C+", 51000}, ModifierRow{"C+A+", 51100},
                                         ModifierRow{"C+S+", 51200}, ModifierRow{"C+A+S+", 51300}));

TEST(PlainAccelerators, OnlyFunctionKeysArrowsPauseAndEscapeGoWithoutModifiers) {
    for (KeyCode key = 0; key < kKeyCount; ++key) {
        const bool isAccelerator = (key >= 36 && key <= 47) || (key >= 49 && key <= 54);
        EXPECT_EQ(AcceleratorId({false, false, false, key}), isAccelerator ? 50000 + key : 0) << KeyName(key);
    }
}

TEST(PlainAccelerators, LettersDigitsSpaceHomeAndEndReachTheFocusedWindow) {
    for (const char* spelling : {"A", "Z", "0", "9", "SPACE", "HOME", "END"}) {
        EXPECT_EQ(AcceleratorId(Press(spelling)), 0) << spelling;
    }
}

TEST(PlainAccelerators, ShiftAloneIsNoAccelerator) {
    for (KeyCode key = 0; key < kKeyCount; ++key) EXPECT_EQ(AcceleratorId({false, false, true, key}), 0);
}

TEST(PlainAccelerators, NumberThatIsNoKeyHasNoAccelerator) {
    for (const KeyCode key : {-1, 57, 99}) {
        EXPECT_EQ(AcceleratorId({false, false, false, key}), 0);
        EXPECT_EQ(AcceleratorId({true, true, true, key}), 0);
    }
}

TEST(PlainAccelerators, FirstAndLastNumberAreThoseOfTheRange) {
    EXPECT_EQ(AcceleratorId(Press("C+A+S+END")), kLastAccelerator);
    EXPECT_TRUE(IsKeyCommand(50000));
    EXPECT_TRUE(IsKeyCommand(59999));
    EXPECT_FALSE(IsKeyCommand(49999));
    EXPECT_FALSE(IsKeyCommand(60000));
    EXPECT_FALSE(IsKeyCommand(40271));
}

TEST(PlainAccelerators, NumbersWithoutModifiersDecodeToTheirKeys) {
    EXPECT_EQ(DecodeAccelerator(50036), Press("F1"));
    EXPECT_EQ(DecodeAccelerator(50054), Press("ESCAPE"));
}

TEST(PlainAccelerators, EachKeyOfAnEventIsKnown) {
    const struct {
        int code;
        const char* spelling;
    } rows[] = {{keys::Letter('A'), "A"},  {keys::Letter('Z'), "Z"},  {keys::Digit(0), "0"},
                {keys::Digit(9), "9"},     {keys::Function(1), "F1"}, {keys::Function(12), "F12"},
                {keys::kSpace, "SPACE"},   {keys::kUp, "UP"},         {keys::kDown, "DOWN"},
                {keys::kLeft, "LEFT"},     {keys::kRight, "RIGHT"},   {keys::kPause, "PAUSE"},
                {keys::kEscape, "ESCAPE"}, {keys::kHome, "HOME"},     {keys::kEnd, "END"}};
    for (const auto& row : rows) {
        Event event;
        event.type = EventType::Key;
        event.ctrl = event.alt = event.shift = true;
        event.key = row.code;
        EXPECT_EQ(AcceleratorOf(event), NumberOf(row.spelling) + 1300) << row.spelling;
    }
}

TEST(PlainAccelerators, ModifiersOfAnEventAreToldApart) {
    Event event;
    event.type = EventType::Key;
    event.key = keys::kLeft;
    EXPECT_EQ(AcceleratorOf(event), 50051);
    event.alt = true;
    EXPECT_EQ(AcceleratorOf(event), 50151);
    event.shift = true;
    EXPECT_EQ(AcceleratorOf(event), 50351);
    event.alt = event.shift = false;
    event.ctrl = true;
    EXPECT_EQ(AcceleratorOf(event), 51051);
}

TEST(PlainAccelerators, OtherKeysAndOtherEventsAreNone) {
    Event event;
    event.type = EventType::Key;
    event.ctrl = true;
    for (const int code : {keys::kNone, keys::kBackspace, keys::kTab, keys::kEnter, keys::kPageUp,
                           keys::kPageDown, keys::kInsert, keys::kDelete, -1, 1 << 20}) {
        event.key = code;
        EXPECT_EQ(AcceleratorOf(event), 0) << code;
    }
    event.key = keys::Letter('A');
    EXPECT_EQ(AcceleratorOf(event), 51000);
    event.type = EventType::Character;
    EXPECT_EQ(AcceleratorOf(event), 0);
}

}  // namespace kalmora
