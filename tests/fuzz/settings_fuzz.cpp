// Any bytes as kalmora.ini: reading comes to an end, and what is written then can be read and written again.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "state/app_state.h"
#include "store/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    using namespace kalmora;
    State().settings.ProgramFolder = "/nowhere/home";
    ResetSettingsToDefaults();
    ReadSettingsText({reinterpret_cast<const char*>(bytes), length});
    const std::string first = MakeSettingsText();
    ReadSettingsText(first);
    if (MakeSettingsText().empty()) std::abort();
    return 0;
}
