// A canvas that remembers what was asked of it.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"

namespace kalmora::test {

class RecordingCanvas : public Canvas {
public:
    struct Card {
        Rect area;
        Color fill, frame;
    };
    struct Block {
        Rect area;
        std::string text;
        Font font;
        Color color;
        Size corner;
    };
    struct Picture {
        Rect area;
        Size decoded;
    };

    explicit RecordingCanvas(double scale = 1.0) : scale_(scale) {}

    Size GetSize() const override { return {2000, 2000}; }
    double Scale() const override { return scale_; }
    void FillRect(const Rect&, Color) override {}
    void Rectangle(const Rect& area, Color fill, Color frame) override {
        cards.push_back({area, fill, frame});
    }
    void RoundedRectangle(const Rect&, int, Color, Color) override {}
    void Line(Point, Point, Color) override {}
    void Text(Point, std::string_view, const Font&, Color) override {}
    void TextBlock(const Rect& area, std::string_view utf8, const Font& font, Color color,
                   Size corner) override {
        blocks.push_back({area, std::string(utf8), font, color, corner});
    }
    void DrawImage(const Rect& area, const Image& image) override {
        pictures.push_back({area, image.GetSize()});
    }
    void Blit(const Rect&, const Surface&, Point) override {}

    bool IsEmpty() const { return cards.empty() && blocks.empty() && pictures.empty(); }

    std::vector<Card> cards;
    std::vector<Block> blocks;
    std::vector<Picture> pictures;

private:
    double scale_;
};

}  // namespace kalmora::test
