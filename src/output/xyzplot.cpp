#include "output/xyzplot.h"

#include "core/codepage.h"
#include "core/general.h"
#include "core/platform.h"
#include "output/curvestyles.h"
#include "output/format.h"
#include "output/scale.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <vector>

namespace quorvanta {

namespace {

// Inches.
constexpr f64 RightMargin = 0.15;
constexpr f64 TextMargin = 0.1; // between the picture's edge and its texts
constexpr f64 LabelGap = 0.05;  // between a number and its axis
constexpr f64 TickLength = 0.06;
constexpr f64 SampleLength = 0.45; // of a line in the legend

constexpr i16 YSteps = 10;
constexpr i16 MaxXSteps = 20;

struct Rectangle {
    f64 Left = 0;
    f64 Top = 0;
    f64 Right = 0;
    f64 Bottom = 0;

    f64 Width() const { return Right - Left; }
    f64 Height() const { return Bottom - Top; }
};

struct Segment {
    Point From;
    Point To;
};

// The part of a segment inside the rectangle (Y. D. Liang and B. A. Barsky, "A new concept and
// method for line clipping", ACM Transactions on Graphics 3, 1984); nothing if there is none.
std::optional<Segment> Clip(const Segment& segment, const Rectangle& area) {
    const f64 dx = segment.To.X - segment.From.X;
    const f64 dy = segment.To.Y - segment.From.Y;
    const struct {
        f64 Speed;    // towards the outside of one side
        f64 Distance; // to that side
    } sides[] = {{-dx, segment.From.X - area.Left},
                 {dx, area.Right - segment.From.X},
                 {-dy, segment.From.Y - area.Top},
                 {dy, area.Bottom - segment.From.Y}};
    f64 enter = 0;
    f64 leave = 1;
    for (const auto& side : sides) {
        if (side.Speed == 0) {
            if (side.Distance < 0)
                return std::nullopt;
        } else if (side.Speed < 0) {
            enter = MaxOf(enter, side.Distance / side.Speed);
        } else {
            leave = MinOf(leave, side.Distance / side.Speed);
        }
    }
    if (enter > leave)
        return std::nullopt;
    const auto at = [&](f64 t) { return Point{segment.From.X + t * dx, segment.From.Y + t * dy}; };
    return Segment{enter > 0 ? at(enter) : segment.From, leave < 1 ? at(leave) : segment.To};
}

using Lines = std::vector<std::string>;

std::string TickText(const AxisScale& scale, f64 value) {
    return Format(value, scale.Format);
}

std::vector<f64> Ticks(const AxisScale& scale) {
    std::vector<f64> ticks;
    const f64 slack = 1e-4 * scale.Step;
    for (int k = 0;; ++k) {
        const f64 tick = scale.FirstTick + k * scale.Step;
        if (tick > scale.High + slack)
            return ticks;
        ticks.push_back(tick);
    }
}

// Everything that has to be known before the first line is drawn.
class Layout {
  public:
    Layout(Surface& surface, const Presentation& graph)
        : surface_(surface), H(surface.TextHeight()),
          X(ScaleAxis(RangeOf(graph.X.Raw()),
                      MinInteger(static_cast<i16>(graph.X.Raw().size()), MaxXSteps), graph.XAxis)),
          Y(ScaleAxis(RangeOf(graph.Y.Raw()), YSteps, graph.YAxis)) {
        Right = surface.ScaleWidth() - TextMargin;
        const f64 textWidth = Right - TextMargin;
        for (const std::string& line : graph.Title)
            for (const std::string& part : BreakLines(surface, line, textWidth))
                Title.push_back(part);
        XLabel = BreakLines(surface, graph.XAxis(0), textWidth);
        YLabel = BreakLines(surface, graph.YAxis(0), textWidth);

        const auto below = [](const Lines& lines) {
            return static_cast<f64>(lines.empty() ? 0 : lines.size() - 1);
        };
        Plot.Left = WidestNumber(Y) + TextMargin;
        // The last number of the x-axis stands half beyond the plot.
        Plot.Right = surface.ScaleWidth() - MaxOf(RightMargin, WidestNumber(X) / 2);
        Plot.Top = (static_cast<f64>(Title.size()) + 1.5 + below(YLabel)) * H;
        Plot.Bottom = surface.ScaleHeight() - (3 + below(XLabel)) * H;
    }

