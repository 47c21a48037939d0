#include "ui/frmadjustmethod.h"

#include "multcomp/family.h"
#include "ui/helptips.h"
#include "ui/qttext.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quorvanta {

frmAdjustMethod::frmAdjustMethod(QWidget* parent, i16 chosen) : QDialog(parent) {
    setObjectName("frmAdjustMethod");
    setWindowTitle("Adjustment Method");

    auto* column = new QVBoxLayout(this);
    for (const std::string& name : AdjustMethodNames()) {
        const auto index = static_cast<int>(optMethod_.size());
        auto* option = new QRadioButton(ToQt(name), this);
        option->setObjectName(ControlName("optMethod", index));
        option->setChecked(index == chosen);
        column->addWidget(option);
        optMethod_.push_back(option);
        constexpr i32 optionWindow = 22;
        Explain(*option, {optionWindow}, "Adjustment Method");
    }

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdOK = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    QPushButton* cmdCancel = buttons->addButton("&Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    column->addSpacing(fontMetrics().height() / 2);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    if (chosen >= 0 && chosen < static_cast<i16>(optMethod_.size()))
        optMethod_[static_cast<std::size_t>(chosen)]->setFocus();
}

std::optional<i16> frmAdjustMethod::Ask() {
    if (exec() != Accepted)
        return std::nullopt;
    for (std::size_t i = 0; i < optMethod_.size(); ++i)
        if (optMethod_[i]->isChecked())
            return static_cast<i16>(i);
    return std::nullopt;
}

} // namespace quorvanta
