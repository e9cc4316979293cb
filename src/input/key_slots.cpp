#include "input/key_slots.h"

namespace kalmora {

namespace {

int ArrayStart(KeyContext context) {
    switch (context) {
        case KeyContext::SlideShow:
            return 0;
        case KeyContext::Main:
            return KeySlots::kArrayLength;
        case KeyContext::Editor:
            return 2 * KeySlots::kArrayLength;
    }
    return 0;
}

}  // namespace

int KeySlots::At(KeyContext context, int slot) const {
    const int place = ArrayStart(context) + slot;
    if (place < 0 || place >= static_cast<int>(commands_.size())) return 0;
    return commands_[static_cast<std::size_t>(place)];
}

void KeySlots::Set(KeyContext context, int slot, int command) {
    const int place = ArrayStart(context) + slot;
    if (place < 0 || place >= static_cast<int>(commands_.size())) return;
    commands_[static_cast<std::size_t>(place)] = command;
}

void KeySlots::Clear(KeyContext context) {
    for (int slot = 0; slot < kArrayLength + kOverrun; ++slot) Set(context, slot, 0);
}

}  // namespace kalmora
