#include "app/connect_index.h"

#include "index/index_manager.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"
#include "views/paint/progress_stripe.h"

namespace kalmora {

namespace {

class WindowProgress final : public ProgressListener, public DateTreeListener {
public:
    void OnProgress(double ratio, const std::string& text) override { ShowProgress(ratio, text); }
    void OnUpdateProgress(double ratio) override { ProgressStripeDark(ratio >= 1 ? kStripeFinished : ratio); }
    void OnScanProgress(double ratio) override { ShowProgress(ratio, "Counting"); }
    void OnDayPicked() override {
        if (Window* window = MainWindow()) window->Invalidate();
    }
};

// Never destroyed: workers may outlive main.
struct Desktop {
    WindowProgress progress;
    StopSource stop;
    WorkContext context;
};

Desktop& TheDesktop() {
    static auto* const desktop = new Desktop;
    return *desktop;
}

}  // namespace

const WorkContext& DesktopWork() { return TheDesktop().context; }

void StopDesktopWork() { TheDesktop().stop.RequestStop(); }

void ConnectIndex() {
    Desktop& desktop = TheDesktop();
    desktop.stop = StopSource();
    desktop.context = {desktop.stop.Token(), &desktop.progress};
    ResetIndexes(desktop.context);
    ResetDateTree(desktop.progress);
    // Now, while no worker runs: the roots of the start are the roots of the run.
    MainIndex();
    OtherIndex();
}

}  // namespace kalmora
