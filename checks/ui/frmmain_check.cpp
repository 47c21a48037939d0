// The main window: title, menus, keys, help, status and the free space without windows.
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/setup.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/statusline.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPaintEvent>
#include <QSet>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>

namespace quorvanta {
namespace {

class MainWindow : public WindowCheck {
  protected:
    static QString NameOf(const MenuItem& item) {
        const QString name = ToQt(item.Name);
        return item.Index < 0 ? name : ControlName(name, item.Index);
    }

    static const MenuItem& TopMenu(std::string_view name) {
        for (const MenuItem& item : MainMenu()) {
            if (item.Name == name)
                return item;
        }
        ADD_FAILURE() << name;
        return MainMenu().front();
    }

    // The entries that do something, in the order of the menus.
    static std::vector<const MenuItem*> Leaves(std::span<const MenuItem> items) {
        std::vector<const MenuItem*> leaves;
        for (const MenuItem& item : items) {
            if (item.Action == MenuAction::Submenu) {
                const auto below = Leaves(item.Children);
                leaves.insert(leaves.end(), below.begin(), below.end());
            } else if (item.Action != MenuAction::Separator) {
                leaves.push_back(&item);
            }
        }
        return leaves;
    }

    static void ExpectSame(const QMenu& menu, std::span<const MenuItem> items) {
        ASSERT_EQ(menu.actions().size(), static_cast<qsizetype>(items.size()));
        for (std::size_t i = 0; i < items.size(); ++i) {
            const QAction& action = *menu.actions()[static_cast<qsizetype>(i)];
            const MenuItem& item = items[i];
            EXPECT_EQ(action.isSeparator(), item.Action == MenuAction::Separator);
            if (action.isSeparator())
                continue;
            EXPECT_EQ(action.text(), ToQt(item.Caption));
            EXPECT_EQ(action.objectName(), NameOf(item));
            EXPECT_EQ(action.menu() != nullptr, item.Action == MenuAction::Submenu);
            if (action.menu() != nullptr)
                ExpectSame(*action.menu(), item.Children);
        }
    }

    QWidget* HelpViewer() { return hands::TopWindow("frmHelp"); }

    QString HelpPage() {
        const QWidget* viewer = HelpViewer();
        return viewer == nullptr
                   ? QString()
                   : hands::Control<QTextBrowser>(*viewer, "txtPage")->source().fileName();
    }

    void CloseHelp() {
        if (QWidget* viewer = HelpViewer())
            viewer->close();
        hands::Settle();
    }
};

TEST_F(MainWindow, IsTitledWithNameAndVersion) {
    EXPECT_EQ(Window().windowTitle(), "Quorvanta3.0");
    EXPECT_FALSE(QApplication::windowIcon().isNull());
}

// --- Menus ------------------------------------------------------------------------------------

TEST_F(MainWindow, HasTheWholeMenuTree) {
    const QList<QAction*> tops = Window().menuBar()->actions();
    std::vector<const MenuItem*> told;
    for (const MenuItem& item : MainMenu())
        told.push_back(&item);
    std::size_t at = 0;
    for (const QAction* top : tops) {
        if (top->menu()->objectName() == "mnuWindowHead")
            continue;
        ASSERT_LT(at, told.size());
        EXPECT_EQ(top->text(), ToQt(told[at]->Caption));
        EXPECT_EQ(top->objectName(), NameOf(*told[at]));
        ExpectSame(*top->menu(), told[at]->Children);
        ++at;
    }
    EXPECT_EQ(at, told.size());
}

TEST_F(MainWindow, HasTheHiddenOutputMenu) {
    auto* menu = Window().findChild<QMenu*>("mnuOutput");
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->isVisible());
    ExpectSame(*menu, OutputMenu().Children);
}

TEST_F(MainWindow, NamesEveryEntryOnce) {
    QSet<QString> names;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (action->objectName().startsWith("mnu")) {
            EXPECT_FALSE(names.contains(action->objectName())) << qPrintable(action->objectName());
            names.insert(action->objectName());
        }
    }
    EXPECT_GT(names.size(), 150);
}

TEST_F(MainWindow, GivesEachMenuOfTheBarALetterOfItsOwn) {
    QSet<QString> letters;
    for (const QAction* top : Window().menuBar()->actions()) {
        const QString letter = QKeySequence::mnemonic(top->text()).toString();
        EXPECT_FALSE(letter.isEmpty()) << qPrintable(top->text());
        EXPECT_FALSE(letters.contains(letter)) << qPrintable(top->text());
        letters.insert(letter);
    }
}

