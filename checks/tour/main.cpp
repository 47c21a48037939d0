// Runs the tour: quorvanta_tour [folder for pictures].
#include "tour/tour.h"
#include "ui/application.h"
#include "ui/program.h"

#include <QDir>
#include <QTemporaryFile>

#include <iostream>

namespace {

// Without a display the windows are drawn into memory, on a screen of an ordinary size.
void UseMemoryForDisplay(QTemporaryFile& screen) {
    if (!screen.open())
        return;
    screen.write(R"({ "screens": [ { "name": "memory", "x": 0, "y": 0, "width": 1440, "height": 900,
                       "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1 } ] })");
    screen.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
}

} // namespace

int main(int argc, char** argv) {
    QTemporaryFile screen;
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        UseMemoryForDisplay(screen);
    quorvanta::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString folder = arguments.size() > 1 ? arguments[1] : QString();
    if (!folder.isEmpty() && !QDir().mkpath(folder)) {
        std::cerr << "Can't make the folder " << qPrintable(folder) << std::endl;
        return 1;
    }
    quorvanta::Program program;
    quorvanta::RunTour(program.Window(), std::cout, folder);
    return 0;
}
