#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

#include "platform/files.h"
#include "support/temporary_folder.h"

namespace kalmora::files {
namespace {

using test::TemporaryFolder;

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

ino_t NumberOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_ino;
}

// Writing past so many bytes fails for a scope, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};

std::string Bytes(std::size_t count) {
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 31 + i / 251);
    return bytes;
}

// ---- reading

TEST(ReadWholeFile, GivesEveryByte) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 100'000u}) {
        const std::string content = Bytes(size);
        EXPECT_EQ(ReadWholeFile(folder.Add("a.bin", content)), content) << size;
    }
}

TEST(ReadWholeFile, CutsALongerFileAtTheLimit) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt", "0123456789");
    EXPECT_EQ(ReadWholeFile(path, 4), "0123");
    EXPECT_EQ(ReadWholeFile(path, 9), "012345678");
    EXPECT_EQ(ReadWholeFile(path, 10), "0123456789");
    EXPECT_EQ(ReadWholeFile(path, 11), "0123456789");
    EXPECT_EQ(ReadWholeFile(path, 0), "");
}

TEST(ReadWholeFile, IsEmptyForWhatIsNoReadableFile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(ReadWholeFile(folder / "absent"));
    EXPECT_FALSE(ReadWholeFile(folder.Path()));
    EXPECT_FALSE(ReadWholeFile(""));
}

TEST(ReadWholeFile, NeverWaitsForAPipe) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(ReadWholeFile(pipe));
    InputFile file;
    EXPECT_FALSE(file.Open(pipe));
}

TEST(ReadWholeFile, ReadsFilesThatClaimToBeEmpty) {
    const auto content = ReadWholeFile("/proc/self/status");
    ASSERT_TRUE(content);
    EXPECT_NE(content->find("Pid:"), std::string::npos);
}

TEST(InputFile, ReadsAtAnyPlace) {
    const TemporaryFolder folder;
    const std::string content = Bytes(10'000);
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Add("a.bin", content)));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.Size(), content.size());
    std::array<std::uint8_t, 100> part;
    for (const std::size_t offset : {5'000u, 0u, 9'900u}) {
        ASSERT_EQ(file.ReadAt(offset, part), part.size());
        EXPECT_TRUE(std::equal(part.begin(), part.end(),
                               content.begin() + static_cast<std::ptrdiff_t>(offset),
                               [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); }));
    }
}

TEST(InputFile, GivesFewerBytesAtTheEndAndNonePastIt) {
    const TemporaryFolder folder;
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Add("a.bin", "0123456789")));
    std::array<std::uint8_t, 8> part;
    EXPECT_EQ(file.ReadAt(2, part), 8u);
    EXPECT_EQ(file.ReadAt(3, part), 7u);
    EXPECT_EQ(file.ReadAt(9, part), 1u);
    EXPECT_EQ(file.ReadAt(10, part), 0u);
    EXPECT_EQ(file.ReadAt(~std::uint64_t{0}, part), 0u);
    EXPECT_EQ(file.ReadAt(std::uint64_t{1} << 63, part), 0u);
    EXPECT_EQ(file.ReadAt(0, {}), 0u);
}

TEST(InputFile, OpensRegularFilesOnly) {
    const TemporaryFolder folder;
    InputFile file;
    EXPECT_FALSE(file.Open(folder.Path()));
    EXPECT_FALSE(file.Open(folder / "absent"));
    EXPECT_FALSE(file.Open("/dev/null"));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0u);
    std::array<std::uint8_t, 8> part;
    EXPECT_EQ(file.ReadAt(0, part), 0u);
}

TEST(InputFile, OpensWithItsFirstBytes) {
    const TemporaryFolder folder;
    InputFile file;
    std::array<std::uint8_t, 4> head{};
    EXPECT_EQ(file.OpenAndRead(folder.Add("long.bin", "0123456789"), head), 4u);
    EXPECT_EQ(head[3], '3');
    EXPECT_EQ(file.Size(), 10u);
    EXPECT_EQ(file.OpenAndRead(folder.Add("short.bin", "ab"), head), 2u);
    EXPECT_EQ(file.OpenAndRead(folder.Add("empty.bin", ""), head), 0u);
    EXPECT_TRUE(file.IsOpen());
}

