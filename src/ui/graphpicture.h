// The picture of a graph window: the graph of an analysis, as large as the widget.
#pragma once

#include "core/types.h"

#include <QWidget>

namespace quorvanta {

class GraphPicture : public QWidget {
    Q_OBJECT

  public:
    GraphPicture(i16 analysisNo, QWidget* parent);

    // The content has changed.
    void Redraw();

    // Drawn faintly, as what is no longer valid.
    void SetDimmed(bool isDimmed);

    // Why there is no room for a plot; empty if there is.
    QString Problem() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void MenuRequested(const QPoint& at); // right button or menu key, a place on the screen
    void DblClick();
    void RoomLost(); // there is no room for a plot any more

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void LookForRoom();
    QSize InPixels(f64 widthInches, f64 heightInches) const;

    i16 analysisNo_;
    bool hasRoom_ = true;
    bool isDimmed_ = false;
};

} // namespace quorvanta
