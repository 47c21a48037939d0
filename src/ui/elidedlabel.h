// A line of text that gives way: where it is wider than its place it ends in dots, and the tool tip
// has all of it.
#pragma once

#include <QLabel>

namespace quorvanta {

class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quorvanta
