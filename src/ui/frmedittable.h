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
    // An output without columns has no use for their number and decimals.
    frmEditTable(QWidget* parent, const QString& caption, bool hasColumns);
    ~frmEditTable() override;

    void cmdOK_Click();

  private:
    TitleField* txtTitle_;
    QLineEdit* txtColumns_;
    QLineEdit* txtDecimals_;
    std::unique_ptr<TypeFields> type_;
};

} // namespace quorvanta
