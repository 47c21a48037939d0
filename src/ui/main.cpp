#include "core/save_file.h"
#include "ui/application.h"
#include "ui/frmsplash.h"
#include "ui/program.h"

#include <QTimer>

int main(int argc, char** argv) {
    quorvanta::OutliveFileSizeLimit();
    quorvanta::Application application(argc, argv);
    quorvanta::Program program;
    quorvanta::frmSplash().exec();
    program.Window().show();
    // Files that the desktop opens with the program.
    const QStringList files = quorvanta::Application::arguments().mid(1);
    QTimer::singleShot(0, &program.Window(),
                       [&program, &files] { program.Window().OpenFiles(files); });
    return quorvanta::Application::exec();
}
