#include "ui/frmmain.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/floating_windows.h"
#include "core/general.h"
#include "core/help_numbers.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/reading.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/step_back.h"
#include "output/printcopy.h"
#include "ui/darkstyle.h"
#include "ui/elidedlabel.h"
#include "ui/frmabout.h"
#include "ui/frmcalc.h"
#include "ui/frmgraph.h"
#include "ui/frmmonte.h"
#include "ui/frmprogress.h"
#include "ui/frmshowintpar.h"
#include "ui/frmshowpar.h"
#include "ui/frmtable.h"
#include "ui/helpviewer.h"
#include "ui/mdiarea.h"
#include "ui/mnemoniclabel.h"
#include "ui/qttext.h"
#include "ui/statusline.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace quorvanta {

namespace {

constexpr int TwipsPerInch = 1440;

// What the status bar says of an entry, and its key.
struct EntryHint {
    MenuAction Action;
    i16 Index;
    const char* Text;
    QKeySequence::StandardKey Key = QKeySequence::UnknownKey;
};

constexpr EntryHint EntryHints[] = {
    {MenuAction::File, 0, "Opens a window that calculates one value at a time.", QKeySequence::New},
    {MenuAction::File, 1, "Opens a window that tabulates a parameter against two others."},
    {MenuAction::File, 2, "Opens a window that plots a parameter against two others."},
    {MenuAction::File, 3, "Opens a window that simulates a test."},
    {MenuAction::File, 5, "Opens a saved analysis in a new window.", QKeySequence::Open},
    {MenuAction::File, 7, "Saves the analysis of the window in front.", QKeySequence::Save},
    {MenuAction::File, 9, "Prints the result of the window in front.", QKeySequence::Print},
    {MenuAction::File, 10, "Copies the result of the window in front.", QKeySequence::Copy},
    {MenuAction::File, 11, "Saves the result of the window in front as a report."},
    {MenuAction::File, 13, "Closes all windows and ends the program.", QKeySequence::Quit},
    {MenuAction::GetInfo, 0, "Help: what the analysis is for and how it is calculated."},
    {MenuAction::GetInfo, 1, "Help: the parameters of the analysis."},
    {MenuAction::GetInfo, 2, "Help: a worked example."},
    {MenuAction::GetInfo, 3, "The result in plain English."},
    {MenuAction::GetInfo, 4, "The distributions behind the result."},
};

// The entries of the File menu that give out what the window in front shows.
constexpr i16 OutputEntries[] = {FilePrintOutput, FileCopyOutput, FileSaveOutput};

QString EntryName(const MenuItem& item) {
    const QString name = ToQt(item.Name);
    return item.Index < 0 ? name : ControlName(name, item.Index);
}

} // namespace

frmMain::frmMain()
    : area_(new MdiArea(this)), hint_(new ElidedLabel(this)), floating_(*this),
      frmShowPar_(&floating_.Parameters()), frmShowIntPar_(&floating_.InterimParameters()),
      frmProgress_(new frmProgress(this)) {
    setObjectName("frmMain");
    setWindowTitle(ProgramTitle());
    area_->setObjectName("mdiArea");
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(area_);
    connect(area_, &QMdiArea::subWindowActivated, this, &frmMain::ChildToFront);
    for (QDockWidget* beside :
         {static_cast<QDockWidget*>(frmShowPar_), static_cast<QDockWidget*>(frmShowIntPar_)}) {
        addDockWidget(Qt::RightDockWidgetArea, beside);
        beside->hide();
    }
    setContextMenuPolicy(Qt::NoContextMenu); // which would offer to hide frmShowPar
    setAcceptDrops(true);

    setStatusBar(new StatusLine(this));
    hint_->setObjectName("lblStatus");
    hint_->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, 0);
    statusBar()->addWidget(hint_, 1);
    MakeMenus();
    // A shortcut would be deaf while a modal window is open.
    qApp->installEventFilter(this);

    const QSize comfortable(96 * fontMetrics().averageCharWidth() * 2, 48 * fontMetrics().height());
    resize(comfortable.boundedTo(screen()->availableSize() * 9 / 10));
    ShowHint();
}

frmMain::~frmMain() {
    // The child windows go after this object; no one is left to hear of it.
    disconnect(area_, nullptr, this, nullptr);
}

