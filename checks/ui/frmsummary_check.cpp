// The Summary window: the statement, its type, and how it goes out.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "output/rtf.h"
#include "output/statement.h"
#include "support/rtf_reader.h"
#include "ui/childwindow.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFontComboBox>
#include <QLineEdit>
#include <QPrintPreviewWidget>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>

#include <algorithm>
#include <functional>

namespace quorvanta {
namespace {

class SummaryWindow : public OutputCheck {
  protected:
    ~SummaryWindow() override {
        SummaryFont = "Arial";
        SummaryFontSize = 10;
        SummaryBold = 0;
    }

    void OpenSummary() {
        Trigger("mnuGetInfo(3)");
        ASSERT_TRUE(IsOpen("frmSummary"));
    }
    QWidget& Summary() { return Top("frmSummary"); }
    QTextEdit& Text() { return *hands::Control<QTextEdit>(Summary(), "txtSummary"); }

    // Opens the dialog, does this in it, and tells whether it came.
    bool Edit(const std::function<void(QWidget&)>& act) {
        bool seen = false;
        hands::WhenModal("frmEditSummary", [&](QWidget& edit) {
            seen = true;
            act(edit);
        });
        hands::Click(Summary(), "cmdEdit");
        return seen;
    }
};

TEST_F(SummaryWindow, ShowsTheStatementAlone) {
    OpenTTest();
    OpenSummary();
    EXPECT_EQ(Summary().windowTitle(), "Summary");
    EXPECT_EQ(FromQt(Text().toPlainText()), SumStatement());
    EXPECT_EQ(hands::TextOf(Summary(), "cmdEdit"), "&Edit");
    EXPECT_TRUE(Text().toPlainText().contains("The test used is Student's t-test, Unpaired"));
    EXPECT_EQ(Text().verticalScrollBar()->maximum(), 0) << "all of it is seen";
}

TEST_F(SummaryWindow, ClosesByEsc) {
    OpenTTest();
    OpenSummary();
    QTest::keyClick(&Summary(), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen("frmSummary"));
}

// A table is calculated anew when it is printed, but its statement speaks of the old values.
TEST_F(SummaryWindow, ClosesWhenItsStatementIsStale) {
    ExpectClosesWhenStale("frmSummary", "mnuGetInfo(3)");
}

// --- Its text, edited by hand -----------------------------------------------------------------

TEST_F(SummaryWindow, GoesOutAsItWasEdited) {
    OpenTTest();
    OpenSummary();
    const std::string ours = SumStatement();
    QTextCursor cursor = Text().textCursor();
    cursor.movePosition(QTextCursor::End);
    Text().setTextCursor(cursor);
    QTest::keyClicks(&Text(), " See Table 1.");
    const std::string edited = ours + " See Table 1.";
    EXPECT_EQ(FromQt(Text().toPlainText()), edited);
    EXPECT_EQ(SumStatement(), ours);

    EmptyClipboard();
    Trigger("mnuFile(10)");
    EXPECT_EQ(ClipboardText(), edited);
    EXPECT_EQ(QString::fromStdU16String(checks::Read(ClipboardRtf()).Text), ToQt(edited) + "\n");
    NameNextFile("summary");
    Trigger("mnuFile(11)");
    EXPECT_EQ(ContentOf("summary.rtf"), RtfDocument(edited));

    // Its type, and another look at it, leave the text as it is; so does the output of the result.
    EXPECT_TRUE(Edit([](QWidget& edit) {
        hands::TypeInto(edit, "txtFontSize", "12");
        hands::Click(edit, "cmdOK");
    }));
    EXPECT_EQ(FromQt(Text().toPlainText()), edited);
    QTest::keyClick(&Summary(), Qt::Key_Escape);
    EmptyClipboard();
    Trigger("mnuFile(10)");
    EXPECT_TRUE(ClipboardText().ends_with(edited));
    OpenSummary();
    EXPECT_EQ(FromQt(Text().toPlainText()), edited);

    // Emptied, it is ours again when it is opened.
    QTest::keyClick(&Text(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Text(), Qt::Key_Delete);
    QTest::keyClick(&Summary(), Qt::Key_Escape);
    OpenSummary();
    EXPECT_EQ(FromQt(Text().toPlainText()), ours);
}

TEST_F(SummaryWindow, IsPrintedAsItWasEditedInItsLines) {
    OpenTTest();
    OpenSummary();
    Text().setFocus();
    QTest::keyClick(&Text(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&Text(), "One.");
    QTest::keyClick(&Text(), Qt::Key_Return);
    QTest::keyClicks(&Text(), "Two.");
    EXPECT_EQ(StatementText(), "One.\nTwo.");
    EmptyClipboard();
    Trigger("mnuFile(10)");
    EXPECT_EQ(ClipboardText(), "One.\nTwo.");
    EXPECT_NE(ClipboardRtf().find("One.\\par Two."), std::string::npos);
}

// --- Its dialog -------------------------------------------------------------------------------

TEST_F(SummaryWindow, IsEditedInItsDialog) {
    OpenTTest();
    OpenSummary();
    bool seen = false;
    hands::WhenModal("frmEditSummary", [&seen](QWidget& edit) {
        seen = true;
        EXPECT_EQ(edit.windowTitle(), "Edit Summary");
        EXPECT_EQ(Captions(edit),
                  (QStringList{"&Cancel", "&Font Name:", "&OK", "Font &Bold", "Font &Size:"}));
        EXPECT_EQ(hands::Control<QFontComboBox>(edit, "cbFontName")->currentText(), "Arial");
        EXPECT_EQ(hands::TextOf(edit, "txtFontSize"), "10");
        EXPECT_FALSE(hands::Control<QCheckBox>(edit, "chkFontBold")->isChecked());
        QTest::keyClick(&edit, Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(hands::Control(edit, "txtFontSize")->hasFocus());
        hands::TypeInto(edit, "txtFontSize", "16");
        PressAltKey(edit, Qt::Key_B);
        hands::Control<QFontComboBox>(edit, "cbFontName")->setEditText("Times; {New}");
        QTest::keyClick(hands::Control(edit, "txtFontSize"), Qt::Key_Return);
    });
    PressAltKey(Summary(), Qt::Key_E);
    ASSERT_TRUE(seen);
    EXPECT_EQ(SummaryFont, "Times; {New}");
    EXPECT_EQ(SummaryFontSize, 16);
    EXPECT_EQ(SummaryBold, 1);
    EXPECT_EQ(Text().font().pointSize(), 16);
    EXPECT_TRUE(Text().font().bold());

    PressCtrlKey(Summary(), Qt::Key_C);
    const checks::ShownRtf rtf = checks::Read(ClipboardRtf());
    EXPECT_TRUE(rtf.Bold);
    EXPECT_EQ(rtf.FontSize, 32) << "half points";
    EXPECT_EQ(QString::fromStdU16String(rtf.Text), ToQt(SumStatement()) + "\n");
}

TEST_F(SummaryWindow, StaysAsItIsWhenTheDialogIsGivenUp) {
    OpenTTest();
    OpenSummary();
    for (const bool byKey : {false, true}) {
        EXPECT_TRUE(Edit([byKey](QWidget& edit) {
            hands::TypeInto(edit, "txtFontSize", "30");
            hands::Click(edit, "chkFontBold");
            if (byKey)
                QTest::keyClick(&edit, Qt::Key_Escape);
            else
                hands::Click(edit, "cmdCancel");
        }));
        EXPECT_EQ(SummaryFontSize, 10);
        EXPECT_EQ(SummaryBold, 0);
        EXPECT_EQ(Text().font().pointSize(), 10);
    }
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(SummaryWindow, RefusesASizeThatIsNone) {
    OpenTTest();
    OpenSummary();
    EXPECT_TRUE(Edit([](QWidget& edit) {
        hands::TypeInto(edit, "txtFontSize", " ");
        hands::Click(edit, "cmdOK");
        EXPECT_TRUE(edit.isVisible());
        hands::TypeInto(edit, "txtFontSize", "0");
        hands::Click(edit, "cmdOK");
        EXPECT_TRUE(edit.isVisible());
        hands::Click(edit, "cmdCancel");
    }));
    EXPECT_EQ(Messages.Texts, (QStringList{"A Value Is Missing.",
                                           "Font Size Has To Be a Whole Number from 1 to 200."}));
    EXPECT_EQ(Messages.Titles.front(), "Can't Calculate.");
    EXPECT_EQ(SummaryFontSize, 10);
}

// --- Outputs ----------------------------------------------------------------------------------

TEST_F(SummaryWindow, IsCopiedByMenuAndByKey) {
    OpenTTest();
    OpenSummary();
    for (const bool byKey : {false, true}) {
        EmptyClipboard();
        Messages.Texts.clear();
        if (byKey)
            QTest::keyClick(&Text(), Qt::Key_C, Qt::ControlModifier);
        else
            Trigger("mnuFile(10)");
        EXPECT_EQ(QString::fromStdU16String(checks::Read(ClipboardRtf()).Text),
                  ToQt(SumStatement()) + "\n");
        std::string joined = ClipboardText();
        std::ranges::replace(joined, '\n', ' ');
        EXPECT_EQ(joined, SumStatement()) << "in lines";
        EXPECT_EQ(Messages.Texts, QStringList{"Summary Has Been Copied To the Clipboard for "
                                              "Pasting Into Other Applications"});
        EXPECT_EQ(Messages.Titles.back(), "Copy");
    }
}

TEST_F(SummaryWindow, CopiesASelectionAsItIs) {
    OpenTTest();
    OpenSummary();
    Text().setFocus();
    QTest::keyClick(&Text(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Text(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(ClipboardText(), SumStatement());
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(SummaryWindow, IsSavedAndPrinted) {
    OpenTTest();
    OpenSummary();
    NameNextFile("summary");
    Trigger("mnuFile(11)");
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Summary"});
    EXPECT_EQ(ContentOf("summary.rtf"), RtfDocument(SumStatement()));
    Trigger("mnuFile(11)"); // given up
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"summary.rtf"});
    EXPECT_EQ(Cancelled, False);
    for (const bool byKey : {false, true}) {
        int pages = 0;
        hands::WhenModal("printPreview", [&pages](QWidget& preview) {
            auto* shown = preview.findChild<QPrintPreviewWidget*>();
            EXPECT_TRUE(QTest::qWaitFor([shown] { return shown->pageCount() > 0; }));
            pages = shown->pageCount();
            QTest::keyClick(&preview, Qt::Key_Escape);
        });
        if (byKey)
            PressCtrlKey(Summary(), Qt::Key_P);
        else
            Trigger("mnuFile(9)");
        EXPECT_EQ(pages, 1);
    }
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

} // namespace
} // namespace quorvanta
