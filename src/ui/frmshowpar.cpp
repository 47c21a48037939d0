#include "ui/frmshowpar.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/grids.h"
#include "core/reading.h"
#include "core/records.h"
#include "core/run.h"
#include "core/typed_text.h"
#include "ui/mnemoniclabel.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace quorvanta {

namespace {

// A list that no one changes unawares: the wheel scrolls the inputs, and a letter with Alt is that
// of a label, where QComboBox would take the entry that begins with it.
class AxisList : public QComboBox {
  public:
    using QComboBox::QComboBox;

  protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->modifiers() == Qt::AltModifier && !event->text().isEmpty())
            event->ignore();
        else
            QComboBox::keyPressEvent(event);
    }
};

} // namespace

// Made in the order of the eye, which the Tab key follows.
frmShowPar::frmShowPar(QWidget* parent) : ParameterDock("frmShowPar", parent) {
    QVBoxLayout* column = LayOut(MakeInputs());
    lblGetCalc_ = new QLabel(this);
    lblGetCalc_->setObjectName("lblGetCalc");
    lblGetCalc_->setWordWrap(true);
    lblProgress_ = new QLabel("Percent Calculated:", this);
    lblProgress_->setObjectName("lblProgress");
    pgrProgress_ = new QProgressBar(this);
    pgrProgress_->setObjectName("pgrProgress");
    pgrProgress_->setAccessibleName(lblProgress_->text());
    cmdOK_ = new QPushButton(this);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setAutoDefault(true); // Enter presses it when it has the focus
    connect(cmdOK_, &QPushButton::clicked, this, &frmShowPar::cmdOK_Click);

    column->addWidget(lblGetCalc_);
    column->addWidget(lblProgress_);
    column->addWidget(pgrProgress_);
    column->addWidget(cmdOK_, 0, Qt::AlignRight);
    column->addStretch(0);
    setFocusProxy(cbYXZPar_[YRole]);
    EndProgress();
}

QWidget* frmShowPar::MakeInputs() {
    auto* inputs = new QWidget(this);
    auto* column = new QVBoxLayout(inputs);
    column->setContentsMargins(0, 0, 0, 0);
    const int gap = fontMetrics().height() / 2;

    MakeRole(*column, YRole, "Parameter To Calculate (&y-axis):");
    column->addSpacing(gap);
    MakeRole(*column, XRole, "Independent Parameter 1 (&x-axis):");
    auto* range = new QHBoxLayout;
    range->addWidget(MakeAxisBox(AxisText::Xmin, "lblXmin", "M&in:", "txtXminValue"));
    range->addWidget(MakeAxisBox(AxisText::Xmax, "lblXmax", "M&ax:", "txtXmaxValue"));
    range->addWidget(MakeAxisBox(AxisText::Xstep, "lblXStep", "St&ep:", "txtXstepValue"));
    column->addLayout(range);
    column->addSpacing(gap);
    MakeRole(*column, ZRole, "Independent Parameter 2 (&z-values):");
    column->addWidget(
        MakeAxisBox(AxisText::ZValues, "lblZValue", "&Value(s) separated by space:", "txtZValue"));
    column->addSpacing(gap);

    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    MakeParRows(*grid, FixedRows, "lblParLabel");
    column->addLayout(grid);
    column->addStretch(1);
    return inputs;
}

void frmShowPar::MakeRole(QVBoxLayout& column, i16 k, const QString& label) {
    auto* list = new AxisList(this);
    list->setObjectName(ControlName("cbYXZPar", k));
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(list, &QComboBox::activated, this,
            [this, k](int row) { cbYXZPar_Click(k, static_cast<i16>(row)); });
    auto* text = new MnemonicLabel(list, this);
    text->setObjectName(ControlName("lblYXZParLabel", k));
    text->setText(label);
    list->setAccessibleName(ToQt(StripAmpersand(FromQt(label))));
    column.addWidget(text);
    column.addWidget(list);
    // On some desktops a list goes by the label that is its buddy, whatever name it has. The one
    // that is seen can't be: a buddy's letter would be a key of the whole window.
    auto* name = new QLabel(list->accessibleName(), column.parentWidget());
    name->setBuddy(list);
    name->hide();
    cbYXZPar_[static_cast<std::size_t>(k)] = list;
}

QWidget* frmShowPar::MakeAxisBox(AxisText which, const QString& labelName, const QString& label,
                                 const QString& boxName) {
    auto* pair = new QWidget(this);
    auto* column = new QVBoxLayout(pair);
    column->setContentsMargins(0, 0, 0, 0);
    auto* box = new ValueBox(pair);
    box->setObjectName(boxName);
    box->SetVisibleCharacters(6);
    box->setAccessibleName(ToQt(StripAmpersand(FromQt(label))));
    ConnectBox(*box, [this, which] { txtAxis_Change(which); });
    auto* text = new MnemonicLabel(box, pair);
    text->setObjectName(labelName);
    text->setText(label);
    column->addWidget(text);
    column->addWidget(box);
    txtAxis_[static_cast<std::size_t>(which)] = box;
    return pair;
}

