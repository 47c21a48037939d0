// A surface that notes what is drawn on it. Every character is as wide as every other, so that
// places can be worked out by hand.
#pragma once

#include "output/surface.h"

#include <string>
#include <vector>

namespace quorvanta::checks {

class RecordingSurface : public Surface {
  public:
    // At 9 points a character is 0.075 inches wide and a line 0.15 inches high.
    static constexpr f64 CharacterWidth = 0.075;
    static constexpr f64 LineHeight = 0.15;

    RecordingSurface(f64 width, f64 height) : width_(width), height_(height) {}

    struct DrawnText {
        Point At;
        std::string Text;
        f64 Width = 0;
        f64 Height = 0;
        int Page = 1;
    };
    struct DrawnLine {
        Pen With;
        std::vector<Point> Points;
        int Page = 1;
    };

    std::vector<DrawnText> Texts;
    std::vector<DrawnLine> Lines;
    Pen LastPen;
    Font LastFont;
    f64 Resolution = 96;
    bool Printer = false;
    bool Pages = false;
    int Page = 1;

    // The first text that reads so; nullptr if there is none.
    const DrawnText* Find(const std::string& text) const {
        for (const DrawnText& drawn : Texts)
            if (drawn.Text == text)
                return &drawn;
        return nullptr;
    }

    f64 ScaleWidth() const override { return width_; }
    f64 ScaleHeight() const override { return height_; }
    f64 PixelsPerInch() const override { return Resolution; }
    bool IsPrinter() const override { return Printer; }
    void SetFont(const Font& font) override { LastFont = font; }
    f64 TextWidth(std::string_view text) const override {
        f64 characters = 0;
        for (const char c : text)
            characters += (static_cast<unsigned char>(c) & 0xC0U) != 0x80 ? 1 : 0;
        return characters * CharacterWidth * LastFont.Size / 9;
    }
    f64 TextHeight() const override { return LineHeight * LastFont.Size / 9; }
    void Text(Point upperLeft, std::string_view text) override {
        Texts.push_back({upperLeft, std::string(text), TextWidth(text), TextHeight(), Page});
    }
    void SetPen(const Pen& pen) override { LastPen = pen; }
    void Polyline(std::span<const Point> points) override {
        Lines.push_back({LastPen, {points.begin(), points.end()}, Page});
    }
    bool HasPages() const override { return Pages; }
    void NewPage() override { ++Page; }

  private:
    f64 width_;
    f64 height_;
};

} // namespace quorvanta::checks
