// The help viewer: pages by number, contents, index, search, history, finding, printing, keys and
// colours.
#include "core/help_numbers.h"
#include "core/types.h"
#include "tour/hands.h"
#include "ui/frmhelp.h"
#include "ui/helplibrary.h"
#include "ui/helppage.h"
#include "ui/helpviewer.h"
#include "ui/qttext.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPrinter>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace quorvanta {
namespace {

constexpr int patience = 30000; // milliseconds, on a busy machine

class HelpWindow : public testing::Test {
  protected:
    HelpWindow() {
        EXPECT_FALSE(HelpLibrary::FindFile().isEmpty()) << "the help file is not built";
        OpenHelp(HelpContents);
        viewer_ = hands::TopWindow("frmHelp");
        EXPECT_NE(viewer_, nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(viewer_));
    }
    ~HelpWindow() override {
        viewer_->close();
        hands::Settle();
    }

    QWidget& Viewer() { return *viewer_; }
    HelpPage& Page() { return *hands::Control<HelpPage>(Viewer(), "txtPage"); }
    QString File() { return Page().source().fileName(); }
    QString Title() { return Page().documentTitle(); }
    QTabWidget& Tabs() { return *hands::Control<QTabWidget>(Viewer(), "tabHelp"); }
    QListWidget& Results() { return *hands::Control<QListWidget>(Viewer(), "lstSearch"); }
    QHelpContentWidget& Contents() {
        return *hands::Control<QHelpContentWidget>(Viewer(), "treContents");
    }
    QHelpIndexWidget& Index() { return *hands::Control<QHelpIndexWidget>(Viewer(), "lstIndex"); }
    QAction& Command(const char* name) { return *viewer_->findChild<QAction*>(name); }

    // Types words into the search; the titles of the pages that it finds.
    QStringList Search(const QString& words) {
        hands::TypeInto(Viewer(), "txtSearch", words);
        QStringList titles;
        for (int i = 0; i < Results().count(); ++i)
            titles << Results().item(i)->text();
        return titles;
    }

  private:
    QWidget* viewer_ = nullptr;
};

// --- Pages by number --------------------------------------------------------------------------

TEST_F(HelpWindow, OpensTopicsByNumber) {
    for (const i32 number : {301, 302, 375, 376, 379, 380, 382, 383, 9301, 9383, 2100, 2200, 2300,
                             11100, 812100, 782300, 100, 800, 10}) {
        OpenHelp(number);
        EXPECT_EQ(File(), QString::number(number) + ".html");
        EXPECT_FALSE(Title().isEmpty()) << number;
        EXPECT_EQ(Viewer().windowTitle(), Title() + " - Quorvanta Help");
    }
}

TEST_F(HelpWindow, SaysWhatANumberWithoutATopicStandsFor) {
    const auto text = [this](i32 number) {
        OpenHelp(number);
        EXPECT_EQ(Title(), QString("Help number %1").arg(number));
        return Page().toPlainText();
    };
    const QString friedman = text(3771100);
    EXPECT_TRUE(friedman.contains("The help number 3771100 stands for the parameters of "
                                  "Friedman's test: one sample, one-sided."));
    EXPECT_TRUE(friedman.contains("Non-Parametric Tests › Friedman's test"));
    EXPECT_TRUE(text(101262).contains("nothing: no menu and no analysis has it"));
    EXPECT_TRUE(text(101122).contains(
        "the parameters of std.dev.2 / std.dev.1, Bivariate Normal Distribution: confidence "
        "interval, one sample, one-sided"));
    const QString unknown = text(-7);
    EXPECT_TRUE(unknown.contains("stands for nothing"));

    // A choice that the analysis doesn't have leads to its description.
    EXPECT_TRUE(text(1200).contains("Student's t-test, Unpaired: one sample, two-sided"));
    EXPECT_TRUE(Page().toHtml().contains("301.html"));
    EXPECT_TRUE(friedman.contains("The description of this analysis"));
    EXPECT_FALSE(unknown.contains("The description of this analysis"));
}

TEST_F(HelpWindow, LivesWithoutAHelpFile) {
    QTemporaryDir folder;
    QFile broken(folder.filePath("broken.qhc"));
    ASSERT_TRUE(broken.open(QFile::WriteOnly));
    broken.write("This is no help file.");
    broken.close();
    for (const QString& file : {QString(), folder.filePath("missing.qhc"), broken.fileName()}) {
        frmHelp viewer(file);
        viewer.show();
        viewer.ShowNumber(301);
        const QString text = hands::Control<HelpPage>(viewer, "txtPage")->toPlainText();
        EXPECT_TRUE(text.contains("the description of Student's t-test, Unpaired"));
        EXPECT_TRUE(text.contains("quorvanta.qhc is missing"));
        viewer.ShowContents();
        viewer.ShowSearch();
        hands::TypeInto(viewer, "txtSearch", "power");
        EXPECT_EQ(hands::Control<QListWidget>(viewer, "lstSearch")->count(), 0);
    }
}

// --- Contents, index, search ------------------------------------------------------------------

TEST_F(HelpWindow, ShowsWhereAPageStandsInTheContents) {
    ASSERT_TRUE(QTest::qWaitFor([this] { return Contents().model()->rowCount() > 0; }, patience));
    for (const i32 number : {9301, 2200, 41, 382}) {
        OpenHelp(number);
        const auto* model = qobject_cast<QHelpContentModel*>(Contents().model());
        const QHelpContentItem* item = model->contentItemAt(Contents().currentIndex());
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->url().fileName(), QString::number(number) + ".html");
    }
}

