// frmShowIntPar: the levels and sizes of the analyses of a simulation, the values of the
// parameters, the number of simulations and their seed; or the levels and sizes of a design. It
// stands at the right edge of the main window, beside the window of the analysis.
#pragma once

#include "core/analysis_state.h"
#include "core/showintpar.h"
#include "core/types.h"
#include "ui/parameterdock.h"

#include <array>

class QGridLayout;
class QLabel;
class QPushButton;

namespace quorvanta {

class MnemonicLabel;
class ValueBox;

class frmShowIntPar : public ParameterDock {
    Q_OBJECT

  public:
    explicit frmShowIntPar(QWidget* parent);

    // Takes captions, texts and colours from the state.
    void Refresh();

    // While a simulation runs nothing can be pressed or typed.
    void SetRunning(bool isRunning);

    void txtCell_Change(IntColumn column, i16 row);
    void txtParValue_Change(i16 i) override;
    void txtParValue_DblClick(i16 i) override;
    void txtMaxNoOfSim_Change();
    void txtSeed_Change();
    void cmdOK_Click() override;

  private:
    static constexpr std::size_t Columns = std::size(IntColumns);

    QWidget* MakeInputs();
    void MakeTable(QGridLayout& grid);
    ValueBox* MakeRunBox(QGridLayout& grid, int row, const QString& labelName, const QString& label,
                         const QString& boxName);
    ValueBox& Cell(IntColumn column, i16 row);
    void RefreshTable();
    void RefreshCells();
    void ShowMarks();

    std::array<MnemonicLabel*, Columns> head_{};
    std::array<QLabel*, MaxIntRows> lblAnalysis_{};
    std::array<std::array<ValueBox*, MaxIntRows>, Columns> cells_{};
    QWidget* run_ = nullptr; // how long, from which seed
    ValueBox* txtMaxNoOfSim_ = nullptr;
    ValueBox* txtSeed_ = nullptr;
    QLabel* lblGetCalc_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

} // namespace quorvanta
