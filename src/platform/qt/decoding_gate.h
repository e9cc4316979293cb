// Who decodes pictures at this moment, so that the end of the program can wait for them: a decode in the
// middle of the toolkit's readers must not see the toolkit taken down.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace kalmora::qt {

// One for the process. Any thread.
class DecodingGate {
public:
    static DecodingGate& Instance();

    // The gate is open from the start and after this.
    void Open();
    // From now on no decode enters, and those inside are asked to give up. True when none is inside any more;
    // false when the time ran out.
    bool Close(int milliseconds);
    // True when a decode shall give up: to be asked every few rows.
    bool IsClosed() const { return isClosed_.load(std::memory_order_relaxed); }

private:
    friend class DecodingPass;
    bool Enter();
    void Leave();

    std::mutex mutex_;
    std::condition_variable left_;
    std::atomic<bool> isClosed_ = false;  // written under mutex_
    int inside_ = 0;                      // guarded by mutex_
};

// The end of all decoding: closes the gate and waits at most half a second. False when a decode is still
// inside, so that the toolkit must not be ended. The end of the process does the same where it was
// not done before.
bool EndDecoding();

// Inside the gate for a scope. Test it first: false when the gate is closed.
class DecodingPass {
public:
    DecodingPass() : isInside_(DecodingGate::Instance().Enter()) {}
    ~DecodingPass() {
        if (isInside_) DecodingGate::Instance().Leave();
    }
    DecodingPass(const DecodingPass&) = delete;
    DecodingPass& operator=(const DecodingPass&) = delete;
    explicit operator bool() const { return isInside_; }

private:
    const bool isInside_;
};

}  // namespace kalmora::qt
