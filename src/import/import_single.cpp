// Files that come in one by one.
#include "import/import.h"
#include "import/import_batch.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

std::optional<std::string> TakeToDay(const std::string& source, const std::string& dayFolder,
                                     ImportBatch::Source fate, TransferListener* listener) {
    const auto status = files::GetStatus(source);
    if (!status || !status->isRegular) return std::nullopt;
    class Arrival final : public BatchListener {
    public:
        void OnFinished(std::span<ImportedFile> files) override {
            for (ImportedFile& file : files)
                if (HasArrived(file.result)) path = std::move(file.target);
        }
        std::optional<std::string> path;
    };
    Arrival arrival;
    ImportBatch batch(TargetNames(State().settings.RenameFileWhenMove ? Naming::Number : Naming::Keep),
                      arrival);
    batch.UseListener(listener);
    ImportedFile file;
    file.source = source;
    file.isProtected = status->isReadOnly;
    batch.Add(std::move(file), dayFolder, fate);
    batch.Finish();
    return arrival.path;
}

}  // namespace

std::optional<std::string> CopyToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day, TransferListener* listener) {
    return TakeToDay(source, MakeDayFolderPath(root, year, month, day), ImportBatch::Source::Stays, listener);
}

std::optional<std::string> MoveToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day, TransferListener* listener) {
    return TakeToDay(source, MakeDayFolderPath(root, year, month, day), ImportBatch::Source::Goes, listener);
}

std::optional<std::string> SetBackgroundFile(const std::string& source, const std::string& root, Level scope,
                                             int year, int month, int day) {
    if (scope != Level::Month && scope != Level::Day) return std::nullopt;
    const std::string folder = MakeDayFolderPath(root, year, month, scope == Level::Day ? day : 0);
    const std::string name = GetFileName(source);
    if (name.empty() || !MakeDateFolder(folder)) return std::nullopt;
    files::NewCopy copy;
    if (copy.Make(source, folder) != files::FileResult::Done) return std::nullopt;
    files::NewCopy* const all[] = {&copy};
    if (files::FlushCopies(all).front() != files::FileResult::Done) return std::nullopt;
    constexpr int kMostNamesakes = 100'000;
    const std::string wanted = "back_" + name;
    std::string target = files::Join(folder, wanted);
    for (int number = 1; number < kMostNamesakes; ++number) {
        const files::FileResult result = copy.Appear(target);
        if (result == files::FileResult::Done) return target;
        if (result != files::FileResult::Exists || CompareImportFiles(target, source) == 0)
            return std::nullopt;
        target = files::Join(folder, NumberedName(wanted, target, number));
    }
    return std::nullopt;
}

}  // namespace kalmora
