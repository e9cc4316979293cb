#include "input/navigation_log.h"

#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/date_folder.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
// No line of the program comes near it; paths bound them.
constexpr std::size_t kTextLimit = 0x40000 - 1;
// A log this long keeps its encoding: it is not read as a whole any more.
constexpr std::size_t kConvertLimit = 16u << 20;

// A day is some hundred lines.
constexpr std::size_t kMostWaiting = 1000;

// Keeps the lines of two threads separate, and a line out of a file that is being turned into UTF-8.
std::mutex logFileMutex;

struct Line {
    SystemTime time;
    std::string text;
};
// What happened while its data folder was not there.
struct WaitingLines {
    std::string root;
    std::deque<Line> lines;
};
// Guarded by logFileMutex. Never destroyed: threads may outlive main.
WaitingLines& waiting = *new WaitingLines;

[[gnu::format(printf, 1, 0)]] std::string Format(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    // Only a line feed of the format is dropped; one that came in with a file's name stays.
    if (std::string_view(format).ends_with('\n') && !text.empty()) text.pop_back();
    return text::CutAtCharacter(text, kTextLimit);
}

std::string LineOf(const SystemTime& time, const std::string& text) {
    std::array<char, 64> stamp{};
    std::snprintf(stamp.data(), stamp.size(), "[%04d/%02d/%02d %02d:%02d:%02d]\t", time.year, time.month,
                  time.day, time.hour, time.minute, time.second);
    return stamp.data() + text + '\n';
}

std::string LogName(const SystemTime& time) {
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), "KM%04d%02d%02d.log", time.year, time.month, time.day);
    return name.data();
}

bool BeginsWithUtf8Mark(const files::InputFile& file) {
    std::array<std::uint8_t, kUtf8Mark.size()> head{};
    return file.ReadAt(0, head) == head.size() &&
           std::string_view(reinterpret_cast<const char*>(head.data()), head.size()) == kUtf8Mark;
}

files::FileResult AppendLine(const std::string& path, const std::string& line) {
    files::InputFile file;
    file.Open(path);
    const bool isUtf8 = file.IsOpen() && BeginsWithUtf8Mark(file);
    const std::uint64_t size = file.IsOpen() ? file.Size() : 0;
    file.Close();
    if (isUtf8) return files::AppendToFile(path, line);
    if (text::FitsCp932(line)) return files::AppendToFile(path, text::ToCp932(line));
    if (size > kConvertLimit) {
        return files::AppendToFile(path, text::ToCp932(line, text::Escapes::Resolve));
    }
    const std::string before = files::ReadWholeFile(path, kConvertLimit).value_or("");
    return files::WriteWholeFile(path, std::string(kUtf8Mark) + text::FromCp932(before) + line);
}

bool WriteLine(const std::string& root, const Line& line) {
    const SystemTime& time = line.time;
    const std::string folder = MakeDayFolderPath(root, time.year, time.month, time.day);
    if (!MakeDateFolder(folder)) return false;
    const std::string path = files::Join(folder, LogName(time));
    if (AppendLine(path, LineOf(time, line.text)) == files::FileResult::Done) files::SetHidden(path);
    return true;
}

}  // namespace

bool NavigationLog(const char* format, ...) {
    if (!State().settings.OutputNavigationLog) return false;
    if (!format) return true;
    va_list arguments;
    va_start(arguments, format);
    const std::string text = Format(format, arguments);
    va_end(arguments);

    std::lock_guard lock(logFileMutex);
    const std::string root = CurrentDataRoot();
    if (waiting.root != root) waiting = {root, {}};
    waiting.lines.push_back({LocalTime(), text});
    if (waiting.lines.size() > kMostWaiting) waiting.lines.pop_front();
    if (!files::IsFolder(root)) return false;
    bool written = true;
    for (; !waiting.lines.empty(); waiting.lines.pop_front())
        written = WriteLine(root, waiting.lines.front());
    return written;
}

}  // namespace kalmora
