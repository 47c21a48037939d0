#include "ui/monkey.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/records.h"
#include "core/values.h"
#include "tour/hands.h"
#include "ui/childwindow.h"
#include "ui/invariants.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QUrl>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>

namespace quorvanta {

namespace {

constexpr QEvent::Type TurnEvent = QEvent::User;
constexpr std::size_t ManyWindows = 8;

// Calls between two looks at the event queue of a run, and what each step of it costs on the clock:
// a run of more than nine points shows its progress.
constexpr int CallsBetweenPumps = 24;
constexpr f64 SecondsPerLook = 0.11;

QString NameOf(const QWidget& widget) {
    const QString own = widget.objectName().isEmpty() ? QString(widget.metaObject()->className())
                                                      : widget.objectName();
    const QWidget* window = widget.window();
    for (const QWidget* above = widget.parentWidget(); above != nullptr;
         above = above->parentWidget()) {
        if (qobject_cast<const ChildWindow*>(above) != nullptr) {
            window = above;
            break;
        }
    }
    return window == &widget ? own : own + " of " + window->objectName();
}

// The leaves of a menu of that action.
void CollectEntries(std::span<const MenuItem> items, MenuAction action,
                    std::vector<const MenuItem*>& found) {
    for (const MenuItem& item : items) {
        if (item.Action == action)
            found.push_back(&item);
        CollectEntries(item.Children, action, found);
    }
}

QString EntryName(const MenuItem& item) {
    return item.Index < 0 ? ToQt(item.Name) : ControlName(ToQt(item.Name), item.Index);
}

// The entries behind which there is an analysis.
QStringList ServedEntries(MenuAction action) {
    std::vector<const MenuItem*> entries;
    CollectEntries(MainMenu(), action, entries);
    QStringList names;
    for (const MenuItem* entry : entries) {
        AnalysisKey key;
        key.IsTest = ToFlag(action == MenuAction::Test);
        key.TestNo = entry->TestNo;
        key.DistrNo = entry->MenuNo;
        if (HasEquation(key))
            names << EntryName(*entry);
    }
    return names;
}

bool IsInteractive(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
           qobject_cast<const QScrollBar*>(&widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QMdiSubWindow*>(&widget) != nullptr ||
           qobject_cast<const QLabel*>(&widget) != nullptr || widget.objectName().startsWith("Pic");
}

bool IsReachable(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && !widget.visibleRegion().isEmpty();
}

template <class Widget>
std::vector<Widget*> Reachable(const QWidget& window) {
    std::vector<Widget*> found;
    for (Widget* widget : window.findChildren<Widget*>()) {
        if (widget->window() == &window && IsReachable(*widget))
            found.push_back(widget);
    }
    return found;
}

QWidget* ActiveWindow() {
    QWidget* active = QApplication::activeWindow();
    return active != nullptr && active->isVisible() ? active : nullptr;
}

// A number beyond all reason may overflow, which the program then says.
bool HoldsAbsurdNumber() {
    const auto isAbsurd = [](const std::string& text) {
        constexpr std::ptrdiff_t most = 16;
        constexpr f64 noCount = 2147483648.0; // the first that no 32-bit integer counts to
        return std::fabs(std::strtod(text.c_str(), nullptr)) >= noCount ||
               std::ranges::count_if(text, [](char c) { return c >= '0' && c <= '9'; }) > most;
    };
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const i16 kind = ParKind(i);
        for (const auto* texts :
             {&ParText, &ParXminText, &ParXmaxText, &ParXstepText, &ParZValuesText}) {
            if (isAbsurd((*texts)(kind)))
                return true;
        }
    }
    return false;
}

// What a window shows of a record: without the choices, kept by kind, that its test does not have,
// and without what lies beyond its list.
AnalysisRecord ShownOf(i16 analysisNo) {
    AnalysisRecord record = Analysis(analysisNo);
    record.IntParValue.Fill(0);
    record.CheckValue.Fill(0);
    for (int i = record.NoOfPar + 1; i <= MaxPar; ++i)
        record.ParKind(i) = 0;
    for (i16 i = 0; i < record.NoOfIntPar; ++i)
        record.IntParValue(record.IntParList(i)) =
            Analysis(analysisNo).IntParValue(record.IntParList(i));
    for (i16 i = 0; i < record.NoOfCheck; ++i)
        record.CheckValue(record.CheckList(i)) =
            Analysis(analysisNo).CheckValue(record.CheckList(i));
    for (int i = record.NoOfCheck; i <= 4; ++i)
        record.CheckList(i) = 0;
    return record;
}

std::vector<f32> CellsOf(i16 analysisNo) {
    const auto cells = AnalysisState(analysisNo).TableY.Raw();
    return {cells.begin(), cells.end()};
}

// For the message of a failure.
std::string CurrentAnalysisInWords() {
    std::string words = "  " + AnalysisFileName + ": " + ParListName + "\n";
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const i16 kind = ParKind(i);
        words += "  " + StripAmpersand(ParLabel(kind)) + " = " + ParText(kind);
        if (i == UnknownParNo)
            words += ", the unknown";
        if (IsTableOrGraph() && i == XParNo)
            words += ", x: " + ParXminText(kind) + " to " + ParXmaxText(kind) + " by " +
                     ParXstepText(kind);
        if (IsTableOrGraph() && i == ZParNo)
            words += ", z: " + ParZValuesText(kind);
        words += "\n";
    }
    return words;
}

// The display in memory says of each window what it can't do with it.
void TellWarnings(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text) {
    if (!text.startsWith("This plugin does not support"))
        std::cerr << qPrintable(text) << std::endl;
}

class Deeper {
  public:
    explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
    ~Deeper() { --depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

  private:
    int& depth_;
};

} // namespace

// --- The platform -----------------------------------------------------------------------------

SteadyPlatform::SteadyPlatform(frmMain& window, std::function<void()> user)
    : QtPlatform(window), user_(std::move(user)) {}

f64 SteadyPlatform::Timer() {
    now_ += SecondsPerLook;
    return now_;
}

void SteadyPlatform::DoEvents() {
    if (++calls_ % CallsBetweenPumps != 0)
        return;
    QCoreApplication::processEvents();
    user_();
}

// --- The walk ---------------------------------------------------------------------------------

Monkey::Monkey(unsigned seed)
    : seed_(seed), random_(seed), formerHome_(qEnvironmentVariable("HOME")),
      formerHandler_(qInstallMessageHandler(TellWarnings)),
      watchdog_("Seed " + std::to_string(seed)) {
    // Whatever is saved without a folder of its own lands here.
    qputenv("HOME", QByteArray::fromStdString(home_.Path("")));
    QDir().mkpath(ToQt(home_.Path("Documents")));
    QDir().mkpath(ToQt(folder_.Path("inner")));
    const QDir corpus(CORPUS_DIR);
    for (const QString& name : corpus.entryList({"*.dim"}, QDir::Files, QDir::Name))
        QFile::copy(corpus.filePath(name), ToQt(folder_.Path(FromQt(name))));
    folder_.Write("zeros.dim", std::string(6350, '\0'));
    folder_.Write("empty.dim", "");
    folder_.Write("text.dim", "This is no analysis.");
    QApplication::clipboard()->clear();
    otherProgram_.setObjectName("another program");
    Start();
}

Monkey::~Monkey() {
    program_.reset();
    qputenv("HOME", formerHome_.toUtf8());
    qInstallMessageHandler(formerHandler_);
}

void Monkey::Start() {
    program_.reset();
    platform_.reset();
    QApplication::closeAllWindows(); // the help outlives the program
    program_ = std::make_unique<Program>();
    platform_ = std::make_unique<SteadyPlatform>(program_->Window(), [this] { TakeTurnInARun(); });
    if (servedTests_.isEmpty()) {
        servedTests_ = ServedEntries(MenuAction::Test);
        servedDistributions_ = ServedEntries(MenuAction::Distribution);
        Main();
    }
    program_->Window().resize(1200, 780);
    program_->Window().show();
    hands::Settle();
}

std::string Monkey::Walk(int steps) {
    wanted_ = steps_ + steps;
    // A turn comes whenever the event loop has nothing else to do: that of the walk, or one inside,
    // of a dialog that was opened by the turn before.
    const auto idle =
        QObject::connect(QAbstractEventDispatcher::instance(),
                         &QAbstractEventDispatcher::aboutToBlock, this, [this] { AskForTurn(); });
    loop_.exec();
    QObject::disconnect(idle);
    return failure_;
}

void Monkey::AskForTurn() {
    if (isAsked_)
        return;
    isAsked_ = true;
    QCoreApplication::postEvent(this, new QEvent(TurnEvent), Qt::LowEventPriority);
}

bool Monkey::event(QEvent* event) {
    if (event->type() != TurnEvent)
        return QObject::event(event);
    isAsked_ = false;
    TakeTurn();
    return true;
}

void Monkey::TakeTurn() {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* modal = QApplication::activeModalWidget();
    const bool isAlone = popup == nullptr && modal == nullptr;
    if (depth_ > 0 && isAlone)
        return; // the dialog has just gone, and the turn that opened it goes on
    const bool isOver = steps_ >= wanted_ || !failure_.empty();
    if (isOver && isAlone) {
        loop_.quit();
        return;
    }
    {
        const Deeper inside(depth_);
        ++steps_;
        pumps_ = 0;
        watchdog_.Begin(std::to_string(steps_) +
                        std::string(static_cast<std::size_t>(depth_), ' '));
        if (isOver)
            GiveUp(popup != nullptr ? *popup : *modal);
        else if (popup != nullptr)
            ActOnPopup(*popup);
        else if (modal != nullptr)
            ActOnModal(*modal);
        else
            ActOnWindows();
        if (depth_ == 1)
            hands::Settle();
    }
    if (depth_ == 0)
        Judge();
}

// The user has a turn in the middle of a run, as an event that the run lets through.
void Monkey::TakeTurnInARun() {
    constexpr int longestPatience = 300;
    watchdog_.GoOn();
    if (pumps_++ == 0) {
        isPatient_ = OneIn(3);
        runsIn_ = AnalysisNo;
    }
    if (isPatient_ && pumps_ < longestPatience)
        return;
    const Deeper inside(depth_);
    ++steps_;
    watchdog_.Begin(std::to_string(steps_) + std::string(static_cast<std::size_t>(depth_), ' ') +
                    "in a run");
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* modal = QApplication::activeModalWidget();
    if (popup != nullptr)
        ActOnPopup(*popup);
    else if (modal != nullptr)
        ActOnModal(*modal);
    else if (steps_ >= wanted_ || !failure_.empty())
        CancelRun();
    else
        ActDuringRun();
    if (Calculating != True)
        Fail("Calculating is reset in the middle of a run");
    if (AnalysisNo != runsIn_)
        Fail("another analysis became current in the middle of a run");
}

void Monkey::Judge() {
    if (!failure_.empty())
        return;
    if (!Window().isVisible()) {
        if (AnalysisNo != 0)
            Fail("the program has ended and an analysis is open");
        return Start();
    }
    QString broken = BrokenInvariant(Window());
    if (broken.isEmpty() && OneIn(6))
        broken = BrokenResult(Below(100000));
    if (!broken.isEmpty())
        Fail(FromQt(broken));
}

void Monkey::Fail(const std::string& what) {
    if (failure_.empty())
        failure_ = "Seed " + std::to_string(seed_) + ", step " + std::to_string(steps_) + ": " +
                   what + "\nThe last steps:\n" + watchdog_.Trail() + "The analysis:\n" +
                   CurrentAnalysisInWords();
}

void Monkey::Note(const QString& what) {
    hasDone_ = true;
    watchdog_.Add(FromQt(what));
    if (isTold_)
        std::cerr << steps_ << ' ' << qPrintable(what) << '\n';
    signature_ = signature_ * 31 + std::hash<std::string>()(FromQt(what));
}

// --- Chance -----------------------------------------------------------------------------------

unsigned Monkey::Below(std::size_t count) {
    return static_cast<unsigned>(random_() % count);
}

void Monkey::OneOfThese(std::initializer_list<Choice> choices) {
    int sum = 0;
    for (const Choice& choice : choices)
        sum += choice.Weight;
    int left = static_cast<int>(Below(static_cast<std::size_t>(sum)));
    for (const Choice& choice : choices) {
        if (left < choice.Weight)
            return (this->*choice.Do)();
        left -= choice.Weight;
    }
}

QString Monkey::SomeNumber() {
    static const QStringList usual = {"0.05", "0.01", "0.1",  "0.8", "0.9", "0.95", "0.5", "0.3",
                                      "0.2",  "1",    "2",    "3",   "5",   "10",   "20",  "50",
                                      "64",   "100",  "1000", "-1",  "0",   "0,25", "1.5", "-0.3"};
    static const QStringList odd = {"",           " ",
                                    "-",          "99999",
                                    "-99999",     "99999999",
                                    "1.2.3",      "--5",
                                    "0.0000001",  "0.99999",
                                    "1000000",    "0.999999999",
                                    "3 4 5",      "0.1 0.2 0.4",
                                    "2147483648", "32768",
                                    "-0",         "100000000000000000000",
                                    ".",          ","};
    return OneIn(4) ? OneOf(odd) : OneOf(usual);
}

QString Monkey::SomeText() {
    static const QStringList texts = {"1e5",          "abc",
                                      "<b>&amp;</b>", QString::fromUtf8("Größe µ ≥ 3 – 日本"),
                                      "&Power",       "Auto",
                                      "  12",         "0x1F",
                                      "%1 %n",        QString(400, '9'),
                                      "\t",           "Arial",
                                      "-1.5",         "1 2 3 ",
                                      "nan",          "\"quoted\"",
                                      "12.",          "7"};
    return OneIn(3) ? SomeNumber() : OneOf(texts);
}

// A file of the folder, of any kind, or none.
QString Monkey::SomeFile() {
    const std::vector<std::string> names = folder_.Names();
    if (OneIn(3)) {
        // Damaged as a disk or a transfer may do it.
        const std::string& name = OneOf(names);
        QFile whole(ToQt(folder_.Path(name)));
        if (name.ends_with(".dim") && whole.open(QFile::ReadOnly)) {
            QByteArray bytes = whole.readAll();
            for (unsigned i = 1 + Below(6); i > 0 && !bytes.isEmpty(); --i)
                bytes[static_cast<qsizetype>(Below(static_cast<std::size_t>(bytes.size())))] =
                    static_cast<char>(Below(256));
            if (OneIn(4))
                bytes.truncate(static_cast<qsizetype>(Below(6350)));
            const std::string damaged = "damaged" + std::to_string(Below(4)) + ".dim";
            folder_.Write(damaged, bytes.toStdString());
            return ToQt(folder_.Path(damaged));
        }
    }
    if (OneIn(6)) {
        static const QStringList others = {"missing.dim",
                                           "missing/folder.dim",
                                           "",
                                           "new1",
                                           "new2.dim",
                                           "new3.rtf",
                                           "new4.bmp",
                                           "inner",
                                           QString::fromUtf8("Größe 日本.dim"),
                                           QString(300, 'x')};
        return ToQt(folder_.Path(FromQt(OneOf(others))));
    }
    return ToQt(folder_.Path(OneOf(names)));
}

QPoint Monkey::SomePoint(const QWidget& widget) {
    const QRect seen = widget.visibleRegion().boundingRect();
    if (OneIn(2))
        return seen.center();
    return seen.topLeft() +
           QPoint(static_cast<int>(Below(static_cast<std::size_t>(seen.width()))),
                  static_cast<int>(Below(static_cast<std::size_t>(seen.height()))));
}

// --- Hands ------------------------------------------------------------------------------------

std::vector<ChildWindow*> Monkey::Children() {
    std::vector<ChildWindow*> children;
    for (QMdiSubWindow* frame : Area().subWindowList()) {
        if (auto* child = qobject_cast<ChildWindow*>(frame->widget()))
            children.push_back(child);
    }
    return children;
}

QMdiArea& Monkey::Area() {
    return *Window().findChild<QMdiArea*>("mdiArea");
}

QMdiSubWindow* Monkey::SomeFrame() {
    const QList<QMdiSubWindow*> frames = Area().subWindowList();
    return frames.isEmpty() ? nullptr : OneOf(frames);
}

// The window of the help is not worked in: it fills its lists from other threads, in their time.
QWidget& Monkey::SomeWindow() {
    std::vector<QWidget*> windows;
    for (const auto floating : {FloatingWindow::Options, FloatingWindow::Summary,
                                FloatingWindow::DistrGraph, FloatingWindow::Output}) {
        if (Window().Floating(floating)->isVisible())
            windows.push_back(Window().Floating(floating));
    }
    if (windows.empty() || OneIn(2))
        return Window();
    return *OneOf(windows);
}

QWidget* Monkey::SomeControl(const QWidget& window) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : Reachable<QWidget>(window)) {
        if (IsInteractive(*widget))
            controls.push_back(widget);
    }
    return controls.empty() ? nullptr : OneOf(controls);
}

