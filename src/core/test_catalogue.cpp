// What holds for which tests and distributions.
#include "core/analysis_state.h"
#include "core/catalogue.h" // IWYU pragma: associated
#include "core/fault.h"

#include <algorithm>

namespace quorvanta {

namespace {

struct Numbers {
    i16 First;
    i16 Last;
};

template <std::size_t Count>
bool IsIn(const Numbers (&sets)[Count], i16 number) {
    return std::ranges::any_of(
        sets, [number](const Numbers& set) { return set.First <= number && number <= set.Last; });
}

// By test number.
constexpr Numbers SimOnlyTests[] = {{32, 35},   {43, 49},   {85, 104},  {111, 113},
                                    {138, 145}, {183, 187}, {331, 331}, {377, 377}};
constexpr Numbers SurvivalGraphTests[] = {{26, 35},   {37, 37},   {85, 104},
                                          {127, 127}, {202, 205}, {331, 331}};
constexpr Numbers DiscreteTests[] = {{41, 41}, {51, 52}, {107, 107}, {109, 109}, {111, 111}};
constexpr Numbers EventTimeTests[] = {{26, 35},  {37, 38},   {57, 57},   {77, 77},   {84, 84},
                                      {85, 104}, {127, 127}, {183, 183}, {202, 205}, {331, 331}};
constexpr Numbers PairedTests[] = {{1, 1}, {20, 20}, {120, 122}};

// By menu number.
constexpr Numbers NoSimulationMenus[] = {
    {11, 21},   {30, 31},   {40, 41},   {112, 113}, {171, 171}, {180, 181}, {190, 191},
    {230, 231}, {240, 241}, {301, 301}, {400, 401}, {410, 410}, {470, 471}, {510, 515},
    {600, 602}, {610, 610}, {620, 622}, {630, 632}, {730, 732}, {803, 803}, {833, 833}};

// The distribution of the survival times that a test is about.
constexpr i16 Weibull = 5;
constexpr i16 Piecewise = 7;
constexpr i16 Lognormal = 8;
constexpr i16 Gamma = 10;

struct SurvivalRow {
    i16 TestNo;
    i16 SimDistrNo;
};

constexpr SurvivalRow SurvivalRows[] = {
    {27, Weibull},  {28, Gamma},  {29, Lognormal},                    // life table test
    {32, Weibull},  {33, Gamma},  {34, Lognormal},  {35, Piecewise},  // log-rank test
    {86, Weibull},  {87, Gamma},  {88, Lognormal},  {89, Piecewise},  // Gehan-Wilcoxon test
    {91, Weibull},  {92, Gamma},  {93, Lognormal},  {94, Piecewise},  // Cox-Mantel test
    {96, Weibull},  {97, Gamma},  {98, Lognormal},  {99, Piecewise},  // Cox F-test
    {101, Weibull}, {102, Gamma}, {103, Lognormal}, {104, Piecewise}, // Peto and Peto's test
};

// Names of the variants, in the order of TestVariant.
constexpr std::string_view VariantNames[] = {"",    "UNPTT",   "PTT",  "LTT", "GSTT", "WEIB",
                                             "GAM", "LRPWEXP", "NOR1", "TT1", "NOR2"};
static_assert(std::size(VariantNames) == static_cast<std::size_t>(TestVariant::NOR2) + 1);

constexpr std::string_view WindowKindCaptions[] = {"Calculation", "Table", "Graph",
                                                   "Monte Carlo Simulation"};

// Parameters of the distributions, by ParListNo.
constexpr std::string_view NormalPars[] = {"mean (std.dev. known)", "mean (std.dev. unknown)",
                                           "std.dev. (mean known)", "std.dev. (mean unknown)"};
constexpr std::string_view LognormalPars[] = {"median (shape known)", "median (shape unknown)"};
constexpr std::string_view ExponentialPars[] = {"location (scale known)", "scale (location known)",
                                                "scale (location unknown)"};
constexpr std::string_view BinomialPars[] = {"proportion", "odds"};
constexpr std::string_view HypergeometricPars[] = {"proportion"};
constexpr std::string_view PoissonPars[] = {"mean", "hazard rate"};
constexpr std::string_view FinitePopulationPars[] = {"population mean", "population proportion"};
constexpr std::string_view BivariateNormalPars[] = {"mean 2 - mean 1", "std.dev.2 / std.dev.1",
                                                    "correlation coefficient",
                                                    "regression coefficient"};

TestVariant VariantOfTest(i16 testNo) {
    switch (testNo) {
    case 0:
    case 74:
    case 81:
        return TestVariant::UNPTT;
    case 1:
        return TestVariant::PTT;
    case 75:
    case 82:
    case 83: // a comparison of proportions that shares the code of the medians
        return TestVariant::LTT;
    case 125:
        return TestVariant::GSTT;
    case 27:
    case 32:
        return TestVariant::WEIB;
    case 28:
    case 33:
        return TestVariant::GAM;
    case 35:
        return TestVariant::LRPWEXP;
    default:
        return TestVariant::None;
    }
}

TestVariant VariantOfParameter() {
    const bool two = NoOfSamples == TwoSamples;
    if (DistrNo == DistrLognormal && (two || NoOfSamples == OneSample))
        return TestVariant::LTT;
    if (DistrNo == DistrNormal && two)
        return TestVariant::NOR2;
    if (DistrNo == DistrNormal && NoOfSamples == OneSample && ParListNo == 0)
        return TestVariant::NOR1;
    if (DistrNo == DistrNormal && NoOfSamples == OneSample && ParListNo == 1)
        return TestVariant::TT1;
    return TestVariant::None;
}

} // namespace

std::string_view WindowKindCaption(i16 windowKind) {
    if (windowKind < CalculationWindow || windowKind > SimulationWindow)
        throw RunTimeError(Fault::BadIndex);
    return WindowKindCaptions[windowKind];
}

TestVariant CurrentVariant() {
    return IsTest ? VariantOfTest(TestNo) : VariantOfParameter();
}

std::string_view TestCode() {
    return VariantNames[static_cast<int>(CurrentVariant())];
}

bool IsSimOnly(i16 menuNo, i16 windowKind) {
    return windowKind != SimulationWindow && IsSimOnlyTest(TestNoOfMenu(menuNo));
}

bool IsSimOnlyTest(i16 testNo) {
    return IsIn(SimOnlyTests, testNo);
}

bool IsDesignTest(i16 testNo) {
    constexpr Numbers designs{MeansDesign, 127};
    return testNo >= designs.First && testNo <= designs.Last;
}

bool IsMultipleComparison(i16 testNo) {
    constexpr Numbers comparisons{135, 145};
    return testNo >= comparisons.First && testNo <= comparisons.Last;
}

bool HasSimWindow(i16 menuNo) {
    return !IsIn(NoSimulationMenus, menuNo);
}

void SetSimDistr() {
    for (const SurvivalRow& row : SurvivalRows)
        if (row.TestNo == TestNo)
            SimDistrNo = row.SimDistrNo;
}

bool HasSurvivalGraph() {
    if (IsTest)
        return IsIn(SurvivalGraphTests, TestNo);
    switch (DistrNo) {
    case DistrNormal:
    case DistrLognormal:
    case DistrExponential:
    case DistrBinomial:
    case DistrHypergeometric:
    case DistrPoisson:
        return ProcedureNo == ProcedureTest;
    default:
        return false;
    }
}

bool IsDiscreteTest() {
    return IsTest && IsIn(DiscreteTests, TestNo);
}

bool UsesEventTimes() {
    return IsTest ? IsIn(EventTimeTests, TestNo) : DistrNo == DistrPoisson && ParListNo == 1;
}

bool IsPaired() {
    return IsTest ? IsIn(PairedTests, TestNo) : DistrNo == DistrBivariateNormal;
}

i32 HelpDescription() {
    return IsTest ? 300 + MenuTestNo(TestNo) + 1 : 800 + DistrNo + 1;
}

i32 HelpParameters() {
    const i32 choices = i32{NoOfSamples} * 1000 + i32{NoOfTails} * 100;
    if (IsTest)
        return i32{MenuTestNo(TestNo)} * 10000 + choices;
    return i32{DistrNo} * 10000 + choices + (ParListNo + 1) * 10 + ProcedureNo;
}

// The digit 9 before those of the description.
i32 HelpExample() {
    const i32 description = HelpDescription();
    i32 nine = 9;
    for (i32 rest = description; rest > 0; rest /= 10)
        nine *= 10;
    return nine + description;
}

std::span<const std::string_view> DistrParList(i16 distrNo) {
    switch (distrNo) {
    case DistrNormal:
        return NormalPars;
    case DistrLognormal:
        return LognormalPars;
    case DistrExponential:
        return ExponentialPars;
    case DistrBinomial:
        return BinomialPars;
    case DistrHypergeometric:
        return HypergeometricPars;
    case DistrPoisson:
        return PoissonPars;
    case DistrFinitePopulation:
        return FinitePopulationPars;
    case DistrBivariateNormal:
        return BivariateNormalPars;
    default:
        return {};
    }
}

} // namespace quorvanta
