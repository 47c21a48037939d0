#include "ui/frmgraphortext.h"

#include "output/saving.h"
#include "ui/qttext.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quorvanta {

namespace {

QString ActionName(OutputAction action) {
    switch (action) {
    case OutputAction::Print:
        return "Print";
    case OutputAction::Copy:
        return "Copy";
    default:
        return "Save";
    }
}

QString CaptionOf(OutputAction action) {
    const QString caption = ActionName(action) + " " + ToQt(WindowKindName());
    return action == OutputAction::Copy ? caption + " to Clipboard" : caption;
}

} // namespace

frmGraphOrText::frmGraphOrText(QWidget* parent, OutputAction action) : QDialog(parent) {
    setObjectName("frmGraphOrText");
    setWindowTitle(CaptionOf(action));
    const QString texts[] = {" as Picture (Bitmap format)", " as Text (RTF format)"};
    auto* column = new QVBoxLayout(this);
    for (std::size_t i = 0; i < optForm_.size(); ++i) {
        optForm_[i] = new QRadioButton(ActionName(action) + texts[i], this);
        optForm_[i]->setObjectName(ControlName("optForm", static_cast<int>(i)));
        column->addWidget(optForm_[i]);
    }
    optForm_[0]->setChecked(true);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdOK = buttons->addButton(ActionName(action), QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    buttons->addButton("Cancel", QDialogButtonBox::RejectRole)->setObjectName("cmdCancel");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addSpacing(fontMetrics().height() / 2);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

std::optional<OutputForm> frmGraphOrText::Ask() {
    if (exec() != Accepted)
        return std::nullopt;
    return optForm_[0]->isChecked() ? OutputForm::Picture : OutputForm::Text;
}

} // namespace quorvanta