TEST_F(MainWindow, HasTheUsualKeys) {
    const auto key = [this](const char* entry) {
        return Window().findChild<QAction*>(entry)->shortcut();
    };
    EXPECT_EQ(key("mnuFile(0)"), QKeySequence(Qt::CTRL | Qt::Key_N));
    EXPECT_EQ(key("mnuFile(5)"), QKeySequence(Qt::CTRL | Qt::Key_O));
    EXPECT_EQ(key("mnuFile(7)"), QKeySequence(Qt::CTRL | Qt::Key_S));
    EXPECT_EQ(key("mnuFile(9)"), QKeySequence(Qt::CTRL | Qt::Key_P));
    EXPECT_EQ(key("mnuFile(10)"), QKeySequence(Qt::CTRL | Qt::Key_C));
    QSet<QKeySequence> keys;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (!action->objectName().startsWith("mnu") || action->shortcut().isEmpty())
            continue;
        EXPECT_FALSE(keys.contains(action->shortcut())) << qPrintable(action->objectName());
        keys.insert(action->shortcut());
    }
}

TEST_F(MainWindow, OpensAWindowByKey) {
    QTest::keyClick(&Window(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Child().windowTitle(), "Calculation 1");
}

TEST_F(MainWindow, OpensMenusByMouseDownToATest) {
    Trigger("mnuFile(0)");
    hands::ChooseMenu(*Window().menuBar(), {"&Parametric Tests", "&Student's t-test", "&Paired"});
    EXPECT_TRUE(Options().isVisible());
    EXPECT_EQ(TestNo, 1);
}

// Each test either shows its options or is dimmed; asked for all the same, it is told to be
// missing, in one message, and then nothing has changed.
TEST_F(MainWindow, ServesOrRefusesEveryTest) {
    OpenTTest();
    const QString head = hands::TextOf(Child(), "lblHead1");
    int served = 0;
    for (const MenuItem* item : Leaves(MainMenu())) {
        if (item->Action != MenuAction::Test && item->Action != MenuAction::Distribution)
            continue;
        Messages.Texts.clear();
        const auto* entry = Window().findChild<QAction*>(NameOf(*item));
        if (item->Action == MenuAction::Test &&
            HasSimulation({.IsTest = True, .TestNo = item->TestNo}) &&
            !HasEquation({.IsTest = True, .TestNo = item->TestNo})) {
            Messages.Answers = {QMessageBox::Cancel};
            Trigger(NameOf(*item));
            EXPECT_EQ(Messages.Texts, QStringList{ToQt(TestMenuName(item->MenuNo)) +
                                                  " Is Only Available as Monte Carlo Simulation."});
        } else if (entry->isEnabled()) {
            Trigger(NameOf(*item));
            ++served;
            EXPECT_TRUE(Options().isVisible());
            EXPECT_TRUE(Messages.Texts.isEmpty());
            QTest::keyClick(&Options(), Qt::Key_Escape);
        } else {
            const std::string name = item->Action == MenuAction::Test ? TestMenuName(item->MenuNo)
                                                                      : DistrMenuName(item->MenuNo);
            EXPECT_EQ(entry->statusTip(), "Not available in this version.");
            if (item->Action == MenuAction::Test)
                NewTest(item->MenuNo);
            else
                NewDistribution(item->MenuNo);
            EXPECT_EQ(Messages.Texts,
                      QStringList{ToQt(name) + " Is Not Available in This Version."});
        }
        EXPECT_EQ(TestNo, 0) << item->Caption;
        EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head) << item->Caption;
        EXPECT_EQ(Area().subWindowList().size(), 1);
    }
    EXPECT_GE(served, 8);
}

TEST_F(MainWindow, OpensItsMenusWithF10) {
    OpenTTest();
    for (QWidget* from : {static_cast<QWidget*>(&Window()), static_cast<QWidget*>(&Child()),
                          static_cast<QWidget*>(&Box(0))}) {
        from->setFocus();
        QTest::keyClick(from, Qt::Key_F10);
        const QWidget* menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->objectName(), "mnuFileHead");
        while (QWidget* open = QApplication::activePopupWidget())
            open->close();
    }
}

