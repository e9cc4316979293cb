// The two threads that the first beats start: the scan of all dates, and the warming of the latest indexes.
#pragma once

#include "app/services.h"

namespace kalmora {

void StartInitialScan();
// The updates outlive the thread.
void StartIndexPreload(IndexUpdates& indexUpdates);

}  // namespace kalmora
