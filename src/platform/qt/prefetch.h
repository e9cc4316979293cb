// Wishes for pictures, worked off by a few threads of the seam's own.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/image.h"
#include "platform/thread.h"

namespace kalmora::qt {

struct ImageWish {
    std::string path;
    Size wanted;
    images::Preview preview = images::Preview::IfEnough;
    auto Tie() const { return std::tie(path, wanted.width, wanted.height, preview); }
    friend bool operator<(const ImageWish& a, const ImageWish& b) { return a.Tie() < b.Tie(); }
};

// Two to four threads of normal priority, started at the first wish. They are never joined: an object of this
// class must live as long as the process. Any thread may call anything.
class Prefetcher {
public:
    explicit Prefetcher(std::function<void(const ImageWish&)> load) : load_(std::move(load)) {}
    ~Prefetcher() = delete;
    Prefetcher(const Prefetcher&) = delete;
    Prefetcher& operator=(const Prefetcher&) = delete;

    // A wish that waits already or is being served counts once. Of too many the oldest are given up.
    void Add(const ImageWish& wish);
    void Cancel();
    void Wait();

private:
    void StartThreads();  // mutex held
    void Work();

    const std::function<void(const ImageWish&)> load_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<ImageWish> waiting_;  // guarded by mutex_
    std::set<ImageWish> known_;      // guarded by mutex_; those waiting and those being served
    std::size_t served_ = 0;         // guarded by mutex_; being served at this moment
    std::vector<Thread> threads_;    // guarded by mutex_
};

}  // namespace kalmora::qt
