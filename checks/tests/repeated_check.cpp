// Repeated measurements: contrasts, epsilon and its bias, the errors of the three correlation
// structures, the lists, the edge cases, and what is derived from grids.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "numeric/probdist.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/tsv.h"
#include "tests/repeatedeq.h"

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

// Menu numbers.
constexpr i16 oneWithin = 20;
constexpr i16 withinAndBetween = 21;
constexpr i16 hotellingOne = 30;
constexpr i16 hotellingTwo = 31;
constexpr i16 manovaWithin = 40;
constexpr i16 manovaTwo = 41;

// Options.
constexpr i16 between = 0;
constexpr i16 within = 1;
constexpr i16 interaction = 2;
constexpr i16 compoundSymmetry = 0;
constexpr i16 autoCorrelation = 1;
constexpr i16 generalMatrix = 2;

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, separator);)
        parts.push_back(part);
    return parts;
}

// --- Contrasts
// ------------------------------------------------------------------------------------

// R. A. Fisher and F. Yates, Statistical Tables, 6th edition 1963, table XXIII.
TEST(Contrasts, AreThePublishedOrthogonalPolynomials) {
    struct Published {
        int Points;
        int Degree;
        std::vector<int> Coefficients;
    };
    const std::vector<Published> table{{2, 1, {-1, 1}},
                                       {3, 1, {-1, 0, 1}},
                                       {3, 2, {1, -2, 1}},
                                       {4, 1, {-3, -1, 1, 3}},
                                       {4, 2, {1, -1, -1, 1}},
                                       {4, 3, {-1, 3, -3, 1}},
                                       {5, 1, {-2, -1, 0, 1, 2}},
                                       {5, 2, {2, -1, -2, -1, 2}},
                                       {5, 3, {-1, 2, 0, -2, 1}},
                                       {5, 4, {1, -4, 6, -4, 1}},
                                       {6, 3, {-5, 7, 4, -4, -7, 5}},
                                       {6, 5, {-1, 5, -10, 10, -5, 1}},
                                       {7, 4, {3, -7, 1, 6, 1, -7, 3}},
                                       {8, 2, {7, 1, -3, -5, -5, -3, 1, 7}},
                                       {8, 5, {-7, 23, -17, -15, 15, 17, -23, 7}},
                                       {9, 3, {-14, 7, 13, 9, 0, -9, -13, -7, 14}},
                                       {10, 3, {-42, 14, 35, 31, 12, -12, -31, -35, -14, 42}},
                                       {10, 4, {18, -22, -17, 3, 18, 18, 3, -17, -22, 18}}};
    for (const Published& row : table) {
        Array2<f64> c;
        OrthoPolyContrasts(static_cast<i16>(row.Points), c);
        f64 squares = 0;
        for (const int coefficient : row.Coefficients)
            squares += coefficient * coefficient;
        for (int i = 1; i <= row.Points; ++i)
            EXPECT_NEAR(c(row.Degree, i),
                        row.Coefficients[static_cast<std::size_t>(i - 1)] / std::sqrt(squares),
                        1e-12)
                << row.Points << " points, degree " << row.Degree << ", point " << i;
    }
}

TEST(Contrasts, AreOrthogonalAndOfLengthOne) {
    for (i16 k = 2; k <= 10; ++k) {
        Array2<f64> c;
        OrthoPolyContrasts(k, c);
        ASSERT_EQ(c.HighBound1(), k - 1);
        ASSERT_EQ(c.HighBound2(), k);
        for (int i = 1; i < k; ++i) {
            f64 sum = 0;
            for (int x = 1; x <= k; ++x)
                sum += c(i, x);
            EXPECT_NEAR(sum, 0, 1e-12) << k << ", " << i;
            for (int j = 1; j < k; ++j) {
                f64 product = 0;
                for (int x = 1; x <= k; ++x)
                    product += c(i, x) * c(j, x);
                EXPECT_NEAR(product, i == j ? 1 : 0, 1e-12) << k << ", " << i << ", " << j;
            }
        }
    }
}

// --- Epsilon
// --------------------------------------------------------------------------------------

struct EpsilonRow {
    std::string Structure;
    i16 K;
    f32 Sd;
    f32 Rho;
    ErrorTerms Expected;
    Array2<f64> S;
};

std::vector<EpsilonRow> EpsilonRows() {
    std::vector<EpsilonRow> rows;
    for (const auto& cells : ReadTsv("epsilon.tsv")) {
        const auto single = [&cells](std::size_t i) {
            return static_cast<f32>(ParseNumber(cells[i]));
        };
        EpsilonRow row{cells[0],  static_cast<i16>(std::stoi(cells[1])),        single(2),
                       single(3), {single(4), single(5), single(6), single(7)}, {}};
        row.S.ReDim(1, row.K, 1, row.K);
        std::istringstream in(cells[8]);
        std::string cell;
        for (f64& value : row.S.Raw()) {
            in >> cell;
            value = ParseNumber(cell);
        }
        rows.push_back(row);
    }
    return rows;
}

void ExpectErrors(const ErrorTerms& errors, const ErrorTerms& expected, const std::string& where) {
    EXPECT_NEAR(errors.Within, expected.Within, 1e-5 * f64{expected.Within}) << where;
    EXPECT_NEAR(errors.Between, expected.Between, 1e-5 * f64{expected.Between}) << where;
    EXPECT_NEAR(errors.Eps, expected.Eps, 1e-5) << where;
    EXPECT_NEAR(errors.Bias, expected.Bias, 1e-4) << where;
}

