#include "index/index_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

#include "platform/files.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kHeader = "# Calendar Index [0.99]";
constexpr double kVersion = 0.99;
constexpr std::size_t kKeyLength = 5;  // "FILE="

// What the file systems of this program's platforms take.
constexpr std::size_t kLongestName = 255, kLongestPath = 4095;

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Takes values off the front of a line as a scan by a format does: blanks before a number do not count, and
// the first thing that does not fit ends the scan, so that what follows it keeps its value.
class Scan {
public:
    explicit Scan(std::string_view text) : text_(text) {}

    Scan& Literal(char c) {
        good_ = good_ && !text_.empty() && text_.front() == c;
        if (good_) text_.remove_prefix(1);
        return *this;
    }
    Scan& Blanks() {
        while (good_ && !text_.empty() && IsBlank(text_.front())) text_.remove_prefix(1);
        return *this;
    }
    Scan& Decimal(std::int32_t& value) {
        constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
        const bool negative = TakeSign();
        std::int64_t number = 0;
        std::size_t digits = 0;
        for (; good_ && digits < text_.size() && text_[digits] >= '0' && text_[digits] <= '9'; ++digits)
            number = std::min(number * 10 + (text_[digits] - '0'), kMost);
        if (Took(digits)) value = static_cast<std::int32_t>(negative ? -number : number);
        return *this;
    }
    Scan& Decimal(std::uint16_t& value) {
        std::int32_t number = value;
        Decimal(number);
        value = static_cast<std::uint16_t>(number);
        return *this;
    }
    Scan& Hexadecimal(std::uint32_t& value) {
        TakeSign();
        if (good_ && text_.size() > 2 && text_[0] == '0' && (text_[1] == 'x' || text_[1] == 'X'))
            text_.remove_prefix(2);
        std::uint32_t number = 0;
        const auto end = std::from_chars(text_.data(), text_.data() + text_.size(), number, 16);
        if (end.ec == std::errc::result_out_of_range) number = std::numeric_limits<std::uint32_t>::max();
        if (Took(static_cast<std::size_t>(end.ptr - text_.data()))) value = number;
        return *this;
    }
    Scan& Real(double& value) {
        Blanks();
        if (good_ && !text_.empty() && text_.front() == '+') text_.remove_prefix(1);
        const auto end = std::from_chars(text_.data(), text_.data() + text_.size(), value);
        Took(static_cast<std::size_t>(end.ptr - text_.data()));
        return *this;
    }

private:
    bool TakeSign() {
        Blanks();
        if (!good_ || text_.empty() || (text_.front() != '-' && text_.front() != '+')) return false;
        const bool negative = text_.front() == '-';
        text_.remove_prefix(1);
        return negative;
    }
    bool Took(std::size_t length) {
        good_ = good_ && length > 0;
        if (good_) text_.remove_prefix(length);
        return good_;
    }

    std::string_view text_;
    bool good_ = true;
};

bool IsThisVersion(std::string_view line) {
    Scan scan(line);
    for (const char c : std::string_view("# Calendar Index ["))
        if (c == ' ')
            scan.Blanks();
        else
            scan.Literal(c);
    double version = 0.0;
    scan.Real(version);
    return version == kVersion;
}

// The lines of a text that ends them with LF or, as the other platform leaves them, with CR LF.
class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}

    bool Next(std::string_view& line) {
        if (rest_.empty()) return false;
        const void* feed = std::memchr(rest_.data(), '\n', rest_.size());
        const std::size_t length =
            feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - rest_.data()) : rest_.size();
        line = rest_.substr(0, length);
        rest_.remove_prefix(feed ? length + 1 : length);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        return true;
    }

private:
    std::string_view rest_;
};

std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

std::string ReadComment(std::string_view bytes) {
    std::string comment = text::FromCp932(UpToZero(bytes), text::Escapes::Resolve);
    if (comment.size() > kLongestComment) comment = text::CutAtCharacter(comment, kLongestComment);
    // An escape may name a line feed, and a comment is one line wherever it goes.
    std::replace_if(
        comment.begin(), comment.end(), [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    return comment;
}

constexpr std::uint32_t Key(const char* name) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(name[0])) << 24 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[1])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[2])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(name[3]));
}

// 0 for a line that begins with none of the keys' shape.
std::uint32_t KeyOf(std::string_view line) {
    return line.size() >= kKeyLength && line[4] == '=' ? Key(line.data()) : 0;
}

