// Shift models: the lists of the dialog, its fields and messages, the table of distributions, the
// functionals.
//
// The probabilities of checks/data/shift_models.tsv are quadratures of scipy, as
// checks/reference/rank.py forms them.
#include "core/analysis_state.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/randdist.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/tsv.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace quorvanta::checks {
namespace {

constexpr i16 TestOfMannWhitney = 41;
constexpr i16 TestOfSiegelTukey = 45;
constexpr i16 TestOfKolmogorovSmirnov = 109;

class ShiftModel : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        IsTest = True;
        TestNo = TestOfMannWhitney;
    }

    // The user does this in the next step of the dialog, and accepts.
    void Plan(std::function<void()> act = [] {}) {
        platform.DistrChoices.emplace_back([act = std::move(act)] {
            act();
            return AcceptShift() == ShiftRefused::Nothing;
        });
    }
    void PlanDistr(i16 code, const std::string& par1, const std::string& par2) {
        Plan([=] {
            ChooseCode(code);
            ShiftParText(0) = par1;
            ShiftParText(1) = par2;
        });
    }

    static void ChooseCode(i16 code) {
        for (i16 i = 0; i <= static_cast<i16>(ShiftList.HighBound()); ++i)
            if (ShiftList(i) == code)
                return ChooseShiftDistr(i);
        FAIL() << code << " is not offered";
    }

    // What the dialog looks like while it is shown; then it is cancelled.
    void Look(DistrList list, const std::function<void()>& look) {
        platform.DistrChoices.emplace_back([look] {
            look();
            return false;
        });
        EXPECT_FALSE(ShowDistributions(list));
    }

    static std::vector<i16> Codes() { return {ShiftList.Raw().begin(), ShiftList.Raw().end()}; }
    static std::pair<std::string, std::string> FieldsOf(i16 code) {
        ChooseCode(code);
        return {std::string(ShiftFieldCaption(0)), std::string(ShiftFieldCaption(1))};
    }
    using Pair = std::pair<std::string, std::string>;

    static void Select(i16 code, f32 par1, f32 par2) {
        SimDistrNo = code;
        ShiftPar1 = par1;
        ShiftPar2 = par2;
    }
};

// --- Lists and fields ----------------------------------------------------------------------------

TEST_F(ShiftModel, Lists) {
    using Codes_ = std::vector<i16>;
    Look(DistrList::ShiftModels, [] {
        EXPECT_EQ(ShiftCaption(), "Shift Models F [(x - m)/s]");
        EXPECT_EQ(ShiftFamily, 1);
        EXPECT_EQ(Codes(), (Codes_{0, 1, 2, 3, 4, 6, 9}));
        EXPECT_EQ(ShiftHeading(), "Alternative Distribution (H1:)");
        EXPECT_EQ(ShiftOkCaption(), "&OK");
    });
    Look(DistrList::GeneralModels, [] {
        EXPECT_EQ(ShiftCaption(), "General Models F[x,m,s]");
        EXPECT_EQ(ShiftFamily, 1);
        EXPECT_EQ(Codes(), (Codes_{0, 1, 2, 3, 4, 5, 6, 15, 8, 9}));
    });
    Look(DistrList::Symmetric, [] {
        EXPECT_EQ(ShiftCaption(), "Symmetric Distributions");
        EXPECT_EQ(ShiftFamily, 2);
        EXPECT_EQ(Codes(), (Codes_{0, 1, 3, 4, 6}));
    });
    Look(DistrList::ScaleShape, [] {
        EXPECT_EQ(ShiftCaption(), "Scale/Shape Distributions");
        EXPECT_EQ(ShiftFamily, 3);
        EXPECT_EQ(Codes(), (Codes_{2, 5, 10, 8}));
    });
    Look(DistrList::Discrete, [] {
        EXPECT_EQ(ShiftCaption(), "Discrete Distributions");
        EXPECT_EQ(ShiftFamily, 4);
        EXPECT_EQ(Codes(), (Codes_{11, 12, 13}));
    });
}

