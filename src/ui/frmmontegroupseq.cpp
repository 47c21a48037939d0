#include "ui/frmmontegroupseq.h"

#include "output/printcopy.h"
#include "ui/plotpicture.h"
#include "ui/qttext.h"

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace quorvanta {

namespace {

enum Column {
    AnalysisColumn,
    FractionColumn,
    BoundaryColumn,
    SignColumn,
    PowerColumn,
    AcceptColumn
};

constexpr int HeadRow = 0;
constexpr int PairRow = 1;
constexpr int FirstRow = 2;

constexpr const char* FractionHead = "Information Fraction";
constexpr const char* BoundaryHead = "Boundaries";
constexpr const char* LevelHead = "Actual Significance Level";
constexpr const char* PowerHead = "Power";
constexpr const char* AcceptHead = "Pr(Accept H0 if H1 true)";

// What a screen reader says of a cell: its column, its line, its text.
QString Spoken(const QString& column, const QString& line, const QString& text) {
    return column.isEmpty() || text.isEmpty() ? text : column + ", " + line + ": " + text;
}

} // namespace

frmMonteGroupSeq::frmMonteGroupSeq(QWidget* parent)
    : QDialog(parent), picBoundary_(new PlotPicture("picBoundary", this)) {
    picBoundary_->setAccessibleName(tr("Picture of the boundaries"));
    setObjectName("frmMonteGroupSeq");
    setWindowTitle(DesignCaption);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeTable());
    column->addWidget(MakePicture(), 1);
}

QLabel* frmMonteGroupSeq::MakeLabel(const QString& name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void frmMonteGroupSeq::AddHeads(QGridLayout& grid) {
    lblHead1_ = MakeLabel("lblHead1", BoundaryHead);
    grid.addWidget(MakeLabel("lblFractionHead", FractionHead), HeadRow, FractionColumn);
    grid.addWidget(lblHead1_, HeadRow, BoundaryColumn);
    grid.addWidget(MakeLabel("lblSignLevel", LevelHead), HeadRow, SignColumn);
    grid.addWidget(MakeLabel("lblPower", PowerHead), HeadRow, PowerColumn);
    grid.addWidget(MakeLabel("lblPrAccept", AcceptHead), HeadRow, AcceptColumn);
    lblPair_ = {MakeLabel("lblSignEst"), MakeLabel("lblPowerEst")};
    grid.addWidget(lblPair_[0], PairRow, SignColumn);
    grid.addWidget(lblPair_[1], PairRow, PowerColumn);
}

void frmMonteGroupSeq::AddAverages(QGridLayout& grid) {
    const int row = FirstRow + Rows;
    auto* line = new QFrame(this);
    line->setObjectName("lnASN");
    line->setFrameShape(QFrame::HLine);
    lnASN_ = line;
    grid.addWidget(line, row, 0, 1, AcceptColumn + 1);
    lblASN_ = MakeLabel("lblASN");
    lblH0True_ = MakeLabel("lblH0True", "H0 is True");
    lblH1True_ = MakeLabel("lblH1True", "H1 is True");
    lblASNH0_ = MakeLabel("lblASNH0");
    lblASNH1_ = MakeLabel("lblASNH1");
    grid.addWidget(lblH0True_, row + 1, SignColumn);
    grid.addWidget(lblH1True_, row + 1, PowerColumn);
    grid.addWidget(lblASN_, row + 2, 0, 1, 3);
    grid.addWidget(lblASNH0_, row + 2, SignColumn);
    grid.addWidget(lblASNH1_, row + 2, PowerColumn);
}

QGroupBox* frmMonteGroupSeq::MakeTable() {
    auto* box = new QGroupBox(this);
    box->setObjectName("fraSim");
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(2 * fontMetrics().averageCharWidth());
    AddHeads(*grid);
    for (i16 i = 0; i < Rows; ++i) {
        Line& line = lines_[static_cast<std::size_t>(i)];
        line = {MakeLabel(ControlName("lblInterimAnalysis", i)),
                MakeLabel(ControlName("lblFraction", i)),
                MakeLabel(ControlName("lblBoundary", i)),
                MakeLabel(ControlName("lblSignEstimate", i)),
                MakeLabel(ControlName("lblPowerEstimate", i)),
                MakeLabel(ControlName("lblPrAcceptEstimate", i))};
        line.lblBoundary->setLayoutDirection(Qt::LeftToRight); // a minus stands in front
        grid->addWidget(line.lblInterimAnalysis, FirstRow + i, AnalysisColumn);
        grid->addWidget(line.lblFraction, FirstRow + i, FractionColumn);
        grid->addWidget(line.lblBoundary, FirstRow + i, BoundaryColumn);
        grid->addWidget(line.lblSignEstimate, FirstRow + i, SignColumn);
        grid->addWidget(line.lblPowerEstimate, FirstRow + i, PowerColumn);
        grid->addWidget(line.lblPrAcceptEstimate, FirstRow + i, AcceptColumn);
    }
    AddAverages(*grid);
    return box;
}

QGroupBox* frmMonteGroupSeq::MakePicture() {
    auto* box = new QGroupBox(this);
    box->setObjectName("fraBoundaries");
    box->setTitle("Stopping Boundaries");
    auto* bar = new QHBoxLayout;
    const char* captions[] = {"&Z Scale", "&Nominal p"};
    for (i16 i = 0; i < 2; ++i) {
        auto* button = new QRadioButton(captions[i], box);
        button->setObjectName(ControlName("optBoundScale", i));
        button->setChecked(i == 0);
        connect(button, &QRadioButton::toggled, this, [this, i](bool isOn) {
            if (isOn)
                optBoundScale_Click(i);
        });
        bar->addWidget(button);
        optBoundScale_[static_cast<std::size_t>(i)] = button;
    }
    bar->addStretch(1);
    const auto add = [this, bar](const char* name, const char* caption, auto handler) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, handler);
        bar->addWidget(button);
    };
    add("cmdPrintPicture", "&Print", &frmMonteGroupSeq::cmdPrintPicture_Click);
    add("cmdCopyPicture", "C&opy", &frmMonteGroupSeq::cmdCopyPicture_Click);
    add("cmdSavePicture", "&Save", &frmMonteGroupSeq::cmdSavePicture_Click);
    auto* column = new QVBoxLayout(box);
    column->addWidget(picBoundary_, 1);
    column->addLayout(bar);
    return box;
}

