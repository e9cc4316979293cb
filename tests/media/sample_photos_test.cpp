// Photos of real cameras, held against what two independent readers say of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "media/photo_metadata.h"
#include "source_folder.h"

namespace kalmora {
namespace {

std::filesystem::path SampleFolder() {
    return SourceFolder(__FILE__).parent_path().parent_path().parent_path() / "shared" / "samples";
}

std::vector<std::string> SplitAtTabs(const std::string& line) {
    std::vector<std::string> columns;
    std::stringstream stream(line);
    for (std::string column; std::getline(stream, column, '\t');) columns.push_back(column);
    columns.resize(13);
    return columns;
}

// The table's columns were cut out of printed lines, without the blanks around them.
std::string Trimmed(std::string text) {
    text.erase(text.find_last_not_of(" \t\n") + 1);
    text.erase(0, std::min(text.find_first_not_of(" \t\n"), text.size()));
    return text;
}

// An absent tag and a zero look the same in CameraValues.
std::string Number(const std::string& said) { return said.empty() ? "0" : said; }

TEST(SamplePhotos, AgreeWithTwoIndependentReaders) {
    const auto folder = SampleFolder();
    std::ifstream table(folder / "truth.tsv");
    if (!table) {
        std::cout << "no sample photos in " << folder << ": nothing compared\n";
        return;
    }
    std::string line;
    std::getline(table, line);
    int rows = 0;
    while (std::getline(table, line)) {
        const std::vector<std::string> said = SplitAtTabs(line);
        SCOPED_TRACE(said[0]);
        PhotoMetadata found;
        ReadPhotoMetadata((folder / said[0]).string(), found);
        EXPECT_EQ(Trimmed(std::string(found.dateTime.Text())), Trimmed(said[1]));
        EXPECT_EQ(Trimmed(std::string(found.dateTimeOriginal.Text())), Trimmed(said[2]));
        const CameraValues& values = found.camera;
        EXPECT_EQ(std::to_string(values.iso), Number(said[3]));
        EXPECT_EQ(std::to_string(values.shutter), Number(said[4]));
        EXPECT_EQ(std::to_string(values.brightness), Number(said[5]));
        EXPECT_EQ(std::to_string(values.flash), Number(said[6]));
        EXPECT_EQ(std::to_string(values.exposureBias), Number(said[7]));
        EXPECT_EQ(std::to_string(values.exposureTime), Number(said[8]));
        EXPECT_EQ(std::to_string(values.exposureProgram), Number(said[9]));
        EXPECT_EQ(std::to_string(values.aperture), Number(said[10]));
        EXPECT_EQ(found.xpComment.value_or(""), said[11]);
        EXPECT_EQ(Trimmed(found.make.value_or("")), Trimmed(said[12]));
        ++rows;
    }
    EXPECT_GT(rows, 0);
}

}  // namespace
}  // namespace kalmora
