#include "views/paint/missing_folder.h"

#include <algorithm>
#include <atomic>
#include <string>

#include "platform/files.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr int kWidest = 640;    // pixels
constexpr int kMargin = 20;     // to the window's edge, at least
constexpr int kCardInset = 12;  // between the frame and the text
constexpr int kLines = 5;       // room for a long path

std::atomic<DataFolder> lastSeen{DataFolder::There};

std::string Words() {
    const std::string path = text::ToDisplay(MainRoot());
    if (State().settings.UseJapanese)
        return "データフォルダが見つかりません\n" + path + "\nドライブがつながると表示されます";
    return "The data folder is not there:\n" + path + "\nIt is shown as soon as its drive is back.";
}

}  // namespace

DataFolder LookForDataFolder() {
    const DataFolder found = files::IsFolder(MainRoot()) ? DataFolder::There : DataFolder::Away;
    lastSeen = found;
    return found;
}

DataFolder LastSeenDataFolder() { return lastSeen; }

void DrawMissingFolder(Canvas& canvas, Size client) {
    const AppState& state = State();
    const Font font{state.settings.DayFontFace, state.settings.DayFontHeight};
    const int lineHeight = MeasureText("Ay", font).height;
    const int width = std::min(kWidest, client.width - 2 * kMargin);
    const int height = std::min(kLines * lineHeight + 2 * kCardInset, client.height - 2 * kMargin);
    if (width <= 2 * kCardInset || height <= 2 * kCardInset) return;
    const Rect card{(client.width - width) / 2, (client.height - height) / 2, width, height};
    const TextColors& colors = state.settings.TextStyles[static_cast<std::size_t>(TextKind::Memo)];
    canvas.Rectangle(card, colors.back, colors.frame);
    canvas.TextBlock(
        {card.x + kCardInset, card.y + kCardInset, width - 2 * kCardInset, height - 2 * kCardInset}, Words(),
        font, colors.font);
}

}  // namespace kalmora
