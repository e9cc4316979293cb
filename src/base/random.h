// The program's one random generator: which picture, which day, which place.
#pragma once

namespace kalmora {

// Seeds the generator of the calling thread. Tests give a fixed seed.
void SeedRandom(unsigned seed);
// 0 to 32767. Each thread draws from a sequence of its own, so no lock is needed.
int Random();

}  // namespace kalmora
