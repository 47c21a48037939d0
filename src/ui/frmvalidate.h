// frmValidate: the validation of the program, as its user sees it.
//
// The cases run in a process of their own, the program "quorvanta-validate" beside this one: the
// state of the analyses that are open here is not touched, and whatever happens there can't harm
// them.
#pragma once

#include <QDialog>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

class QLabel;
class QProgressBar;
class QPushButton;

namespace quorvanta {

class frmValidate : public QDialog {
    Q_OBJECT

  public:
    // Validates by that program as soon as the window is shown, and writes the report to these
    // files.
    frmValidate(QWidget* parent, const QString& program, const QString& pdfPath,
                const QString& textPath);
    ~frmValidate() override;

    // The program that belongs to this one.
    static QString InstalledProgram();

    // Ends the validation, or closes the window once that is over. A validation that was ended
    // leaves no report.
    void cmdCancel_Click();

    // Esc and the close box do the same.
    void reject() override;

  private:
    void Start(const QString& program);
    void ReadProgress();
    void Finished(int exitCode, QProcess::ExitStatus status);
    void Failed(QProcess::ProcessError error);
    QString SaveReport() const;
    void ShowResult(const QString& result);

    QString pdfPath_;
    QString textPath_;
    QTemporaryDir folder_; // of the report until it is whole
    QProcess process_;
    QString answer_; // what the program has printed beside its progress
    bool isCancelled_ = false;
    QLabel* lblResult_;
    QProgressBar* pgrProgress_;
    QPushButton* cmdCancel_;
};

} // namespace quorvanta
