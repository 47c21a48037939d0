#include "ui/frmshowintpar.h"

#include "core/general.h"
#include "core/grids.h"
#include "core/reading.h"
#include "core/typed_text.h"
#include "ui/mnemoniclabel.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

namespace {

constexpr const char* HeadNames[] = {"lblRejectH0", "lblAcceptH0", "lblSize1", "lblSize2"};
constexpr const char* BoxNames[] = {"txtRejectH0", "txtAcceptH0", "txtSize1", "txtSize2"};

QString Spoken(const std::string& caption) {
    return ToQt(StripAmpersand(caption)).trimmed();
}

} // namespace

frmShowIntPar::frmShowIntPar(QWidget* parent) : ParameterDock("frmShowIntPar", parent) {
    QVBoxLayout* column = LayOut(MakeInputs());
    lblGetCalc_ = new QLabel("Double-click Blue Text to Calculate the Value from Table(s).", this);
    lblGetCalc_->setObjectName("lblGetCalc");
    lblGetCalc_->setWordWrap(true);
    cmdOK_ = new QPushButton("OK", this);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setAutoDefault(true); // Enter presses it when it has the focus
    connect(cmdOK_, &QPushButton::clicked, this, &frmShowIntPar::cmdOK_Click);
    column->addWidget(lblGetCalc_);
    column->addWidget(cmdOK_, 0, Qt::AlignRight);
    column->addStretch(0);
    setFocusProxy(&ParValueBox(0));
}

// In the order of the eye, which the Tab key follows: what is tested, when, and how long.
QWidget* frmShowIntPar::MakeInputs() {
    auto* inputs = new QWidget(this);
    auto* column = new QVBoxLayout(inputs);
    column->setContentsMargins(0, 0, 0, 0);
    const int gap = fontMetrics().height() / 2;
    auto* parameters = new QGridLayout;
    parameters->setColumnStretch(1, 1);
    MakeParRows(*parameters, MaxPar + 1, "lblParName");
    column->addLayout(parameters);
    column->addSpacing(gap);
    auto* table = new QGridLayout;
    MakeTable(*table);
    column->addLayout(table);
    run_ = new QWidget(inputs);
    auto* run = new QGridLayout(run_);
    run->setContentsMargins(0, gap, 0, 0);
    run->setColumnStretch(1, 1);
    txtMaxNoOfSim_ =
        MakeRunBox(*run, 0, "lblMaxNoOfSim", "&Max. No of Simulations", "txtMaxNoOfSim");
    txtSeed_ = MakeRunBox(*run, 1, "lblSeed", "Rand&om Seed", "txtSeed");
    ConnectBox(*txtMaxNoOfSim_, [this] { txtMaxNoOfSim_Change(); });
    ConnectBox(*txtSeed_, [this] { txtSeed_Change(); });
    txtMaxNoOfSim_->setPlaceholderText(tr("no end"));
    txtSeed_->setPlaceholderText(tr("from the clock"));
    column->addWidget(run_);
    column->addStretch(1);
    return inputs;
}

void frmShowIntPar::MakeTable(QGridLayout& grid) {
    for (i16 row = 0; row < MaxIntRows; ++row) {
        const auto at = static_cast<std::size_t>(row);
        lblAnalysis_[at] = new QLabel(this);
        lblAnalysis_[at]->setObjectName(ControlName("lblAnalysis", row));
        grid.addWidget(lblAnalysis_[at], row + 1, 0);
        for (std::size_t c = 0; c < Columns; ++c) {
            auto* box = new ValueBox(this);
            const IntColumn column = IntColumns[c];
            box->setObjectName(ControlName(BoxNames[c], row));
            box->SetVisibleCharacters(6);
            ConnectBox(*box, [this, column, row] { txtCell_Change(column, row); });
            connect(box, &ValueBox::MoveToNext, this, [this, column, row](int step) {
                const int next = std::clamp(row + step, 0, IntRows() - 1);
                Cell(column, static_cast<i16>(next)).setFocus(Qt::TabFocusReason);
            });
            grid.addWidget(box, row + 1, static_cast<int>(c) + 1);
            cells_[c][at] = box;
        }
    }
    for (std::size_t c = 0; c < Columns; ++c) {
        head_[c] = new MnemonicLabel(cells_[c][0], this);
        head_[c]->setObjectName(HeadNames[c]);
        grid.addWidget(head_[c], 0, static_cast<int>(c) + 1);
    }
}

