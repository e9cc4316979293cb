#include "store/import_names.h"

#include <cstdio>

#include "app/app_state.h"
#include "media/photo.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "platform/text.h"
#include "platform/transfer.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

constexpr int kLastNumber = 9999;
constexpr int kMostNamesakes = 1'000'000;
constexpr char kPictureCache[] = "Thumbs.db";
constexpr char kLinkEnd[] = ".lnk";

bool StandsAt(const std::string& path) { return files::Exists(path) || files::IsLink(path); }

bool HaveSameSecond(const SystemTime& a, const SystemTime& b) {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second;
}

std::string Numbered(const std::string& folder, int number, const std::string& extension) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return files::Join(folder, extension.empty() ? digits : digits + ("." + extension));
}

}  // namespace

int CompareImportFiles(const std::string& a, const std::string& b) {
    SystemTime dateOfA, dateOfB;
    if (CPhoto(a).ReadShotDate(dateOfA) && CPhoto(b).ReadShotDate(dateOfB) &&
        (HaveSameSecond(dateOfA, dateOfB) || CompareSystemTimes(dateOfA, dateOfB) == 0))
        return 0;  // whatever their sizes: meant, and held by CompareImportFilesTest.SameSecondIsTheSameFile
    const std::uint32_t sizeOfA = GetFileSizeValue(a), sizeOfB = GetFileSizeValue(b);
    return sizeOfA == sizeOfB ? 0 : sizeOfA > sizeOfB ? 1 : -1;
}

std::string NumberedName(std::string_view name, std::string_view standing, int number) {
    constexpr std::size_t kLongestName = 255;  // bytes, on the file systems of this day
    const std::string extension = GetExtension(standing);
    const std::string_view stem = extension.empty() ? name : name.substr(0, name.rfind('.'));
    const std::string end =
        "[" + std::to_string(number) + "]" + (extension.empty() ? std::string() : "." + extension);
    return text::CutAtCharacter(stem, kLongestName - end.size()) + end;
}

bool TargetNames::IsTaken(const std::string& path) const {
    return StandsAt(path) || (form_ == Form::Shortcut && StandsAt(path + kLinkEnd));
}

bool TargetNames::IsSame(const std::string& path, const std::string& source) const {
    if (form_ == Form::File || StandsAt(path)) return CompareImportFiles(path, source) == 0;
    const auto target = shell::ResolveShortcut(path + kLinkEnd);
    const auto named = target ? files::GetStatus(*target) : std::nullopt, wanted = files::GetStatus(source);
    return named && wanted && named->volume == wanted->volume && named->identity == wanted->identity;
}

TargetNames::Choice TargetNames::ChooseByName(const std::string& source, const std::string& folder) {
    const std::string name = GetFileName(source);
    if (name.empty()) return {{}, ImportResult::PassedOver};
    if (text::EqualsNoCase(name, kPictureCache)) return {{}, ImportResult::Removed};
    std::string target = files::Join(folder, name);
    for (int number = 1; number < kMostNamesakes; ++number) {
        if (reserved_.contains(target)) return {.path = target, .mustWait = true};
        if (!IsTaken(target)) return {target};
        if (IsSame(target, source)) return {{}, ImportResult::Same, target};
        // The name is taken from the source each time, so that no second pair of brackets comes about.
        target = files::Join(folder, NumberedName(name, target, number));
    }
    return {{}, ImportResult::Taken};
}

TargetNames::Choice TargetNames::ChooseByNumber(const std::string& source, const std::string& folder) {
    // Only pictures called .jpg count, whatever the file is called: two files of another kind can come to
    // have the same number. Meant, and held by TargetNamesTest.OnlyJpgTakesANumber.
    int& next = nextNumber_.try_emplace(folder, 1).first->second;
    for (; next <= kLastNumber; ++next) {
        const std::string picture = Numbered(folder, next, "jpg");
        if (!reserved_.contains(picture) && !IsTaken(picture)) break;
    }
    const std::string target = Numbered(folder, next <= kLastNumber ? next : 0, GetExtension(source));
    if (reserved_.contains(target)) return {.path = target, .mustWait = true};
    return {.path = target, .isTaken = IsTaken(target)};
}

TargetNames::Choice TargetNames::Look(const std::string& source, const std::string& folder) {
    // Without regard to case, as the folder itself is meant by either spelling where this data comes from.
    if (text::StartsWithNoCase(source, folder)) return {{}, ImportResult::InPlace};
    return naming_ == Naming::Number ? ChooseByNumber(source, folder) : ChooseByName(source, folder);
}

TargetNames::Choice TargetNames::Choose(const std::string& source, const std::string& folder) {
    if (text::StartsWithNoCase(source, folder)) return {{}, ImportResult::InPlace};
    if (!files::IsFolder(folder) && !MakeDirectories(folder)) {
        const auto free = files::FreeSpace(folder);
        return {{}, free && *free == 0 ? ImportResult::NoSpace : ImportResult::Denied};
    }
    Choice choice = Look(source, folder);
    // The cache that another desktop keeps in every folder goes instead of being carried along, also when
    // files are copied: meant, and held by MakeTargetPathTest.PictureCacheIsRemoved.
    if (choice.path.empty() && choice.why == ImportResult::Removed)
        if (const auto result = files::RemoveFile(source); result != files::FileResult::Done)
            choice.why = ImportResult::PassedOver;
    return choice;
}

std::optional<std::string> MakeTargetPath(const std::string& source, const std::string& root, int year,
                                          int month, int day) {
    if (source.empty()) return std::nullopt;
    TargetNames names(State().RenameFileWhenMove ? Naming::Number : Naming::Keep);
    TargetNames::Choice choice = names.Choose(source, MakeDayFolderPath(root, year, month, day));
    return choice.path.empty() ? std::nullopt : std::optional(std::move(choice.path));
}

}  // namespace kalmora
