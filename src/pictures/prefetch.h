// Requests for pictures that will be wanted soon, served by a few threads.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "base/worker.h"
#include "platform/image.h"

namespace kalmora {

struct PictureRequest {
    std::string path;
    Size wanted;
    images::Preview preview = images::Preview::IfEnough;
    auto Tie() const { return std::tie(path, wanted.width, wanted.height, preview); }
    friend bool operator<(const PictureRequest& a, const PictureRequest& b) { return a.Tie() < b.Tie(); }
};

// Two to four threads of normal priority, started at the first request. Any thread may call anything; the
// destructor waits for the requests that are being served.
class Prefetcher {
public:
    explicit Prefetcher(std::function<void(const PictureRequest&)> load) : load_(std::move(load)) {}
    ~Prefetcher();
    Prefetcher(const Prefetcher&) = delete;
    Prefetcher& operator=(const Prefetcher&) = delete;

    // A request that waits already or is being served counts once. Of too many the oldest are given up.
    void Add(const PictureRequest& request);
    void Cancel();
    void Wait();

private:
    void StartThreads();  // mutex held
    void Work();

    const std::function<void(const PictureRequest&)> load_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<PictureRequest> waiting_;  // guarded by mutex_
    std::set<PictureRequest> known_;      // guarded by mutex_; those waiting and those being served
    std::size_t served_ = 0;              // guarded by mutex_; being served at this moment
    bool isStopping_ = false;             // guarded by mutex_
    std::vector<Worker> threads_;         // guarded by mutex_
};

}  // namespace kalmora
