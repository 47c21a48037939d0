// The label of a parameter: a button whose text stands at its left edge, as the labels of a form.
#pragma once

#include <QPushButton>

namespace quorvanta {

class ParLabelButton : public QPushButton {
    Q_OBJECT

  public:
    using QPushButton::QPushButton;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quorvanta