// Weibull is a general model, but none of the shift models.
TEST_F(ShiftModel, WeibullIsAGeneralModelOnly) {
    Look(DistrList::ShiftModels, [] { EXPECT_EQ(std::ranges::count(Codes(), SimWeibull), 0); });
    Look(DistrList::GeneralModels, [] { EXPECT_EQ(std::ranges::count(Codes(), SimWeibull), 1); });
}

TEST_F(ShiftModel, Names) {
    const char* names[] = {"Uniform",     "Normal",        "Exponential",    "Laplace",
                           "Cauchy",      "Weibull",       "Logistic",       "Piecewise",
                           "Lognormal",   "Extreme Value", "Gamma",          "Binomial",
                           "Multinomial", "Poisson",       "Hypergeometric", "Chi-square"};
    for (i16 code = 0; code < 16; ++code)
        EXPECT_EQ(SimDistrName(code), std::string(names[code]) + " Distribution");
    EXPECT_EQ(SimDistrName(-1), "");
    EXPECT_EQ(SimDistrName(16), "");
}

TEST_F(ShiftModel, Fields) {
    Look(DistrList::GeneralModels, [] {
        for (const i16 code : {SimUniform, SimNormal, SimExponential, SimLaplace, SimCauchy,
                               SimLogistic, SimExtremeValue}) {
            EXPECT_EQ(FieldsOf(code), (Pair{"Location (m)", "Scale (s)"}));
            EXPECT_EQ(ShiftNoOfPar, 2);
        }
        EXPECT_EQ(FieldsOf(SimWeibull), (Pair{"Shape (g)", "Scale (s)"}));
        EXPECT_EQ(FieldsOf(SimLognormal), (Pair{"Shape (1/s)", "Scale (exp(m))"}));
        EXPECT_EQ(ShiftNoOfPar, 2);
        EXPECT_EQ(FieldsOf(SimChi2), (Pair{"Degree of Freedom", ""}));
        EXPECT_EQ(ShiftNoOfPar, 1);
    });
    Look(DistrList::Symmetric, [] {
        for (const i16 code : {SimUniform, SimNormal, SimLaplace, SimCauchy, SimLogistic})
            EXPECT_EQ(FieldsOf(code), (Pair{"Median (m)", "Scale (s)"}));
    });
    Look(DistrList::Discrete, [] {
        EXPECT_EQ(FieldsOf(SimBinomial), (Pair{"N", "Prop. p"}));
        EXPECT_EQ(FieldsOf(SimMultinomial), (Pair{"No of Categ.", ""}));
        EXPECT_EQ(FieldsOf(SimPoisson), (Pair{"Mean m", ""}));
        EXPECT_EQ(ShiftNoOfPar, 1);
    });
}

// No parameter of the exponential distribution is read in that list, nor any of gamma and
// lognormal.
TEST_F(ShiftModel, ShapesOfItsOwnTestHaveNoFields) {
    Look(DistrList::ScaleShape, [] {
        EXPECT_EQ(FieldsOf(SimWeibull), (Pair{"Shape Par.", ""}));
        EXPECT_EQ(ShiftNoOfPar, 1);
        for (const i16 code : {SimExponential, SimGamma, SimLognormal}) {
            EXPECT_EQ(FieldsOf(code), Pair());
            EXPECT_EQ(ShiftNoOfPar, 0);
        }
    });
    PlanDistr(SimExponential, "7", "8");
    EXPECT_TRUE(ShowDistributions(DistrList::ScaleShape));
    EXPECT_EQ(ShiftPar1, 0);
    EXPECT_EQ(ShiftPar2, 1);
}

