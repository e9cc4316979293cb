// The music of the period in view.
#pragma once

namespace kalmora {

struct CalendarStore;

// When the piece being played does not belong to the period, another one is picked, and played when sound is
// on. Any thread.
enum class OldMusic { Stop, Pause };
void CheckMusic(CalendarStore& calendar, OldMusic oldMusic);

}  // namespace kalmora
