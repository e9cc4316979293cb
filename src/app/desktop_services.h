// The services of the desktop program (services.h), each done by the room that it belongs to.
#pragma once

#include "app/services.h"

namespace kalmora {

class DesktopImporter : public Importer {
public:
    void AskAndImport() override;
    bool ImportDropped(const DropEvent& drop) override;
};

class DesktopSearchQuestion : public SearchQuestion {
public:
    bool Ask() override;
};

class DesktopIndexUpdates : public IndexUpdates {
public:
    void Start(int yearTimes100PlusMonth) override;
    double SecondsSinceUpdate(int year, int month) override;
    void Preload() override;
};

// Rates on a thread of its own while the window's events are served.
class DesktopPhotoRater : public PhotoRater {
public:
    bool Rate(const std::string& path, EstimateType type) override;
};

}  // namespace kalmora