TEST_F(ShiftModel, OnlySomeTestsAskForParameters) {
    for (const i16 testNo : std::initializer_list<i16>{25, 31, 41, 51, 52, 106, 107, 108, 109, 111,
                                                       113, 202, 203, 331}) {
        TestNo = testNo;
        Look(DistrList::ShiftModels, [] {
            EXPECT_EQ(FieldsOf(SimNormal), (Pair{"Location (m)", "Scale (s)"}));
        });
    }
    for (const i16 testNo : std::initializer_list<i16>{43, 44, 45, 47, 49, 110, 112}) {
        TestNo = testNo;
        Look(DistrList::ShiftModels, [] { EXPECT_EQ(FieldsOf(SimNormal), Pair()); });
    }
}

TEST_F(ShiftModel, ADistributionThatIsNotInTheListHasNoButton) {
    SimDistrNo = SimNormal;
    Look(DistrList::Discrete, [] {
        EXPECT_EQ(ShiftButton(), -1);
        EXPECT_EQ(ShiftNoOfPar, 0);
        EXPECT_TRUE(ShiftCurves().empty());
        EXPECT_EQ(AcceptShift(), ShiftRefused::Buttons);
    });
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"No Distribution Is Chosen."});
}

// --- Messages ------------------------------------------------------------------------------------

TEST_F(ShiftModel, RefusesWhatIsNoDistribution) {
    struct Case {
        i16 Code;
        const char* Par1;
        const char* Par2;
        ShiftRefused Refused;
        const char* Message;
    };
    const Case cases[] = {
        {SimNormal, "1", "0", ShiftRefused::Field2, "Scale Must Be > 0."},
        {SimLognormal, "1", "-2", ShiftRefused::Field2, "Scale Must Be > 0."},
        {SimWeibull, "0", "1", ShiftRefused::Field1, "Shape g Must Be > 0."},
        {SimWeibull, "0", "0", ShiftRefused::Field2, "Scale Must Be > 0."},
        {SimChi2, "1", "", ShiftRefused::Field1, "Degrees of Freedom Must Be Integer >= 2."},
        {SimChi2, "2.5", "", ShiftRefused::Field1, "Degrees of Freedom Must Be Integer >= 2."},
        {SimNormal, "", "1", ShiftRefused::Field1, "A Value Is Missing."},
        {SimNormal, "1", "-", ShiftRefused::Field2, "A Value Is Missing."},
    };
    for (const Case& row : cases) {
        platform.Messages.clear();
        Look(DistrList::GeneralModels, [&row] {
            ChooseCode(row.Code);
            ShiftParText(0) = row.Par1;
            ShiftParText(1) = row.Par2;
            EXPECT_EQ(AcceptShift(), row.Refused);
            EXPECT_EQ(ShiftOK, False);
        });
        ASSERT_EQ(platform.Texts(), std::vector<std::string>{row.Message});
        EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
    }
    Look(DistrList::GeneralModels, [] {
        ChooseCode(SimChi2);
        ShiftParText(0) = "2";
        EXPECT_EQ(AcceptShift(), ShiftRefused::Nothing) << "the least degrees of freedom";
    });
}

TEST_F(ShiftModel, RefusesANumberThatIsTooLarge) {
    for (const std::string& number : {std::string(50, '9'), std::string(400, '9')}) {
        platform.Messages.clear();
        Look(DistrList::ShiftModels, [&number] {
            ShiftParText(0) = number;
            EXPECT_EQ(AcceptShift(), ShiftRefused::Field1);
        });
        EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Location (m) Is Too Large."});
    }
}

// A scale counts only where it is asked for.
TEST_F(ShiftModel, ChecksNothingThatIsNotAskedFor) {
    TestNo = TestOfSiegelTukey;
    Look(DistrList::ShiftModels, [] {
        ShiftParText(1) = "0";
        EXPECT_EQ(AcceptShift(), ShiftRefused::Nothing);
    });
    EXPECT_TRUE(platform.Messages.empty());
}

// --- The table of distributions ------------------------------------------------------------------

