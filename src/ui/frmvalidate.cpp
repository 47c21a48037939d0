#include "ui/frmvalidate.h"

#include "core/save_file.h"
#include "ui/qttext.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <utility>

namespace quorvanta {

namespace {

constexpr const char* pdfName = "report.pdf";
constexpr const char* textName = "report.txt";

// The bytes of a file of the report, to their place; false if that fails.
bool MoveTo(const QString& target, const QString& source) {
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    return SaveFile(FromQt(target), {bytes.data(), static_cast<std::size_t>(bytes.size())});
}

} // namespace

frmValidate::frmValidate(QWidget* parent, const QString& program, const QString& pdfPath,
                         const QString& textPath)
    : QDialog(parent), pdfPath_(pdfPath), textPath_(textPath) {
    setObjectName("frmValidate");
    setWindowTitle(tr("Validation"));
    lblResult_ = new QLabel(tr("Computing the reference values..."), this);
    lblResult_->setObjectName("lblResult");
    lblResult_->setWordWrap(true);
    lblResult_->setMinimumWidth(56 * fontMetrics().averageCharWidth());
    lblResult_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    pgrProgress_ = new QProgressBar(this);
    pgrProgress_->setObjectName("pgrProgress");
    pgrProgress_->setAccessibleName(tr("Progress of the validation"));
    auto* buttons = new QDialogButtonBox(this);
    cmdCancel_ = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    cmdCancel_->setObjectName("cmdCancel");
    connect(cmdCancel_, &QPushButton::clicked, this, &frmValidate::cmdCancel_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblResult_);
    column->addWidget(pgrProgress_);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize); // grows with its text

    connect(&process_, &QProcess::readyReadStandardOutput, this, &frmValidate::ReadProgress);
    connect(&process_, &QProcess::finished, this, &frmValidate::Finished);
    connect(&process_, &QProcess::errorOccurred, this, &frmValidate::Failed);
    Start(program);
}

frmValidate::~frmValidate() {
    process_.disconnect(this);
    process_.kill();
    process_.waitForFinished();
}

QString frmValidate::InstalledProgram() {
    return QStandardPaths::findExecutable(QStringLiteral("quorvanta-validate"),
                                          {QCoreApplication::applicationDirPath()});
}

void frmValidate::Start(const QString& program) {
    process_.start(program,
                   {"--progress", "--pdf", folder_.filePath(pdfName), "--text",
                    folder_.filePath(textName), "--started-from",
                    QCoreApplication::applicationFilePath()},
                   QIODevice::ReadOnly);
}

void frmValidate::ReadProgress() {
    while (process_.canReadLine()) {
        const QString line = QString::fromUtf8(process_.readLine()).trimmed();
        const QStringList words = line.split(' ');
        if (words.size() == 3 && words.front() == QLatin1String("progress")) {
            pgrProgress_->setMaximum(words[2].toInt());
            pgrProgress_->setValue(words[1].toInt());
        } else {
            answer_ += (answer_.isEmpty() ? "" : "\n") + line;
        }
    }
}

// Where the report lies, or why there is none.
QString frmValidate::SaveReport() const {
    for (const auto& [target, name] : {std::pair(pdfPath_, pdfName), {textPath_, textName}})
        if (!MoveTo(target, folder_.filePath(name)))
            return tr("The report could not be written to %1.")
                .arg(QDir::toNativeSeparators(target));
    return tr("The report is %1 and, as text, %2.")
        .arg(QDir::toNativeSeparators(pdfPath_), QFileInfo(textPath_).fileName());
}

void frmValidate::Finished(int exitCode, QProcess::ExitStatus status) {
    ReadProgress();
    if (isCancelled_)
        return QDialog::reject();
    constexpr int notRun = 2;
    if (status != QProcess::NormalExit || exitCode >= notRun) {
        const QString problem = QString::fromUtf8(process_.readAllStandardError()).trimmed();
        return ShowResult(tr("The validation could not be done.\n\n%1").arg(problem));
    }
    ShowResult(answer_ + "\n\n" + SaveReport());
}

// What ended before it began: all else is told when it has finished.
void frmValidate::Failed(QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
        ShowResult(
            tr("The validation could not be done.\n\nThe program quorvanta-validate can't be "
               "started."));
}

void frmValidate::ShowResult(const QString& result) {
    lblResult_->setText(result);
    pgrProgress_->hide();
    cmdCancel_->setText(tr("OK"));
    cmdCancel_->setObjectName("cmdOK");
}

void frmValidate::cmdCancel_Click() {
    if (process_.state() == QProcess::NotRunning)
        return QDialog::reject();
    isCancelled_ = true;
    process_.kill();
}

void frmValidate::reject() {
    cmdCancel_Click();
}

} // namespace quorvanta
