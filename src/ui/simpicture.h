// A small picture of the estimate of the power, with its interval, against the number of
// simulations: how it settles is seen at once.
#pragma once

#include "montecarlo/simulation.h"

#include <QWidget>

#include <vector>

namespace quorvanta {

class SimPicture : public QWidget {
    Q_OBJECT

  public:
    explicit SimPicture(QWidget* parent);

    // The name is that of what is estimated.
    void Draw(const std::vector<SimPoint>& points, const QString& name);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<SimPoint> points_;
};

} // namespace quorvanta
