#include "store/settings_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "base/log.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "store/data_folder.h"
#include "store/settings_keys.h"
#include "text/text.h"

namespace kalmora {

namespace {

using settings::Field;
using settings::ReaderRow;
using settings::Reading;
using settings::TextColorField;
using settings::WriterRow;
using settings::Writing;

constexpr std::size_t kMaxFileBytes = 4u << 20;

// ---- fields

// Calls visit with the field itself, whatever its type.
template <typename Visitor>
void WithField(AppState& state, const Field& field, Visitor&& visit) {
    std::visit(
        [&](const auto& member) {
            if constexpr (std::is_same_v<std::decay_t<decltype(member)>, TextColorField>)
                visit(state.settings.TextStyles[static_cast<std::size_t>(member.kind)].*member.part);
            else
                visit(state.settings.*member);
        },
        field);
}

template <typename T>
constexpr bool kIsFlag = std::is_same_v<T, bool> || std::is_same_v<T, SharedFlag>;
template <typename T>
constexpr bool kIsNumber = std::is_same_v<T, int> || std::is_same_v<T, SharedInt>;

// ---- paths

bool IsPathSeparator(char c) { return c == '/' || c == '\\'; }

// By the rules of either platform: a file may come from the other one.
bool IsAbsolutePath(std::string_view path) {
    return path.starts_with('/') || path.starts_with("\\\\") || (path.size() > 1 && path[1] == ':');
}

std::string FromProgramFolder(std::string path) {
    if (IsAbsolutePath(path)) return path;
    return State().settings.ProgramFolder + files::kSeparator + files::WithPlatformSeparators(path);
}

std::string WithoutTrailingSeparator(std::string path) {
    if (path.size() > 1 && IsPathSeparator(path.back())) path.pop_back();
    return path;
}

bool AreSameFolder(const std::string& a, const std::string& b) {
    if (a == b) return true;
    const auto first = files::GetStatus(a), second = files::GetStatus(b);
    return first && second && first->volume == second->volume && first->identity == second->identity;
}

// A path below the program folder from behind it, so that the program can be moved with its data.
std::string Shortened(const std::string& path) {
    const std::string& folder = State().settings.ProgramFolder;
    if (folder.empty() || path.size() <= folder.size() || path[folder.size()] != files::kSeparator)
        return path;
    // Names that differ in case only can be two folders here: then the path stays whole.
    if (!text::StartsWithNoCase(path, folder) || !AreSameFolder(path.substr(0, folder.size()), folder))
        return path;
    return path.substr(folder.size() + 1);
}

// In the home, then where the program was built or installed, then wherever the system finds it.
std::string BesideProgramOrInPath(const std::string& name) {
    std::string beside = files::Join(State().settings.ProgramFolder, name);
    const std::string own = files::ExecutableFolder();
    const std::string helpers = files::Join(FolderOfPath(own), "libexec/kalmora");
    for (const std::string& path : {beside, files::Join(own, name), files::Join(helpers, name)})
        if (files::Exists(path)) return path;
    const std::string found = files::FindProgram(name);
    return found.empty() ? beside : found;
}

// ---- reading

// The next line without its line end.
std::string_view NextSettingsLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::size_t taken = end == rest.npos ? rest.size() : end + 1;
    std::string_view line = rest.substr(0, taken);
    rest.remove_prefix(taken);
    // A text ends at its line end, or at a zero byte where a damaged file has one.
    return line.substr(0, std::min(line.find_first_of(std::string_view("\r\n\0", 3)), line.size()));
}

// A line that ends in the middle of a double-byte character, as in a file that was cut off, ends before it.
std::string_view WithoutHalfCharacter(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        const bool isLead = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
        if (!isLead) continue;
        if (i + 1 == line.size()) return line.substr(0, i);
        ++i;
    }
    return line;
}

// The number at the front, taken off: blanks, a sign, digits. Beyond the range of an int its ends.
std::optional<int> TakeNumber(std::string_view& text) {
    std::size_t i = std::min(text.find_first_not_of(" \t\v\f"), text.size());
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    const std::size_t firstDigit = i;
    std::int64_t value = 0;
    constexpr std::int64_t kBound = std::int64_t{std::numeric_limits<int>::max()} + 1;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        value = std::min(value * 10 + (text[i] - '0'), kBound);
    if (i == firstDigit) return std::nullopt;
    text.remove_prefix(i);
    return static_cast<int>(negative ? -value : std::min(value, kBound - 1));
}

bool TakeLiteral(std::string_view& text, char c) {
    if (!text.starts_with(c)) return false;
    text.remove_prefix(1);
    return true;
}

