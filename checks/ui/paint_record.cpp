#include "ui/paint_record.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPaintEngine>

#include <algorithm>
#include <cmath>
#include <map>

namespace quorvanta {

namespace {

// Takes everything as it is told, without emulation.
class RecordingEngine : public QPaintEngine {
  public:
    explicit RecordingEngine(PaintRecord& record) : QPaintEngine(AllFeatures), record_(record) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/,
                    const QRectF& /*from*/) override {}

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        if (mode != PolylineMode)
            return;
        QPolygonF line;
        for (int i = 0; i < count; ++i)
            line << state->transform().map(points[i]);
        record_.Lines.append({line, state->pen()});
    }

    void drawPoints(const QPointF* points, int count) override {
        for (int i = 0; i < count; ++i)
            record_.Lines.append({QPolygonF{state->transform().map(points[i])}, state->pen()});
    }

    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        const QPointF place = state->transform().map(at);
        const QRectF box(place.x(), place.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        record_.Texts.append({item.text(), place, item.font(), state->pen().color(), box});
    }

  private:
    PaintRecord& record_;
};

// Of the size and resolution of the widget.
class RecordingDevice : public QPaintDevice {
  public:
    RecordingDevice(const QWidget& widget, PaintRecord& record)
        : widget_(widget), engine_(record) {}

    QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    int metric(PaintDeviceMetric which) const override {
        switch (which) {
        case PdmWidth:
            return widget_.width();
        case PdmHeight:
            return widget_.height();
        case PdmDpiX:
        case PdmPhysicalDpiX:
            return widget_.logicalDpiX();
        case PdmDpiY:
        case PdmPhysicalDpiY:
            return widget_.logicalDpiY();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default: // colours and millimetres, which nothing here is measured in
            return 0;
        }
    }

  private:
    const QWidget& widget_;
    mutable RecordingEngine engine_;
};

} // namespace

const PaintRecord::Text* PaintRecord::Find(const QString& text) const {
    const auto found =
        std::ranges::find_if(Texts, [&text](const Text& drawn) { return drawn.String == text; });
    return found == Texts.end() ? nullptr : &*found;
}

QVector<QStringList> PaintRecord::Rows() const {
    std::map<long, std::map<double, QString>> byPlace;
    for (const Text& text : Texts)
        byPlace[std::lround(text.At.y())][text.At.x()] = text.String;
    QVector<QStringList> rows;
    for (const auto& [y, row] : byPlace) {
        QStringList texts;
        for (const auto& [x, text] : row)
            texts << text;
        rows << texts;
    }
    return rows;
}

PaintRecord RecordPaint(QWidget& widget) {
    PaintRecord record;
    RecordingDevice device(widget, record);
    widget.render(&device, {}, {}, QWidget::RenderFlags());
    return record;
}

} // namespace quorvanta
