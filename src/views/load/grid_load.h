// Fills a grid, the year or the month in view.
#pragma once

#include <string>

#include "state/period.h"
#include "views/load/check_music.h"
#include "views/load/month_loader.h"
#include "views/model/load_request.h"

namespace kalmora {

struct CalendarStore;

// What the year and the month do differently. On the worker's thread; it lives as long as the store.
class GridWork {
public:
    virtual ~GridWork() = default;
    virtual void FindBackgrounds(const std::string& root, const Period& period,
                                 const StopToken& stop) const = 0;
    virtual OldMusic AtOldMusic() const = 0;
    // False when stopped.
    virtual bool LoadFolders(const LoadPass& pass, const StopToken& stop) const = 0;
};

// Empties the slot of the period's year, or of its month.
void ClearGrid(CalendarStore& calendar, const Period& period);

// Fills the grid, on the load's worker. False when stopped.
bool LoadGrid(CalendarStore& calendar, const LoadRequest& request, const GridWork& work,
              const StopToken& stop);

}  // namespace kalmora
