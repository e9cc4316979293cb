// Photos, what is written into them, and a folder to kill that in.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "media/exif_builder.h"
#include "media/photo_file.h"
#include "media/png_builder.h"
#include "platform/files.h"
#include "rewrite_syscalls.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "support/still_clock.h"

namespace kalmora::test {

inline std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

inline void Write(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

// One kind of write, and what has happened to the photo before.
struct Work {
    const char* name;
    std::function<void(PhotoFile&)> prepare;
    std::function<RewriteResult(PhotoFile&)> write;
    bool withoutInsertion = false;
};

inline const std::vector<Work>& AllWork() {
    static const auto nothing = [](PhotoFile&) {};
    static const auto like = [](PhotoFile& photo) { return photo.Estimate(EstimateType::Like); };
    static const auto words = [](PhotoFile& photo) { return photo.SetComment("a walk in the hills"); };
    static const auto date = [](PhotoFile& photo) { return photo.SetShotDate({2008, 5, 2, 6, 7, 8, 9, 0}); };
    static const std::vector<Work> all{
        {"first comment", nothing, words},
        {"first rating", nothing, like},
        {"later rating", [](PhotoFile& photo) { like(photo); }, like},
        {"date", nothing, date},
        {"first comment where space cannot be inserted", nothing, words, true},
    };
    return all;
}

class RewriteFaultTest : public testing::Test {
protected:
    enum class Place { Memory, Disk };

    explicit RewriteFaultTest(Place place = Place::Memory) : folder_(MakeFolder(place)) {
        EmulateInsertion(isInMemory_);
        LoadExtensionTable(files::Join(folder_, "extension.dat"));
        State().settings.TempFolder = files::Join(folder_, "Temp");
        std::filesystem::create_directory(State().settings.TempFolder);
    }
    ~RewriteFaultTest() override {
        SetFaultPlan({});
        EmulateInsertion(false);
        ClearExtensionTable();
        State().settings.TempFolder.clear();
        files::RemoveFolderTree(folder_);
    }

    struct Photo {
        std::string name;
        std::string content;
    };
    static std::vector<Photo> BuiltPhotos() {
        std::vector<Photo> photos;
        for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
            ExifBuilder exif(order);
            exif.Ascii(ExifBuilder::Main, 0x010F, "Maker")
                .Ascii(ExifBuilder::Main, 0x0132, "2001:02:03 04:05:06")
                .Undefined(ExifBuilder::Exif, 0x927C, std::string(900, 'm'))
                .EmbeddedJpeg("\xFF\xD8" + std::string(2000, 't') + "\xFF\xD9");
            std::string jpeg = JpegWith(exif);
            jpeg.insert(jpeg.size() - 2, std::string(50'000, 's'));
            photos.push_back({order == ByteOrder::Big ? "big.jpg" : "little.jpg", jpeg});
        }
        photos.push_back({"bare.jpg", JpegOf("")});
        photos.push_back({"text.png", PngOf(PngText("Author", "me") + PngText("Comment", "old"))});
        photos.push_back({"bare.png", PngOf("")});
        return photos;
    }
    // And one of each camera where the samples lie.
    static std::vector<Photo> Photos() {
        std::vector<Photo> photos = BuiltPhotos();
        std::error_code error;
        const std::filesystem::path samples = KALMORA_SAMPLES;
        for (const auto& entry : std::filesystem::directory_iterator(samples / "camera", error))
            photos.push_back({entry.path().filename().string(), Read(entry.path().string())});
        if (error) std::cout << "no samples in " << samples << ": built photos only\n";
        return photos;
    }

    std::string Put(const Photo& photo) const {
        for (const auto& entry : std::filesystem::directory_iterator(State().settings.TempFolder))
            std::filesystem::remove(entry.path());
        const std::string path = files::Join(folder_, photo.name);
        Write(path, photo.content);
        return path;
    }

    // The photo after `prepare`, after `write`, and how many calls the write makes. Not written: it is
    // refused.
    struct Course {
        std::string before, after;
        int calls = 0;
        RewriteResult result = RewriteResult::Failed;
    };
    Course Try(const Photo& photo, const Work& work) const {
        const std::string path = Put(photo);
        SetFaultPlan({.withoutInsertion = work.withoutInsertion});
        PhotoFile object(path);
        work.prepare(object);
        Course course;
        course.before = Read(path);
        SetFaultPlan({.withoutInsertion = work.withoutInsertion});
        course.result = work.write(object);
        course.calls = CountedCalls();
        SetFaultPlan({});
        course.after = Read(path);
        return course;
    }

    // Thousands of runs go where the disk need not follow.
    static std::string MakeFolder(Place place) {
        if (place == Place::Disk) return files::MakeTemporaryFolder();
        std::string path = "/dev/shm/kalmora-faults-XXXXXX";
        return mkdtemp(path.data()) ? path : files::MakeTemporaryFolder();
    }

    const std::string folder_;
    const bool isInMemory_ = folder_.starts_with("/dev/shm/");
    StillClock clock_;  // two runs of the same work make the same bytes
};

inline bool HasScratch() {
    for (const auto& entry : std::filesystem::directory_iterator(State().settings.TempFolder))
        if (entry.path().filename().string().starts_with('$')) return true;
    return false;
}

}  // namespace kalmora::test
