// A plot as large as its widget, drawn by the plotting routine of the graphs.
#pragma once

#include "output/presentation.h"

#include <QWidget>

namespace quorvanta {

class PlotPicture : public QWidget {
    Q_OBJECT

  public:
    PlotPicture(const QString& name, QWidget* parent);

    // Draws this plot from now on; without a result it says the words instead.
    void Draw(const Presentation& plot, const QString& words);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void DblClick();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    Presentation plot_;
    QString words_;
};

} // namespace quorvanta
