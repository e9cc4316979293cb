#include "platform/qt/decoding_gate.h"

#include <chrono>

namespace kalmora::qt {

DecodingGate& DecodingGate::Instance() {
    static auto* gate = new DecodingGate;  // threads may outlive main
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

}  // namespace kalmora::qt
