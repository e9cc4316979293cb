// From a key press to the command of the window that is up.
#include <gmock/gmock.h>

#include "key_fixture.h"

namespace kalmora {

using testing::ElementsAre;
using testing::IsEmpty;

using TranslateKey = KeyTest;

TEST_F(TranslateKey, DefaultKeysRunTheCommandsOfTheMainList) {
    LoadDefaults();
    EXPECT_EQ(Translate("F5"), 1021);
    EXPECT_EQ(Translate("LEFT"), 1012);
    EXPECT_EQ(Translate("C+LEFT"), 1013);
    EXPECT_EQ(Translate("C+S+T"), 2002);
    EXPECT_EQ(Translate("C+A+T"), 2005);
    EXPECT_EQ(Translate("A+F4"), 1002);
    EXPECT_EQ(Translate("F6"), 0);
}

TEST_F(TranslateKey, SlideShowTakesTheKeysWhileItIsVisible) {
    LoadDefaults();
    slideShowShown = true;
    EXPECT_EQ(Translate("LEFT"), 1056);
    EXPECT_EQ(Translate("C+D"), 1058);
    EXPECT_EQ(Translate("F5"), 0);
}

TEST_F(TranslateKey, NeighborWindowPutsTheSlideShowListInForce) {
    LoadDefaults();
    neighborShown = true;
    EXPECT_EQ(Translate("LEFT"), 1056);
    EXPECT_EQ(Translate("F5"), 0);
}

TEST_F(TranslateKey, LeftWithoutASlideShowBindingDoesNothingThere) {
    LoadDefaults();
    keys.LoadKeyText("Go Previous Slide\t\n", KeyContext::SlideShow);
    slideShowShown = true;
    EXPECT_EQ(Translate("LEFT"), 0);
    slideShowShown = false;
    EXPECT_EQ(Translate("LEFT"), 1012);
}

TEST_F(TranslateKey, EditorComesBeforeTheSlideShow) {
    LoadDefaults();
    slideShowShown = true;
    editorOpen = true;
    EXPECT_EQ(Translate("LEFT"), 40274);
    EXPECT_EQ(Translate("ESCAPE"), 40290);
    EXPECT_EQ(Translate("C+A"), 40291);
}

TEST_F(TranslateKey, KeyThatTheEditorLeavesGoesToTheSlideShowList) {
    LoadDefaults();
    editorOpen = true;  // whatever window is visible
    EXPECT_EQ(Translate("C+D"), 1058);
    EXPECT_EQ(Translate("F5"), 0);
}

TEST_F(TranslateKey, ScreenshotsAndShowWindowWorkInEveryContext) {
    LoadDefaults();
    keys.LoadKeyText("Show Window\tC+W\n", KeyContext::Main);
    for (const bool editor : {false, true}) {
        for (const bool slideShow : {false, true}) {
            editorOpen = editor;
            slideShowShown = slideShow;
            EXPECT_EQ(Translate("C+F1"), 2000);
            EXPECT_EQ(Translate("C+F2"), 2001);
            EXPECT_EQ(Translate("C+W"), 1001);
        }
    }
}

TEST_F(TranslateKey, ScreenshotKeyIsTakenFromTheEditorThatHasItToo) {
    LoadDefaults();
    keys.LoadKeyText("Undo\tC+F1\n", KeyContext::Editor);
    editorOpen = true;
    EXPECT_EQ(Translate("C+F1"), 2000);
}

TEST_F(TranslateKey, UnboundCombinationWithAltIsTypedAgain) {
    using enum KeyStroke::Kind;
    LoadDefaults();
    EXPECT_EQ(Translate("A+E"), 0);
    EXPECT_THAT(sent, ElementsAre(KeyStroke{0x12, Up}, KeyStroke{0x12, Down}, KeyStroke{0x12, Up},
                                  KeyStroke{0x45, Up}, KeyStroke{0x45, Down}, KeyStroke{0x45, Up}));
}

TEST_F(TranslateKey, CombinationWithAltThatTheListInForceLacksIsTypedAgain) {
    LoadDefaults();
    slideShowShown = true;
    EXPECT_EQ(Translate("A+F4"), 0);
    EXPECT_EQ(sent.size(), 6u);
}

TEST_F(TranslateKey, BoundAltAndUnboundOtherCombinationsAreNotTypedAgain) {
    LoadDefaults();
    EXPECT_EQ(Translate("A+F4"), 1002);
    EXPECT_EQ(Translate("C+E"), 0);
    EXPECT_EQ(Translate("C+S+E"), 0);
    EXPECT_EQ(Translate("F6"), 0);
    EXPECT_THAT(sent, IsEmpty());
}

// HOME and END reach into the next row; see key_slots.h.

TEST_F(TranslateKey, HomeAlsoFiresOnLetterAOfTheNextRow) {
    LoadDefaults();
    keys.LoadKeyText("Jump To\tC+HOME\n", KeyContext::Main);
    EXPECT_EQ(Translate("C+HOME"), 1016);
    EXPECT_EQ(Translate("C+S+A"), 1016);
}

TEST_F(TranslateKey, ShiftHomeIsStoredAndFiresOnAltA) {
    LoadDefaults();
    keys.LoadKeyText("Jump To\tS+HOME\n", KeyContext::Main);
    EXPECT_EQ(AcceleratorId(Press("S+HOME")), 0);
    EXPECT_EQ(Translate("A+A"), 1016);
}

TEST_F(TranslateKey, PlainLetterIsStoredButNoKeyPressFindsIt) {
    LoadDefaults();
    keys.LoadKeyText("Jump To\tJ\n", KeyContext::Main);
    EXPECT_EQ(BoundTo(1016), Press("J"));
    EXPECT_EQ(AcceleratorId(BoundTo(1016)), 0);
}

TEST_F(TranslateKey, LastKeyOfTheLastRowLandsPastTheMainArray) {
    keys.LoadKeyText("Reload\tC+A+S+END\n", KeyContext::Main);
    EXPECT_EQ(keys.CommandAt(KeyContext::Main, 441), 1021);
    EXPECT_EQ(keys.CommandAt(KeyContext::Editor, 1), 1021);
    EXPECT_EQ(Translate("C+A+S+END"), 1021);
}

TEST_F(TranslateKey, LoadingTheEditorListEmptiesWhatLandedInItsArray) {
    LoadDefaults();
    keys.LoadKeyText("Reload\tC+A+S+END\n", KeyContext::Main);
    keys.LoadKeyText(std::nullopt, KeyContext::SlideShow);
    keys.LoadKeyText(std::nullopt, KeyContext::Editor);
    EXPECT_EQ(Translate("C+A+S+END"), 0);
    EXPECT_EQ(ShortcutText(BoundTo(1021)), "C+A+S+END");  // and is written back all the same
}

TEST_F(TranslateKey, PlainLetterOfTheEditorFiresInTheMainWindowPastTheLastRow) {
    LoadDefaults();
    keys.LoadKeyText("Undo\tA\n", KeyContext::Editor);
    EXPECT_EQ(Translate("C+A+S+HOME"), 40285);
}

TEST_F(TranslateKey, LastRowOfTheEditorKeepsItsOverrun) {
    LoadDefaults();
    keys.LoadKeyText("Undo\tC+A+S+END\n", KeyContext::Editor);
    editorOpen = true;
    EXPECT_EQ(Translate("C+A+S+END"), 40285);
}

TEST_F(TranslateKey, NumberThatNoKeyPressHasGivesNothingAndSendsNothing) {
    LoadDefaults();
    for (const int id : {-1, 0, 1021, 49999, 50199, 52000, 59999, 60000, 1 << 30}) {
        for (const bool editor : {false, true}) {
            editorOpen = editor;
            EXPECT_EQ(keys.TranslateKey(id), 0) << id;
        }
    }
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(TranslateKey, NothingIsBoundBeforeAListIsLoaded) {
    EXPECT_EQ(Translate("F5"), 0);
    EXPECT_THAT(keys.Bindings(KeyContext::Main), IsEmpty());
    EXPECT_TRUE(keys.RegisterHotKeys());
}

}  // namespace kalmora
