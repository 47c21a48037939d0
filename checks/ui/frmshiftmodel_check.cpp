// The choice of a distribution in the real window: lists, fields, the picture, refusals.
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/randdist.h"
#include "ui/distrpicture.h"
#include "ui/invariants.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QApplication>
#include <QFont>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <functional>

namespace quorvanta {
namespace {

constexpr int order = 2; // the position of P(X < Y) in the list of the Mann-Whitney test

class ShiftWindow : public WindowCheck {
  protected:
    ShiftWindow() { OpenContinuous(); }

    void OpenContinuous() {
        Trigger("mnuFile(0)");
        Trigger("mnuMW(0)");
        AcceptOptions();
    }

    // The user does this in the next dialog; it is cancelled unless he accepts.
    void When(std::function<void(QWidget&)> act) {
        hands::WhenModal("frmShiftModel", [this, act = std::move(act)](QWidget& dialog) {
            window_ = &dialog;
            EXPECT_EQ(BrokenShiftModel(dialog), QString());
            act(dialog);
            if (!dialog.isVisible())
                return;
            EXPECT_EQ(BrokenShiftModel(dialog), QString());
            hands::Click(dialog, "cmdCancel");
        });
    }

    void OpenBlue(int box = order) { QTest::keyClick(&Box(box), Qt::Key_F2); }

    QStringList Buttons() {
        QStringList texts;
        for (int i = 0; i < 10; ++i) {
            const auto& button =
                *hands::Control<QRadioButton>(*window_, ControlName("OptDistribution", i));
            if (button.isVisible())
                texts << button.text();
        }
        return texts;
    }
    QRadioButton& Button(int i) {
        return *hands::Control<QRadioButton>(*window_, ControlName("OptDistribution", i));
    }
    // A radio button is pressed at its circle: beside the text it may be wider than both.
    void Choose(int i) {
        QTest::mouseClick(&Button(i), Qt::LeftButton, {},
                          {Button(i).height() / 2, Button(i).height() / 2});
    }
    ValueBox& Field(int i) {
        return *hands::Control<ValueBox>(*window_, ControlName("txtDistrPar", i));
    }
    void TypeField(int i, const QString& text) {
        hands::TypeInto(*window_, ControlName("txtDistrPar", i), text);
    }
    QString Caption(int i) { return hands::TextOf(*window_, ControlName("lblDistrPar", i)); }
    DistrPicture& Picture() { return *hands::Control<DistrPicture>(*window_, "picDistr"); }
    QImage Drawn() { return Picture().grab().toImage(); }

