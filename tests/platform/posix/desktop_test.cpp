#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "platform/files.h"
#include "platform/shell.h"
#include "scoped_variable.h"
#include "support/temporary_folder.h"

namespace kalmora::shell {
namespace {

using test::ScopedVariable;
using test::TemporaryFolder;

// A program that writes down what it was called with.
class RecordingProgram {
public:
    RecordingProgram(const TemporaryFolder& folder, std::string_view name)
        : path_(folder / name), record_(folder / "record") {
        folder.Add(name, "#!/bin/sh\n/usr/bin/printf '<%s>' \"$@\" > \"" + record_ + ".new\"\n/bin/mv \"" +
                             record_ + ".new\" \"" + record_ + "\"\n");
        EXPECT_EQ(chmod(path_.c_str(), 0755), 0);
    }
    // Waits for the call.
    std::string Arguments() const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!files::Exists(record_) && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return files::ReadWholeFile(record_).value_or("(never called)");
    }
    const std::string& Path() const { return path_; }

private:
    std::string path_, record_;
};

TEST(Open, HandsTheTargetToTheDesktop) {
    const TemporaryFolder folder;
    const RecordingProgram opener(folder, "xdg-open");
    const ScopedVariable path("PATH", folder.Path());
    EXPECT_TRUE(Open("https://example.org/?q=写真&x=$HOME"));
    EXPECT_EQ(opener.Arguments(), "<https://example.org/?q=写真&x=$HOME>");
}

TEST(Open, DoesNotLetANamePassForAnOption) {
    const TemporaryFolder folder;
    const RecordingProgram opener(folder, "xdg-open");
    const ScopedVariable path("PATH", folder.Path());
    EXPECT_TRUE(Open("--version"));
    EXPECT_EQ(opener.Arguments(), "<./--version>");
}

TEST(Open, FailsWithoutADesktop) {
    const TemporaryFolder empty;
    const ScopedVariable path("PATH", empty.Path());
    EXPECT_FALSE(Open("/tmp"));
    EXPECT_FALSE(OpenWithEditor("", "/tmp/a.txt"));
}

TEST(Open, FailsForNothing) {
    const TemporaryFolder folder;
    const RecordingProgram opener(folder, "xdg-open");
    const ScopedVariable path("PATH", folder.Path());
    EXPECT_FALSE(Open(""));
}

TEST(OpenWithEditor, StartsTheCommandWithTheFileBehindIt) {
    const TemporaryFolder folder;
    const RecordingProgram editor(folder, "edit");
    const ScopedVariable path("PATH", folder.Path());
    EXPECT_TRUE(OpenWithEditor("edit --new  'two words' \"\"", "/data/a b.txt"));
    EXPECT_EQ(editor.Arguments(), "<--new><two words><></data/a b.txt>");
}

TEST(OpenWithEditor, TakesAProgramWithABlankInItsPath) {
    const TemporaryFolder folder;
    const RecordingProgram editor(folder, "my editor");
    EXPECT_TRUE(OpenWithEditor(editor.Path(), "/data/a.txt"));
    EXPECT_EQ(editor.Arguments(), "</data/a.txt>");
}

TEST(OpenWithEditor, TakesTheDesktopsChoiceWhenNoneIsNamed) {
    for (const char* command : {"", "xdg-open"}) {
        const TemporaryFolder folder;
        const RecordingProgram opener(folder, "xdg-open");
        const ScopedVariable path("PATH", folder.Path());
        EXPECT_TRUE(OpenWithEditor(command, "/data/a.txt"));
        EXPECT_EQ(opener.Arguments(), "</data/a.txt>");
    }
    EXPECT_EQ(DefaultOpener(), "xdg-open");
}

TEST(OpenWithEditor, FailsForAProgramThatIsNotThere) {
    EXPECT_FALSE(OpenWithEditor("kalmora-no-such-editor", "/data/a.txt"));
    EXPECT_FALSE(OpenWithEditor("/no/such/editor -w", "/data/a.txt"));
    EXPECT_FALSE(OpenWithEditor("  ", "/data/a.txt"));
    EXPECT_FALSE(OpenWithEditor("sh", ""));
}

}  // namespace
}  // namespace kalmora::shell
