#include "views/model/caption.h"

#include "base/format.h"
#include "platform/clock.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

const char* MonthName(int month) {
    static const char* const names[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return month >= 1 && month <= 12 ? names[month - 1] : "";
}

// column: 0 Monday to 6 Sunday
const char* WeekdayName(int column, bool japanese) {
    static const char* const english[7] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    static const char* const kanji[7] = {"月", "火", "水", "木", "金", "土", "日"};
    return japanese ? kanji[column] : english[column];
}

constexpr Color kBlack{0, 0, 0};
constexpr Color kBlue = ColorFromBgr(0xFF0000);
constexpr Color kRed = ColorFromBgr(0x0000FF);

}  // namespace

Caption MakeCaption(const CaptionInput& in) {
    Caption caption;
    caption.labelColor = kBlack;
    std::string period;
    switch (in.viewType) {
        case kYearly:
            caption.label = in.japanese ? Format("%d年", in.year) : Format("%d", in.year);
            period = Format("[%4d]", in.year);
            break;
        case kMonthly:
            caption.label = in.japanese ? Format("%d年%02d月", in.year, in.month)
                                        : Format("%s %d", MonthName(in.month), in.year);
            period = Format("[%4d/%02d]", in.year, in.month);
            break;
        default: {
            const int column = (DayOfWeek(in.year, in.month, in.day) + 6) % 7;
            const char* weekday = WeekdayName(column, in.japanese);
            caption.label = in.japanese
                                ? Format("%d年%02d月%02d日(%s)", in.year, in.month, in.day, weekday)
                                : Format("%s, %d %s %d", weekday, in.day, MonthName(in.month), in.year);
            caption.labelColor = column == 5 ? kBlue : column == 6 ? kRed : kBlack;
            period = Format("[%4d/%02d/%02d]", in.year, in.month, in.day);
            break;
        }
    }
    caption.title = "Kalmora " + period;
    if (in.showFolder) caption.title += " (" + in.folder + ")";
    if (in.searchMode) caption.title += " Searched by " + in.query;
    return caption;
}

std::string LevelLabel(int viewType, bool japanese) {
    if (viewType == kDaily) return japanese ? "月表示" : "Monthly";
    if (viewType == kMonthly) return japanese ? "年表示" : "Yearly";
    return {};
}

}  // namespace kalmora