void Monkey::Activate(QWidget& window) {
    if (QApplication::activeWindow() == &window)
        return;
    window.activateWindow();
    QCoreApplication::processEvents();
}

void Monkey::ClickAt(QWidget& widget, QPoint at, Qt::MouseButton button, bool twice) {
    QWidget* window = widget.window();
    if (window->isMinimized())
        return;
    const QPoint place = widget.mapTo(window, at);
    Note((button == Qt::LeftButton ? (twice ? "double click " : "click ") : "right click ") +
         NameOf(widget) + QString(" at %1, %2").arg(at.x()).arg(at.y()));
    const QPointer<QWindow> handle = window->windowHandle();
    if (QApplication::activePopupWidget() == nullptr)
        Activate(*window);
    if (handle == nullptr || !handle->isVisible())
        return;
    if (twice)
        QTest::mouseDClick(handle, button, {}, place);
    else
        QTest::mouseClick(handle, button, {}, place);
}

void Monkey::Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    Note("press " + QKeySequence(QKeyCombination(modifiers, key)).toString() + " in " +
         NameOf(window));
    if (window.windowHandle() != nullptr)
        QTest::keyClick(window.windowHandle(), key, modifiers);
}

void Monkey::Type(QWidget& window, const QString& text) {
    Note("type \"" + (text.size() > 40 ? text.left(40) + "..." : text) + '"');
    const QPointer<QWindow> handle = window.windowHandle();
    for (const QChar character : text) {
        if (handle == nullptr || !handle->isVisible())
            return;
        const ushort code = character.toUpper().unicode();
        QTest::sendKeyEvent(QTest::Click, handle, code < 128 ? Qt::Key(code) : Qt::Key_unknown,
                            QString(character), Qt::NoModifier);
    }
}

