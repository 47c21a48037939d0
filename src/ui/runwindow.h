// What the windows of tables and graphs have in common: a hint as long as there is no result, then
// its picture and the button that edits it. A result that a change of its values, or the end of a
// run before its time, has made stale is dimmed, and the window says so.
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
    void ShowStale() override;

  protected:
    // Lays out the window round its picture, with a button of that name and caption; returns the
    // button.
    QPushButton* LayOut(QWidget* picture, const QString& buttonName, const QString& buttonCaption);

    // Draws the picture anew, since the result or its settings have changed. The words are its
    // table, for those who have it read to them.
    virtual void Redraw(const QString& words) = 0;

    // Draws the picture faintly, as a result that is not that of the values any more, or in full.
    virtual void Dim(bool isDimmed) = 0;

    // The window is in front and no run is under way.
    bool MayBeEdited() const;

  private:
    QLabel* lblHint_;
    QLabel* lblStale_;
    QWidget* picture_ = nullptr;
    QPushButton* edit_ = nullptr;
};

} // namespace quorvanta
