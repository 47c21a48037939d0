#include "ui/frmboundary.h"

#include "core/typed_text.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quorvanta {

frmBoundary::frmBoundary(QWidget* parent)
    : QDialog(parent), lblFamilyPar_(new QLabel(this)), txtFamilyPar_(new ValueBox(this)) {
    setObjectName("frmBoundary");
    setWindowTitle(ToQt(BoundCaption));
    lblFamilyPar_->setObjectName("lblFamilyPar");
    lblFamilyPar_->setBuddy(txtFamilyPar_);
    txtFamilyPar_->setObjectName("txtFamilyPar");
    connect(txtFamilyPar_, &ValueBox::textChanged, this, &frmBoundary::txtFamilyPar_Change);

    auto* field = new QHBoxLayout;
    field->addWidget(lblFamilyPar_);
    field->addWidget(txtFamilyPar_, 1);
    auto* cmdCancel = new QPushButton("&Cancel", this);
    cmdCancel->setObjectName("cmdCancel");
    cmdCancel->setAutoDefault(false);
    connect(cmdCancel, &QPushButton::clicked, this, &frmBoundary::cmdCancel_Click);
    auto* cmdOK = new QPushButton("&Next", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmBoundary::cmdOK_Click);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdOK);

    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeButtons());
    column->addLayout(field);
    column->addStretch(1);
    column->addLayout(buttons);
    DrawField();
}

bool frmBoundary::Ask() {
    return exec() == Accepted;
}

QWidget* frmBoundary::MakeButtons() {
    auto* group = new QGroupBox(ToQt(BoundHeading), this);
    group->setObjectName("fraBoundary");
    auto* column = new QVBoxLayout(group);
    for (i16 i = 0; i < NoOfBoundTypes; ++i) {
        auto* button = new QRadioButton(ToQt(BoundName(i)), group);
        button->setObjectName(ControlName("OptBoundary", i));
        button->setChecked(i == BoundTypeShown);
        connect(button, &QRadioButton::toggled, this, [this, i](bool isOn) {
            if (isOn)
                OptBoundary_Click(i);
        });
        column->addWidget(button);
        OptBoundary_.push_back(button);
    }
    return group;
}

void frmBoundary::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    OptBoundary_[static_cast<std::size_t>(BoundTypeShown)]->setFocus(Qt::TabFocusReason);
}

// A field that is not in use keeps its place, so that nothing jumps.
void frmBoundary::DrawField() {
    const QString caption = ToQt(FamilyParCaption(BoundTypeShown));
    lblFamilyPar_->setText(caption);
    txtFamilyPar_->setAccessibleName(caption);
    txtFamilyPar_->Write(ToQt(FamilyParText));
    txtFamilyPar_->SetRefused(false);
    for (QWidget* part :
         {static_cast<QWidget*>(lblFamilyPar_), static_cast<QWidget*>(txtFamilyPar_)}) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        part->setSizePolicy(policy);
        part->setVisible(!caption.isEmpty());
    }
}

void frmBoundary::OptBoundary_Click(i16 i) {
    ChooseBoundType(i);
    DrawField();
}

void frmBoundary::txtFamilyPar_Change() {
    FamilyParText = OnlyAllowed(FromQt(txtFamilyPar_->text()));
    txtFamilyPar_->Accept(ToQt(FamilyParText));
    txtFamilyPar_->SetRefused(false);
}

void frmBoundary::cmdOK_Click() {
    if (AcceptBoundary())
        return accept();
    txtFamilyPar_->SetRefused(true);
    txtFamilyPar_->setFocus(Qt::TabFocusReason);
    txtFamilyPar_->selectAll();
}

void frmBoundary::cmdCancel_Click() {
    reject();
}

} // namespace quorvanta
