// The boundaries of a design against the information, drawn as a graph is.
#pragma once

#include "output/designresults.h"

#include <QWidget>

namespace quorvanta {

class BoundaryPicture : public QWidget {
    Q_OBJECT

  public:
    explicit BoundaryPicture(QWidget* parent);

    void Draw(const Presentation& plot);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Presentation plot_;
};

} // namespace quorvanta
