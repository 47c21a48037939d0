// frmMonte: a simulation, its estimates as they settle, and the buttons that pause and end it.
#pragma once

#include "ui/childwindow.h"

#include <array>

class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace quorvanta {

class SimPicture;

class frmMonte : public ChildWindow {
    Q_OBJECT

  public:
    frmMonte(i16 windowNo, i16 analysisNo);

    void Refresh() override;

    // Takes what changes during a run from the state: estimates, progress and buttons.
    void ShowEstimates();

    // The run has begun, or is over: the focus is on the button that the user needs.
    void ShowRunning();

    void cmdPause_Click();
    void cmdExit_Click();
    void Form_MouseDown(const QPoint& at);
    void fraSim_MouseDown(const QPoint& at);
    void lblHead1_MouseDown(const QPoint& at);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    static constexpr std::size_t Rows = 7; // six analyses, and over all
    static constexpr std::size_t Columns = 3;

    QLabel* MakeLabel(const QString& name, const QString& text = "");
    void MakeEstimates(QGridLayout& grid);
    void MakeAverages(QGridLayout& grid);
    void LayOutRows();
    void ShowProgress();
    void ShowRejections();
    void FitRejections(int rows);
    void OpenOutputMenu(const QPoint& at);

    QLabel* lblHead1_;
    QLabel* lblHint_;
    QFrame* fraSim_;
    QLabel* lblSimValue_;
    std::array<QLabel*, Columns> captions_{}; // lblSignLevel, lblPower, lblPrAccept
    std::array<QLabel*, Columns> heads_{};    // lblSignEst, lblPowerEst, lblPrAcceptEst
    std::array<QLabel*, Rows> lblInterimAnalysis_{};
    std::array<std::array<QLabel*, Rows>, Columns> estimates_{};
    QWidget* averages_;
    QLabel* lblASN_ = nullptr;
    QLabel* lblASNH0Est_ = nullptr;
    QLabel* lblASNH1Est_ = nullptr;
    QLabel* lblReject_;
    QTableWidget* tblReject_; // "Prob (Reject Test No)"
    SimPicture* picEstimate_;
    QProgressBar* pgrProgress_;
    QLabel* lblTimeLeft_;
    QPushButton* cmdPause_;
    QPushButton* cmdExit_;
    QLineEdit* txtHide_;
    int shownRows_ = -1;
    int shownRejections_ = 0; // rows of the table
};

} // namespace quorvanta
