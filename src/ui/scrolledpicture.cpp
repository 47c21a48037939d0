#include "ui/scrolledpicture.h"

#include "ui/accessible.h"
#include "ui/paintsurface.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

// The picture may be scrolled this far beyond its right edge, pixels.
constexpr int HorizontalMargin = 10;

void SetBar(QScrollBar& bar, int picture, int area, int margin) {
    bar.setMaximum(std::max(0, picture - area + (picture > area ? margin : 0)));
    bar.setPageStep(std::max(1, area));
}

} // namespace

ScrolledPicture::ScrolledPicture(const QString& pictureName, Drawer draw, QWidget* parent)
    : QWidget(parent), draw_(std::move(draw)), area_(new QWidget(this)),
      picture_(new QWidget(area_)), HScroll1_(new QScrollBar(Qt::Horizontal, this)),
      VScroll1_(new QScrollBar(Qt::Vertical, this)) {
    picture_->setObjectName(pictureName);
    MakeAccessiblePicture(*picture_);
    picture_->setFocusPolicy(Qt::StrongFocus);
    picture_->installEventFilter(this);
    area_->setAutoFillBackground(true);
    area_->setBackgroundRole(QPalette::Base);
    HScroll1_->setObjectName("HScroll1");
    VScroll1_->setObjectName("VScroll1");
    const int line = fontMetrics().height();
    for (QScrollBar* bar : {HScroll1_, VScroll1_}) {
        bar->setSingleStep(line);
        connect(bar, &QScrollBar::valueChanged, this, &ScrolledPicture::Scroll);
    }
    setFocusProxy(picture_);
}

QSize ScrolledPicture::PictureSize() const {
    // Measured on a device of the same resolution that keeps nothing.
    QPixmap device(1, 1);
    QPainter painter(&device);
    PaintSurface surface(painter, {});
    const Point edge = draw_(surface);
    const f64 perInch = surface.PixelsPerInch();
    return {static_cast<int>(std::ceil(edge.X * perInch)),
            static_cast<int>(std::ceil(edge.Y * perInch))};
}

void ScrolledPicture::Redraw() {
    drawn_ = PictureSize();
    Arrange();
    picture_->update();
    updateGeometry();
}

void ScrolledPicture::SetDimmed(bool isDimmed) {
    isDimmed_ = isDimmed;
    picture_->update();
}

// With room for the bar of a picture that is higher than there is room for: it takes no column
// then.
QSize ScrolledPicture::sizeHint() const {
    return drawn_ + QSize(VScroll1_->sizeHint().width(), 0);
}

QSize ScrolledPicture::minimumSizeHint() const {
    constexpr int characters = 24;
    constexpr int lines = 6;
    return {characters * fontMetrics().averageCharWidth(), lines * fontMetrics().height()};
}

// A bar takes its room from the picture, which may then need the other bar too.
void ScrolledPicture::Arrange() {
    const int thickness = VScroll1_->sizeHint().width();
    bool hasVertical = drawn_.height() > height();
    const bool hasHorizontal = drawn_.width() > width() - (hasVertical ? thickness : 0);
    hasVertical = drawn_.height() > height() - (hasHorizontal ? thickness : 0);
    const QSize area = size() - QSize(hasVertical ? thickness : 0, hasHorizontal ? thickness : 0);
    area_->setGeometry(0, 0, area.width(), area.height());
    picture_->resize(drawn_.expandedTo(area));
    HScroll1_->setVisible(hasHorizontal);
    HScroll1_->setGeometry(0, area.height(), area.width(), thickness);
    VScroll1_->setVisible(hasVertical);
    VScroll1_->setGeometry(area.width(), 0, thickness, area.height());
    SetBar(*HScroll1_, drawn_.width(), area.width(), HorizontalMargin);
    SetBar(*VScroll1_, drawn_.height(), area.height(), 0);
    Scroll();
}

void ScrolledPicture::Scroll() {
    picture_->move(-HScroll1_->value(), -VScroll1_->value());
    if (picture_->hasFocus())
        picture_->update(); // the frame of the focus stays in its place
}

void ScrolledPicture::PaintPicture() {
    QPainter painter(picture_);
    Paper paper;
    paper.Ink = palette().color(QPalette::Text);
    paper.Ground = palette().color(QPalette::Base);
    painter.fillRect(picture_->rect(), paper.Ground);
    PaintSurface surface(painter, paper);
    draw_(surface);
    if (isDimmed_)
        Dim(painter, picture_->rect(), paper.Ground);
    if (picture_->hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(area_->rect().translated(-picture_->pos()).adjusted(0, 0, -1, -1));
    }
}

bool ScrolledPicture::ScrollByKey(int key) {
    const auto by = [](QScrollBar& bar, QAbstractSlider::SliderAction action) {
        bar.triggerAction(action);
        return true;
    };
    switch (key) {
    case Qt::Key_Up:
        return by(*VScroll1_, QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
        return by(*VScroll1_, QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_Left:
        return by(*HScroll1_, QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Right:
        return by(*HScroll1_, QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return by(*VScroll1_, QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
        return by(*VScroll1_, QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_Home:
        return by(*VScroll1_, QAbstractSlider::SliderToMinimum);
    case Qt::Key_End:
        return by(*VScroll1_, QAbstractSlider::SliderToMaximum);
    default:
        return false;
    }
}

void ScrolledPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void ScrolledPicture::wheelEvent(QWheelEvent* event) {
    const bool sideways =
        (event->modifiers() & Qt::ShiftModifier) != 0 || event->angleDelta().y() == 0;
    QCoreApplication::sendEvent(sideways ? HScroll1_ : VScroll1_, event);
}

bool ScrolledPicture::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Paint:
        PaintPicture();
        return true;
    case QEvent::KeyPress:
        return ScrollByKey(static_cast<QKeyEvent*>(event)->key());
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        picture_->update();
        return false;
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton)
            emit MenuRequested(mouse->globalPosition().toPoint());
        return false;
    }
    case QEvent::ContextMenu: {
        // The mouse has its own road (the release of the right button); this is the menu key.
        const auto* menu = static_cast<QContextMenuEvent*>(event);
        if (menu->reason() == QContextMenuEvent::Keyboard)
            emit MenuRequested(area_->mapToGlobal(area_->rect().center()));
        return true;
    }
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            emit DblClick();
        return false;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void ScrolledPicture::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        picture_->update();
}

} // namespace quorvanta
