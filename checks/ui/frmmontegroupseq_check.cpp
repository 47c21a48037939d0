// A group sequential design in the real windows: its boundaries and fractions, its stops with their
// picture, its levels and sizes.
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "output/statement.h"
#include "ui/childwindow.h"
#include "ui/invariants.h"
#include "ui/output_fixture.h"
#include "ui/plotpicture.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QTest>

#include <functional>

namespace quorvanta {
namespace {

class DesignWindows : public OutputCheck {
  protected:
    // One mean, two-sided, with so many interim analyses; the boundaries are chosen so, and the
    // fractions typed.
    void OpenDesign(int interim, std::function<void(QWidget&)> choose,
                    const QStringList& fractions) {
        Trigger("mnuFile(0)");
        Trigger("mnuGrpSeqNorm(0)");
        hands::Click(Options(), "optSamples(0)");
        hands::Click(Options(), "optTails(1)");
        hands::Click(Options(), ControlName("optInterim", interim));
        hands::WhenModal("frmBoundary", [=](QWidget& window) {
            choose(window);
            if (!window.isVisible())
                return;
            hands::WhenModal("frmGridTable", [=](QWidget& grid) { Fill(grid, fractions); });
            hands::Click(window, "cmdOK");
        });
        AcceptOptions();
        hands::Settle();
    }

    static void Fill(QWidget& grid, const QStringList& fractions) {
        QWidget* cell = hands::Control(grid, "txtText");
        for (const QString& fraction : fractions) {
            QTest::keyClicks(cell, fraction);
            QTest::keyClick(cell, Qt::Key_Return);
        }
        hands::Click(grid, "cmdOK");
    }

    static std::function<void(QWidget&)> Bound(int type) {
        return [type](QWidget& window) {
            auto& button = *hands::Control<QRadioButton>(window, ControlName("OptBoundary", type));
            QTest::mouseClick(&button, Qt::LeftButton, {},
                              {button.height() / 2, button.height() / 2});
        };
    }

