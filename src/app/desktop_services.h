// The services of the desktop program (services.h), each done by the room that it belongs to.
#pragma once

#include "app/services.h"

namespace kalmora {

struct CalendarStore;

class DesktopImporter : public Importer {
public:
    explicit DesktopImporter(CalendarStore& calendar) : calendar_(calendar) {}
    void AskAndImport() override;
    bool ImportDropped(const DropEvent& drop) override;

private:
    CalendarStore& calendar_;
};

class DesktopSearchQuestion : public SearchQuestion {
public:
    explicit DesktopSearchQuestion(CalendarStore& calendar) : calendar_(calendar) {}
    bool Ask() override;

private:
    CalendarStore& calendar_;
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
    explicit DesktopPhotoRater(CalendarStore& calendar) : calendar_(calendar) {}
    bool Rate(const std::string& path, EstimateType type) override;

private:
    CalendarStore& calendar_;
};

}  // namespace kalmora
