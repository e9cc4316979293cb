// Photos of real cameras after each kind of write, checked by two independent readers and a decoder: nothing
// is reported that was not reported before, and every tag that was not written says what it said.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "embedded_pictures.h"
#include "media/exif_reader.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/extension_table.h"

namespace kalmora {
namespace {

namespace fs = std::filesystem;

using test::ContentOf;
using test::OutputOf;

// What one reader says of one file: tag to value.
using Tags = std::multimap<std::string, std::string>;

// Of all files by one call.
std::map<std::string, Tags> ReadByExifTool(const std::string& folder) {
    const std::string output = OutputOf(
        "cd '" + folder + "' && exiftool -j -validate -all -warning -error -a -u -G1 -r . 2>/dev/null");
    std::map<std::string, Tags> files;
    const auto records = nlohmann::json::parse(output, nullptr, false);
    if (!records.is_array()) return files;
    for (const auto& record : records) {
        Tags& tags = files[fs::path(record["SourceFile"].get<std::string>()).filename().string()];
        for (const auto& [key, value] : record.items())
            tags.emplace(key, value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
    }
    return files;
}

// The warnings, which the call above gives one a file.
std::map<std::string, std::multiset<std::string>> WarningsByExifTool(const std::string& folder) {
    const std::string output =
        OutputOf("cd '" + folder + "' && exiftool -validate -warning -error -a -S -r . 2>/dev/null");
    std::map<std::string, std::multiset<std::string>> files;
    std::string name, line;
    for (std::stringstream lines(output); std::getline(lines, line);) {
        if (line.starts_with("======== "))
            name = fs::path(line.substr(9)).filename().string();
        else if (!line.starts_with("Validate"))
            files[name].insert(line);
    }
    return files;
}

std::map<std::string, Tags> ReadByExiv2(const std::string& folder) {
    std::map<std::string, Tags> files;
    for (const auto& entry : fs::directory_iterator(folder)) files[entry.path().filename().string()];
    const std::string output = OutputOf("cd '" + folder + "' && exiv2 -q -PEXIkycv * 2>/dev/null");
    std::string line;
    for (std::stringstream lines(output); std::getline(lines, line);)
        for (auto& [name, tags] : files)
            if (line.starts_with(name + " ")) {
                const std::string rest = line.substr(line.find_first_not_of(' ', name.size()));
                tags.emplace(rest.substr(0, rest.find(' ')), rest);
                break;
            }
    return files;
}

// The maker note as it is, and its place in the block.
std::pair<std::uint64_t, std::string> MakerNoteOf(const std::string& bytes) {
    ByteWindow window({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    exif::Block block;
    if (!exif::ReadBlock(window, block)) return {};
    const exif::Item& note = block.Find(exif::Tag::MakerNote);
    if (!note) return {};
    return {note.offset - block.start, exif::ReadValue(window, block, exif::Tag::MakerNote).value_or("")};
}

// Everything but the Exif block: the segments by name and content, and all that follows them.
std::vector<std::string> SegmentsOf(const std::string& jpeg) {
    std::vector<std::string> segments;
    std::size_t at = 2;
    while (at + 4 <= jpeg.size() && jpeg[at] == '\xFF' && jpeg[at + 1] != '\xDA') {
        const std::size_t length =
            static_cast<std::uint8_t>(jpeg[at + 2]) * 256u + static_cast<std::uint8_t>(jpeg[at + 3]);
        const std::string segment = jpeg.substr(at, 2 + length);
        if (segment.substr(0, 2) != "\xFF\xE1" || segment.find("Exif") > 12) segments.push_back(segment);
        at += 2 + length;
    }
    segments.push_back(jpeg.substr(std::min(at, jpeg.size())));
    return segments;
}

struct Write {
    const char* name;
    RewriteResult (*write)(PhotoFile&);
    std::set<std::string> tags;  // that may change
};

const std::vector<Write>& Writes() {
    static const std::vector<Write> all{
        {"rating",
         [](PhotoFile& photo) { return photo.Estimate(EstimateType::Like); },
         {"UserComment", "Property"}},
        {"comment",
         [](PhotoFile& photo) { return photo.SetComment("a walk \u3042 in the hills"); },
         {"XPComment", "PNG:Comment", "Comment"}},
        {"later rating",
         [](PhotoFile& photo) { return photo.Estimate(EstimateType::Bad); },
         {"UserComment", "Property"}},
        {"date",
         [](PhotoFile& photo) {
             return photo.SetShotDate({2008, 5, 2, 6, 7, 8, 9, 0});
         },
         {"ModifyDate", "DateTimeOriginal", "CreateDate", "CreationTime", "SubSecCreateDate",
          "SubSecModifyDate", "SubSecDateTimeOriginal", "DateTime", "DateTimeDigitized"}},
        {"longer comment",
         [](PhotoFile& photo) { return photo.SetComment(std::string(2000, 'w')); },
         {"XPComment", "PNG:Comment", "Comment"}},
    };
    return all;
}

// Tags of the file itself, of the places of things, and of a block that was not there before.
bool MayDiffer(const std::string& key, const Write& write, bool hadExif) {
    static const std::set<std::string> ours{"XResolution",      "YResolution",     "ResolutionUnit",
                                            "YCbCrPositioning", "ExifVersion",     "ComponentsConfiguration",
                                            "FlashpixVersion",  "ColorSpace",      "ExifImageWidth",
                                            "ExifImageHeight",  "PixelXDimension", "PixelYDimension",
                                            "ExifByteOrder"};
    const std::string name = key.substr(key.find_last_of(":.") + 1);
    if (key.starts_with("System:") || key == "SourceFile" || key == "ExifTool:Validate" ||
        key == "ExifTool:Warning")
        return true;
    if (key == "File:Comment") return false;  // a segment of its own
    return write.tags.contains(name) || write.tags.contains(key) || (!hadExif && ours.contains(name)) ||
           name == "ExifTag" || name == "InteroperabilityTag";  // where a directory is
}

// A directory said to lie behind the block can be broken inside a block that has grown: the reader finds
// other words for the same fault.
std::string FaultOf(const std::string& warning) {
    if (const auto end = warning.find(" SubDirectory start"); end != std::string::npos)
        return warning.substr(0, end);
    return warning.substr(0, warning.find(" directory"));
}

bool HoldsFault(const std::multiset<std::string>& warnings, const std::string& fault) {
    return std::any_of(warnings.begin(), warnings.end(),
                       [&](const std::string& warning) { return FaultOf(warning) == fault; });
}

class WrittenSamplesTest : public testing::Test {
protected:
    WrittenSamplesTest() : folder_(files::MakeTemporaryFolder()), photos_(files::Join(folder_, "photos")) {
        LoadExtensionTable(files::Join(folder_, "extension.dat"));
        State().settings.TempFolder = files::Join(folder_, "Temp");
        fs::create_directory(photos_);
        std::error_code missing;
        for (const char* kind : {"camera", "odd", "png"})
            for (const auto& entry : fs::directory_iterator(fs::path(KALMORA_SAMPLES) / kind, missing)) {
                const std::string extension = entry.path().extension().string();
                if (extension != ".jpg" && extension != ".JPG" && extension != ".png") continue;
                const fs::path copy = fs::path(photos_) / entry.path().filename();
                fs::copy_file(entry.path(), copy);
                fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
                names_.push_back(copy.filename().string());
            }
    }
    ~WrittenSamplesTest() override {
        ClearExtensionTable();
        State().settings.TempFolder.clear();
        files::RemoveFolderTree(folder_);
    }

    std::string PathOf(const std::string& name) const { return files::Join(photos_, name); }

    const std::string folder_, photos_;
    std::vector<std::string> names_;
};

void ExpectSameTags(const Tags& before, const Tags& after, const Write& write, bool hadExif,
                    const char* reader) {
    const auto report = [&](const Tags& a, const Tags& b, const char* what) {
        for (const auto& [key, value] : a) {
            if (MayDiffer(key, write, hadExif)) continue;
            const auto [begin, end] = b.equal_range(key);
            const bool found =
                std::any_of(begin, end, [&v = value](const auto& other) { return other.second == v; });
            EXPECT_TRUE(found) << reader << ": " << what << ' ' << key << " = " << value;
        }
    };
    report(before, after, "lost");
    report(after, before, "new");
}

TEST_F(WrittenSamplesTest, SayToOtherReadersWhatTheySaid) {
    if (names_.empty()) GTEST_SKIP() << "no samples in " << KALMORA_SAMPLES;
    if (files::FindProgram("exiftool").empty() || files::FindProgram("exiv2").empty())
        GTEST_SKIP() << "exiftool or exiv2 is not installed";
    int written = 0, refused = 0;
    auto tags = ReadByExifTool(photos_), others = ReadByExiv2(photos_);
    auto warnings = WarningsByExifTool(photos_);
    ASSERT_EQ(tags.size(), names_.size());
    for (const Write& write : Writes()) {
        std::map<std::string, std::string> contents;
        std::set<std::string> left;
        for (const std::string& name : names_) {
            contents[name] = ContentOf(PathOf(name));
            PhotoFile photo(PathOf(name));
            const RewriteResult result = write.write(photo);
            ++(result == RewriteResult::Written ? written : refused);
            if (result == RewriteResult::Written) continue;
            left.insert(name);
            EXPECT_EQ(ContentOf(PathOf(name)), contents[name]) << name << ", " << write.name;
            EXPECT_TRUE(IsUnsupported(result) || result == RewriteResult::ExifFull)
                << name << ", " << write.name << ": " << NameOf(result);
        }
        auto newTags = ReadByExifTool(photos_), newOthers = ReadByExiv2(photos_);
        auto newWarnings = WarningsByExifTool(photos_);
        for (const std::string& name : names_) {
            if (left.contains(name)) continue;
            SCOPED_TRACE(name + ", " + write.name);
            const bool hadExif = tags[name].contains("File:ExifByteOrder");
            ExpectSameTags(tags[name], newTags[name], write, hadExif, "exiftool");
            ExpectSameTags(others[name], newOthers[name], write, hadExif, "exiv2");
            for (const std::string& warning : newWarnings[name]) {
                // The form of the date in a PNG is the format's own.
                if (warning.find("Non standard PNG date/time format") != std::string::npos) continue;
                EXPECT_TRUE(HoldsFault(warnings[name], FaultOf(warning))) << warning;
            }
            const std::string& before = contents[name];
            const std::string after = ContentOf(PathOf(name));
            if (before.starts_with("\xFF\xD8")) {
                EXPECT_TRUE(SegmentsOf(before) == SegmentsOf(after)) << "a segment";
                EXPECT_TRUE(test::Decoded(before) == test::Decoded(after)) << "the pixels";
                EXPECT_TRUE(MakerNoteOf(before) == MakerNoteOf(after)) << "the maker note";
            } else {
                const auto pixels = [](const std::string& png) {
                    return png.substr(std::min(png.find("IDAT"), png.size()));
                };
                EXPECT_TRUE(pixels(before) == pixels(after)) << "the pixels";
            }
        }
        tags = std::move(newTags);
        others = std::move(newOthers);
        warnings = std::move(newWarnings);
    }
    std::cout << written << " writes checked, " << refused << " refused\n";
    EXPECT_GT(written, refused);
}

}  // namespace
}  // namespace kalmora
