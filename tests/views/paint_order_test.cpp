// Two full paints at the same time.
#include <future>

#include "view_fixture.h"
#include "views/control/month_calendar.h"
#include "views/paint/paint_base.h"

namespace kalmora {
namespace {

constexpr Color kOld{200, 0, 0}, kNew{0, 0, 200};

// The first paint takes as long as the test wants.
class SlowFirstPaint : public MonthCalendar {
public:
    using MonthCalendar::MonthCalendar;
    void Paint(Canvas& canvas, const Period&, Size client, double, Decode) override {
        const bool isFirst = !paints_++;
        canvas.FillRect({0, 0, client.width, client.height}, isFirst ? kOld : kNew);
        if (!isFirst) return;
        begun.set_value();
        mayEnd.get_future().wait();
    }
    std::promise<void> begun, mayEnd;

private:
    std::atomic<int> paints_{0};
};

class PaintOrderTest : public ViewTest {};

TEST_F(PaintOrderTest, PaintThatBeganEarlierDoesNotCoverTheOneThatBeganLater) {
    ShowMonth(2008, 11);
    OpenWindow({400, 300});
    ASSERT_TRUE(WaitUntilIdle());
    auto slowView = std::make_unique<SlowFirstPaint>(*calendar_);
    SlowFirstPaint& view = *slowView;
    calendar_->monthView = std::move(slowView);
    std::thread slow([this] { PaintBase(*calendar_); });
    view.begun.get_future().wait();
    PaintBase(*calendar_);
    EXPECT_EQ(PixelAt(200, 100), kNew);
    view.mayEnd.set_value();
    slow.join();
    EXPECT_EQ(PixelAt(200, 100), kNew);
}

}  // namespace
}  // namespace kalmora