    QWidget& Stops() { return *Window().Floating(FloatingWindow::SequentialMonitor); }
    QWidget& Analyses() { return *Window().Floating(FloatingWindow::InterimParameters); }
    QString Stop(const char* name, int row) {
        return hands::TextOf(Stops(), ControlName(name, row));
    }
    QImage Picture() {
        return hands::Control<PlotPicture>(Stops(), "picBoundary")->grab().toImage();
    }
};

TEST_F(DesignWindows, AskForBoundariesByName) {
    OpenDesign(1,
               [](QWidget& window) {
                   EXPECT_TRUE(window.isModal());
                   EXPECT_EQ(window.windowTitle(), "Group Sequential Designs");
                   for (i16 type = 0; type < NoOfBoundTypes; ++type)
                       EXPECT_EQ(hands::TextOf(window, ControlName("OptBoundary", type)),
                                 ToQt(BoundName(type)));
                   EXPECT_FALSE(hands::Control(window, "txtFamilyPar")->isVisible());
                   Bound(BoundWangTsiatis)(window);
                   EXPECT_TRUE(hands::Control(window, "txtFamilyPar")->isVisible());
                   EXPECT_EQ(hands::TextOf(window, "lblFamilyPar"), "Delta");
                   EXPECT_EQ(hands::TextOf(window, "txtFamilyPar"), "0.25");
                   hands::TypeInto(window, "txtFamilyPar", "7");
                   hands::Click(window, "cmdOK");
                   EXPECT_TRUE(window.isVisible()); // refused
                   hands::TypeInto(window, "txtFamilyPar", "0.3");
               },
               {"0.5"});
    EXPECT_EQ(Messages.Texts, QStringList{"Delta Must Be >= -1 and <= 1."});
    EXPECT_EQ(BoundType, BoundWangTsiatis);
    EXPECT_FLOAT_EQ(FamilyPar, 0.3F);
}

TEST_F(DesignWindows, GivenUpShowNothing) {
    OpenDesign(1, [](QWidget& window) { hands::Click(window, "cmdCancel"); }, {});
    EXPECT_FALSE(Stops().isVisible());
    EXPECT_FALSE(Analyses().isVisible());
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(DesignWindows, ShowStopsLevelsAndSizes) {
    OpenDesign(2, Bound(BoundOBrienFleming), {"0.4", "0.7"});
    Type(PlaceOf("H1: &Mean"), "0.5");
    Type(PlaceOf("&Standard Deviation"), "1");
    Type(PlaceOf("&Power"), "0.9");
    const int size = PlaceOf("Sample Si&ze");
    Press(size);
    ASSERT_TRUE(Stops().isVisible());
    EXPECT_EQ(Stops().windowTitle(), "Probabilities to Stop at Interim Analyses");
    EXPECT_EQ(Stop("lblInterimAnalysis", 0), "Interim Analysis 1");
    EXPECT_EQ(Stop("lblInterimAnalysis", 2), "Final Analysis");
    EXPECT_EQ(Stop("lblInterimAnalysis", 3), "Over-All");
    EXPECT_EQ(Stop("lblFraction", 1), "0.700");
    EXPECT_EQ(Stop("lblSignEstimate", 3), "0.0500");
    EXPECT_FALSE(hands::Control(Stops(), "lblInterimAnalysis(4)")->isVisible());
    EXPECT_EQ(hands::TextOf(Stops(), "lblSignLevel"), "Actual Significance Level");
    EXPECT_EQ(hands::TextOf(Stops(), "lblPower"), "Power");
    EXPECT_EQ(hands::TextOf(Stops(), "lblPrAccept"), "Pr(Accept H0 if H1 true)");
    EXPECT_EQ(hands::TextOf(Stops(), "lblHead1"), "Boundaries");
    EXPECT_EQ(hands::TextOf(Stops(), "lblASN"), "Average   Sample Size");
    EXPECT_EQ(hands::TextOf(Stops(), "lblH0True"), "H0 is True");
    EXPECT_EQ(hands::TextOf(Stops(), "lblH1True"), "H1 is True");
    ASSERT_TRUE(Analyses().isVisible());
    EXPECT_EQ(hands::TextOf(Analyses(), "lblAnalysis(0)"), "Interim Analysis 1");
    EXPECT_EQ(hands::TextOf(Analyses(), "txtSize1(2)"), Value(size));
    EXPECT_EQ(hands::TextOf(Analyses(), "txtRejectH0(0)"), ToQt(RejectH0Text(0)));
    EXPECT_TRUE(hands::Control<ValueBox>(Analyses(), "txtRejectH0(0)")->isReadOnly());
    EXPECT_FALSE(hands::Control(Analyses(), "txtMaxNoOfSim")->isVisible());
    EXPECT_FALSE(hands::Control(Analyses(), "txtAcceptH0(0)")->isVisible());
    EXPECT_FALSE(hands::Control(Analyses(), "txtParValue(0)")->isVisible());
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(DesignWindows, DrawTheirBoundaries) {
    OpenDesign(2, Bound(BoundOBrienFleming), {"0.4", "0.7"});
    Type(PlaceOf("H1: &Mean"), "0.5");
    Type(PlaceOf("&Standard Deviation"), "1");
    Press(PlaceOf("Sample Si&ze"));
    const QImage bounds = Picture();
    QImage blank = bounds;
    blank.fill(bounds.pixelColor(0, 0));
    EXPECT_NE(bounds, blank);
    hands::Click(Stops(), "optBoundScale(1)");
    const QImage levels = Picture();
    EXPECT_NE(levels, bounds);
    hands::Click(Stops(), "optBoundScale(0)");
    EXPECT_EQ(Picture(), bounds);
    QApplication::clipboard()->clear();
    hands::Click(Stops(), "cmdCopyPicture");
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
    NameNextFile("bounds.svg");
    hands::Click(Stops(), "cmdSavePicture");
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Stopping Boundaries"});
    EXPECT_NE(ContentOf("bounds.svg").find("<svg"), std::string::npos);
    EXPECT_NE(ContentOf("bounds.svg").find(SumStatement().substr(0, 40)), std::string::npos);
    // A design of other values has another picture.
    Type(PlaceOf("S&ignificance Level"), "0.01");
    Press(PlaceOf("Sample Si&ze"));
    EXPECT_NE(Picture(), bounds);
}

TEST_F(DesignWindows, AreBlankOnceAValueHasChanged) {
    OpenDesign(1, Bound(BoundPocock), {"0.5"});
    EXPECT_EQ(Stop("lblInterimAnalysis", 0), "Interim Analysis 1");
    EXPECT_EQ(BrokenInvariant(Window()), QString());
    Type(PlaceOf("H1: &Mean"), "0.5");
    EXPECT_EQ(Stop("lblInterimAnalysis", 0), "");
    EXPECT_EQ(Stop("lblPowerEstimate", 0), "");
    EXPECT_EQ(hands::TextOf(Analyses(), "txtSize1(0)"), "");
    EXPECT_EQ(BrokenInvariant(Window()), QString());
}

TEST_F(DesignWindows, GoWhenNothingIsFound) {
    OpenDesign(1, Bound(BoundPocock), {"0.5"});
    Type(PlaceOf("H1: &Mean"), "0.5");
    Type(PlaceOf("&Standard Deviation"), "1");
    Press(PlaceOf("Sample Si&ze"));
    EXPECT_TRUE(Stops().isVisible());
    Type(PlaceOf("H1: &Mean"), "0");
    Press(PlaceOf("Sample Si&ze"));
    EXPECT_EQ(Messages.Texts, QStringList{"Can't Be Calculated."});
    EXPECT_FALSE(Stops().isVisible());
}

TEST_F(DesignWindows, TakeLevelsOfTheUserBeforeTheyCalculate) {
    OpenDesign(1,
               [](QWidget& window) {
                   Bound(BoundUserDefined)(window);
                   hands::WhenModal("frmGridTable", [](QWidget& levels) {
                       Fill(levels, {"0.01", "1", "0.045", "1"});
                       hands::WhenModal("frmGridTable", [](QWidget& grid) { Fill(grid, {"0.5"}); });
                   });
                   hands::Click(window, "cmdOK");
               },
               {});
    ASSERT_TRUE(Analyses().isVisible());
    EXPECT_EQ(hands::TextOf(Analyses(), "txtRejectH0(0)"), "0.01");
    EXPECT_EQ(hands::TextOf(Analyses(), "lblAcceptH0"), "Accep&t H0 if p>");
    EXPECT_FALSE(Stops().isVisible());
    Type(PlaceOf("H1: &Mean"), "0.5");
    Type(PlaceOf("&Standard Deviation"), "1");
    Type(PlaceOf("Sample Si&ze"), "40");
    hands::TypeInto(Analyses(), "txtRejectH0(0)", "0.02");
    hands::Click(Analyses(), "cmdOK");
    EXPECT_TRUE(Stops().isVisible());
    EXPECT_FLOAT_EQ(LevelReject(1), 0.02F);
    EXPECT_EQ(hands::TextOf(Analyses(), "txtRejectH0(0)"), "0.02");
    EXPECT_NE(Value(PlaceOf("&Power")), "-");
    EXPECT_EQ(Messages.Texts, QStringList());
}

} // namespace
} // namespace quorvanta