void frmMain::MakeMenus() {
    for (const MenuItem& item : MainMenu()) {
        if (item.Name == "mnuHelpHead")
            MakeWindowMenu();
        QMenu* menu = menuBar()->addMenu(ToQt(item.Caption));
        menu->setObjectName(EntryName(item));
        menu->menuAction()->setObjectName(EntryName(item));
        FillMenu(*menu, item.Children);
    }
    // Their keys work in the window of the statement too, which has no menu.
    for (const i16 index : OutputEntries)
        Floating(FloatingWindow::Summary)->addAction(mnuFile_.at(index));
    mnuOutput_ = new QMenu(this);
    mnuOutput_->setObjectName(EntryName(OutputMenu()));
    FillMenu(*mnuOutput_, OutputMenu().Children);
    mnuOutput_->setAccessibleName(tr("Output"));
    // Qt tells screen readers the entry that opens a menu, but not the menu.
    for (QMenu* menu : findChildren<QMenu*>())
        if (!menu->title().isEmpty())
            menu->setAccessibleName(menu->title().remove('&'));
}

void frmMain::FillMenu(QMenu& menu, std::span<const MenuItem> items) {
    for (const MenuItem& item : items) {
        if (item.Action == MenuAction::Separator) {
            menu.addSeparator();
        } else if (item.Action == MenuAction::Submenu) {
            QMenu* submenu = menu.addMenu(ToQt(item.Caption));
            submenu->setObjectName(EntryName(item));
            submenu->menuAction()->setObjectName(EntryName(item));
            FillMenu(*submenu, item.Children);
        } else {
            menu.addAction(MakeAction(item));
        }
    }
}

QAction* frmMain::MakeAction(const MenuItem& item) {
    auto* action = new QAction(ToQt(item.Caption), this);
    action->setObjectName(EntryName(item));
    for (const EntryHint& hint : EntryHints) {
        if (hint.Action != item.Action || hint.Index != item.Index)
            continue;
        action->setStatusTip(tr(hint.Text));
        if (hint.Key != QKeySequence::UnknownKey)
            action->setShortcut(hint.Key);
    }
    if (item.Action == MenuAction::Test)
        action->setStatusTip(ToQt(TestMenuName(item.MenuNo)));
    if (item.Action == MenuAction::File)
        mnuFile_[item.Index] = action;
    if (item.Action == MenuAction::GetInfo)
        mnuGetInfo_[item.Index] = action;
    if (!IsEntryServed(item)) {
        action->setEnabled(false);
        action->setStatusTip(tr("Not available in this version."));
    }
    connect(action, &QAction::triggered, this, [this, &item] { Choose(item); });
    return action;
}

void frmMain::Choose(const MenuItem& item) {
    // A run of a simulation is asked about by the commands that would end it.
    const bool asks = item.Action == MenuAction::Test || item.Action == MenuAction::Distribution ||
                      item.Action == MenuAction::File;
    if (Calculating != False && !(SimRunning == True && asks))
        return;
    switch (item.Action) {
    case MenuAction::Test:
        return NewTest(item.MenuNo);
    case MenuAction::Distribution:
        return NewDistribution(item.MenuNo);
    case MenuAction::File:
        return mnuFile_Click(item.Index);
    case MenuAction::GetInfo:
        return mnuGetInfo_Click(item.Index);
    case MenuAction::Help:
        return mnuHelp_Click(item.Index);
    case MenuAction::Output:
        return mnuOutputOption_Click(item.Index);
    case MenuAction::Submenu:
    case MenuAction::Separator:
        return;
    }
}

void frmMain::MakeWindowMenu() {
    mnuWindow_ = menuBar()->addMenu(tr("&Window"));
    mnuWindow_->setObjectName("mnuWindowHead");
    connect(mnuWindow_, &QMenu::aboutToShow, this, &frmMain::FillWindowMenu);
    stepBackAction_ = mnuWindow_->addAction(tr("&Undo"), this, &StepBack);
    stepBackAction_->setObjectName("mnuStepBack");
    stepBackAction_->setShortcut(QKeySequence::Undo);
    stepBackAction_->setStatusTip(
        tr("Brings back the analysis as it was before its last step; once more does it again."));
    optionsAction_ = mnuWindow_->addAction(tr("&Options..."), this, &ReopenOptions);
    optionsAction_->setObjectName("mnuReopenOptions");
    optionsAction_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    optionsAction_->setStatusTip(tr("Opens the options of the analysis; its values stay."));
    gridsAction_ = mnuWindow_->addAction(tr("Input &Grids"), this,
                                         [this] { ShowFloating(FloatingWindow::Grid); });
    gridsAction_->setObjectName("mnuShowGrids");
    gridsAction_->setStatusTip(tr("Shows the tables that values of the analysis were derived "
                                  "from."));
    RefreshAnalysisActions();
    mnuWindow_->addSeparator();
    MakeWindowAction(tr("&Cascade"), &QMdiArea::cascadeSubWindows);
    MakeWindowAction(tr("&Tile"), &QMdiArea::tileSubWindows);
    MakeWindowAction(tr("Ne&xt"), &QMdiArea::activateNextSubWindow);
    // The key of child windows, and that of the desktop, which may be the same.
    QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Close);
    const QKeySequence childKey(Qt::CTRL | Qt::Key_F4);
    if (!keys.contains(childKey))
        keys.prepend(childKey);
    MakeWindowAction(tr("C&lose"), &QMdiArea::closeActiveSubWindow)->setShortcuts(keys);
    mnuWindow_->addSeparator();
}

