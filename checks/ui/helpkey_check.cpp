// The help key in every window: which topic it opens, and that the help can be used while the
// window waits for its answer.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/showpar.h"
#include "ui/childwindow.h"
#include "ui/helpviewer.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>

namespace quorvanta {
namespace {

class HelpKey : public WindowCheck {
  protected:
    // The page that F1 opens with the focus in this control; the help is closed again.
    static QString PageAt(QWidget& control) {
        control.setFocus();
        QTest::keyClick(&control, Qt::Key_F1);
        QWidget* viewer = hands::TopWindow("frmHelp");
        if (viewer == nullptr)
            return "none";
        const QString page = hands::Control<QTextBrowser>(*viewer, "txtPage")->source().fileName();
        viewer->close();
        hands::Settle();
        return page;
    }

    // Every word that the window shows is found on that page.
    static void ExpectExplained(const QWidget& window, i32 number) {
        OpenHelp(number);
        QWidget& viewer = *hands::TopWindow("frmHelp");
        const QString page = hands::Control<QTextBrowser>(viewer, "txtPage")->toPlainText();
        viewer.close();
        QStringList texts;
        for (const auto* label : window.findChildren<QLabel*>(QRegularExpression("^lbl|^$")))
            texts << (label->isVisible() ? label->text() : "");
        for (const auto* button : window.findChildren<QAbstractButton*>())
            texts << (button->isVisible() ? button->text() : "");
        int words = 0;
        for (QString text : texts) {
            text = text.remove('&').remove(QRegularExpression(":$|^Copy as ")).simplified();
            words += text.isEmpty() ? 0 : 1;
            EXPECT_TRUE(page.contains(text)) << number << ": " << qPrintable(text);
        }
        EXPECT_GT(words, 0) << number;
    }

    // The page that F1 opens in the modal window that this call opens, which is left by Esc.
    static QString PageInModal(const QString& name, const std::function<void()>& open) {
        QString page = "not opened";
        hands::WhenModal(name, [&page, name](QWidget& modal) {
            QWidget* control = modal.focusWidget();
            page = PageAt(control == nullptr ? modal : *control);
            if (name != "printPreview" && name != "frmNewWindow") // these explain themselves
                ExpectExplained(modal, page.section('.', 0, 0).toInt());
            QTest::keyClick(&modal, Qt::Key_Escape);
        });
        open();
        return page;
    }

    // A table or graph of the unpaired t-test.
    void OpenRun(const QString& newWindow) {
        Trigger(newWindow);
        Trigger("mnuStudent(0)");
        hands::Click(Options(), "cmdOK");
        hands::Click(Parameters(), "cmdOK");
        ASSERT_EQ(Messages.Texts, QStringList());
    }

    QWidget& Parameters() { return *Window().Floating(FloatingWindow::Parameters); }

