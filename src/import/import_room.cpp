#include "import/import_room.h"

#include <algorithm>

#include "base/dates.h"
#include "import/import_source.h"
#include "import/import_walk.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

class FileCounter final : public WalkListener {
public:
    explicit FileCounter(ProgressListener& progress) : progress_(progress) {}
    void OnFile(const SourceFile& file, const std::vector<std::string>&) override {
        if (const auto status = files::GetStatus(file.path); status && status->isRegular)
            count.bytes += status->size;
        if (++count.files % 100 == 0) ReportProgress(progress_, 0, "Import Target = %d files", count.files);
    }
    void OnNews(const std::string& folder, FolderNews news) override {
        if (news == FolderNews::MeetsTarget) count.meetsTarget = folder;
    }
    void OnLeft(const std::string&) override {}

    SourceCount count;

private:
    ProgressListener& progress_;
};

std::uint64_t OnDisk(std::uint64_t size) {
    constexpr std::uint64_t kBlock = 4096;
    return (size + kBlock - 1) / kBlock * kBlock;
}

// Sums up what the calendar does not have yet.
class RoomCounter final : public WalkListener {
public:
    explicit RoomCounter(const ImportOptions& options)
        : options_(options), names_(options.naming, TargetNames::Form::File, options.sameBy) {}
    void OnFile(const SourceFile& file, const std::vector<std::string>&) override {
        const auto status = files::GetStatus(file.path);
        const auto taken = status && status->isRegular ? DateOfSource(file.path) : std::nullopt;
        if (!taken || IsLeftAlone(GetFileName(file.path))) return;
        const SystemTime day = ApplyDayEnd(*taken, options_.dayEnd);
        const std::string folder = MakeDayFolderPath(options_.root, day.year, day.month, day.day);
        if (!names_.Look(file.path, folder).path.empty()) bytes += OnDisk(status->size);
    }
    void OnNews(const std::string&, FolderNews) override {}
    void OnLeft(const std::string&) override {}

    std::uint64_t bytes = 0;

private:
    const ImportOptions& options_;
    TargetNames names_;
};

}  // namespace

SourceCount CountSources(const ImportOptions& options) {
    FileCounter counter(*options.context.progress);
    SourceWalk(counter, options.root, options.context.stop).Walk(options.sources);
    return counter.count;
}

bool HasRoom(const ImportOptions& options, const SourceCount& count, ImportSummary& summary) {
    if (options.run == ImportOptions::Run::ForReal) MakeDirectories(options.root);
    const auto rootStatus = files::GetStatus(options.root);
    const bool isRenamed = options.source == ImportOptions::Source::Goes && rootStatus &&
                           std::ranges::all_of(options.sources, [&](const std::string& source) {
                               const auto status = files::GetStatus(source);
                               return status && status->volume == rootStatus->volume;
                           });
    if (isRenamed || options.source == ImportOptions::Source::GetsShortcut) return true;
    const auto free = files::FreeSpace(options.root);
    constexpr std::uint64_t kBlock = 4096;
    summary.freeBytes = free.value_or(0);
    summary.neededBytes = count.bytes + kBlock * static_cast<std::uint64_t>(count.files);
    if (!free || summary.neededBytes <= *free) return true;
    // Little is free: what the calendar has already needs no room.
    RoomCounter room(options);
    SourceWalk(room, options.root, options.context.stop).Walk(options.sources);
    summary.neededBytes = room.bytes;
    return summary.neededBytes <= *free;
}

}  // namespace kalmora
