// What the import's tests share: a card to take files from, beside the data folder that they go to.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "import/import.h"
#include "import/import_source.h"
#include "index/index_fixture.h"
#include "media/photo_file.h"
#include "support/machine.h"

namespace kalmora {

// Keeps what an import reports, and does what a test wants done meanwhile.
class ArrivalProbe final : public ArrivalListener {
public:
    void OnFile(const ImportedFile& file) override {
        if (onFile) onFile(file);
        reported.push_back(file);
    }
    std::vector<ImportedFile> reported;
    std::function<void(const ImportedFile& file)> onFile;
};

class ImportTest : public IndexTest {
protected:
    ImportTest() : card(MakeFolder("card/DCIM")) {
        State().settings.TempFolder = MakeFolder("Temp");
        test::SetVariable("XDG_DATA_HOME", At("share"));  // the trash
        options.sources = {card};
        options.root = root;
        options.context = context;
        options.arrivals = &arrivals;
    }
    ~ImportTest() override {
        State().settings.TempFolder.clear();
        State().settings.RenameFileWhenMove = false;
        test::ClearVariable("XDG_DATA_HOME");
    }

    std::string OnCard(std::string_view name) const { return files::Join(card, name); }
    // A file on the card; its times are those of 13 November 2008, 10:15.
    std::string Add(std::string_view name, std::string_view content = "x") const {
        const std::string path = OnCard(name);
        Put(path.substr(home.size() + 1), content);
        SetDate(path, {2008, 11, 4, 13, 10, 15, 0, 0});
        return path;
    }
    static void SetDate(const std::string& path, const SystemTime& local) {
        ASSERT_TRUE(SetLastWrite(path, local)) << path;
    }
    static bool SetLastWrite(const std::string& path, const SystemTime& local) {
        return files::SetTimes(path, ToFileTime(local), ToFileTime(local));
    }
    static std::string CommentOf(const std::string& path) {
        PhotoFile photo(path);
        const std::string* comment = photo.GetComment();
        return comment ? *comment : "";
    }
    ImportSummary Import() {
        reported.clear();
        return RunImport(options);
    }

    // Below a folder, sorted; folders end with a slash when they are empty.
    static std::vector<std::string> TreeOf(const std::string& folder) {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
            const std::string name = entry.path().string().substr(folder.size() + 1);
            if (entry.is_directory() && !entry.is_symlink()) {
                if (std::filesystem::is_empty(entry.path())) names.push_back(name + "/");
            } else {
                names.push_back(name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::vector<std::string> NamesInDay(int day = 13, int month = 11, int year = 2008) const {
        return TreeOf(DayFolder(day, month, year));
    }
    std::vector<ImportResult> Results() const {
        std::vector<ImportResult> results;
        for (const ImportedFile& file : reported) results.push_back(file.result);
        return results;
    }

    const std::string card;
    ImportOptions options;
    ArrivalProbe arrivals;
    std::vector<ImportedFile>& reported = arrivals.reported;
};

}  // namespace kalmora