void frmMain::RefreshAnalysisActions() {
    stepBackAction_->setText("&" + ToQt(StepBackName()));
    stepBackAction_->setEnabled(CanStepBack());
    optionsAction_->setEnabled(CanReopenOptions());
    gridsAction_->setEnabled(AnalysisNo > 0 && HasGridData == True);
}

QAction* frmMain::MakeWindowAction(const QString& caption, void (QMdiArea::*slot)()) {
    QAction* action = mnuWindow_->addAction(caption, area_, slot);
    windowActions_.push_back(action);
    return action;
}

void frmMain::FillWindowMenu() {
    for (QAction* action : mnuWindow_->actions()) {
        if (action->isCheckable())
            delete action;
    }
    for (QMdiSubWindow* frame : area_->subWindowList()) {
        // A file's name may hold the mark of an access key.
        QAction* action = mnuWindow_->addAction(frame->windowTitle().replace("&", "&&"));
        action->setCheckable(true);
        action->setChecked(frame == area_->activeSubWindow());
        connect(action, &QAction::triggered, frame,
                [this, frame] { area_->setActiveSubWindow(frame); });
    }
}

void frmMain::mnuFile_Click(i16 index) {
    FileCommand(index);
}

void frmMain::mnuGetInfo_Click(i16 index) {
    switch (index) {
    case 0:
        return OpenHelpOfAnalysis(HelpDescription());
    case 1:
        return OpenHelpOfAnalysis(HelpParameters());
    case 2:
        return OpenHelpOfAnalysis(HelpExample());
    case 3:
        return ShowFloating(FloatingWindow::Summary);
    default:
        return ShowFloating(FloatingWindow::DistrGraph);
    }
}

void frmMain::mnuHelp_Click(i16 index) {
    switch (index) {
    case 0:
        return OpenHelp(HelpContents);
    case 1:
        return OpenHelpSearch();
    default:
        frmAbout(this).exec();
    }
}

void frmMain::mnuOutputOption_Click(i16 index) {
    switch (index) {
    case 1:
        return FileCommand(FileSaveAnalysis);
    case 3:
        return FileCommand(FilePrintOutput);
    case 4:
        return FileCommand(FileCopyOutput);
    default:
        return FileCommand(FileSaveOutput);
    }
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    // The key of the menu bar on most desktops, which Qt leaves to the program.
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier &&
        menuBar()->isEnabled()) {
        menuBar()->setFocus(Qt::MenuBarFocusReason);
        menuBar()->setActiveAction(menuBar()->actions().front());
        return;
    }
    // From a table or graph, the letters of the parameters beside it that no menu has.
    if (!frmShowPar_->isVisible() || !FocusByMnemonic(*frmShowPar_, *event))
        QMainWindow::keyPressEvent(event);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() ||
        !static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents))
        return QMainWindow::eventFilter(watched, event);
    OpenHelpAt(*static_cast<QWidget*>(watched));
    return true;
}

void frmMain::PopUpOutputMenu(const QPoint& at) {
    mnuOutput_->popup(at);
}

