// A small picture of the distributions under H0 and H1, drawn anew as they are chosen.
#pragma once

#include "montecarlo/shiftmodel.h"

#include <QWidget>

#include <vector>

namespace quorvanta {

class DistrPicture : public QWidget {
    Q_OBJECT

  public:
    explicit DistrPicture(QWidget* parent);

    void Draw(const std::vector<DistrCurve>& curves);
    const std::vector<DistrCurve>& Curves() const { return curves_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<DistrCurve> curves_;
};

} // namespace quorvanta
