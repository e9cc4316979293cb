// What the index's tests share: a data folder with photos whose bytes the tests choose, and days in it.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/work_context.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "media/exif_builder.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/store_fixture.h"

namespace kalmora {

// A photo taken at "2008:11:13 18:42:07", of 640 by 480 pixels.
inline std::string PhotoTaken(std::string_view date, unsigned iso = 0) {
    test::ExifBuilder exif;
    exif.Ascii(test::ExifBuilder::Main, 0x0132, date);
    if (iso != 0) exif.Short(test::ExifBuilder::Exif, 0x8827, iso);
    return test::JpegWith(exif);
}

// Hands the progress on to what a test wants done.
class ProgressProbe final : public ProgressListener {
public:
    void OnProgress(double ratio, const std::string& text) override {
        if (onProgress) onProgress(ratio, text);
    }
    std::function<void(double ratio, const std::string& text)> onProgress;
};

class IndexTest : public StoreTest {
protected:
    IndexTest() : root(MakeFolder("files")) {
        State().settings.DataDirectory = root;
        State().settings.ThumbnailMaxSize = 240;
        LoadExtensionTable(At("extension.dat"));
        ResetIndexes(context);
    }
    ~IndexTest() override {
        ResetIndexes();
        ClearExtensionTable();
    }

    // The tests' day is 13 November 2008 unless they say otherwise.
    std::string DayFolder(int day = 13, int month = 11, int year = 2008) const {
        return MakeDayFolderPath(root, year, month, day);
    }
    std::string PathOf(std::string_view name, int day = 13) const {
        return files::Join(DayFolder(day), name);
    }
    std::string IndexPath(int day = 13) const { return PathOf(kIndexFileName, day); }
    std::string PutInDay(std::string_view name, std::string_view content = "x", int day = 13) const {
        const std::string path = PathOf(name, day);
        return Put(path.substr(home.size() + 1), content);
    }
    // A file time of its own, so that tests need no waiting for the clock of the file system.
    static void Touch(const std::string& path, std::uint64_t step) {
        const FileTime time{128'710'000'000'000'000u + step * 10'000'000u};
        ASSERT_TRUE(files::SetTimes(path, time, time)) << path;
    }
    std::string PutIndex(std::string_view records, int day = 13) const {
        return PutInDay(kIndexFileName, "# Calendar Index [0.99]\n" + std::string(records), day);
    }
    std::string IndexOf(int day = 13) const { return ContentOf(IndexPath(day)); }
    bool HasIndex(int day = 13) const { return files::Exists(IndexPath(day)); }

    DayIndex LoadDay(int day = 13) const {
        DayIndex records;
        records.dataRoot = root;
        EXPECT_TRUE(records.Load(2008, 11, day));
        return records;
    }
    std::vector<std::string> NamesOf(const DayIndex& records) const {
        std::vector<std::string> names;
        for (const EntryPointer& entry : records.entries)
            names.push_back(entry->path.substr(records.folder.size() + 1));
        return names;
    }

    const std::string root;
    ProgressProbe probe;
    StopSource interrupt;
    const WorkContext context{interrupt.Token(), &probe};
};

// Listens to the progress for the time of a test.
class ProgressTexts {
public:
    explicit ProgressTexts(ProgressProbe& probe) : probe_(probe) {
        probe_.onProgress = [this](double ratio, const std::string& text) {
            ratios.push_back(ratio);
            texts.push_back(text);
        };
    }
    ~ProgressTexts() { probe_.onProgress = nullptr; }
    ProgressTexts(const ProgressTexts&) = delete;
    ProgressTexts& operator=(const ProgressTexts&) = delete;
    std::vector<double> ratios;
    std::vector<std::string> texts;

private:
    ProgressProbe& probe_;
};

}  // namespace kalmora
