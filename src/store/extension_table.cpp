#include "store/extension_table.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <shared_mutex>

#include "base/log.h"
#include "platform/files.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::size_t kMaxTableBytes = 1u << 20;
constexpr std::size_t kMaxLineBytes = 32767;
// The dot included: an extension of 8 bytes is found, one of 9 is not.
constexpr std::size_t kMaxScanBytes = 9;

struct Section {
    std::string_view header;
    ObjectKind kind;
};
// In the order in which the table is saved.
constexpr std::array<Section, 5> kSections{{{"[IMAGE]", ObjectKind::Image},
                                            {"[MOVIE]", ObjectKind::Movie},
                                            {"[TEXT]", ObjectKind::Text},
                                            {"[MUSIC]", ObjectKind::Music},
                                            {"[MUSIC_LIST]", ObjectKind::MusicList}}};
// In the order in which classification looks: an extension listed twice belongs to the first.
constexpr std::array<ObjectKind, 5> kSearchOrder{ObjectKind::Image, ObjectKind::Movie, ObjectKind::Music,
                                                 ObjectKind::MusicList, ObjectKind::Text};
constexpr std::array<std::string_view, 5> kMovieDefaults{"avi", "wmv", "mov", "mpg", "mpeg"};

constexpr std::string_view kHeading =
    "# Extension List\n"
    "# イメージ，音楽，映像，テキストの判別に利用します．\n"
    "# このファイルに記述してある拡張子はすべてバイナリとみなします．\n"
    "# ここに列挙されている拡張子のファイルは文字列処理されません．\n"
    "# 大文字小文字どちらでもOKです．\n";
// Its sections are in another order than those of a saved table: intended.
constexpr std::string_view kDefaultSections =
    "[IMAGE]\nbmp\njpg\njpeg\ngif\npng\ntif\ntiff\n\n"
    "[MOVIE]\navi\nwmv\nmov\nmpg\nmpeg\nflv\n\n"
    "[MUSIC]\nmid\nmp3\nwmv\nwma\nwav\n\n"
    "[MUSIC_LIST]\nm3u\n\n"
    "[TEXT]\ntxt\ndat\n";

using Lists = std::array<std::vector<std::string>, 6>;  // by the number of the kind

std::shared_mutex tableMutex;
// Guarded by tableMutex. Never destroyed: threads may outlive main.
Lists& table = *new Lists;

std::vector<std::string>& ListOf(Lists& lists, ObjectKind kind) {
    return lists[static_cast<std::size_t>(kind)];
}

// The next line with its line end; a line longer than the limit comes in pieces.
std::string_view NextLine(std::string_view& rest) {
    std::size_t length = std::min(rest.size(), kMaxLineBytes);
    if (const std::size_t end = rest.substr(0, length).find('\n'); end != std::string_view::npos)
        length = end + 1;
    const std::string_view line = rest.substr(0, length);
    rest.remove_prefix(length);
    return line;
}

std::optional<ObjectKind> SectionOf(std::string_view line) {
    for (const Section& section : kSections)
        if (line.starts_with(section.header)) return section.kind;
    return std::nullopt;
}

// The entry's text. An escape that would make another line of it, once it is saved, stays as it is written.
std::string Entry(std::string_view bytes) {
    std::string entry = text::FromCp932(bytes, text::Escapes::Resolve);
    const bool startsOtherwise =
        entry.empty() ||
        (entry[0] != bytes[0] && std::string_view("#[\r\n").find(entry[0]) != std::string_view::npos);
    if (startsOtherwise || entry.find('\n') != std::string::npos) entry = text::FromCp932(bytes);
    return entry;
}

Lists Parse(std::string_view content) {
    Lists lists;
    std::optional<ObjectKind> current;
    bool movieSeen = false;
    while (!content.empty()) {
        const std::string_view line = NextLine(content);
        if (line[0] == '#' || line[0] == '\r' || line[0] == '\n') continue;
        if (const auto section = SectionOf(line)) {
            current = section;
            movieSeen |= *section == ObjectKind::Movie;
            continue;
        }
        if (line[0] == '[' || line.size() < 2 || !current) continue;
        // The last byte goes whatever it is: the carriage return of a foreign line end stays in the entry,
        // and a last line without an end loses a letter. Meant, and held by
        // TheLastByteOfALineGoesWhateverItIs
        ListOf(lists, *current).push_back(Entry(line.substr(0, line.size() - 1)));
    }
    // A table from before movies were known keeps working.
    if (!movieSeen) ListOf(lists, ObjectKind::Movie).assign(kMovieDefaults.begin(), kMovieDefaults.end());
    return lists;
}

// The extension in the path's last 9 bytes; a dot with nothing behind it is passed over. '\' ends nothing: it
// may be in a name.
std::string_view FindExtension(std::string_view path) {
    std::size_t scanned = 0;
    for (std::size_t end = path.size(); end > 0;) {
        std::size_t start = end - 1;
        while (start > 0 && (static_cast<unsigned char>(path[start]) & 0xC0u) == 0x80 && end - start < 4)
            --start;
        scanned += text::Cp932Length(path.substr(start, end - start));
        if (scanned > kMaxScanBytes || path[start] == '/') return {};
        if (path[start] == '.' && end < path.size()) return path.substr(end);
        end = start;
    }
    return {};
}

}  // namespace

FileRead LoadExtensionTable(const std::string& path) {
    OwnText content = ReadOwnText(path, kMaxTableBytes);
    if (content.result == FileRead::Missing) {
        std::string defaults(kHeading);
        defaults += kDefaultSections;
        files::WriteWholeFile(path, text::ToCp932(defaults));
        content = ReadOwnText(path, kMaxTableBytes);
    }
    if (content.result == FileRead::Read)
        ReadExtensionTableText(content.bytes);
    else
        ClearExtensionTable();
    return content.result;
}

void ReadExtensionTableText(std::string_view bytes) {
    Lists loaded = Parse(bytes);
    std::unique_lock lock(tableMutex);
    table.swap(loaded);
}

std::string MakeExtensionTableText() {
    std::string content(kHeading);
    {
        std::shared_lock lock(tableMutex);
        for (const Section& section : kSections) {
            if (&section != &kSections.front()) content += '\n';
            content += section.header;
            content += '\n';
            for (const std::string& extension : ListOf(table, section.kind)) {
                content += extension;
                content += '\n';
            }
        }
    }
    return text::ToCp932(content, text::Escapes::Resolve);
}

bool SaveExtensionTable(const std::string& path) {
    const bool written = ReplaceOwnText(path, MakeExtensionTableText()) == files::FileResult::Done;
    if (!written) Log("[ExtensionTable] cannot be written: %s", path.c_str());
    return written;
}

void ClearExtensionTable() {
    std::unique_lock lock(tableMutex);
    table = Lists{};
}

ObjectKind ClassifyFile(std::string_view path) {
    const std::string_view extension = FindExtension(path);
    if (extension.empty()) return ObjectKind::Unknown;
    if (text::EqualsNoCase(extension, "lnk")) return ObjectKind::Shortcut;
    std::shared_lock lock(tableMutex);
    for (const ObjectKind kind : kSearchOrder)
        for (const std::string& listed : ListOf(table, kind))
            if (text::EqualsNoCase(extension, listed)) return kind;
    return ObjectKind::Unknown;
}

std::vector<std::string> ExtensionsOf(ObjectKind kind) {
    std::shared_lock lock(tableMutex);
    const auto index = static_cast<std::size_t>(kind);
    return index < table.size() ? table[index] : std::vector<std::string>{};
}

}  // namespace kalmora
