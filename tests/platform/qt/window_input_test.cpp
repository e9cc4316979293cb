#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QWheelEvent>
#include <thread>

#include "platform/drop_event.h"
#include "platform/keys.h"
#include "platform/window.h"
#include "window_fixture.h"

namespace kalmora {
namespace {

using namespace test;
using testing::ElementsAre;

// ---- mouse

TEST_F(WindowTest, MouseEventsTellPlaceButtonsAndModifiers) {
    ShowAndForget();
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {10.9, 20.2}, Qt::ControlModifier);
    Mouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {12, 22}, Qt::ShiftModifier | Qt::AltModifier);
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    Mouse(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, {-3.5, 5});
    ASSERT_THAT(Types(), ElementsAre(EventType::LeftDown, EventType::MouseMove, EventType::LeftUp,
                                     EventType::MouseMove));
    EXPECT_EQ(events_[0].point, (Point{10, 20}));
    EXPECT_TRUE(events_[0].ctrl);
    EXPECT_FALSE(events_[0].shift);
    EXPECT_TRUE(events_[0].leftButton);
    EXPECT_TRUE(events_[1].leftButton);
    EXPECT_TRUE(events_[1].shift && events_[1].alt && !events_[1].ctrl);
    EXPECT_FALSE(events_[2].leftButton);
    EXPECT_EQ(events_[3].point, (Point{-4, 5}));
    EXPECT_FALSE(events_[3].leftButton);
}

TEST_F(WindowTest, TheSecondPressOfADoubleClickIsADoubleClick) {
    ShowAndForget();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        Mouse(QEvent::MouseButtonPress, button, button);
        Mouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
        Mouse(QEvent::MouseButtonDblClick, button, button);
        Mouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
    }
    EXPECT_THAT(Types(), ElementsAre(EventType::LeftDown, EventType::LeftUp, EventType::LeftDoubleClick,
                                     EventType::LeftUp, EventType::RightDown, EventType::RightUp,
                                     EventType::RightDoubleClick, EventType::RightUp));
}

TEST_F(WindowTest, OtherButtonsAreNoEvents) {
    ShowAndForget();
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton);
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, Qt::NoButton);
    EXPECT_THAT(Types(), ElementsAre());
}