    std::function<void()> ClickIn(QWidget& window, const QString& button) {
        return [&window, button] { hands::Click(window, button); };
    }
};

TEST_F(HelpKey, ExplainsAWindowThatHasNoAnalysisYet) {
    const std::pair<QString, QString> kinds[] = {{"mnuFile(0)", "23.html"},
                                                 {"mnuFile(1)", "25.html"},
                                                 {"mnuFile(2)", "27.html"},
                                                 {"mnuFile(3)", "37.html"}};
    for (const auto& [entry, page] : kinds) {
        Trigger(entry);
        EXPECT_EQ(PageAt(Child()), page);
    }
}

TEST_F(HelpKey, ExplainsTheChoiceOfAWindow) {
    EXPECT_EQ(PageInModal("frmNewWindow", [this] { Trigger("mnuStudent(0)"); }), "21.html");
}

TEST_F(HelpKey, ExplainsATable) {
    OpenRun("mnuFile(1)");
    EXPECT_EQ(PageAt(*hands::Control(Child(), "PicTable")), "301.html");
    for (const char* control : {"cbYXZPar(0)", "txtXminValue", "txtZValue"})
        EXPECT_EQ(PageAt(*hands::Control(Parameters(), control)), "24.html") << control;
    ExpectExplained(Child(), 25);
    EXPECT_EQ(PageInModal("frmEditTable", ClickIn(Child(), "cmdEditTable")), "26.html");
}

TEST_F(HelpKey, ExplainsASimulation) {
    Trigger("mnuFile(3)");
    Trigger("mnuMW(0)");
    hands::Click(Options(), "cmdOK");
    QWidget& dialog = *Window().Floating(FloatingWindow::InterimParameters);
    for (const char* control : {"txtRejectH0(0)", "txtMaxNoOfSim", "txtSeed"})
        EXPECT_EQ(PageAt(*hands::Control(dialog, control)), "36.html") << control;
    EXPECT_EQ(PageAt(Child()), "342.html") << "its test";
    hands::TypeInto(dialog, "txtMaxNoOfSim", "20");
    hands::Click(dialog, "cmdOK");
    for (const char* control : {"fraSim", "lblHead1", "txtHide"})
        EXPECT_EQ(PageAt(*hands::Control(Child(), control)), "342.html") << control;
}

// The parameter's own words first, then the test's.
TEST_F(HelpKey, ExplainsTheParameterOfABox) {
    OpenTTest();
    const int sd = PlaceOf("&Standard Deviation");
    Box(sd).setFocus();
    QTest::keyClick(&Box(sd), Qt::Key_F1);
    QWidget& viewer = *hands::TopWindow("frmHelp");
    const auto& page = *hands::Control<QTextBrowser>(viewer, "txtPage");
    EXPECT_EQ(page.source().fileName(), QString("%1.html").arg(HelpParameters()));
    EXPECT_EQ(page.source().fragment(), "p2");
    EXPECT_TRUE(page.toPlainText().contains("Standard Deviation"));
    Box(sd).setFocus();
    QTest::keyClick(&Box(sd), Qt::Key_F1);
    EXPECT_EQ(page.source().fileName(), "301.html");
    QTest::keyClick(&Box(0), Qt::Key_F1);
    EXPECT_EQ(page.source().fragment(), "p0");
    QTest::keyClick(&Label(0), Qt::Key_F1);
    EXPECT_EQ(page.source().fileName(), "301.html");
    QTest::keyClick(&Box(0), Qt::Key_F1);
    QTest::keyClick(&Box(1), Qt::Key_F1);
    EXPECT_EQ(page.source().fragment(), "p1") << "another parameter";
    viewer.close();
    QTest::keyClick(&Box(1), Qt::Key_F1);
    EXPECT_EQ(page.source().fragment(), "p1") << "after the help was closed, it is the first time";
    viewer.close();
    hands::Settle();
}

TEST_F(HelpKey, ExplainsTheParameterOfABoxBesideATable) {
    OpenRun("mnuFile(1)");
    EXPECT_EQ(PageAt(*hands::Control(Parameters(), "txtParValue(0)")),
              QString("%1.html").arg(HelpParameters()));
}

TEST_F(HelpKey, ExplainsEveryWordOfTheParameters) {
    OpenRun("mnuFile(1)");
    for (auto* label : Parameters().findChildren<QLabel*>(QRegularExpression("^lblParLabel")))
        label->hide(); // of the analysis
    Window().StartRun(2);
    ExpectExplained(Parameters(), 24);
    Window().EndRun();
    ExpectExplained(Parameters(), 24);
}

TEST_F(HelpKey, ExplainsAGraph) {
    OpenRun("mnuFile(2)");
    EXPECT_EQ(PageAt(*hands::Control(Child(), "PicGraph")), "301.html");
    ExpectExplained(Child(), 27);
    EXPECT_EQ(PageAt(*hands::Control(Parameters(), "txtXmaxValue")), "24.html");
    EXPECT_EQ(PageInModal("frmEditGraph", ClickIn(Child(), "cmdEditGraph")), "28.html");
    EXPECT_EQ(PageInModal("frmGraphOrText", [this] { Trigger("mnuFile(10)"); }), "31.html");
}

TEST_F(HelpKey, ExplainsASummary) {
    OpenRun("mnuFile(1)");
    Trigger("mnuGetInfo(3)");
    QWidget& summary = *Window().Floating(FloatingWindow::Summary);
    EXPECT_EQ(PageAt(*hands::Control(summary, "txtSummary")), "29.html");
    ExpectExplained(summary, 29);
    EXPECT_EQ(PageInModal("frmEditSummary", ClickIn(summary, "cmdEdit")), "29.html");
}

TEST_F(HelpKey, ExplainsADistributionGraph) {
    OpenTTest();
    Trigger("mnuGetInfo(4)");
    QWidget& graph = *Window().Floating(FloatingWindow::DistrGraph);
    EXPECT_EQ(PageAt(*hands::Control(graph, "picDistrGraph")), "39.html");
    ExpectExplained(graph, 39);
    EXPECT_EQ(PageInModal("frmEditGraph", ClickIn(graph, "cmdEdit")), "28.html");
}

TEST_F(HelpKey, ExplainsAnOutput) {
    OpenRun("mnuFile(1)");
    Trigger("mnuFile(9)");
    QWidget& output = *Window().Floating(FloatingWindow::Output);
    EXPECT_EQ(PageAt(*hands::Control(output, "PicOutput")), "30.html");
    ExpectExplained(output, 30);
    EXPECT_EQ(PageInModal("frmEditTable", ClickIn(output, "cmdEditOutput")), "26.html");
    EXPECT_EQ(PageInModal("printPreview", ClickIn(output, "cmdPrintOutput")), "31.html");
}

TEST_F(HelpKey, ExplainsADesign) {
    Trigger("mnuFile(0)");
    Trigger("mnuGrpSeqNorm(0)");
    hands::Click(Options(), "optInterim(1)");
    EXPECT_EQ(PageInModal("frmBoundary", [this] { AcceptOptions(); }), "38.html");
    hands::WhenModal("frmBoundary", [](QWidget& boundaries) {
        hands::WhenModal("frmGridTable", [](QWidget& fractions) {
            QTest::keyClicks(hands::Control(fractions, "txtText"), "0.5");
            hands::Click(fractions, "cmdOK");
        });
        hands::Click(boundaries, "cmdOK");
    });
    Press(1); // the power
    QWidget& stops = *Window().Floating(FloatingWindow::SequentialMonitor);
    ASSERT_TRUE(stops.isVisible());
    EXPECT_EQ(PageAt(stops), "38.html");
    for (auto* figure : stops.findChildren<QLabel*>(
             QRegularExpression("^lbl(InterimAnalysis|Fraction|Boundary|SignEstimate|PowerEstimate|"
                                "PrAcceptEstimate|ASNH)")))
        figure->hide();
    ExpectExplained(stops, 38);
}

// The reader of messages would answer before the key came.
TEST_F(HelpKey, ExplainsFilesAndMessages) {
    OpenRun("mnuFile(1)");
    QWidget dialog(&Window());
    dialog.setObjectName("frmCmdialog");
    EXPECT_EQ(PageAt(dialog), "32.html");
    dialog.setObjectName("msgBox");
    EXPECT_EQ(PageAt(dialog), "60.html");
}

TEST_F(HelpKey, LeavesTheHelpUsableBesideAQuestion) {
    OpenRun("mnuFile(1)");
    bool blocked = true;
    hands::WhenModal("frmEditTable", [&blocked](QWidget& modal) {
        QTest::keyClick(modal.focusWidget(), Qt::Key_F1);
        QWidget* viewer = hands::TopWindow("frmHelp");
        ASSERT_NE(viewer, nullptr);
        // To the window itself, as the mouse and the keyboard of the screen do.
        auto* home = viewer->findChild<QAction*>("cmdHome");
        QWidget* bar = hands::Control(*viewer, "tbrHelp");
        for (QObject* button : bar->children())
            if (auto* tool = qobject_cast<QAbstractButton*>(button);
                tool != nullptr && tool->text() == home->text())
                QTest::mouseClick(viewer->windowHandle(), Qt::LeftButton, {},
                                  tool->mapTo(viewer, tool->rect().center()));
        hands::Settle();
        blocked = hands::Control<QTextBrowser>(*viewer, "txtPage")->source().fileName() != "0.html";
        QTest::keyClick(&modal, Qt::Key_Escape);
    });
    hands::Click(Child(), "cmdEditTable");
    EXPECT_FALSE(blocked);
    // The question is over, the help stays.
    QWidget* viewer = hands::TopWindow("frmHelp");
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->windowHandle()->transientParent(), nullptr);
    viewer->close();
}

} // namespace
} // namespace quorvanta