void frmMain::RefreshMenus() {
    for (const auto& [index, action] : mnuGetInfo_)
        action->setEnabled(GetInfoEnabled(index));
    mnuFile_.at(FileSaveAnalysis)->setEnabled(HasAnalysisToSave());
    for (const i16 index : OutputEntries)
        mnuFile_.at(index)->setEnabled(HasOutput());
    for (QAction* action : windowActions_)
        action->setEnabled(AnalysisNo > 0);
    RefreshAnalysisActions();
    // What a change has made stale must not be printed beside the new values.
    if (!GetInfoEnabled(3))
        floating_.HideResults();
    // A design that is calculated no longer goes blank.
    if (IsGroupSeq == True && Calculated == False)
        for (const FloatingWindow window :
             {FloatingWindow::SequentialMonitor, FloatingWindow::InterimParameters})
            if (floating_.IsShown(window))
                floating_.Refresh(window);
    if (ChildWindow* child = CurrentChild())
        child->ShowStale();
    ShowHint();
}

void frmMain::ShowHint() {
    if (SimRunning == True)
        hint_->setText(tr("Simulating. Pause halts it, Esc or Exit ends it."));
    else if (Calculating != False)
        hint_->setText(tr("Calculating. Esc or Cancel ends the run."));
    else if (const std::string note = CurrentReadingNote(); !note.empty())
        hint_->setText(ToQt(note));
    else if (AnalysisNo == 0)
        hint_->setText(tr("Choose a test or a distribution from the menus to begin."));
    else if (floating_.IsShown(FloatingWindow::Options))
        hint_->setText(tr("Choose the options of the analysis, then press OK. Esc gives them up."));
    else if (NoOfPar == 0)
        hint_->setText(tr("Choose a test or a distribution from the menus for this window."));
    else if (CurrentWindowKind() == SimulationWindow)
        hint_->setText(tr("Type the values, then press OK. F1 explains the analysis."));
    else if (IsTableOrGraph())
        hint_->setText(tr("Choose the axes and the values, then press OK. F1 explains them."));
    else
        hint_->setText(tr("Type the values, then press the label of the parameter to calculate. "
                          "F1 explains the analysis."));
}

std::vector<ChildWindow*> frmMain::Children() const {
    std::vector<ChildWindow*> children;
    for (const QMdiSubWindow* frame : area_->subWindowList()) {
        if (auto* child = qobject_cast<ChildWindow*>(frame->widget()))
            children.push_back(child);
    }
    return children;
}

ChildWindow* frmMain::Child(i16 windowKind, i16 windowNo) const {
    for (ChildWindow* child : Children()) {
        if (child->WindowKind() == windowKind && child->WindowNo() == windowNo)
            return child;
    }
    return nullptr;
}

ChildWindow* frmMain::CurrentChild() const {
    for (ChildWindow* child : Children()) {
        if (child->AnalysisTag() == AnalysisNo)
            return child;
    }
    return nullptr;
}

ChildWindow* frmMain::MakeChild(i16 windowKind, i16 windowNo, i16 analysisNo) {
    switch (windowKind) {
    case CalculationWindow:
        return new frmCalc(windowNo, analysisNo);
    case TableWindow:
        return new frmTable(windowNo, analysisNo);
    case GraphWindow:
        return new frmGraph(windowNo, analysisNo);
    case SimulationWindow:
        return new frmMonte(windowNo, analysisNo);
    default:
        throw RunTimeError(Fault::InvalidArgument);
    }
}

void frmMain::OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo, const QString& caption) {
    ChildWindow* child = MakeChild(windowKind, windowNo, analysisNo);
    connect(child, &ChildWindow::OutputMenuRequested, this, &frmMain::PopUpOutputMenu);
    connect(child, &ChildWindow::FocusStep, this, &frmMain::StepFocus);
    child->setWindowTitle(caption);
    QMdiSubWindow* frame = area_->addSubWindow(child);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    DarkStyle::Dress(*frame);
    // The menu of windows has the keys; a key that two have does nothing.
    for (QAction* action : frame->systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    child->FitToContent();
    frame->move(CascadePlace(frame->size()));
    frame->show();
    BringToFront(*child);
}

// With the focus: when the main window comes back from a dialog, the child with the focus becomes
// the active one.
void frmMain::BringToFront(ChildWindow& child) {
    area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(child.parentWidget()));
    // The content of a minimized child is hidden and takes no focus; its frame does.
    if (!child.parentWidget()->isAncestorOf(focusWidget()))
        (child.isVisible() ? &child : child.parentWidget())->setFocus();
}

// Where the next child window opens: at the place told, wrapped round so that all of it is seen.
QPoint frmMain::CascadePlace(const QSize& size) const {
    const auto wrap = [](int place, int room) { return room > 0 ? place % (room + 1) : 0; };
    const QSize room = area_->viewport()->size() - size;
    return {wrap(std::max<int>(CascadeLeft, 0) * logicalDpiX() / TwipsPerInch, room.width()),
            wrap(std::max<int>(CascadeTop, 0) * logicalDpiY() / TwipsPerInch, room.height())};
}

