#include "ui/frmprogress.h"

#include "core/analysis_state.h"
#include "ui/qttext.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

frmProgress::frmProgress(QWidget* parent) : QDialog(parent) {
    setObjectName("frmProgress");
    // No other window takes part while a run goes on: the state belongs to the run.
    setWindowModality(Qt::ApplicationModal);

    auto* lblProgress = new QLabel("Percent Calculated:", this);
    lblProgress->setObjectName("lblProgress");
    pgrProgress_ = new QProgressBar(this);
    pgrProgress_->setObjectName("pgrProgress");
    pgrProgress_->setMinimumWidth(32 * fontMetrics().averageCharWidth());
    pgrProgress_->setAccessibleName(lblProgress->text());
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdCancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    connect(cmdCancel, &QPushButton::clicked, this, &frmProgress::cmdCancel_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblProgress);
    column->addWidget(pgrProgress_);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void frmProgress::Start(i32 total, const QString& caption) {
    setWindowTitle(caption);
    done_ = 0;
    pgrProgress_->setRange(0, std::max(total, 1));
    pgrProgress_->setValue(0);
    show();
}

void frmProgress::Step() {
    pgrProgress_->setValue(++done_);
}

void frmProgress::cmdCancel_Click() {
    Cancelled = True;
}

void frmProgress::reject() {
    cmdCancel_Click();
}

} // namespace quorvanta