    const char* Problem() const {
        if (!(Plot.Width() * surface_.PixelsPerInch() >= 1))
            return "Insufficient Resolution in the X-direction.";
        if (!(Plot.Height() * surface_.PixelsPerInch() >= 1))
            return "Insufficient Resolution in the Y-direction.";
        return "";
    }

    // Leaves the right of the surface to something else.
    void MakeRoom(f64 width) {
        Right = surface_.ScaleWidth() - TextMargin - width;
        Plot.Right = Right - WidestNumber(X) / 2;
    }

    Point At(f64 x, f64 y) const {
        return {Plot.Left + (x - X.Low) / (X.High - X.Low) * Plot.Width(),
                Plot.Bottom - (y - Y.Low) / (Y.High - Y.Low) * Plot.Height()};
    }

  private:
    // Numbers are measured by their characters, each as wide as a digit.
    f64 WidestNumber(const AxisScale& scale) const {
        std::size_t characters = 0;
        for (const f64 tick : Ticks(scale))
            characters = std::max(characters, TickText(scale, tick).size());
        return static_cast<f64>(characters) * surface_.TextWidth("0");
    }

    Surface& surface_;

  public:
    f64 H;
    AxisScale X;
    AxisScale Y;
    Rectangle Plot;
    f64 Right; // of the texts of the x-axis
    Lines Title;
    Lines XLabel;
    Lines YLabel;
};

f64 Widest(const Surface& surface, const Lines& lines) {
    f64 width = 0;
    for (const std::string& line : lines)
        width = MaxOf(width, surface.TextWidth(line));
    return width;
}

void DrawCentred(Surface& surface, f64 x, f64 y, const std::string& text) {
    surface.Text({x - surface.TextWidth(text) / 2, y}, text);
}

void DrawLabels(Surface& surface, const Layout& layout) {
    const f64 H = layout.H;
    // The half line of the margin that is left over stands evenly between title, label and numbers.
    f64 y = 0.1 * H;
    for (const std::string& line : layout.Title) {
        DrawCentred(surface, surface.ScaleWidth() / 2, y, line);
        y += H;
    }
    y = layout.Plot.Top - (static_cast<f64>(layout.YLabel.size()) + 0.4) * H;
    for (const std::string& line : layout.YLabel) {
        surface.Text({TextMargin, y}, line);
        y += H;
    }
    y = layout.Plot.Bottom + 1.7 * H;
    for (const std::string& line : layout.XLabel) {
        const f64 half = surface.TextWidth(line) / 2;
        const f64 middle = (layout.Plot.Left + layout.Plot.Right) / 2;
        const f64 rightmost = layout.Right - half;
        DrawCentred(surface, MaxOf(MinOf(middle, rightmost), TextMargin + half), y, line);
        y += H;
    }
}

// Numbers stand at every tick, or at every second, third, ... where they would run into another.
std::size_t NumberStride(std::size_t ticks, f64 room, f64 needed) {
    std::size_t stride = 1;
    while (stride < ticks && room * static_cast<f64>(stride) < needed)
        ++stride;
    return stride;
}

void DrawAxes(Surface& surface, const Layout& layout) {
    const Rectangle& plot = layout.Plot;
    surface.SetPen({});
    const Point frame[] = {{plot.Left, plot.Top},
                           {plot.Right, plot.Top},
                           {plot.Right, plot.Bottom},
                           {plot.Left, plot.Bottom},
                           {plot.Left, plot.Top}};
    surface.Polyline(frame);

    const auto xTicks = Ticks(layout.X);
    Lines xNumbers;
    for (const f64 tick : xTicks)
        xNumbers.push_back(TickText(layout.X, tick));
    const f64 widest = Widest(surface, xNumbers);
    const f64 xRoom = layout.X.Step / (layout.X.High - layout.X.Low) * plot.Width();
    const std::size_t xStride = NumberStride(xTicks.size(), xRoom, widest + surface.TextWidth("0"));
    for (std::size_t k = 0; k < xTicks.size(); ++k) {
        const f64 x = layout.At(xTicks[k], layout.Y.Low).X;
        surface.Line({x, plot.Bottom}, {x, plot.Bottom - TickLength});
        if (k % xStride == 0)
            DrawCentred(surface, x, plot.Bottom + 0.4 * layout.H, xNumbers[k]);
    }

    const auto yTicks = Ticks(layout.Y);
    const f64 yRoom = layout.Y.Step / (layout.Y.High - layout.Y.Low) * plot.Height();
    const std::size_t yStride = NumberStride(yTicks.size(), yRoom, layout.H);
    for (std::size_t k = 0; k < yTicks.size(); ++k) {
        const f64 y = layout.At(layout.X.Low, yTicks[k]).Y;
        surface.Line({plot.Left, y}, {plot.Left + TickLength, y});
        const std::string number = TickText(layout.Y, yTicks[k]);
        if (k % yStride == 0)
            surface.Text({plot.Left - LabelGap - surface.TextWidth(number), y - layout.H / 2},
                         number);
    }
}

// Connected points of curve j, cut at the limits of the plot: a line style runs on over them.
std::vector<std::vector<Point>> CurveLines(const Layout& layout, const Presentation& graph, int j) {
    std::vector<std::vector<Point>> lines;
    const int n = std::min(graph.X.HighBound(), graph.Y.HighBound1());
    const auto has = [&graph, j, n](int k) {
        return k >= 1 && k <= n && HasCellValue(graph.Y(k, j));
    };
    const auto at = [&layout, &graph, j](int k) {
        return layout.At(f64{graph.X(k)}, f64{graph.Y(k, j)});
    };
    for (int k = 1; k <= n; ++k) {
        if (!has(k))
            continue;
        // A value between two missing ones would not show at all: it gets a dot.
        const bool isAlone = !has(k - 1) && !has(k + 1);
        if (!isAlone && !has(k + 1))
            continue;
        const auto part = Clip({at(k), at(isAlone ? k : k + 1)}, layout.Plot);
        if (!part || (!isAlone && part->From == part->To))
            continue; // outside, or touching the plot's edge from there
        if (lines.empty() || lines.back().back() != part->From)
            lines.push_back({part->From});
        lines.back().push_back(part->To);
    }
    return lines;
}

Pen PenOf(const Surface& surface, const Presentation& graph, int j) {
    Pen pen = CurvePen(static_cast<i16>(j), graph.CurveWidth, surface.IsPrinter());
    if (ChosenCurveStyles == CurveStyles::Safe)
        pen.Colour = SafeColour(j);
    return pen;
}

// The marks of curve j, if curves have marks: thin, whatever the curve is.
void DrawMarksOf(Surface& surface, const Presentation& graph, int j, std::span<const Point> at) {
    if (ChosenCurveStyles != CurveStyles::Safe)
        return;
    constexpr f64 markWidth = 2;
    Pen pen = PenOf(surface, graph, j);
    pen.Style = SolidLine;
    pen.Width = MinOf(pen.Width, markWidth);
    surface.SetPen(pen);
    for (const Point& point : at)
        DrawCurveMark(surface, j, point);
}

// The z-values with a sample of their curves, as much as an area has room for: where that is not
// all, the head is left out first, and then the last entries.
class Legend {
  public:
    Legend(Surface& surface, const Layout& layout, const Presentation& graph, f64 areaWidth,
           f64 areaHeight)
        : surface_(surface), graph_(graph), H(layout.H),
          head_(BreakLines(surface, graph.ZLabel, areaWidth - 2 * padding_)) {
        entries_ = graph.ZTexts;
        if (entries_.empty())
            for (const f32 z : graph.Z.Raw())
                entries_.push_back(Str(z));
        entryWidth_ = Widest(surface, entries_) + SampleLength + 3 * padding_;

        const auto fitting = [](f64 room, f64 size) {
            return std::max(0, static_cast<int>(room / size));
        };
        const int lines = fitting(areaHeight - 2 * padding_, H);
        const int columns = fitting(areaWidth - 2 * padding_, entryWidth_);
        const int count = static_cast<int>(entries_.size());
        const auto heads = [this] { return static_cast<int>(head_.size()); };
        if (columns * (lines - heads()) < count) {
            head_.clear();
            isWhole_ = false;
        }
        rows_ = std::clamp(lines - heads(), 0, count);
        entries_.resize(static_cast<std::size_t>(std::min(count, columns * rows_)));

        width_ = Widest(surface, head_);
        if (!entries_.empty())
            width_ =
                MaxOf(width_, ((static_cast<int>(entries_.size()) - 1) / rows_ + 1) * entryWidth_);
        width_ += 2 * padding_;
        height_ = (heads() + rows_) * H + 2 * padding_;
    }

