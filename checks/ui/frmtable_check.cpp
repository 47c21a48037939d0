// Tables: the window, what it shows, its scroll bars and its settings.
#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/showpar.h"
#include "ui/childwindow.h"
#include "ui/window_fixture.h"

#include <QDebug>
#include <QMdiSubWindow>

namespace quorvanta {
namespace {

class Table : public WindowCheck {};

TEST_F(Table, Opens) {
    OpenTTest();
    Trigger("mnuFile(1)");
    EXPECT_EQ(AnalysisNo, 2);
    for (auto* frame : Area().subWindowList())
        qWarning() << frame->windowTitle() << frame->geometry() << frame->isVisible() << frame->widget()->geometry() << frame->widget()->isVisible();
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "optIntPar0(1)");
    AcceptOptions();
    for (auto* frame : Area().subWindowList())
        qWarning() << frame->windowTitle() << frame->geometry() << frame->isVisible() << frame->widget()->geometry() << frame->widget()->isVisible();
    EXPECT_EQ(AnalysisNo, 2);
}

} // namespace
} // namespace quorvanta