    QWidget* window_ = nullptr;
};

TEST_F(ShiftWindow, NamesWhatIsChosen) {
    When([this](QWidget& dialog) {
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(dialog.windowTitle(), "Shift Models F [(x - m)/s]");
        EXPECT_EQ(hands::TextOf(dialog, "lblH1"), "Alternative Distribution (H1:)");
        EXPECT_EQ(hands::TextOf(dialog, "cmdOK"), "&OK");
        EXPECT_EQ(hands::TextOf(dialog, "cmdCancel"), "&Cancel");
        EXPECT_EQ(Buttons(), (QStringList{"Uniform Distribution", "Normal Distribution",
                                          "Exponential Distribution", "Laplace Distribution",
                                          "Cauchy Distribution", "Logistic Distribution",
                                          "Extreme Value Distribution"}));
        EXPECT_TRUE(Button(1).isChecked());
        EXPECT_TRUE(Button(1).hasFocus());
        EXPECT_EQ(Caption(0), "Location (m)");
        EXPECT_EQ(Caption(1), "Scale (s)");
        EXPECT_EQ(Field(0).text(), "0.3");
        EXPECT_EQ(Field(1).text(), "1");
        EXPECT_EQ(Field(0).accessibleName(), "Location (m)");
    });
    OpenBlue();
    EXPECT_EQ(Messages.Texts, QStringList());
}

TEST_F(ShiftWindow, PutsTheProbabilityIntoTheBox) {
    When([this](QWidget& dialog) {
        Choose(5);
        TypeField(0, "1.2");
        hands::Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    OpenBlue();
    EXPECT_EQ(Value(order).left(6), "0.6908"); // rank.py
    EXPECT_EQ(SimDistrNo, SimLogistic);
    // The second time it shows the choice.
    When([this](QWidget& dialog) {
        EXPECT_TRUE(Button(5).isChecked());
        EXPECT_EQ(Field(0).text(), "1.2");
        TypeField(0, "0");
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible()) << "Enter is OK";
    });
    OpenBlue();
    EXPECT_EQ(Value(order), "0.5");
}

TEST_F(ShiftWindow, ACancelChangesNothing) {
    const QString before = Value(order);
    for (const bool byKey : {false, true}) {
        When([this, byKey](QWidget& dialog) {
            Choose(0);
            TypeField(0, "0.7");
            if (byKey)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                hands::Click(dialog, "cmdCancel");
            EXPECT_FALSE(dialog.isVisible());
        });
        OpenBlue();
        EXPECT_EQ(Value(order), before);
        EXPECT_EQ(SimDistrNo, SimNormal);
        EXPECT_EQ(NoOfDistr(), 0);
        EXPECT_EQ(Cancelled, False);
    }
}

TEST_F(ShiftWindow, StaysOpenWithWhatIsRefused) {
    When([this](QWidget& dialog) {
        TypeField(1, "0");
        hands::Click(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(Field(1).hasFocus());
        EXPECT_EQ(Field(1).selectedText(), "0");
        EXPECT_EQ(Field(1).palette().color(QPalette::Base), RefusedColor);
        EXPECT_TRUE(Field(1).accessibleDescription().contains("refused"));
        TypeField(1, "2");
        EXPECT_NE(Field(1).palette().color(QPalette::Base), RefusedColor);
        TypeField(0, "-");
        hands::Click(dialog, "cmdOK");
        EXPECT_TRUE(Field(0).hasFocus());
    });
    OpenBlue();
    EXPECT_EQ(Messages.Texts, (QStringList{"Scale Must Be > 0.", "A Value Is Missing."}));
    EXPECT_EQ(Messages.LastIcon, QMessageBox::Warning);
}

TEST_F(ShiftWindow, RefusesALetterAndTakesAComma) {
    When([this](QWidget& dialog) {
        TypeField(0, "1,5x");
        EXPECT_EQ(Field(0).text(), "1,5");
        hands::Click(dialog, "OptDistribution(1)");
        Field(1).setFocus();
        EXPECT_EQ(Field(0).text(), "1.5") << "the comma is a point once the field is left";
        hands::Click(dialog, "cmdOK");
    });
    OpenBlue();
    EXPECT_EQ(Messages.Texts, QStringList{"x   Is Not Allowed. Must Be a Digit."});
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(2).Par1, 1.5F);
}

TEST_F(ShiftWindow, DrawsBothHypotheses) {
    When([this](QWidget&) {
        EXPECT_EQ(Picture().accessibleDescription(), "H0, H1");
        const QImage narrow = Drawn();
        TypeField(0, "2");
        EXPECT_NE(Drawn(), narrow) << "the shift is seen at once";
        const QImage normal = Drawn();
        Choose(2);
        EXPECT_NE(Drawn(), normal);
        TypeField(1, "-");
        EXPECT_TRUE(Picture().Curves().empty());
        EXPECT_EQ(Picture().accessibleDescription(), "nothing to be drawn");
        TypeField(1, "1");
        EXPECT_EQ(Picture().Curves().size(), 2U);
    });
    OpenBlue();
}

TEST_F(ShiftWindow, IsLegibleOnDarkPaper) {
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    When([this](QWidget&) { EXPECT_LT(Drawn().pixelColor(3, 3).lightness(), 128); });
    OpenBlue();
    QApplication::setPalette(usual);
}

TEST_F(ShiftWindow, TextsAreNotCutInLargeType) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    QApplication::setFont(large);
    When([this](QWidget& dialog) {
        for (int i = 0; i < 7; ++i)
            EXPECT_GE(Button(i).width(), Button(i).sizeHint().width());
        for (const auto* label : dialog.findChildren<QLabel*>())
            EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
    });
    OpenBlue();
    QApplication::setFont(usual);
}

// The other lists, one and two steps; no test asks for these in this window yet, so they are asked
// for here.
TEST_F(ShiftWindow, ShowsEveryList) {
    struct Case {
        DistrList List;
        const char* Caption;
        int Buttons;
    };
    constexpr i16 kolmogorovSmirnov = 109;
    TestNo = kolmogorovSmirnov;
    for (const Case& list : {Case{DistrList::GeneralModels, "General Models F[x,m,s]", 10},
                             Case{DistrList::Symmetric, "Symmetric Distributions", 5},
                             Case{DistrList::ScaleShape, "Scale/Shape Distributions", 4},
                             Case{DistrList::Discrete, "Discrete Distributions", 3}}) {
        When([&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), list.Caption);
            EXPECT_EQ(Buttons().size(), list.Buttons);
            for (int i = 0; i < list.Buttons; ++i) {
                Choose(i);
                EXPECT_TRUE(Button(i).isChecked());
                EXPECT_EQ(BrokenShiftModel(dialog), QString());
                EXPECT_EQ(Field(0).isVisible(), ShiftNoOfPar > 0);
                EXPECT_EQ(Field(1).isVisible(), ShiftNoOfPar > 1);
            }
        });
        EXPECT_FALSE(ShowDistributions(list.List));
    }
}

