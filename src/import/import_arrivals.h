// What an import has still to do for files that are in the calendar already: the words for their comments,
// and the index of their months. A program that is killed leaves it written down; the next import does it.
//
// Two files in the Temp folder, both empty but for while an import runs, after one that was killed, and while
// something that is noted cannot be done. Records are added to their ends, each
//
//     CRC-32 of the body as 8 hexadecimal digits, blank, its length as 10 digits, line feed; the body
//
// "import.words": size and last write (100 ns since 1601) of a file before it gets its words, blank between
// them, zero byte, its path, zero byte, the words, zero byte. "import.months": year, blank, month, zero byte,
// the data folder, zero byte. What follows a record that does not add up counts for nothing.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/edit_file.h"

namespace kalmora {

struct WordsToCome {
    std::string path, words;
    std::uint64_t size = 0;  // before the words
    FileTime written;
};

struct MonthToCome {
    std::string root;
    int year = 0, month = 0;
    auto operator<=>(const MonthToCome&) const = default;
};

std::string MakeWordsRecord(const WordsToCome& words);
std::string MakeMonthRecord(const MonthToCome& month);
// All records up to the first that does not add up.
std::vector<WordsToCome> ParseWordsRecords(std::string_view bytes);
std::vector<MonthToCome> ParseMonthRecords(std::string_view bytes);

// One thread. Does nothing while it is not open.
class ArrivalJournal {
public:
    // Makes the files when they are missing. False when they cannot be had or another import uses them.
    bool Open(const std::string& tempFolder);

    // True when a former import has left words to be written.
    bool HasWords() const;
    // Writes the words that a former import has left. Those that cannot be written now, or whose folder is
    // away, stay noted for the next import: how many. A file that has gone from its folder is forgotten, and
    // so is one that cannot take them, now or later.
    int Recover();
    // All that are noted, those of former imports too. They stay noted until they are cleared.
    const std::set<MonthToCome>& Months() const { return known_; }

    // Before a file appears. A kill of the program loses none of it; after a power cut it is there when
    // Flush has returned.
    void AddMonth(const MonthToCome& month);
    void AddWords(const WordsToCome& words);
    void Flush();

    // Those of this import: what Recover has left stays.
    void ClearWords();
    // All but these.
    void ClearMonths(const std::set<MonthToCome>& pending);

private:
    struct Records {
        files::EditFile file;
        std::uint64_t pending = 0;  // bytes at the beginning: the records that Clear leaves
        std::uint64_t end = 0;
        bool isFlushed = true;
        void Add(const std::string& record);
        // Leaves these records and no others, and Clear leaves them too. A kill meanwhile may leave some of
        // the former ones behind them.
        void Keep(const std::string& records);
        void Clear();
        void Flush();
    };
    void ReadMonths();
    void ReadWords();

    std::string tempFolder_;
    Records words_, months_;
    std::set<MonthToCome> known_;
};

}  // namespace kalmora
