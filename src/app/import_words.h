// What the window says at the end of an import.
#pragma once

#include <string>
#include <vector>

#include "import/import.h"

namespace kalmora {

enum class WordsLanguage { Japanese, English };

// Why a second import is not begun. In every language: it has one wording, by which people know it.
inline constexpr char kImportRuns[] = "取り込み中のため新たな取り込みを行えません";

// The files that the user would want to look at, the first of them by name. One thread.
class ImportRemarks {
public:
    void Note(const ImportedFile& file);
    // A line for each.
    std::string Lines(WordsLanguage language) const;

private:
    static constexpr std::size_t kMost = 8;  // lines in a box
    struct Remark {
        std::string file, existing;
        ImportResult result = ImportResult::Failed;
        bool lacksWords = false;
    };
    std::vector<Remark> first_;
    std::size_t more_ = 0;
};

// True when all is as the user wanted it: what is worth a line and no question.
bool IsPlainSuccess(const ImportSummary& summary);
// How many were taken, and so on: one line.
std::string SumInWords(const ImportSummary& summary, WordsLanguage language);
// The text of the box: why it was not begun or not finished, the sum, and the remarks.
std::string ImportInWords(const ImportSummary& summary, const ImportRemarks& remarks, WordsLanguage language);

}  // namespace kalmora