TEST(Epsilon, AgreesWithAnotherProgramForAnyMatrix) {
    for (const EpsilonRow& row : EpsilonRows()) {
        ErrorTerms errors;
        RepEpsilon(row.S, row.K, errors.Eps, errors.Bias);
        errors.Within = RepErrorTerm(row.S);
        errors.Between = RepBetweenErrorTerm(row.S);
        ExpectErrors(errors, row.Expected, row.Structure + " " + std::to_string(row.K));
    }
}

TEST(Epsilon, AgreesWithAnotherProgramForBothStructures) {
    for (const EpsilonRow& row : EpsilonRows()) {
        if (row.Structure == "general")
            continue;
        const auto structure = row.Structure == "CS" ? CorrelationStructure::CompoundSymmetry
                                                     : CorrelationStructure::AutoCorrelation;
        ExpectErrors(ErrorTermsOf(structure, static_cast<f32>(row.K), row.Sd, row.Rho),
                     row.Expected, row.Structure + " " + std::to_string(row.K));
    }
}

// Not by eigenvalues, which this matrix has none of.
TEST(Epsilon, OfTwoLevelsIsOneByDefinition) {
    const f64 nan = std::nan("");
    Array2<f64> s(1, 2, 1, 2);
    for (f64& cell : s.Raw())
        cell = nan;
    f32 eps = 7;
    f32 bias = 7;
    RepEpsilon(s, 2, eps, bias);
    EXPECT_EQ(eps, 1.0F);
    EXPECT_EQ(bias, 0.0F);
}

TEST(Epsilon, StaysAsItStandsWhenCancelled) {
    Array2<f64> s;
    f32 eps = 7;
    f32 bias = 8;
    Cancelled = True;
    RepCsMatrix(4, 1, 0.3F, s, eps, bias);
    Cancelled = False;
    EXPECT_EQ(eps, 7.0F);
    EXPECT_EQ(bias, 8.0F);
    RepCsMatrix(4, 1, 0.3F, s, eps, bias);
    EXPECT_FLOAT_EQ(eps, 1.0F);
}

TEST(Epsilon, DoesNotDependOnTheUnitOfMeasurement) {
    const ErrorTerms kilograms =
        ErrorTermsOf(CorrelationStructure::AutoCorrelation, 7, 0.05F, 0.4F);
    const ErrorTerms milligrams =
        ErrorTermsOf(CorrelationStructure::AutoCorrelation, 7, 50000, 0.4F);
    EXPECT_FLOAT_EQ(milligrams.Eps, kilograms.Eps);
    EXPECT_NEAR(milligrams.Bias, kilograms.Bias, 1e-5);
}

// By hand, m = k - 1 equal eigenvalues of 1: the second derivative of epsilon is (2/m)(1/m - 1).
TEST(Epsilon, BiasOfEqualEigenvalues) {
    for (i16 k = 3; k <= 10; ++k) {
        const f64 m = k - 1;
        const ErrorTerms errors =
            ErrorTermsOf(CorrelationStructure::CompoundSymmetry, static_cast<f32>(k), 99999, 0.9F);
        EXPECT_EQ(errors.Eps, 1.0F);
        EXPECT_NEAR(errors.Bias, 2 * (1 / m - 1), 1e-5) << k;
    }
}

TEST(Epsilon, OfABrokenNumberOfLevelsLiesBetween) {
    const auto at = [](f32 k) {
        return ErrorTermsOf(CorrelationStructure::AutoCorrelation, k, 1, 0.5F);
    };
    EXPECT_FLOAT_EQ(at(4.25F).Eps, 0.75F * at(4).Eps + 0.25F * at(5).Eps);
    EXPECT_FLOAT_EQ(at(4.25F).Within, 0.75F * at(4).Within + 0.25F * at(5).Within);
    EXPECT_EQ(at(1.5F).Eps, at(2).Eps);
    EXPECT_EQ(at(11).Eps, at(10).Eps);
}

TEST(ErrorTerm, IsNoValueWithoutAPositiveVariance) {
    Array2<f64> s(1, 2, 1, 2);
    s(1, 1) = 1;
    s(2, 2) = 1;
    s(1, 2) = 2;
    s(2, 1) = 2;
    EXPECT_EQ(RepErrorTerm(s), 99999.0F);
    s(1, 2) = -2;
    s(2, 1) = -2;
    EXPECT_EQ(RepBetweenErrorTerm(s), 99999.0F);
}

TEST(Matrices, OfBothStructures) {
    Array2<f64> s;
    f32 eps = 0;
    f32 bias = 0;
    RepCsMatrix(3, 2, 0.25F, s, eps, bias);
    EXPECT_EQ(s(1, 1), 4);
    EXPECT_EQ(s(1, 3), 1);
    ErrorTerms errors;
    RepArMatrix(3, 2, -0.5F, s, errors);
    EXPECT_EQ(s(2, 2), 4);
    EXPECT_EQ(s(2, 1), -2);
    EXPECT_EQ(s(3, 1), 1);
    // Mean of the diagonal 4, of the others (-2 - 2 + 1)/3 = -1.
    EXPECT_FLOAT_EQ(errors.Within, std::sqrt(5.0F));
    EXPECT_FLOAT_EQ(errors.Between, std::sqrt(2.0F));
    RepArMatrix(3, 2, 0, s, errors);
    EXPECT_EQ(s(2, 2), 4);
    EXPECT_EQ(s(3, 1), 0);
    EXPECT_FLOAT_EQ(errors.Eps, 1);
}

// One measurement that is the sum of two others leaves no inverse.
TEST(Distance, OfASingularMatrixIsNoValue) {
    Array2<f64> x(1, 2, 1, 1);
    x(1, 1) = 1;
    x(2, 1) = 3;
    Array2<f64> s(1, 2, 1, 2);
    s(1, 1) = 2;
    s(1, 2) = s(2, 1) = 1;
    s(2, 2) = 1;
    EXPECT_DOUBLE_EQ(SquaredDistance(x, s), 13); // by hand: the inverse is 1 -1/-1 2
    s(2, 2) = 0.5;
    EXPECT_EQ(SquaredDistance(x, s), NoValue);
}

