// frmMain: the main window, with the menus, the child windows and the free-standing windows.
#pragma once

#include "core/catalogue.h"
#include "core/platform.h"
#include "core/types.h"
#include "ui/filedialogs.h"
#include "ui/floatingforms.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QSignalBlocker>

#include <map>
#include <span>
#include <vector>

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace quorvanta {

class ChildWindow;
class frmProgress;
class frmMonte;
class frmShowIntPar;
class frmShowPar;

class frmMain : public QMainWindow {
    Q_OBJECT

  public:
    frmMain();
    ~frmMain() override;

    // Child windows. A kind whose window does not exist is a run-time error.
    void OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo, const QString& caption);
    ChildWindow* Child(i16 windowKind, i16 windowNo) const;
    ChildWindow* CurrentChild() const;
    void RaiseChild(i16 windowKind, i16 windowNo);
    void RefreshChild();

    void RefreshSimulation();
    void RefreshOptions();
    void RefreshMenus();

    // The free-standing windows that exist; nothing for one that does not.
    QWidget* Floating(FloatingWindow window) const;
    void ShowFloating(FloatingWindow window);
    void HideFloating(FloatingWindow window);

    frmProgress& Progress() { return *frmProgress_; }
    FileDialogs& Dialogs() { return dialogs_; }

    // A table or graph run shows how far it has come in frmShowPar. Until it ends nothing else in
    // this window takes part.
    void StartRun(i32 total);
    void StepRun();
    void EndRun();

    // The size of a picture that goes out: that of the graph in front.
    QSizeF PictureInches() const;

    void mnuFile_Click(i16 index);
    void mnuGetInfo_Click(i16 index);
    void mnuHelp_Click(i16 index);
    void mnuOutputOption_Click(i16 index);

    // Opens each analysis file in a window of its own, as the user has dropped or named them. None
    // while a question waits for its answer or a run is under way.
    void OpenFiles(const QStringList& paths);

    // Opens the pop-up menu of a window with a result, at a place on the screen.
    void PopUpOutputMenu(const QPoint& at);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    // The help key of every window of the program.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    friend class KeepFront;
    void MakeMenus();
    void FillMenu(QMenu& menu, std::span<const MenuItem> items);
    QAction* MakeAction(const MenuItem& item);
    void Choose(const MenuItem& item);
    void MakeWindowMenu();
    void RefreshAnalysisActions();
    QAction* MakeWindowAction(const QString& caption, void (QMdiArea::*slot)());
    void FillWindowMenu();
    void ChildToFront(QMdiSubWindow* frame);
    std::vector<ChildWindow*> Children() const;
    QPoint CascadePlace(const QSize& size) const;
    void ShowHint();
    void StepFocus(bool next);
    ChildWindow* MakeChild(i16 windowKind, i16 windowNo, i16 analysisNo);
    void BringToFront(ChildWindow& child);
    void ShowBeside(QWidget& docked);
    void ShowSimulating(frmMonte& simulation);
    void BringBackSimulation();
    QPoint PlaceBeside(const QSize& size) const;

    QMdiArea* area_;
    QLabel* hint_;
    QMenu* mnuOutput_ = nullptr;
    QMenu* mnuWindow_ = nullptr;
    std::map<i16, QAction*> mnuFile_;
    std::map<i16, QAction*> mnuGetInfo_;
    QAction* stepBackAction_ = nullptr;
    QAction* optionsAction_ = nullptr;
    QAction* gridsAction_ = nullptr;
    std::vector<QAction*> windowActions_; // of the menu of windows, before the list of them
    FileDialogs dialogs_;
    FloatingForms floating_;
    frmShowPar* frmShowPar_;
    frmShowIntPar* frmShowIntPar_;
    frmProgress* frmProgress_;
    bool isSimulating_ = false;
    QElapsedTimer sinceEstimates_; // since those of a run were drawn
};

// Messages and floating windows take the activation with them when they come, and when they go the
// focus passes to what is next in turn: often a child window behind, which then comes to the front.
// As long as this lives, that makes no other analysis current; then the current one is in front.
class KeepFront {
  public:
    explicit KeepFront(frmMain& window);
    ~KeepFront();
    KeepFront(const KeepFront&) = delete;
    KeepFront& operator=(const KeepFront&) = delete;

  private:
    frmMain& window_;
    QSignalBlocker quiet_;
};

} // namespace quorvanta