// From the event loop, as a click does it.
void Monkey::Trigger(const QString& entry) {
    auto* action = Window().findChild<QAction*>(entry);
    if (action == nullptr || !action->isEnabled() || !Window().menuBar()->isEnabled())
        return;
    Note("choose " + entry);
    Activate(Window());
    QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
}

// --- Windows without a question ---------------------------------------------------------------

void Monkey::ActOnWindows() {
    if (Window().isMinimized())
        return RestoreMainWindow();
    if (Children().empty() && OneIn(2))
        return OpenWindow();
    if (ChoosingOptions && OneIn(4))
        return PressOk();
    for (hasDone_ = false; !hasDone_;)
        OneOfThese({
            {10, &Monkey::ChooseTest},
            {4, &Monkey::ChooseDistribution},
            {4, &Monkey::ChooseAnyEntry},
            {6, &Monkey::ClickMenuBar},
            {5, &Monkey::OpenWindow},
            {5, &Monkey::UseFiles},
            {5, &Monkey::StepBackOrForth},
            {3, &Monkey::StepBackAndForth},
            {4, &Monkey::ChooseOptionsAgain},
            {4, &Monkey::OutputSomething},
            {1, &Monkey::Exit},
            {26, &Monkey::ClickSomewhere},
            {4, &Monkey::RightClickSomewhere},
            {4, &Monkey::DoubleClickSomewhere},
            {14, &Monkey::PressLabel},
            {8, &Monkey::OpenGrids},
            {14, &Monkey::PressOk},
            {6, &Monkey::TypeSomewhere},
            {16, &Monkey::TypeNumber},
            {10, &Monkey::PressSomeKey},
            {5, &Monkey::PressAccelerator},
            {3, &Monkey::TurnWheel},
            {6, &Monkey::ChooseInList},
            {4, &Monkey::CloseSomeChild},
            {10, &Monkey::ActivateSomeChild},
            {5, &Monkey::ArrangeSomeChild},
            {2, &Monkey::ArrangeMainWindow},
            {2, &Monkey::DropSomeFile},
            {3, &Monkey::CloseSomeFloating},
            {1, &Monkey::CopyElsewhere},
        });
}

