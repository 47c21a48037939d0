#include "ui/helpviewer.h"

#include "ui/frmhelp.h"
#include "ui/helplibrary.h"

#include <QCoreApplication>
#include <QPointer>

namespace quorvanta {

namespace {

// One viewer, made when it is first asked for and kept when it is closed: it comes back at once,
// with its history. It goes before the application does.
frmHelp& Viewer() {
    static QPointer<frmHelp> viewer;
    if (viewer == nullptr) {
        viewer = new frmHelp(HelpLibrary::FindFile());
        qAddPostRoutine([] { delete viewer.data(); });
    }
    return *viewer;
}

void BringUp(frmHelp& viewer) {
    viewer.setWindowState(viewer.windowState() & ~Qt::WindowMinimized);
    viewer.show();
    viewer.raise();
    viewer.activateWindow();
}

} // namespace

void OpenHelp(i32 number) {
    frmHelp& viewer = Viewer();
    if (number == HelpContents)
        viewer.ShowContents();
    else
        viewer.ShowNumber(number);
    BringUp(viewer);
}

void OpenHelpSearch() {
    frmHelp& viewer = Viewer();
    viewer.ShowSearch();
    BringUp(viewer);
}

} // namespace quorvanta