TEST_F(WindowTest, WheelTellsWholeSteps) {
    ShowAndForget();
    for (const int angle : {120, -240, 60, 60, -60, 30}) {
        QWheelEvent event({5, 5}, {5, 5}, {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Widget(), &event);
    }
    ASSERT_EQ(Count(EventType::Wheel), 3);
    EXPECT_EQ(events_[0].wheel, 1);
    EXPECT_EQ(events_[1].wheel, -2);
    EXPECT_EQ(events_[2].wheel, 1);
}

TEST_F(WindowTest, DroppedFilesArriveWithTheirPlace) {
    ShowAndForget();
    EXPECT_FALSE(DropFiles("file:///a%20b.jpg\r\nhttp://x/\r\nfile:///%82.txt\r\n", {30, 40}).dropped);
    ASSERT_EQ(Count(EventType::Drop), 1) << "before the other program has its answer";
    EXPECT_THAT(events_.back().paths, ElementsAre("/a b.jpg", "/\x82.txt"));
    EXPECT_EQ(events_.back().point, (Point{30, 40}));
    DropEvent last;
    answer_ = [&last](const Event& event) {
        if (event.type == EventType::Drop) last = AsDrop(event);
        return true;
    };
    DropFiles("file:///a", {30, 40});
    EXPECT_TRUE(last.mayMove);
    EXPECT_FALSE(last.isOwnDrag);
    DropFiles("file:///a", {30, 40}, Qt::CopyAction);
    EXPECT_FALSE(last.mayMove);
}

TEST_F(WindowTest, ADropIsAnsweredWithWhatWasDone) {
    ShowAndForget();
    DropResult done = DropResult::NotTaken;
    answer_ = [&done](const Event& event) {
        if (event.type == EventType::Drop) *AsDrop(event).result = done;
        return true;
    };
    EXPECT_FALSE(DropFiles("file:///a", {3, 4}).dropped) << "what was not taken must stay where it is";
    done = DropResult::Copied;
    EXPECT_TRUE(DropFiles("file:///a", {3, 4}).dropped);
    EXPECT_EQ(DropFiles("file:///a", {3, 4}).action, Qt::CopyAction);
    done = DropResult::Moved;
    EXPECT_EQ(DropFiles("file:///a", {3, 4}).action, Qt::MoveAction);
    EXPECT_EQ(DropFiles("file:///a\r\nhttp://x/b", {3, 4}).action, Qt::CopyAction)
        << "what is no local file was not moved";
}

TEST_F(WindowTest, ADragOfAnotherProgramIsNeverToldOfAMoveBeforeItIsDone) {
    ShowAndForget();
    answer_ = [](const Event& event) {
        if (event.type == EventType::Drop) *AsDrop(event).result = DropResult::Copied;
        return true;
    };
    const DragAnswers both = DropFiles("file:///a", {3, 4});
    EXPECT_TRUE(both.overIt);
    EXPECT_EQ(both.actionOverIt, Qt::CopyAction);
    const DragAnswers onlyMove = DropFiles("file:///a", {3, 4}, Qt::MoveAction);
    EXPECT_TRUE(onlyMove.overIt && onlyMove.dropped);
    EXPECT_EQ(onlyMove.actionOverIt, Qt::IgnoreAction) << "no action is a copy to a source";
    EXPECT_EQ(onlyMove.action, Qt::IgnoreAction);
}

TEST_F(WindowTest, ADropWithoutLocalFilesIsRefused) {
    ShowAndForget();
    EXPECT_FALSE(DropFiles("http://example.com/a.jpg", {30, 40}).dropped);
    ServeAll();
    EXPECT_EQ(Count(EventType::Drop), 0);
}

TEST_F(WindowTest, OtherThreadsLearnOfTheMouseAndOfControl) {
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        GTEST_SKIP() << "a real display is asked where its own cursor is";
    ShowAndForget();
    QWindow* native = Widget()->windowHandle();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(3, 4), QPointF(3, 4), QPointF(103, 104),
                      Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    QApplication::sendEvent(native, &press);
    std::thread([] {
        EXPECT_EQ(CursorPosition(), (Point{103, 104}));
        EXPECT_TRUE(IsLeftButtonDown());
        EXPECT_TRUE(IsControlDown());
    }).join();
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(3, 4), QPointF(3, 4), QPointF(103, 104),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(native, &release);
    EXPECT_FALSE(IsLeftButtonDown());
    EXPECT_FALSE(IsControlDown());
}

// ---- keys

TEST_F(WindowTest, KeysArriveAsKeyAndThenAsCharacter) {
    ShowAndForget();
    Press(Qt::Key_A, Qt::NoModifier, "a");
    ASSERT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
    EXPECT_EQ(events_[0].key, keys::Letter('A'));
    EXPECT_EQ(events_[1].text, "a");
    events_.clear();
    answer_ = [](const Event& event) { return event.type == EventType::Key; };
    Press(Qt::Key_A, Qt::NoModifier, "a");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key)) << "a key that was used types nothing";
}

