// Tool tips of labels and options: the first sentence of the help.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "output/statement.h"
#include "ui/childwindow.h"
#include "ui/helptips.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QTextDocumentFragment>

namespace quorvanta {
namespace {

class HelpTips : public WindowCheck {
  protected:
    static QString Tip(const QWidget& widget) {
        return QTextDocumentFragment::fromHtml(widget.toolTip()).toPlainText();
    }
    QString OptionTip(const char* name) { return Tip(*hands::Control(Options(), name)); }
};

TEST_F(HelpTips, SayWhatAParameterIs) {
    OpenTTest();
    EXPECT_EQ(Tip(Label(1)), "The probability of rejecting H0 when the true values are those "
                             "entered for H1: 1 \u2212 \u03b2.");
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const QString tip = Tip(Label(i));
        EXPECT_FALSE(tip.isEmpty()) << ParLabel(ParKind(i));
        EXPECT_TRUE(tip.endsWith('.')) << qPrintable(tip);
        EXPECT_LT(tip.size(), 300) << qPrintable(tip);
    }
}

// A sentence ends before a number, too.
TEST_F(HelpTips, AreOneSentence) {
    EXPECT_EQ(FirstSentenceOf(64, "Error Level"),
              "The probability \u03b1 that the estimate is off by more than the error entered.");
}

TEST_F(HelpTips, SayItBesideATable) {
    Trigger("mnuFile(1)");
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "cmdOK");
    QWidget& parameters = *Window().Floating(FloatingWindow::Parameters);
    EXPECT_FALSE(Tip(*hands::Control(parameters, "lblParLabel(0)")).isEmpty());
}

TEST_F(HelpTips, SayWhatAnOptionIs) {
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(0)");
    EXPECT_EQ(OptionTip("fraSamples"), "One sample, two, or more.");
    EXPECT_EQ(OptionTip("optTails(1)"), "Showing a difference in either direction");
    EXPECT_EQ(OptionTip("chkLeftTail"),
              "Without the tick, a one-sided test rejects for large values: H1 lies above H0.");
    EXPECT_FALSE(OptionTip("chkCheck(0)").isEmpty());
    EXPECT_NE(OptionTip("chkCheck(0)"), OptionTip("chkCheck(1)"));
    // "H1:" over "Mean 2 - Mean 1"
    EXPECT_TRUE(OptionTip("optIntPar0(1)").startsWith("The true difference of the means, "));
}

// Every analysis of the menus whose options open: whatever can be ticked is explained, and so is
// every parameter of the list that follows.
TEST_F(HelpTips, AreThereForEveryAnalysis) {
    Trigger("mnuFile(0)");
    int analyses = 0;
    for (i16 menuNo = 0; menuNo <= 999; ++menuNo) {
        if (TestMenuName(menuNo).empty() || IsSimOnlyTest(TestNoOfMenu(menuNo)))
            continue;
        NewTest(menuNo);
        if (!ChoosingOptions)
            continue;
        ++analyses;
        for (i16 i = 0; i < NoOfCheck; ++i)
            EXPECT_FALSE(OptionTip(qPrintable(QString("chkCheck(%1)").arg(i)))
                             .startsWith("What the test has in store"))
                << TestName << ": " << CheckLabel(CheckList(i));
        AcceptOptions();
        for (i16 i = 0; i <= NoOfPar; ++i)
            EXPECT_FALSE(Tip(Label(i)).isEmpty()) << TestName << ": " << ParLabel(ParKind(i));
    }
    EXPECT_GT(analyses, 10);
}

// The same for the parameters of distributions.
TEST_F(HelpTips, AreThereForEveryParameterOfADistribution) {
    Trigger("mnuFile(0)");
    for (const i16 distrNo : std::initializer_list<i16>{0, 1, 2, 4, 5, 6, 8, 10})
        for (std::size_t parList = 0; parList < DistrParList(distrNo).size(); ++parList)
            for (const i16 procedure : {ProcedureTest, ProcedureEstimate, ProcedureInterval}) {
                NewDistribution(distrNo);
                ASSERT_TRUE(ChoosingOptions) << distrNo;
                ChooseParList(static_cast<i16>(parList));
                ChooseProcedure(procedure);
                AcceptOptions();
                for (i16 i = 0; i <= NoOfPar; ++i)
                    EXPECT_FALSE(Tip(Label(i)).isEmpty())
                        << ParListName << ": " << ParLabel(ParKind(i));
            }
}

TEST_F(HelpTips, AreNotMadeUp) {
    EXPECT_EQ(FirstSentenceOf(301, "No such thing"), QString());
    EXPECT_EQ(FirstSentenceOf(77777, "Power"), QString());
    QLabel label;
    label.setToolTip("old");
    Explain(label, {301, 22}, "No such thing");
    EXPECT_EQ(label.toolTip(), QString());
    EXPECT_FALSE(ExplainedKind(label).has_value());
}

// What Fisher's test is above 50 subjects stands in the head of its window.
TEST_F(HelpTips, TheHeadSaysWhatIsNotExact) {
    Trigger("mnuFile(0)");
    NewTest(100);
    AcceptOptions();
    const QString head = hands::TextOf(Child(), "lblHead1");
    EXPECT_EQ(FromQt(head), ParListName);
    const int size = PlaceOf("Sample Size &1");
    Type(size, "51");
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head) << "no result yet";
    Press(1);
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head + " " + ToQt(HeadlineNote()));
    EXPECT_TRUE(hands::TextOf(Child(), "lblHead1").contains("normal approximation"));
    Type(size, QString(400, '9')); // what no number is, isn't read for it
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head);
    Type(size, "50");
    Press(1);
    EXPECT_EQ(hands::TextOf(Child(), "lblHead1"), head);
}

} // namespace
} // namespace quorvanta