// Numbers with commas between them; nothing unless all of them are there.
template <std::size_t N>
std::optional<std::array<int, N>> TakeNumbers(std::string_view text) {
    std::array<int, N> numbers{};
    for (std::size_t i = 0; i < N; ++i) {
        if (i > 0 && !TakeLiteral(text, ',')) return std::nullopt;
        const auto number = TakeNumber(text);
        if (!number) return std::nullopt;
        numbers[i] = *number;
    }
    return numbers;
}

std::optional<Color> ParseColor(std::string_view text) {
    if (!TakeLiteral(text, '(')) return std::nullopt;
    const auto parts = TakeNumbers<3>(text);
    if (!parts) return std::nullopt;
    const auto shade = [&](std::size_t i) {
        return static_cast<std::uint8_t>(std::clamp((*parts)[i], 0, 255));
    };
    return Color{shade(0), shade(1), shade(2)};
}

void AddDataFolder(const std::string& folder) {
    AppState& state = State();
    if (!state.settings.AllowMultiDataDirectory) {
        state.settings.DataDirectory = folder;
        return;
    }
    // Compared over the new value's length only, so that the beginning of a listed path counts as listed:
    // meant, and held by Settings.DataFolderThatBeginsAListedOneIsDropped.
    for (const std::string& listed : state.settings.DataDirectories)
        if (text::StartsWithNoCase(listed, folder)) return;
    state.settings.DataDirectories.push_back(folder);
    state.settings.DataDirectory = folder;
}

void Assign(std::string& field, Reading reading, std::string value) {
    switch (reading) {
        case Reading::ProgramPath:
            field = FromProgramFolder(std::move(value));
            break;
        case Reading::CardFolder:
            // Empty is what was written while no camera card was in.
            if (value.empty()) break;
            [[fallthrough]];
        case Reading::PlainFolder:
            field = WithoutTrailingSeparator(std::move(value));
            break;
        case Reading::DataFolder:
            AddDataFolder(WithoutTrailingSeparator(FromProgramFolder(std::move(value))));
            break;
        default:
            field = std::move(value);
    }
}

void ReadValue(const ReaderRow& row, std::string_view value) {
    if (row.reading == Reading::Nothing) return;
    WithField(State(), row.field, [&](auto& field) {
        using T = std::decay_t<decltype(field)>;
        if constexpr (kIsFlag<T>) {
            field = row.test.back() == '1';
        } else if constexpr (kIsNumber<T>) {
            if (const auto number = TakeNumber(value)) field = *number;
        } else if constexpr (std::is_same_v<T, std::string>) {
            Assign(field, row.reading, text::FromCp932(WithoutHalfCharacter(value), text::Escapes::Resolve));
        } else if constexpr (std::is_same_v<T, Color>) {
            if (const auto color = ParseColor(value)) field = *color;
        } else {
            if (const auto edges = TakeNumbers<4>(value))
                field = {(*edges)[0], (*edges)[1], (*edges)[2], (*edges)[3]};
        }
    });
}

void ReadLine(std::string_view line) {
    if (line.empty() || line[0] == '[') return;
    for (const ReaderRow& row : settings::ReaderRows()) {
        if (!text::StartsWithNoCase(line, row.test)) continue;
        ReadValue(row, line.substr(row.test.size()));
        return;
    }
}

// ---- writing

void AppendLine(std::string& out, std::string_view key, std::string_view value) {
    out += key;
    out += '=';
    // The one thing that a name may hold and a line may not.
    for (const char c : text::ToCp932(value, text::Escapes::Resolve)) {
        if (c == '\n')
            out += "&#xA;";
        else if (c == '\r')
            out += "&#xD;";
        else
            out += c;
    }
    out += '\n';
}

void WriteText(std::string& out, const WriterRow& row, const std::string& value) {
    switch (row.writing) {
        case Writing::Value:
            AppendLine(out, row.key, value);
            break;
        case Writing::ShortPath:
            AppendLine(out, row.key, Shortened(value));
            break;
        case Writing::ToolPath:
            AppendLine(out, row.key, value);
            AppendLine(out, row.key, Shortened(value));
            break;
        case Writing::DataFolder:
            if (!State().settings.AllowMultiDataDirectory) {
                AppendLine(out, row.key, Shortened(value));
                break;
            }
            for (const std::string& folder : State().settings.DataDirectories)
                AppendLine(out, row.key, Shortened(folder));
    }
}

