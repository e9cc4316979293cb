#include "views/load/check_music.h"

#include <string>

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void CheckMusic(CalendarStore& calendar, OldMusic oldMusic) {
    const ViewPartners& partners = calendar.partners;
    BackgroundSet& backgrounds = calendar.backgrounds;
    if (backgrounds.HasMusic(partners.music.Current())) return;
    backgrounds.PickRandomMusic();
    if (oldMusic == OldMusic::Pause)
        partners.music.Pause();
    else
        partners.music.Stop();
    const std::string next = backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !next.empty()) partners.music.Play(next);
}

}  // namespace kalmora
