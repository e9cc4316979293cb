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
    const auto& [year, month, day] = in.period.date;
    switch (in.period.level) {
        case Level::Year:
            caption.label = in.japanese ? Format("%d年", year) : Format("%d", year);
            period = Format("[%4d]", year);
            break;
        case Level::Month:
            caption.label =
                in.japanese ? Format("%d年%02d月", year, month) : Format("%s %d", MonthName(month), year);
            period = Format("[%4d/%02d]", year, month);
            break;
        default: {
            const int column = (DayOfWeek(year, month, day) + 6) % 7;
            const char* weekday = WeekdayName(column, in.japanese);
            caption.label = in.japanese ? Format("%d年%02d月%02d日(%s)", year, month, day, weekday)
                                        : Format("%s, %d %s %d", weekday, day, MonthName(month), year);
            caption.labelColor = column == 5 ? kBlue : column == 6 ? kRed : kBlack;
            period = Format("[%4d/%02d/%02d]", year, month, day);
            break;
        }
    }
    caption.title = "Kalmora " + period;
    if (in.showFolder) caption.title += " (" + in.folder + ")";
    if (in.searchMode) caption.title += " Searched by " + in.query;
    return caption;
}

}  // namespace kalmora