// --- Equations and their limits
// ---------------------------------------------------------------------

class Repeated : public AnalysisFixture {
  protected:
    // With nothing ticked, and all groups at their first option, whatever was chosen before.
    void OpenPlain(i16 menuNo) {
        OpenTest(menuNo);
        for (i16 i = 0; i < NoOfCheck; ++i)
            ChooseCheck(i, false);
        for (i16 i = 0; i < NoOfIntPar; ++i)
            ChooseIntPar(i, 0);
        ChooseTails(TwoSided);
    }

    void OpenCombination(i16 menuNo, i16 tails = TwoSided) {
        OpenPlain(menuNo);
        Tick(Check::LinearCombination);
        ChooseTails(tails);
    }

    void Put(i16 kind, const std::string& text) {
        Type(kind, text);
        ParValue(PositionOf(kind)) = ReadNumber(text);
    }

    static std::vector<i16> Kinds() {
        std::vector<i16> kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        return kinds;
    }

    // Power that the equation gives at what is typed.
    f64 PowerNow() {
        UnknownParNo = 1;
        return ReadNumber(Solve(Kind::Power)), ParValue(1);
    }
};

using Ks = std::vector<i16>;

TEST_F(Repeated, TheListOfOneWithinFactor) {
    for (const i16 structure : {compoundSymmetry, autoCorrelation})
        for (i16 type = 0; type <= 2; ++type) {
            OpenPlain(oneWithin);
            Pick(Group::CorrelationMatrix, structure);
            Pick(Group::EffectSize, type);
            AcceptOptions();
            const i16 effects[] = {34, 147, 148};
            EXPECT_EQ(Kinds(), (Ks{0, 1, effects[type], 2, 220, 256, 248}));
        }
    OpenPlain(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 34, 251, 249, 252, 256, 248}));
    OpenCombination(oneWithin);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 247, 137, 2, 220, 256, 248}));
    OpenCombination(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 247, 137, 256, 248}));
    OpenCombination(oneWithin, TwoOneSided);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 6, 7, 247, 137, 2, 220, 256, 248}));
}

TEST_F(Repeated, TheListOfOneWithinAndOneBetweenFactor) {
    for (const i16 tested : {between, within, interaction}) {
        OpenPlain(withinAndBetween);
        Pick(Group::TestedBetweenOrWithin, tested);
        AcceptOptions();
        EXPECT_EQ(Kinds(), (Ks{0, 1, 34, 2, 220, 238, 256, 4, 37}));
        Pick(Group::CorrelationMatrix, generalMatrix);
        Pick(Group::Size2, 2);
        AcceptOptions();
        EXPECT_EQ(Kinds(), tested == between ? (Ks{0, 1, 34, 253, 238, 256, 4, 5})
                                             : (Ks{0, 1, 34, 251, 249, 252, 238, 256, 4, 5}));
    }
    OpenCombination(withinAndBetween);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 247, 137, 2, 220, 238, 256, 326}));
}

TEST_F(Repeated, TheListsOfTheMultivariateTests) {
    const auto list = [this](i16 menuNo) {
        OpenPlain(menuNo);
        AcceptOptions();
        return Kinds();
    };
    EXPECT_EQ(list(hotellingOne), (Ks{0, 1, 254, 256, 248}));
    EXPECT_EQ(list(hotellingTwo), (Ks{0, 1, 254, 256, 4, 37}));
    EXPECT_EQ(list(manovaWithin), (Ks{0, 1, 254, 256, 248}));
    EXPECT_EQ(list(manovaTwo), (Ks{0, 1, 34, 2, 238, 320}));
    OpenPlain(manovaTwo);
    Pick(Group::TestedBetweenOrWithin, interaction);
    AcceptOptions();
    EXPECT_EQ(Kinds(), (Ks{0, 1, 254, 238, 256, 320}));
    const auto combination = [this](i16 menuNo) {
        OpenCombination(menuNo, TwoOneSided);
        AcceptOptions();
        return Kinds();
    };
    EXPECT_EQ(combination(hotellingOne), (Ks{0, 1, 6, 7, 247, 137, 256, 248}));
    EXPECT_EQ(combination(hotellingTwo), (Ks{0, 1, 6, 7, 247, 137, 256, 4, 37}));
    EXPECT_EQ(combination(manovaWithin), (Ks{0, 1, 6, 7, 247, 137, 256, 248}));
    EXPECT_EQ(combination(manovaTwo), (Ks{0, 1, 6, 7, 247, 137, 238, 256, 320}));
}

TEST_F(Repeated, TheOptionsInTheOrderOfTheWindow) {
    const auto groups = [] {
        Ks kinds;
        for (i16 i = 0; i < NoOfIntPar; ++i)
            kinds.push_back(IntParList(i));
        return kinds;
    };
    OpenPlain(oneWithin);
    EXPECT_EQ(groups(), (Ks{17, 39}));
    EXPECT_EQ(NoOfCheck, 2);
    EXPECT_EQ(CheckList(0), Check::LinearCombination);
    EXPECT_EQ(CheckList(1), Check::CovarianceMatrix);
    EXPECT_FALSE(TailsOffered(OneSided));
    OpenPlain(withinAndBetween);
    EXPECT_EQ(groups(), (Ks{43, 39, 17, 2}));
    OpenPlain(hotellingTwo);
    EXPECT_EQ(groups(), (Ks{2}));
    OpenPlain(manovaTwo);
    EXPECT_EQ(groups(), (Ks{43, 17}));
    Pick(Group::TestedBetweenOrWithin, within);
    EXPECT_EQ(groups(), (Ks{43}));
    OpenCombination(oneWithin);
    EXPECT_EQ(groups(), (Ks{39}));
    EXPECT_TRUE(TailsOffered(TwoOneSided));
    // An auto correlation says nothing of a combination's standard deviation.
    EXPECT_FALSE(IntParOptionEnabled(autoCorrelation, 0));
}