TEST_F(MainWindow, ChoosesNothingDuringARun) {
    OpenTTest();
    Calculating = True;
    Trigger("mnuStudent(1)");
    EXPECT_FALSE(Options().isVisible());
    EXPECT_EQ(TestNo, 0);
    Calculating = False;
}

TEST_F(MainWindow, EnablesTheEntriesThatApply) {
    const auto enabled = [this](const char* entry) {
        return Window().findChild<QAction*>(entry)->isEnabled();
    };
    for (const char* entry :
         {"mnuGetInfo(0)", "mnuGetInfo(1)", "mnuGetInfo(2)", "mnuGetInfo(3)", "mnuGetInfo(4)",
          "mnuFile(7)", "mnuFile(9)", "mnuFile(10)", "mnuFile(11)"})
        EXPECT_FALSE(enabled(entry)) << entry;
    OpenTTest();
    for (const char* entry : {"mnuGetInfo(0)", "mnuGetInfo(1)", "mnuGetInfo(2)", "mnuGetInfo(3)",
                              "mnuFile(7)", "mnuFile(9)", "mnuFile(10)", "mnuFile(11)"})
        EXPECT_TRUE(enabled(entry)) << entry;
}

TEST_F(MainWindow, RunsTheFileCommandsFromTheOutputMenu) {
    OpenTTest();
    Trigger("mnuOutputOption(1)");
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Calculation"});
    Trigger("mnuOutputOption(4)");
    EXPECT_EQ(Messages.Texts,
              QStringList{"Calculation Has Been Copied To the Clipboard for Pasting Into Other "
                          "Applications"});
    EXPECT_EQ(Messages.Titles, QStringList{"Copy"});
    EXPECT_TRUE(QApplication::clipboard()->text().contains("Student's t-test, Unpaired"));
    Trigger("mnuOutputOption(5)");
    EXPECT_EQ(Messages.FileQuestions.size(), 2);
    Trigger("mnuOutputOption(3)");
    EXPECT_NE(hands::TopWindow("frmOutput"), nullptr);
}

// --- The foot of the window -------------------------------------------------------------------

// A small window, a long message: it ends in an ellipsis, and its whole text is told where it is
// pointed at and to those who don't see it.
TEST_F(MainWindow, TellsALongMessageWhole) {
    auto& line = *qobject_cast<StatusLine*>(Window().statusBar());
    const QString text = "No value of H1: Proportion 10 + Proportion 01 from 0.00001 to 0.99999 "
                         "agrees with the other values.";
    ThePlatform().ShowStatus(FromQt(text));
    EXPECT_EQ(line.ShownMessage(), text);
    EXPECT_TRUE(line.toolTip().isEmpty());
    line.resize(300, line.height());
    EXPECT_TRUE(line.ShownMessage().endsWith(QChar(0x2026)));
    EXPECT_LE(line.fontMetrics().horizontalAdvance(line.ShownMessage()), 300);
    EXPECT_EQ(line.toolTip(), text);
    ThePlatform().ShowStatus("");
    EXPECT_TRUE(line.toolTip().isEmpty());
}

// --- Help -------------------------------------------------------------------------------------

TEST_F(MainWindow, OpensTheHelpOfTheCurrentAnalysis) {
    OpenTTest();
    Trigger("mnuGetInfo(0)");
    EXPECT_EQ(HelpPage(), "301.html");
    Trigger("mnuGetInfo(1)");
    EXPECT_EQ(HelpPage(), "2200.html");
    Trigger("mnuGetInfo(2)");
    EXPECT_EQ(HelpPage(), "9301.html");
    CloseHelp();
}

// The state still holds the numbers of the analysis that was open before.
TEST_F(MainWindow, OpensTheHelpOfAWindowWithoutATest) {
    OpenTTest();
    for (const auto& [window, page] :
         {std::pair("mnuFile(0)", "23.html"), std::pair("mnuFile(1)", "25.html"),
          std::pair("mnuFile(2)", "27.html")}) {
        Trigger(window);
        for (const char* entry : {"mnuGetInfo(0)", "mnuGetInfo(1)", "mnuGetInfo(2)"}) {
            Trigger(entry);
            EXPECT_EQ(HelpPage(), page) << entry;
        }
    }
    Trigger("mnuStudent(1)");
    Trigger("mnuGetInfo(0)");
    EXPECT_EQ(HelpPage(), "302.html") << "while its options are chosen";
    CloseHelp();
}

