// The bytes of one open file into another.
#pragma once

namespace kalmora {

// From where both stand to the end of `from`; in the kernel as far as it goes. False on an error, which errno
// then tells; part of the content may be in `to`.
bool CopyContent(int from, int to);

}  // namespace kalmora