// W would be 0 and the non-centrality infinite.
TEST_F(Repeated, ACorrelationOfOneIsRefused) {
    OpenPlain(oneWithin);
    AcceptOptions();
    Type(Kind::Correlation, "1");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Messages.back().Text,
              "Correlation Coefficient Has To Be Less Than or Equal to 0.99999.");
    Type(Kind::Correlation, "0.99999");
    EXPECT_EQ(Solve(Kind::Power), "1");
}

// Where the limits are passed by: the error within is 0, and no number holds the non-centrality.
TEST_F(Repeated, ACorrelationOfOneLeavesNoErrorWithin) {
    EXPECT_EQ(ErrorTermsOf(CorrelationStructure::CompoundSymmetry, 4, 2, 1).Within, 0.0F);
    EXPECT_GT(ErrorTermsOf(CorrelationStructure::CompoundSymmetry, 4, 2, 0.99999F).Within, 0.0F);
    OpenPlain(oneWithin);
    AcceptOptions();
    ParValue(PositionOf(Kind::Correlation)) = 1;
    platform.Messages.clear();
    EXPECT_FALSE(SelCheckPar());
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Correlation Coefficient Has To Be Less Than or Equal to 0.99999."});
}

TEST_F(Repeated, ACommonCorrelationThatNoMeasurementsCanHaveIsRefused) {
    OpenPlain(oneWithin);
    AcceptOptions();
    Put(Kind::WithinLevels, "5");
    Type(Kind::Correlation, "-0.25");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Messages.back().Text,
              "Correlation Coefficient Has To Be Greater Than or Equal to -0.24999.");
    platform.Messages.clear();
    Type(Kind::Correlation, "-0.24");
    EXPECT_NE(Solve(Kind::Power), "-");
    // An auto correlation has no such limit.
    Pick(Group::CorrelationMatrix, autoCorrelation);
    AcceptOptions();
    Type(Kind::Correlation, "-0.9");
    EXPECT_NE(Solve(Kind::Power), "-");
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Repeated, TheSearchForLevelsEndsWhereTheCorrelationDoes) {
    OpenPlain(oneWithin);
    AcceptOptions();
    Put(Kind::Correlation, "-0.3");
    UnknownParNo = PositionOf(Kind::WithinLevels);
    f64 lower = 2;
    f64 upper = 10;
    SelSearchLimits(lower, upper);
    EXPECT_NEAR(upper, 1 + 1 / 0.3, 0.001);
    UnknownParNo = PositionOf(Kind::Correlation);
    Put(Kind::WithinLevels, "6");
    lower = -0.99999;
    upper = 0.99999;
    SelSearchLimits(lower, upper);
    EXPECT_NEAR(lower, -0.2, 0.0001);
}

