// The bytes of one open file into another.
#pragma once

namespace kalmora {

// From where both are positioned to the end of `from`; in the kernel as far as it goes. False on an error,
// which is in errno then; part of the content may be in `to`.
bool CopyContent(int from, int to);

}  // namespace kalmora
