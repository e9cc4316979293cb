// Photos of real cameras, and some made of them, after their first comment and their first rating: every
// embedded picture and every trailer has the bytes that it had.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "embedded_pictures.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/extension_table.h"

namespace kalmora {
namespace {

namespace fs = std::filesystem;

using test::ContentOf;

class WordedSamplesTest : public testing::Test {
protected:
    WordedSamplesTest() : folder_(files::MakeTemporaryFolder()), photos_(files::Join(folder_, "photos")) {
        LoadExtensionTable(files::Join(folder_, "extension.dat"));
        State().settings.TempFolder = files::Join(folder_, "Temp");
        fs::create_directory(photos_);
        std::error_code missing;
        for (const char* kind : {"camera", "behind"})
            for (const auto& entry : fs::directory_iterator(fs::path(KALMORA_SAMPLES) / kind, missing))
                if (entry.path().extension() == ".jpg" || entry.path().extension() == ".JPG")
                    Put(entry.path().filename().string(), ContentOf(entry.path()));
    }
    ~WordedSamplesTest() override {
        ClearExtensionTable();
        State().settings.TempFolder.clear();
        files::RemoveFolderTree(folder_);
    }

    std::string PathOf(const std::string& name) const { return files::Join(photos_, name); }
    void Put(const std::string& name, const std::string& content) {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        contents_[name] = content;
    }
    void PutMadeUpPhotos() {
        const auto found = contents_.find("Minolta_DiMAGE_S404.jpg");
        if (found == contents_.end()) return;
        std::string photo = found->second;
        Put("with a movie.jpg", photo + ContentOf(KALMORA_SAMPLES "/movie/sample_mpeg4.mp4"));
        // The preview behind the picture begins with a byte that its maker has blanked.
        const std::size_t preview = photo.rfind("\xD8\xFF\xDB") - 1;
        for (const char first : {'\x00', '\xFF'}) {
            photo[preview] = first;
            Put("first byte " + std::to_string(static_cast<unsigned char>(first)) + ".jpg", photo);
        }
    }

    // All of them get the words; the embedded is what it was.
    void Try(RewriteResult (*write)(PhotoFile&)) {
        const auto before = test::EmbeddedIn(photos_);
        ASSERT_EQ(before.size(), contents_.size());
        int refused = 0;
        for (const auto& [name, content] : contents_) {
            PhotoFile photo(PathOf(name));
            const RewriteResult result = write(photo);
            if (result == RewriteResult::Written) continue;
            ++refused;
            const char* reason = ReasonOf(result);
            std::cout << name << ": " << NameOf(result) << ": " << (reason ? reason : "") << '\n';
            EXPECT_NE(reason, nullptr);
            EXPECT_TRUE(ContentOf(PathOf(name)) == content) << name;
        }
        const auto after = test::EmbeddedIn(photos_);
        for (const auto& [name, embedded] : before) {
            SCOPED_TRACE(name);
            for (const auto& [key, value] : embedded) {
                ASSERT_TRUE(after.at(name).contains(key)) << "lost " << key;
                EXPECT_TRUE(after.at(name).at(key) == value) << key << " differs";
            }
            for (const auto& [key, value] : after.at(name))
                // One maker counts from the start of the file. Counted as the other program counts, his
                // thumbnail passed the end of the block by a few bytes and was none.
                EXPECT_TRUE(embedded.contains(key) || key == "Sanyo:SanyoThumbnail")
                    << "new " << key << ": " << value.substr(0, 100);
        }
        std::cout << contents_.size() << " photos, " << refused << " refused\n";
        EXPECT_EQ(refused, 0);
    }

    const std::string folder_, photos_;
    std::map<std::string, std::string> contents_;
};

TEST_F(WordedSamplesTest, HoldWhatTheyHeldAfterTheirFirstComment) {
    if (contents_.empty() || files::FindProgram("exiftool").empty())
        GTEST_SKIP() << "no samples in " << KALMORA_SAMPLES << ", or no exiftool";
    PutMadeUpPhotos();
    Try([](PhotoFile& photo) { return photo.SetComment("a walk in the hills"); });
}

TEST_F(WordedSamplesTest, HoldWhatTheyHeldAfterTheirFirstRating) {
    if (contents_.empty() || files::FindProgram("exiftool").empty())
        GTEST_SKIP() << "no samples in " << KALMORA_SAMPLES << ", or no exiftool";
    PutMadeUpPhotos();
    Try([](PhotoFile& photo) { return photo.Estimate(EstimateType::Like); });
}

}  // namespace
}  // namespace kalmora