void Monkey::ChooseTest() {
    Trigger(OneOf(servedTests_));
}

void Monkey::ChooseDistribution() {
    Trigger(OneOf(servedDistributions_));
}

void Monkey::ChooseAnyEntry() {
    QStringList names;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        const QString name = action->objectName();
        if (name.startsWith("mnu") && action->menu() == nullptr && action->isEnabled() &&
            !name.startsWith("mnuOutput") && name != "mnuFile(13)")
            names << name;
    }
    Trigger(OneOf(names));
}

void Monkey::ClickMenuBar() {
    QMenuBar& bar = *Window().menuBar();
    const QRect place = bar.actionGeometry(OneOf(bar.actions()));
    if (bar.rect().contains(place.center()))
        ClickAt(bar, place.center(), Qt::LeftButton);
}

void Monkey::OpenWindow() {
    if (Children().size() >= ManyWindows)
        return CloseSomeChild();
    Trigger(ControlName("mnuFile", static_cast<int>(Below(4))));
}

void Monkey::UseFiles() {
    if (Children().size() >= ManyWindows)
        return CloseSomeChild();
    Trigger(ControlName("mnuFile", OneIn(2) ? FileOpenAnalysis : FileSaveAnalysis));
}

void Monkey::StepBackOrForth() {
    Trigger("mnuStepBack");
}

