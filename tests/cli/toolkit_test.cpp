// Which verbs load the toolkit: it takes several times as long as what most of them do.
#include <gmock/gmock.h>

#include <filesystem>

#include "media/picture_files.h"
#include "media/png_builder.h"
#include "program_fixture.h"
#include "support/machine.h"

namespace kalmora {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ToolkitTest : public test::CommandLineTest {
protected:
    ToolkitTest() {
        const std::string day = "data/2008/200811/2008_1113";
        std::filesystem::create_directories(Path(day));
        Write(day + "/a.jpg", test::DecodableJpeg(60, 40));
        Write(day + "/b.png", test::PngOf(""));
        Write("a.jpg", test::DecodableJpeg(60, 40));
        Write("note.txt", "cat");
    }
    // What the system says about the libraries that it loads.
    std::string LoadedBy(const std::string& arguments, int status = 0) const {
        test::SetVariable("LD_DEBUG", "files");
        test::SetVariable("LD_DEBUG_OUTPUT", Path("loaded"));
        EXPECT_EQ(Run("--data '" + Path("data") + "' " + arguments).status, status) << Errors();
        test::ClearVariable("LD_DEBUG");
        test::ClearVariable("LD_DEBUG_OUTPUT");
        std::string loaded;
        for (const auto& entry : files::ListFolder(folder_))
            if (entry.name.starts_with("loaded.")) {
                loaded += files::ReadWholeFile(Path(entry.name)).value_or("");
                files::RemoveFile(Path(entry.name));
            }
        return loaded;
    }
};

TEST_F(ToolkitTest, VerbsThatShowNothingDoNotLoadIt) {
    if (KALMORA_ONE_PROGRAM) GTEST_SKIP() << "all is in one executable";
    for (const char* verb :
         {"index", "update", "search png", "search --json jpg", "show a.jpg", "show --json note.txt",
          "rate a.jpg like", "comment a.jpg cat", "date a.jpg '2008-11-13 10:15:00'",
          "import --dry-run note.txt", "import a.jpg note.txt", "--help", "--version"})
        EXPECT_THAT(LoadedBy(verb), AllOf(HasSubstr("libc.so"), Not(HasSubstr("libQt")))) << verb;
}

TEST_F(ToolkitTest, TheOthersDo) {
    EXPECT_THAT(LoadedBy("shot --size 100x100 --out x.png"), HasSubstr("libQt"));
    EXPECT_TRUE(files::Exists(Path("x.png")));
    EXPECT_THAT(LoadedBy("rotate none.jpg 90", 1), HasSubstr("libQt"));
    EXPECT_THAT(Errors(), HasSubstr("no such file"));
}

// A helper thread that was the first to touch the toolkit took the program down at its end.
TEST_F(ToolkitTest, IndexingPicturesEndsWell) {
    for (const char* verb : {"index", "update"})
        EXPECT_EQ(Run("--data '" + Path("data") + "' " + verb).status, 0) << Errors();
}

}  // namespace
}  // namespace kalmora
