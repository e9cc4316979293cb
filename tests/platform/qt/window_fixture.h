// The window that the tests of windows look at.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "platform/qt/window_qt.h"
#include "platform/window.h"
#include "support.h"

namespace kalmora::test {

// A window that writes down what happens to it.
class WindowTest : public testing::Test {
protected:
    explicit WindowTest(Rect frame = Rect{40, 30, 320, 240}) {
        WindowOptions options;
        options.title = "Test";
        options.frame = frame;
        options.acceptDrops = true;
        window_ = Window::Create(options, [this](Window&, const Event& event) {
            events_.push_back(event);
            return answer_ ? answer_(event) : false;
        });
    }

    void ShowAndForget() {
        window_->Show();
        ServeAll();
        ServeUntil([this] { return Count(EventType::Paint) > 0; });
        ServeAll();
        events_.clear();
    }
    int Count(EventType type) const {
        return static_cast<int>(
            std::count_if(events_.begin(), events_.end(), [type](const Event& e) { return e.type == type; }));
    }
    std::vector<EventType> Types() const {
        std::vector<EventType> types;
        for (const Event& event : events_) types.push_back(event.type);
        return types;
    }
    QWidget* Widget() const { return qt::WidgetOf(window_.get()); }
    void Mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held, QPointF at = {10, 20},
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QMouseEvent event(type, at, Widget()->mapToGlobal(at), button, held, modifiers);
        QApplication::sendEvent(Widget(), &event);
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {},
               quint32 scanCode = 0) const {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text);
        QApplication::sendEvent(Widget()->windowHandle(), &event);
    }
    // True when the window took what was offered.
    // The answers to a drag of another program, which proposes to move where it may.
    struct DragAnswers {
        bool overIt = false, dropped = false;  // is it taken
        Qt::DropAction actionOverIt = Qt::IgnoreAction, action = Qt::IgnoreAction;
    };
    DragAnswers DropFiles(const QByteArray& uriList, QPointF at,
                          Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction) const {
        const auto proposed = possible.testFlag(Qt::MoveAction) ? Qt::MoveAction : Qt::CopyAction;
        QMimeData offered;
        offered.setData("text/uri-list", uriList);
        QDragEnterEvent enter(at.toPoint(), possible, &offered, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(at.toPoint(), possible, &offered, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(at, possible, &offered, Qt::LeftButton, Qt::NoModifier);
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop}) {
            event->setDropAction(proposed);
            QApplication::sendEvent(Widget(), event);
        }
        return {move.isAccepted(), drop.isAccepted(), move.dropAction(), drop.dropAction()};
    }

    std::vector<Event> events_;
    std::function<bool(const Event&)> answer_;
    std::unique_ptr<Window> window_;
};

}  // namespace kalmora::test