void Monkey::ChooseOptionsAgain() {
    Trigger("mnuReopenOptions");
}

// A step that is undone and done again leaves everything as it was.
void Monkey::StepBackAndForth() {
    auto* entry = Window().findChild<QAction*>("mnuStepBack");
    if (!entry->isEnabled())
        return;
    Note("undo and redo");
    StoreAnalysis();
    const AnalysisRecord before = ShownOf(AnalysisNo);
    const std::vector<f32> cells = CellsOf(AnalysisNo);
    const i16 calculated = Calculated;
    const i16 place = AnalysisNo;
    entry->trigger();
    entry->trigger();
    StoreAnalysis();
    if (AnalysisNo != place || ShownOf(place) != before || CellsOf(place) != cells)
        Fail("a step that was undone and done again has changed the analysis");
    // A calculation without a value is asked for again when it comes back.
    else if (Calculated != calculated && HasValue(ParText(ParKind(UnknownParNo))))
        Fail("a step that was undone and done again has changed the state of the result");
}

void Monkey::OutputSomething() {
    static const std::vector<QString> entries = {
        ControlName("mnuFile", FilePrintOutput), ControlName("mnuFile", FileCopyOutput),
        ControlName("mnuFile", FileSaveOutput), ControlName("mnuGetInfo", 3),
        ControlName("mnuGetInfo", 3)};
    Trigger(OneOf(entries));
}

void Monkey::Exit() {
    if (OneIn(2))
        return Trigger(ControlName("mnuFile", FileExit));
    Note("close the main window");
    Window().close();
}

void Monkey::ClickSomewhere() {
    if (QWidget* control = SomeControl(SomeWindow()))
        ClickAt(*control, SomePoint(*control), Qt::LeftButton);
}

void Monkey::RightClickSomewhere() {
    if (QWidget* control = SomeControl(SomeWindow()))
        ClickAt(*control, SomePoint(*control), Qt::RightButton);
}

void Monkey::DoubleClickSomewhere() {
    if (QWidget* control = SomeControl(SomeWindow()))
        ClickAt(*control, SomePoint(*control), Qt::LeftButton, true);
}

void Monkey::OpenGrids() {
    std::vector<ValueBox*> blue;
    for (ValueBox* box : Reachable<ValueBox>(Window()))
        if (box->findChild<QAction*>("actTables")->isVisible())
            blue.push_back(box);
    if (blue.empty())
        return PressLabel();
    ValueBox& box = *OneOf(blue);
    ClickAt(box, box.rect().center(), Qt::LeftButton);
    if (box.hasFocus())
        Press(*box.window(), Qt::Key_F2);
}

// Mostly figures that may do for the whole grid, so that some sequences come to their end.
void Monkey::FillGrid(QWidget& grid) {
    static const QStringList fillings = {"0.5", "1", "0.25", "0.1", "-1", "3", "0"};
    QWidget& box = *grid.findChild<QWidget*>("txtText");
    switch (Below(5)) {
    case 0: {
        QString block;
        const QString figure = OneOf(fillings);
        for (int row = 0; row < 10; ++row) {
            for (int column = 0; column < 10; ++column)
                block += (OneIn(3) ? OneOf(fillings) : figure) + (column < 9 ? "\t" : "\n");
        }
        QApplication::clipboard()->setText(block);
        box.setFocus();
        return Press(grid, Qt::Key_V, Qt::ControlModifier);
    }
    case 1: {
        constexpr Qt::Key keys[] = {Qt::Key_Return, Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Up,
                                    Qt::Key_Down,   Qt::Key_Left, Qt::Key_Right,   Qt::Key_F1};
        box.setFocus();
        return Press(grid, keys[Below(std::size(keys))]);
    }
    case 2:
        return TypeInto(box, OneIn(3) ? SomeText() : SomeNumber());
    default:
        auto& button = *grid.findChild<QWidget*>(OneIn(10) ? "cmdCancel" : "cmdOK");
        return ClickAt(button, button.rect().center(), Qt::LeftButton);
    }
}