TEST(InputFile, OpensNothingWithFirstBytesThatIsNoFile) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::array<std::uint8_t, 4> head;
    for (const std::string& path : {folder.Path(), pipe, folder / "absent", std::string("/dev/null")}) {
        InputFile file;
        EXPECT_EQ(file.OpenAndRead(path, head), std::nullopt) << path;
        EXPECT_FALSE(file.IsOpen()) << path;
    }
}

TEST(InputFile, MovesAndCloses) {
    const TemporaryFolder folder;
    InputFile first;
    ASSERT_TRUE(first.Open(folder.Add("a.bin", "abc")));
    InputFile second = std::move(first);
    EXPECT_FALSE(first.IsOpen());  // NOLINT: a moved-from file is documented to be closed
    EXPECT_EQ(second.Size(), 3u);
    second.Close();
    EXPECT_FALSE(second.IsOpen());
    ASSERT_TRUE(second.Open(folder.Add("b.bin", "abcd")));
    ASSERT_TRUE(second.Open(folder / "a.bin"));
    EXPECT_EQ(second.Size(), 3u);
}

// ---- copying

TEST(CopyFile, CarriesContentTimesAndRights) {
    const TemporaryFolder folder;
    const std::string content = Bytes(300'000);
    const std::string from = folder.Add("a.bin", content);
    ASSERT_EQ(chmod(from.c_str(), 0640), 0);
    ASSERT_TRUE(SetTimes(from, FileTime{130'000'000'000'000'000}, FileTime{131'000'000'000'000'000}));
    ASSERT_EQ(CopyFile(from, folder / "b.bin"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / "b.bin"), content);
    EXPECT_EQ(GetStatus(folder / "b.bin")->written.ticks, 131'000'000'000'000'000u);
    EXPECT_EQ(ModeOf(folder / "b.bin"), 0640u);
}

TEST(CopyFile, CopiesAReadOnlyFileAsReadOnly) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.bin", "abc");
    ASSERT_EQ(chmod(from.c_str(), 0444), 0);
    ASSERT_EQ(CopyFile(from, folder / "b.bin"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / "b.bin"), "abc");
    EXPECT_TRUE(GetStatus(folder / "b.bin")->isReadOnly);
}

TEST(CopyFile, NeverReplacesWhatStands) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.bin", "new");
    const std::string to = folder.Add("b.bin", "old");
    EXPECT_EQ(CopyFile(from, to), FileResult::Exists);
    EXPECT_EQ(ReadWholeFile(to), "old");
    EXPECT_EQ(CopyFile(from, from), FileResult::Exists);
    EXPECT_EQ(ReadWholeFile(from), "new");
}

TEST(CopyFile, FailsForWhatIsNoFileOrHasNoPlaceToGo) {
    const TemporaryFolder folder;
    EXPECT_EQ(CopyFile(folder / "absent", folder / "b"), FileResult::NotFound);
    EXPECT_EQ(CopyFile(folder.Path(), folder / "b"), FileResult::Failed);
    EXPECT_EQ(CopyFile(folder.Add("a"), folder / "none/b"), FileResult::NotFound);
    EXPECT_FALSE(Exists(folder / "b"));
}

TEST(CopyFile, CopiesFilesWhoseLengthIsNotKnown) {
    const TemporaryFolder folder;
    ASSERT_EQ(CopyFile("/proc/self/status", folder / "status"), FileResult::Done);
    EXPECT_GT(GetStatus(folder / "status")->size, 100u);
}

TEST(CopyFile, LeavesNothingWhenItFailsHalfWay) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.bin", Bytes(300'000));
    FileResult result = FileResult::Done;
    {
        const FileSizeLimit limit(100'000);
        result = CopyFile(from, folder / "b.bin");
    }
    EXPECT_EQ(result, FileResult::Failed);
    EXPECT_FALSE(Exists(folder / "b.bin"));
    EXPECT_EQ(GetStatus(from)->size, 300'000u);
}

// ---- replacing

TEST(WriteWholeFile, MakesAndReplaces) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteWholeFile(folder / "a.txt", "one"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / "a.txt"), "one");
    EXPECT_EQ(WriteWholeFile(folder / "a.txt", ""), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / "a.txt"), "");
    EXPECT_EQ(ListFolder(folder.Path()).size(), 1u) << "nothing is left beside it";
}

