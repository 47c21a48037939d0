#include "ui/frmoutput.h"

#include "core/catalogue.h"
#include "core/records.h"
#include "output/printcopy.h"
#include "ui/frmedittable.h"
#include "ui/qttext.h"
#include "ui/scrolledpicture.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace quorvanta {

frmOutput::frmOutput(QWidget* parent) : QDialog(parent) {
    setObjectName("frmOutput");
    setWindowTitle("Output");
    const auto draw = [this](Surface& surface) { return DrawDocument(surface, document_); };
    picture_ = new ScrolledPicture("PicOutput", draw, this);
    picture_->Picture().setAccessibleName("Output");

    auto* buttons = new QHBoxLayout;
    const auto add = [this, buttons](const char* name, const char* caption, auto handler) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, handler);
        buttons->addWidget(button);
    };
    buttons->addStretch(1);
    add("cmdPrintOutput", "&Print", &frmOutput::cmdPrintOutput_Click);
    add("cmdCopyOutput", "C&opy", &frmOutput::cmdCopyOutput_Click);
    add("cmdSave", "&Save", &frmOutput::cmdSave_Click);
    add("cmdEditOutput", "&Edit Output", &frmOutput::cmdEditOutput_Click);
    add("cmdCancel", "&Cancel", &frmOutput::cmdCancel_Click);
    new QShortcut(QKeySequence::Print, this, this, &frmOutput::cmdPrintOutput_Click);
    new QShortcut(QKeySequence::Copy, this, this, &frmOutput::cmdCopyOutput_Click);
    new QShortcut(QKeySequence::Save, this, this, &frmOutput::cmdSave_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(picture_, 1);
    column->addLayout(buttons);
}

void frmOutput::Refresh() {
    document_ = ResultDocument();
    picture_->Redraw();
    picture_->Picture().setAccessibleDescription(ToQt(PlainText(document_)));
}

void frmOutput::cmdPrintOutput_Click() {
    OutputResult(OutputAction::Print);
}

void frmOutput::cmdCopyOutput_Click() {
    OutputResult(OutputAction::Copy);
}

void frmOutput::cmdSave_Click() {
    OutputResult(OutputAction::Save);
}

void frmOutput::cmdEditOutput_Click() {
    frmEditTable(this, "Edit Output", CurrentWindowKind() == TableWindow, IsTableOrGraph()).exec();
}

void frmOutput::cmdCancel_Click() {
    hide();
}

} // namespace quorvanta