TEST_F(WindowTest, EveryKeyHasItsCode) {
    ShowAndForget();
    const std::pair<int, int> pairs[] = {
        {Qt::Key_A, 'A'},       {Qt::Key_Z, 'Z'},      {Qt::Key_0, '0'},           {Qt::Key_9, '9'},
        {Qt::Key_F1, 0x70},     {Qt::Key_F12, 0x7B},   {Qt::Key_Space, 0x20},      {Qt::Key_Up, 0x26},
        {Qt::Key_Down, 0x28},   {Qt::Key_Left, 0x25},  {Qt::Key_Right, 0x27},      {Qt::Key_Pause, 0x13},
        {Qt::Key_Escape, 0x1B}, {Qt::Key_Home, 0x24},  {Qt::Key_End, 0x23},        {Qt::Key_Tab, keys::kTab},
        {Qt::Key_Return, 0x0D}, {Qt::Key_Enter, 0x0D}, {Qt::Key_F13, keys::kNone},
    };
    for (const auto& [key, code] : pairs) {
        events_.clear();
        Press(key, Qt::ControlModifier | Qt::AltModifier);
        ASSERT_EQ(Count(EventType::Key), 1) << key;
        EXPECT_EQ(events_[0].key, code) << key;
        EXPECT_TRUE(events_[0].ctrl && events_[0].alt && !events_[0].shift);
    }
}

TEST_F(WindowTest, ShiftedDigitsAndForeignLettersAreKnownByTheirPlace) {
    ShowAndForget();
    Press(Qt::Key_Exclam, Qt::ShiftModifier, "!", 10);
    EXPECT_EQ(events_[0].key, '1');
    Press(Qt::Key_ParenRight, Qt::ShiftModifier, ")", 19);
    EXPECT_EQ(events_[2].key, '0');
    Press(0x0410, Qt::ControlModifier, "", 38);  // a Cyrillic letter where A is engraved
    EXPECT_EQ(events_[4].key, 'A');
}

TEST_F(WindowTest, InputMethodTextArrivesAsCharacter) {
    ShowAndForget();
    QInputMethodEvent composing("きょ", {});
    QApplication::sendEvent(Widget(), &composing);
    QInputMethodEvent more("きょう", {});
    QApplication::sendEvent(Widget(), &more);
    QInputMethodEvent done;
    done.setCommitString("今日");
    QApplication::sendEvent(Widget(), &done);
    ASSERT_THAT(Types(), ElementsAre(EventType::Character, EventType::Character));
    EXPECT_EQ(events_[0].text, "") << "composing has begun";
    EXPECT_EQ(events_[1].text, "今日");
}

class AcceleratorTest : public WindowTest {
protected:
    ~AcceleratorTest() override { SetAccelerators(nullptr, nullptr); }
};

TEST_F(AcceleratorTest, CommandGoesToTheTargetWhicheverWindowHasTheFocus) {
    ShowAndForget();
    std::vector<int> commands;
    bool isUsed = true;
    const auto target =
        Window::Create(WindowOptions{"", Rect{0, 0, 50, 50}, false, ""}, [&](Window&, const Event& event) {
            if (event.type != EventType::Command) return false;
            commands.push_back(event.command);
            return isUsed;
        });
    SetAccelerators(target.get(), [](const Event& event) {
        return event.type == EventType::Key && event.ctrl ? 51000 + event.key : 0;
    });
    Press(Qt::Key_B, Qt::ControlModifier, "\x02");
    EXPECT_THAT(commands, ElementsAre(51000 + 'B'));
    EXPECT_THAT(Types(), ElementsAre()) << "the window itself does not see a key that was taken";
    Press(Qt::Key_B, Qt::NoModifier, "b");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
    events_.clear();
    isUsed = false;
    Press(Qt::Key_C, Qt::ControlModifier, "\x03");
    EXPECT_EQ(commands.size(), 2u);
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character)) << "unused: the key is passed on";
}

TEST_F(AcceleratorTest, TheEndOfTheTargetEndsThem) {
    ShowAndForget();
    auto target = Window::Create(WindowOptions{}, [](Window&, const Event&) { return true; });
    SetAccelerators(target.get(), [](const Event&) { return 1; });
    target.reset();
    Press(Qt::Key_B, Qt::NoModifier, "b");
    EXPECT_THAT(Types(), ElementsAre(EventType::Key, EventType::Character));
}

}  // namespace
}  // namespace kalmora
