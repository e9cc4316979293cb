#include "app/drop_files.h"

#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "app/connect_index.h"
#include "app/drop_target.h"
#include "app/import_run.h"
#include "app/run_beside.h"
#include "base/log.h"
#include "import/import.h"
#include "index/index_manager.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"
#include "views/load/arrivals.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

DropTarget Today() {
    const SystemTime day = ApplyDayEnd(LocalTime(), State().settings.DayEndTimeForScrap);
    return {{day.year, day.month, day.day}, false};
}

// How far a drop is: the files before, and of the one that is on its way what is done.
class DropCourse final : public TransferListener {
public:
    explicit DropCourse(std::size_t files) : total_(files) {}
    ~DropCourse() override {
        // The gauge goes with the next painting.
        if (Window* window = MainWindow()) window->Invalidate();
    }
    DropCourse(const DropCourse&) = delete;
    DropCourse& operator=(const DropCourse&) = delete;

    void Begin(const std::string& path) {
        folder_ = FolderOfPath(path);
        ++begun_;
        Show(0);
    }
    bool OnTransfer(double fraction) override {
        Show(fraction);
        return !work_.stop.IsStopped();
    }
    bool IsStopped() const { return work_.stop.IsStopped(); }

private:
    void Show(double fraction) const {
        const double ratio = (static_cast<double>(begun_) - 1 + fraction) / static_cast<double>(total_);
        ReportProgress(*work_.progress, ratio, "%zu/%zu = %.2lf%% (%s)", begun_ - 1, total_, ratio * 100,
                       folder_.c_str());
    }
    const WorkContext& work_ = DesktopWork();
    const std::size_t total_;
    std::size_t begun_ = 0;
    std::string folder_;
};

struct Taken {
    std::string target;
    bool isMoved;  // the file is no longer at its old place
};

std::optional<Taken> CopyAndIndex(const std::string& path, const CalendarDate& day, DropCourse& course) {
    auto target = CopyToDay(path, MainRoot(), day.year, day.month, day.day, &course);
    if (!target) return std::nullopt;
    AddFileToIndex(*target);
    return Taken{std::move(*target), false};
}

bool IsGone(const std::string& path) { return !files::Exists(path) && !files::IsLink(path); }

// The day learns of a file that moved with its next update: meant, and held by
// DropFilesTest.MovedFileWaitsForTheUpdate.
std::optional<Taken> MoveOrCopy(const std::string& path, const CalendarDate& day, DropCourse& course) {
    if (auto target = MoveToDay(path, MainRoot(), day.year, day.month, day.day, &course)) {
        const auto status = files::GetStatus(*target);
        if (!status || status->size != 0 || !files::Exists(path))
            return Taken{std::move(*target), IsGone(path)};
        files::RemoveFile(*target);
    }
    if (course.IsStopped()) return std::nullopt;
    return CopyAndIndex(path, day, course);
}

std::optional<Taken> TakeFile(const std::string& path, const CalendarDate& day, bool copies,
                              DropCourse& course) {
    const auto status = files::GetStatus(path);
    if (!status) {
        const std::string repaired = RepairDroppedName(path);
        return !repaired.empty() && files::Exists(repaired) ? CopyAndIndex(repaired, day, course)
                                                            : std::nullopt;
    }
    const bool mayMove = !copies && !IsReadOnly(path) && status->size != 0;
    return mayMove ? MoveOrCopy(path, day, course) : CopyAndIndex(path, day, course);
}

std::optional<std::string> TakeBackground(CalendarStore& calendar, const std::string& path,
                                          const CalendarDate& day, const Period& period) {
    if (ClassifyFile(path) != ObjectKind::Image) return std::nullopt;
    auto target = SetBackgroundFile(path, MainRoot(), period.level, day.year, day.month, day.day);
    // The view may have gone on to another period meanwhile.
    if (target && View().period == period) calendar.backgrounds.AddImage(*target);
    return target;
}

// On the import's worker. `period`: in which the drop was made.
DropOutcome TakeAll(CalendarStore& calendar, const Drop& drop, DropPlace place, const DropTarget& target,
                    const Period& period, ImportOptions ofFolders) {
    DropOutcome outcome;
    DropCourse course(drop.paths.size());
    const ImportTurn turn(DesktopWork().stop);
    if (!turn) return outcome;
    std::size_t taken = 0, moved = 0;
    std::set<std::string> folders;  // into which files have come
    for (const std::string& path : drop.paths) {
        if (course.IsStopped()) break;  // what was not taken stays where it is
        course.Begin(path);
        if (target.isBackground) {
            const auto background = TakeBackground(calendar, path, target.day, period);
            if (!background) continue;
            outcome.viewChanged = true;
            ++taken;
            folders.insert(FolderOfPath(*background));
            continue;
        }
        if (files::IsFolder(path)) {
            ofFolders.sources.push_back(path);
            continue;
        }
        const auto arrived = TakeFile(path, target.day, drop.copies, course);
        Log("dropped: %s -> %s", path.c_str(), arrived ? arrived->target.c_str() : "not taken");
        if (!arrived) continue;
        ++taken;
        if (arrived->isMoved) ++moved;
        folders.insert(FolderOfPath(arrived->target));
        if (place == DropPlace::ScrapAgent) SetFileDates(arrived->target, LocalTime());
        outcome.viewChanged |= AddToView(calendar, arrived->target, target.day);
    }
    // They are never reported as moved: what of them had to stay is not looked for.
    if (!ofFolders.sources.empty() && !ImportHere(calendar, std::move(ofFolders)).months.empty()) ++taken;
    // Before the answer: a source may delete its file on any answer.
    const std::vector<std::string> toFlush(folders.begin(), folders.end());
    if (taken == 0 || files::FlushFolders(toFlush) != files::FileResult::Done) return outcome;
    outcome.result = moved == drop.paths.size() ? DropResult::Moved : DropResult::Copied;
    return outcome;
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

DropOutcome DropFiles(CalendarStore& calendar, const Drop& drop, DropPlace place) {
    const auto target =
        place == DropPlace::ScrapAgent ? std::optional(Today()) : FindDropTarget(calendar, drop.client);
    if (!target) return {};
    const Period period = View().period;
    const auto outcome = std::make_shared<DropOutcome>();
    ImportOptions ofFolders = ImportOptionsOfSettings();
    ofFolders.sources.clear();
    if (drop.copies && ofFolders.source == ImportOptions::Source::Goes)
        ofFolders.source = ImportOptions::Source::Stays;
    const auto take = [=, &calendar] {
        *outcome = TakeAll(calendar, drop, place, *target, period, ofFolders);
    };
    return RunBeside("Import", take) ? *outcome : DropOutcome{};
}

}  // namespace kalmora
