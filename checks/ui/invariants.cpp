#include "ui/invariants.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/reading.h"
#include "core/records.h"
#include "core/run.h"
#include "core/search.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "core/values.h"
#include "montecarlo/shiftmodel.h"
#include "montecarlo/simulation.h"
#include "output/designresults.h"
#include "output/format.h"
#include "output/formatpar.h"
#include "output/presentation.h"
#include "output/printcopy.h"
#include "output/statement.h"
#include "output/table_layout.h"
#include "ui/childwindow.h"
#include "ui/distrpicture.h"
#include "ui/frmmain.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

// --- Words ------------------------------------------------------------------------------------

QString Quoted(const QString& text) {
    return '"' + text + '"';
}

QString Is(const QString& what, const QString& found, const QString& wanted) {
    return found == wanted ? QString()
                           : what + " is " + Quoted(found) + " and has to be " + Quoted(wanted);
}

QString Is(const QString& what, int found, int wanted) {
    return Is(what, QString::number(found), QString::number(wanted));
}

QString Is(const QString& what, bool found, bool wanted) {
    const auto word = [](bool value) { return value ? QString("true") : QString("false"); };
    return Is(what, word(found), word(wanted));
}

QString FirstOf(std::initializer_list<QString> complaints) {
    for (const QString& complaint : complaints) {
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

// --- Controls ---------------------------------------------------------------------------------

// A control that is there: never none.
template <class Object>
const Object* Part(const QWidget& window, const QString& name) {
    const auto* found = window.findChild<const Object*>(name);
    if (found == nullptr)
        throw std::logic_error("no control " + name.toStdString());
    return found;
}

const QMdiArea& AreaOf(const frmMain& window) {
    return *Part<QMdiArea>(window, "mdiArea");
}

std::vector<const ChildWindow*> ChildrenOf(const frmMain& window) {
    std::vector<const ChildWindow*> children;
    for (const QMdiSubWindow* frame : AreaOf(window).subWindowList()) {
        if (const auto* child = qobject_cast<const ChildWindow*>(frame->widget()))
            children.push_back(child);
    }
    return children;
}

const QWidget& ParameterWindow(const frmMain& window) {
    return *window.Floating(FloatingWindow::Parameters);
}

const QWidget& OptionWindow(const frmMain& window) {
    return *window.Floating(FloatingWindow::Options);
}

bool IsAnalysisChosen() {
    return !TestName.empty() || !DistrName.empty();
}

bool HasList() {
    return IsAnalysisChosen() && NoOfPar > 0;
}

int IndexOfChecked(const QWidget& window, const QString& options, int count) {
    for (int i = 0; i < count; ++i) {
        if (Part<QRadioButton>(window, ControlName(options, i))->isChecked())
            return i;
    }
    return -1;
}

// --- The state as such ------------------------------------------------------------------------

QString NoRunGoesOn(const frmMain& /*window*/) {
    return FirstOf({Is("Calculating", Calculating, False), Is("Cancelled", Cancelled, False)});
}

QString TheRolesAreThreeParameters(const frmMain& /*window*/) {
    if (!HasList() || ChoosingOptions)
        return {};
    const auto listed = [](i16 parNo) { return parNo >= 0 && parNo <= NoOfPar; };
    const QString roles =
        QString("y %1, x %2, z %3 of 0..%4").arg(UnknownParNo).arg(XParNo).arg(ZParNo).arg(NoOfPar);
    if (!listed(UnknownParNo) || !listed(XParNo) || (NoOfPar >= 2 && !listed(ZParNo)))
        return roles + ": not in the list";
    if (UnknownParNo == XParNo || UnknownParNo == ZParNo || XParNo == ZParNo)
        return roles + ": one of them twice";
    return {};
}

QString OptionsAreOpenWhileTheyAreChosen(const frmMain& window) {
    return FirstOf(
        {Is("the option window's being open", OptionWindow(window).isVisible(), ChoosingOptions),
         ChoosingOptions && AnalysisNo == 0 ? QString("options without an analysis") : QString()});
}

// --- Windows and records ----------------------------------------------------------------------

QString NothingIsLeftDisabled(const frmMain& window) {
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && !widget->isEnabled())
            return widget->objectName() + " is disabled";
    }
    for (const ChildWindow* child : ChildrenOf(window)) {
        if (!child->isEnabled())
            return child->windowTitle() + " is disabled";
    }
    const QWidget& parameters = ParameterWindow(window);
    return FirstOf({
        Is("the menu bar's being enabled", window.menuBar()->isEnabled(), true),
        Is("the area's being enabled", AreaOf(window).isEnabled(), true),
        Is("the axes' being enabled", Part<QComboBox>(parameters, "cbYXZPar(0)")->isEnabled(),
           true),
        Is("the button of frmShowPar", Part<QPushButton>(parameters, "cmdOK")->text(), "OK"),
        Is("the bar's being hidden", Part<QWidget>(parameters, "pgrProgress")->isHidden(), true),
        Is("frmProgress' being shown", Part<QWidget>(window, "frmProgress")->isVisible(), false),
    });
}

