// What the windows of parameters beside a child window have in common: inputs that scroll where the
// main window is too low for them, with their buttons below, and labels whose letters count while
// the focus is among them.
#pragma once

#include <QDockWidget>

class QScrollArea;
class QVBoxLayout;

namespace quorvanta {

class ParameterDock : public QDockWidget {
    Q_OBJECT

  public:
    ParameterDock(const QString& name, QWidget* parent);

  protected:
    // Lays the window out: the inputs, and the column under them, which is handed back.
    QVBoxLayout* LayOut(QWidget* inputs);

    // As wide as the inputs, so that no label is cut, and as high, so that what stands under them
    // follows at once; what does not fit into the main window's height is scrolled.
    void FitToInputs();

    QWidget& Inputs() { return *inputs_; }

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QScrollArea* scroll_;
    QWidget* inputs_ = nullptr;
};

} // namespace quorvanta