// Without a bias the corrected epsilon is the entered one: df1 = (k - 1) eps.
TEST_F(Repeated, ABiasOfZeroLeavesEpsilonAsEntered) {
    OpenPlain(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    Put(Kind::SdOfMeans, "0.5");
    Put(Kind::WithinError, "1");
    Put(Kind::Epsilon, "0.5");
    Put(Kind::EpsilonBias, "0");
    Put(Kind::WithinLevels, "5");
    Put(Kind::SizeFrom2, "11");
    f32 df1 = 2;
    f32 df2 = 20;
    f32 lambda = 0.5F * 0.5F * 5 * 11 * 0.5F;
    const f32 critical = FInv(0.95F, df1, df2);
    EXPECT_NEAR(PowerNow(), 1 - f64{NcFCdf(critical, df1, df2, lambda)}, 1e-5);
}

// Many levels, few subjects and a large bias: no degrees of freedom below 1, no more power than the
// level where epsilon is expected below 0.
TEST_F(Repeated, DegreesOfFreedomAreOneAtLeast) {
    OpenPlain(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    Put(Kind::SdOfMeans, "5");
    Put(Kind::EpsilonBias, "-100");
    Put(Kind::WithinLevels, "10");
    Put(Kind::SizeFrom2, "2");
    EXPECT_NEAR(PowerNow(), 0.05, 0.001);
}

TEST_F(Repeated, HotellingWithNoMoreSubjectsThanVariablesIsRefused) {
    OpenPlain(hotellingOne);
    AcceptOptions();
    Put(Kind::WithinLevels, "5");
    for (const char* size : {"4", "5"}) {
        platform.Messages.clear();
        Type(Kind::SizeFrom2, size);
        EXPECT_EQ(Solve(Kind::Power), "-");
        ASSERT_EQ(platform.Messages.size(), 1U);
        EXPECT_EQ(platform.Messages.back().Text,
                  "Sample Size Has To Be Greater Than or Equal to 6.");
    }
    Type(Kind::SizeFrom2, "6");
    EXPECT_NE(Solve(Kind::Power), "-");
}

TEST_F(Repeated, HotellingWithTwoGroupsNeedsOneErrorDegreeOfFreedom) {
    OpenPlain(hotellingTwo);
    AcceptOptions();
    Put(Kind::WithinLevels, "6");
    Put(Kind::Size1, "3");
    Put(Kind::Size2, "4");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Messages.back().Text, "Sample Size 1 Has To Be Greater Than or Equal to 4.");
    Put(Kind::Size1, "4");
    EXPECT_NE(Solve(Kind::Power), "-");
    // Where the second size follows, half of what is missing is enough.
    for (const i16 form : std::initializer_list<i16>{1, 2}) {
        OpenPlain(hotellingTwo);
        Pick(Group::Size2, form);
        AcceptOptions();
        Put(Kind::WithinLevels, "6");
        Put(Kind::Size1, "3");
        Put(form == 1 ? Kind::Size2Minus1 : Kind::Size2Over1, form == 1 ? "0" : "1");
        EXPECT_EQ(Solve(Kind::Power), "-");
        EXPECT_EQ(platform.Messages.back().Text,
                  "Sample Size 1 Has To Be Greater Than or Equal to 4.");
    }
}

TEST_F(Repeated, LimitsOfACombinationHaveToBeInOrder) {
    for (const i16 menuNo :
         {oneWithin, withinAndBetween, hotellingOne, hotellingTwo, manovaWithin, manovaTwo}) {
        OpenCombination(menuNo, TwoOneSided);
        AcceptOptions();
        Put(Kind::MeanLeftLimit, "0.5");
        Put(Kind::MeanRightLimit, "-0.5");
        platform.Messages.clear();
        EXPECT_EQ(Solve(Kind::Power), "-") << menuNo;
        EXPECT_EQ(platform.Texts(),
                  std::vector<std::string>{
                      "H0: Left Equivalence Limit Has To Be Less Than or Equal to -0.5."})
            << menuNo;
        Put(Kind::MeanLeftLimit, "-0.4");
        Put(Kind::MeanRightLimit, "0.4");
    }
}

TEST_F(Repeated, AGroupThatGetsTooSmallBesideTheFirstIsRefused) {
    for (const i16 menuNo : {withinAndBetween, hotellingTwo}) {
        OpenPlain(menuNo);
        Pick(Group::Size2, 1);
        AcceptOptions();
        platform.Messages.clear();
        Put(Kind::Size1, "20");
        Put(Kind::Size2Minus1, "-18");
        EXPECT_EQ(Solve(Kind::Power), "-") << menuNo;
        EXPECT_EQ(platform.Texts(),
                  std::vector<std::string>{
                      "Sample Size 2 - Sample Size 1 Has To Be Greater Than or Equal to -17."})
            << menuNo;
    }
}

TEST_F(Repeated, RepeatedMeasurementsNeedAsManySubjectsAsLevels) {
    OpenPlain(manovaWithin);
    AcceptOptions();
    Put(Kind::WithinLevels, "6");
    Put(Kind::SizeFrom2, "5");
    EXPECT_EQ(Solve(Kind::Power), "-");
    EXPECT_EQ(platform.Messages.back().Text, "Sample Size Has To Be Greater Than or Equal to 6.");
    Put(Kind::SizeFrom2, "6");
    EXPECT_NE(Solve(Kind::Power), "-");
}

TEST_F(Repeated, TheSearchForASizeStartsWhereTheErrorHasADegreeOfFreedom) {
    const auto lowest = [this](i16 menuNo, i16 kind, i16 form = 0) {
        OpenPlain(menuNo);
        if (menuNo == hotellingTwo)
            Pick(Group::Size2, form);
        AcceptOptions();
        Put(Kind::WithinLevels, "8");
        if (form == 1)
            Put(Kind::Size2Minus1, "2");
        else if (form == 2)
            Put(Kind::Size2Over1, "4");
        else if (menuNo == hotellingTwo)
            Put(kind == Kind::Size1 ? Kind::Size2 : Kind::Size1, "3");
        UnknownParNo = PositionOf(kind);
        f64 lower = ParMin(kind);
        f64 upper = ParMax(kind);
        SelSearchLimits(lower, upper);
        return lower;
    };
    EXPECT_EQ(lowest(hotellingOne, Kind::SizeFrom2), 9);
    EXPECT_EQ(lowest(manovaWithin, Kind::SizeFrom2), 8);
    EXPECT_EQ(lowest(hotellingTwo, Kind::Size1), 7);
    EXPECT_EQ(lowest(hotellingTwo, Kind::Size2), 7);
    EXPECT_EQ(lowest(hotellingTwo, Kind::Size1, 1), 4);
    EXPECT_EQ(lowest(hotellingTwo, Kind::Size1, 2), 3);
}

TEST_F(Repeated, TheSearchForLevelsEndsWhereTheErrorHasItsLastDegreeOfFreedom) {
    const auto highest = [this](i16 menuNo) {
        OpenPlain(menuNo);
        AcceptOptions();
        Put(menuNo == hotellingTwo ? Kind::Size1 : Kind::SizeFrom2, "6");
        if (menuNo == hotellingTwo)
            Put(Kind::Size2, "3");
        UnknownParNo = PositionOf(Kind::WithinLevels);
        f64 lower = 2;
        f64 upper = 10;
        SelSearchLimits(lower, upper);
        return upper;
    };
    EXPECT_EQ(highest(hotellingOne), 5);
    EXPECT_EQ(highest(hotellingTwo), 7);
    EXPECT_EQ(highest(manovaWithin), 6);
}

// One mean 2.5 errors apart from all others, 3 subjects: scipy's power is 0.3985 with 2 levels,
// 0.642 with 6, and 0.621 with 10. Two numbers of levels have 0.63, and the larger one is found.
TEST_F(Repeated, TheLargerOfTwoNumbersOfLevelsIsFound) {
    OpenPlain(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    Pick(Group::EffectSize, 2);
    AcceptOptions();
    Put(Kind::SignificanceLevel, "0.05");
    Put(Kind::MinMeanDifference, "2.5");
    Put(Kind::WithinError, "1");
    Put(Kind::Epsilon, "1");
    Put(Kind::EpsilonBias, "0");
    Put(Kind::SizeFrom2, "3");
    Put(Kind::WithinLevels, "2");
    EXPECT_NEAR(PowerNow(), 0.3985, 0.001);
    Put(Kind::WithinLevels, "6");
    EXPECT_NEAR(PowerNow(), 0.6424, 0.001);
    Type(Kind::Power, "0.63");
    EXPECT_NE(Solve(Kind::WithinLevels), "-");
    EXPECT_NEAR(ParValue(PositionOf(Kind::WithinLevels)), 9, 0.3);
}

TEST_F(Repeated, TheMultivariateTestOfGroupsHasTwoOfThem) {
    for (const i16 tested : {between, within, interaction}) {
        OpenPlain(manovaTwo);
        Pick(Group::TestedBetweenOrWithin, tested);
        AcceptOptions();
        for (const char* levels : {"3", "5"}) {
            platform.Messages.clear();
            Type(Kind::LevelsA, levels);
            EXPECT_EQ(Solve(Kind::Power), "-");
            ASSERT_EQ(platform.Messages.size(), 1U);
            EXPECT_EQ(platform.Messages.back().Text, "No of A-factor Levels Has To Be Equal to 2.");
        }
        Type(Kind::LevelsA, "2");
        EXPECT_NE(Solve(Kind::Power), "-");
        EXPECT_EQ(Solve(Kind::LevelsA), "-") << "nothing to be found";
        EXPECT_EQ(platform.Messages.back().Text, "Can't Be Calculated.");
    }
}

TEST_F(Repeated, TheMultivariateTestOfGroupsStartsWithTwoOfThem) {
    OpenPlain(oneWithin);
    AcceptOptions();
    ParText(Kind::LevelsA) = "5";
    platform.Messages.clear();
    OpenTest(manovaTwo);
    AcceptOptions();
    EXPECT_EQ(ParText(Kind::LevelsA), "2");
    EXPECT_TRUE(platform.Messages.empty());
    // What is typed stays when the user comes back from another window.
    Type(Kind::LevelsA, "3");
    StoreAnalysis();
    LoadAnalysis();
    EXPECT_EQ(ParText(Kind::LevelsA), "3");
}

// Two groups, and all of their subjects in the degrees of freedom: never below 1.
TEST_F(Repeated, TheMultivariateTestOfTwoGroupsHasADegreeOfFreedomWithFewSubjects) {
    OpenPlain(manovaTwo);
    Pick(Group::TestedBetweenOrWithin, within);
    AcceptOptions();
    Put(Kind::LevelsA, "2");
    Put(Kind::WithinLevels, "10");
    Put(Kind::TotalSize, "4");
    f32 df1 = 9;
    f32 df2 = 1;
    f32 lambda = 0.3F;
    const f32 critical = FInv(0.95F, df1, df2);
    EXPECT_NEAR(PowerNow(), 1 - f64{NcFCdf(critical, df1, df2, lambda)}, 1e-5);
}

// Derived with them, but entered by itself: its power tells nothing about them.
TEST_F(Repeated, WhatACombinationIsDerivedWithCantBeFoundFromItsPower) {
    OpenCombination(oneWithin);
    AcceptOptions();
    EXPECT_NE(Solve(Kind::Power), "-");
    for (const i16 kind : {Kind::Sd, Kind::Correlation, Kind::WithinLevels}) {
        EXPECT_EQ(Solve(kind), "-");
        EXPECT_EQ(platform.Messages.back().Text, "Can't Be Calculated.");
        Type(kind, kind == Kind::WithinLevels ? "5" : "0.3");
    }
}

// In two groups the first is compared with the others as in an analysis of variance.
TEST_F(Repeated, TheGroupsOfThreeShareTheSecondSize) {
    OpenPlain(withinAndBetween);
    AcceptOptions();
    Put(Kind::SignificanceLevel, "0.05");
    Put(Kind::SdOfMeans, "0.5");
    Put(Kind::Sd, "1");
    Put(Kind::Correlation, "0.5");
    Put(Kind::LevelsA, "3");
    Put(Kind::WithinLevels, "4");
    Put(Kind::Size1, "6");
    Put(Kind::Size2, "12");
    f32 df1 = 2;
    f32 df2 = 27;
    f32 lambda = 30 * 4 * 0.25F / 2.5F;
    const f32 critical = FInv(0.95F, df1, df2);
    EXPECT_NEAR(PowerNow(), 1 - f64{NcFCdf(critical, df1, df2, lambda)}, 1e-5);
}

// --- Statements
// -------------------------------------------------------------------------------------

TEST_F(Repeated, Statements) {
    const auto expect = [](const std::string& part) {
        EXPECT_NE(SumStatement().find(part), std::string::npos) << SumStatement();
    };
    OpenPlain(oneWithin);
    AcceptOptions();
    Solve(Kind::Power);
    expect(
        "The test used is ANOVA Repeated Measures, One within factor test with compound symmetry "
        "at the ");
    expect("the null hypothesis H0: standard deviation of means = 0 (equal means) against H1: ");
    OpenPlain(withinAndBetween);
    Pick(Group::TestedBetweenOrWithin, interaction);
    AcceptOptions();
    Solve(Kind::Power);
    expect("H0: standard deviation of means = 0 (no interaction AxB) against H1: ");
    Pick(Group::TestedBetweenOrWithin, between);
    Pick(Group::CorrelationMatrix, autoCorrelation);
    AcceptOptions();
    Solve(Kind::Power);
    expect("One within, one between factor test with auto correlation at the ");
    expect("(no effect of between factor A) against H1: ");
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    Solve(Kind::Power);
    expect("One within, one between factor test at the ");
    expect("the assumption that the between error term is 0.3");
    OpenPlain(hotellingTwo);
    AcceptOptions();
    Solve(Kind::Power);
    expect("H0: Mahalanobis distance = 0 (equal means) against H1: Mahalanobis distance = ");
    OpenPlain(manovaTwo);
    Pick(Group::TestedBetweenOrWithin, within);
    AcceptOptions();
    Type(Kind::LevelsA, "2");
    Solve(Kind::Power);
    expect("H0: Mahalanobis distance = 0 (no effect of within factor B) against H1: ");
    OpenCombination(manovaWithin, OneSided);
    AcceptOptions();
    Solve(Kind::Power);
    expect("One within factor test of a linear combination, one-sided, at the significance level");
    expect("H0: mean of c1x1+...+ckxk = 0 against H1: mean of c1x1+...+ckxk = ");
    OpenCombination(hotellingOne, TwoOneSided);
    AcceptOptions();
    Type(Kind::ContrastMean, "0");
    Solve(Kind::Power);
    expect("H0: non-equivalence, with left equivalence limit = -0.4 and right equivalence limit = "
           "0.4, against H1: mean of c1x1+...+ckxk = 0 (equivalence)");
}

// --- Grids
// ------------------------------------------------------------------------------------------

class RepeatedGrids : public Repeated {
  protected:
    // The user fills the next grid so.
    void Plan(const GridRowTexts& rows) {
        platform.GridFillings.emplace_back([this, rows] {
            shown.push_back(CurrentGrid().Title);
            EXPECT_EQ(CurrentGrid().Rows, static_cast<i16>(rows.size())) << CurrentGrid().Title;
            EXPECT_EQ(CurrentGrid().Columns, static_cast<i16>(rows.front().size()))
                << CurrentGrid().Title;
            return FillCurrentGrid(rows);
        });
    }

    void PlanText(const std::string& grids) {
        for (const std::string& grid : Split(grids, '|')) {
            GridRowTexts rows;
            for (const std::string& row : Split(grid, '/'))
                rows.push_back(Split(row, ' '));
            Plan(rows);
        }
    }

    // The first grid that the value derives from, as it is asked for; the user leaves it.
    Grid FirstGridOf(i16 kind) {
        Grid first;
        platform.GridFillings.emplace_back([&first] {
            first = CurrentGrid();
            return false;
        });
        GetFromTable(PositionOf(kind));
        EXPECT_TRUE(platform.GridFillings.empty());
        return first;
    }

    std::vector<std::string> shown; // titles
};

TEST_F(RepeatedGrids, DeriveWhatAnotherProgramDerives) {
    for (const auto& row : ReadTsv("repeated_grids.tsv")) {
        const std::string name = row[0] + ", menu " + row[1] + ", asked for " + row[5];
        OpenPlain(static_cast<i16>(std::stoi(row[1])));
        for (const std::string& check : Split(row[3], ','))
            Tick(static_cast<i16>(std::stoi(check)));
        for (const std::string& group : Split(row[2], ','))
            Pick(static_cast<i16>(std::stoi(Split(group, '=')[0])),
                 static_cast<i16>(std::stoi(Split(group, '=')[1])));
        AcceptOptions();
        for (const std::string& value : Split(row[4], ';'))
            Type(static_cast<i16>(std::stoi(Split(value, '=')[0])), Split(value, '=')[1]);
        platform.Messages.clear();
        PlanText(row[6]);
        const i16 asked = PositionOf(static_cast<i16>(std::stoi(row[5])));
        EXPECT_TRUE(IsBluePar(asked)) << name;
        GetFromTable(asked);
        EXPECT_TRUE(platform.Messages.empty()) << name << ": " << platform.Messages.back().Text;
        EXPECT_TRUE(platform.GridFillings.empty()) << name;
        platform.GridFillings.clear();
        for (const std::string& value : Split(row[7], ';')) {
            const i16 kind = static_cast<i16>(std::stoi(Split(value, '=')[0]));
            const f64 expected = ParseNumber(Split(value, '=')[1]);
            ASSERT_GE(PositionOf(kind), 0) << name;
            EXPECT_NEAR(ReadNumber(ParText(kind)), expected, 2e-6 * std::abs(expected) + 2e-6)
                << name << ", " << kind;
            EXPECT_TRUE(IsBluePar(PositionOf(kind))) << name << ", " << kind;
        }
    }
}

TEST_F(RepeatedGrids, AskForCorrelationsAndDeviationsOrForCovariances) {
    OpenPlain(oneWithin);
    Pick(Group::CorrelationMatrix, generalMatrix);
    AcceptOptions();
    Put(Kind::WithinLevels, "2");
    PlanText("1 0.5/0.5 1|1/2");
    GetFromTable(PositionOf(Kind::WithinError));
    EXPECT_EQ(shown, (std::vector<std::string>{"Correlation Matrix", "Standard Deviation"}));
    shown.clear();
    Tick(Check::CovarianceMatrix);
    AcceptOptions();
    PlanText("4 1/1 9");
    GetFromTable(PositionOf(Kind::Epsilon));
    EXPECT_EQ(shown, (std::vector<std::string>{"Covariance Matrix"}));
}

TEST_F(RepeatedGrids, HeadsAndTitles) {
    OpenPlain(withinAndBetween);
    AcceptOptions();
    Put(Kind::LevelsA, "2");
    Put(Kind::WithinLevels, "3");
    platform.GridFillings.emplace_back([] {
        const Grid& grid = CurrentGrid();
        EXPECT_EQ(grid.Title, "Mean Matrix, AxB");
        EXPECT_EQ(GridHeadOf(grid.ColumnHeads, 3, 2), "B 2");
        EXPECT_EQ(GridHeadOf(grid.RowHeads, 2, 1), "A 1");
        return false;
    });
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_TRUE(platform.GridFillings.empty());
}

TEST_F(RepeatedGrids, StartWithWhatIsKnown) {
    const auto firstGrid = [this](i16 menuNo) {
        OpenPlain(menuNo);
        AcceptOptions();
        Put(Kind::WithinLevels, "3");
        return FirstGridOf(Kind::MahalanobisDistance);
    };
    // Of one group the means under H0 are 0 unless others are entered.
    const Grid oneGroup = firstGrid(hotellingOne);
    EXPECT_EQ(GridHeadOf(oneGroup.RowHeads, 2, 1), "H0: Mean");
    EXPECT_EQ(GridHeadOf(oneGroup.RowHeads, 2, 2), "H1: Mean");
    EXPECT_EQ(oneGroup.Start, "0");
    const Grid twoGroups = firstGrid(hotellingTwo);
    EXPECT_EQ(GridHeadOf(twoGroups.RowHeads, 2, 1), "Group 1");
    EXPECT_EQ(GridHeadOf(twoGroups.RowHeads, 2, 2), "Group 2");
    EXPECT_EQ(twoGroups.Start, "");
    EXPECT_EQ(twoGroups.ColumnHeads, "Within Factor Level");
}

TEST_F(RepeatedGrids, AMatrixIsSymmetricAndOfCorrelationsHasOnesOnItsDiagonal) {
    const auto matrix = [this](bool ofCovariances) {
        OpenPlain(oneWithin);
        Pick(Group::CorrelationMatrix, generalMatrix);
        if (ofCovariances)
            Tick(Check::CovarianceMatrix);
        AcceptOptions();
        Put(Kind::WithinLevels, "3");
        return FirstGridOf(Kind::WithinError);
    };
    EXPECT_TRUE(matrix(false).Symmetric);
    EXPECT_EQ(matrix(false).Diagonal, "1");
    EXPECT_TRUE(matrix(true).Symmetric);
    EXPECT_EQ(matrix(true).Diagonal, "");
}

// Before its number of groups is refused by the equation.
TEST_F(RepeatedGrids, ACombinationOfTwoGroupsHasTwoOfThem) {
    OpenCombination(manovaTwo);
    AcceptOptions();
    Put(Kind::LevelsA, "3");
    platform.Messages.clear();
    GetFromTable(PositionOf(Kind::ContrastMean));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"No of A-factor Levels Has To Be Less Than or Equal to 2."});
    Type(Kind::LevelsA, "2");
}