void frmMain::RaiseChild(i16 windowKind, i16 windowNo) {
    if (ChildWindow* child = Child(windowKind, windowNo))
        BringToFront(*child);
}

void frmMain::RefreshChild() {
    if (ChildWindow* child = CurrentChild()) {
        child->setWindowTitle(ToQt(AnalysisFileName));
        child->Refresh();
    }
    floating_.RefreshFollowers(GetInfoEnabled(3));
    ShowHint();
}

void frmMain::ChildToFront(QMdiSubWindow* frame) {
    if (frame == nullptr)
        return;
    auto* child = qobject_cast<ChildWindow*>(frame->widget());
    if (child == nullptr)
        return;
    if (SimRunning == True && child->AnalysisTag() != AnalysisNo)
        BringBackSimulation();
    else
        child->Form_Activate();
}

// While a simulation runs no other window can come before it. Not at once: the area is about to
// bring that one to the front.
void frmMain::BringBackSimulation() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (ChildWindow* current = CurrentChild())
                BringToFront(*current);
        },
        Qt::QueuedConnection);
}

QWidget* frmMain::Floating(FloatingWindow window) const {
    return floating_.Widget(window);
}

// While a simulation runs its window alone can be used; the menus ask before they end it.
void frmMain::ShowSimulating(frmMonte& simulation) {
    isSimulating_ = SimRunning == True;
    for (ChildWindow* child : Children())
        child->setEnabled(!isSimulating_ || child == &simulation);
    frmShowIntPar_->SetRunning(isSimulating_);
    floating_.Widget(FloatingWindow::Options)->setEnabled(!isSimulating_);
    simulation.ShowRunning();
    if (!isSimulating_ && frmShowIntPar_->isVisible())
        frmShowIntPar_->setFocus();
    ShowHint();
}

void frmMain::RefreshSimulation() {
    auto* simulation = qobject_cast<frmMonte*>(CurrentChild());
    if (simulation == nullptr)
        return;
    if (isSimulating_ != (SimRunning == True))
        return ShowSimulating(*simulation);
    // Estimates that no eye could follow are not drawn.
    constexpr qint64 milliseconds = 40;
    const bool isFast = isSimulating_ && Paused == False && Cancelled == False;
    if (isFast && sinceEstimates_.isValid() && sinceEstimates_.elapsed() < milliseconds)
        return;
    simulation->ShowEstimates();
    sinceEstimates_.start();
}

void frmMain::RefreshOptions() {
    floating_.Refresh(FloatingWindow::Options);
}

// Beside the current window, so that both are seen, as far as the screen has room.
QPoint frmMain::PlaceBeside(const QSize& size) const {
    QPoint place = area_->mapToGlobal(QPoint(0, 0));
    if (const ChildWindow* child = CurrentChild())
        place = child->parentWidget()->mapToGlobal(
            QPoint(child->parentWidget()->width() + fontMetrics().height(), 0));
    const QRect screenArea = screen()->availableGeometry();
    const QSize room = screenArea.size() - size;
    return {std::clamp(place.x(), screenArea.left(), screenArea.left() + std::max(0, room.width())),
            std::clamp(place.y(), screenArea.top(), screenArea.top() + std::max(0, room.height()))};
}

void frmMain::ShowFloating(FloatingWindow window) {
    QWidget* floating = Floating(window);
    if (floating == nullptr)
        return;
    floating_.Refresh(window);
    if (qobject_cast<QDockWidget*>(floating) != nullptr)
        return ShowBeside(*floating);
    // One result at a time: commands and messages speak of the window in front.
    if (ShowsResult(window))
        floating_.HideResults(window);
    floating->adjustSize();
    floating->move(PlaceBeside(floating->frameSize()));
    floating->show();
    floating->raise();
    floating->activateWindow();
    ShowHint();
}

// A docked window takes its room from the area of the child windows and covers none of them.
void frmMain::ShowBeside(QWidget& docked) {
    docked.show();
    layout()->activate();
    if (ChildWindow* child = CurrentChild())
        child->KeepInside();
    docked.setFocus();
}

void frmMain::HideFloating(FloatingWindow window) {
    QWidget* floating = Floating(window);
    if (floating == nullptr || !floating->isVisible())
        return;
    const KeepFront front(*this);
    floating->hide();
    activateWindow();
}

