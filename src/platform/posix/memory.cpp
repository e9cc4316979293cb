#include "platform/memory.h"

#include <malloc.h>

namespace kalmora {

namespace {

constexpr int kOwnPagesFrom = 32 * 1024;  // bytes: below an embedded thumbnail, above texts and lists
constexpr int kMostHeaps = 4;             // a thread that finds its heap busy waits for microseconds

}  // namespace

// Left alone, the allocator would raise the first bound by itself, up to 32 MB, at each large block freed.
void ReturnFreedMemory() {
    mallopt(M_MMAP_THRESHOLD, kOwnPagesFrom);
    mallopt(M_ARENA_MAX, kMostHeaps);
}

}  // namespace kalmora