TEST_F(MainWindow, OpensTheHelpWithItsKey) {
    QTest::keyClick(&Window(), Qt::Key_F1);
    EXPECT_EQ(HelpPage(), "0.html");
    CloseHelp();
    OpenTTest();
    QTest::keyClick(&Child(), Qt::Key_F1);
    EXPECT_EQ(HelpPage(), "301.html");
    CloseHelp();
    Trigger("mnuStudent(1)");
    QTest::keyClick(&Options(), Qt::Key_F1);
    EXPECT_EQ(HelpPage(), "302.html");
    CloseHelp();
}

TEST_F(MainWindow, OpensTheHelpFromItsMenu) {
    Trigger("mnuHelp(0)");
    EXPECT_NE(HelpViewer(), nullptr);
    CloseHelp();
    Trigger("mnuHelp(1)");
    EXPECT_NE(HelpViewer(), nullptr);
    CloseHelp();
}

TEST_F(MainWindow, TellsAboutItself) {
    bool shown = false;
    hands::WhenModal("frmAbout", [&shown](QWidget& about) {
        shown = true;
        EXPECT_EQ(about.windowTitle(), "About Quorvanta3.0");
        hands::Click(about, "cmdOK");
    });
    Trigger("mnuHelp(3)");
    EXPECT_TRUE(shown);
}

// --- Where to begin ---------------------------------------------------------------------------

TEST_F(MainWindow, SaysWhereToBegin) {
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"),
              "Choose a test or a distribution from the menus to begin.");
    const QImage empty = Area().grab().toImage();
    Trigger("mnuFile(0)");
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"),
              "Choose a test or a distribution from the menus for this window.");
    Child().parentWidget()->move(0, 0);
    const QPoint middle = Area().rect().center();
    const auto ratio = static_cast<int>(empty.devicePixelRatio());
    const QRect hint((middle - QPoint(150, 100)) * ratio, QSize(300, 200) * ratio);
    const auto colours = [](const QImage& image) {
        QSet<QRgb> found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                found.insert(image.pixel(x, y));
        }
        return found.size();
    };
    EXPECT_GT(colours(empty.copy(hint)), 10) << "a hint is drawn in the empty area";
    EXPECT_EQ(colours(Area().grab().toImage().copy(hint)), 1) << "and is gone with a window";
    Trigger("mnuStudent(0)");
    EXPECT_EQ(hands::TextOf(Window(), "lblStatus"),
              "Choose the options of the analysis, then press OK. Esc gives them up.");
    AcceptOptions();
    EXPECT_TRUE(hands::TextOf(Window(), "lblStatus").startsWith("Type the values"));
}

// Gathers what is painted of a widget.
class PaintedArea : public QObject {
  public:
    explicit PaintedArea(QWidget& widget) { widget.installEventFilter(this); }

    QRegion Region;

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            Region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

// What stands in the middle of the free space must not stay there beside the windows.
TEST_F(MainWindow, TheWelcomeGoesWithTheFirstWindowAndComesBackAfterTheLast) {
    hands::Settle();
    const QPoint middle = Area().viewport()->rect().center();
    PaintedArea painted(*Area().viewport());
    Trigger("mnuFile(0)");
    hands::Settle();
    ASSERT_FALSE(Child().parentWidget()->geometry().contains(middle));
    EXPECT_TRUE(painted.Region.contains(middle));
    painted.Region = {};
    CloseChild();
    hands::Settle();
    ASSERT_TRUE(Area().subWindowList().isEmpty());
    EXPECT_TRUE(painted.Region.contains(middle));
}

// --- Keys beside a table ----------------------------------------------------------------------

// The axes come next after the options; from the window itself the keyboard finds the way there.
TEST_F(MainWindow, TheKeyboardReachesTheParametersOfATable) {
    Window().activateWindow();
    Trigger("mnuFile(1)");
    Trigger("mnuStudent(0)");
    AcceptOptions();
    hands::Settle();
    QWidget& parameters = *Window().Floating(FloatingWindow::Parameters);
    const QWidget* list = hands::Control(parameters, "cbYXZPar(0)");
    EXPECT_EQ(QApplication::focusWidget(), list);
    hands::Click(parameters, "cmdOK");
    QWidget* table = hands::Control(Child(), "PicTable");
    hands::Click(*table);
    ASSERT_EQ(QApplication::focusWidget(), table);
    QTest::keyClick(table, Qt::Key_Y, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), list);
}

} // namespace
} // namespace quorvanta
