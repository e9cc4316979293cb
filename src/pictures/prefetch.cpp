#include "pictures/prefetch.h"

#include <algorithm>

#include "platform/thread.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostRequests = 4096;

}  // namespace

Prefetcher::~Prefetcher() {
    {
        std::lock_guard lock(mutex_);
        isStopping_ = true;
    }
    changed_.notify_all();
    for (const Worker& thread : threads_) thread.WaitForEnd();
}

void Prefetcher::Add(const PictureRequest& request) {
    {
        std::lock_guard lock(mutex_);
        if (!known_.insert(request).second) return;
        if (waiting_.size() == kMostRequests) {
            known_.erase(waiting_.front());
            waiting_.pop_front();
        }
        waiting_.push_back(request);
        if (threads_.empty()) StartThreads();
    }
    changed_.notify_all();
}

void Prefetcher::StartThreads() {
    const int count = std::clamp(ProcessorCount(), 2, 4);
    for (int i = 0; i < count; ++i) {
        // The destructor ends it, by the condition on which it waits for requests.
        const auto work = [this](const StopToken&) { Work(); };
        const Worker thread = StartWorker("prefetch", Worker::Priority::Normal, work);
        if (!thread.IsStarted()) break;
        threads_.push_back(thread);
    }
}

void Prefetcher::Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return !waiting_.empty() || isStopping_; });
        if (isStopping_) return;
        const PictureRequest request = std::move(waiting_.front());
        waiting_.pop_front();
        ++served_;
        lock.unlock();
        load_(request);
        lock.lock();
        --served_;
        known_.erase(request);
        changed_.notify_all();
    }
}

void Prefetcher::Cancel() {
    {
        std::lock_guard lock(mutex_);
        for (const PictureRequest& request : waiting_) known_.erase(request);
        waiting_.clear();
    }
    changed_.notify_all();
}

void Prefetcher::Wait() {
    std::unique_lock lock(mutex_);
    // Without a thread no request is ever served.
    changed_.wait(lock, [this] { return (waiting_.empty() && served_ == 0) || threads_.empty(); });
}

}  // namespace kalmora
