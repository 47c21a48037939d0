#include "ui/frmshiftmodel.h"

#include "core/reading.h"
#include "core/typed_text.h"
#include "montecarlo/shiftmodel.h"
#include "ui/distrpicture.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

namespace {

// As many as the longest list has.
constexpr i16 ButtonPlaces = 10;

} // namespace

frmShiftModel::frmShiftModel(QWidget* parent) : QDialog(parent), picDistr_(new DistrPicture(this)) {
    setObjectName("frmShiftModel");
    setWindowTitle(ToQt(ShiftCaption()));

    auto* left = new QVBoxLayout;
    left->addWidget(MakeButtons());
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(MakeFields());
    right->addWidget(picDistr_, 1);
    auto* upper = new QHBoxLayout;
    upper->addLayout(left);
    upper->addLayout(right, 1);

    auto* cmdCancel = new QPushButton("&Cancel", this);
    cmdCancel->setObjectName("cmdCancel");
    cmdCancel->setAutoDefault(false);
    connect(cmdCancel, &QPushButton::clicked, this, &frmShiftModel::cmdCancel_Click);
    cmdOK_ = new QPushButton(ToQt(ShiftOkCaption()), this);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &frmShiftModel::cmdOK_Click);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdOK_);

    auto* column = new QVBoxLayout(this);
    column->addLayout(upper, 1);
    column->addLayout(buttons);
    DrawFields();
}

bool frmShiftModel::Ask() {
    return exec() == Accepted;
}

QWidget* frmShiftModel::MakeButtons() {
    auto* group = new QGroupBox(tr("Distribution"), this);
    group->setObjectName("fraDistribution");
    auto* column = new QVBoxLayout(group);
    for (i16 i = 0; i < ButtonPlaces; ++i) {
        auto* button = new QRadioButton(group);
        button->setObjectName(ControlName("OptDistribution", i));
        const bool isOffered = i <= ShiftList.HighBound();
        button->setVisible(isOffered);
        if (isOffered)
            button->setText(ToQt(SimDistrName(ShiftList(i))));
        button->setChecked(i == ShiftButton());
        connect(button, &QRadioButton::toggled, this, [this, i](bool isOn) {
            if (isOn)
                OptDistribution_Click(i);
        });
        column->addWidget(button);
        OptDistribution_.push_back(button);
    }
    return group;
}

QWidget* frmShiftModel::MakeFields() {
    auto* fields = new QWidget(this);
    auto* grid = new QGridLayout(fields);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* lblH1 = new QLabel(ToQt(ShiftHeading()), fields);
    lblH1->setObjectName("lblH1");
    grid->addWidget(lblH1, 0, 0, 1, 2);
    for (i16 i = 0; i < ShiftFields; ++i) {
        const auto at = static_cast<std::size_t>(i);
        lblDistrPar_[at] = new QLabel(fields);
        lblDistrPar_[at]->setObjectName(ControlName("lblDistrPar", i));
        txtDistrPar_[at] = new ValueBox(fields);
        txtDistrPar_[at]->setObjectName(ControlName("txtDistrPar", i));
        txtDistrPar_[at]->Write(ToQt(ShiftParText(i)));
        lblDistrPar_[at]->setBuddy(txtDistrPar_[at]);
        connect(txtDistrPar_[at], &ValueBox::textChanged, this,
                [this, i] { txtDistrPar_Change(i); });
        connect(txtDistrPar_[at], &ValueBox::editingFinished, this,
                [this, i] { txtDistrPar_LostFocus(i); });
        grid->addWidget(lblDistrPar_[at], i + 1, 0);
        grid->addWidget(txtDistrPar_[at], i + 1, 1);
    }
    grid->setColumnStretch(1, 1);
    return fields;
}

void frmShiftModel::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    const i16 button = ShiftButton();
    OptDistribution_[static_cast<std::size_t>(button < 0 ? 0 : button)]->setFocus(
        Qt::TabFocusReason);
}

// A field without a caption is not in use; its place stays, so that nothing jumps.
void frmShiftModel::DrawFields() {
    for (i16 i = 0; i < ShiftFields; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const QString caption = ToQt(ShiftFieldCaption(i));
        lblDistrPar_[at]->setText(caption);
        txtDistrPar_[at]->setAccessibleName(caption);
        for (QWidget* part :
             {static_cast<QWidget*>(lblDistrPar_[at]), static_cast<QWidget*>(txtDistrPar_[at])}) {
            QSizePolicy policy = part->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            part->setSizePolicy(policy);
            part->setVisible(!caption.isEmpty());
        }
        txtDistrPar_[at]->SetRefused(false);
    }
    picDistr_->Draw(ShiftCurves());
}

void frmShiftModel::OptDistribution_Click(i16 i) {
    ChooseShiftDistr(i);
    DrawFields();
}

void frmShiftModel::txtDistrPar_Change(i16 i) {
    ValueBox& box = *txtDistrPar_[static_cast<std::size_t>(i)];
    ShiftParText(i) = OnlyAllowed(FromQt(box.text()));
    box.Accept(ToQt(ShiftParText(i)));
    box.SetNote(ToQt(ReadingNote(ShiftParText(i))));
    box.SetRefused(false);
    picDistr_->Draw(ShiftCurves());
}

// A comma is a decimal point, and shown as one.
void frmShiftModel::txtDistrPar_LostFocus(i16 i) {
    ValueBox& box = *txtDistrPar_[static_cast<std::size_t>(i)];
    std::ranges::replace(ShiftParText(i), ',', '.');
    box.Write(ToQt(ShiftParText(i)));
    box.SetNote(ToQt(ReadingNote(ShiftParText(i))));
}

void frmShiftModel::cmdOK_Click() {
    const ShiftRefused refused = AcceptShift();
    if (refused == ShiftRefused::Nothing)
        return accept();
    if (refused == ShiftRefused::Buttons)
        return OptDistribution_.front()->setFocus(Qt::TabFocusReason);
    ValueBox& box = *txtDistrPar_[refused == ShiftRefused::Field1 ? 0 : 1];
    box.SetRefused(true);
    box.setFocus(Qt::TabFocusReason);
    box.selectAll();
}

void frmShiftModel::cmdCancel_Click() {
    reject();
}

} // namespace quorvanta
