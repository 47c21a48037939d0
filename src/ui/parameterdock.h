// What the windows of parameters beside a child window have in common: inputs that scroll where the
// main window is too low for them, with their buttons below, rows of parameters and their values,
// and labels whose letters count while the focus is among them.
#pragma once

#include "core/types.h"

#include <QDockWidget>

#include <functional>
#include <vector>

class QGridLayout;
class QScrollArea;
class QVBoxLayout;

namespace quorvanta {

class MnemonicLabel;
class ValueBox;

class ParameterDock : public QDockWidget {
    Q_OBJECT

  public:
    ParameterDock(const QString& name, QWidget* parent);

    virtual void txtParValue_Change(i16 i) = 0;
    virtual void txtParValue_DblClick(i16 i) = 0;
    virtual void cmdOK_Click() = 0;

  protected:
    // Lays the window out: the inputs, and the column under them, which is handed back.
    QVBoxLayout* LayOut(QWidget* inputs);

    // As wide as the inputs, so that no label is cut, and as high, so that what stands under them
    // follows at once; what does not fit into the main window's height is scrolled.
    void FitToInputs();

    QWidget& Inputs() { return *inputs_; }

    // Rows of a label and the box of its value, with arrow keys from box to box.
    void MakeParRows(QGridLayout& grid, i16 count, const char* labelName);

    // Row i is the parameter at a position of the list, or nothing where that is negative.
    void ShowParRow(i16 i, i16 parNo);

    ValueBox& ParValueBox(i16 i) { return *txtParValue_[static_cast<std::size_t>(i)]; }

    // What is typed is a change, and Enter presses OK.
    void ConnectBox(ValueBox& box, const std::function<void()>& change);

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QScrollArea* scroll_;
    QWidget* inputs_ = nullptr;
    std::vector<MnemonicLabel*> lblPar_;
    std::vector<ValueBox*> txtParValue_;
};

} // namespace quorvanta
