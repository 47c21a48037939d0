// The surface of outputs on Qt: whatever a QPainter can draw on.
#pragma once

#include "output/surface.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QSizeF>

#include <functional>

namespace quorvanta {

// Fades a drawing that is no longer valid: it can still be read, and is seen not to count.
void Dim(QPainter& painter, const QRect& area, QColor ground);

// What is drawn on, and with what. Printers and bitmaps have black ink on white paper.
struct Paper {
    QSizeF Inches;
    QColor Ink = Qt::black;
    QColor Ground = Qt::white;
    bool IsPrinter = false;
    std::function<void()> TurnPage; // none: one page without an end
};

class PaintSurface : public Surface {
  public:
    // The painter draws in the units of its device, from the origin that it has.
    PaintSurface(QPainter& painter, Paper paper);

    f64 ScaleWidth() const override { return paper_.Inches.width(); }
    f64 ScaleHeight() const override { return paper_.Inches.height(); }
    f64 PixelsPerInch() const override { return perInch_; }
    bool IsPrinter() const override { return paper_.IsPrinter; }
    void SetFont(const Font& font) override;
    f64 TextWidth(std::string_view text) const override;
    f64 TextHeight() const override;
    void Text(Point upperLeft, std::string_view text) override;
    void SetPen(const Pen& pen) override;
    void Polyline(std::span<const Point> points) override;
    bool HasPages() const override { return static_cast<bool>(paper_.TurnPage); }
    void NewPage() override;

  private:
    QPointF ToDevice(Point point) const { return {point.X * perInch_, point.Y * perInch_}; }

    QPainter& painter_;
    Paper paper_;
    f64 perInch_;
    QFont font_;
    QFontMetricsF metrics_;
    Pen pen_;
};

} // namespace quorvanta
