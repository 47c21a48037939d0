#include "output/curvestyles.h"

#include <cmath>
#include <cstddef>
#include <iterator>

namespace quorvanta {

CurveStyles ChosenCurveStyles = CurveStyles::Colours;

namespace {

constexpr i16 SafeColours[] = {16, 17, 18, 19, 0, 20, 21};
constexpr f64 MarkRadius = 0.045; // inches
constexpr f64 MarkDistance = 0.4;

// Strokes of the marks, in radii.
using Strokes = std::vector<std::vector<Point>>;

std::vector<Point> Polygon(int corners, f64 firstAngle) {
    constexpr f64 pi = 3.14159265358979324;
    std::vector<Point> points;
    for (int k = 0; k <= corners; ++k) {
        const f64 angle = firstAngle + 2 * pi * k / corners;
        points.push_back({std::cos(angle), std::sin(angle)});
    }
    return points;
}

const std::vector<Strokes>& Marks() {
    constexpr f64 quarter = 1.57079632679489662; // of a turn
    constexpr f64 d = 0.8;
    static const std::vector<Strokes> marks = {{Polygon(16, 0)}, // a circle
                                               {{{-d, -d}, {d, -d}, {d, d}, {-d, d}, {-d, -d}}},
                                               {Polygon(3, -quarter)}, // a triangle on its side
                                               {{{-d, -d}, {d, d}}, {{-d, d}, {d, -d}}}, // a cross
                                               {Polygon(4, 0)}, // a square on its corner
                                               {{{-1, 0}, {1, 0}}, {{0, -1}, {0, 1}}}, // a plus
                                               {Polygon(3, quarter)}}; // a triangle on its corner
    return marks;
}

} // namespace

i16 SafeColour(int j) {
    return SafeColours[static_cast<std::size_t>(j - 1) % std::size(SafeColours)];
}

void DrawCurveMark(Surface& surface, int j, Point at) {
    for (const auto& stroke : Marks()[static_cast<std::size_t>(j - 1) % Marks().size()]) {
        std::vector<Point> points;
        for (const Point& point : stroke)
            points.push_back({at.X + MarkRadius * point.X, at.Y + MarkRadius * point.Y});
        surface.Polyline(points);
    }
}

std::vector<Point> CurveMarks(std::span<const Point> line, int j) {
    std::vector<Point> marks;
    // A line of many points has its first mark a little farther on than the line before it.
    f64 room = MarkDistance / 2 * ((j - 1) % 3);
    for (std::size_t k = 0; k < line.size(); ++k) {
        const f64 step =
            k == 0 ? 0 : std::hypot(line[k].X - line[k - 1].X, line[k].Y - line[k - 1].Y);
        room -= step;
        const bool isSparse = step >= MarkDistance;
        if (room <= 0 || isSparse || line.size() <= 3) {
            marks.push_back(line[k]);
            room = MarkDistance;
        }
    }
    return marks;
}

} // namespace quorvanta
