// A dialog in a second language: the same controls in the same places, with other texts.
#pragma once

#include <array>
#include <cstddef>

#include "platform/dialog.h"

namespace kalmora {

// texts: one a control, in the order of the table; they live as long as the program.
template <std::size_t N>
consteval std::array<Control, N> Translated(const Control (&controls)[N], const char* const (&texts)[N]) {
    std::array<Control, N> translated{};
    for (std::size_t i = 0; i < N; ++i) {
        translated[i] = controls[i];
        translated[i].text = texts[i];
    }
    return translated;
}

}  // namespace kalmora
