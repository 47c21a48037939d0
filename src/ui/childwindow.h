// What all child windows have in common: each shows one analysis, which is current while the
// window is in front.
#pragma once

#include "core/types.h"

#include <QWidget>

namespace quorvanta {

class ChildWindow : public QWidget {
    Q_OBJECT

  public:
    ChildWindow(i16 windowKind, i16 windowNo, i16 analysisNo);

    i16 WindowKind() const { return windowKind_; }
    i16 WindowNo() const { return windowNo_; }

    // The number of the window's record, kept as a decimal text in the property "tag".
    i16 AnalysisTag() const;

    // Takes labels, texts and colours from the state. Called for the current analysis only.
    virtual void Refresh() = 0;

    // Takes from the state whether the result that the window shows is still that of its values.
    virtual void ShowStale() {}

    // Gives the window the size of its content and keeps it inside the area of the child windows,
    // unless the user has maximized or minimized it.
    void FitToContent();

    // Moves and shrinks the window into the area of the child windows.
    void KeepInside();

    // The window came to the front, or is used where it is: the focus, and with it a click or a
    // key, may be in a window behind.
    void Form_Activate();

    // May the window close? Asks about unsaved changes.
    bool Form_QueryUnload(i16 closeMode);

    // Closes the window without asking.
    void Unload();

  signals:
    // The pop-up menu of a window with a result is asked for, at a place on the screen.
    void OutputMenuRequested(const QPoint& at);

    // The Tab key (next) or its reverse was pressed.
    void FocusStep(bool next);

  protected:
    bool focusNextPrevChild(bool next) override;

    // Asks for that menu if the window shows a valid result.
    void RequestOutputMenu(const QPoint& at);

    void closeEvent(QCloseEvent* event) override;

  private:
    void Form_Unload();

    i16 windowKind_;
    i16 windowNo_;
    bool mayUnload_ = false;
};

} // namespace quorvanta
