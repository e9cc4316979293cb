// Work for the GUI thread, done there in the order in which it was posted.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

class QObject;

namespace kalmora::qt {

// One for the process. Any thread may post; work posted while it is closed is dropped.
class GuiQueue {
public:
    static GuiQueue& Instance();

    void Open();   // GUI thread, once the toolkit is started
    void Close();  // GUI thread, before the toolkit ends; drops what waits
    void Post(std::function<void()> work);

private:
    class Receiver;
    void Wake();  // mutex held
    void ServeOne();

    std::mutex mutex_;
    std::deque<std::function<void()>> waiting_;  // guarded by mutex_
    std::unique_ptr<Receiver> receiver_;         // guarded by mutex_; null while closed
    bool isWoken_ = false;                       // guarded by mutex_; an event is under way to the receiver
};

}  // namespace kalmora::qt