ValueBox* frmShowIntPar::MakeRunBox(QGridLayout& grid, int row, const QString& labelName,
                                    const QString& label, const QString& boxName) {
    auto* box = new ValueBox(this);
    box->setObjectName(boxName);
    box->SetVisibleCharacters(10);
    box->setAccessibleName(ToQt(StripAmpersand(FromQt(label))));
    auto* text = new MnemonicLabel(box, this);
    text->setObjectName(labelName);
    text->setText(label);
    grid.addWidget(text, row, 0);
    grid.addWidget(box, row, 1);
    return box;
}

ValueBox& frmShowIntPar::Cell(IntColumn column, i16 row) {
    return *cells_[static_cast<std::size_t>(column)][static_cast<std::size_t>(row)];
}

void frmShowIntPar::Refresh() {
    if (!HasIntPar())
        return;
    for (i16 i = 0; i <= MaxPar; ++i)
        ShowParRow(i, IntPar(i));
    RefreshTable();
    txtMaxNoOfSim_->Write(ToQt(MaxNoOfSimText));
    txtSeed_->Write(ToQt(SeedText));
    run_->setVisible(HasIntRun());
    ShowMarks();
    FitToInputs();
}

void frmShowIntPar::RefreshTable() {
    for (std::size_t c = 0; c < Columns; ++c) {
        const bool shown = HasIntColumn(IntColumns[c]);
        head_[c]->setVisible(shown);
        if (shown)
            head_[c]->setText(ToQt(IntColumnCaption(IntColumns[c])));
    }
    for (i16 row = 0; row < MaxIntRows; ++row) {
        const bool hasRow = row < IntRows();
        QLabel& head = *lblAnalysis_[static_cast<std::size_t>(row)];
        head.setVisible(hasRow);
        if (hasRow)
            head.setText(ToQt(IntRowHead(row)));
    }
    RefreshCells();
}

void frmShowIntPar::RefreshCells() {
    for (const IntColumn column : IntColumns) {
        for (i16 row = 0; row < MaxIntRows; ++row) {
            ValueBox& box = Cell(column, row);
            const bool shown = row < IntRows() && HasIntColumn(column);
            box.setVisible(shown);
            if (!shown)
                continue;
            const bool isOpen = IsIntCellOpen(column, row);
            box.Write(ToQt(IntCellText(column, row)));
            box.setReadOnly(!isOpen);
            box.setFocusPolicy(isOpen ? Qt::StrongFocus : Qt::ClickFocus);
            box.setPlaceholderText(ToQt(IntCellDefault(column, row)));
            box.setAccessibleName(Spoken(IntColumnCaption(column)) + ", " + ToQt(IntRowHead(row)));
        }
    }
}

void frmShowIntPar::ShowMarks() {
    bool anyBlue = false;
    const auto mark = [](ValueBox& box) { box.SetNote(ToQt(ReadingNote(FromQt(box.text())))); };
    for (i16 i = 0; IntPar(i) >= 0; ++i) {
        ValueBox& box = ParValueBox(i);
        const bool isBlue = IsBluePar(IntPar(i));
        box.SetBlue(isBlue);
        anyBlue = anyBlue || isBlue;
        mark(box);
    }
    for (const auto& column : cells_)
        for (ValueBox* box : column)
            mark(*box);
    mark(*txtMaxNoOfSim_);
    mark(*txtSeed_);
    lblGetCalc_->setVisible(anyBlue);
}

void frmShowIntPar::SetRunning(bool isRunning) {
    Inputs().setEnabled(!isRunning);
    cmdOK_->setEnabled(!isRunning);
}

void frmShowIntPar::txtCell_Change(IntColumn column, i16 row) {
    ValueBox& box = Cell(column, row);
    box.Accept(ToQt(TypedIntCell(column, row, FromQt(box.text()))));
    ShowMarks();
}

void frmShowIntPar::txtParValue_Change(i16 i) {
    ValueBox& box = ParValueBox(i);
    box.Accept(ToQt(TypedParText(IntPar(i), FromQt(box.text()))));
    RefreshCells();
    ShowMarks();
}

void frmShowIntPar::txtParValue_DblClick(i16 i) {
    const i16 parNo = IntPar(i);
    if (Calculating != False || parNo < 0 || !IsBluePar(parNo))
        return;
    GetFromTable(parNo);
    Refresh();
}

void frmShowIntPar::txtMaxNoOfSim_Change() {
    txtMaxNoOfSim_->Accept(ToQt(TypedMaxNoOfSim(FromQt(txtMaxNoOfSim_->text()))));
    ShowMarks();
}

void frmShowIntPar::txtSeed_Change() {
    txtSeed_->Accept(ToQt(TypedSeed(FromQt(txtSeed_->text()))));
    ShowMarks();
}

void frmShowIntPar::cmdOK_Click() {
    if (Calculating == False)
        StartIntPar();
}

} // namespace quorvanta
