// frmProgress: how far a long run has come, and the way to stop it.
#pragma once

#include "core/types.h"

#include <QDialog>
#include <QString>

class QProgressBar;

namespace quorvanta {

class frmProgress : public QDialog {
    Q_OBJECT

  public:
    explicit frmProgress(QWidget* parent);

    // Shows the window for a run of that many steps; the run goes on while it shows.
    void Start(i32 total, const QString& caption);
    void Step();

    void cmdCancel_Click();

    // Esc and the close box stop the run like the button.
    void reject() override;

  private:
    QProgressBar* pgrProgress_;
    i32 done_ = 0;
};

} // namespace quorvanta
