// Fills the viewer of the day, or of the scatter, with the objects of a period.
#pragma once

#include <string>

#include "base/dates.h"
#include "base/stop_token.h"
#include "store/data_folder.h"
#include "views/model/load_request.h"
#include "views/model/object_list.h"

namespace kalmora {

struct CalendarStore;

// On the load's worker, with the object gate held; `stop` is tested between any two entries. False when
// stopped.
bool LoadDayViewer(CalendarStore& calendar, const LoadRequest& request, const StopToken& stop);
bool LoadAllViewer(CalendarStore& calendar, const LoadRequest& request, const StopToken& stop);

// ---- their parts: what lies below one data folder joins the list
void GatherDay(CalendarStore& calendar, const std::string& root, const CalendarDate& day,
               const LoadRequest& request, const StopToken& stop, ObjectList& list);
// A month of the request's year.
void GatherMonth(CalendarStore& calendar, const std::string& root, int month, const LoadRequest& request,
                 const StopToken& stop, ObjectList& list);
// Calls `gather` with the data folder, then with the second one where the settings name one.
template <typename GatherFrom>
void ForEachRoot(GatherFrom gather) {
    gather(MainRoot());
    if (const std::string other = OtherRoot(); !other.empty()) gather(other);
}

}  // namespace kalmora