    bool IsWhole() const { return isWhole_; }
    f64 Width() const { return width_; }

    // The upper left corner.
    void MoveTo(Point corner) { corner_ = corner; }

    // Takes the free place in the plot, corners first, or else the one that meets the fewest pieces
    // of curves; returns how many it meets.
    std::ptrdiff_t MoveInto(const Rectangle& plot, const std::vector<Segment>& segments) {
        const f64 left = plot.Left + TickLength;
        const f64 right = MaxOf(left, plot.Right - TickLength - width_);
        const f64 top = plot.Top + TickLength;
        const f64 bottom = MaxOf(top, plot.Bottom - TickLength - height_);
        const f64 middle = (left + right) / 2;
        const f64 centre = (top + bottom) / 2;
        const Point places[] = {{left, top},     {right, bottom}, {right, top},
                                {left, bottom},  {middle, top},   {middle, bottom},
                                {right, centre}, {left, centre},  {middle, centre}};
        const auto met = [&](const Point& place) {
            const Rectangle box{place.X, place.Y, place.X + width_, place.Y + height_};
            return std::ranges::count_if(segments, [&box](const Segment& segment) {
                return Clip(segment, box).has_value();
            });
        };
        corner_ = *std::ranges::min_element(places, {}, met);
        return met(corner_);
    }