TEST_F(HelpWindow, OpensWhatIsClickedInTheContents) {
    ASSERT_TRUE(QTest::qWaitFor([this] { return Contents().model()->rowCount() > 0; }, patience));
    EXPECT_EQ(File(), "0.html");
    const QModelIndex section =
        Contents().model()->index(0, 0).model()->index(0, 0, Contents().model()->index(0, 0));
    const QModelIndex first = section.model()->index(0, 0, section);
    Contents().expand(section);
    Contents().scrollTo(first);
    QTest::mouseClick(Contents().viewport(), Qt::LeftButton, {},
                      Contents().visualRect(first).center());
    EXPECT_EQ(File(), "10.html");
    QTest::keyClick(&Contents(), Qt::Key_Down);
    QTest::keyClick(&Contents(), Qt::Key_Return);
    EXPECT_EQ(File(), "11.html");
}

TEST_F(HelpWindow, OpensAWordOfTheIndex) {
    Tabs().setCurrentIndex(1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Index().model()->rowCount() > 0; }, patience));
    hands::TypeInto(Viewer(), "txtIndex", "Welch");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(File(), "301.html");
    hands::TypeInto(Viewer(), "txtIndex", "Coefficient of Var");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(File(), "64.html");
    EXPECT_EQ(Page().source().fragment(), "p156");
}

TEST_F(HelpWindow, LetsChooseAmongThePagesOfAWord) {
    Tabs().setCurrentIndex(1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Index().model()->rowCount() > 0; }, patience));
    hands::TypeInto(Viewer(), "txtIndex", "lognormal distribution");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    auto* choice = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(choice, nullptr);
    // Equivalence, non-inferiority, and the distribution itself.
    ASSERT_EQ(choice->actions().size(), 3);
    QTest::keyClick(choice, Qt::Key_Down);
    QTest::keyClick(choice, Qt::Key_Down);
    QTest::keyClick(choice, Qt::Key_Return);
    EXPECT_TRUE(File() == "376.html" || File() == "383.html" || File() == "802.html")
        << qPrintable(File());
}

