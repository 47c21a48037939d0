#include "ui/mdiarea.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QPaintEvent>
#include <QPainter>

namespace quorvanta {

MdiArea::MdiArea(QWidget* parent) : QMdiArea(parent) {
    TakeBackground();
    // The first child window takes the welcome away, the last one brings it back.
    connect(this, &QMdiArea::subWindowActivated, viewport(), qOverload<>(&QWidget::update));
}

void MdiArea::TakeBackground() {
    // A shade off the windows, in light and in dark palettes.
    constexpr int percent = 112;
    setBackground(QApplication::palette().color(QPalette::Window).darker(percent));
}

void MdiArea::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        TakeBackground();
}

void MdiArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;

    QPainter painter(viewport());
    QColor ink = palette().color(QPalette::WindowText);
    ink.setAlphaF(0.65F);
    painter.setPen(ink);
    const QRect area = viewport()->rect();
    const int line = fontMetrics().height();

    const QPixmap icon = QApplication::windowIcon().pixmap(QSize(5 * line, 5 * line));
    const QSize iconSize = icon.deviceIndependentSize().toSize();
    int top = area.center().y() - 6 * line;
    painter.drawPixmap(area.center().x() - iconSize.width() / 2, top, icon);
    top += iconSize.height() + line;

    QFont title = font();
    title.setPointSizeF(title.pointSizeF() * 1.6);
    painter.setFont(title);
    const int titleHeight = QFontMetrics(title).height();
    painter.drawText(QRect(area.left(), top, area.width(), titleHeight),
                     Qt::AlignHCenter | Qt::AlignTop, tr("What do you want to plan?"));
    top += titleHeight + line / 2;

    painter.setFont(font());
    painter.drawText(area.adjusted(2 * line, top - area.top(), -2 * line, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     tr("Choose a test or a distribution from the menus above,\n"
                        "or open a saved analysis with Ctrl+O."));
}

} // namespace quorvanta
