#include "ui/distrpicture.h"

#include "ui/accessible.h"
#include "ui/colors.h"
#include "ui/qttext.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quorvanta {

namespace {

// Numbers in the table of colours, H0 before H1; the last one alone is that of H1.
constexpr i16 NullColor = 9;
constexpr i16 AlternativeColor = 12;

// From the curves' own terms to the place that they are drawn in.
class Frame {
  public:
    Frame(const std::vector<DistrCurve>& curves, QRectF place) : place_(place) {
        for (const DistrCurve& curve : curves) {
            low_ = std::min(low_, curve.Points.front().first);
            high_ = std::max(high_, curve.Points.back().first);
            for (const auto& [x, y] : curve.Points)
                top_ = std::max(top_, y);
        }
    }

    QPointF At(f64 x, f64 y) const {
        const f64 width = high_ > low_ ? high_ - low_ : 1;
        return {place_.left() + place_.width() * (x - low_) / width,
                place_.bottom() - (top_ > 0 ? place_.height() * y / top_ : 0)};
    }

  private:
    QRectF place_;
    f64 low_ = 1e300;
    f64 high_ = -1e300;
    f64 top_ = 0;
};

QPainterPath PathOf(const DistrCurve& curve, const Frame& frame) {
    QPainterPath path;
    bool isFirst = true;
    for (const auto& [x, y] : curve.Points) {
        if (curve.IsDiscrete || isFirst)
            path.moveTo(frame.At(x, curve.IsDiscrete ? 0 : y));
        if (curve.IsDiscrete || !isFirst)
            path.lineTo(frame.At(x, y));
        isFirst = false;
    }
    return path;
}

QString Number(f64 x) {
    return QString::number(x, 'g', 3);
}

} // namespace

DistrPicture::DistrPicture(QWidget* parent) : QWidget(parent) {
    setObjectName("picDistr");
    MakeAccessiblePicture(*this);
    setAccessibleName(tr("Picture of the distributions"));
}

QSize DistrPicture::sizeHint() const {
    const int line = fontMetrics().height();
    return {line * 18, line * 9};
}

QSize DistrPicture::minimumSizeHint() const {
    return sizeHint() * 2 / 3;
}

void DistrPicture::Draw(const std::vector<DistrCurve>& curves) {
    curves_ = curves;
    QStringList labels;
    for (const DistrCurve& curve : curves_)
        labels << ToQt(curve.Label);
    setAccessibleDescription(curves_.empty() ? tr("nothing to be drawn") : labels.join(", "));
    update();
}

void DistrPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight); // the axis runs so
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    painter.fillRect(rect(), paper);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (curves_.empty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = fontMetrics().height();
    const QRectF place = QRectF(rect()).adjusted(line, line * 1.5, -line, -line * 1.5);
    const Frame frame(curves_, place);
    painter.setPen(ink);
    painter.drawLine(place.bottomLeft(), place.bottomRight());
    f64 low = curves_.front().Points.front().first;
    f64 high = low;
    int right = static_cast<int>(place.right());
    for (auto curve = curves_.rbegin(); curve != curves_.rend(); ++curve) {
        low = std::min(low, curve->Points.front().first);
        high = std::max(high, curve->Points.back().first);
        const bool isNull = curve->Label == "H0";
        QPen pen(TableColor(isNull ? NullColor : AlternativeColor, ink, paper), line / 8.0);
        if (isNull) // told apart without colours, too
            pen.setStyle(Qt::DashLine);
        painter.setPen(pen);
        painter.drawPath(PathOf(*curve, frame));
        const QString label = ToQt(curve->Label);
        const int width = fontMetrics().horizontalAdvance(label);
        painter.drawText(right - width, line, label);
        painter.drawLine(right - width - 2 * line, line * 2 / 3, right - width - line / 3,
                         line * 2 / 3);
        right -= width + 3 * line;
    }
    painter.setPen(ink);
    const QRectF foot(place.left(), place.bottom(), place.width(), line * 1.4);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter, Number(low));
    painter.drawText(foot, Qt::AlignRight | Qt::AlignVCenter, Number(high));
}

} // namespace quorvanta