TEST_F(ShiftModel, OneStepMakesOneRow) {
    EXPECT_EQ(NoOfDistr(), 0);
    EXPECT_THROW(Distr(1), RunTimeError);
    PlanDistr(SimLogistic, "2", "3");
    EXPECT_TRUE(ShowDistributions(DistrList::ShiftModels));
    ASSERT_EQ(NoOfDistr(), 1);
    EXPECT_EQ(DistrLabel(1), "H1: ");
    EXPECT_EQ(Distr(1), (DistrRow{SimLogistic, 2, 3}));
    PlanDistr(SimUniform, "0", "1");
    EXPECT_TRUE(ShowDistributions(DistrList::ShiftModels));
    ASSERT_EQ(NoOfDistr(), 1) << "the former row goes";
    EXPECT_EQ(Distr(1), (DistrRow{SimUniform, 0, 1}));
}

TEST_F(ShiftModel, TwoStepsAreForBothHypotheses) {
    TestNo = TestOfKolmogorovSmirnov;
    Plan([] {
        EXPECT_EQ(ShiftHeading(), "Null Distribution (H0:)");
        EXPECT_EQ(ShiftOkCaption(), "&Next");
        ChooseCode(SimNormal);
        ShiftParText(0) = "0";
        ShiftParText(1) = "1";
        EXPECT_EQ(ShiftCurves().size(), 1U);
        EXPECT_EQ(ShiftCurves().front().Label, "H0");
    });
    Plan([] {
        EXPECT_EQ(ShiftHeading(), "Alternative Distribution (H1:)");
        EXPECT_EQ(ShiftOkCaption(), "&OK");
        EXPECT_EQ(SimDistrNo, SimNormal) << "starts with what was chosen for H0";
        ChooseCode(SimCauchy);
        ShiftParText(0) = "0.5";
        EXPECT_EQ(ShiftCurves().size(), 2U);
    });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(DistrLabel(1), "H0: ");
    EXPECT_EQ(DistrLabel(2), "H1: ");
    EXPECT_EQ(Distr(1), (DistrRow{SimNormal, 0, 1}));
    EXPECT_EQ(Distr(2), (DistrRow{SimCauchy, 0.5F, 1}));

    // The second time each step shows its own choice.
    Plan([] {
        EXPECT_EQ(SimDistrNo, SimNormal);
        EXPECT_EQ(ShiftParText(0), "0");
    });
    Plan([] {
        EXPECT_EQ(SimDistrNo, SimCauchy);
        EXPECT_EQ(ShiftParText(0), "0.5");
    });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));
    EXPECT_EQ(Distr(1), (DistrRow{SimNormal, 0, 1}));
    EXPECT_EQ(Distr(2), (DistrRow{SimCauchy, 0.5F, 1}));
}

// H0 is not shifted, and H1 is shifted against it; a shape is not a location.
TEST_F(ShiftModel, TwoStepsStartAShiftApart) {
    TestNo = TestOfKolmogorovSmirnov;
    Plan([] {
        EXPECT_EQ(ShiftHeading(), "Null Distribution (H0:)");
        EXPECT_EQ(ShiftParText(0), "0");
        EXPECT_EQ(ShiftParText(1), "1");
    });
    Plan([] { EXPECT_EQ(ShiftParText(0), "0.3"); });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));
    EXPECT_EQ(Distr(1), (DistrRow{SimNormal, 0, 1}));
    EXPECT_EQ(Distr(2), (DistrRow{SimNormal, 0.3F, 1}));

    ClearDistrRows();
    PlanDistr(SimLaplace, "2", "1.5");
    Plan([] {
        EXPECT_EQ(SimDistrNo, SimLaplace);
        EXPECT_EQ(ShiftParText(0), "2.3");
        EXPECT_EQ(ShiftParText(1), "1.5");
    });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));

    ClearDistrRows();
    PlanDistr(SimWeibull, "2", "1");
    Plan([] { EXPECT_EQ(ShiftParText(0), "2") << "the shape of H0"; });
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels, 2));
}

