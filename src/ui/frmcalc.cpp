#include "ui/frmcalc.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/driver.h"
#include "core/general.h"
#include "core/grids.h"
#include "core/reading.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "output/sizes_note.h"
#include "output/statement.h"
#include "ui/helptips.h"
#include "ui/parlabelbutton.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

namespace {

// Free space under the last row: 450 twips, 20 of them a point.
constexpr int TwipsBelow = 450;
constexpr int TwipsPerInch = 1440;

} // namespace

frmCalc::frmCalc(i16 windowNo, i16 analysisNo)
    : ChildWindow(CalculationWindow, windowNo, analysisNo), lblHead1_(new QLabel(this)),
      lblHint_(new QLabel(this)), lblGetCalc_(new QLabel(this)), txtHide_(new QLineEdit(this)) {
    setObjectName(ControlName("frmCalc", windowNo));

    lblHead1_->setObjectName("lblHead1");
    lblHead1_->setWordWrap(true);
    lblHead1_->setTextFormat(Qt::PlainText);
    QFont headFont = lblHead1_->font();
    headFont.setBold(true);
    lblHead1_->setFont(headFont);

    lblHint_->setObjectName("lblHint");
    lblHint_->setWordWrap(true);

    lblGetCalc_->setObjectName("lblGetCalc");
    lblGetCalc_->setWordWrap(true);
    lblGetCalc_->setText("Double-click Blue Text to Calculate the Value from Table(s).");

    txtHide_->setObjectName("txtHide");
    txtHide_->setAccessibleName(tr("Calculation"));
    txtHide_->setFixedSize(0, 0);
    txtHide_->setFocusPolicy(Qt::NoFocus);
    txtHide_->setReadOnly(true);
    txtHide_->setFrame(false);

    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 0);
    grid->setColumnStretch(1, 1);
    for (i16 i = 0; i <= MaxPar; ++i)
        MakeRow(*grid, i);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHead1_);
    column->addWidget(lblHint_);
    column->addSpacing(fontMetrics().height() / 3);
    column->addLayout(grid);
    column->addSpacing(fontMetrics().height() / 3);
    column->addWidget(lblGetCalc_);
    column->addStretch(1);
    QMargins margins = column->contentsMargins();
    margins.setBottom(TwipsBelow * logicalDpiY() / TwipsPerInch);
    column->setContentsMargins(margins);

    lblHead1_->installEventFilter(this);
    txtHide_->installEventFilter(this);
    Refresh();
}

void frmCalc::MakeRow(QGridLayout& grid, i16 i) {
    auto* label = new ParLabelButton(this);
    label->setObjectName(ControlName("cmdParLabel", i));
    label->setAutoDefault(false);
    label->installEventFilter(this);
    connect(label, &QPushButton::clicked, this, [this, i] { cmdParLabel_Click(i); });

    auto* box = new ValueBox(this);
    box->setObjectName(ControlName("txtParValue", i));
    connect(box, &ValueBox::textChanged, this, [this, i] { txtParValue_Change(i); });
    connect(box, &ValueBox::GotFocus, this, [this, i] { txtParValue_GotFocus(i); });
    connect(box, &ValueBox::DblClick, this, [this, i] { txtParValue_DblClick(i); });
    connect(box, &ValueBox::KeyDownWithCtrl, this, [this, i] { txtParValue_KeyDown(i); });
    connect(box, &ValueBox::returnPressed, this, [this] { cmdParLabel_Click(UnknownParNo); });
    connect(box, &ValueBox::MoveToNext, this, [this, i](int step) {
        const int next = i + step;
        if (next >= 0 && next <= NoOfPar)
            txtParValue_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
    });

    grid.addWidget(label, i, 0);
    grid.addWidget(box, i, 1);
    const auto at = static_cast<std::size_t>(i);
    cmdParLabel_[at] = label;
    txtParValue_[at] = box;
}

void frmCalc::Refresh() {
    const bool chosen = !TestName.empty() || !DistrName.empty();
    const bool hasRows = chosen && NoOfPar > 0;
    lblHead1_->setVisible(hasRows && !ParListName.empty());
    lblHint_->setText(chosen ? tr("Choose the options, then press OK.")
                             : tr("Choose a test or a distribution from the menus."));
    lblHint_->setVisible(!hasRows);

    for (i16 i = 0; i <= MaxPar; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const bool shown = hasRows && i <= NoOfPar;
        if (shown) {
            const std::string& label = ParLabel(ParKind(i));
            cmdParLabel_[at]->setText(ToQt(label));
            txtParValue_[at]->setAccessibleName(ToQt(StripAmpersand(label)));
            ExplainParameter(*cmdParLabel_[at], *txtParValue_[at], ParKind(i));
            txtParValue_[at]->Write(ToQt(ParText(ParKind(i))));
        }
        cmdParLabel_[at]->setVisible(shown);
        txtParValue_[at]->setVisible(shown);
    }
    const i16 rows = hasRows ? NoOfPar : i16(0);
    const bool hasOtherRows = rows != shownPar_;
    const bool wasBlue = !lblGetCalc_->isHidden();
    shownPar_ = rows;
    ShowMarks();
    // The line about blue texts comes later than the rows, and would press them together.
    if (hasOtherRows || (!wasBlue && !lblGetCalc_->isHidden()))
        FitToContent();
    if (hasOtherRows && hasRows)
        txtHide_->setFocus();
}

