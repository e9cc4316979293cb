#include "app/app_hooks.h"

namespace kalmora {

AppHooks& Shell() {
    static AppHooks* const hooks = new AppHooks;
    return *hooks;
}

}  // namespace kalmora
