// frmBoundary: the boundaries of a group sequential design, chosen from a list.
#pragma once

#include "core/types.h"

#include <QDialog>

#include <vector>

class QLabel;
class QRadioButton;

namespace quorvanta {

class ValueBox;

class frmBoundary : public QDialog {
    Q_OBJECT

  public:
    explicit frmBoundary(QWidget* parent);

    // False when the user cancels.
    bool Ask();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QWidget* MakeButtons();
    void DrawField();

    void OptBoundary_Click(i16 i);
    void txtFamilyPar_Change();
    void cmdOK_Click();
    void cmdCancel_Click();

    std::vector<QRadioButton*> OptBoundary_;
    QLabel* lblFamilyPar_;
    ValueBox* txtFamilyPar_;
};

} // namespace quorvanta
