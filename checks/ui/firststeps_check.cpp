// "Getting started", played as a newcomer does: what the page says of each window is what it shows.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "generator/topic.h"
#include "ui/childwindow.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"
#include "ui/run_fixture.h"
#include "ui/valuebox.h"

#include <QTextEdit>

#include <cmath>

namespace quorvanta {
namespace {

class FirstSteps : public OutputCheck {
  protected:
    static const std::string& Page() {
        static const std::string text = help::ReadTopics(HELP_DIR "/topics").at(10).Text;
        return text;
    }
    // The page says that, over whatever lines.
    static void ExpectSaid(const std::string& words) {
        EXPECT_TRUE(ToQt(Page()).simplified().contains(ToQt(words))) << words;
    }

    void ChooseOptions() {
        hands::Click(Options(), "optIntPar0(1)");
        hands::Click(Options(), "optIntPar1(2)");
        AcceptOptions();
    }
    // The row of a label as it is read.
    static int RowOf(const std::string& label) {
        for (i16 i = 0; i <= NoOfPar; ++i)
            if (StripAmpersand(ParLabel(ParKind(i))) == label)
                return i;
        ADD_FAILURE() << "no label " << label;
        return 0;
    }
    void TypeFor(const std::string& label, const QString& text) { Type(RowOf(label), text); }
    QString Pressed(const std::string& label) {
        Press(RowOf(label));
        return Value(RowOf(label));
    }
    void Calculate() {
        Trigger("mnuFile(0)");
        Trigger("mnuStudent(0)");
        ChooseOptions();
        TypeFor("Significance Level", "0.05");
        TypeFor("Power", "0.80");
        TypeFor("H0: Mean 2 - Mean 1", "0");
        TypeFor("H1: Mean 2 - Mean 1", "10");
        TypeFor("Standard Deviation", "20");
        TypeFor("Sample Size 2 / Sample Size 1", "1");
        ASSERT_EQ(Pressed("Sample Size 1"), "64");
    }
};

TEST_F(FirstSteps, AnswerBothQuestions) {
    Calculate();
    ExpectSaid("Its box shows 64");
    TypeFor("Sample Size 1", "50");
    EXPECT_EQ(Pressed("H1: Mean 2 - Mean 1").left(5), "11.32");
    ExpectSaid("box shows 11.32");
}

TEST_F(FirstSteps, EndInAStatementAndAPicture) {
    Calculate();
    Trigger("mnuGetInfo(3)");
    QWidget& summary = *Window().Floating(FloatingWindow::Summary);
    ASSERT_TRUE(summary.isVisible());
    const QString text =
        hands::Control<QTextEdit>(summary, "txtSummary")->toPlainText().simplified();
    ExpectSaid(FromQt(text));
    Trigger("mnuGetInfo(4)");
    EXPECT_TRUE(Window().Floating(FloatingWindow::DistrGraph)->isVisible());
}

TEST_F(FirstSteps, KeepTheAnalysis) {
    Calculate();
    NameNextFile("first.dim");
    Trigger("mnuFile(7)");
    CloseChild();
    NameNextFile("first.dim");
    Trigger("mnuFile(5)");
    EXPECT_EQ(Value(RowOf("Sample Size 1")), "64");
    EXPECT_EQ(Value(RowOf("Standard Deviation")), "20");
}

class FirstTable : public RunCheck {};

TEST_F(FirstTable, HasTheRowsOfThePage) {
    OpenRunWindow(NewTable);
    AskForSizes("0.80", "5", "20", "5", "20");
    const std::string page = help::ReadTopics(HELP_DIR "/topics").at(10).Text;
    ASSERT_EQ(TableX.HighBound(), 4);
    for (int k = 1; k <= 4; ++k) {
        const int x = qRound(TableX(k));
        const int size = static_cast<int>(std::ceil(TableY(k, 1) - 1e-5F));
        const std::string row = "\n| " + std::to_string(x) + " | " + std::to_string(size) + " |\n";
        EXPECT_NE(page.find(row), std::string::npos) << row;
    }
}

} // namespace
} // namespace quorvanta