TEST_F(ShiftWindow, LeadsFromH0ToH1) {
    constexpr i16 kolmogorovSmirnov = 109;
    TestNo = kolmogorovSmirnov;
    When([this](QWidget& dialog) {
        EXPECT_EQ(hands::TextOf(dialog, "lblH1"), "Null Distribution (H0:)");
        EXPECT_EQ(hands::TextOf(dialog, "cmdOK"), "&Next");
        Choose(5);
        EXPECT_EQ(Caption(0), "Shape (g)");
        TypeField(0, "2");
        When([this](QWidget& second) {
            EXPECT_EQ(hands::TextOf(second, "lblH1"), "Alternative Distribution (H1:)");
            EXPECT_EQ(hands::TextOf(second, "cmdOK"), "&OK");
            EXPECT_TRUE(Button(5).isChecked());
            TypeField(0, "3");
            EXPECT_EQ(Picture().Curves().size(), 2U);
            hands::Click(second, "cmdOK");
        });
        hands::Click(dialog, "cmdOK");
    });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(1), (DistrRow{SimWeibull, 2, 1}));
    EXPECT_EQ(Distr(2), (DistrRow{SimWeibull, 3, 1}));
}

// What an earlier test left is not among the counts.
TEST_F(ShiftWindow, ADistributionThatIsNotOfferedIsNotChosen) {
    When([this](QWidget& dialog) {
        for (int i = 0; i < 3; ++i)
            EXPECT_FALSE(Button(i).isChecked());
        EXPECT_FALSE(Field(0).isVisible());
        hands::Click(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_FALSE(ShowDistributions(DistrList::Discrete));
    EXPECT_EQ(Messages.Texts, QStringList{"No Distribution Is Chosen."});
}

// Both boxes of the signed ranks, by a double click and by Ctrl+Z.
TEST_F(ShiftWindow, GivesBothProbabilitiesOfSignedRanks) {
    Trigger("mnuNonParTest(360)");
    AcceptOptions();
    constexpr int above0 = 2;
    constexpr int sumAbove0 = 3;
    Type(above0, "0.9");
    Type(sumAbove0, "0.95");
    When([this](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Symmetric Distributions");
        EXPECT_EQ(Caption(0), "Median (m)");
        EXPECT_EQ(Buttons().size(), 5);
        Choose(1);
        TypeField(0, "0.5");
        hands::Click(dialog, "cmdOK");
    });
    OpenBlue(sumAbove0);
    EXPECT_EQ(Value(above0).left(6), "0.6914");
    EXPECT_EQ(Value(sumAbove0).left(6), "0.7602");
    Trigger("mnuStepBack");
    EXPECT_EQ(Value(above0), "0.9");
    EXPECT_EQ(Value(sumAbove0), "0.95");
}

} // namespace
} // namespace quorvanta
