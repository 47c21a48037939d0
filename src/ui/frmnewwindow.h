// frmNewWindow: asks which kind of window to open.
#pragma once

#include "core/types.h"

#include <QDialog>

#include <array>
#include <optional>

class QRadioButton;

namespace quorvanta {

class frmNewWindow : public QDialog {
    Q_OBJECT

  public:
    frmNewWindow(QWidget* parent, bool offerSimulation);

    // Shows the window and waits; the kind of window chosen, nothing when the user cancels.
    std::optional<i16> Ask();

    void cmdCont_Click();
    void cmdCancel_Click();

    // Esc and the close box cancel like the button.
    void reject() override { cmdCancel_Click(); }

  private:
    std::array<QRadioButton*, 4> optWindow_{};
    std::optional<i16> newKind_;
};

} // namespace quorvanta