TEST_F(RepeatedGrids, ACorrelationBeyondOneIsToldByItsCell) {
    OpenPlain(hotellingOne);
    Tick(Check::CovarianceMatrix);
    AcceptOptions();
    Put(Kind::WithinLevels, "2");
    Plan({{"0", "0"}, {"1", "1"}});
    platform.GridFillings.emplace_back([] { return FillCurrentGrid({{"4", "3"}, {"3", "1"}}); });
    const std::string before = ParText(Kind::MahalanobisDistance);
    GetFromTable(PositionOf(Kind::MahalanobisDistance));
    EXPECT_EQ(platform.Messages.back().Text,
              "Invalid Covariance Matrix. Correlation Coefficient (1, 2 ) Will Be 1.5");
    EXPECT_EQ(ParText(Kind::MahalanobisDistance), before);
}

TEST_F(RepeatedGrids, ADeviationHasToBePositive) {
    OpenPlain(manovaWithin);
    AcceptOptions();
    Put(Kind::WithinLevels, "2");
    Plan({{"0", "1"}});
    Plan({{"1", "0.5"}, {"0.5", "1"}});
    platform.GridFillings.emplace_back([] { return FillCurrentGrid({{"1"}, {"0"}}); });
    GetFromTable(PositionOf(Kind::MahalanobisDistance));
    EXPECT_EQ(platform.Messages.back().Text, "Standard Deviation in Cell  (2,1)  Must Be > 0.");
}

