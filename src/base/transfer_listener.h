// TransferListener: who follows a large file on its way, and may end it.
#pragma once

namespace kalmora {

// On the thread that copies or compares.
class TransferListener {
public:
    virtual ~TransferListener() = default;
    // After every 16 MB; `fraction` of the file is done, 0 to 1. False ends it.
    virtual bool OnTransfer(double fraction) = 0;
};

}  // namespace kalmora
