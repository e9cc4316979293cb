// The painter of a file as a picture, at every place: in a cell, on a day line, in the scatter, in a
// slide. An image is drawn from its file, a movie as its still with the movie mark over it, anything else as
// a card.
//
// Two steps: PreparePicture reads and decodes and may be slow, any thread may do it; DrawPicture reads
// nothing but drawings of the program's own and is quick enough for a window that is held.
#pragma once

#include <cstddef>
#include <string>

#include "base/geometry.h"
#include "pictures/text_card.h"
#include "platform/canvas.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "store/extension_table.h"

namespace kalmora {

// Whether a picture that is not decoded yet is waited for. The GUI thread never waits: it draws the best that
// is in memory and has the place drawn again, properly, by a worker.
enum class Decode { Now, Later };

// How a place shows its content.
struct PaintStyle {
    enum class Fit {
        KeepShape,  // centred in the box, see FitInBox
        Fill        // over the whole box, which has the picture's shape or is meant to stretch it
    };
    enum class SmallPreview {
        IfEnough,  // the embedded thumbnail only where it has the pixels
        IfWanted   // a small picture always from it when the setting UseExifThumbnail is on
    };
    enum class Mark { OwnSize, FitsPicture };          // of a movie
    enum class OtherKinds { CardOfText, CardOfPath };  // what is no picture and no text file
    enum class Edge { None, Light };

    Fit fit = Fit::Fill;
    SmallPreview smallPreview = SmallPreview::IfWanted;
    Mark mark = Mark::OwnSize;
    OtherKinds otherKinds = OtherKinds::CardOfText;
    HeadMatch head = HeadMatch::IgnoreCase;  // which picks a card's colours
    std::size_t textBytes = kCardTextBytes;  // of the file, for a card
    Edge edge = Edge::None;                  // of a picture, inside its border
    Size corner;                             // at the upper left, which a card's text leaves free
};

// A photo on its own, such as a slide: it is given a box of its own shape.
inline constexpr PaintStyle kPhotoStyle{};
// One of the day line or the scatter, where it may lie on another one: the edge tells them apart.
inline constexpr PaintStyle kStrewnStyle = [] {
    PaintStyle style;
    style.edge = PaintStyle::Edge::Light;
    return style;
}();
// A picture in a cell of a grid, or one for a month.
inline constexpr PaintStyle kCellStyle{PaintStyle::Fit::KeepShape,
                                       PaintStyle::SmallPreview::IfEnough,
                                       PaintStyle::Mark::FitsPicture,
                                       PaintStyle::OtherKinds::CardOfPath,
                                       HeadMatch::Exact,
                                       kCellTextBytes,
                                       PaintStyle::Edge::None,
                                       {}};

// What is to be drawn.
struct PictureSource {
    std::string path;
    ObjectKind kind = ObjectKind::Unknown;
    std::string picture;  // of an image or a movie: PictureFileOf; nothing is drawn when it is empty
    Size size;            // of that picture, upright; only Fit::Fill needs it
};

// What DrawPicture needs.
struct PreparedPicture {
    enum class Look { Nothing, Picture, Movie, TextCard, PathCard } look = Look::Nothing;
    Image picture;
    Image mark;        // of a movie
    std::string text;  // of a card
    TextKind textKind = TextKind::Normal;
    bool complete = true;  // false: the picture is not (or only coarsely) in memory yet
};

// The file whose picture is shown: of an image itself, of a movie its still (may be slow), empty for the
// rest.
std::string PictureFileOf(const std::string& path, ObjectKind kind);

// Where a picture of that shape lies in the box: its shape kept, centred; a margin below 3 pixels, or above
// half the box, counts as none.
Rect FitInBox(Size picture, const Rect& box);
// Device pixels that a box of that logical size has; what Fit::KeepShape has decoded.
Size BoxPixels(Size box, double scale);

// Nothing when the file or its picture cannot be read. `box` is the size in which it will be drawn, `scale`
// that of the surface.
PreparedPicture PreparePicture(const PictureSource& source, Size box, double scale, const PaintStyle& style,
                               Decode decode = Decode::Now);
// Where DrawPicture draws a picture or movie; empty for all else.
Rect PictureArea(const Rect& box, const PreparedPicture& prepared, const PaintStyle& style);
// False when there is nothing to draw.
bool DrawPicture(Canvas& canvas, const Rect& box, const PreparedPicture& prepared, const PaintStyle& style);

}  // namespace kalmora
