// The index of photos of real cameras, held against what two independent readers say of them.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "index_fixture.h"
#include "media/date_text.h"
#include "source_folder.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {
namespace {

std::filesystem::path SampleFolder() {
    return SourceFolder(__FILE__).parent_path().parent_path().parent_path() / "shared" / "samples";
}

// One row of the table: the file, and its values in the order of the columns.
struct Said {
    std::string name;
    std::vector<std::string> columns;
    std::string Text(std::size_t column) const {
        std::string text = columns[column];
        text.erase(text.find_last_not_of(" \t\r") + 1);
        return text;
    }
    // An absent value and a zero are one in the index.
    int Number(std::size_t column) const { return columns[column].empty() ? 0 : std::stoi(columns[column]); }
};
enum Column : std::size_t {
    kDateTime,
    kDateTimeOriginal,
    kIso,
    kShutter,
    kBrightness,
    kFlash,
    kExposureBias,
    kExposureTime,
    kExposureProgram,
    kAperture,
    kXpComment,
    kColumns = 12
};

std::vector<Said> ReadTable(const std::filesystem::path& folder) {
    std::vector<Said> rows;
    std::ifstream table(folder / "truth.tsv");
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        Said said;
        std::stringstream stream(line);
        std::getline(stream, said.name, '\t');
        for (std::string column; std::getline(stream, column, '\t');) said.columns.push_back(column);
        said.columns.resize(kColumns);
        rows.push_back(said);
    }
    return rows;
}

bool IsIndexedAsPhoto(const std::string& name) {
    const std::string extension = GetExtension(name);
    return extension == "jpg" || extension == "jpeg";
}

void ExpectSame(const IndexEntry& entry, const Said& said) {
    SCOPED_TRACE(said.name);
    EXPECT_EQ(entry.camera.iso, said.Number(kIso));
    EXPECT_EQ(entry.camera.shutter, said.Number(kShutter));
    EXPECT_EQ(entry.camera.brightness, said.Number(kBrightness));
    EXPECT_EQ(entry.camera.flash, said.Number(kFlash));
    EXPECT_EQ(entry.camera.aperture, said.Number(kAperture));
    const std::string comment = said.Text(kXpComment);
    EXPECT_EQ(entry.comment, text::Cp932Length(comment) > 1 ? text::Fold(comment) : comment);
    SystemTime date;
    const std::string stamp =
        said.Text(kDateTime).empty() ? said.Text(kDateTimeOriginal) : said.Text(kDateTime);
    if (!stamp.empty() && ParseExifDate(stamp, date) && date.day != 0 && date.month <= 12) {
        EXPECT_EQ(entry.date.year, date.year);
        EXPECT_EQ(entry.date.month, date.month);
        EXPECT_EQ(entry.date.day, date.day);
        EXPECT_EQ(entry.date.hour, date.hour);
        EXPECT_EQ(entry.date.minute, date.minute);
        EXPECT_EQ(entry.date.second, date.second);
    }
}

using SampleIndex = IndexTest;

TEST_F(SampleIndex, RecordsSayWhatTwoIndependentReadersSay) {
    const auto folder = SampleFolder();
    const std::vector<Said> rows = ReadTable(folder);
    if (rows.empty()) GTEST_SKIP() << "there are no sample photos in " << folder;
    MakeFolder("files/2008/200811/2008_1113");
    const auto nameOf = [](std::size_t row, const Said& said) {
        return std::to_string(row) + std::filesystem::path(said.name).extension().string();
    };
    for (std::size_t row = 0; row < rows.size(); ++row)
        std::filesystem::copy_file(folder / rows[row].name, PathOf(nameOf(row, rows[row])));
    const DayIndex made = LoadDay(), read = LoadDay();
    int compared = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string path = PathOf(nameOf(row, rows[row]));
        const EntryPointer entry = made.Find(path), again = read.Find(path);
        ASSERT_TRUE(entry) << rows[row].name;
        ASSERT_TRUE(again) << rows[row].name;
        EXPECT_EQ(again->comment, entry->comment) << rows[row].name;
        if (!IsIndexedAsPhoto(path)) continue;
        EXPECT_EQ(entry->camera.exposureBias, rows[row].Number(kExposureBias)) << rows[row].name;
        EXPECT_EQ(entry->camera.exposureTime, rows[row].Number(kExposureTime)) << rows[row].name;
        EXPECT_EQ(entry->camera.exposureProgram, rows[row].Number(kExposureProgram)) << rows[row].name;
        ExpectSame(*entry, rows[row]);
        ExpectSame(*again, rows[row]);
        ++compared;
    }
    std::cout << compared << " photos of " << rows.size() << " rows\n";
    EXPECT_GT(compared, 0);
}

}  // namespace
}  // namespace kalmora