    void Draw() const {
        f64 y = corner_.Y + padding_;
        for (const std::string& line : head_) {
            surface_.Text({corner_.X + padding_, y}, line);
            y += H;
        }
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const int index = static_cast<int>(i);
            const f64 left = corner_.X + padding_ + (index / rows_) * entryWidth_;
            const f64 top = y + (index % rows_) * H;
            surface_.SetPen(PenOf(surface_, graph_, index + 1));
            surface_.Line({left, top + H / 2}, {left + SampleLength, top + H / 2});
            const Point middle[] = {{left + SampleLength / 2, top + H / 2}};
            DrawMarksOf(surface_, graph_, index + 1, middle);
            surface_.Text({left + SampleLength + padding_, top}, entries_[i]);
        }
    }

  private:
    static constexpr f64 padding_ = 0.06;

    Surface& surface_;
    const Presentation& graph_;
    f64 H;
    Lines head_;
    Lines entries_;
    bool isWhole_ = true;
    f64 entryWidth_ = 0;
    int rows_ = 0;
    f64 width_ = 0;
    f64 height_ = 0;
    Point corner_;
};

std::vector<Segment> SegmentsOf(const Layout& layout, const Presentation& graph) {
    std::vector<Segment> segments;
    for (int j = 1; j <= graph.Y.HighBound2(); ++j)
        for (const auto& line : CurveLines(layout, graph, j))
            for (std::size_t k = 1; k < line.size(); ++k)
                segments.push_back({line[k - 1], line[k]});
    for (const f64 mark : graph.Marks)
        segments.push_back({layout.At(mark, layout.Y.Low), layout.At(mark, layout.Y.High)});
    return segments;
}

// The legend lies in the plot where no curve runs. Where all places are taken it stands beside the
// plot, which becomes narrower for it, unless that would take too much. There it may go down beside
// the texts of the x-axis, if they keep clear of it.
std::optional<Legend> PlaceLegend(Surface& surface, Layout& layout, const Presentation& graph) {
    if (graph.ZLabel.empty())
        return std::nullopt;
    const Rectangle& plot = layout.Plot;
    Legend inside(surface, layout, graph, plot.Width(), plot.Height());
    if (inside.MoveInto(plot, SegmentsOf(layout, graph)) == 0 && inside.IsWhole())
        return inside;
    constexpr f64 mostOfWidth = 0.4;
    const f64 areaWidth = mostOfWidth * plot.Width();
    const bool isClear = TextMargin + Widest(surface, layout.XLabel) <= plot.Right - areaWidth;
    const f64 areaBottom = isClear ? surface.ScaleHeight() - TextMargin : plot.Bottom;
    Legend beside(surface, layout, graph, areaWidth, areaBottom - plot.Top);
    if (!beside.IsWhole())
        return inside;
    layout.MakeRoom(beside.Width());
    beside.MoveTo({surface.ScaleWidth() - TextMargin - beside.Width(), plot.Top});
    return beside;
}

// Curve j at x, on the straight line between its points; nothing where it has no value.
std::optional<f64> CurveAt(const Presentation& graph, int j, f64 x) {
    const auto xs = graph.X.Raw();
    const auto next = std::ranges::lower_bound(xs, x, {}, [](f32 value) { return f64{value}; });
    if (next == xs.end() || (next == xs.begin() && f64{*next} > x))
        return std::nullopt;
    const int right = static_cast<int>(next - xs.begin()) + 1;
    const int left = std::max(right - 1, 1);
    if (right > graph.Y.HighBound1() || !HasCellValue(graph.Y(left, j)) ||
        !HasCellValue(graph.Y(right, j)))
        return std::nullopt;
    const f64 width = f64{graph.X(right)} - f64{graph.X(left)};
    const f64 part = width > 0 ? (x - f64{graph.X(left)}) / width : 1;
    return f64{graph.Y(left, j)} + part * (f64{graph.Y(right, j)} - f64{graph.Y(left, j)});
}

// Areas are hatched, so that they are told apart in black and white and see through each other.
void DrawAreas(Surface& surface, const Layout& layout, const Presentation& graph) {
    constexpr f64 apart = 0.05; // inches between two lines
    const f64 perInch = (layout.X.High - layout.X.Low) / layout.Plot.Width();
    for (const ShadedArea& area : graph.Areas) {
        Pen pen = PenOf(surface, graph, area.Curve);
        pen.Width = 1;
        surface.SetPen(pen);
        const f64 from = MaxOf(area.From, layout.X.Low);
        const f64 to = MinOf(area.To, layout.X.High);
        // Every area has its lines at other places.
        const f64 shift = apart / 2 * (area.Curve - 1);
        for (f64 inch = std::ceil((from - layout.X.Low) / perInch / apart) * apart + shift;;
             inch += apart) {
            const f64 x = layout.X.Low + inch * perInch;
            if (!(x <= to))
                break;
            const auto y = CurveAt(graph, area.Curve, x);
            const auto line =
                y ? Clip({layout.At(x, 0), layout.At(x, *y)}, layout.Plot) : std::nullopt;
            // Where the curve is on the axis there is nothing to hatch.
            if (line && std::fabs(line->To.Y - line->From.Y) * surface.PixelsPerInch() >= 1)
                surface.Line(line->From, line->To);
        }
    }
}

void DrawMarks(Surface& surface, const Layout& layout, const Presentation& graph) {
    surface.SetPen({.Style = DashedLine});
    for (const f64 mark : graph.Marks)
        if (mark > layout.X.Low && mark < layout.X.High) {
            const f64 x = layout.At(mark, 0).X;
            surface.Line({x, layout.Plot.Top}, {x, layout.Plot.Bottom});
        }
}

void DrawCurves(Surface& surface, const Layout& layout, const Presentation& graph) {
    for (int j = 1; j <= graph.Y.HighBound2(); ++j) {
        const auto lines = CurveLines(layout, graph, j);
        surface.SetPen(PenOf(surface, graph, j));
        for (const auto& line : lines)
            surface.Polyline(line);
        for (const auto& line : lines)
            DrawMarksOf(surface, graph, j, CurveMarks(line, j));
    }
}

// The bytes of the characters that fit into width, one at least.
std::size_t FittingLength(const Surface& surface, const std::string& text, f64 width) {
    std::size_t length = CharacterLength(text, 0);
    while (length < text.size()) {
        const std::size_t longer = length + CharacterLength(text, length);
        if (surface.TextWidth(text.substr(0, longer)) > width)
            break;
        length = longer;
    }
    return length;
}

std::optional<Layout> LayOut(Surface& surface, const Presentation& graph) {
    if (!graph.HasResult())
        return std::nullopt;
    surface.SetFont(graph.Type);
    return Layout(surface, graph);
}

} // namespace

