// What a killed import has written down, as a crash or a stranger may have left it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "import/import_arrivals.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // What was read comes back from what is written.
    std::string written;
    const auto months = kalmora::ParseMonthRecords(bytes);
    for (const auto& one : months) written += kalmora::MakeMonthRecord(one);
    if (kalmora::ParseMonthRecords(written) != months) std::abort();
    written.clear();
    const auto words = kalmora::ParseWordsRecords(bytes);
    for (const auto& one : words) written += kalmora::MakeWordsRecord(one);
    const auto again = kalmora::ParseWordsRecords(written);
    if (again.size() != words.size()) std::abort();
    for (std::size_t i = 0; i < words.size(); ++i)
        if (again[i].path != words[i].path || again[i].words != words[i].words ||
            again[i].size != words[i].size || again[i].written != words[i].written)
            std::abort();
    return 0;
}
