#include "app/connect_index.h"

#include "index/index_manager.h"
#include "index/index_progress.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

void ConnectIndex() {
    OnProgress = ShowProgress;
    OnUpdateProgress = [](double ratio) { ProgressStripeDark(ratio >= 1 ? kStripeFinished : ratio); };
    TheDateTree().onProgress = [](double ratio) { ShowProgress(ratio, "Counting"); };
    TheDateTree().onDayPicked = [] {
        if (Window* window = MainWindow()) window->Invalidate();
    };
    // Now, while nobody else runs: the roots of the start are the roots of the run.
    MainIndex();
    OtherIndex();
}

}  // namespace kalmora
