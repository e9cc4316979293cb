#include "import/import_companions.h"

#include <algorithm>
#include <span>

#include "store/extension_table.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

constexpr std::string_view kSidecars[] = {"xmp", "thm", "aae"};
constexpr std::string_view kRawPictures[] = {
    "3fr", "arw", "cr2", "cr3", "crw", "dcr", "dng", "erf", "fff", "gpr", "iiq", "kdc", "mef", "mos",
    "mrw", "nef", "nrw", "orf", "pef", "raf", "raw", "rw2", "rwl", "sr2", "srf", "srw", "x3f",
};
constexpr std::string_view kNewPhotos[] = {"heic", "heif", "hif", "avif"};  // no table lists them
constexpr std::string_view kShortMovies[] = {"mov", "mp4"};

// Who leads when several could: the first.
enum class Role { Photo, NewPhoto, Raw, Movie, Sidecar, None };

bool IsOneOf(std::span<const std::string_view> list, std::string_view extension) {
    return std::ranges::find(list, extension) != list.end();
}

Role RoleOf(const std::string& name, std::string_view extension) {
    if (IsOneOf(kSidecars, extension)) return Role::Sidecar;
    if (IsOneOf(kRawPictures, extension)) return Role::Raw;
    if (IsOneOf(kNewPhotos, extension)) return Role::NewPhoto;
    const ObjectKind kind = ClassifyFile(name);
    if (kind == ObjectKind::Image) return Role::Photo;
    return kind == ObjectKind::Movie || IsOneOf(kShortMovies, extension) ? Role::Movie : Role::None;
}

struct Named {
    std::string name, stem, extension;
    Role role = Role::None;
};

// Whether a file of the first role goes with a leader of the second. Of movies only those go that phones take
// with a photo.
bool GoesWith(const Named& file, Role leader) {
    switch (file.role) {
        case Role::Sidecar:
            return true;
        case Role::Raw:
            return leader <= Role::NewPhoto;
        case Role::Movie:
            return leader <= Role::NewPhoto && IsOneOf(kShortMovies, file.extension);
        case Role::Photo:
        case Role::NewPhoto:
        case Role::None:
            break;
    }
    return false;
}

}  // namespace

FolderCompanions::FolderCompanions(const std::vector<std::string>& names) {
    std::vector<Named> all;
    bool hasFollowers = false;
    for (const std::string& name : names) {
        Named one{name, name, GetExtension(name)};
        if (!one.extension.empty()) one.stem.resize(name.size() - one.extension.size() - 1);
        one.stem = LowerLetters(one.stem);
        one.role = RoleOf(name, one.extension);
        hasFollowers |= one.role >= Role::Raw && one.role <= Role::Sidecar;
        all.push_back(std::move(one));
    }
    if (!hasFollowers) return;
    std::unordered_map<std::string, const Named*> leaders;  // by stem
    std::unordered_set<std::string> pictures;               // whole names in small letters
    for (const Named& one : all) {
        if (one.role >= Role::Sidecar) continue;
        pictures.insert(LowerLetters(one.name));
        const Named*& leader = leaders[one.stem];
        if (!leader || one.role < leader->role) leader = &one;
    }
    const auto leaderOf = [&](const std::string& stem) {
        const auto found = leaders.find(stem);
        return found == leaders.end() ? nullptr : found->second;
    };
    for (const Named& one : all) {
        const Named* leader = leaderOf(one.stem);
        std::size_t stemLength = one.stem.size();
        if (!leader && one.role == Role::Sidecar) {
            // "IMG_1.JPG.xmp": of the file "IMG_1.JPG", and so of whatever that goes with.
            const std::string inner = GetExtension(one.stem);
            if (inner.empty()) continue;
            stemLength -= inner.size() + 1;
            leader = leaderOf(one.stem.substr(0, stemLength));
            if (!pictures.contains(one.stem)) leader = nullptr;
        }
        if (!leader || leader == &one || !GoesWith(one, leader->role)) continue;
        companions_[leader->name].push_back({one.name, stemLength});
        followers_.insert(one.name);
    }
}

const std::vector<CompanionName>& FolderCompanions::Of(const std::string& photo) const {
    static const std::vector<CompanionName> kNone;
    const auto found = companions_.find(photo);
    return found == companions_.end() ? kNone : found->second;
}

}  // namespace kalmora
