#include "ui/paintsurface.h"

#include "ui/colors.h"
#include "ui/qttext.h"

#include <QPen>
#include <QPolygonF>

#include <algorithm>

namespace quorvanta {

namespace {

constexpr f64 HalfPointsPerInch = 144;
constexpr f64 SmallestDot = 0.06; // inches; less is taken for a speck

Qt::PenStyle StyleOf(i16 style) {
    constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                       Qt::DashDotDotLine};
    return styles[static_cast<std::size_t>(style) % std::size(styles)];
}

} // namespace

PaintSurface::PaintSurface(QPainter& painter, Paper paper)
    : painter_(painter), paper_(std::move(paper)), perInch_(painter.device()->logicalDpiY()),
      font_(painter.font()), metrics_(font_, painter.device()) {
    painter_.setRenderHint(QPainter::TextAntialiasing);
    painter_.setLayoutDirection(Qt::LeftToRight); // of numbers, wherever the windows begin
}

void PaintSurface::SetFont(const Font& font) {
    font_ = QFont(ToQt(font.Name));
    font_.setPointSizeF(font.Size);
    font_.setBold(font.Bold);
    metrics_ = QFontMetricsF(font_, painter_.device());
}

f64 PaintSurface::TextWidth(std::string_view text) const {
    return metrics_.horizontalAdvance(ToQt(text)) / perInch_;
}

f64 PaintSurface::TextHeight() const {
    return metrics_.height() / perInch_;
}

void PaintSurface::Text(Point upperLeft, std::string_view text) {
    painter_.setFont(font_);
    painter_.setPen(paper_.Ink);
    painter_.drawText(ToDevice(upperLeft) + QPointF(0, metrics_.ascent()), ToQt(text));
}

void PaintSurface::SetPen(const Pen& pen) {
    pen_ = pen;
}

void PaintSurface::Polyline(std::span<const Point> points) {
    const bool isDot = std::ranges::all_of(points, [&](const Point& p) { return p == points[0]; });
    f64 width = pen_.Width * perInch_ / HalfPointsPerInch;
    if (isDot)
        width = std::max(2 * width, SmallestDot * perInch_);
    const bool isHairline = !paper_.IsPrinter && width < 1;
    QPen pen(TableColor(pen_.Colour, paper_.Ink, paper_.Ground), std::max(width, 1.0),
             StyleOf(pen_.Style));
    pen.setCapStyle(pen_.Style == SolidLine ? Qt::RoundCap : Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    QPolygonF line;
    for (const Point& point : points)
        line << ToDevice(point);
    if (isDot) {
        pen.setStyle(Qt::SolidLine);
        pen.setCapStyle(Qt::RoundCap);
    }
    painter_.setPen(pen);
    // Frames and ticks lie on whole pixels and stay sharp; curves are smooth.
    painter_.setRenderHint(QPainter::Antialiasing, !isHairline);
    if (isDot)
        painter_.drawPoint(line.front());
    else
        painter_.drawPolyline(line);
}

void PaintSurface::NewPage() {
    if (paper_.TurnPage)
        paper_.TurnPage();
}

void Dim(QPainter& painter, const QRect& area, QColor ground) {
    ground.setAlphaF(0.6F);
    painter.fillRect(area, ground);
}

} // namespace quorvanta
