#include "base/random.h"

#include <random>

namespace kalmora {

namespace {
std::minstd_rand& Generator() {
    static thread_local std::minstd_rand generator{std::random_device{}()};
    return generator;
}
}  // namespace

void SeedRandom(unsigned seed) { Generator().seed(seed == 0 ? 1 : seed); }

int Random() { return static_cast<int>(Generator()() >> 8) & 0x7FFF; }

}  // namespace kalmora
