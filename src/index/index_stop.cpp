#include "index/index_stop.h"

#include <atomic>

namespace kalmora {

namespace {
std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "it is set in a signal handler");
}  // namespace

void InterruptIndexing() { interrupted = true; }
bool IsIndexingInterrupted() { return interrupted.load(std::memory_order_relaxed); }
void ResumeIndexing() { interrupted = false; }

}  // namespace kalmora