void frmShowPar::Refresh() {
    if (!IsTableOrGraph() || NoOfPar < 1)
        return;
    for (i16 k = YRole; k < NoOfRoles; ++k) {
        QComboBox& list = *cbYXZPar_[static_cast<std::size_t>(k)];
        list.clear();
        const bool hasRole = k != ZRole || HasZPar();
        if (hasRole) {
            for (i16 i = 0; i <= NoOfPar; ++i)
                list.addItem(ToQt(StripAmpersand(ParLabel(ParKind(i)))));
            list.setCurrentIndex(ParBoxOrder(k));
        }
        list.setEnabled(hasRole);
    }
    for (const AxisText which :
         {AxisText::Xmin, AxisText::Xmax, AxisText::Xstep, AxisText::ZValues})
        Box(which).Write(ToQt(AxisTextOf(which)));
    Box(AxisText::ZValues).setEnabled(HasZPar());
    for (i16 i = 0; i < FixedRows; ++i)
        ShowParRow(i, FixedPar(i));
    MarkReading();
    ShowHint();
    FitToInputs();
}

void frmShowPar::MarkReading() {
    const auto mark = [](ValueBox& box, auto note) { box.SetNote(ToQt(note(FromQt(box.text())))); };
    for (const AxisText which : {AxisText::Xmin, AxisText::Xmax, AxisText::Xstep})
        mark(Box(which), ReadingNote);
    mark(Box(AxisText::ZValues), ReadingNoteOfList);
    for (i16 i = 0; i < FixedRows; ++i)
        mark(ParValueBox(i), ReadingNote);
}

void frmShowPar::ShowHint() {
    const std::string hint = ShowParHint();
    lblGetCalc_->setText(ToQt(hint));
    lblGetCalc_->setVisible(!hint.empty());
}

void frmShowPar::StartProgress(i32 total) {
    done_ = 0;
    pgrProgress_->setRange(0, std::max(total, 1));
    pgrProgress_->setValue(0);
    lblProgress_->show();
    pgrProgress_->show();
    cmdOK_->setText("Cancel");
    focusBeforeRun_ = window()->focusWidget();
    cmdOK_->setFocus();
    Inputs().setEnabled(false);
}

void frmShowPar::StepProgress() {
    pgrProgress_->setValue(++done_);
}

void frmShowPar::EndProgress() {
    lblProgress_->hide();
    pgrProgress_->hide();
    cmdOK_->setText("OK");
    Inputs().setEnabled(true);
    if (focusBeforeRun_ != nullptr && window()->focusWidget() == cmdOK_)
        focusBeforeRun_->setFocus();
    focusBeforeRun_ = nullptr;
}

void frmShowPar::cbYXZPar_Click(i16 k, i16 parNo) {
    SwapAxis(k, parNo);
}

void frmShowPar::txtAxis_Change(AxisText which) {
    ValueBox& box = Box(which);
    box.Accept(ToQt(TypedAxisText(which, FromQt(box.text()))));
    MarkReading();
}

void frmShowPar::txtParValue_Change(i16 i) {
    ValueBox& box = ParValueBox(i);
    box.Accept(ToQt(TypedParText(FixedPar(i), FromQt(box.text()))));
    ShowHint();
    box.SetBlue(IsBluePar(FixedPar(i)));
    MarkReading();
}

void frmShowPar::txtParValue_DblClick(i16 i) {
    const i16 parNo = FixedPar(i);
    if (Calculating != False || parNo < 0 || !IsBluePar(parNo))
        return;
    lblGetCalc_->setText("Calculating Value for " + ToQt(StripAmpersand(ParLabel(ParKind(parNo)))));
    GetFromTable(parNo);
    Refresh();
}

void frmShowPar::cmdOK_Click() {
    RunOrCancel();
    if (ValueBox* box = RefusedBox()) {
        box->setFocus();
        box->selectAll();
    }
}

// The box whose text kept the run from beginning; nullptr if none did.
ValueBox* frmShowPar::RefusedBox() {
    const RunRefusal& refusal = LastRefusal();
    if (refusal.Axis)
        return &Box(*refusal.Axis);
    for (i16 i = 0; FixedPar(i) >= 0; ++i)
        if (FixedPar(i) == refusal.ParNo)
            return &ParValueBox(i);
    return nullptr;
}

void frmShowPar::keyPressEvent(QKeyEvent* event) {
    // A box has its own road for Enter, and leaves the key to the window all the same.
    const bool isInList = qobject_cast<QComboBox*>(window()->focusWidget()) != nullptr;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (Calculating == False ? isInList && isEnter : event->key() == Qt::Key_Escape)
        cmdOK_Click();
    else
        ParameterDock::keyPressEvent(event);
}

} // namespace quorvanta
