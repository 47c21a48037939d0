// What outputs are drawn on: the screen, a printer's page, a bitmap. One routine draws on all.
#pragma once

#include "core/types.h"

#include <span>
#include <string>
#include <string_view>

namespace quorvanta {

struct Point {
    f64 X = 0;
    f64 Y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Font {
    std::string Name;
    f64 Size = 9; // points
    bool Bold = false;
};

// Line styles, in the order in which curves take them.
inline constexpr i16 SolidLine = 0;
inline constexpr i16 DashedLine = 1;
inline constexpr i16 DottedLine = 2;
inline constexpr i16 DashDotLine = 3;
inline constexpr i16 DashDotDotLine = 4;

struct Pen {
    // Of the table of 16: 0 black, 1 blue, 2 green, 3 cyan, 4 red, ... 15 white. From 16 to 21
    // those of the safe styles: blue, vermillion, bluish green, reddish purple, orange, sky blue.
    i16 Colour = 0;
    i16 Style = SolidLine;
    f64 Width = 1; // half points
};

// All lengths are inches, from the upper left corner. Text and pen of colour 0 have the colour of
// the surface's own ink, which on a dark screen is light.
class Surface {
  public:
    virtual ~Surface() = default;

    virtual f64 ScaleWidth() const = 0;
    virtual f64 ScaleHeight() const = 0;
    virtual f64 PixelsPerInch() const = 0;
    virtual bool IsPrinter() const = 0;

    virtual void SetFont(const Font& font) = 0;
    virtual f64 TextWidth(std::string_view text) const = 0;
    virtual f64 TextHeight() const = 0; // of a line
    virtual void Text(Point upperLeft, std::string_view text) = 0;

    virtual void SetPen(const Pen& pen) = 0;
    virtual void Polyline(std::span<const Point> points) = 0;
    void Line(Point from, Point to) {
        const Point points[] = {from, to};
        Polyline(points);
    }

    // What follows is drawn on a new page; on a surface without pages, further on.
    virtual bool HasPages() const { return false; }
    virtual void NewPage() {}
};

} // namespace quorvanta
