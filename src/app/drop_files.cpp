#include "app/drop_files.h"

#include <optional>

#include "app/app_state.h"
#include "app/drop_target.h"
#include "base/log.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"
#include "store/import.h"
#include "store/index_manager.h"
#include "views/arrivals.h"
#include "views/calendar_store.h"

namespace kalmora {

namespace {

DropTarget Today() {
    const SystemTime day = ApplyDayEnd(LocalTime(), State().DayEndTimeForScrap);
    return {{day.year, day.month, day.day}, false};
}

std::optional<std::string> CopyAndIndex(const std::string& path, const CalendarDate& day) {
    auto target = CopyToDay(path, MainRoot(), day.year, day.month, day.day);
    if (target) AddFileToIndex(*target);
    return target;
}

// The day learns of a file that moved with its next update: meant, and held by
// DropFilesTest.MovedFileWaitsForTheUpdate.
std::optional<std::string> MoveOrCopy(const std::string& path, const CalendarDate& day) {
    if (auto target = MoveToDay(path, MainRoot(), day.year, day.month, day.day)) {
        const auto status = files::GetStatus(*target);
        if (!status || status->size != 0 || !files::Exists(path)) return target;
        files::RemoveFile(*target);
    }
    return CopyAndIndex(path, day);
}

std::optional<std::string> TakeFile(const std::string& path, const CalendarDate& day, bool copies) {
    const auto status = files::GetStatus(path);
    if (!status) {
        const std::string repaired = RepairDroppedName(path);
        return !repaired.empty() && files::Exists(repaired) ? CopyAndIndex(repaired, day) : std::nullopt;
    }
    const bool mayMove = !copies && !IsReadOnly(path) && status->size != 0;
    return mayMove ? MoveOrCopy(path, day) : CopyAndIndex(path, day);
}

bool TakeBackground(const std::string& path, const CalendarDate& day) {
    if (ClassifyFile(path) != ObjectKind::Image) return false;
    const auto target = SetBackgroundFile(path, MainRoot(), State().ViewType, day.year, day.month, day.day);
    if (!target) return false;
    Calendar().backgrounds.AddImage(*target);
    return true;
}

}  // namespace

std::string RepairDroppedName(const std::string& path) {
    const std::string extension = GetExtension(path);
    if (extension.empty()) return {};
    const std::size_t dot = path.rfind('.');
    const std::size_t dash = path.rfind('-', dot);
    const std::size_t separator = path.rfind(files::kSeparator);
    if (dash == std::string::npos || (separator != std::string::npos && dash <= separator + 1)) return {};
    return path.substr(0, dash) + path.substr(dot);
}

bool DropFiles(const Drop& drop, DropPlace place) {
    const bool isScrap = place == DropPlace::ScrapAgent;
    const auto target = isScrap ? std::optional(Today()) : FindDropTarget(drop.client);
    if (!target) return false;
    bool changed = false;
    for (const std::string& path : drop.paths) {
        if (target->isBackground) {
            changed |= TakeBackground(path, target->day);
            continue;
        }
        const auto arrived = TakeFile(path, target->day, drop.copies);
        Log("dropped: %s -> %s", path.c_str(), arrived ? arrived->c_str() : "not taken");
        if (!arrived) continue;
        if (isScrap) SetFileDates(*arrived, LocalTime());
        changed |= AddToView(*arrived, target->day);
    }
    return changed;
}

}  // namespace kalmora
