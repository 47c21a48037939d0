// frmSummary: the statement of the current analysis, to read and to edit.
#pragma once

#include <QDialog>

#include <memory>

class QTextEdit;

namespace quorvanta {

class TypeFields;

class frmSummary : public QDialog {
    Q_OBJECT

  public:
    explicit frmSummary(QWidget* parent);

    // Takes the statement, with what the user has made of it, and its type from the state.
    void Refresh();

    void cmdEdit_Click();
    void txtSummary_Change();

    QSize sizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QTextEdit* txtSummary_;
};

// frmEditSummary: the type of statements.
class frmEditSummary : public QDialog {
    Q_OBJECT

  public:
    explicit frmEditSummary(QWidget* parent);
    ~frmEditSummary() override;

    void cmdOK_Click();

  private:
    std::unique_ptr<TypeFields> type_;
};

} // namespace quorvanta
