// Work that the shell does for commands and events behind one door each, so that a test can take its
// place. GUI thread, but where it says otherwise.
#pragma once

#include <string>

#include "media/estimation.h"
#include "platform/drop_event.h"

namespace kalmora {

class Importer {
public:
    virtual ~Importer() = default;
    // Asks from where and how, and starts an import in the background; reports a running one.
    virtual void AskAndImport() = 0;
    // Takes files that were dropped on the main window. True when what it shows has changed.
    virtual bool ImportDropped(const DropEvent& drop) = 0;
};

class SearchQuestion {
public:
    virtual ~SearchQuestion() = default;
    // Asks for a query and puts it in force. True when a result is to be shown.
    virtual bool Ask() = 0;
};

class IndexUpdates {
public:
    virtual ~IndexUpdates() = default;
    virtual void Start(int yearTimes100PlusMonth) = 0;           // in the background
    virtual double SecondsSinceUpdate(int year, int month) = 0;  // 360000: never
    virtual void Preload() = 0;                                  // on the calling thread, which is its own
};

class PhotoRater {
public:
    virtual ~PhotoRater() = default;
    // Rates the object of the file in the view, or one made for it. False when nothing could be written.
    virtual bool Rate(const std::string& path, EstimateType type) = 0;
};

}  // namespace kalmora
