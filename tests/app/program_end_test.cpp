// The bound of the program's end, with what hangs in its way.
#include "app/program_end.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <future>

namespace kalmora {
namespace {

constexpr int kSoonMs = 400, kNeverMs = 60'000;
constexpr std::chrono::seconds kPatience{30};

// What the two steps did; the threads that still run one of them keep it.
struct Seen {
    std::promise<void> left;
    std::future<void> whenLeft = left.get_future();
    std::promise<void> mayEnd;
    std::shared_future<void> whenItMayEnd = mayEnd.get_future().share();
    std::atomic<int> saves{0};
};

class ProgramEndTest : public testing::Test {
protected:
    ~ProgramEndTest() override { seen_->mayEnd.set_value(); }
    enum class Disk { Answers, Hangs };
    ProgramEnd::Steps Steps(Disk disk, int longestMs) {
        return {[seen = seen_, disk] {
                    ++seen->saves;
                    if (disk == Disk::Hangs) seen->whenItMayEnd.wait();
                },
                [seen = seen_] { seen->left.set_value(); }, longestMs};
    }
    bool HasLeft(std::chrono::milliseconds time = kPatience) const {
        return seen_->whenLeft.wait_for(time) == std::future_status::ready;
    }
    const std::shared_ptr<Seen> seen_ = std::make_shared<Seen>();
};

TEST_F(ProgramEndTest, ThatHangsIsCutOffAndHasSavedBefore) {
    ProgramEnd end(Steps(Disk::Answers, kSoonMs));
    end.Begin();
    EXPECT_TRUE(HasLeft());
    EXPECT_EQ(seen_->saves, 1);
    EXPECT_EQ(end.MsLeft(), 0);
}

TEST_F(ProgramEndTest, IsCutOffAlsoWhileItsSavingHangs) {
    ProgramEnd end(Steps(Disk::Hangs, kSoonMs));
    EXPECT_FALSE(end.Save());
    EXPECT_TRUE(HasLeft());
    EXPECT_EQ(seen_->saves, 1);
}

TEST_F(ProgramEndTest, SavesOnceAndIsLeftAloneWhenItComes) {
    {
        ProgramEnd end(Steps(Disk::Answers, kNeverMs));
        EXPECT_EQ(end.MsLeft(), kNeverMs);
        end.Begin();
        EXPECT_TRUE(end.Save());
        EXPECT_TRUE(end.Save());
        EXPECT_EQ(seen_->saves, 1);
        EXPECT_GT(end.MsLeft(), kNeverMs / 2);
    }
    EXPECT_FALSE(HasLeft(std::chrono::milliseconds(0)));
}

}  // namespace
}  // namespace kalmora
