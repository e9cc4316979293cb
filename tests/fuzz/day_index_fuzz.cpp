// Any bytes as an index file: reading comes to an end, no path leads out of the day, and what is written of
// the records reads as the same records.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "index/index_text.h"

namespace {

constexpr char kFolder[] = "/life/2008/200811/2008_1113";

bool IsBelow(std::string_view path) {
    const std::string below = std::string(kFolder) + "/";
    if (!path.starts_with(below) || path.size() == below.size() || path.size() > 4095) return false;
    for (std::size_t at = below.size(); at <= path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        const std::string_view name = path.substr(at, end - at);
        if (name.empty() || name == "." || name == ".." || name.find('\0') != std::string_view::npos)
            return false;
        at = end + 1;
    }
    return true;
}

std::string Write(const std::vector<kalmora::EntryPointer>& records) {
    std::string text = kalmora::IndexHeader();
    for (const kalmora::EntryPointer& record : records) kalmora::AppendIndexRecord(text, *record, kFolder);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    using namespace kalmora;
    const StopToken stop;
    std::vector<EntryPointer> records;
    ReadIndexText({reinterpret_cast<const char*>(bytes), length}, kFolder, stop, records);
    for (const EntryPointer& record : records)
        if (!IsBelow(record->path) || record->comment.find('\n') != std::string::npos) std::abort();
    const std::string text = Write(records);
    std::vector<EntryPointer> again;
    if (ReadIndexText(text, kFolder, stop, again) != IndexReading::Done) std::abort();
    if (again.size() != records.size() || Write(again) != text) std::abort();
    for (std::size_t i = 0; i < again.size(); ++i)
        if (again[i]->path != records[i]->path || again[i]->comment != records[i]->comment) std::abort();
    // The bare path too, which the line ends would hide.
    const std::string path = FromIndexPath({reinterpret_cast<const char*>(bytes), length});
    if (!path.empty() && FromIndexPath(ToIndexPath(path)) != path) std::abort();
    return 0;
}
