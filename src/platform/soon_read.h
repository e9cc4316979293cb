// Asks the processor to bring memory near that will be read soon. Only a hint: any address may be given, and
// where the compiler cannot say it nothing is said.
#pragma once

namespace kalmora {

inline void WillSoonRead([[maybe_unused]] const void* address) {
#if defined(__has_builtin)
#if __has_builtin(__builtin_prefetch)
    __builtin_prefetch(address);
#endif
#endif
}

}  // namespace kalmora
