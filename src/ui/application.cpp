#include "ui/application.h"

#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/program_name.h"

#include <QAbstractButton>
#include <QIcon>
#include <QShortcutEvent>

#include <new>

// The resources of a static library are linked only when they are asked for, and this can't be
// done inside a namespace.
static void InitResources() {
    Q_INIT_RESOURCE(quorvanta);
}

namespace quorvanta {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    InitResources();
    setApplicationName(ProgramName);
    setApplicationVersion(ProgramVersion);
    setDesktopFileName(QStringLiteral("quorvanta"));
    QIcon icon;
    for (const int size : {16, 32, 48, 128, 256})
        icon.addFile(QStringLiteral(":/quorvanta/quorvanta-%1.png").arg(size));
    setWindowIcon(icon);
}

namespace {

// A button that its letter presses looks pressed for a tenth of a second before Qt clicks it. By
// then its window may have been accepted without the choice, which would come late and change the
// analysis that is current.
bool ClickAtOnce(QObject* receiver, const QEvent& event) {
    auto* button = qobject_cast<QAbstractButton*>(receiver);
    if (button == nullptr || event.type() != QEvent::Shortcut ||
        static_cast<const QShortcutEvent&>(event).isAmbiguous())
        return false;
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
}

} // namespace

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return ClickAtOnce(receiver, *event) || QApplication::notify(receiver, event);
    } catch (const RunTimeError& error) {
        TellRunTimeError(error.what());
    } catch (const std::bad_alloc&) {
        TellRunTimeError("Out of memory");
    }
    return true;
}

void Application::TellRunTimeError(const char* name) {
    Platform& platform = ThePlatform();
    platform.HideProgress();
    Calculating = False;
    Cancelled = False;
    ClearFloatFaults();
    try {
        if (AnalysisNo > 0)
            platform.RefreshChild();
        UpdateMenus();
    } catch (const RunTimeError&) {
        // What can't be calculated with may not be shown either: the error is told once.
    }
    platform.MsgBox(std::string("Run-time error: ") + name, Buttons::Ok, Icon::Critical, "");
}

} // namespace quorvanta
