// The black bars with which cameras fill their thumbnails up to the usual shape.
#pragma once

#include <QImage>

namespace kalmora::qt {

enum class Edge { Left, Top, Right, Bottom };

// How many lines, counted from the edge, are black throughout; at most half of them. A little light is black
// too: the codec blurs.
int BlackLines(const QImage& image, Edge edge);

// How many lines at the edge look like a bar: black ones that end at a line of light, with the line in which
// they end. 0 where the darkness
// fades into the picture, which is then dark itself. Also of a picture that has a black frame of its own:
// only the picture of which this is the thumbnail can say which of the two it is.
int BarLines(const QImage& image, Edge edge);

// Whether there is light in the outermost line at the edge.
bool IsLightAt(const QImage& image, Edge edge);

}  // namespace kalmora::qt
