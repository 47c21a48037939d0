#include "ui/frmabout.h"

#include "core/platform.h"
#include "core/program_name.h"
#include "ui/filedialogs.h"
#include "ui/frmvalidate.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

namespace quorvanta {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName("frmAbout");
    setWindowTitle(tr("About %1").arg(ProgramTitle()));
    const int line = fontMetrics().height();

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().pixmap(QSize(4 * line, 4 * line)));
    icon->setAlignment(Qt::AlignTop);

    auto* name = new QLabel(QString("%1 %2").arg(ProgramName, ProgramVersion), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    name->setFont(large);

    auto* text = new QLabel(
        tr("Plans studies: hypothesis tests, parameters of distributions and group sequential "
           "designs. Every quantity of an analysis can be the unknown.\n\n"
           "The figures are defined by the program's own approximations, whose accuracy is "
           "published with it.\n\n"
           "Built with Qt %1.")
            .arg(qVersion()),
        this);
    text->setWordWrap(true);
    text->setMinimumWidth(56 * fontMetrics().averageCharWidth());

    auto* cmdValidate = new QPushButton("&Validate...", this);
    cmdValidate->setObjectName("cmdValidate");
    cmdValidate->setToolTip(tr("Computes the published and the independently computed values that "
                               "the program is checked with, and writes a report."));
    cmdValidate->setAutoDefault(false);
    connect(cmdValidate, &QPushButton::clicked, this, &frmAbout::cmdValidate_Click);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdOK = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    cmdOK->setFocus();
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setHorizontalSpacing(line);
    grid->addWidget(icon, 0, 0, 2, 1);
    grid->addWidget(name, 0, 1);
    grid->addWidget(text, 1, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdValidate);
    row->addWidget(buttons);
    grid->addLayout(row, 2, 0, 1, 2);
}

void frmAbout::cmdValidate_Click() {
    const FileDialog dialog{.Title = "Save Validation Report",
                            .Filter = "PDF Files (*.pdf)|*.pdf",
                            .FileName = std::string(ProgramName) + " Validation",
                            .Folder = "",
                            .DefaultExtension = "pdf"};
    const auto pdf = ThePlatform().AskSaveName(dialog);
    if (!pdf)
        return;
    const QFileInfo file(ToQt(*pdf));
    const QString text = file.dir().filePath(file.completeBaseName() + ".txt");
    if (QFileInfo(text).isFile() && AskToReplace(text) != Answer::Yes)
        return;
    frmValidate(this, frmValidate::InstalledProgram(), file.filePath(), text).exec();
}

} // namespace quorvanta