void frmMonteGroupSeq::Refresh() {
    const std::vector<DesignRow> rows = DesignRows();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const DesignRow row = i < rows.size() ? rows[i] : DesignRow{};
        const Line& line = lines_[i];
        const struct {
            QLabel* Label;
            const std::string& Text;
            const char* What;
        } cells[] = {{line.lblInterimAnalysis, row.Analysis, ""},
                     {line.lblFraction, row.Fraction, FractionHead},
                     {line.lblBoundary, row.Boundaries, BoundaryHead},
                     {line.lblSignEstimate, row.Level, LevelHead},
                     {line.lblPowerEstimate, row.Power, PowerHead},
                     {line.lblPrAcceptEstimate, row.Accept, AcceptHead}};
        for (const auto& cell : cells) {
            cell.Label->setText(ToQt(cell.Text));
            cell.Label->setVisible(i < rows.size());
            cell.Label->setAccessibleName(
                Spoken(cell.What, ToQt(row.Analysis), cell.Label->text()));
        }
    }
    const QString pair = ToQt(DesignPairHead());
    for (QLabel* label : lblPair_) {
        label->setText(pair);
        label->setVisible(!pair.isEmpty());
    }
    const std::string bounds = DesignBoundHead();
    lblHead1_->setText(bounds.empty() ? BoundaryHead : QString(BoundaryHead) + "\n" + ToQt(bounds));
    const DesignAverage average = AverageOfDesign();
    lblASN_->setText(ToQt(average.Caption));
    lblASNH0_->setText(ToQt(average.H0));
    lblASNH1_->setText(ToQt(average.H1));
    for (const auto& [label, head] : {std::pair(lblASNH0_, lblH0True_), {lblASNH1_, lblH1True_}})
        label->setAccessibleName(Spoken(lblASN_->text().simplified(), head->text(), label->text()));
    for (QWidget* part : {static_cast<QWidget*>(lblASN_), static_cast<QWidget*>(lblASNH0_),
                          static_cast<QWidget*>(lblASNH1_), static_cast<QWidget*>(lblH0True_),
                          static_cast<QWidget*>(lblH1True_), lnASN_})
        part->setVisible(!average.Caption.empty());
    // In very large type the heads take two lines, so that the window stays on the screen.
    if (sizeHint().width() > screen()->availableSize().width()) {
        findChild<QLabel*>("lblFractionHead")->setText("Information\nFraction");
        findChild<QLabel*>("lblSignLevel")->setText("Actual\nSignificance Level");
        findChild<QLabel*>("lblPrAccept")->setText("Pr(Accept H0\nif H1 true)");
    }
    DrawPicture();
}

void frmMonteGroupSeq::DrawPicture() {
    picBoundary_->Draw(BoundaryPlot(scale_), tr("There is no design to show."));
}

void frmMonteGroupSeq::optBoundScale_Click(i16 i) {
    scale_ = i == 0 ? BoundScale::Statistic : BoundScale::Level;
    DrawPicture();
}

void frmMonteGroupSeq::GiveOut(OutputAction action) {
    OutputPicture(action, BoundaryPlot(scale_), "Stopping Boundaries");
}

void frmMonteGroupSeq::cmdPrintPicture_Click() {
    GiveOut(OutputAction::Print);
}

void frmMonteGroupSeq::cmdCopyPicture_Click() {
    GiveOut(OutputAction::Copy);
}

void frmMonteGroupSeq::cmdSavePicture_Click() {
    GiveOut(OutputAction::Save);
}

} // namespace quorvanta