TEST_F(ShiftModel, ACancelLeavesEverythingAsItWas) {
    TestNo = TestOfKolmogorovSmirnov;
    PlanDistr(SimLaplace, "1", "2");
    EXPECT_TRUE(ShowDistributions(DistrList::GeneralModels));
    PlanDistr(SimNormal, "5", "6");
    platform.DistrChoices.emplace_back([] {
        ChooseCode(SimUniform);
        return false;
    });
    EXPECT_FALSE(ShowDistributions(DistrList::GeneralModels, 2));
    EXPECT_EQ(SimDistrNo, SimLaplace);
    EXPECT_EQ(ShiftPar1, 1);
    EXPECT_EQ(ShiftPar2, 2);
    ASSERT_EQ(NoOfDistr(), 1);
    EXPECT_EQ(Distr(1), (DistrRow{SimLaplace, 1, 2}));
}

TEST_F(ShiftModel, TheChoiceIsShownAgain) {
    Look(DistrList::ShiftModels, [] {
        EXPECT_EQ(SimDistrNo, SimNormal);
        EXPECT_EQ(ShiftParText(0), "0.3") << "the start values";
        EXPECT_EQ(ShiftParText(1), "1");
    });
    PlanDistr(SimExtremeValue, "-0.25", "1.5");
    EXPECT_TRUE(ShowDistributions(DistrList::ShiftModels));
    SimDistrNo = SimNormal; // another analysis
    Look(DistrList::ShiftModels, [] {
        EXPECT_EQ(ShiftButton(), 6);
        EXPECT_EQ(ShiftParText(0), "-0.25");
        EXPECT_EQ(ShiftParText(1), "1.5");
    });
}

TEST_F(ShiftModel, TheNullHasNoShift) {
    SetNullFromShift();
    SetNullFromScale();
    EXPECT_EQ(NoOfDistr(), 0) << "without a row there is nothing to copy";
    Select(SimLogistic, 2, 3);
    StoreDistrRow(1);
    SetNullFromShift();
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(1), (DistrRow{SimLogistic, 0, 3}));
    EXPECT_EQ(Distr(2), (DistrRow{SimLogistic, 2, 3}));
    SetNullFromShift();
    EXPECT_EQ(Distr(2), (DistrRow{SimLogistic, 2, 3})) << "a second time changes nothing";
    EXPECT_EQ(DistrLabel(1), "H0: ");
    EXPECT_EQ(DistrLabel(2), "H1: ");
}

TEST_F(ShiftModel, TheNullHasScale1) {
    Select(SimLaplace, 2, 3);
    StoreDistrRow(1);
    SetNullFromScale();
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(1), (DistrRow{SimLaplace, 2, 1}));
    EXPECT_EQ(Distr(2), (DistrRow{SimLaplace, 2, 3}));
    ClearDistrRows();
    EXPECT_EQ(NoOfDistr(), 0);
}

TEST_F(ShiftModel, Texts) {
    EXPECT_EQ(DistrText(0.5F, 1, SimNormal), "Normal Distribution, m = 0.5, s = 1");
    EXPECT_EQ(DistrText(2, 3, SimWeibull), "Weibull Distribution, g = 2, s = 3");
    EXPECT_EQ(DistrText(2, 3, SimLognormal), "Lognormal Distribution, 1/s = 2, exp(m) = 3");
    EXPECT_EQ(DistrText(4, 1, SimChi2), "Chi-square Distribution, Degree of Freedom = 4");
    EXPECT_EQ(DistrText(10, 0.25F, SimBinomial), "Binomial Distribution, N = 10, p = 0.25");
    EXPECT_EQ(DistrText(3, 1, SimMultinomial), "Multinomial Distribution, No of Categ. = 3");
    EXPECT_EQ(DistrText(3, 1, SimPoisson), "Poisson Distribution, m = 3");
    EXPECT_EQ(DistrText(0, 1, SimGamma), "Gamma Distribution");
}

