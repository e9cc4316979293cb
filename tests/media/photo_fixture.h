// A folder of files that photos can be made of, and the settings as they are at a first start.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "media/photo.h"
#include "pictures/movie_stills.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "support/temporary_folder.h"

namespace kalmora::test {

class PhotoTest : public testing::Test {
protected:
    PhotoTest() {
        LoadExtensionTable(folder / "extension.dat");
        Reset();
    }
    ~PhotoTest() override {
        ClearExtensionTable();
        Reset();
    }

    CPhoto Make(const std::string& name, std::string_view content) {
        return CPhoto(folder.Add(name, content));
    }

    TemporaryFolder folder;

private:
    static void Reset() {
        AppState& state = State();
        state.settings.GoodMode = state.settings.PublicMode = 0;
        state.settings.UseEstimation = state.settings.SkipSmallImage = true;
        state.settings.UseExifThumbnail = false;
        state.settings.ThumbnailMaxSize = 240;
        state.settings.SizeOfSmallImage = 80;
        state.settings.ProgramFolder.clear();
        state.settings.InstallFolder.clear();
        SetMovieStills(nullptr);
    }
};

}  // namespace kalmora::test