void frmCalc::ShowMarks() {
    const std::string note = HeadlineNote();
    lblHead1_->setText(ToQt(note.empty() ? ParListName : ParListName + " " + note));
    bool anyBlue = false;
    for (i16 i = 0; i <= NoOfPar; ++i) {
        ValueBox& box = *txtParValue_[static_cast<std::size_t>(i)];
        const bool unknown = i == UnknownParNo;
        const bool blue = IsBluePar(i);
        const bool result = unknown && Calculated != False && HasValue(FromQt(box.text()));
        cmdParLabel_[static_cast<std::size_t>(i)]->SetUnknown(unknown);
        box.SetGrey(unknown && !result);
        box.SetResult(result);
        box.SetBlue(blue);
        box.SetState(result ? tr("calculated") : unknown ? tr("to be calculated") : "");
        box.SetHint(ToQt(SizesNote(i)));
        box.SetNote(ToQt(ReadingNote(FromQt(box.text()))));
        anyBlue = anyBlue || blue;
    }
    lblGetCalc_->setVisible(anyBlue && shownPar_ > 0);
}

void frmCalc::cmdParLabel_Click(i16 i) {
    if (Calculating != False)
        return;
    Form_Activate();
    SolveFor(i);
    Refresh();
}

void frmCalc::txtParValue_Change(i16 i) {
    ValueBox& box = *txtParValue_[static_cast<std::size_t>(i)];
    if (Calculating != False) {
        box.Write(ToQt(ParText(ParKind(i))));
        return;
    }
    // A text that is dropped into a window behind brings it to the front.
    const std::string typed = FromQt(box.text());
    Form_Activate();
    box.Accept(ToQt(TypedParText(i, typed)));
    ShowMarks();
}

void frmCalc::txtParValue_GotFocus(i16 i) {
    if (UnknownParNo >= 0 && UnknownParNo <= MaxPar)
        txtParValue_[static_cast<std::size_t>(UnknownParNo)]->SetGrey(true);
    txtParValue_[static_cast<std::size_t>(i)]->selectAll();
}

void frmCalc::txtParValue_DblClick(i16 i) {
    if (Calculating != False)
        return;
    Form_Activate();
    GetFromTable(i);
}

void frmCalc::txtParValue_KeyDown(i16 i) {
    txtParValue_DblClick(i);
}

void frmCalc::cmdParLabel_MouseUp(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmCalc::lblHead1_MouseUp(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmCalc::Form_MouseUp(const QPoint& at) {
    OpenOutputMenu(at);
}

void frmCalc::OpenOutputMenu(const QPoint& at) {
    if (!txtParValue_[static_cast<std::size_t>(UnknownParNo)]->IsGrey())
        RequestOutputMenu(at);
}

bool frmCalc::eventFilter(QObject* watched, QEvent* event) {
    // The holder of the focus leaves every key to the window ("Ctrl+C" copies the result).
    if (watched == txtHide_ && (event->type() == QEvent::ShortcutOverride ||
                                (event->type() == QEvent::KeyPress &&
                                 static_cast<QKeyEvent*>(event)->key() != Qt::Key_Tab))) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            const QPoint at = mouse->globalPosition().toPoint();
            if (watched == lblHead1_)
                lblHead1_MouseUp(at);
            else
                cmdParLabel_MouseUp(at);
            return true;
        }
    }
    return ChildWindow::eventFilter(watched, event);
}

void frmCalc::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its own road (the release of the right button); this is the menu key.
    if (event->reason() == QContextMenuEvent::Keyboard)
        OpenOutputMenu(mapToGlobal(rect().center()));
    event->accept();
}

std::vector<ParLabelButton*> frmCalc::LabelsWithMnemonic(const QKeyEvent& key) const {
    std::vector<ParLabelButton*> labels;
    if (key.modifiers() != Qt::AltModifier)
        return labels;
    const QKeySequence pressed(key.keyCombination());
    for (ParLabelButton* label : cmdParLabel_) {
        if (label->isVisible() && QKeySequence::mnemonic(label->text()) == pressed)
            labels.push_back(label);
    }
    return labels;
}

bool frmCalc::event(QEvent* event) {
    // A label's letter counts before the letter of a menu ("&Power", "&Parametric Tests") while
    // the focus is in the window; the menus stay within reach through Alt alone and F10.
    if (event->type() == QEvent::ShortcutOverride &&
        !LabelsWithMnemonic(*static_cast<QKeyEvent*>(event)).empty())
        event->accept();
    return ChildWindow::event(event);
}

void frmCalc::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        Form_MouseUp(event->globalPosition().toPoint());
}

void frmCalc::keyPressEvent(QKeyEvent* event) {
    const std::vector<ParLabelButton*> labels = LabelsWithMnemonic(*event);
    if (labels.empty()) {
        if (event->key() == Qt::Key_Down && txtHide_->hasFocus())
            txtParValue_[0]->setFocus(Qt::TabFocusReason);
        ChildWindow::keyPressEvent(event);
        return;
    }
    if (labels.size() == 1) {
        labels.front()->click();
        return;
    }
    // Several labels share the letter: the focus goes round among them, Enter presses.
    const auto focused = std::find(labels.begin(), labels.end(), focusWidget());
    const bool last = focused == labels.end() || focused + 1 == labels.end();
    (last ? labels.front() : *(focused + 1))->setFocus(Qt::ShortcutFocusReason);
}

} // namespace quorvanta
