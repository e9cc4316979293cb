#include "views/hooks.h"

namespace kalmora {

ViewHooks& Hooks() {
    static ViewHooks* const hooks = new ViewHooks;
    return *hooks;
}

}  // namespace kalmora
