// frmDistrGraph: the distributions behind the current analysis, as a picture.
#pragma once

#include "core/types.h"
#include "output/distrplot.h"

#include <QDialog>

#include <vector>

class QHBoxLayout;
class QRadioButton;

namespace quorvanta {

class PlotPicture;

class frmDistrGraph : public QDialog {
    Q_OBJECT

  public:
    explicit frmDistrGraph(QWidget* parent);

    // Takes the distributions, and what of them is plotted, from the state.
    void Refresh();

    void optPlotDistr_Click(DistrPlotKind kind);
    void cmdEdit_Click();
    void cmdPrint_Click();
    void cmdCopy_Click();
    void cmdSave_Click();

  private:
    QWidget* MakeOptions();
    QHBoxLayout* MakeButtons();

    struct Option {
        DistrPlotKind Kind;
        QRadioButton* Button;
    };
    std::vector<Option> optPlotDistr_;
    PlotPicture* picDistrGraph_;
};

} // namespace quorvanta
