#include "ui/editbuttons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

namespace quorvanta {

QWidget* MakeEditButtons(QDialog& dialog, std::function<void()> ok) {
    auto* buttons = new QDialogButtonBox(&dialog);
    QPushButton* cmdOK = buttons->addButton("&OK", QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    QPushButton* cmdCancel = buttons->addButton("&Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    QObject::connect(cmdOK, &QPushButton::clicked, &dialog, std::move(ok));
    QObject::connect(cmdCancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return buttons;
}

} // namespace quorvanta
