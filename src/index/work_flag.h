// WorkFlag: a byte that one thread sets and another looks at, in a record that may be copied.
#pragma once

#include <atomic>
#include <cstdint>

namespace kalmora {

class WorkFlag {
public:
    WorkFlag(bool set = false) : value_(set) {}
    WorkFlag(const WorkFlag& other) : value_(other.value_.load()) {}
    WorkFlag& operator=(const WorkFlag& other) {
        value_ = other.value_.load();
        return *this;
    }
    WorkFlag& operator=(bool set) {
        value_ = set;
        return *this;
    }
    explicit operator bool() const { return value_.load(std::memory_order_acquire); }
    // Clears it; true when it was set.
    bool Take() { return value_.exchange(false); }

private:
    std::atomic<bool> value_;
};

}  // namespace kalmora