TEST_F(RepeatedGrids, LevelsThatVaryHaveNoGrid) {
    platform.WindowKinds.push_back(TableWindow);
    OpenTest(oneWithin);
    for (i16 i = 0; i < NoOfCheck; ++i)
        ChooseCheck(i, false);
    AcceptOptions();
    UnknownParNo = 1;
    XParNo = PositionOf(Kind::WithinLevels);
    GetFromTable(PositionOf(Kind::SdOfMeans));
    ASSERT_FALSE(platform.Messages.empty());
    EXPECT_EQ(platform.Messages.back().Text,
              "Can't Be Calculated When No of Within Factor Levels Is the X-, Y-, or Z-axis.");
}

// A combination of equally correlated measurements is derived with their standard deviation.
TEST_F(RepeatedGrids, ADeviationThatVariesDerivesNoCombination) {
    platform.WindowKinds.push_back(TableWindow);
    OpenTest(oneWithin);
    Tick(Check::LinearCombination);
    Pick(Group::CorrelationMatrix, compoundSymmetry);
    AcceptOptions();
    UnknownParNo = 1;
    XParNo = PositionOf(Kind::Correlation);
    GetFromTable(PositionOf(Kind::ContrastSd));
    ASSERT_FALSE(platform.Messages.empty());
    EXPECT_EQ(platform.Messages.back().Text,
              "Can't Be Calculated When Correlation Coefficient Is the X-, Y-, or Z-axis.");
}

TEST_F(RepeatedGrids, ACombinationWithoutCoefficientsHasNoDeviation) {
    OpenCombination(oneWithin);
    AcceptOptions();
    Put(Kind::WithinLevels, "2");
    Plan({{"0", "0"}});
    Plan({{"1", "2"}});
    GetFromTable(PositionOf(Kind::ContrastSd));
    EXPECT_EQ(platform.Messages.back().Text,
              "Std.Dev. of c1X1+...+ckXk Can't Be Calculated from These Tables.");
}

} // namespace
} // namespace quorvanta::checks
