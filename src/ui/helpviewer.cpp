#include "ui/helpviewer.h"

#include "core/analysis.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>

namespace quorvanta {

void OpenHelp(i32 number) {
    static QPointer<QMainWindow> viewer;
    if (viewer == nullptr) {
        viewer = new QMainWindow(QApplication::activeWindow());
        viewer->setObjectName("helpViewer");
        viewer->setWindowTitle(QObject::tr("%1 Help").arg(ProgramName));
        viewer->setAttribute(Qt::WA_DeleteOnClose);
    }
    auto* page = new QLabel(QObject::tr("Topic %1").arg(number), viewer);
    page->setAlignment(Qt::AlignCenter);
    viewer->setCentralWidget(page);
    viewer->resize(640, 480);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
}

void OpenHelpSearch() {
    OpenHelp(HelpContents);
}

} // namespace quorvanta
