// An answer of the X server, which belongs to whoever asked and is freed by the C library.
#pragma once

#include <cstdlib>
#include <memory>

namespace kalmora::qt {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Value>
using Reply = std::unique_ptr<Value, FreeReply>;

}  // namespace kalmora::qt
