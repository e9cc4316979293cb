#include "platform/qt/event_watch.h"

#include <QApplication>
#include <QKeyEvent>

#include "platform/keys.h"
#include "platform/qt/input_state.h"
#include "platform/qt/window_widget.h"

namespace kalmora::qt {

void EventWatch::SetAccelerators(std::shared_ptr<QtWindow::Link> target, AcceleratorHook hook) {
    target_ = std::move(target);
    hook_ = std::move(hook);
}

bool EventWatch::eventFilter(QObject* watched, QEvent* event) {
    // Native windows get each event first and once; the widgets inside them get it afterwards, one by one.
    if (!watched->isWindowType()) return false;
    InputState::Instance().Note(*event);
    return event->type() == QEvent::KeyPress && Accelerate(static_cast<const QKeyEvent&>(*event));
}

bool EventWatch::Accelerate(const QKeyEvent& press) {
    if (!hook_ || !target_ || target_->window == nullptr) return false;
    if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr)
        return false;
    const AcceleratorHook hook = hook_;  // it may be exchanged by what it calls
    const std::shared_ptr<QtWindow::Link> target = target_;
    Event command = KeyEventOf(press);
    if (command.key == keys::kNone) return false;
    command.command = hook(command);
    if (command.command == 0 || target->window == nullptr) return false;
    command.type = EventType::Command;
    return target->window->Deliver(command);
}

}  // namespace kalmora::qt