void WriteRow(std::string& out, const WriterRow& row) {
    WithField(State(), row.field, [&](const auto& field) {
        using T = std::decay_t<decltype(field)>;
        const auto list = [](auto... numbers) {
            std::string joined;
            ((joined += (joined.empty() ? "" : ",") + std::to_string(numbers)), ...);
            return joined;
        };
        if constexpr (kIsFlag<T>)
            AppendLine(out, row.key, field ? "1" : "0");
        else if constexpr (kIsNumber<T>)
            AppendLine(out, row.key, std::to_string(field));
        else if constexpr (std::is_same_v<T, std::string>)
            WriteText(out, row, field);
        else if constexpr (std::is_same_v<T, Color>)
            AppendLine(out, row.key, '(' + list(field.red, field.green, field.blue) + ')');
        else
            AppendLine(out, row.key, list(field.left, field.top, field.right, field.bottom));
    });
}

void RepairRange(int& value, int low, int high, int repaired) {
    if (value < low || value > high) value = repaired;
}

}  // namespace

void ResetSettingsToDefaults() {
    AppState& state = State();
    AppState fresh;
    for (const ReaderRow& row : settings::ReaderRows()) {
        WithField(state, row.field, [&](auto& field) {
            using T = std::decay_t<decltype(field)>;
            WithField(fresh, row.field, [&](auto& initial) {
                if constexpr (std::is_same_v<T, std::decay_t<decltype(initial)>>) {
                    if constexpr (std::is_same_v<T, SharedFlag> || std::is_same_v<T, SharedInt>)
                        field = initial.load();
                    else
                        field = initial;
                }
            });
        });
    }
    state.settings.DataDirectories.clear();
    for (const auto& [field, face] : settings::FaceDefaults()) state.settings.*field = face;
    for (const auto& [field, name] : settings::PathDefaults())
        state.settings.*field = state.settings.ProgramFolder + files::kSeparator + std::string(name);
    const SystemTime today = LocalTime();
    state.settings.TargetYear = today.year;
    state.settings.TargetMonth = today.month;
    state.settings.TargetDay = today.day;
    state.settings.ImportDirectory = files::FindCameraCard();
    state.settings.TextEditor = shell::DefaultOpener();
    state.settings.PathOfOrbinGet = BesideProgramOrInPath("OrbinGet");
    state.settings.PathOfOrbinLib = BesideProgramOrInPath("OrbinLib");
    state.settings.PathOfJpegTran = BesideProgramOrInPath("jpegtran");
}

FileRead LoadSettings(const std::string& path) {
    ResetSettingsToDefaults();
    const OwnText content = ReadOwnText(path, kMaxFileBytes);
    switch (content.result) {
        case FileRead::Read:
            ReadSettingsText(content.bytes);
            RepairSettings();
            break;
        case FileRead::Missing:
            State().settings.DataDirectories.push_back(State().settings.DataDirectory);
            if (State().settings.RunDataDirectory.empty()) MakeDirectories(State().settings.DataDirectory);
            break;
        case FileRead::Unreadable:
            Log("[Settings] cannot be read: %s", path.c_str());
            break;
    }
    return content.result;
}

void ReadSettingsText(std::string_view bytes) {
    while (!bytes.empty()) ReadLine(NextSettingsLine(bytes));
}

void RepairSettings() {
    AppState& state = State();
    constexpr int kNoBound = std::numeric_limits<int>::max();
    RepairRange(state.settings.HeightOfSlideShow, 10, 100, 75);
    RepairRange(state.settings.WidthOfSlideShow, 10, 100, 75);
    RepairRange(state.settings.QualityOfJpeg, 0, 100, 80);
    RepairRange(state.settings.TimingOfPopup, 0, kNoBound, 2);
    RepairRange(state.settings.WindowRect.left, -100, 5000, 10);
    RepairRange(state.settings.WindowRect.right, 0, 5000, 960);
    RepairRange(state.settings.WindowRect.top, -100, 5000, 10);
    RepairRange(state.settings.WindowRect.bottom, 0, 5000, 710);
    // The command line's choice for this run must not find its way into the file.
    if (state.settings.RunDataDirectory.empty()) SetMainRoot(CurrentDataRoot());
    if (state.settings.DayEndTimeForScrap <= 12) state.settings.DayEndTimeForScrap += 24;
    if (state.settings.DayEndTimeForScrap >= 48) state.settings.DayEndTimeForScrap -= 24;
}

std::string MakeSettingsText() {
    std::string content;
    for (const WriterRow& row : settings::WriterRows()) {
        if (!row.section.empty()) {
            if (!content.empty()) content += '\n';
            content += row.section;
            content += '\n';
        }
        WriteRow(content, row);
    }
    return content;
}

bool SaveSettings(const std::string& path) {
    const bool written = ReplaceOwnText(path, MakeSettingsText()) == files::FileResult::Done;
    if (!written) Log("[Settings] cannot be written: %s", path.c_str());
    return written;
}

}  // namespace kalmora