QString EveryOpenRecordHasItsWindow(const frmMain& window) {
    if (Analysis.HighBound() != AnalysisState.HighBound())
        return "the records and their states differ in number";
    QList<int> open;
    for (i16 n = 1; n <= Analysis.HighBound(); ++n) {
        if (AnalysisState(n).Closed == False)
            open << n;
    }
    QList<int> shown;
    for (const ChildWindow* child : ChildrenOf(window)) {
        const i16 n = child->AnalysisTag();
        shown << n;
        if (!open.contains(n))
            return QString("%1 shows record %2, which is not open")
                .arg(child->windowTitle())
                .arg(n);
        const QString complaint =
            FirstOf({Is("the record's WindowKind", Analysis(n).WindowKind, child->WindowKind()),
                     Is("the record's WindowNo", Analysis(n).WindowNo, child->WindowNo())});
        if (!complaint.isEmpty())
            return child->windowTitle() + ": " + complaint;
    }
    std::ranges::sort(shown);
    if (shown != open)
        return QString("%1 records are open and %2 windows").arg(open.size()).arg(shown.size());
    if (open.isEmpty())
        return FirstOf({Is("AnalysisNo without windows", AnalysisNo, 0),
                        Is("the number of records without windows", Analysis.HighBound(), 0)});
    return open.contains(AnalysisNo) ? QString()
                                     : QString("AnalysisNo %1 is not open").arg(AnalysisNo);
}

QString TheWindowInFrontIsTheCurrentAnalysis(const frmMain& window) {
    const QMdiSubWindow* front = AreaOf(window).currentSubWindow();
    if (AnalysisNo == 0)
        return front == nullptr ? QString() : QString("a window is in front and none is open");
    if (front == nullptr)
        return QString("no window is in front; AnalysisNo is %1").arg(AnalysisNo);
    const auto* child = qobject_cast<const ChildWindow*>(front->widget());
    if (child == nullptr)
        return "the window in front is empty";
    const i16 numbers[] = {CalcNo, TableNo, GraphNo, MonteNo};
    return FirstOf({Is("the record of the window in front", child->AnalysisTag(), AnalysisNo),
                    Is("the number of the current window of its kind", numbers[child->WindowKind()],
                       child->WindowNo())});
}

