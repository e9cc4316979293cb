// RunFlags: what is going on in this run, and the locks of the object lists. None of it is saved. Any thread
// reads and writes what is atomic; the rest says whose it is.
#pragma once

#include <atomic>
#include <string>

#include "base/ticket_lock.h"
#include "base/work_gate.h"
#include "state/shared_values.h"

namespace kalmora {

struct RunFlags {
    SharedFlag MainWindowVisible = 0;  // the heartbeat does nothing while it is clear
    SharedFlag Paused = 0;             // loaders sleep in 500 ms steps while it is set
    SharedFlag IndexingEnabled = 0;    // the indexing button; 0 at every start
    SharedFlag InitialScanRunning = 1;
    SharedFlag FirstStartPending = 1;
    SharedFlag FirstLoadDone = 0;
    SharedFlag IndexPreloadRunning = 0;
    SharedFlag BackgroundUpdateRunning = 0;
    SharedFlag SlideOpenedByCommand = 0;
    SharedFlag DateScanRunning = 0;
    SharedFlag ImportRunning = 0;
    SharedInt ImportTotal = 0;       // files that the running or last import found
    SharedInt ImportDone = 0;        // and how many of them it has handled
    SharedFlag ImportCommentOn = 0;  // the import dialog's box for a comment
    std::string ImportComment;       // and its text; GUI thread
    SharedInt TicksInView = 0;
    std::atomic<double> LastActivity = 0;   // uptime in ms at the last input
    std::atomic<double> LastTickClock = 0;  // uptime in ms of the last accepted heartbeat
    int LastCursorX = 0, LastCursorY = 0;   // heartbeat thread only
    SharedFlag HeartbeatBusy = 0;
    SharedInt DayRing = 0, AllRing = 0;  // 0 to 12
    SharedFlag FirstPaintDone = 0;

    // ---- locks of the object lists
    WorkGate ObjectGate;     // who loads or draws the objects
    TicketLock ObjectQueue;  // short critical sections on the lists
    TicketLock LoaderQueue;  // left by the loader thread when it ends
};

}  // namespace kalmora
