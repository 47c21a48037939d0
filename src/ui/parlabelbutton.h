// The label of a parameter: a button whose text stands at its left edge, as the labels of a form.
#pragma once

#include <QPushButton>

namespace quorvanta {

class ParLabelButton : public QPushButton {
    Q_OBJECT

  public:
    using QPushButton::QPushButton;

    // Stands out: the parameter is the unknown.
    void SetUnknown(bool unknown);

    // Room for the text in the bold face too, so that nothing moves when the unknown changes.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    int Indent() const;
};

} // namespace quorvanta
