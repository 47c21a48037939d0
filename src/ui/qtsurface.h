// The drawing surface of the engine, on any paint device of Qt.
#pragma once

#include "output/surface.h"

#include <QColor>
#include <QPainter>
#include <QRectF>

#include <functional>

namespace quorvanta {

class QtSurface : public Surface {
  public:
    // Draws within area, a rectangle of painter's own units with dpi of them to the inch. ink is
    // the colour of text and of pen 0.
    QtSurface(QPainter& painter, const QRectF& area, f64 dpi, const QColor& ink);

    // A printer's surface goes on to the next page with newPage.
    void SetPages(std::function<void()> newPage) { newPage_ = std::move(newPage); }

    f64 ScaleWidth() const override { return area_.width() / dpi_; }
    f64 ScaleHeight() const override { return area_.height() / dpi_; }
    f64 PixelsPerInch() const override { return dpi_; }
    bool IsPrinter() const override { return static_cast<bool>(newPage_); }
    void SetFont(const Font& font) override;
    f64 TextWidth(std::string_view text) const override;
    f64 TextHeight() const override;
    void Text(Point upperLeft, std::string_view text) override;
    void SetPen(const Pen& pen) override;
    void Polyline(std::span<const Point> points) override;
    bool HasPages() const override { return IsPrinter(); }
    void NewPage() override;

  private:
    QPointF Place(Point point) const;

    QPainter& painter_;
    QRectF area_;
    f64 dpi_;
    QColor ink_;
    QPen pen_;
    std::function<void()> newPage_;
};

} // namespace quorvanta
