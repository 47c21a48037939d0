// The Distribution Graph window: what it shows, its options, its dialog, and how it goes out.
#include "core/analysis_state.h"
#include "output/distrplot.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace quorvanta {
namespace {

class DistrGraphWindow : public OutputCheck {
  protected:
    void OpenGraph() {
        OpenTTest();
        Trigger("mnuGetInfo(4)");
        ASSERT_TRUE(IsOpen("frmDistrGraph"));
    }
    QWidget& Graph() { return Top("frmDistrGraph"); }
    QRadioButton& Option(DistrPlotKind kind) {
        return *hands::Control<QRadioButton>(Graph(), ControlName("optPlotDistr", kind));
    }
    QImage Picture() { return hands::Control(Graph(), "picDistrGraph")->grab().toImage(); }
};

TEST_F(DistrGraphWindow, ShowsTheStatisticOfATest) {
    OpenGraph();
    EXPECT_EQ(Graph().windowTitle(), "Distribution Graph");
    EXPECT_FALSE(Option(SurvivalPlot).isVisible());
    EXPECT_EQ(Option(CdfPlot).text(), "Distribution Function");
    EXPECT_EQ(Option(DensityPlot).text(), "Probability Function");
    EXPECT_EQ(Option(HazardPlot).text(), "Hazard Function");
    EXPECT_TRUE(Option(DensityPlot).isChecked());
    EXPECT_EQ(hands::TextOf(Graph(), "cmdEdit"), "&Edit");
    EXPECT_EQ(FromQt(hands::Control(Graph(), "picDistrGraph")->accessibleDescription()),
              DistrGraphInWords());
    QTest::keyClick(&Graph(), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen("frmDistrGraph"));
}

TEST_F(DistrGraphWindow, EachOptionIsAnotherPicture) {
    OpenGraph();
    const QImage density = Picture();
    hands::Click(Graph(), ControlName("optPlotDistr", CdfPlot));
    EXPECT_EQ(DistrGraphStyle, CdfPlot);
    const QImage cdf = Picture();
    EXPECT_NE(cdf, density);
    hands::Click(Graph(), ControlName("optPlotDistr", HazardPlot));
    EXPECT_NE(Picture(), cdf);
    hands::Click(Graph(), ControlName("optPlotDistr", DensityPlot));
    EXPECT_EQ(Picture(), density);
}

TEST_F(DistrGraphWindow, ClosesWhenItsResultIsStale) {
    ExpectClosesWhenStale("frmDistrGraph", "mnuGetInfo(4)");
}

TEST_F(DistrGraphWindow, IsEditedInItsDialog) {
    OpenGraph();
    const QImage before = Picture();
    bool seen = false;
    hands::WhenModal("frmEditGraph", [&seen](QWidget& edit) {
        seen = true;
        EXPECT_EQ(hands::Control<QLineEdit>(edit, "txtXLabel")->text(), "Test Statistic (t)");
        hands::TypeInto(edit, "txtXmax", "10");
        hands::Click(edit, "cmdOK");
    });
    hands::Click(Graph(), "cmdEdit");
    EXPECT_TRUE(seen);
    EXPECT_EQ(DistrGraph().XAxis(2), "10");
    EXPECT_NE(Picture(), before);
}

// From its own button and from the menu, which names it.
TEST_F(DistrGraphWindow, IsCopiedAsAPicture) {
    OpenGraph();
    EmptyClipboard();
    hands::Click(Graph(), "cmdCopy");
    EXPECT_EQ(Messages.Texts, QStringList{"Distribution Graph Has Been Copied To the Clipboard for "
                                          "Pasting Into Other Applications"});
    EXPECT_FALSE(QApplication::clipboard()->image().isNull());
    EmptyClipboard();
    NameNextFile("curves");
    Trigger("mnuFile(11)");
    EXPECT_EQ(ContentOf("curves.bmp").substr(0, 2), "BM");
}

} // namespace
} // namespace quorvanta
