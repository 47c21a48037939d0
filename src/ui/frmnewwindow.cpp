#include "ui/frmnewwindow.h"

#include "core/catalogue.h"
#include "ui/qttext.h"
#include "ui/wrappedradiobutton.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvanta {

frmNewWindow::frmNewWindow(QWidget* parent, bool offerSimulation) : QDialog(parent) {
    setObjectName("frmNewWindow");
    setWindowTitle(ProgramTitle());

    constexpr const char* texts[] = {
        "New &Calculation. Calculate one parameter value at a time.",
        "New &Table. Tabulate the values of one parameter for different values of two other "
        "parameters.",
        "New &Graph.Plot the values of one parameter for different values of two other "
        "parameters.",
        "New &Monte Carlo Simulation. Calculate the power and significance level by Monte Carlo "
        "simulation with or without interim analyses.",
    };

    auto* frame = new QGroupBox("Open a new window for calculations", this);
    frame->setObjectName("Frame1");
    auto* options = new QVBoxLayout(frame);
    options->setSpacing(fontMetrics().height() / 2);
    for (std::size_t i = 0; i < optWindow_.size(); ++i) {
        optWindow_[i] = new WrappedRadioButton(frame);
        optWindow_[i]->setObjectName(ControlName("optWindow", static_cast<int>(i)));
        optWindow_[i]->setText(texts[i]);
        options->addWidget(optWindow_[i]);
    }
    optWindow_[CalculationWindow]->setChecked(true);
    optWindow_[SimulationWindow]->setEnabled(offerSimulation);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdCont = buttons->addButton("&Continue", QDialogButtonBox::AcceptRole);
    cmdCont->setObjectName("cmdCont");
    cmdCont->setDefault(true);
    QPushButton* cmdCancel = buttons->addButton("C&ancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    connect(cmdCont, &QPushButton::clicked, this, &frmNewWindow::cmdCont_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmNewWindow::cmdCancel_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(frame);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    optWindow_[CalculationWindow]->setFocus();
}

std::optional<i16> frmNewWindow::Ask() {
    exec();
    return newKind_;
}

void frmNewWindow::cmdCont_Click() {
    for (std::size_t i = 0; i < optWindow_.size(); ++i) {
        if (optWindow_[i]->isChecked())
            newKind_ = static_cast<i16>(i);
    }
    accept();
}

void frmNewWindow::cmdCancel_Click() {
    newKind_.reset();
    QDialog::reject();
}

} // namespace quorvanta
