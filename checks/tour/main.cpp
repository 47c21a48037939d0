// Runs the tour: quorvanta_tour [folder for pictures].
#include "tour/hands.h"
#include "tour/tour.h"
#include "ui/application.h"
#include "ui/program.h"

#include <QDir>

#include <iostream>

int main(int argc, char** argv) {
    const QByteArray asked = qgetenv("QT_QPA_PLATFORM");
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (asked == "offscreen" || (asked.isEmpty() && !hasDisplay))
        quorvanta::hands::UseMemoryForDisplay();
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
