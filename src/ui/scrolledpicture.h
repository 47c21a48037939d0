// A picture that may be larger than the window that shows it, with scroll bars where it is.
#pragma once

#include "output/surface.h"

#include <QWidget>

#include <functional>

class QScrollBar;

namespace quorvanta {

class ScrolledPicture : public QWidget {
    Q_OBJECT

  public:
    // Draws the picture and answers its right and lower edge.
    using Drawer = std::function<Point(Surface&)>;

    // The picture has that object name; its bars are HScroll1 and VScroll1.
    ScrolledPicture(const QString& pictureName, Drawer draw, QWidget* parent);

    // The content has changed: its size is taken anew.
    void Redraw();

    // Drawn faintly, as what is no longer valid.
    void SetDimmed(bool isDimmed);

    QWidget& Picture() { return *picture_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void MenuRequested(const QPoint& at); // right button or menu key, a place on the screen
    void DblClick();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QSize PictureSize() const;
    void Arrange();
    void Scroll();
    void PaintPicture();
    bool ScrollByKey(int key);

    Drawer draw_;
    bool isDimmed_ = false;
    QSize drawn_; // what the drawing takes up
    QWidget* area_;
    QWidget* picture_; // the drawing, and at least all of the area
    QScrollBar* HScroll1_;
    QScrollBar* VScroll1_;
};

} // namespace quorvanta
