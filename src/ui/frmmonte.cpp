#include "ui/frmmonte.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/records.h"
#include "montecarlo/simulation.h"
#include "output/statement_simulation.h"
#include "ui/darkstyle.h"
#include "ui/qttext.h"
#include "ui/simpicture.h"

#include <QContextMenuEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvanta {

namespace {

constexpr const char* EstimateHead = " Lower   Estimate   Upper";
constexpr const char* CaptionNames[] = {"lblSignLevel", "lblPower", "lblPrAccept"};
constexpr const char* HeadNames[] = {"lblSignEst", "lblPowerEst", "lblPrAcceptEst"};
constexpr const char* EstimateNames[] = {"lblSignEstimate", "lblPowerEstimate",
                                         "lblPrAcceptEstimate"};
constexpr int FirstRow = 2; // of the estimates, behind captions and heads

std::array<std::string, 3> Captions() {
    const EstimateCaptions captions = CaptionsOfEstimates();
    return {captions.Sign, captions.Power, captions.PrAccept};
}

const std::string& EstimateText(std::size_t column, int row) {
    return column == 0   ? SignEstimateText(row)
           : column == 1 ? PowerEstimateText(row)
                         : PrAcceptEstimateText(row);
}

// "3 min 20 s left"; in steps that the eye can follow.
QString TimeLeftText(f64 seconds) {
    if (seconds < 0)
        return "";
    const auto whole = static_cast<long long>(std::ceil(seconds));
    constexpr long long minute = 60;
    constexpr long long hour = 3600;
    if (whole >= hour)
        return frmMonte::tr("%1 h %2 min left").arg(whole / hour).arg(whole % hour / minute);
    if (whole >= minute)
        return frmMonte::tr("%1 min %2 s left").arg(whole / minute).arg(whole % minute);
    return frmMonte::tr("%1 s left").arg(whole);
}

QString Hint() {
    if (TestName.empty() && DistrName.empty())
        return frmMonte::tr("Choose a test or a distribution from the menus.");
    if (NoOfPar < 1)
        return frmMonte::tr("Choose the options, then press OK.");
    return frmMonte::tr("Type the values at the side, then press OK.");
}

} // namespace