KeepFront::KeepFront(frmMain& window) : window_(window), quiet_(window.area_) {}

KeepFront::~KeepFront() {
    ChildWindow* child = window_.CurrentChild();
    if (child == nullptr)
        return;
    const QWidget* frame = child->parentWidget();
    const QWidget* focus = window_.focusWidget();
    const bool isFocusBehind = window_.area_->isAncestorOf(focus) && !frame->isAncestorOf(focus);
    if (window_.area_->currentSubWindow() != frame || isFocusBehind)
        window_.BringToFront(*child);
}

void frmMain::StartRun(i32 total) {
    frmShowPar_->StartProgress(total);
    menuBar()->setEnabled(false);
    area_->setEnabled(false);
    statusBar()->clearMessage();
    ShowHint();
}

void frmMain::StepRun() {
    frmShowPar_->StepProgress();
}

void frmMain::EndRun() {
    // An area that is disabled lets go of its window when the main window loses the activation.
    const KeepFront front(*this);
    menuBar()->setEnabled(true);
    area_->setEnabled(true);
    frmShowPar_->EndProgress();
    ShowHint();
}

QSizeF frmMain::PictureInches() const {
    const auto* graph = qobject_cast<frmGraph*>(CurrentChild());
    return graph != nullptr ? graph->PictureInches() : QSizeF(6.6, 4.6);
}

namespace {

QStringList AnalysisFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && url.toLocalFile().endsWith(".dim", Qt::CaseInsensitive))
            paths << url.toLocalFile();
    }
    return paths;
}

// A drop reaches the window even behind a modal one.
bool MayOpenFiles() {
    return Calculating == False && QApplication::activeModalWidget() == nullptr;
}

// As a copy, whatever is proposed: the source of a move would delete its file.
void AcceptCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

void frmMain::OpenFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        if (!MayOpenFiles())
            return;
        dialogs_.Remember(path);
        ReadAnalysisFile(FromQt(path));
    }
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (MayOpenFiles() && !AnalysisFiles(*event->mimeData()).isEmpty())
        AcceptCopy(*event);
}

void frmMain::dropEvent(QDropEvent* event) {
    const QStringList paths = AnalysisFiles(*event->mimeData());
    if (!MayOpenFiles() || paths.isEmpty())
        return;
    AcceptCopy(*event);
    activateWindow();
    // The program that the files come from waits for the end of the drop, and a table may take its
    // time or ask a question.
    QTimer::singleShot(0, this, [this, paths] { OpenFiles(paths); });
}

namespace {

// The controls under a window that the Tab key stops at, in its order.
QList<QWidget*> TabStops(const QWidget& window) {
    QList<QWidget*> stops;
    for (QWidget* control = window.nextInFocusChain(); control != &window;
         control = control->nextInFocusChain()) {
        if (window.isAncestorOf(control) && (control->focusPolicy() & Qt::TabFocus) != 0 &&
            control->focusProxy() == nullptr && control->isVisible() && control->isEnabled())
            stops << control;
    }
    return stops;
}

} // namespace

// The Tab key goes round the child window in front and the parameters beside it. Qt itself would
// not leave a child window, and would step back from any control of a dock window into one.
void frmMain::StepFocus(bool next) {
    QList<QWidget*> stops;
    if (const ChildWindow* child = CurrentChild())
        stops << TabStops(*child);
    stops << TabStops(*frmShowPar_) << TabStops(*frmShowIntPar_);
    if (stops.isEmpty())
        return;
    const qsizetype at = stops.indexOf(focusWidget());
    const qsizetype last = stops.size() - 1;
    if (next)
        stops[at == last ? 0 : at + 1]->setFocus(Qt::TabFocusReason);
    else
        stops[at <= 0 ? last : at - 1]->setFocus(Qt::BacktabFocusReason);
}

bool frmMain::focusNextPrevChild(bool next) {
    StepFocus(next);
    return true;
}

void frmMain::closeEvent(QCloseEvent* event) {
    // All are asked before the first is closed: a Cancel leaves every window as it was.
    for (ChildWindow* child : Children()) {
        if (!child->Form_QueryUnload(CloseWithMain)) {
            event->ignore();
            return;
        }
    }
    for (ChildWindow* child : Children())
        child->Unload();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this)
            window->hide();
    }
    event->accept();
}

} // namespace quorvanta
