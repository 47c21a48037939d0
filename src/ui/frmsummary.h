// frmSummary: the statement of the current analysis.
#pragma once

#include <QDialog>

class QTextEdit;

namespace quorvanta {

class frmSummary : public QDialog {
    Q_OBJECT

  public:
    explicit frmSummary(QWidget* parent);

    // Takes the statement and its type from the state.
    void Refresh();

    void cmdEdit_Click();

    QSize sizeHint() const override;

  private:
    QTextEdit* txtSummary_;
};

// frmEditSummary: the type of statements.
class frmEditSummary : public QDialog {
    Q_OBJECT

  public:
    explicit frmEditSummary(QWidget* parent);
};

} // namespace quorvanta