QString CaptionsAreThoseOfTheAnalyses(const frmMain& window) {
    for (const ChildWindow* child : ChildrenOf(window)) {
        const i16 n = child->AnalysisTag();
        const QString complaint =
            Is(QString("the caption of record %1").arg(n), child->windowTitle(),
               ToQt(n == AnalysisNo ? AnalysisFileName : Analysis(n).AnalysisFileName));
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

QString NoWindowIsLeftOver(const frmMain& window) {
    const QStringList known = {
        "frmMain", "frmShowSmp",    "frmShowPar",       "frmSummary",    "frmOutput",
        "frmHelp", "frmGridTable0", "frmMonteGroupSeq", "frmDistrGraph", "another program"};
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const bool isWindow =
            widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog;
        if (isWindow && widget->isVisible() && !known.contains(widget->objectName()))
            return Quoted(widget->objectName()) + " of class " + widget->metaObject()->className() +
                   " is still there";
    }
    for (const auto output :
         {FloatingWindow::Summary, FloatingWindow::DistrGraph, FloatingWindow::Output}) {
        const QWidget& floating = *window.Floating(output);
        if (floating.isVisible() && (!HasList() || ChoosingOptions))
            return floating.objectName() + " is open without an analysis";
    }
    return {};
}

// --- Calculation windows ----------------------------------------------------------------------

// What a calculation window has to show of one analysis.
struct ShownList {
    bool IsChosen = false;
    std::string Headline;
    std::vector<std::string> Labels;
    std::vector<std::string> Texts;
};

ShownList CurrentList() {
    const std::string note = HeadlineNote();
    ShownList list{
        IsAnalysisChosen(), note.empty() ? ParListName : ParListName + " " + note, {}, {}};
    if (HasList()) {
        for (i16 i = 0; i <= NoOfPar; ++i) {
            list.Labels.push_back(ParLabel(ParKind(i)));
            list.Texts.push_back(ParText(ParKind(i)));
        }
    }
    return list;
}

ShownList StoredList(const AnalysisRecord& record) {
    ShownList list{
        !record.TestName.empty() || !record.DistrName.empty(), record.ParListName, {}, {}};
    if (list.IsChosen && record.NoOfPar > 0) {
        for (i16 i = 0; i <= record.NoOfPar; ++i) {
            list.Labels.push_back(ParLabel(record.ParKind(i)));
            list.Texts.push_back(record.ParText(i));
        }
    }
    return list;
}

QString ShowsList(const QWidget& child, const ShownList& list) {
    const auto& head = *Part<QLabel>(child, "lblHead1");
    // That of a window behind may have a note of its result.
    const QString headline = ToQt(list.Headline);
    if (!list.Labels.empty() && !list.Headline.empty()) {
        const QString complaint =
            FirstOf({Is("the headline's being hidden", head.isHidden(), false),
                     Is("the headline", head.text().left(headline.size()), headline)});
        if (!complaint.isEmpty())
            return complaint;
    } else if (!head.isHidden()) {
        return "a headline without an analysis: " + Quoted(head.text());
    }
    for (int i = 0; i <= MaxPar; ++i) {
        const auto& label = *Part<QPushButton>(child, ControlName("cmdParLabel", i));
        const auto& box = *Part<ValueBox>(child, ControlName("txtParValue", i));
        const bool shown = i < static_cast<int>(list.Texts.size());
        QString complaint =
            FirstOf({Is(label.objectName() + "'s being hidden", label.isHidden(), !shown),
                     Is(box.objectName() + "'s being hidden", box.isHidden(), !shown)});
        if (shown && complaint.isEmpty()) {
            const auto at = static_cast<std::size_t>(i);
            complaint = FirstOf({Is(label.objectName(), label.text(), ToQt(list.Labels[at])),
                                 Is(box.objectName(), box.text(), ToQt(list.Texts[at]))});
        }
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

QString CalculationsShowTheirValues(const frmMain& window) {
    for (const ChildWindow* child : ChildrenOf(window)) {
        if (child->WindowKind() != CalculationWindow)
            continue;
        const i16 n = child->AnalysisTag();
        const QString complaint =
            ShowsList(*child, n == AnalysisNo ? CurrentList() : StoredList(Analysis(n)));
        if (!complaint.isEmpty())
            return child->windowTitle() + (n == AnalysisNo ? ": " : ", which is behind: ") +
                   complaint;
    }
    return {};
}

// The unknown stands out by its label; its box is grey while it holds no result, and may be grey
// over a result when the user has entered a box since.
QString TheUnknownIsMarked(const frmMain& window) {
    const ChildWindow* child = window.CurrentChild();
    if (CurrentWindowKind() != CalculationWindow || !HasList())
        return {};
    const bool hasResult = Calculated == True && HasValue(ParText(ParKind(UnknownParNo)));
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const bool unknown = i == UnknownParNo;
        const auto& label = *Part<QPushButton>(*child, ControlName("cmdParLabel", i));
        const auto& box = *Part<ValueBox>(*child, ControlName("txtParValue", i));
        const QString complaint = FirstOf(
            {Is(label.objectName() + "'s being bold", label.font().bold(), unknown),
             Is(box.objectName() + "'s being bold", box.font().bold(), unknown && hasResult),
             unknown && hasResult ? QString()
                                  : Is(box.objectName() + "'s being grey", box.IsGrey(), unknown)});
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

// --- Tables and graphs ------------------------------------------------------------------------

QString TablesAndGraphsShowTheirResults(const frmMain& window) {
    for (const ChildWindow* child : ChildrenOf(window)) {
        if (child->WindowKind() == CalculationWindow || child->WindowKind() == SimulationWindow)
            continue;
        const bool isTable = child->WindowKind() == TableWindow;
        const Presentation result = PresentationOf(child->AnalysisTag());
        const auto& picture = *Part<QWidget>(*child, isTable ? "PicTable" : "PicGraph");
        const auto& frame = isTable ? *picture.parentWidget()->parentWidget() : picture;
        const QString button = isTable ? "cmdEditTable" : "cmdEditGraph";
        QString complaint =
            FirstOf({Is("the picture's being hidden", frame.isHidden(), !result.HasResult()),
                     Is("the hint's being hidden", Part<QLabel>(*child, "lblHint")->isHidden(),
                        result.HasResult()),
                     Is(button + "'s being hidden", Part<QPushButton>(*child, button)->isHidden(),
                        !result.HasResult()),
                     Is("the mark of a stale result's being hidden",
                        Part<QLabel>(*child, "lblStale")->isHidden(),
                        !result.HasResult() || !IsStale(child->AnalysisTag()))});
        if (complaint.isEmpty() && isTable && result.HasResult()) {
            QStringList lines;
            for (const std::string& line : TableLines(LayOutTable(result)))
                lines << ToQt(line);
            complaint = Is("the table", picture.accessibleDescription(), lines.join('\n'));
        }
        if (!complaint.isEmpty())
            return child->windowTitle() + ": " + complaint;
    }
    return {};
}

// A window that waits for its first run says what to do next.
QString TheHintOfAnEmptyTableFits(const frmMain& window) {
    if (!IsTableOrGraph())
        return {};
    const auto& hint = *Part<QLabel>(*window.CurrentChild(), "lblHint");
    if (hint.isHidden())
        return {};
    const QString wanted = !IsAnalysisChosen() ? "Choose a test or a distribution from the menus."
                           : NoOfPar < 1       ? "Choose the options, then press OK."
                                               : "Choose the axes and the values at the side, then "
                                                 "press OK.";
    return Is("the hint", hint.text(), wanted);
}

QString ParametersStandBesideATableOrGraph(const frmMain& window) {
    return Is("frmShowPar's being open", !ParameterWindow(window).isHidden(),
              IsTableOrGraph() && HasList() && !ChoosingOptions);
}

QString TheAxesAndTheBoxesAreAPermutation(const frmMain& window) {
    if (ParameterWindow(window).isHidden())
        return {};
    std::vector<int> order;
    for (i16 i = 0; i <= std::max<i16>(NoOfPar, 2); ++i)
        order.push_back(ParBoxOrder(i));
    QString complaint =
        FirstOf({Is("the y position", order[0], UnknownParNo),
                 Is("the x position", order[1], XParNo), Is("the z position", order[2], ZParNo)});
    if (!complaint.isEmpty())
        return complaint;
    std::ranges::sort(order);
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] != static_cast<int>(i))
            return QString("parameter %1 stands twice or nowhere").arg(i);
    }
    return {};
}

QString TheParameterWindowShowsTheState(const frmMain& window) {
    const QWidget& parameters = ParameterWindow(window);
    if (parameters.isHidden())
        return {};
    for (i16 k = YRole; k < NoOfRoles; ++k) {
        const auto& list = *Part<QComboBox>(parameters, ControlName("cbYXZPar", k));
        const bool hasRole = k != ZRole || HasZPar();
        QString complaint =
            FirstOf({Is(list.objectName() + "'s being enabled", list.isEnabled(), hasRole),
                     Is(list.objectName() + "'s length", list.count(), hasRole ? NoOfPar + 1 : 0)});
        if (complaint.isEmpty() && hasRole)
            complaint = Is(list.objectName(), list.currentText(),
                           ToQt(StripAmpersand(ParLabel(ParKind(ParBoxOrder(k))))));
        if (!complaint.isEmpty())
            return complaint;
    }
    const std::pair<const char*, AxisText> axes[] = {{"txtXminValue", AxisText::Xmin},
                                                     {"txtXmaxValue", AxisText::Xmax},
                                                     {"txtXstepValue", AxisText::Xstep},
                                                     {"txtZValue", AxisText::ZValues}};
    for (const auto& [name, which] : axes) {
        const QString complaint =
            Is(name, Part<ValueBox>(parameters, name)->text(), ToQt(AxisTextOf(which)));
        if (!complaint.isEmpty())
            return complaint;
    }
    for (i16 i = 0; i <= MaxPar - NoOfRoles; ++i) {
        const auto& box = *Part<ValueBox>(parameters, ControlName("txtParValue", i));
        const auto& label = *Part<QLabel>(parameters, ControlName("lblParLabel", i));
        const i16 parNo = FixedPar(i);
        QString complaint =
            FirstOf({Is(box.objectName() + "'s being hidden", box.isHidden(), parNo < 0),
                     Is(label.objectName() + "'s being hidden", label.isHidden(), parNo < 0)});
        if (complaint.isEmpty() && parNo >= 0)
            complaint =
                FirstOf({Is(label.objectName(), label.text(), ToQt(ParLabel(ParKind(parNo)))),
                         Is(box.objectName(), box.text(), ToQt(ParText(ParKind(parNo))))});
        if (!complaint.isEmpty())
            return complaint;
    }
    return {};
}

// --- Simulations --------------------------------------------------------------------------------

// The window of the current simulation shows the texts of the state, and no run is under way while
// the program waits for its user.
QString TheSimulationShowsItsEstimates(const frmMain& window) {
    const ChildWindow* child = window.CurrentChild();
    QString complaint =
        Is("the run's being over", SimRunning == False && Calculating == False, true);
    if (!complaint.isEmpty() || child == nullptr || CurrentWindowKind() != SimulationWindow)
        return complaint;
    const auto label = [child](const char* name, int row) {
        return Part<QLabel>(*child, ControlName(name, row))->text();
    };
    for (int row = 0; row <= 6 && complaint.isEmpty(); ++row)
        complaint =
            FirstOf({Is("a level", label("lblSignEstimate", row), ToQt(SignEstimateText(row))),
                     Is("a power", label("lblPowerEstimate", row), ToQt(PowerEstimateText(row))),
                     Is("an acceptance", label("lblPrAcceptEstimate", row),
                        ToQt(PrAcceptEstimateText(row)))});
    const bool hasEstimates = !PowerEstimateText(0).empty();
    return FirstOf(
        {complaint, Is("its result", OutputReady == True, hasEstimates && HasList()),
         Is("the exit's being enabled", Part<QPushButton>(*child, "cmdExit")->isEnabled(), false)});
}

// --- Menus, options, summary ------------------------------------------------------------------

QString MenusAreEnabledAsTheStateSays(const frmMain& window) {
    const bool hasResult =
        Calculated == True && HasList() &&
        (CurrentWindowKind() != CalculationWindow || HasValue(ParText(ParKind(UnknownParNo))));
    const auto enabled = [&window](const QString& name, int index) {
        return window.findChild<QAction*>(ControlName(name, index))->isEnabled();
    };
    QString complaint;
    for (int i = 0; i <= 2 && complaint.isEmpty(); ++i)
        complaint = Is(QString("mnuGetInfo(%1)'s being enabled").arg(i), enabled("mnuGetInfo", i),
                       AnalysisNo > 0);
    if (complaint.isEmpty())
        complaint = FirstOf(
            {Is("mnuGetInfo(3)'s being enabled", enabled("mnuGetInfo", 3),
                AnalysisNo > 0 && hasResult),
             !enabled("mnuGetInfo", 4) || hasResult ? QString()
                                                    : QString("mnuGetInfo(4) without a result"),
             Is("mnuFile(7)'s being enabled", enabled("mnuFile", 7), HasAnalysisToSave())});
    for (int i = 9; i <= 11 && complaint.isEmpty(); ++i)
        complaint =
            Is(QString("mnuFile(%1)'s being enabled").arg(i), enabled("mnuFile", i), HasOutput());
    return complaint;
}

QString TheWindowMenuOffersWhatCanBeDone(const frmMain& window) {
    const auto& back = *Part<QAction>(window, "mnuStepBack");
    const auto& options = *Part<QAction>(window, "mnuReopenOptions");
    return FirstOf({Is("the undo entry", back.text(), "&" + ToQt(StepBackName())),
                    Is("its being enabled", back.isEnabled(), CanStepBack()),
                    Is("the options' being enabled", options.isEnabled(), CanReopenOptions()),
                    !options.isEnabled() || (HasList() && !ChoosingOptions)
                        ? QString()
                        : QString("options of what has none")});
}

QString TheStatusBarSaysWhatToDo(const frmMain& window) {
    const QString text = Part<QLabel>(window, "lblStatus")->text();
    if (const std::string note = CurrentReadingNote(); !note.empty())
        return Is("the status bar", text, ToQt(note));
    const QString begin = AnalysisNo == 0    ? "Choose a test or a distribution from the menus to "
                          : ChoosingOptions  ? "Choose the options of the analysis"
                          : NoOfPar == 0     ? "Choose a test or a distribution from the menus for "
                          : IsTableOrGraph() ? "Choose the axes and the values"
                                             : "Type the values";
    return text.startsWith(begin) ? QString() : Is("the status bar", text, begin + "...");
}

QString TheOptionWindowShowsTheOptions(const frmMain& window) {
    const QWidget& options = OptionWindow(window);
    if (!options.isVisible())
        return {};
    QString complaint =
        FirstOf({Is("the tails", IndexOfChecked(options, "optTails", 3), NoOfTails - 1),
                 Is("the samples", IndexOfChecked(options, "optSamples", 3), NoOfSamples - 1),
                 Is("the left tail", Part<QCheckBox>(options, "chkLeftTail")->isChecked(),
                    LeftTail != False)});
    if (complaint.isEmpty() && IsTest == False)
        complaint =
            FirstOf({Is("the procedure", IndexOfChecked(options, "optProcedure", 3), ProcedureNo),
                     Is("the parameter", Part<QListWidget>(options, "lstParList")->currentRow(),
                        ParListNo)});
    for (i16 i = 0; i < 5 && complaint.isEmpty(); ++i) {
        const auto& box = *Part<QCheckBox>(options, ControlName("chkCheck", i));
        complaint = Is(box.objectName() + "'s being hidden", box.isHidden(), i >= NoOfCheck);
        if (i < NoOfCheck && complaint.isEmpty())
            complaint = FirstOf(
                {Is(box.objectName(), box.text(), ToQt(CheckLabel(CheckList(i)))),
                 Is(box.objectName() + "'s tick", box.isChecked(), CheckValue(CheckList(i)) != 0),
                 Is(box.objectName() + "'s being enabled", box.isEnabled(), CheckEnabled(i))});
    }
    for (i16 group = 0; group < NoOfIntPar && complaint.isEmpty(); ++group) {
        const QString array = QString("optIntPar%1").arg(group);
        complaint = Is(array, IndexOfChecked(options, array, 3), IntParValue(IntParList(group)));
    }
    return complaint;
}

// A summary that is open after a calculation speaks of its result.
QString TheSummaryIsOfTheResult(const frmMain& window) {
    const QWidget& summary = *window.Floating(FloatingWindow::Summary);
    if (!summary.isVisible() || !GetInfoEnabled(3))
        return {};
    return Is("the summary", Part<QTextEdit>(summary, "txtSummary")->toPlainText(),
              ToQt(StatementText()));
}

QString TheGridsAreThoseOfTheAnalysis(const frmMain& window) {
    const QWidget& grids = *window.Floating(FloatingWindow::Grid);
    const bool areThere = AnalysisNo > 0 && HasGridData == True;
    const QString enabled = Is("the grids' being enabled",
                               Part<QAction>(window, "mnuShowGrids")->isEnabled(), areThere);
    if (!enabled.isEmpty() || !grids.isVisible())
        return enabled;
    if (!areThere)
        return "grids are shown that no value derives from";
    const auto& tabs = *Part<QTabWidget>(grids, "tabGrids");
    const std::vector<FilledGrid> filled = FilledGrids();
    if (tabs.count() != static_cast<int>(filled.size()))
        return Is("the number of grids", tabs.count(), static_cast<int>(filled.size()));
    for (int i = 0; i < tabs.count(); ++i) {
        const auto* table = tabs.widget(i)->findChild<QTableWidget*>();
        const Array2<std::string>& cells = filled[static_cast<std::size_t>(i)].Cells;
        for (int row = 1; row <= cells.HighBound1(); ++row)
            for (int column = 1; column <= cells.HighBound2(); ++column) {
                const QString wrong =
                    Is(QString("cell %1, %2 of grid %3").arg(row).arg(column).arg(i + 1),
                       table->item(row - 1, column - 1)->text(), ToQt(cells(row, column)));
                if (!wrong.isEmpty())
                    return wrong;
            }
    }
    return {};
}

// Of values that were typed since, there is no design.
QString TheStopsAreThoseOfTheDesign(const frmMain& window) {
    const QWidget& stops = *window.Floating(FloatingWindow::SequentialMonitor);
    if (!stops.isVisible())
        return {};
    const std::vector<DesignRow> rows = DesignRows();
    return Is("the power at the first analysis", Part<QLabel>(stops, "lblPowerEstimate(0)")->text(),
              rows.empty() ? QString() : ToQt(rows.front().Power));
}

struct Invariant {
    const char* Name;
    QString (*Complaint)(const frmMain& window);
};

constexpr Invariant invariants[] = {
    {"no run goes on", NoRunGoesOn},
    {"every open record has its window", EveryOpenRecordHasItsWindow},
    {"the window in front is the current analysis", TheWindowInFrontIsTheCurrentAnalysis},
    {"nothing is left disabled", NothingIsLeftDisabled},
    {"no window is left over", NoWindowIsLeftOver},
    {"options are open while they are chosen", OptionsAreOpenWhileTheyAreChosen},
    {"the roles are three parameters", TheRolesAreThreeParameters},
    {"captions are those of the analyses", CaptionsAreThoseOfTheAnalyses},
    {"calculations show their values", CalculationsShowTheirValues},
    {"the unknown is marked", TheUnknownIsMarked},
    {"tables and graphs show their results", TablesAndGraphsShowTheirResults},
    {"the simulation shows its estimates", TheSimulationShowsItsEstimates},
    {"the hint of an empty table fits", TheHintOfAnEmptyTableFits},
    {"parameters stand beside a table or graph", ParametersStandBesideATableOrGraph},
    {"the axes and the boxes are a permutation", TheAxesAndTheBoxesAreAPermutation},
    {"the parameter window shows the state", TheParameterWindowShowsTheState},
    {"menus are enabled as the state says", MenusAreEnabledAsTheStateSays},
    {"the menu of windows offers what can be done", TheWindowMenuOffersWhatCanBeDone},
    {"the status bar says what to do", TheStatusBarSaysWhatToDo},
    {"the option window shows the options", TheOptionWindowShowsTheOptions},
    {"the summary is of the result", TheSummaryIsOfTheResult},
    {"the grids are those of the analysis", TheGridsAreThoseOfTheAnalysis},
    {"the stops are those of the design", TheStopsAreThoseOfTheDesign},
};

// --- Results ----------------------------------------------------------------------------------

// ParValue as the present texts make it, and as it was when this goes.
class ValuesOfTheTexts {
  public:
    ValuesOfTheTexts() {
        for (i16 i = 0; i <= NoOfPar; ++i)
            ParValue(i) = ReadNumber(ParText(ParKind(i)));
    }
    ~ValuesOfTheTexts() {
        ParValue = former_;
        ClearFloatFaults();
    }
    ValuesOfTheTexts(const ValuesOfTheTexts&) = delete;
    ValuesOfTheTexts& operator=(const ValuesOfTheTexts&) = delete;

  private:
    FixedArray<f64, 0, MaxPar> former_ = ParValue;
};

QString CalculatedAgain() {
    const std::string shown = ParText(ParKind(UnknownParNo));
    if (!HasValue(shown))
        return {};
    const f64 root = SolveUnknown();
    return Is("the result", ToQt(shown), ToQt(FormatPar(ParKind(UnknownParNo), root)));
}

QString PointCalculatedAgain(unsigned point) {
    const int points = TableX.HighBound();
    if (points < 1)
        return "there is none";
    const int k = 1 + static_cast<int>(point % static_cast<unsigned>(points));
    const int j = 1 + static_cast<int>(point / static_cast<unsigned>(points) %
                                       static_cast<unsigned>(ZValues.HighBound()));
    // x as the run walks it: 64 bits, from the 32-bit minimum in 32-bit steps.
    const auto number = [](const std::string& text) {
        return static_cast<f64>(static_cast<f32>(ReadNumber(text)));
    };
    f64 x = number(ParXminText(ParKind(XParNo)));
    for (int i = 1; i < k; ++i)
        x += number(ParXstepText(ParKind(XParNo)));
    ParValue(XParNo) = x;
    if (HasZPar())
        ParValue(ZParNo) = static_cast<f64>(ZValues(j));
    const auto root = static_cast<f32>(SolveUnknown());
    const QString at = QString("at (%1, %2)").arg(k).arg(j);
    if (!HasCellValue(TableY(k, j)) && !HasCellValue(root))
        return {};
    return FirstOf({Is("x " + at, QString::number(TableX(k)), QString::number(x)),
                    Is("y " + at, QString::number(TableY(k, j)), QString::number(root))});
}

} // namespace

