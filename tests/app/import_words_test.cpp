// What the window says at the end of an import.
#include "app/import_words.h"

#include <gmock/gmock.h>

namespace kalmora {
namespace {

using testing::HasSubstr;
using testing::Not;

ImportSummary Summary() {
    ImportSummary summary;
    summary.taken = 400;
    summary.bytes = 12'345'678;
    summary.passedOver = 3;
    return summary;
}

ImportedFile File(const std::string& source, ImportResult result) {
    ImportedFile file;
    file.source = source;
    file.result = result;
    return file;
}

TEST(ImportWords, SuccessIsALine) {
    EXPECT_TRUE(IsPlainSuccess(Summary()));
    EXPECT_EQ(SumInWords(Summary(), WordsLanguage::English),
              "Imported 400 (12.3 MB), passed over 3, differing 0, failed 0");
    EXPECT_EQ(SumInWords(Summary(), WordsLanguage::Japanese),
              "取り込み 400 個 (12.3 MB)  スキップ 3 個  内容が異なる 0 個  失敗 0 個");
}

TEST(ImportWords, AnythingElseIsABoxWithTheFilesThatItIsAbout) {
    ImportSummary summary = Summary();
    summary.differing = 1;
    summary.failures = 10;
    EXPECT_FALSE(IsPlainSuccess(summary));
    ImportRemarks remarks;
    remarks.Note(File("/card/fine.jpg", ImportResult::Copied));
    ImportedFile differing = File("/card/A.JPG", ImportResult::Differs);
    differing.existing = "/life/2008/200811/2008_1113/A.JPG";
    remarks.Note(differing);
    for (int i = 0; i < 10; ++i) remarks.Note(File("/card/gone", ImportResult::Gone));
    const std::string words = ImportInWords(summary, remarks, WordsLanguage::English);
    EXPECT_THAT(words, testing::StartsWith("Imported 400"));
    EXPECT_THAT(words, HasSubstr("/card/A.JPG: differs from A.JPG, left where it is\n"));
    EXPECT_THAT(words, HasSubstr("and 3 more\n"));
    EXPECT_THAT(words, Not(HasSubstr("fine")));
    EXPECT_THAT(ImportInWords(summary, remarks, WordsLanguage::Japanese), HasSubstr("ほか 3 個"));
}

TEST(ImportWords, WhatWasNotBegunSaysWhyAndNoSum) {
    for (const ImportEnd end : {ImportEnd::NoSource, ImportEnd::MeetsTarget, ImportEnd::NoSpace}) {
        ImportSummary summary;
        summary.end = end;
        summary.refused = "/card";
        EXPECT_FALSE(IsPlainSuccess(summary));
        for (const WordsLanguage language : {WordsLanguage::Japanese, WordsLanguage::English}) {
            const std::string words = ImportInWords(summary, {}, language);
            EXPECT_THAT(words, Not(testing::IsEmpty()));
            EXPECT_THAT(words, Not(HasSubstr("0")));
        }
    }
}

TEST(ImportWords, SecondImportIsRefusedInOneWordingForAllLanguages) {
    EXPECT_STREQ(kImportRuns, "取り込み中のため新たな取り込みを行えません");
}

}  // namespace
}  // namespace kalmora
