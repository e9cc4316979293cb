// The two threads that the first beats start: the scan of all dates, and the warming of the latest indexes.
#pragma once

namespace kalmora {

void StartInitialScan();
void StartIndexPreload();

}  // namespace kalmora
