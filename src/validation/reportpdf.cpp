#include "validation/reportpdf.h"

#include "core/program_name.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRectF>
#include <QString>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvanta::validation {

namespace {

constexpr int dotsPerInch = 1200;
constexpr qreal marginMm = 14;

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

// A column of a table: its share of the width of the page, where its text stands, and how many
// characters it is set in.
struct Column {
    qreal Share = 0;
    Qt::Alignment Side = Qt::AlignLeft;
    int Indent = 0;
};

using Columns = std::vector<Column>;

const Columns& ColumnsOf(Line::Kind kind) {
    static const Columns words{{1}};
    static const Columns fact{{0.18}, {0.82}};
    static const Columns counts{{0.52},
                                {0.12, Qt::AlignRight},
                                {0.12, Qt::AlignRight},
                                {0.12, Qt::AlignRight},
                                {0.12, Qt::AlignRight}};
    static const Columns cases{{0.16},
                               {0.045},
                               {0.075, Qt::AlignRight},
                               {0.075, Qt::AlignRight},
                               {0.07, Qt::AlignRight},
                               {0.065, Qt::AlignRight},
                               {0.51, Qt::AlignLeft, 2}};
    switch (kind) {
    case Line::Kind::Fact:
        return fact;
    case Line::Kind::Counts:
        return counts;
    case Line::Kind::Columns:
    case Line::Kind::Case:
        return cases;
    case Line::Kind::Title:
    case Line::Kind::Heading:
    case Line::Kind::Words:
        break;
    }
    return words;
}

QFont FontOf(const Line& line) {
    QFont font(QStringLiteral("sans-serif"));
    font.setPointSizeF(6);
    if (line.What == Line::Kind::Title)
        font.setPointSizeF(16);
    if (line.What == Line::Kind::Heading)
        font.setPointSizeF(10);
    if (line.What == Line::Kind::Words || line.What == Line::Kind::Fact)
        font.setPointSizeF(8);
    font.setBold(line.Fails || line.What == Line::Kind::Title || line.What == Line::Kind::Heading ||
                 line.What == Line::Kind::Columns);
    return font;
}

// The space above a line, in heights of its own.
qreal SpaceAbove(Line::Kind kind) {
    return kind == Line::Kind::Heading ? 1.2 : kind == Line::Kind::Columns ? 0.4 : 0;
}

// Draws the document from top to bottom, on as many pages as it takes.
class Pages {
  public:
    Pages(QPdfWriter& writer, QPainter& painter, QString foot)
        : writer_(writer), painter_(painter), foot_(std::move(foot)),
          width_(painter.viewport().width()), height_(painter.viewport().height()) {
        DrawFoot();
    }

    void Draw(const Line& line) {
        painter_.setFont(FontOf(line));
        const QFontMetricsF metrics(painter_.font(), &writer_);
        std::vector<QRectF> cells = Layout(line, metrics);
        qreal high = 0;
        for (const QRectF& cell : cells)
            high = std::max(high, cell.height());
        qreal above = y_ > 0 ? SpaceAbove(line.What) * metrics.height() : 0;
        // A heading stays with what it heads.
        const qreal kept = line.What == Line::Kind::Heading ? 6 * metrics.height() : 0;
        if (y_ + above + high + kept > Bottom()) {
            TurnPage();
            painter_.setFont(FontOf(line));
            above = 0;
        }
        y_ += above;
        painter_.setPen(line.Fails ? QColor(176, 0, 0) : QColor(Qt::black));
        for (std::size_t i = 0; i < cells.size(); ++i)
            painter_.drawText(cells[i].translated(0, y_), FlagsOf(line, i), Text(line.Cells[i]));
        y_ += high;
        if (line.What == Line::Kind::Columns)
            columns_ = line;
        if (line.What == Line::Kind::Heading)
            columns_ = {};
    }

  private:
    static int FlagsOf(const Line& line, std::size_t cell) {
        return static_cast<int>(ColumnsOf(line.What)[cell].Side | Qt::AlignTop) | Qt::TextWordWrap;
    }

    // Where the cells of the line go, with the top of the line at 0.
    std::vector<QRectF> Layout(const Line& line, const QFontMetricsF& metrics) const {
        const Columns& columns = ColumnsOf(line.What);
        const qreal character = metrics.averageCharWidth();
        std::vector<QRectF> cells;
        qreal left = 0;
        for (std::size_t i = 0; i < line.Cells.size(); ++i) {
            const qreal wide = columns[i].Share * width_;
            const qreal indent = columns[i].Indent * character;
            QRectF cell(left + indent, 0, wide - indent - character, height_);
            const QString text = Text(line.Cells[i]);
            const bool fits = metrics.horizontalAdvance(text) < cell.width();
            cell.setHeight(fits ? metrics.lineSpacing()
                                : metrics.boundingRect(cell, FlagsOf(line, i), text).height());
            cells.push_back(cell);
            left += wide;
        }
        return cells;
    }

    qreal Bottom() const { return height_ - 2 * FootMetrics().height(); }

    QFont FootFont() const {
        QFont font(QStringLiteral("sans-serif"));
        font.setPointSizeF(7);
        return font;
    }
    QFontMetricsF FootMetrics() const { return QFontMetricsF(FootFont(), &writer_); }

    void DrawFoot() {
        painter_.setFont(FootFont());
        painter_.setPen(Qt::black);
        const QRectF line(0, height_ - FootMetrics().height(), width_, FootMetrics().height());
        painter_.drawText(line, Qt::AlignLeft, foot_);
        painter_.drawText(line, Qt::AlignRight, QStringLiteral("%1").arg(++page_));
    }

    // The next page begins with the names of the columns that go on there.
    void TurnPage() {
        writer_.newPage();
        y_ = 0;
        DrawFoot();
        if (columns_.Cells.empty())
            return;
        const Line columns = columns_;
        Draw(columns);
    }

    QPdfWriter& writer_;
    QPainter& painter_;
    QString foot_;
    qreal width_;
    qreal height_;
    qreal y_ = 0;
    int page_ = 0;
    Line columns_;
};

} // namespace

QByteArray Pdf(const std::vector<Line>& document, const QString& foot) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(dotsPerInch);
    writer.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Landscape,
                          QMarginsF(marginMm, marginMm, marginMm, marginMm),
                          QPageLayout::Millimeter});
    writer.setTitle(document.empty() ? QString() : Text(document.front().Cells.front()));
    writer.setCreator(QStringLiteral("%1 %2").arg(ProgramName, ProgramVersion));
    QPainter painter(&writer);
    Pages pages(writer, painter, foot);
    for (const Line& line : document)
        pages.Draw(line);
    painter.end();
    return bytes;
}

} // namespace quorvanta::validation
