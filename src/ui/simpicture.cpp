#include "ui/simpicture.h"

#include "ui/accessible.h"
#include "ui/colors.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quorvanta {

namespace {

constexpr i16 EstimateColor = 12; // of the table of colours

// The estimates start at 0 or 1 with a width of nothing or of all: what is worth seeing is the
// range that the later half of them lies in.
struct Extent {
    f64 Low = 0;
    f64 High = 1;
};

Extent ExtentOf(const std::vector<SimPoint>& points) {
    Extent extent{1, 0};
    for (std::size_t i = points.size() / 2; i < points.size(); ++i) {
        extent.Low = std::min(extent.Low, f64{points[i].Power} - 1.5 * f64{points[i].HalfWidth});
        extent.High = std::max(extent.High, f64{points[i].Power} + 1.5 * f64{points[i].HalfWidth});
    }
    constexpr f64 narrowest = 0.01;
    const f64 middle = (extent.Low + extent.High) / 2;
    return {std::max(0.0, std::min(extent.Low, middle - narrowest)),
            std::min(1.0, std::max(extent.High, middle + narrowest))};
}

} // namespace

SimPicture::SimPicture(QWidget* parent) : QWidget(parent) {
    setObjectName("picEstimate");
    MakeAccessiblePicture(*this);
    setAccessibleName(tr("Picture of the estimate as the simulation goes on"));
}

QSize SimPicture::sizeHint() const {
    const int line = fontMetrics().height();
    return {line * 24, line * 8};
}

QSize SimPicture::minimumSizeHint() const {
    return sizeHint() / 2;
}

void SimPicture::Draw(const std::vector<SimPoint>& points, const QString& name) {
    points_ = points;
    setAccessibleDescription(points_.empty() ? tr("nothing to be drawn")
                                             : tr("%1: %2 after %3 simulations")
                                                   .arg(name)
                                                   .arg(f64{points_.back().Power}, 0, 'f', 4)
                                                   .arg(points_.back().SimNo));
    update();
}

void SimPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight); // the axis runs so
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    painter.fillRect(rect(), paper);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (points_.size() < 2)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = fontMetrics().height();
    const Extent extent = ExtentOf(points_);
    const QString low = QString::number(extent.Low, 'f', 3);
    const QString high = QString::number(extent.High, 'f', 3);
    const int margin = fontMetrics().horizontalAdvance(high) + line;
    const QRectF place = QRectF(rect()).adjusted(margin, line * 0.8, -line, -line * 1.6);
    const auto at = [&](i32 simNo, f64 share) {
        const f64 x = static_cast<f64>(simNo) / static_cast<f64>(points_.back().SimNo);
        const f64 y = (share - extent.Low) / (extent.High - extent.Low);
        return QPointF(place.left() + place.width() * x, place.bottom() - place.height() * y);
    };
    QPainterPath estimate;
    QPolygonF band;
    for (const SimPoint& point : points_) {
        const QPointF here = at(point.SimNo, f64{point.Power});
        if (estimate.isEmpty())
            estimate.moveTo(here);
        else
            estimate.lineTo(here);
        band << at(point.SimNo, f64{point.Power} - f64{point.HalfWidth});
    }
    for (auto point = points_.rbegin(); point != points_.rend(); ++point)
        band << at(point->SimNo, f64{point->Power} + f64{point->HalfWidth});
    const QColor color = TableColor(EstimateColor, ink, paper);
    QColor faint = color;
    faint.setAlphaF(0.25F);
    painter.save();
    painter.setClipRect(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faint);
    painter.drawPolygon(band);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, line / 8.0));
    painter.drawPath(estimate);
    painter.restore();
    painter.setPen(ink);
    painter.drawLine(place.topLeft(), place.bottomLeft());
    painter.drawLine(place.bottomLeft(), place.bottomRight());
    const QRectF left(0, place.top() - line / 2.0, place.left() - line / 3.0, line);
    painter.drawText(left, Qt::AlignRight | Qt::AlignVCenter, high);
    painter.drawText(left.translated(0, place.height()), Qt::AlignRight | Qt::AlignVCenter, low);
    const QRectF foot(place.left(), place.bottom(), place.width(), line * 1.5);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter, "0");
    painter.drawText(foot, Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(points_.back().SimNo));
}

} // namespace quorvanta
