#include "state/app_state.h"

namespace kalmora {

AppState& State() {
    static AppState* const state = new AppState;
    return *state;
}

}  // namespace kalmora
