// The flat arrays in which a key press finds its command: one a list, laid next to each other.
//
// A slot is (shift + 2 x (alt + 2 x ctrl)) x 55 + key. There are 57 keys in a row of 55, and that is meant:
// HOME and END of a row share the slots of A and B of the next row, and the last row runs two slots past its
// array, into the array that follows (slide show, main, editor, two spare slots). All of it is one block of
// memory made for that, so that an overrun lands where it always did.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/commands.h"
#include "input/shortcut.h"

namespace kalmora {

class KeySlots {
public:
    static constexpr int kRowLength = 55;
    static constexpr int kRows = 8;
    static constexpr int kArrayLength = kRows * kRowLength;
    static constexpr int kOverrun = kKeyCount - kRowLength;

    static constexpr int SlotOf(const Shortcut& press) {
        return (press.shift + 2 * (press.alt + 2 * press.ctrl)) * kRowLength + press.key;
    }

    // The command in a slot of the list's array, 0 for none and for a slot outside of all the arrays.
    int At(KeyContext context, int slot) const;
    // Nothing is done for a slot outside of all the arrays.
    void Set(KeyContext context, int slot, int command);
    // Empties 57 slots of each row, and so the first two slots of the array that follows too.
    void Clear(KeyContext context);

private:
    std::array<std::int32_t, kKeyContextCount * kArrayLength + kOverrun> commands_{};
};

}  // namespace kalmora