frmMonte::frmMonte(i16 windowNo, i16 analysisNo)
    : ChildWindow(SimulationWindow, windowNo, analysisNo), lblHead1_(MakeLabel("lblHead1")),
      lblHint_(MakeLabel("lblHint")), fraSim_(new QFrame(this)), averages_(new QWidget(fraSim_)),
      lblReject_(MakeLabel("lblReject", "Prob (Reject Test No)")),
      tblReject_(new QTableWidget(fraSim_)), picEstimate_(new SimPicture(fraSim_)),
      pgrProgress_(new QProgressBar(this)), lblTimeLeft_(MakeLabel("lblTimeLeft")),
      cmdPause_(new QPushButton("&Pause", this)), cmdExit_(new QPushButton("E&xit", this)),
      txtHide_(new QLineEdit(this)) {
    setObjectName(ControlName("frmMonte", windowNo));
    lblHead1_->setWordWrap(true);
    QFont headFont = lblHead1_->font();
    headFont.setBold(true);
    lblHead1_->setFont(headFont);
    lblHint_->setWordWrap(true);
    fraSim_->setObjectName("fraSim");
    fraSim_->setFrameShape(QFrame::StyledPanel);
    pgrProgress_->setObjectName("pgrProgress");
    pgrProgress_->setAccessibleName(tr("Simulations done"));
    cmdPause_->setObjectName("cmdPause");
    cmdExit_->setObjectName("cmdExit");
    for (QPushButton* button : {cmdPause_, cmdExit_})
        button->setAutoDefault(true);
    connect(cmdPause_, &QPushButton::clicked, this, &frmMonte::cmdPause_Click);
    connect(cmdExit_, &QPushButton::clicked, this, &frmMonte::cmdExit_Click);
    tblReject_->setLayoutDirection(Qt::LeftToRight);
    DarkStyle::Dress(*tblReject_);
    txtHide_->setObjectName("txtHide");
    txtHide_->setAccessibleName(tr("Simulation"));
    txtHide_->setFocusPolicy(Qt::NoFocus);
    txtHide_->setReadOnly(true);
    txtHide_->setFrame(false);

    auto* number = new QHBoxLayout;
    number->addWidget(MakeLabel("lblSimulationNo", "Simulation No:"));
    lblSimValue_ = MakeLabel("lblSimValue");
    number->addWidget(lblSimValue_, 1);
    auto* estimates = new QGridLayout;
    estimates->setHorizontalSpacing(fontMetrics().height());
    MakeEstimates(*estimates);
    auto* averages = new QGridLayout(averages_);
    averages->setContentsMargins(0, 0, 0, 0);
    MakeAverages(*averages);
    auto* inner = new QVBoxLayout(fraSim_);
    inner->addLayout(number);
    inner->addLayout(estimates);
    inner->addWidget(averages_);
    tblReject_->setObjectName("tblReject");
    tblReject_->setAccessibleName(lblReject_->text());
    tblReject_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    inner->addWidget(lblReject_);
    inner->addWidget(tblReject_, 1);
    inner->addWidget(picEstimate_, 1);

    auto* foot = new QHBoxLayout;
    foot->addWidget(pgrProgress_, 1);
    foot->addWidget(lblTimeLeft_);
    foot->addStretch(0);
    foot->addWidget(cmdPause_);
    foot->addWidget(cmdExit_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHead1_);
    column->addWidget(lblHint_);
    column->addWidget(fraSim_, 1);
    column->addLayout(foot);

    lblHead1_->installEventFilter(this);
    fraSim_->installEventFilter(this);
    Refresh();
}

