// frmMonteGroupSeq: the probabilities to stop at the analyses of a group sequential design, its
// average size, and its boundaries as a picture.
#pragma once

#include "core/platform.h"
#include "output/designresults.h"

#include <QDialog>

#include <array>

class QGridLayout;
class QGroupBox;
class QLabel;
class QRadioButton;

namespace quorvanta {

class PlotPicture;

class frmMonteGroupSeq : public QDialog {
    Q_OBJECT

  public:
    explicit frmMonteGroupSeq(QWidget* parent);

    // Takes the design of the current analysis from the state.
    void Refresh();

    void optBoundScale_Click(i16 i);
    void cmdPrintPicture_Click();
    void cmdCopyPicture_Click();
    void cmdSavePicture_Click();

  private:
    // Analyses at most, and the line of all of them.
    static constexpr i16 Rows = 7;

    // The labels of one line.
    struct Line {
        QLabel* lblInterimAnalysis;
        QLabel* lblFraction;
        QLabel* lblBoundary;
        QLabel* lblSignEstimate;
        QLabel* lblPowerEstimate;
        QLabel* lblPrAcceptEstimate;
    };

    QGroupBox* MakeTable();
    QGroupBox* MakePicture();
    void AddHeads(QGridLayout& grid);
    void AddAverages(QGridLayout& grid);
    void DrawPicture();
    void GiveOut(OutputAction action);
    QLabel* MakeLabel(const QString& name, const QString& text = {});

    std::array<Line, Rows> lines_{};
    QLabel* lblHead1_;
    std::array<QLabel*, 2> lblPair_{};
    QLabel* lblASN_;
    QLabel* lblASNH0_;
    QLabel* lblASNH1_;
    QLabel* lblH0True_;
    QLabel* lblH1True_;
    QWidget* lnASN_;
    std::array<QRadioButton*, 2> optBoundScale_{};
    BoundScale scale_ = BoundScale::Statistic;
    PlotPicture* picBoundary_;
};

} // namespace quorvanta
