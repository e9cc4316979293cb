#include "platform/qt/decoding_gate.h"

#include <chrono>
#include <cstdlib>

namespace kalmora::qt {

DecodingGate& DecodingGate::Instance() {
    static auto* gate = [] {
        auto* made = new DecodingGate;  // threads may outlive main
        std::atexit([] { EndDecoding(); });
        return made;
    }();
    return *gate;
}

void DecodingGate::Open() {
    std::lock_guard lock(mutex_);
    isClosed_ = false;
}

bool DecodingGate::Close(int milliseconds) {
    std::unique_lock lock(mutex_);
    isClosed_ = true;
    return left_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return inside_ == 0; });
}

bool DecodingGate::Enter() {
    std::lock_guard lock(mutex_);
    if (isClosed_) return false;
    ++inside_;
    return true;
}

void DecodingGate::Leave() {
    std::lock_guard lock(mutex_);
    --inside_;
    left_.notify_all();
}

bool EndDecoding() {
    constexpr int kLongestWaitMs = 500;  // so short that a user does not notice
    return DecodingGate::Instance().Close(kLongestWaitMs);
}

}  // namespace kalmora::qt
