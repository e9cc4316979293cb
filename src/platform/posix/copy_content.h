// The bytes of one open file into another.
#pragma once

#include <cstdint>
#include <functional>

namespace kalmora {

// From where both are positioned to the end of `from`; in the kernel as far as it goes. False on an error,
// which is in errno then; part of the content may be in `to`. `goesOn`, unless empty, is asked after every
// 16 MB with the number of bytes that are done; when it says no, errno is ECANCELED.
bool CopyContent(int from, int to, const std::function<bool(std::uint64_t)>& goesOn = {});

}  // namespace kalmora