// Mostly what may do for a distribution; the dialog always shows the selection as it stands.
void Monkey::FillShiftModel(QWidget& dialog) {
    if (const QString complaint = BrokenShiftModel(dialog); !complaint.isEmpty())
        return Fail(FromQt(complaint));
    switch (Below(5)) {
    case 0:
    case 1: {
        const auto buttons = Reachable<QRadioButton>(dialog);
        QRadioButton& button = *OneOf(buttons);
        return ClickAt(button, QPoint(button.height() / 2, button.height() / 2), Qt::LeftButton);
    }
    case 2:
        if (QWidget* field = SomeField(dialog))
            return TypeInto(*field, OneIn(3) ? SomeText() : SomeNumber());
        [[fallthrough]];
    default:
        auto& button = *dialog.findChild<QWidget*>(OneIn(10) ? "cmdCancel" : "cmdOK");
        return ClickAt(button, button.rect().center(), Qt::LeftButton);
    }
}

void Monkey::PressLabel() {
    std::vector<QPushButton*> labels;
    for (QPushButton* button : Reachable<QPushButton>(Window())) {
        if (button->objectName().startsWith("cmdParLabel"))
            labels.push_back(button);
    }
    if (labels.empty())
        return PressOk();
    QPushButton& label = *OneOf(labels);
    ClickAt(label, label.visibleRegion().boundingRect().center(), Qt::LeftButton);
}

void Monkey::PressOk() {
    for (const auto floating :
         {FloatingWindow::Options, FloatingWindow::Parameters, FloatingWindow::InterimParameters}) {
        QWidget* button = Window().Floating(floating)->findChild<QWidget*>("cmdOK");
        if (IsReachable(*button))
            return ClickAt(*button, button->rect().center(), Qt::LeftButton);
    }
    ClickSomewhere();
}

void Monkey::TypeInto(QWidget& field, const QString& text) {
    QWidget& window = *field.window();
    if (window.isMinimized())
        return;
    const QPointer<QWidget> stays = &window;
    ClickAt(field, field.visibleRegion().boundingRect().center(), Qt::LeftButton);
    if (stays != nullptr && !OneIn(4))
        Press(window, Qt::Key_A, Qt::ControlModifier);
    if (stays != nullptr && text.isEmpty())
        Press(window, Qt::Key_Delete);
    else if (stays != nullptr)
        Type(window, text);
}

void Monkey::TypeSomewhere() {
    if (QWidget* field = SomeField(SomeWindow()))
        TypeInto(*field, SomeText());
}

void Monkey::TypeNumber() {
    if (QWidget* field = SomeField(Window()))
        TypeInto(*field, SomeNumber());
}

QWidget* Monkey::SomeField(const QWidget& window) {
    std::vector<QWidget*> fields;
    for (QWidget* widget : Reachable<QWidget>(window)) {
        if (qobject_cast<QLineEdit*>(widget) != nullptr ||
            qobject_cast<QPlainTextEdit*>(widget) != nullptr)
            fields.push_back(widget);
    }
    return fields.empty() ? nullptr : OneOf(fields);
}

void Monkey::PressSomeKey() {
    static const std::vector<QKeyCombination> keys = {Qt::Key_Tab,
                                                      Qt::Key_Tab,
                                                      Qt::Key_Backtab,
                                                      Qt::Key_Return,
                                                      Qt::Key_Return,
                                                      Qt::Key_Enter,
                                                      Qt::Key_Escape,
                                                      Qt::Key_Space,
                                                      Qt::Key_Up,
                                                      Qt::Key_Down,
                                                      Qt::Key_Left,
                                                      Qt::Key_Right,
                                                      Qt::Key_Home,
                                                      Qt::Key_End,
                                                      Qt::Key_PageUp,
                                                      Qt::Key_PageDown,
                                                      Qt::Key_Delete,
                                                      Qt::Key_F1,
                                                      Qt::Key_Backspace,
                                                      Qt::Key_F10,
                                                      Qt::CTRL | Qt::Key_Z,
                                                      Qt::CTRL | Qt::Key_Z,
                                                      Qt::CTRL | Qt::Key_Y,
                                                      Qt::CTRL | Qt::Key_C,
                                                      Qt::CTRL | Qt::Key_V,
                                                      Qt::CTRL | Qt::Key_V,
                                                      Qt::CTRL | Qt::Key_X,
                                                      Qt::CTRL | Qt::Key_A,
                                                      Qt::CTRL | Qt::Key_N,
                                                      Qt::CTRL | Qt::Key_S,
                                                      Qt::CTRL | Qt::Key_P,
                                                      Qt::CTRL | Qt::Key_O,
                                                      Qt::CTRL | Qt::SHIFT | Qt::Key_O,
                                                      Qt::CTRL | Qt::Key_F4,
                                                      Qt::CTRL | Qt::Key_W,
                                                      Qt::CTRL | Qt::Key_Tab,
                                                      Qt::CTRL | Qt::SHIFT | Qt::Key_Tab,
                                                      Qt::CTRL | Qt::Key_F6,
                                                      Qt::SHIFT | Qt::Key_F10,
                                                      Qt::Key_Menu,
                                                      Qt::ALT | Qt::Key_F4,
                                                      Qt::CTRL | Qt::Key_5,
                                                      Qt::CTRL | Qt::Key_D};
    QWidget* window = ActiveWindow();
    if (window == nullptr || window->objectName() == "frmHelp")
        window = &Window();
    const QKeyCombination key = OneOf(keys);
    Press(*window, key.key(), key.keyboardModifiers());
}

