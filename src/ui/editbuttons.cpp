#include "ui/editbuttons.h"

#include "output/settings.h"
#include "ui/qttext.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
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

void FocusRefused(const QDialog& dialog) {
    const QString name = ToQt(RefusedSetting()) + ':';
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy() != nullptr && QString(label->text()).remove('&') == name)
            label->buddy()->setFocus();
}

} // namespace quorvanta
