#include "import/import_names.h"

#include <algorithm>
#include <cstdio>

#include "platform/files.h"
#include "platform/transfer.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_folder.h"
#include "store/file_helpers.h"
#include "store/shortcuts.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr int kLastNumber = 9999;
constexpr int kMostNamesakes = 1'000'000;
constexpr std::size_t kDigits = 4;
constexpr std::size_t kLongestName = 255;  // bytes, on the file systems of this day
constexpr char kPictureCache[] = "Thumbs.db";
constexpr char kLinkEnd[] = ".lnk";

std::string Digits(int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return digits;
}

std::string NumberName(int number, const std::string& extension) {
    return extension.empty() ? Digits(number) : Digits(number) + "." + extension;
}

// The name's number, or 0 when it is not four digits and an extension.
int NumberOf(std::string_view name) {
    if (name.size() < kDigits || (name.size() > kDigits && name[kDigits] != '.')) return 0;
    int number = 0;
    for (const char c : name.substr(0, kDigits)) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + (c - '0');
    }
    return number;
}

// The spelling of the path is compared first, which rejects nearly all that lies elsewhere without a look at
// the disk; where names differ by case, "/Photos" does not lie in "/photos".
bool LiesInDay(const std::string& source, const std::string& folder) {
    return text::StartsWithNoCase(source, folder) && files::LiesIn(FolderOfPath(source), folder);
}

}  // namespace

std::string NumberedName(std::string_view name, std::string_view existing, int number) {
    const std::string extension = GetExtension(existing);
    const std::string_view stem = extension.empty() ? name : name.substr(0, name.rfind('.'));
    const std::string end =
        "[" + std::to_string(number) + "]" + (extension.empty() ? std::string() : "." + extension);
    return text::CutAtCharacter(stem, kLongestName - end.size()) + end;
}

bool TargetNames::IsTaken(const std::string& path) const {
    const auto exists = [](const std::string& at) { return files::Exists(at) || files::IsLink(at); };
    return exists(path) || (form_ == Form::Shortcut && exists(path + kLinkEnd));
}

bool TargetNames::IsSame(const std::string& path, const Incoming& file) const {
    if (form_ == Form::Shortcut && !files::Exists(path)) {
        const auto target = ResolveShortcut(path + kLinkEnd);
        const auto named = target ? files::GetStatus(*target) : std::nullopt,
                   wanted = files::GetStatus(file.source);
        return named && wanted && named->volume == wanted->volume && named->identity == wanted->identity;
    }
    if (sameBy_ == SameBy::DateOrSize && CompareImportFiles(path, file.source) == 0) return true;
    // A photo without a date has another size once it has its words, and is the same all the same.
    return (sameBy_ == SameBy::Content || !file.words.empty()) &&
           IncomingContent(file.source, file.words).IsHeldBy(path);
}

TargetNames::Place TargetNames::LookAt(const std::string& path, const Incoming& file) const {
    if (const auto reserved = reserved_.find(path); reserved != reserved_.end()) {
        if (onReserved_ == OnReserved::Wait) return Place::Reserved;
        return IsSame(reserved->second, file) ? Place::Same : Place::Other;
    }
    if (!IsTaken(path)) return Place::Free;
    return IsSame(path, file) ? Place::Same : Place::Other;
}

// The choice for a file that counts as the same: it stays where it is, and when it is another one after all
// the user has to know.
TargetNames::Choice TargetNames::SameOrDiffers(const std::string& path, const Incoming& file,
                                               int number) const {
    Choice choice{{}, ImportResult::Same, path, number};
    const auto reserved = reserved_.find(path);
    const std::string& existing = reserved == reserved_.end() ? path : reserved->second;
    if (files::Exists(existing) && !IncomingContent(file.source, file.words).IsHeldBy(existing))
        choice.why = ImportResult::Differs;
    return choice;
}

std::string TargetNames::NameBeside(const Companion& companion, int number) const {
    const std::string name = GetFileName(companion.file.source);
    if (number == 0) return name;
    const std::string_view stem = std::string_view(name).substr(0, companion.stemLength);
    const std::string rest = LowerLetters(std::string_view(name).substr(stem.size()));
    if (naming_ == Naming::Number) return Digits(number) + rest;
    const std::string end = "[" + std::to_string(number) + "]" + rest;
    return text::CutAtCharacter(stem, kLongestName - std::min(kLongestName, end.size())) + end;
}

bool TargetNames::AreFree(std::span<const Companion> companions, const std::string& folder, int number,
                          bool& mustWait) const {
    for (const Companion& companion : companions) {
        const Place place = LookAt(files::Join(folder, NameBeside(companion, number)), companion.file);
        if (place == Place::Reserved) mustWait = true;
        if (place == Place::Other) return false;
    }
    return true;
}

TargetNames::Choice TargetNames::ChooseByName(const Incoming& file, const std::string& folder,
                                              std::span<const Companion> companions) {
    const std::string name = GetFileName(file.source);
    if (name.empty()) return {{}, ImportResult::PassedOver};
    if (text::EqualsNoCase(name, kPictureCache)) return {{}, ImportResult::Removed};
    std::string target = files::Join(folder, name);
    for (int number = 0; number < kMostNamesakes; ++number) {
        // The name is taken from the source each time, so that no second pair of brackets comes about.
        if (number > 0) target = files::Join(folder, NumberedName(name, target, number));
        const Place place = LookAt(target, file);
        bool mustWait = place == Place::Reserved;
        if (place == Place::Same) return SameOrDiffers(target, file, number);
        if (place == Place::Free && AreFree(companions, folder, number, mustWait) && !mustWait)
            return {.path = target, .number = number};
        if (mustWait) return {.path = target, .mustWait = true};
    }
    return {{}, ImportResult::Taken};
}

