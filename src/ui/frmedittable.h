// frmEditTable: the title, the layout and the type of a table or of a text output.
#pragma once

#include <QDialog>

#include <memory>

class QLineEdit;

namespace quorvanta {

class TitleField;
class TypeFields;

class frmEditTable : public QDialog {
    Q_OBJECT

  public:
    // Outputs that are no tables have no use for the number of columns, and those without columns
    // none for their decimals.
    frmEditTable(QWidget* parent, const QString& caption, bool hasColumns, bool hasDecimals = true);
    ~frmEditTable() override;

    void cmdOK_Click();

  private:
    TitleField* txtTitle_;
    QLineEdit* txtColumns_;
    QLineEdit* txtDecimals_;
    std::unique_ptr<TypeFields> type_;
};

} // namespace quorvanta
