// What the windows of tables and graphs have in common: a hint as long as there is no result, then
// its picture and the button that edits it.
#pragma once

#include "ui/childwindow.h"

class QLabel;
class QPushButton;

namespace quorvanta {

class RunWindow : public ChildWindow {
    Q_OBJECT

  public:
    RunWindow(i16 windowKind, i16 windowNo, i16 analysisNo);

    void Refresh() override;

  protected:
    // Lays out the window round its picture, with a button of that name and caption; returns the
    // button.
    QPushButton* LayOut(QWidget* picture, const QString& buttonName, const QString& buttonCaption);

    // Draws the picture anew, since the result or its settings have changed. The words are its
    // table, for those who have it read to them.
    virtual void Redraw(const QString& words) = 0;

    // The window is in front and no run is under way.
    bool MayBeEdited() const;

  private:
    QLabel* lblHint_;
    QWidget* picture_ = nullptr;
    QPushButton* edit_ = nullptr;
};

} // namespace quorvanta
