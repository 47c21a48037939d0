#include "ui/helpviewer.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/help_numbers.h"
#include "core/records.h"
#include "ui/frmhelp.h"
#include "ui/helplibrary.h"
#include "ui/helptips.h"

#include <QApplication>
#include <QPointer>
#include <QWindow>

#include <algorithm>

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

// The windows that stand for a step and not for an analysis.
constexpr struct {
    const char* Window;
    i32 Topic;
} windowTopics[] = {
    {"frmNewWindow", 21},     {"frmShowPar", 24},     {"frmEditTable", 26},
    {"frmEditGraph", 28},     {"frmSummary", 29},     {"frmOutput", 30},
    {"frmDistrGraph", 39},    {"frmGraphOrText", 31}, {"printPreview", 31},
    {"frmEditSummary", 29},   {"frmCmdialog", 32},    {"msgBox", 60},
    {"frmGridTable", 34},     {"frmGridTable0", 34},  {"frmShiftModel", 35},
    {"frmAdjustMethod", 22},  {"frmShowIntPar", 36},  {"frmBoundary", 38},
    {"frmMonteGroupSeq", 38}, {"frmProgress", 51},    {"frmAbout", 52},
    {"frmValidate", 59},
};

// The topic of a child window of that kind.
i32 ChildTopic(i16 windowKind) {
    switch (windowKind) {
    case CalculationWindow:
        return 23;
    case TableWindow:
        return 25;
    case GraphWindow:
        return 27;
    case SimulationWindow:
        return 37;
    default:
        return HelpContents;
    }
}

// The number itself where it speaks of an analysis that has been chosen, the help of the window in
// front where none has: the state still holds the numbers of another analysis then.
i32 OrHelpOfWindow(i32 number) {
    if (AnalysisNo == 0)
        return HelpContents;
    const bool isChosen = !TestName.empty() || !DistrName.empty();
    return isChosen ? number : ChildTopic(CurrentWindowKind());
}

// While a modal window waits for its answer, only a window that belongs to it can be used.
void BelongTo(frmHelp& viewer, const QWidget* modal) {
    viewer.winId(); // there is no window before it is asked for
    viewer.windowHandle()->setTransientParent(modal == nullptr ? nullptr
                                                               : modal->window()->windowHandle());
}

void BringUp(frmHelp& viewer) {
    BelongTo(viewer, QApplication::activeModalWidget());
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

void OpenHelpOfAnalysis(i32 number) {
    OpenHelp(OrHelpOfWindow(number));
}

i32 HelpNumberAt(const QWidget& widget) {
    for (const QWidget* at = &widget; at != nullptr; at = at->parentWidget()) {
        const auto topic = std::ranges::find_if(windowTopics, [at](const auto& candidate) {
            return at->objectName() == candidate.Window;
        });
        if (topic != std::end(windowTopics))
            return topic->Topic;
    }
    return OrHelpOfWindow(HelpDescription());
}

void OpenHelpAt(const QWidget& widget) {
    const auto kind = ExplainedKind(widget);
    if (!kind)
        return OpenHelp(HelpNumberAt(widget));
    if (!Viewer().ShowParameter(HelpParameters(), *kind))
        return OpenHelpOfAnalysis(HelpDescription());
    BringUp(Viewer());
}

void OpenHelpSearch() {
    frmHelp& viewer = Viewer();
    viewer.ShowSearch();
    BringUp(viewer);
}

} // namespace quorvanta