// Takes one line of a record. False for a line that ends it.
bool TakeField(std::string_view line, IndexEntry& entry) {
    const std::uint32_t key = KeyOf(line);
    if (key == 0) return false;
    Scan scan(line.substr(kKeyLength));
    switch (key) {
        case Key("SIZE"):
            scan.Decimal(entry.width).Literal(',').Decimal(entry.height);
            return true;
        case Key("TIME"): {
            std::uint32_t high = entry.lastWriteTime.High(), low = entry.lastWriteTime.Low();
            scan.Literal('(').Hexadecimal(high).Literal(',').Hexadecimal(low);
            entry.lastWriteTime.ticks = static_cast<std::uint64_t>(high) << 32 | low;
            return true;
        }
        case Key("DATE"):
            scan.Decimal(entry.date.year).Literal('/').Decimal(entry.date.month).Literal('/');
            scan.Decimal(entry.date.day).Blanks().Decimal(entry.date.hour).Literal(':');
            scan.Decimal(entry.date.minute).Literal(':').Decimal(entry.date.second);
            entry.date.milliseconds = 0;
            return true;
        case Key("EVAL"):
            // The third kind comes before the second: intended, and held by
            // IndexText.RatingsStandInTheOrderOneThreeTwo.
            scan.Decimal(entry.estimations.like).Literal(',').Decimal(entry.estimations.good).Literal(',');
            scan.Decimal(entry.estimations.privacy);
            return true;
        case Key("FACE"):
            scan.Decimal(entry.camera.face);
            return true;
        case Key("MODE"):
            scan.Decimal(entry.camera.mode);
            return true;
        case Key("VALS"):
            scan.Decimal(entry.camera.iso).Literal(',').Decimal(entry.camera.shutter).Literal(',');
            scan.Decimal(entry.camera.brightness).Literal(',').Decimal(entry.camera.flash).Literal(',');
            scan.Decimal(entry.camera.aperture);
            return true;
        case Key("COMM"):
            entry.comment = ReadComment(line.substr(kKeyLength));
            return true;
        default:
            return false;
    }
}

std::string JoinPath(const std::string& folder, const std::string& relative) {
    std::string path;
    path.reserve(folder.size() + 1 + relative.size());
    path += folder;
    if (path.empty() || path.back() != files::kSeparator) path += files::kSeparator;
    path += relative;
    return path;
}

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Both kinds of separator become this platform's. Done before escapes are resolved, so that a backslash that
// is part of a name stays one, and by whole characters, since the second byte of one may be a backslash.
std::string WithSeparators(std::string_view bytes) {
    std::string result(bytes);
    for (std::size_t at = 0; at < result.size(); ++at) {
        const auto lead = static_cast<unsigned char>(result[at]);
        if ((lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC))
            ++at;
        else if (lead == '\\')
            result[at] = files::kSeparator;
    }
    return result;
}

bool StaysInside(std::string_view relative) {
    if (relative.empty() || relative.size() > kLongestPath) return false;
    if (relative.size() > 2 && relative[1] == ':' && relative[2] == files::kSeparator) return false;
    while (true) {
        const std::size_t end = relative.find(files::kSeparator);
        const std::string_view name = relative.substr(0, end);
        if (name.empty() || name == "." || name == ".." || name.size() > kLongestName) return false;
        if (end == std::string_view::npos) return true;
        relative.remove_prefix(end + 1);
    }
}

void AppendNumber(std::string& out, std::int64_t value) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    out.append(digits.data(), end.ptr);
}

void AppendUpperHex(std::string& out, std::uint32_t value) {
    std::array<char, 8> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
    for (const char* c = digits.data(); c != end.ptr; ++c)
        out += *c >= 'a' ? static_cast<char>(*c - 'a' + 'A') : *c;
}

// "KEY=1,2,3" and a line feed.
template <typename... Numbers>
void AppendNumbers(std::string& out, std::string_view key, std::int64_t first, Numbers... others) {
    out += key;
    AppendNumber(out, first);
    ((out += ',', AppendNumber(out, others)), ...);
    out += '\n';
}

}  // namespace