void Monkey::PressAccelerator() {
    QWidget* window = ActiveWindow();
    if (window == nullptr || window->objectName() == "frmHelp")
        window = &Window();
    static const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    Press(*window, Qt::Key(letters[static_cast<qsizetype>(Below(36))].unicode()), Qt::AltModifier);
}

void Monkey::TurnWheel() {
    QWidget* control = SomeControl(SomeWindow());
    if (control == nullptr)
        return;
    const QPoint at = SomePoint(*control);
    const QPoint turn(0, OneIn(2) ? 120 : -120);
    Note("wheel over " + NameOf(*control));
    QWheelEvent event(at, control->mapToGlobal(at), QPoint(), turn, Qt::NoButton,
                      OneIn(3) ? Qt::ShiftModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(control, &event);
}

void Monkey::ChooseInList() {
    std::vector<QComboBox*> lists = Reachable<QComboBox>(Window());
    if (lists.empty())
        return ClickSomewhere();
    QComboBox& list = *OneOf(lists);
    ClickAt(list, list.rect().center(), Qt::LeftButton);
}

void Monkey::CloseSomeChild() {
    QMdiSubWindow* frame = SomeFrame();
    if (frame == nullptr)
        return;
    Note("close " + frame->windowTitle());
    frame->close();
}

void Monkey::ActivateSomeChild() {
    QMdiSubWindow* frame = SomeFrame();
    if (frame == nullptr)
        return;
    if (OneIn(2) && IsReachable(*frame) && frame->widget() != nullptr && !frame->isMinimized())
        return ClickAt(*frame, frame->visibleRegion().boundingRect().center(), Qt::LeftButton);
    Note("activate " + frame->windowTitle());
    Area().setActiveSubWindow(frame);
}

void Monkey::ArrangeSomeChild() {
    QMdiSubWindow* frame = SomeFrame();
    if (frame == nullptr)
        return;
    const QString title = frame->windowTitle();
    switch (Below(7)) {
    case 0:
        Note("maximize " + title);
        return frame->showMaximized();
    case 1:
        Note("minimize " + title);
        return frame->showMinimized();
    case 2:
    case 3:
        Note("restore " + title);
        return frame->showNormal();
    case 4:
        Note("cascade");
        return Area().cascadeSubWindows();
    case 5:
        Note("move " + title);
        return frame->move(static_cast<int>(Below(900)) - 100, static_cast<int>(Below(700)) - 30);
    default:
        Note("resize " + title);
        return frame->resize(static_cast<int>(Below(1200)), static_cast<int>(Below(800)));
    }
}

void Monkey::ArrangeMainWindow() {
    switch (Below(6)) {
    case 0:
        Note("minimize the main window");
        // Another program's window comes to the front then.
        otherProgram_.show();
        otherProgram_.activateWindow();
        QCoreApplication::processEvents();
        return Window().showMinimized();
    case 1:
        Note("maximize the main window");
        Window().showMaximized();
        otherProgram_.hide();
        return Window().activateWindow();
    case 2:
        return RestoreMainWindow();
    default:
        return ResizeMainWindow();
    }
}

void Monkey::ResizeMainWindow() {
    Note("resize the main window");
    Window().resize(300 + static_cast<int>(Below(1100)), 200 + static_cast<int>(Below(700)));
}

void Monkey::RestoreMainWindow() {
    Note("restore the main window");
    Window().showNormal();
    Window().activateWindow();
    otherProgram_.hide();
}

void Monkey::DropSomeFile() {
    if (Children().size() >= ManyWindows)
        return CloseSomeChild();
    QMimeData data;
    const QString path = SomeFile();
    data.setUrls({QUrl::fromLocalFile(path)});
    Note("drop " + path.section('/', -1).left(40));
    const QPoint at = Window().rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&Window(), &enter);
    if (!enter.isAccepted())
        return;
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&Window(), &drop);
}

void Monkey::CloseSomeFloating() {
    std::vector<QWidget*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const QString name = widget->objectName();
        if (widget->isVisible() &&
            (name == "frmShowSmp" || name == "frmSummary" || name == "frmOutput" ||
             name == "frmHelp" || name == "frmDistrGraph"))
            windows.push_back(widget);
    }
    if (windows.empty())
        return;
    std::ranges::sort(windows, {}, [](const QWidget* widget) { return widget->objectName(); });
    QWidget& window = *OneOf(windows);
    Note("close " + window.objectName());
    window.close();
}

void Monkey::CopyElsewhere() {
    const QString text = SomeText();
    Note("another program copies \"" + text.left(40) + '"');
    QApplication::clipboard()->setText(text);
}

// --- Menus and lists that are open ------------------------------------------------------------