TEST_F(HelpWindow, SearchesAllPages) {
    OpenHelpSearch();
    EXPECT_EQ(Tabs().currentIndex(), 2);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtSearch");
    EXPECT_EQ(Search("Satterthwaite Moser"), QStringList{"Student's t-test, unpaired"});
    EXPECT_EQ(hands::TextOf(Viewer(), "lblSearch"), "1 page");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(File(), "301.html");
    EXPECT_GT(Search("t-test").size(), 5);
    EXPECT_GT(Search("equival").size(), 5) << "the last word may go on";
    EXPECT_EQ(Search("decimal comma").front(), "How numbers are typed");
    EXPECT_EQ(Search("Satterthwaite").front(), "Student's t-test, unpaired");
}

// The box to type into has the focus as soon as its tab is chosen.
TEST_F(HelpWindow, TypesIntoTheTabThatIsChosen) {
    for (const auto& [tab, box] : {std::pair{2, "txtSearch"}, {1, "txtIndex"}}) {
        Tabs().setCurrentIndex(0);
        Page().setFocus(); // from where it would not go there by itself
        QTest::mouseClick(Tabs().tabBar(), Qt::LeftButton, {},
                          Tabs().tabBar()->tabRect(tab).center());
        EXPECT_EQ(Tabs().currentIndex(), tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), box);
    }
}

TEST_F(HelpWindow, SearchesWordsInAllTheirForms) {
    OpenHelpSearch();
    const auto places = [this](const QString& words, const QString& title) {
        return Search(words).indexOf(title);
    };
    EXPECT_GE(places("round up", "The Calculation window"), 0) << "has only \"rounded up\"";
    EXPECT_EQ(Search("ttest"), Search("t-test"));
    EXPECT_GT(Search("effect size").size(), 3);
    EXPECT_GT(Search("Cohen's d").size(), 3);
    EXPECT_GT(Search("noninferiority").size(), 3);
}

TEST_F(HelpWindow, FindsThePagesOfProofLast) {
    OpenHelpSearch();
    const QStringList found = Search("power");
    const qsizetype proof = found.indexOf("Estimation");
    ASSERT_GE(proof, 0) << "a chapter of the comparison with exact values";
    for (const char* title : {"Few degrees of freedom", "Means", "Proportions, published"})
        EXPECT_GT(found.indexOf(title), found.indexOf("The main window")) << title;
    for (const char* title : {"Student's t-test, unpaired", "The Summary window"})
        EXPECT_LT(found.indexOf(title), proof) << title;
}

TEST_F(HelpWindow, SearchesForNothing) {
    OpenHelpSearch();
    EXPECT_TRUE(Search("power zzqqxx").isEmpty());
    EXPECT_EQ(hands::TextOf(Viewer(), "lblSearch"), "No page has all these words.");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(File(), "0.html");
    EXPECT_TRUE(Search(" ").isEmpty());
    EXPECT_EQ(hands::TextOf(Viewer(), "lblSearch"), "");
}

// --- History, finding, printing ---------------------------------------------------------------

