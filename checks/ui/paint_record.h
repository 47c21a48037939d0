// What a widget really draws: its texts and lines, in its own pixels.
#pragma once

#include <QFont>
#include <QPen>
#include <QPolygonF>
#include <QString>
#include <QVector>
#include <QWidget>

namespace quorvanta {

struct PaintRecord {
    struct Text {
        QString String;
        QPointF At; // left end of the base line
        QFont Font;
        QColor Ink;
        QRectF Box; // from the ascent to the descent, as wide as the pen moves
    };
    struct Line {
        QPolygonF Points;
        QPen Pen;
    };

    QVector<Text> Texts;
    QVector<Line> Lines;

    // The first text that reads so; nullptr if there is none.
    const Text* Find(const QString& text) const;

    // The texts that stand on one base line, from left to right, for each base line from above.
    QVector<QStringList> Rows() const;
};

// Paints the widget, its children left out.
PaintRecord RecordPaint(QWidget& widget);

} // namespace quorvanta
