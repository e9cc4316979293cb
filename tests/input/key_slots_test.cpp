#include "input/key_slots.h"

#include <gtest/gtest.h>

#include <climits>

#include "key_fixture.h"

namespace kalmora {

TEST(KeySlots, RowsAreOrderedByShiftAltAndControl) {
    EXPECT_EQ(KeySlots::SlotOf(Press("A")), 0);
    EXPECT_EQ(KeySlots::SlotOf(Press("S+A")), 55);
    EXPECT_EQ(KeySlots::SlotOf(Press("A+A")), 110);
    EXPECT_EQ(KeySlots::SlotOf(Press("A+S+A")), 165);
    EXPECT_EQ(KeySlots::SlotOf(Press("C+A")), 220);
    EXPECT_EQ(KeySlots::SlotOf(Press("C+S+A")), 275);
    EXPECT_EQ(KeySlots::SlotOf(Press("C+A+A")), 330);
    EXPECT_EQ(KeySlots::SlotOf(Press("C+A+S+A")), 385);
}

TEST(KeySlots, HomeAndEndShareTheSlotsOfTheNextRow) {
    EXPECT_EQ(KeySlots::SlotOf(Press("C+HOME")), KeySlots::SlotOf(Press("C+S+A")));
    EXPECT_EQ(KeySlots::SlotOf(Press("C+END")), KeySlots::SlotOf(Press("C+S+B")));
}

TEST(KeySlots, LastRowRunsTwoSlotsPastItsArray) {
    EXPECT_EQ(KeySlots::SlotOf(Press("C+A+S+HOME")), KeySlots::kArrayLength);
    EXPECT_EQ(KeySlots::SlotOf(Press("C+A+S+END")), 441);
}

TEST(KeySlots, OverrunOfTheSlideShowArrayLandsInTheMainArray) {
    KeySlots slots;
    slots.Set(KeyContext::SlideShow, 440, 11);
    slots.Set(KeyContext::SlideShow, 441, 12);
    EXPECT_EQ(slots.At(KeyContext::Main, 0), 11);
    EXPECT_EQ(slots.At(KeyContext::Main, 1), 12);
}

TEST(KeySlots, OverrunOfTheMainArrayLandsInTheEditorArray) {
    KeySlots slots;
    slots.Set(KeyContext::Main, 441, 13);
    EXPECT_EQ(slots.At(KeyContext::Editor, 1), 13);
}

TEST(KeySlots, OverrunOfTheEditorArrayIsKept) {
    KeySlots slots;
    slots.Set(KeyContext::Editor, 441, 14);
    EXPECT_EQ(slots.At(KeyContext::Editor, 441), 14);
    slots.Set(KeyContext::Editor, 442, 15);
    EXPECT_EQ(slots.At(KeyContext::Editor, 442), 0);
}

TEST(KeySlots, ClearingAnArrayEmptiesTwoSlotsOfTheNextAndNoMore) {
    KeySlots slots;
    for (const KeyContext context : {KeyContext::SlideShow, KeyContext::Main, KeyContext::Editor}) {
        for (int slot = 0; slot < KeySlots::kArrayLength; ++slot) slots.Set(context, slot, 7);
    }
    slots.Clear(KeyContext::Main);
    EXPECT_EQ(slots.At(KeyContext::SlideShow, 439), 7);
    for (int slot = 0; slot < 440; ++slot) ASSERT_EQ(slots.At(KeyContext::Main, slot), 0) << slot;
    EXPECT_EQ(slots.At(KeyContext::Editor, 0), 0);
    EXPECT_EQ(slots.At(KeyContext::Editor, 1), 0);
    EXPECT_EQ(slots.At(KeyContext::Editor, 2), 7);
}

TEST(KeySlots, SlotOutsideOfAllArraysIsEmptyAndTakesNothing) {
    KeySlots slots;
    for (const int slot : {-1, -440, 1323, 100000, INT_MIN, INT_MAX - 2000}) {
        slots.Set(KeyContext::SlideShow, slot, 9);
        EXPECT_EQ(slots.At(KeyContext::SlideShow, slot), 0) << slot;
    }
}

}  // namespace kalmora