QLabel* frmMonte::MakeLabel(const QString& name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void frmMonte::MakeEstimates(QGridLayout& grid) {
    for (std::size_t c = 0; c < Columns; ++c) {
        const int column = static_cast<int>(c) + 1;
        captions_[c] = MakeLabel(CaptionNames[c]);
        heads_[c] = MakeLabel(HeadNames[c], EstimateHead);
        grid.addWidget(captions_[c], 0, column, Qt::AlignHCenter);
        grid.addWidget(heads_[c], 1, column, Qt::AlignHCenter);
        grid.setColumnStretch(column, 1);
    }
    for (std::size_t r = 0; r < Rows; ++r) {
        const int row = static_cast<int>(r);
        lblInterimAnalysis_[r] = MakeLabel(ControlName("lblInterimAnalysis", row));
        grid.addWidget(lblInterimAnalysis_[r], FirstRow + row, 0);
        for (std::size_t c = 0; c < Columns; ++c) {
            estimates_[c][r] = MakeLabel(ControlName(EstimateNames[c], row));
            // The room that they will take: nothing moves when they come.
            estimates_[c][r]->setMinimumWidth(
                fontMetrics().horizontalAdvance("0.0000   0.0000   0.0000"));
            grid.addWidget(estimates_[c][r], FirstRow + row, static_cast<int>(c) + 1,
                           Qt::AlignHCenter);
        }
    }
}

void frmMonte::MakeAverages(QGridLayout& grid) {
    auto* lnASN = new QFrame(averages_);
    lnASN->setObjectName("lnASN");
    lnASN->setFrameShape(QFrame::HLine);
    grid.addWidget(lnASN, 0, 0, 1, 3);
    lblASN_ = MakeLabel("lblASN");
    grid.addWidget(lblASN_, 1, 0);
    grid.addWidget(MakeLabel("lblH0True", "H0 is True"), 1, 1, Qt::AlignHCenter);
    grid.addWidget(MakeLabel("lblH1True", "H1 is True"), 1, 2, Qt::AlignHCenter);
    grid.addWidget(MakeLabel("lblASNH0", EstimateHead), 2, 1, Qt::AlignHCenter);
    grid.addWidget(MakeLabel("lblASNH1", EstimateHead), 2, 2, Qt::AlignHCenter);
    lblASNH0Est_ = MakeLabel("lblASNH0Est");
    lblASNH1Est_ = MakeLabel("lblASNH1Est");
    grid.addWidget(lblASNH0Est_, 3, 1, Qt::AlignHCenter);
    grid.addWidget(lblASNH1Est_, 3, 2, Qt::AlignHCenter);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(2, 1);
}

void frmMonte::Refresh() {
    const bool hasRows = NoOfPar > 0 && !(TestName.empty() && DistrName.empty());
    lblHead1_->setText(ToQt(ParListName));
    lblHead1_->setVisible(hasRows && !ParListName.empty());
    lblHint_->setText(Hint());
    fraSim_->setVisible(hasRows);
    cmdPause_->setVisible(hasRows);
    cmdExit_->setVisible(hasRows);
    if (hasRows)
        LayOutRows();
    ShowEstimates();
    const int rows = hasRows ? EstimateRows() : 0;
    if (rows != shownRows_) {
        shownRows_ = rows;
        // The layout outside knows of a change inside only when that is laid out.
        fraSim_->layout()->activate();
        FitToContent();
    }
}

void frmMonte::LayOutRows() {
    const std::array<std::string, Columns> captions = Captions();
    const int rows = EstimateRows();
    for (std::size_t c = 0; c < Columns; ++c) {
        captions_[c]->setText(ToQt(captions[c]));
        captions_[c]->setVisible(!captions[c].empty());
        heads_[c]->setVisible(!captions[c].empty());
    }
    for (std::size_t r = 0; r < Rows; ++r) {
        const int row = static_cast<int>(r);
        lblInterimAnalysis_[r]->setVisible(row < rows);
        lblInterimAnalysis_[r]->setText(ToQt(EstimateRowHead(static_cast<i16>(row))));
        for (std::size_t c = 0; c < Columns; ++c)
            estimates_[c][r]->setVisible(row < rows && !captions[c].empty());
    }
    lblASN_->setText(SimAverageCaption());
    averages_->setVisible(rows > 1);
}

void frmMonte::ShowEstimates() {
    const std::array<std::string, Columns> captions = Captions();
    for (std::size_t r = 0; r < Rows; ++r) {
        for (std::size_t c = 0; c < Columns; ++c) {
            const QString text = ToQt(EstimateText(c, static_cast<int>(r)));
            estimates_[c][r]->setText(text);
            estimates_[c][r]->setAccessibleName(ToQt(captions[c]) + ", " +
                                                lblInterimAnalysis_[r]->text() + ": " + text);
        }
    }
    lblASNH0Est_->setText(ToQt(SampleSizeEstimateText(0)));
    lblASNH1Est_->setText(ToQt(SampleSizeEstimateText(1)));
    const std::string& number = SampleSizeEstimateText(2);
    lblSimValue_->setText(number.empty() ? "" : " " + ToQt(number));
    lblHint_->setVisible(SimRunning == False && number.empty());
    const bool isRunHere = SimRunning == True && AnalysisTag() == AnalysisNo;
    const bool hasHistory = !number.empty() && (isRunHere || SimAnalysis() == AnalysisTag());
    picEstimate_->Draw(hasHistory ? SimHistory() : std::vector<SimPoint>{}, ToQt(captions[1]));
    cmdPause_->setText(isRunHere && Paused == True && Cancelled == False ? "&Continue" : "&Pause");
    cmdPause_->setEnabled(isRunHere);
    cmdExit_->setEnabled(isRunHere);
    ShowProgress();
    ShowRejections();
}

// One row for each hypothesis, as soon as the run is over.
void frmMonte::ShowRejections() {
    const bool isOwn =
        SimRunning == False && SimAnalysis() == AnalysisTag() && !SampleSizeEstimateText(2).empty();
    const McTable& table = SimRejections();
    const bool shown = isOwn && !table.Rows.empty();
    lblReject_->setVisible(shown);
    tblReject_->setVisible(shown);
    const auto rows = shown ? static_cast<int>(table.Rows.size()) : 0;
    const bool isNew = rows != std::exchange(shownRejections_, rows);
    if (!shown)
        return;
    const auto columns = static_cast<int>(table.Heads.size());
    tblReject_->setRowCount(rows);
    tblReject_->setColumnCount(columns);
    for (int c = 0; c < columns; ++c)
        tblReject_->setHorizontalHeaderItem(
            c, new QTableWidgetItem(ToQt(table.Heads[static_cast<std::size_t>(c)])));
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c) {
            auto* item = new QTableWidgetItem(
                ToQt(table.Rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]));
            item->setTextAlignment(Qt::AlignCenter);
            tblReject_->setItem(r, c, item);
        }
    tblReject_->resizeColumnsToContents();
    if (isNew)
        FitRejections(rows);
}

