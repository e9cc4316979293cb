// The music of the period in view.
#pragma once

namespace kalmora {

// When the piece being played does not belong to the period, another one is picked, and played when sound is
// on. Any thread.
enum class OldMusic { Stop, Pause };
void CheckMusic(OldMusic oldMusic);

}  // namespace kalmora
