// MyObject: whatever a view shows and the mouse can hit.
#pragma once

#include <cstdint>

#include "pictures/draw_context.h"
#include "store/extension_table.h"

namespace kalmora {

// The kinds as plain numbers, as objects, indexes and logs carry them.
inline constexpr std::int32_t kKindUnknown = static_cast<std::int32_t>(ObjectKind::Unknown);
inline constexpr std::int32_t kKindText = static_cast<std::int32_t>(ObjectKind::Text);
inline constexpr std::int32_t kKindImage = static_cast<std::int32_t>(ObjectKind::Image);
inline constexpr std::int32_t kKindMusic = static_cast<std::int32_t>(ObjectKind::Music);
inline constexpr std::int32_t kKindMusicList = static_cast<std::int32_t>(ObjectKind::MusicList);
inline constexpr std::int32_t kKindMovie = static_cast<std::int32_t>(ObjectKind::Movie);
inline constexpr std::int32_t kKindShortcut = static_cast<std::int32_t>(ObjectKind::Shortcut);

// One thread at a time.
class MyObject {
public:
    virtual ~MyObject() = default;

    // 0: neither painted nor hit.
    std::int32_t visible = 1;

    // Whether the point, in the pixels of the last paint, lies on the object.
    virtual bool HitTest(int x, int y) const = 0;
    // Paints the object where it stands, in the size that it has.
    virtual void Draw(const DrawContext& context) = 0;
    // Moves the object by the way between the two points; gives the horizontal part of it.
    virtual int Move(int fromX, int fromY, int toX, int toY) = 0;

protected:
    MyObject() = default;
    MyObject(const MyObject&) = default;
    MyObject(MyObject&&) = default;
    MyObject& operator=(const MyObject&) = default;
    MyObject& operator=(MyObject&&) = default;
};

}  // namespace kalmora
