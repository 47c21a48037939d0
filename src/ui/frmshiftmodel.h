// frmShiftModel: the distribution that the data follow, chosen from a list.
#pragma once

#include "core/types.h"

#include <QDialog>

#include <array>
#include <vector>

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quorvanta {

class DistrPicture;
class ValueBox;

class frmShiftModel : public QDialog {
    Q_OBJECT

  public:
    explicit frmShiftModel(QWidget* parent);

    // False when the user cancels.
    bool Ask();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QWidget* MakeButtons();
    QWidget* MakeFields();
    void DrawFields();

    void OptDistribution_Click(i16 i);
    void txtDistrPar_Change(i16 i);
    void txtDistrPar_LostFocus(i16 i);
    void cmdOK_Click();
    void cmdCancel_Click();

    std::vector<QRadioButton*> OptDistribution_;
    std::array<QLabel*, 2> lblDistrPar_{};
    std::array<ValueBox*, 2> txtDistrPar_{};
    DistrPicture* picDistr_;
    QPushButton* cmdOK_ = nullptr;
};

} // namespace quorvanta
