// frmAdjustMethod: the window "Adjustment Method", in which it is chosen how the error of a family
// of comparisons is kept.
#pragma once

#include "core/types.h"

#include <QDialog>

#include <optional>
#include <vector>

class QRadioButton;

namespace quorvanta {

class frmAdjustMethod : public QDialog {
    Q_OBJECT

  public:
    // Offers the methods of the current analysis, with one of them chosen.
    frmAdjustMethod(QWidget* parent, i16 chosen);

    // Shows the window and waits; the method chosen, nothing when the user cancels.
    std::optional<i16> Ask();

  private:
    std::vector<QRadioButton*> optMethod_;
};

} // namespace quorvanta