std::string ToIndexPath(std::string_view relative) {
    constexpr std::string_view kEscaped("\\\n\r\0", 4);
    std::string out;
    out.reserve(relative.size());
    std::size_t at = 0;
    while (at < relative.size()) {
        std::size_t end = at;
        while (end < relative.size() && relative[end] != files::kSeparator &&
               kEscaped.find(relative[end]) == std::string_view::npos)
            ++end;
        out += text::ToCp932(relative.substr(at, end - at), text::Escapes::Resolve);
        at = end;
        if (at == relative.size()) break;
        if (relative[at] == files::kSeparator) {
            out += '\\';
        } else {
            // A name may hold here what would be a separator or a line end there.
            out += "&#x";
            AppendUpperHex(out, static_cast<unsigned char>(relative[at]));
            out += ';';
        }
        ++at;
    }
    return out;
}

std::string FromIndexPath(std::string_view bytes) {
    bytes = UpToZero(bytes);
    if (bytes.size() > kLongestPath * 8) return {};
    std::string relative;
    if (IsAscii(bytes) && bytes.find('&') == std::string_view::npos) {
        relative = bytes;
        std::replace(relative.begin(), relative.end(), '\\', files::kSeparator);
    } else {
        const std::string separated = WithSeparators(bytes);
        relative = text::FromCp932(separated, text::Escapes::Resolve);
        // No escape may bring in a separator of its own.
        if (std::count(separated.begin(), separated.end(), files::kSeparator) !=
            std::count(relative.begin(), relative.end(), files::kSeparator))
            return {};
    }
    return StaysInside(relative) ? relative : std::string();
}

IndexReading ReadIndexText(std::string_view bytes, const std::string& folder, const StopToken& stop,
                           std::vector<EntryPointer>& records) {
    Lines lines(bytes);
    std::string_view line;
    // A file without any byte is an empty day and not a bad header: meant, and held by
    // DayIndexLoad.FileWithoutAByteIsAnEmptyDay.
    if (!lines.Next(line)) return IndexReading::Done;
    if (!IsThisVersion(line)) return IndexReading::OtherVersion;
    while (lines.Next(line)) {
        if (stop.IsStopped()) return IndexReading::Stopped;
        if (KeyOf(line) != Key("FILE")) continue;
        auto entry = std::make_shared<IndexEntry>();
        const std::string relative = FromIndexPath(line.substr(kKeyLength));
        bool ended = true;
        while ((ended = !lines.Next(line)) == false) {
            if (stop.IsStopped()) return IndexReading::Stopped;
            if (!TakeField(line, *entry)) break;
        }
        // The line that ends a record is used up, also where it would begin the next one: meant, and held by
        // IndexText.FileLineInPlaceOfTheEndIsLostWithBothRecords.
        if (ended || !line.starts_with('-') || relative.empty()) continue;
        if (folder.size() + 1 + relative.size() > kLongestPath) continue;
        entry->path = JoinPath(folder, relative);
        records.push_back(std::move(entry));
    }
    return IndexReading::Done;
}

std::string IndexHeader() { return std::string(kHeader).append(1, '\n'); }

void AppendIndexRecord(std::string& out, const IndexEntry& entry, const std::string& folder,
                       std::size_t longestComment) {
    const std::string_view path = entry.path;
    if (path.size() <= folder.size() + 1 || !path.starts_with(folder) ||
        path[folder.size()] != files::kSeparator)
        return;
    out += "FILE=";
    out += ToIndexPath(path.substr(folder.size() + 1));
    out += '\n';
    AppendNumbers(out, "SIZE=", entry.width, entry.height);
    out += "TIME=(";
    AppendUpperHex(out, entry.lastWriteTime.High());
    out += ',';
    AppendUpperHex(out, entry.lastWriteTime.Low());
    out += ")\nDATE=";
    const std::uint16_t fields[] = {entry.date.year, entry.date.month,  entry.date.day,
                                    entry.date.hour, entry.date.minute, entry.date.second};
    constexpr std::string_view kBehind = "// ::\n";
    for (std::size_t i = 0; i < std::size(fields); ++i) {
        AppendNumber(out, fields[i]);
        out += kBehind[i];
    }
    AppendNumbers(out, "EVAL=", entry.estimations.like, entry.estimations.good, entry.estimations.privacy);
    AppendNumbers(out, "FACE=", entry.camera.face);
    AppendNumbers(out, "MODE=", entry.camera.mode);
    AppendNumbers(out, "VALS=", entry.camera.iso, entry.camera.shutter, entry.camera.brightness,
                  entry.camera.flash, entry.camera.aperture);
    out += "COMM=";
    out += text::ToCp932(text::CutAtCharacter(entry.comment, longestComment), text::Escapes::Resolve);
    out += "\n-\n";
}

}  // namespace kalmora