const std::vector<TargetNames::Numbered>& TargetNames::NumberedIn(const std::string& folder) {
    const auto [place, isNew] = numbered_.try_emplace(folder);
    if (!isNew) return place->second;
    for (const files::FolderEntry& entry : files::ListFolder(folder)) {
        Numbered one{files::Join(folder, entry.name), {}, NumberOf(entry.name)};
        const auto status = one.number > 0 ? files::GetStatus(one.path) : std::nullopt;
        if (!status || !status->isRegular) continue;
        one.size = status->size;
        one.isLink = form_ == Form::Shortcut && entry.name.ends_with(kLinkEnd);
        if (one.isLink) one.path.resize(one.path.size() - (sizeof kLinkEnd - 1));
        one.extension = GetExtension(one.path);
        place->second.push_back(std::move(one));
    }
    return place->second;
}

TargetNames::Choice TargetNames::ChooseByNumber(const Incoming& file, const std::string& folder,
                                                std::span<const Companion> companions) {
    const std::string extension = GetExtension(file.source);
    // By its bytes: a series has many pictures of one second, and each of them is to come in.
    IncomingContent content(file.source, file.words);
    for (const Numbered& one : NumberedIn(folder)) {
        if (one.extension != extension) continue;
        const bool isThere =
            one.isLink ? IsSame(one.path, file) : content.MayHaveSize(one.size) && content.IsHeldBy(one.path);
        if (isThere) return {{}, ImportResult::Same, one.path, one.number};
    }
    // A picture called .jpg takes its number from all; of two files of other kinds each has its own. Meant,
    // and held by TargetNamesTest.OnlyJpgTakesANumber.
    int& next = nextNumber_.try_emplace(folder + files::kSeparator + extension, 1).first->second;
    const auto isTaken = [&](const std::string& name) {
        const std::string path = files::Join(folder, name);
        return reserved_.contains(path) || IsTaken(path);
    };
    const auto isFree = [&](int number) {
        if (isTaken(NumberName(number, extension)) || isTaken(NumberName(number, "jpg"))) return false;
        return std::ranges::none_of(
            companions, [&](const Companion& companion) { return isTaken(NameBeside(companion, number)); });
    };
    while (next <= kLastNumber && !isFree(next)) ++next;
    const int number = next <= kLastNumber ? next : 0;
    const std::string target = files::Join(folder, NumberName(number, extension));
    // Nothing is replaced, also when no number is left.
    if (number == 0 && isTaken(NumberName(0, extension))) return {{}, ImportResult::Taken};
    return {.path = target, .number = number};
}

TargetNames::Choice TargetNames::Look(const Incoming& file, const std::string& folder,
                                      std::span<const Companion> companions) {
    if (LiesInDay(file.source, folder)) return {{}, ImportResult::InPlace};
    return naming_ == Naming::Number ? ChooseByNumber(file, folder, companions)
                                     : ChooseByName(file, folder, companions);
}

TargetNames::Choice TargetNames::LookBeside(const Companion& companion, const std::string& folder,
                                            int number) {
    if (naming_ == Naming::Keep || number > 0) {
        const std::string path = files::Join(folder, NameBeside(companion, number));
        switch (LookAt(path, companion.file)) {
            case Place::Free:
                return {.path = path, .number = number};
            case Place::Same:
                return SameOrDiffers(path, companion.file, number);
            case Place::Reserved:
                return {.path = path, .mustWait = true};
            case Place::Other:
                break;
        }
    }
    return Look(companion.file, folder);
}

std::optional<TargetNames::Choice> TargetNames::MakeSure(const std::string& folder) const {
    if (MakeDateFolder(folder)) return std::nullopt;
    const auto free = files::FreeSpace(folder);
    return Choice{{}, free && *free == 0 ? ImportResult::NoSpace : ImportResult::Denied};
}

TargetNames::Choice TargetNames::Choose(const Incoming& file, const std::string& folder,
                                        std::span<const Companion> companions) {
    if (LiesInDay(file.source, folder)) return {{}, ImportResult::InPlace};
    if (auto failed = MakeSure(folder)) return *failed;
    Choice choice = Look(file, folder, companions);
    // The cache that another desktop keeps in every folder goes instead of being carried along, also when
    // files are copied: meant, and held by MakeTargetPathTest.PictureCacheIsRemoved.
    if (choice.path.empty() && choice.why == ImportResult::Removed)
        if (const auto result = files::RemoveFile(file.source); result != files::FileResult::Done)
            choice.why = ImportResult::PassedOver;
    return choice;
}

TargetNames::Choice TargetNames::ChooseBeside(const Companion& companion, const std::string& folder,
                                              int number) {
    if (auto failed = MakeSure(folder)) return *failed;
    return LookBeside(companion, folder, number);
}

std::optional<std::string> MakeTargetPath(const std::string& source, const std::string& root, int year,
                                          int month, int day) {
    if (source.empty()) return std::nullopt;
    TargetNames names(State().settings.RenameFileWhenMove ? Naming::Number : Naming::Keep);
    TargetNames::Choice choice = names.Choose(source, MakeDayFolderPath(root, year, month, day));
    return choice.path.empty() ? std::nullopt : std::optional(std::move(choice.path));
}

}  // namespace kalmora