TEST_F(HelpWindow, GoesBackAndForward) {
    OpenHelp(301);
    OpenHelp(12345);
    OpenHelp(9301);
    Command("cmdBack").trigger();
    EXPECT_EQ(Title(), "Help number 12345");
    QTest::keyClick(&Page(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(File(), "301.html");
    QTest::keyClick(&Page(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Title(), "Help number 12345");
    Command("cmdForward").trigger();
    EXPECT_EQ(File(), "9301.html");
    EXPECT_FALSE(Command("cmdForward").isEnabled());
    Command("cmdHome").trigger();
    EXPECT_EQ(File(), "0.html");
}

TEST_F(HelpWindow, FollowsLinksByKey) {
    OpenHelp(9376);
    OpenHelp(376);
    Page().moveCursor(QTextCursor::End);
    QTest::keyClick(&Page(), Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&Page(), Qt::Key_Return);
    EXPECT_NE(File(), "376.html");
}

TEST_F(HelpWindow, FindsInThePage) {
    OpenHelp(301);
    QTest::keyClick(&Page(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(hands::Control(Viewer(), "fraFind")->isVisible());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtFind");
    hands::TypeInto(Viewer(), "txtFind", "satterthwaite");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Page().textCursor().selectedText().toLower(), "satterthwaite");
    const int first = Page().textCursor().position();
    QTest::keyClick(&Page(), Qt::Key_F3);
    EXPECT_GT(Page().textCursor().position(), first);
    hands::Click(Viewer(), "cmdFindPrevious");
    EXPECT_EQ(Page().textCursor().position(), first);
    hands::Click(Viewer(), "cmdFindPrevious");
    EXPECT_GT(Page().textCursor().position(), first) << "round the beginning to the end";
    hands::Click(Viewer(), "cmdFindNext");
    EXPECT_EQ(Page().textCursor().position(), first) << "and back";
    EXPECT_EQ(hands::TextOf(Viewer(), "lblFind"), "");

    hands::TypeInto(Viewer(), "txtFind", "zzqqxx");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(hands::TextOf(Viewer(), "lblFind"), "Not on this page.");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(hands::Control(Viewer(), "fraFind")->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &Page());
    EXPECT_TRUE(Viewer().isVisible());
}

TEST_F(HelpWindow, PrintsThePage) {
    OpenHelp(301);
    QTemporaryDir folder;
    const QString file = folder.filePath("page.pdf");
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    Page().PrintOn(printer);
    QFile pdf(file);
    ASSERT_TRUE(pdf.open(QFile::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
    EXPECT_GT(pdf.size(), 10000);
}

TEST_F(HelpWindow, ChangesTheSizeOfTheText) {
    OpenHelp(301);
    const double before = Page().font().pointSizeF();
    Command("cmdLarger").trigger();
    EXPECT_GT(Page().font().pointSizeF(), before);
    Command("cmdSmaller").trigger();
    EXPECT_EQ(Page().font().pointSizeF(), before);
}

// --- Looks, access, life ----------------------------------------------------------------------

TEST_F(HelpWindow, FollowsThePalette) {
    OpenHelp(301);
    const auto linkColour = [this] {
        for (QTextBlock block = Page().document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().isAnchor() &&
                    !part.fragment().charFormat().anchorHref().isEmpty())
                    return part.fragment().charFormat().foreground().color();
        return QColor();
    };
    EXPECT_EQ(linkColour(), Page().palette().color(QPalette::Link));
    QPalette dark = Page().palette();
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Link, Qt::yellow);
    Page().setPalette(dark);
    EXPECT_EQ(linkColour(), QColor(Qt::yellow));
    const QColor text = Page()
                            .document()
                            ->begin()
                            .next()
                            .next()
                            .begin()
                            .fragment()
                            .charFormat()
                            .foreground()
                            .color();
    EXPECT_EQ(text, QColor(Qt::white));
    EXPECT_EQ(File(), "301.html");
    Page().setPalette(QPalette());
}

TEST_F(HelpWindow, NamesItsControlsForAScreenReader) {
    for (const char* control :
         {"treContents", "lstIndex", "txtIndex", "txtSearch", "lstSearch", "txtPage"})
        EXPECT_FALSE(hands::Control(Viewer(), control)->accessibleName().isEmpty()) << control;
    for (const char* command :
         {"cmdBack", "cmdForward", "cmdHome", "cmdFind", "cmdPrint", "cmdLarger", "cmdSmaller"}) {
        EXPECT_FALSE(Command(command).text().isEmpty()) << command;
        EXPECT_FALSE(Command(command).shortcut().isEmpty()) << command;
    }
}

TEST_F(HelpWindow, ComesBackAsItWas) {
    OpenHelp(301);
    OpenHelp(302);
    QWidget* viewer = &Viewer();
    Viewer().close();
    hands::Settle();
    OpenHelp(302);
    EXPECT_EQ(hands::TopWindow("frmHelp"), viewer);
    Command("cmdBack").trigger();
    EXPECT_EQ(File(), "301.html");
}

} // namespace
} // namespace quorvanta
