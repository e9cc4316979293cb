// Any bytes as extension.dat: reading comes to an end, names are classified, and a saved table is read again
// as the same table.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "store/extension_table.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    using namespace kalmora;
    const std::string_view text(reinterpret_cast<const char*>(bytes), length);
    ReadExtensionTableText(text);
    ClassifyFile(text);
    ClassifyFile("photo.jpg");
    const std::string saved = MakeExtensionTableText();
    ReadExtensionTableText(saved);
    if (MakeExtensionTableText() != saved) std::abort();
    return 0;
}
