#include "ui/qtsurface.h"

#include <QFontMetricsF>
#include <QPolygonF>
#include <QString>

#include <algorithm>
#include <array>

namespace quorvanta {

namespace {

constexpr f64 pointsPerInch = 72;

// The sixteen colours of curves; 0 is the ink.
constexpr std::array<QRgb, 16> colours = {
    0xFF000000, 0xFF000080, 0xFF008000, 0xFF008080, 0xFF800000, 0xFF800080, 0xFF808000, 0xFFC0C0C0,
    0xFF808080, 0xFF0000FF, 0xFF00C000, 0xFF00B0B0, 0xFFFF0000, 0xFFFF00FF, 0xFFD0B000, 0xFFFFFFFF};

QString ToText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

Qt::PenStyle StyleOf(i16 style) {
    switch (style) {
    case DashedLine:
        return Qt::DashLine;
    case DottedLine:
        return Qt::DotLine;
    case DashDotLine:
        return Qt::DashDotLine;
    case DashDotDotLine:
        return Qt::DashDotDotLine;
    default:
        return Qt::SolidLine;
    }
}

} // namespace

QtSurface::QtSurface(QPainter& painter, const QRectF& area, f64 dpi, const QColor& ink)
    : painter_(painter), area_(area), dpi_(dpi), ink_(ink) {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    SetFont(Font());
    SetPen(Pen());
}

void QtSurface::SetFont(const Font& font) {
    QFont chosen(QString::fromStdString(font.Name));
    // Sizes follow the surface, not the screen that the program runs on.
    chosen.setPixelSize(std::max(1, static_cast<int>(font.Size / pointsPerInch * dpi_ + 0.5)));
    chosen.setBold(font.Bold);
    painter_.setFont(chosen);
}

f64 QtSurface::TextWidth(std::string_view text) const {
    return QFontMetricsF(painter_.font(), painter_.device()).horizontalAdvance(ToText(text)) / dpi_;
}

f64 QtSurface::TextHeight() const {
    return QFontMetricsF(painter_.font(), painter_.device()).height() / dpi_;
}

void QtSurface::Text(Point upperLeft, std::string_view text) {
    const f64 ascent = QFontMetricsF(painter_.font(), painter_.device()).ascent();
    painter_.setPen(ink_);
    painter_.drawText(Place(upperLeft) + QPointF(0, ascent), ToText(text));
}

void QtSurface::SetPen(const Pen& pen) {
    const auto colour = static_cast<std::size_t>(pen.Colour) % colours.size();
    pen_ = QPen(colour == 0 ? ink_ : QColor::fromRgba(colours[colour]));
    pen_.setWidthF(std::max(1.0, pen.Width / 2 / pointsPerInch * dpi_));
    pen_.setStyle(StyleOf(pen.Style));
    pen_.setJoinStyle(Qt::RoundJoin);
}

void QtSurface::Polyline(std::span<const Point> points) {
    QPolygonF line;
    for (const Point& point : points)
        line << Place(point);
    painter_.setPen(pen_);
    painter_.drawPolyline(line);
}

void QtSurface::NewPage() {
    if (newPage_)
        newPage_();
}

QPointF QtSurface::Place(Point point) const {
    return area_.topLeft() + QPointF(point.X, point.Y) * dpi_;
}

} // namespace quorvanta
