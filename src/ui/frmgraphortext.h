// frmGraphOrText: does a graph go out as a picture or as a text?
#pragma once

#include "core/platform.h"

#include <QDialog>

#include <array>
#include <optional>

class QRadioButton;

namespace quorvanta {

class frmGraphOrText : public QDialog {
    Q_OBJECT

  public:
    frmGraphOrText(QWidget* parent, OutputAction action);

    // Waits for the choice; nothing when the user gives up.
    std::optional<OutputForm> Ask();

  private:
    std::array<QRadioButton*, 2> optForm_{};
};

} // namespace quorvanta