AxisScale ScaleAxis(ValueRange data, i16 n, const FixedArray<std::string, 0, 3>& axisTexts) {
    f32 low = data.Low;
    f32 high = data.High;
    auto typedLow = TypedLimit(axisTexts(1));
    auto typedHigh = TypedLimit(axisTexts(2));
    if (typedLow && typedHigh && !(*typedLow < *typedHigh))
        typedLow = typedHigh = std::nullopt;
    if (typedLow)
        low = static_cast<f32>(*typedLow);
    if (typedHigh) {
        high = static_cast<f32>(*typedHigh);
        if (!typedLow && !(low < high))
            low = high - 1;
    }
    f32 newLow = 0;
    f32 newHigh = 0;
    f32 step = 0;
    NiceScale(low, high, n, newLow, newHigh, step);

    AxisScale scale;
    scale.Low = typedLow.value_or(f64{newLow});
    scale.High = typedHigh.value_or(f64{newHigh});
    if (!(scale.High > scale.Low)) { // a typed limit that 32 bits can't tell from the other one
        scale.Low = f64{newLow};
        scale.High = f64{newHigh};
    }
    scale.Step = f64{step};
    scale.FirstTick = std::ceil(scale.Low / scale.Step - 1e-4) * scale.Step;
    constexpr f64 mostTicks = 200;
    const auto typedTick = TypedLimit(axisTexts(3));
    if (typedTick && *typedTick > 0 && (scale.High - scale.Low) / *typedTick <= mostTicks) {
        scale.Step = *typedTick;
        scale.FirstTick = scale.Low;
    }
    scale.Format = TickFormat(static_cast<f32>(scale.Step), static_cast<f32>(scale.FirstTick));
    return scale;
}