TEST(WriteWholeFile, PutsANewFileInThePlaceOfTheOld) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt", "old");
    InputFile reader;
    ASSERT_TRUE(reader.Open(path));
    const ino_t before = NumberOf(path);
    ASSERT_EQ(WriteWholeFile(path, "newer"), FileResult::Done);
    EXPECT_NE(NumberOf(path), before);
    EXPECT_EQ(reader.Size(), 3u) << "who reads the old one reads it whole";
}

TEST(WriteWholeFile, KeepsTheRightsOfTheOldFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt");
    ASSERT_EQ(chmod(path.c_str(), 0604), 0);
    ASSERT_EQ(WriteWholeFile(path, "x"), FileResult::Done);
    EXPECT_EQ(ModeOf(path), 0604u);
}

TEST(WriteWholeFile, GivesANewFileTheRightsThatTheUserAskedFor) {
    const TemporaryFolder folder;
    const mode_t old = umask(027);
    const FileResult result = WriteWholeFile(folder / "a.txt", "x");
    umask(old);
    ASSERT_EQ(result, FileResult::Done);
    EXPECT_EQ(ModeOf(folder / "a.txt"), 0640u);
}

TEST(WriteWholeFile, WritesThroughALink) {
    const TemporaryFolder folder;
    const std::string real = folder.Add("real.txt", "old");
    ASSERT_EQ(symlink(real.c_str(), (folder / "link.txt").c_str()), 0);
    ASSERT_EQ(WriteWholeFile(folder / "link.txt", "new"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(real), "new");
    EXPECT_TRUE(ListFolder(folder.Path()).front().isLink);
}

TEST(WriteWholeFile, RefusesAProtectedFileAndAFolder) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt", "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(WriteWholeFile(path, "new"), FileResult::Denied);
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(WriteWholeFile(folder.AddFolder("sub"), "new"), FileResult::Failed);
    EXPECT_EQ(WriteWholeFile(folder / "none/a.txt", "new"), FileResult::NotFound);
}

TEST(WriteWholeFile, LeavesTheOldFileWhenTheDiskRefuses) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt", "old");
    FileResult result = FileResult::Done;
    {
        const FileSizeLimit limit(1000);
        result = WriteWholeFile(path, Bytes(2000));
    }
    EXPECT_EQ(result, FileResult::Failed);
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(ListFolder(folder.Path()).size(), 1u) << "nothing is left beside it";
}

TEST(WriteWholeFile, TakesANameOfTheGreatestLength) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_EQ(WriteWholeFile(folder / name, "x"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / name), "x");
}

TEST(WriteWholeFile, GivesReadersTheOldOrTheNewContentNeverAMixture) {
    const TemporaryFolder folder;
    const std::string path = folder.Add("a.txt", std::string(50'000, 'a'));
    std::atomic<bool> isOver{false};
    std::atomic<int> torn{0}, reads{0};
    std::thread reader([&] {
        while (!isOver) {
            const auto content = ReadWholeFile(path);
            if (!content || content->size() != 50'000 ||
                content->find_first_not_of(content->front()) != std::string::npos)
                ++torn;
            ++reads;
        }
    });
    std::vector<std::thread> writers;
    for (const char letter : {'b', 'c'})
        writers.emplace_back([&, letter] {
            for (int i = 0; i < 20; ++i)
                EXPECT_EQ(WriteWholeFile(path, std::string(50'000, letter)), FileResult::Done);
        });
    for (std::thread& writer : writers) writer.join();
    while (reads == 0) std::this_thread::yield();
    isOver = true;
    reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(ListFolder(folder.Path()).size(), 1u);
}

}  // namespace
}  // namespace kalmora::files
