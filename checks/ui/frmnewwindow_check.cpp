// The question for the kind of a new window.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/records.h"
#include "ui/frmnewwindow.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QTest>

namespace quorvanta {
namespace {

class NewWindowQuestion : public WindowCheck {
  protected:
    // Chooses the unpaired t-test while no window is open, and answers the question.
    void Ask(std::function<void(QWidget&)> answer) {
        bool asked = false;
        hands::WhenModal("frmNewWindow", [&asked, answer = std::move(answer)](QWidget& question) {
            asked = true;
            answer(question);
        });
        Trigger("mnuStudent(0)");
        EXPECT_TRUE(asked);
    }
};

TEST_F(NewWindowQuestion, HasItsTexts) {
    Ask([](QWidget& question) {
        EXPECT_EQ(hands::Control<QGroupBox>(question, "Frame1")->title(),
                  "Open a new window for calculations");
        EXPECT_EQ(hands::TextOf(question, "optWindow(0)"),
                  "New &Calculation. Calculate one parameter value at a time.");
        EXPECT_EQ(hands::TextOf(question, "optWindow(1)"),
                  "New &Table. Tabulate the values of one parameter for different values of two "
                  "other parameters.");
        EXPECT_EQ(hands::TextOf(question, "optWindow(2)"),
                  "New &Graph.Plot the values of one parameter for different values of two other "
                  "parameters.");
        EXPECT_EQ(hands::TextOf(question, "optWindow(3)"),
                  "New &Monte Carlo Simulation. Calculate the power and significance level by "
                  "Monte Carlo simulation with or without interim analyses.");
        EXPECT_EQ(hands::TextOf(question, "cmdCont"), "&Continue");
        EXPECT_EQ(hands::TextOf(question, "cmdCancel"), "C&ancel");
        EXPECT_TRUE(question.isModal());
        for (int i = 0; i <= 3; ++i) {
            const QString name = ControlName("optWindow", i);
            EXPECT_EQ(hands::Control<QAbstractButton>(question, name)->isChecked(), i == 0);
            EXPECT_TRUE(hands::Control(question, name)->isEnabled() || i == SimulationWindow);
        }
        hands::Click(question, "cmdCancel");
    });
}

TEST_F(NewWindowQuestion, OpensACalculationAndGoesOnToTheOptions) {
    Ask([](QWidget& question) { hands::Click(question, "cmdCont"); });
    EXPECT_EQ(CurrentWindowKind(), CalculationWindow);
    EXPECT_TRUE(Options().isVisible());
    EXPECT_EQ(TestName, "Student's t-test, Unpaired");
}

TEST_F(NewWindowQuestion, EndsTheChoiceOnCancel) {
    Ask([](QWidget& question) { hands::Click(question, "cmdCancel"); });
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_EQ(Cancelled, False);
    EXPECT_FALSE(Options().isVisible());
    EXPECT_TRUE(Area().subWindowList().isEmpty());
}

TEST_F(NewWindowQuestion, CancelsWithEscAndWithTheCloseBox) {
    Ask([](QWidget& question) { QTest::keyClick(&question, Qt::Key_Escape); });
    EXPECT_EQ(AnalysisNo, 0);
    Ask([](QWidget& question) { question.close(); });
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_FALSE(Options().isVisible());
}

TEST_F(NewWindowQuestion, IsAnsweredByKeysAlone) {
    Ask([](QWidget& question) {
        QTest::keyClick(&question, Qt::Key_G, Qt::AltModifier);
        const auto* graph = hands::Control<QAbstractButton>(question, "optWindow(2)");
        EXPECT_TRUE(QTest::qWaitFor([graph] { return graph->isChecked(); }));
        QTest::keyClick(&question, Qt::Key_Escape);
    });
    Ask([](QWidget& question) { QTest::keyClick(&question, Qt::Key_Return); });
    EXPECT_EQ(CurrentWindowKind(), CalculationWindow);
}

TEST_F(NewWindowQuestion, OpensASimulation) {
    hands::WhenModal("frmNewWindow", [](QWidget& question) {
        hands::Click(question, "optWindow(3)");
        hands::Click(question, "cmdCont");
    });
    Trigger("mnuMW(0)");
    EXPECT_EQ(CurrentWindowKind(), SimulationWindow);
    EXPECT_TRUE(Options().isVisible());
    EXPECT_EQ(TestNo, 41);
}

TEST_F(NewWindowQuestion, OffersNoSimulationWhereThereIsNone) {
    frmNewWindow question(&Window(), false);
    EXPECT_FALSE(hands::Control(question, "optWindow(3)")->isEnabled());
    EXPECT_TRUE(hands::Control(question, "optWindow(0)")->isEnabled());
}

TEST_F(NewWindowQuestion, DoesNotAskWhenAWindowIsOpen) {
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(0)");
    EXPECT_TRUE(Options().isVisible());
    EXPECT_EQ(Area().subWindowList().size(), 1);
}

} // namespace
} // namespace quorvanta