Pen CurvePen(i16 j, i16 curveWidth, bool isPrinter) {
    constexpr int colours = 14; // 0 to 14 without 7
    constexpr int lightGrey = 7;
    constexpr int styles = 5;
    constexpr i16 widest = 50;
    constexpr f64 printedWidth = 5;
    Pen pen;
    const int colour = (j - 1) % colours;
    pen.Colour = static_cast<i16>(colour < lightGrey ? colour : colour + 1);
    pen.Style = static_cast<i16>((j - 1) % styles);
    pen.Width = std::clamp<i16>(curveWidth == 0 ? j : curveWidth, 1, widest);
    if (isPrinter && pen.Style == SolidLine)
        pen.Width = printedWidth;
    return pen;
}

std::vector<std::string> BreakLines(const Surface& surface, const std::string& text, f64 width) {
    std::vector<std::string> lines;
    std::string line;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::string longer = line.empty() ? word : line + " " + word;
        if (!line.empty() && surface.TextWidth(longer) > width) {
            lines.push_back(line);
            line = word;
        } else {
            line = longer;
        }
        while (surface.TextWidth(line) > width && CharacterLength(line, 0) < line.size()) {
            const std::size_t fitting = FittingLength(surface, line, width);
            lines.push_back(line.substr(0, fitting));
            line.erase(0, fitting);
        }
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

std::string PlotProblem(Surface& surface, const Presentation& graph) {
    const auto layout = LayOut(surface, graph);
    return layout ? layout->Problem() : "";
}

bool PlotGraph(Surface& surface, const Presentation& graph) {
    auto layout = LayOut(surface, graph);
    if (!layout)
        return true;
    if (const std::string problem = layout->Problem(); !problem.empty()) {
        ShowMessage(problem);
        return false;
    }
    const auto legend = PlaceLegend(surface, *layout, graph);
    DrawLabels(surface, *layout);
    DrawAxes(surface, *layout);
    DrawAreas(surface, *layout, graph);
    DrawMarks(surface, *layout, graph);
    DrawCurves(surface, *layout, graph);
    if (legend)
        legend->Draw();
    surface.SetPen({});
    return true;
}

} // namespace quorvanta