void Monkey::ActOnPopup(QWidget& popup) {
    if (OneIn(4))
        return Press(popup, Qt::Key_Escape);
    if (OneIn(5)) {
        static const std::vector<Qt::Key> keys = {Qt::Key_Down,  Qt::Key_Up,     Qt::Key_Left,
                                                  Qt::Key_Right, Qt::Key_Return, Qt::Key_Space};
        return Press(popup, OneOf(keys));
    }
    if (auto* menu = qobject_cast<QMenu*>(&popup)) {
        std::vector<QAction*> entries;
        for (QAction* action : menu->actions()) {
            if (action->isVisible() && action->isEnabled() && !action->isSeparator())
                entries.push_back(action);
        }
        if (entries.empty())
            return Press(popup, Qt::Key_Escape);
        QAction& entry = *OneOf(entries);
        Note("\"" + entry.text() + "\"");
        if (entry.menu() == nullptr)
            return ClickAt(popup, menu->actionGeometry(&entry).center(), Qt::LeftButton);
        // With the mouse a menu in a menu opens after a while, which is not the same each time.
        menu->setActiveAction(&entry);
        return Press(popup, Qt::Key_Right);
    }
    if (auto* view = popup.findChild<QAbstractItemView*>(); view != nullptr && view->isVisible()) {
        const int rows = view->model()->rowCount(view->rootIndex());
        if (rows > 0) {
            const int row = static_cast<int>(Below(static_cast<std::size_t>(rows)));
            // Nor does an open list take clicks from its first moment on.
            Note(QString("row %1").arg(row));
            view->setCurrentIndex(view->model()->index(row, 0, view->rootIndex()));
            return Press(popup, Qt::Key_Return);
        }
    }
    Press(popup, Qt::Key_Escape);
}

// --- Questions --------------------------------------------------------------------------------

void Monkey::GiveUp(QWidget& dialog) {
    constexpr int patience = 100;
    if (steps_ < wanted_ + patience)
        return Press(dialog, Qt::Key_Escape);
    Note("close " + NameOf(dialog));
    dialog.close();
}

void Monkey::ActOnModal(QWidget& modal) {
    if (auto* box = qobject_cast<QMessageBox*>(&modal))
        return AnswerMessage(*box);
    if (auto* dialog = qobject_cast<QFileDialog*>(&modal))
        return AnswerFileDialog(*dialog);
    // Of printing, the preview is enough.
    if (modal.objectName() == "printPreview" || modal.inherits("QPrintDialog"))
        return Press(modal, Qt::Key_Escape);
    if (modal.objectName() == "frmGridTable" && !OneIn(4))
        return FillGrid(modal);
    if (modal.objectName() == "frmShiftModel" && !OneIn(4))
        return FillShiftModel(modal);
    switch (Below(10)) {
    case 0:
        return Press(modal, Qt::Key_Escape);
    case 1:
        return Press(modal, Qt::Key_Return);
    case 2:
        return Press(modal, Qt::Key_Tab);
    case 3:
    case 4:
    case 5:
        if (QWidget* field = SomeField(modal))
            return TypeInto(*field, SomeText());
        [[fallthrough]];
    case 6:
        for (const char* name : {"cmdOK", "cmdCont"}) {
            if (auto* button = modal.findChild<QWidget*>(name))
                return ClickAt(*button, button->rect().center(), Qt::LeftButton);
        }
        [[fallthrough]];
    default:
        if (QWidget* control = SomeControl(modal))
            ClickAt(*control, SomePoint(*control), Qt::LeftButton);
    }
}

void Monkey::AnswerMessage(QMessageBox& box) {
    const QString text = box.text().simplified();
    Note("message \"" + text.left(100) + '"');
    if (text.startsWith("Run-time error") && !(text.endsWith("Overflow") && HoldsAbsurdNumber()))
        Fail(FromQt(text));
    const QList<QAbstractButton*> buttons = box.buttons();
    if (OneIn(5) || buttons.isEmpty())
        return Press(box, OneIn(2) ? Qt::Key_Escape : Qt::Key_Return);
    QAbstractButton& button = *OneOf(buttons);
    ClickAt(button, button.rect().center(), Qt::LeftButton);
}

void Monkey::AnswerFileDialog(QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (OneIn(4) || name == nullptr)
        return Press(dialog, Qt::Key_Escape);
    const QString path = SomeFile();
    Note("file " + path.section('/', -1).left(40));
    name->setText(path);
    // The dialog itself accepts, not the list of names that it proposes.
    QTest::keyClick(name, Qt::Key_Return);
}

// --- Runs -------------------------------------------------------------------------------------

void Monkey::CancelRun() {
    QWidget* button =
        SimRunning == True
            ? Window().CurrentChild()->findChild<QWidget*>("cmdExit")
            : Window().Floating(FloatingWindow::Parameters)->findChild<QWidget*>("cmdOK");
    ClickAt(*button, button->rect().center(), Qt::LeftButton);
}

void Monkey::ActDuringRun() {
    for (hasDone_ = false; !hasDone_;)
        OneOfThese({
            {10, &Monkey::CancelRun},
            {6, &Monkey::ClickSomewhere},
            {3, &Monkey::DoubleClickSomewhere},
            {3, &Monkey::RightClickSomewhere},
            {2, &Monkey::ClickMenuBar},
            {3, &Monkey::TypeSomewhere},
            {6, &Monkey::PressSomeKey},
            {4, &Monkey::PressAccelerator},
            {2, &Monkey::TurnWheel},
            {2, &Monkey::CloseSomeChild},
            {3, &Monkey::ActivateSomeChild},
            {3, &Monkey::ArrangeSomeChild},
            {1, &Monkey::ResizeMainWindow},
            {1, &Monkey::DropSomeFile},
            {1, &Monkey::CloseSomeFloating},
            {1, &Monkey::Exit},
        });
}

} // namespace quorvanta
