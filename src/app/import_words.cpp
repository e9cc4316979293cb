#include "app/import_words.h"

#include <cstdio>

#include "store/file_helpers.h"

namespace kalmora {

namespace {

const char* In(WordsLanguage language, const char* japanese, const char* english) {
    return language == WordsLanguage::Japanese ? japanese : english;
}

std::string BytesInWords(std::uint64_t bytes) {
    constexpr const char* kUnits[] = {"KB", "MB", "GB", "TB"};
    constexpr double kStep = 1000;
    double amount = static_cast<double>(bytes) / kStep;
    std::size_t unit = 0;
    while (amount >= kStep && unit + 1 < std::size(kUnits)) {
        amount /= kStep;
        ++unit;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f %s", amount, kUnits[unit]);
    return text;
}

struct ResultWords {
    ImportResult result;
    const char* japanese;
    const char* english;
};
constexpr ResultWords kResults[] = {
    {ImportResult::Gone, "見つかりません", "it has gone"},
    {ImportResult::Denied, "書き込めません", "no right to read or write it"},
    {ImportResult::NoSpace, "空き容量が足りません", "there is not enough room"},
    {ImportResult::Taken, "使える名前がありません", "no name is left for it"},
    {ImportResult::Changed, "取り込み中に変更されました", "another program changed it meanwhile"},
    {ImportResult::Unreadable, "フォルダを読み込めません", "the folder cannot be read"},
    {ImportResult::MeetsTarget, "データディレクトリと重なっています", "it meets the data folder"},
};

std::string WordsOf(ImportResult result, WordsLanguage language) {
    for (const ResultWords& one : kResults)
        if (one.result == result) return In(language, one.japanese, one.english);
    return In(language, "取り込めません", "it could not be imported");
}

// Why nothing or not all was done; empty when the import went to its end.
std::string EndInWords(const ImportSummary& summary, WordsLanguage language) {
    switch (summary.end) {
        case ImportEnd::NoSpace:
            return In(language, "ディスクの空き容量が足りないため取り込めません",
                      "There is not enough room on the disk for this import");
        case ImportEnd::NoSource:
            return In(language, "取り込むフォルダが見つかりません", "The folder to import does not exist") +
                   ("\n" + summary.refused);
        case ImportEnd::MeetsTarget:
            return In(language, "データディレクトリを含むフォルダやその中のフォルダは取り込めません",
                      "A folder that holds the data folder or lies in it is not imported") +
                   ("\n" + summary.refused);
        case ImportEnd::Unreadable:
            return In(language, "フォルダを読み込めません", "The folder cannot be read") +
                   ("\n" + summary.refused);
        case ImportEnd::Interrupted:
            return In(language, "取り込みを中断しました", "The import was interrupted");
        case ImportEnd::Finished:
            break;
    }
    return {};
}

}  // namespace

void ImportRemarks::Note(const ImportedFile& file) {
    const bool lacksWords =
        file.commentResult && !IsDone(*file.commentResult) && !IsUnsupported(*file.commentResult);
    if (!IsFailure(file.result) && file.result != ImportResult::Differs && !lacksWords) return;
    if (first_.size() < kMost)
        first_.push_back({file.source, file.existing, file.result, lacksWords && !IsFailure(file.result)});
    else
        ++more_;
}

std::string ImportRemarks::Lines(WordsLanguage language) const {
    std::string lines;
    for (const Remark& one : first_) {
        std::string why = WordsOf(one.result, language);
        if (one.result == ImportResult::Differs)
            why = language == WordsLanguage::Japanese
                      ? GetFileName(one.existing) + " と内容が異なるため元の場所に残しました"
                      : "differs from " + GetFileName(one.existing) + ", left where it is";
        else if (one.lacksWords)
            why = In(language, "コメントを追記できません", "its comment could not be written");
        lines += one.file + ": " + why + "\n";
    }
    if (more_ > 0)
        lines += language == WordsLanguage::Japanese ? "ほか " + std::to_string(more_) + " 個\n"
                                                     : "and " + std::to_string(more_) + " more\n";
    return lines;
}

bool IsPlainSuccess(const ImportSummary& summary) {
    // An index that could not be written is made by the next update.
    return summary.end == ImportEnd::Finished && summary.failures == 0 && summary.differing == 0;
}

std::string SumInWords(const ImportSummary& summary, WordsLanguage language) {
    const std::string bytes = BytesInWords(summary.bytes);
    char text[256];
    if (language == WordsLanguage::Japanese)
        std::snprintf(text, sizeof text,
                      "取り込み %d 個 (%s)  スキップ %d 個  内容が異なる %d 個  失敗 %d 個", summary.taken,
                      bytes.c_str(), summary.passedOver, summary.differing, summary.failures);
    else
        std::snprintf(text, sizeof text, "Imported %d (%s), passed over %d, differing %d, failed %d",
                      summary.taken, bytes.c_str(), summary.passedOver, summary.differing, summary.failures);
    return text;
}

std::string ImportInWords(const ImportSummary& summary, const ImportRemarks& remarks,
                          WordsLanguage language) {
    std::string words = EndInWords(summary, language);
    const bool isBegun = summary.end == ImportEnd::Finished || summary.end == ImportEnd::Interrupted ||
                         summary.end == ImportEnd::Unreadable;
    if (!isBegun) return words;
    if (!words.empty()) words += "\n\n";
    words += SumInWords(summary, language);
    if (!summary.isIndexed)
        words += std::string("\n") +
                 In(language, "インデックスを書き込めません", "Some index files could not be written");
    const std::string lines = remarks.Lines(language);
    return lines.empty() ? words : words + "\n\n" + lines;
}

}  // namespace kalmora
