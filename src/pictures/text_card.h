// A text on the calendar: the card with its first lines. The head of the text picks the card's colours.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "platform/canvas.h"
#include "state/app_state.h"

namespace kalmora {

// Cards of objects match a head in any case; frames in the cells of a grid want it exactly.
enum class HeadMatch { IgnoreCase, Exact };

// "[Schedule]", "[Memo]", "[ToDo]", "http" or "[Web]"; any other text that begins with "[" looks like a
// schedule (so "[Diary]" and "[Mail]" do), everything else is normal. Nothing may come before the head.
TextKind TextKindOf(std::string_view text, HeadMatch match);

inline constexpr std::size_t kCardTextBytes = 4095;  // of the file, for an object's card
inline constexpr std::size_t kCellTextBytes = 1000;  // of the file, for a frame in a cell

// The text in the first `bytes` of a file of any encoding, as UTF-8 with line feeds. It ends at a zero
// byte, and no character is cut in two. Empty optional when the file cannot be opened.
std::optional<std::string> ReadTextHead(const std::string& path, std::size_t bytes);

// The card: a rectangle in the kind's colours over the area, the text in the mini font 2 pixels inside. The
// text leaves `corner`, from the area's upper left, to what is drawn there.
void DrawTextCard(Canvas& canvas, const Rect& area, std::string_view utf8, TextKind kind, Size corner = {});
// The same in the colours of a file that is no text.
void DrawPathCard(Canvas& canvas, const Rect& area, std::string_view path, Size corner = {});

}  // namespace kalmora