// The table is part of the record, and so of the file.
TEST_F(ShiftModel, TheTableBelongsToTheAnalysis) {
    FileCommand(CalculationWindow);
    Select(SimCauchy, 1, 2);
    StoreDistrRow(1);
    SetNullFromShift();
    StoreAnalysis();
    ClearDistrRows();
    LoadAnalysis();
    ASSERT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(Distr(1), (DistrRow{SimCauchy, 0, 2}));
    EXPECT_EQ(Distr(2), (DistrRow{SimCauchy, 1, 2}));
    SimDistrOption(1) = 99; // no distribution, out of a damaged file
    EXPECT_EQ(NoOfDistr(), 0);
}

// --- Curves --------------------------------------------------------------------------------------

f64 AreaOf(const DistrCurve& curve) {
    f64 area = 0;
    for (std::size_t i = 1; i < curve.Points.size(); ++i) {
        const auto& [x0, y0] = curve.Points[i - 1];
        const auto& [x1, y1] = curve.Points[i];
        area += (x1 - x0) * (y0 + y1) / 2;
    }
    return area;
}

// Every curve encloses nearly all of its probability.
TEST_F(ShiftModel, CurvesAreDensities) {
    for (const DistrList list :
         {DistrList::ShiftModels, DistrList::GeneralModels, DistrList::Symmetric}) {
        Look(list, [list] {
            for (const i16 code : Codes()) {
                ChooseCode(code);
                ShiftParText(0) = "2";
                ShiftParText(1) = "1.5";
                const auto curves = ShiftCurves();
                ASSERT_EQ(curves.size(), list == DistrList::GeneralModels ? 1U : 2U) << code;
                EXPECT_EQ(curves.back().Label, "H1");
                const f64 heavyTails = code == SimCauchy ? 0.16 : 0.03;
                for (const DistrCurve& curve : curves) {
                    EXPECT_FALSE(curve.IsDiscrete);
                    EXPECT_NEAR(AreaOf(curve), 1, heavyTails) << code << curve.Label;
                }
            }
        });
    }
}

TEST_F(ShiftModel, CurvesOfCountsAreProbabilities) {
    Look(DistrList::Discrete, [] {
        for (const i16 code : {SimBinomial, SimPoisson}) {
            ChooseCode(code);
            ShiftParText(0) = "12";
            ShiftParText(1) = "0.25";
            const auto curves = ShiftCurves();
            ASSERT_EQ(curves.size(), 1U);
            EXPECT_TRUE(curves.front().IsDiscrete);
            f64 sum = 0;
            for (const auto& [x, probability] : curves.front().Points)
                sum += probability;
            EXPECT_NEAR(sum, 1, 1e-3) << code;
        }
        ChooseCode(SimMultinomial);
        EXPECT_TRUE(ShiftCurves().empty());
    });
}

TEST_F(ShiftModel, WhatIsNoDistributionHasNoCurve) {
    Look(DistrList::GeneralModels, [] {
        for (const i16 code : Codes())
            for (const char* par1 : {"", "-", "0", "-1", "0.0001", "1000000", "1"})
                for (const char* par2 : {"", "0", "-1", "0.00001", "1"}) {
                    ChooseCode(code);
                    ShiftParText(0) = par1;
                    ShiftParText(1) = par2;
                    for (const DistrCurve& curve : ShiftCurves())
                        for (const auto& [x, y] : curve.Points)
                            EXPECT_TRUE(std::isfinite(x) && std::isfinite(y) && y >= 0)
                                << code << " " << par1 << " " << par2;
                    const std::string scale = par2;
                    const bool isNone = scale.empty() || scale == "0" || scale == "-1";
                    EXPECT_TRUE(code == SimChi2 || !isNone || ShiftCurves().empty());
                }
    });
}

// --- Functionals ---------------------------------------------------------------------------------

