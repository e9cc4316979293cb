// The form in which texts are compared: small letters, half width, katakana.
#include <array>
#include <memory>
#include <vector>

#include "text/code_page.h"
#include "text/lower_case.h"
#include "text/text.h"

namespace kalmora::text {

namespace {

struct Change {
    char16_t character;
    char16_t first;
    char16_t second;  // 0 when it becomes one character; a voiced kana becomes two
};

constexpr Change kChanges[] = {
#include "text/fold_table.inc"
};

class FoldTable {
public:
    FoldTable() {
        pages_.emplace_back();  // page 0: nothing changes
        for (const Change& change : kChanges) Put(change);
        // The wave dash, minus and double line of other tables are written with these characters' codes, so
        // they are found as these too.
        Alias(0x301C, 0xFF5E);
        Alias(0x2212, 0xFF0D);
        Alias(0x2016, 0x2225);
    }

    // first 0: the character stays.
    Change Find(char32_t character) const {
        if (character > 0xFFFF) return {};
        return pages_[pageOf_[character >> 8]][character & 0xFF];
    }

private:
    using Page = std::array<Change, 256>;

    void Put(const Change& change) {
        std::uint8_t& page = pageOf_[change.character >> 8];
        if (page == 0) {
            page = static_cast<std::uint8_t>(pages_.size());
            pages_.emplace_back();
        }
        pages_[page][change.character & 0xFF] = change;
    }

    void Alias(char16_t character, char16_t same) {
        Change change = Find(same);
        if (change.first == 0) change.first = same;
        change.character = character;
        Put(change);
    }

    std::array<std::uint8_t, 256> pageOf_{};
    std::vector<Page> pages_;
};

const FoldTable& FoldTables() {
    static const auto table = std::make_unique<const FoldTable>();
    return *table;
}

}  // namespace

std::string Fold(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    const FoldTable* table = nullptr;
    for (std::size_t at = 0; at < utf8.size();) {
        const char c = utf8[at];
        if (static_cast<unsigned char>(c) < 0x80) {
            out.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c);
            ++at;
            continue;
        }
        if (!table) table = &FoldTables();
        const CodePoint point = DecodeUtf8(utf8, at);
        const auto length = static_cast<std::size_t>(point.length);
        const Change change = table->Find(point.value);
        if (change.first != 0) {
            AppendUtf8(out, change.first);
            if (change.second != 0) AppendUtf8(out, change.second);
        } else if (length == 1 || CodeOf(point.value) != 0) {
            out.append(utf8, at, length);  // a raw byte, or a character that the table leaves as it is
        } else {
            AppendUtf8(out, LowerCase(point.value));
        }
        at += length;
    }
    return out;
}

}  // namespace kalmora::text
