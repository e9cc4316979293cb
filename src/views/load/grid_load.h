// Fills a grid, the year or the month in view, by a worker of its own.
#pragma once

#include <string>

#include "state/period.h"
#include "views/load/check_music.h"
#include "views/load/month_loader.h"
#include "views/model/load_request.h"

namespace kalmora {

// What the year and the month do differently. On the worker's thread; it lives as long as the program.
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
void ClearGrid(const Period& period);

// Starts the worker, which takes the object gate over and opens it when it ends. When none can be started the
// gate is opened at once.
void StartGridLoad(const LoadRequest& request, const GridWork& work);

}  // namespace kalmora
