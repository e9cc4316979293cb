#include "platform/qt/gui_queue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <utility>

namespace kalmora::qt {

// Lives on the GUI thread; its events say only that something waits.
class GuiQueue::Receiver final : public QObject {
public:
    explicit Receiver(GuiQueue& queue) : queue_(queue) {}

protected:
    void customEvent(QEvent*) override { queue_.ServeOne(); }

private:
    GuiQueue& queue_;
};

GuiQueue& GuiQueue::Instance() {
    static auto* queue = new GuiQueue;  // threads may post while main ends
    return *queue;
}

void GuiQueue::Open() {
    std::lock_guard lock(mutex_);
    receiver_ = std::make_unique<Receiver>(*this);
    isWoken_ = false;
}

void GuiQueue::Close() {
    std::deque<std::function<void()>> dropped;
    std::unique_ptr<Receiver> receiver;
    std::lock_guard lock(mutex_);
    dropped.swap(waiting_);
    receiver.swap(receiver_);
}

void GuiQueue::Post(std::function<void()> work) {
    std::lock_guard lock(mutex_);
    if (!receiver_) return;
    waiting_.push_back(std::move(work));
    Wake();
}

void GuiQueue::Wake() {
    if (isWoken_ || !receiver_) return;
    isWoken_ = true;
    QCoreApplication::postEvent(receiver_.get(), new QEvent(QEvent::User));
}

void GuiQueue::ServeOne() {
    std::function<void()> work;
    {
        std::lock_guard lock(mutex_);
        isWoken_ = false;
        if (waiting_.empty()) return;
        work = std::move(waiting_.front());
        waiting_.pop_front();
        // Before the work is done: it may run a loop of its own (a question to the user), and what waits
        // behind it shall not wait for the answer.
        if (!waiting_.empty()) Wake();
    }
    work();
}

}  // namespace kalmora::qt