QString BrokenInvariant(const frmMain& window) {
    for (const Invariant& invariant : invariants) {
        const QString complaint = invariant.Complaint(window);
        if (!complaint.isEmpty())
            return QString("%1: %2").arg(invariant.Name, complaint);
    }
    return {};
}

QString BrokenShiftModel(const QWidget& dialog) {
    QString complaint =
        FirstOf({Is("the chosen distribution", IndexOfChecked(dialog, "OptDistribution", 10),
                    int{ShiftButton()}),
                 Is("the heading", Part<QLabel>(dialog, "lblH1")->text(), ToQt(ShiftHeading())),
                 Is("the number of curves",
                    static_cast<int>(Part<DistrPicture>(dialog, "picDistr")->Curves().size()),
                    static_cast<int>(ShiftCurves().size()))});
    for (i16 i = 0; i < ShiftFields && complaint.isEmpty(); ++i) {
        const auto& box = *Part<ValueBox>(dialog, ControlName("txtDistrPar", i));
        const QString caption = ToQt(ShiftFieldCaption(i));
        complaint =
            FirstOf({Is("a field's caption",
                        Part<QLabel>(dialog, ControlName("lblDistrPar", i))->text(), caption),
                     Is("a field's being shown", box.isVisible(), !caption.isEmpty()),
                     Is("a field", box.text(), ToQt(ShiftParText(i)))});
    }
    return complaint;
}

QString BrokenResult(unsigned point) {
    if (AnalysisNo == 0 || ChoosingOptions || !HasList() || Calculated == False)
        return {};
    // A calculation shows the result that its file holds, be the file damaged.
    const AnalysisRecord& record = Analysis(AnalysisNo);
    if (CurrentWindowKind() == SimulationWindow)
        return {};
    if (!IsTableOrGraph() && AnalysisFileName != ChildCaption(record.WindowKind, record.WindowNo))
        return {};
    QString complaint;
    try {
        const ValuesOfTheTexts values;
        complaint = IsTableOrGraph() ? PointCalculatedAgain(point) : CalculatedAgain();
    } catch (const RunTimeError& error) {
        complaint = error.what();
    }
    return complaint.isEmpty() ? QString() : "a valid result solves the equation: " + complaint;
}

} // namespace quorvanta