// Room for the rows that a window can well have.
void frmMonte::FitRejections(int rows) {
    constexpr int most = 8;
    QHeaderView* heads = tblReject_->horizontalHeader();
    const bool hasHeads = tblReject_->columnCount() > 1; // one for each analysis
    heads->setVisible(hasHeads);
    tblReject_->setMinimumHeight(std::min(rows, most) * tblReject_->rowHeight(0) +
                                 (hasHeads ? heads->sizeHint().height() : 0) +
                                 2 * tblReject_->frameWidth());
    fraSim_->layout()->activate();
    FitToContent();
}

void frmMonte::ShowProgress() {
    const bool hasEnd =
        SimRunning == True && AnalysisTag() == AnalysisNo && MaxNoOfSim < MostSimulations;
    pgrProgress_->setVisible(hasEnd);
    lblTimeLeft_->setVisible(hasEnd);
    if (!hasEnd)
        return;
    pgrProgress_->setRange(0, MaxNoOfSim);
    pgrProgress_->setValue(SimNo);
    lblTimeLeft_->setText(TimeLeftText(SimSecondsLeft()));
}

void frmMonte::ShowRunning() {
    ShowEstimates();
    if (SimRunning == True)
        cmdPause_->setFocus();
    else if (isAncestorOf(window()->focusWidget()))
        txtHide_->setFocus();
}

void frmMonte::cmdPause_Click() {
    SimPause();
}

void frmMonte::cmdExit_Click() {
    SimStop();
}

void frmMonte::Form_MouseDown(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmMonte::fraSim_MouseDown(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmMonte::lblHead1_MouseDown(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmMonte::OpenOutputMenu(const QPoint& at) {
    if (OutputReady == True)
        RequestOutputMenu(at);
}

bool frmMonte::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            const QPoint at = mouse->globalPosition().toPoint();
            if (watched == lblHead1_)
                lblHead1_MouseDown(at);
            else
                fraSim_MouseDown(at);
            return true;
        }
    }
    return ChildWindow::eventFilter(watched, event);
}

void frmMonte::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        Form_MouseDown(event->globalPosition().toPoint());
    else
        ChildWindow::mousePressEvent(event);
}

void frmMonte::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its own road (the press of the right button); this is the menu key.
    if (event->reason() == QContextMenuEvent::Keyboard)
        OpenOutputMenu(mapToGlobal(rect().center()));
    event->accept();
}

// The holder of the focus is never seen.
void frmMonte::resizeEvent(QResizeEvent* event) {
    ChildWindow::resizeEvent(event);
    txtHide_->setGeometry(width() + 1, height() + 1, 1, 1);
}

void frmMonte::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && SimRunning == True)
        cmdExit_Click();
    else
        ChildWindow::keyPressEvent(event);
}

} // namespace quorvanta
