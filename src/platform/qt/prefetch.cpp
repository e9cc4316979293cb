#include "platform/qt/prefetch.h"

#include <algorithm>

namespace kalmora::qt {

namespace {

constexpr std::size_t kMostWishes = 4096;

}  // namespace

void Prefetcher::Add(const ImageWish& wish) {
    {
        std::lock_guard lock(mutex_);
        if (!known_.insert(wish).second) return;
        if (waiting_.size() == kMostWishes) {
            known_.erase(waiting_.front());
            waiting_.pop_front();
        }
        waiting_.push_back(wish);
        if (threads_.empty()) StartThreads();
    }
    changed_.notify_all();
}

void Prefetcher::StartThreads() {
    const int count = std::clamp(ProcessorCount(), 2, 4);
    for (int i = 0; i < count; ++i) {
        Thread thread;
        if (!thread.StartSuspended("prefetch", [this] { Work(); })) break;
        thread.Resume();
        threads_.push_back(std::move(thread));
    }
}

void Prefetcher::Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return !waiting_.empty(); });
        const ImageWish wish = std::move(waiting_.front());
        waiting_.pop_front();
        ++served_;
        lock.unlock();
        load_(wish);
        lock.lock();
        --served_;
        known_.erase(wish);
        changed_.notify_all();
    }
}

void Prefetcher::Cancel() {
    {
        std::lock_guard lock(mutex_);
        for (const ImageWish& wish : waiting_) known_.erase(wish);
        waiting_.clear();
    }
    changed_.notify_all();
}

void Prefetcher::Wait() {
    std::unique_lock lock(mutex_);
    // Without a single thread nobody will ever serve a wish.
    changed_.wait(lock, [this] { return (waiting_.empty() && served_ == 0) || threads_.empty(); });
}

}  // namespace kalmora::qt
