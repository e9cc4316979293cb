// How much memory the process keeps beyond what it uses.
#pragma once

namespace kalmora {

// Freed memory goes back to the system soon, whichever thread allocated it. To be called once, before the
// threads that decode pictures start.
//
// Pictures are bounded by what is kept of them, but they come from many threads, and an allocator that gives
// each thread a heap of its own returns only the end of a heap. When another thread decodes the pictures that
// replace the old ones, the heap of the first stays as large as it was: in the worst case each heap grows to
// the bound. So whatever is as large as a picture gets pages of its own, which leave with it, and the heaps
// for the rest are few. A page fault for every 4 KiB of a picture is the price, little beside its decoding.
void ReturnFreedMemory();

}  // namespace kalmora
