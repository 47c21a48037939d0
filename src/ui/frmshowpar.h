// frmShowPar: which parameters a table or graph has on its axes, and the values of all others. It
// stands at the right edge of the main window, beside the table or graph and never over it.
#pragma once

#include "core/showpar.h"
#include "core/types.h"
#include "ui/parameterdock.h"

#include <QPointer>

#include <array>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace quorvanta {

class MnemonicLabel;
class ValueBox;

class frmShowPar : public ParameterDock {
    Q_OBJECT

  public:
    explicit frmShowPar(QWidget* parent);

    // Takes lists, texts and colours from the state.
    void Refresh();

    // During a run the button says "Cancel", the bar shows how far it has come, and nothing else
    // can be pressed or typed.
    void StartProgress(i32 total);
    void StepProgress();
    void EndProgress();

    void cbYXZPar_Click(i16 k, i16 parNo);
    void txtAxis_Change(AxisText which);
    void txtParValue_Change(i16 i) override;
    void txtParValue_DblClick(i16 i) override;
    void cmdOK_Click() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    static constexpr i16 FixedRows = MaxPar + 1 - NoOfRoles;

    QWidget* MakeInputs();
    void MakeRole(QVBoxLayout& column, i16 k, const QString& label);
    QWidget* MakeAxisBox(AxisText which, const QString& labelName, const QString& label,
                         const QString& boxName);
    void MarkReading();
    void ShowHint();
    ValueBox* RefusedBox();
    ValueBox& Box(AxisText which) { return *txtAxis_[static_cast<std::size_t>(which)]; }

    std::array<QComboBox*, NoOfRoles> cbYXZPar_{};
    std::array<ValueBox*, 4> txtAxis_{}; // by AxisText
    QLabel* lblGetCalc_;
    QLabel* lblProgress_;
    QProgressBar* pgrProgress_;
    QPushButton* cmdOK_;
    QPointer<QWidget> focusBeforeRun_;
    i32 done_ = 0;
};

} // namespace quorvanta
