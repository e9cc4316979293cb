#include "platform/qt/window_widget.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QSysInfo>
#include <QTextDocument>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindowStateChangeEvent>
#include <cmath>

#include "formats/uri_list.h"
#include "platform/drop_event.h"
#include "platform/qt/gui_queue.h"
#include "platform/qt/key_codes.h"
#include "platform/qt/values.h"

namespace kalmora::qt {

namespace {

constexpr int kWheelStep = 120;
constexpr char kUriList[] = "text/uri-list";

Point ToPoint(const QPointF& at) {
    return Point{static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
}

void NoteModifiers(Event& event, Qt::KeyboardModifiers modifiers) {
    event.ctrl = modifiers.testFlag(Qt::ControlModifier);
    event.shift = modifiers.testFlag(Qt::ShiftModifier);
    event.alt = modifiers.testFlag(Qt::AltModifier);
}

Event PointerEvent(EventType type, const QSinglePointEvent& from) {
    Event event{type};
    event.point = ToPoint(from.position());
    NoteModifiers(event, from.modifiers());
    event.leftButton = from.buttons().testFlag(Qt::LeftButton);
    return event;
}

std::string OfferedList(const QMimeData* offered) {
    return offered == nullptr ? std::string() : offered->data(kUriList).toStdString();
}

void Answer(QDropEvent& event, Qt::DropAction action) {
    // The toolkit would put the source's own request, which may be a move, in place of an action that was not
    // offered; no action at all counts as a copy.
    event.setDropAction(event.possibleActions().testFlag(action) ? action : Qt::IgnoreAction);
    event.accept();
}

// While it is dragged. Many sources take this for the final answer, and delete their files at the drop if it
// says "move" here: another program gets "copy" until it is known what was done.
void AnswerDrag(QDropEvent& event) {
    if (!event.mimeData()->hasFormat(kUriList)) return event.ignore();
    if (event.source() != nullptr) return event.acceptProposedAction();
    Answer(event, Qt::CopyAction);
}

}  // namespace

Event KeyEventOf(const QKeyEvent& press) {
    Event event{EventType::Key};
    event.key = KeyCodeOf(press);
    NoteModifiers(event, press.modifiers());
    return event;
}

WindowWidget::WindowWidget(std::shared_ptr<QtWindow::Link> link) : link_(std::move(link)) {
    // Every pixel comes from the back buffer; the toolkit shall not clear anything first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_InputMethodEnabled);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

bool WindowWidget::Send(const Event& event) {
    return link_->window != nullptr && link_->window->Deliver(event);
}

bool WindowWidget::event(QEvent* event) {
    // Tab would move the focus between widgets; here it is a key like the others.
    if (event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        ShowTip(static_cast<const QHelpEvent&>(*event));
        return true;
    }
    return QWidget::event(event);
}

void WindowWidget::ShowTip(const QHelpEvent& event) {
    const Tip tip = link_->window != nullptr ? link_->window->TipAt({event.x(), event.y()}) : Tip{};
    if (tip.text.empty()) {
        QToolTip::hideText();
        return;
    }
    QString text = ToDisplayText(tip.text);
    if (Qt::mightBeRichText(text)) text = Qt::convertFromPlainText(text);  // what a user typed is no mark-up
    QToolTip::showText(event.globalPos(), text, this, ToQt(tip.area).toRect());
}

void WindowWidget::paintEvent(QPaintEvent* event) {
    if (link_->window != nullptr) link_->window->OnPaint(event->rect());
}

void WindowWidget::resizeEvent(QResizeEvent*) {
    if (link_->window != nullptr) link_->window->OnResized();
}

void WindowWidget::moveEvent(QMoveEvent*) {
    if (link_->window != nullptr) link_->window->OnMoved();
}

void WindowWidget::showEvent(QShowEvent*) {
    if (link_->window != nullptr) link_->window->OnShown();
}

void WindowWidget::hideEvent(QHideEvent* event) {
    // A spontaneous one means a minimised window, which is not hidden to the program.
    if (link_->window != nullptr && !event->spontaneous()) link_->window->OnHidden();
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    // The window hides itself where it closes. Left to the toolkit its native side would go at once, and a
    // drop in whose middle the events are served would come back to nothing.
    if (link_->window != nullptr) link_->window->RequestClose();
    event->ignore();
}

void WindowWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange && link_->window != nullptr) {
        const bool wasMinimized =
            (static_cast<const QWindowStateChangeEvent*>(event)->oldState() & Qt::WindowMinimized) != 0;
        if (isMinimized() && !wasMinimized) link_->window->OnMinimized();
        if (!isMinimized() && wasMinimized) link_->window->OnRestored();
    }
    QWidget::changeEvent(event);
}

void WindowWidget::timerEvent(QTimerEvent* event) {
    if (link_->window != nullptr) link_->window->OnTimer(event->timerId());
}

void WindowWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Send(PointerEvent(EventType::LeftDown, *event));
    if (event->button() == Qt::RightButton) Send(PointerEvent(EventType::RightDown, *event));
}

void WindowWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Send(PointerEvent(EventType::LeftUp, *event));
    if (event->button() == Qt::RightButton) Send(PointerEvent(EventType::RightUp, *event));
}

void WindowWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Send(PointerEvent(EventType::LeftDoubleClick, *event));
    if (event->button() == Qt::RightButton) Send(PointerEvent(EventType::RightDoubleClick, *event));
}

void WindowWidget::mouseMoveEvent(QMouseEvent* event) { Send(PointerEvent(EventType::MouseMove, *event)); }

void WindowWidget::wheelEvent(QWheelEvent* event) {
    // Fine wheels and touch pads report parts of a step.
    wheelRest_ += event->angleDelta().y();
    const int steps = wheelRest_ / kWheelStep;
    wheelRest_ %= kWheelStep;
    event->accept();
    if (steps == 0) return;
    Event wheel = PointerEvent(EventType::Wheel, *event);
    wheel.wheel = steps;
    Send(wheel);
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
    event->accept();
    Event key = KeyEventOf(*event);
    if (Send(key)) return;
    if (event->text().isEmpty()) return;
    key.type = EventType::Character;
    key.text = FromQt(event->text());
    Send(key);
}

void WindowWidget::inputMethodEvent(QInputMethodEvent* event) {
    event->accept();
    const bool begins = !event->preeditString().isEmpty() && !isComposing_;
    isComposing_ = !event->preeditString().isEmpty();
    if (event->commitString().isEmpty() && !begins) return;
    Event character{EventType::Character};
    character.text = FromQt(event->commitString());
    Send(character);
}

QVariant WindowWidget::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImEnabled) return true;
    return QWidget::inputMethodQuery(query);
}

void WindowWidget::dragEnterEvent(QDragEnterEvent* event) { AnswerDrag(*event); }

void WindowWidget::dragMoveEvent(QDragMoveEvent* event) { AnswerDrag(*event); }

void WindowWidget::dropEvent(QDropEvent* event) {
    DropEvent drop;
    const std::string list = OfferedList(event->mimeData());
    const std::string host = FromQt(QSysInfo::machineHostName());
    drop.paths = LocalPaths(list, host);
    drop.point = ToPoint(event->position());
    NoteModifiers(drop, event->modifiers());
    if (drop.paths.empty()) return event->ignore();
    drop.isOwnDrag = event->source() != nullptr;
    drop.mayMove = event->possibleActions().testFlag(Qt::MoveAction);
    if (drop.isOwnDrag) {
        event->acceptProposedAction();
        // Later, when the drag is over: no program waits for the answer.
        GuiQueue::Instance().Post([link = link_, drop] {
            if (link->window != nullptr) link->window->Deliver(drop);
        });
        return;
    }
    DropResult result = DropResult::NotTaken;
    drop.result = &result;
    Send(drop);
    if (result == DropResult::NotTaken) return event->ignore();
    const bool isMoved = result == DropResult::Moved && AreAllLocalPaths(list, host);
    Answer(*event, isMoved ? Qt::MoveAction : Qt::CopyAction);
}

}  // namespace kalmora::qt
