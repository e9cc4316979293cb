#include "platform/abandoned_files.h"

#include <signal.h>
#include <sys/types.h>

#include <cerrno>
#include <charconv>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/posix/scratch_names.h"

namespace kalmora::files {

namespace {

constexpr std::uint64_t kHour = 3600ull * 10'000'000;  // in steps of a FileTime

// The process in a scratch file's name; 0 when there is none.
pid_t ProcessOf(std::string_view name) {
    name.remove_prefix(kScratchHead.size());
    pid_t process = 0;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isNamed = end.ec == std::errc() && end.ptr != name.data() + name.size() && *end.ptr == '-';
    return isNamed && process > 0 ? process : 0;
}

}  // namespace

bool HasScratchName(std::string_view name) {
    return name.starts_with(kScratchHead) && name.ends_with(kScratchTail) && ProcessOf(name) != 0;
}

bool RemoveAbandoned(const std::string& folder, const std::string& name) {
    if (!HasScratchName(name)) return false;
    if (kill(ProcessOf(name), 0) == 0 || errno != ESRCH) return false;
    const std::string path = Join(folder, name);
    const auto status = GetStatus(path);
    if (!status || !status->isRegular || status->written.ticks + kHour > CurrentFileTime().ticks)
        return false;
    return RemoveFile(path) == FileResult::Done;
}

}  // namespace kalmora::files