// Exact within what holds probabilities in their range, and NorCdf's own error.
TEST_F(ShiftModel, ProbabilitiesAgreeWithQuadrature) {
    constexpr f64 error = 1.05e-5;
    for (const auto& row : ReadTsv("shift_models.tsv")) {
        const f32 shift = static_cast<f32>(ParseNumber(row[1]));
        Select(static_cast<i16>(std::stoi(row[0])), shift, 1);
        const std::string what = SimDistrName(SimDistrNo) + " shifted by " + row[1];
        EXPECT_NEAR(f64{PrMWFromShift()}, ParseNumber(row[2]), error) << what;
        if (row[3] == "-")
            continue;
        EXPECT_NEAR(f64{PrSignFromShift()}, ParseNumber(row[3]), error) << what;
        EXPECT_NEAR(f64{PrSignedRankFromShift().P1}, ParseNumber(row[3]), error) << what;
        EXPECT_NEAR(f64{PrSignedRankFromShift().P2}, ParseNumber(row[4]), error) << what;
    }
}

TEST_F(ShiftModel, OnlyTheShiftInScalesCounts) {
    Select(SimLaplace, 3, 4);
    const f32 scaled = PrMWFromShift();
    Select(SimLaplace, 0.75F, 1);
    EXPECT_EQ(PrMWFromShift(), scaled);
}

TEST_F(ShiftModel, ProbabilitiesStayWithinTheirRange) {
    Select(SimUniform, 1, 1);
    EXPECT_EQ(PrMWFromShift(), 0.99999F);
    Select(SimUniform, -1, 1);
    EXPECT_EQ(PrMWFromShift(), 1e-5F);
    Select(SimUniform, 0.5F, 1);
    EXPECT_EQ(PrSignFromShift(), 0.99999F);
    EXPECT_EQ(PrSignedRankFromShift().P2, 0.99999F);
    Select(SimUniform, -0.5F, 1);
    EXPECT_EQ(PrSignFromShift(), 1e-5F);
    EXPECT_EQ(PrSignedRankFromShift().P1, 1e-5F);
    EXPECT_EQ(PrSignedRankFromShift().P2, 1e-5F);
    for (const i16 code : {SimUniform, SimNormal, SimExponential, SimLaplace, SimCauchy,
                           SimLogistic, SimExtremeValue})
        for (const f32 par1 : {-3e38F, 3e38F}) {
            Select(code, par1, 1e-38F);
            const f32 edge = par1 > 0 ? 0.99999F : 1e-5F;
            EXPECT_EQ(PrMWFromShift(), edge) << code;
        }
}

TEST_F(ShiftModel, NoShiftIsAHalf) {
    for (const i16 code : {SimUniform, SimNormal, SimExponential, SimLaplace, SimCauchy,
                           SimLogistic, SimExtremeValue}) {
        Select(code, 0, 2);
        EXPECT_EQ(PrMWFromShift(), 0.5F) << code;
        EXPECT_EQ(PrSignFromShift(), 0.5F) << code;
        EXPECT_EQ(PrSignedRankFromShift().P2, 0.5F) << code;
    }
}

TEST_F(ShiftModel, FunctionalsNeedAScale) {
    for (const f32 scale : {0.0F, -1.0F}) {
        const std::function<void()> functionals[] = {
            [] { PrMWFromShift(); }, [] { PrSignFromShift(); }, [] { PrSignedRankFromShift(); }};
        for (const auto& functional : functionals) {
            Select(SimNormal, 1, scale);
            Cancelled = False;
            platform.Messages.clear();
            functional();
            EXPECT_EQ(Cancelled, True);
            EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Scale Must Be > 0."});
            EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
        }
    }
    Cancelled = False;
}

// Exchanging the groups turns the probability round.
TEST_F(ShiftModel, MirrorImages) {
    for (const i16 code : {SimUniform, SimNormal, SimExponential, SimLaplace, SimCauchy,
                           SimLogistic, SimExtremeValue})
        for (f32 d = 0.001F; d < 6; d *= 1.7F) {
            Select(code, d, 1);
            const f64 right{PrMWFromShift()};
            Select(code, -d, 1);
            EXPECT_NEAR(f64{PrMWFromShift()}, 1 - right, 3e-7) << code << " " << d;
        }
}

} // namespace
} // namespace quorvanta::checks
