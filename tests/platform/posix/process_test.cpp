#include "platform/process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "platform/files.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using SteadyClock = std::chrono::steady_clock;
using test::TemporaryFolder;

// Waits until the condition holds; false when it does not in ten seconds.
template <typename Condition>
bool Eventually(Condition condition) {
    const auto end = SteadyClock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (SteadyClock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

TEST(RunProcess, GivesTheExitCode) {
    for (const int code : {0, 1, 77}) {
        const ProcessResult result = RunProcess({"sh", "-c", "exit " + std::to_string(code)}, 60'000);
        EXPECT_TRUE(result.started);
        EXPECT_TRUE(result.ended);
        EXPECT_EQ(result.exitCode, code);
    }
}

TEST(RunProcess, WaitsWithoutBoundWhenTold) {
    EXPECT_EQ(RunProcess({"/bin/sh", "-c", "exit 3"}, -1).exitCode, 3);
}

TEST(RunProcess, TellsTheSignalThatEndedIt) {
    EXPECT_EQ(RunProcess({"sh", "-c", "kill -9 $$"}, 60'000).exitCode, 128 + SIGKILL);
}

TEST(RunProcess, DoesNotStartWhatIsNotThere) {
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {"kalmora-no-such-program"}, {"/no/such/program"}, {"/tmp"}, {""}, {}}) {
        const ProcessResult result = RunProcess(command, 1000);
        EXPECT_FALSE(result.started);
        EXPECT_FALSE(result.ended);
        EXPECT_EQ(result.exitCode, -1);
    }
}

TEST(RunProcess, HandsArgumentsOverAsTheyAre) {
    const TemporaryFolder folder;
    const std::string out = folder / "out";
    const std::string argument = "two words \"'$HOME`\\ 写真\xFF*";
    ASSERT_EQ(RunProcess({"sh", "-c", "printf %s \"$1\" > \"$2\"", "sh", argument, out}, 60'000).exitCode, 0);
    EXPECT_EQ(files::ReadWholeFile(out), argument);
}

TEST(RunProcess, ClosesInputAndOutput) {
    testing::internal::CaptureStdout();
    // Reading gives the end at once; what is written goes nowhere.
    const ProcessResult result = RunProcess({"sh", "-c", "cat; echo visible"}, 60'000);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(RunProcess, EndsAProgramWhoseTimeIsOver) {
    const auto start = SteadyClock::now();
    const ProcessResult result = RunProcess({"sleep", "1000"}, 50);
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.ended);
    EXPECT_EQ(result.exitCode, -1);
    EXPECT_GE(SteadyClock::now() - start, std::chrono::milliseconds(50));
    EXPECT_LT(SteadyClock::now() - start, std::chrono::seconds(30));
}

TEST(RunProcess, EndsWhatTheProgramStartedToo) {
    const TemporaryFolder folder;
    const std::string file = folder / "id";
    const ProcessResult result = RunProcess(
        {"sh", "-c", "sleep 1000 & echo $! > \"$1.new\"; mv \"$1.new\" \"$1\"; wait", "sh", file}, 2000);
    EXPECT_FALSE(result.ended);
    const auto content = files::ReadWholeFile(file);
    ASSERT_TRUE(content) << "the shell had time to start it";
    const std::string id = content->substr(0, content->find('\n'));
    // Gone, or dead and not yet waited for by its new parent.
    EXPECT_TRUE(Eventually([&] {
        const auto status = files::ReadWholeFile("/proc/" + id + "/stat");
        return !status || status->find(") Z") != std::string::npos;
    }));
}

TEST(RunProcess, ReachesTheProgramWithOrdinarySignals) {
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    const ProcessResult result = RunProcess({"sh", "-c", "kill -PIPE $$"}, 60'000);
    std::signal(SIGPIPE, old);
    EXPECT_EQ(result.exitCode, 128 + SIGPIPE);
}

TEST(StartProcess, DoesNotWait) {
    const TemporaryFolder folder;
    const std::string gate = folder / "gate", done = folder / "done";
    ASSERT_TRUE(
        StartProcess({"sh", "-c", "until [ -e \"$1\" ]; do sleep 0.01; done; : > \"$2\"", "sh", gate, done}));
    EXPECT_FALSE(files::Exists(done));
    folder.Add("gate");
    EXPECT_TRUE(Eventually([&] { return files::Exists(done); }));
}

TEST(StartProcess, LeavesNoDeadProcessBehind) {
    const TemporaryFolder folder;
    const std::string file = folder / "id";
    ASSERT_TRUE(StartProcess({"sh", "-c", "echo $$ > \"$1.new\"; mv \"$1.new\" \"$1\"", "sh", file}));
    ASSERT_TRUE(Eventually([&] { return files::Exists(file); }));
    const auto content = files::ReadWholeFile(file);
    const std::string id = content->substr(0, content->find('\n'));
    EXPECT_TRUE(Eventually([&] { return !files::Exists("/proc/" + id); }));
}

TEST(StartProcess, FailsForWhatIsNotThere) {
    EXPECT_FALSE(StartProcess({"kalmora-no-such-program"}));
    EXPECT_FALSE(StartProcess({}));
}

}  // namespace
}  // namespace kalmora
