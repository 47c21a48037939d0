// What holds for every analysis of the menus that has an equation, with every choice of its
// options: a new one is walked without another word, and fails without reference values of its own.
#include "core/catalogue.h"
#include "support/analysis_fixture.h"
#include "support/plans.h"
#include "support/properties.h"
#include "support/solutions.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <tuple>

namespace quorvanta::checks {
namespace {

// The analyses are asked for before any check has started the program.
std::vector<AnalysisChoice> Analyses() {
    ScriptedPlatform platform;
    Main();
    FileCommand(CalculationWindow);
    return ServedAnalyses();
}

std::string NameOf(const AnalysisChoice& analysis) {
    if (analysis.MenuNo >= 0)
        return "Menu" + std::to_string(analysis.MenuNo);
    const char* procedures[] = {"Test", "Estimate", "Interval"};
    std::string name = DistrMenuName(analysis.DistrNo) + std::to_string(analysis.ParListNo) +
                       procedures[analysis.ProcedureNo];
    std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
    return name;
}

// A size that is entered as it is, or as a multiple of another.
std::vector<i16> SizeKinds() {
    std::vector<i16> kinds;
    for (i16 kind = 0; kind <= MaxKind; ++kind)
        if (SizeRoleOf(kind) != SizeRole::None && SizeFormOf(kind) != AsDifference)
            kinds.push_back(kind);
    return kinds;
}

// An analysis by samples and tails, whatever else is chosen.
using Question = std::tuple<i16, i16, i16, i16, i16, i16>;

Question QuestionOf(const AnalysisChoice& choice) {
    return {choice.MenuNo,      choice.DistrNo,     choice.ParListNo,
            choice.ProcedureNo, choice.NoOfSamples, choice.NoOfTails};
}

// The questions that have a reference value in checks/data/validation.
const std::set<Question>& Proved() {
    static const std::set<Question> proved = [] {
        std::set<Question> questions;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(CHECK_DATA_DIR) + "/validation"))
            for (const ValidationCase& validation : ReadValidation(entry.path().string()))
                questions.insert(QuestionOf(validation));
        return questions;
    }();
    return proved;
}

class EveryAnalysis : public AnalysisFixture, public ::testing::WithParamInterface<AnalysisChoice> {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }
};

TEST_P(EveryAnalysis, HasAReferenceValueOfOtherOriginForSamplesAndTails) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        EXPECT_EQ(Proved().count(QuestionOf(choice)), 1U)
            << "no row of checks/data/validation for " << NameOf(choice) << ", samples "
            << choice.NoOfSamples << ", tails " << choice.NoOfTails;
}

TEST_P(EveryAnalysis, SolvesForEachUnknownFromTheStartValuesOrSaysWhyNot) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectSolvesOrSaysWhy(choice, {}, platform);
}

TEST_P(EveryAnalysis, SolvesForEachUnknownOfASoundPlan) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectAllSolve(choice, PlanOf(choice), platform, Unsolvable(choice));
}

TEST_P(EveryAnalysis, GivesTheOldResultBackForWhatIsSolved) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        EXPECT_GE(ExpectRoundTrip(choice, PlanOf(choice)), 2) << Describe(choice);
}

TEST_P(EveryAnalysis, HasNoFaultInsideItsLimits) {
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        ExpectSafeInsideLimits(choice, {});
        ExpectSafeInsideLimits(choice, PlanOf(choice));
    }
}

// More subjects, or more time, never mean a smaller power or a smaller probability of a narrow
// interval.
TEST_P(EveryAnalysis, HasNoLessPowerWithMoreSubjects) {
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        if (IsExact(choice))
            continue;
        const Values plan = PlanOf(choice);
        const auto [slack, from] = GrowthOf(choice);
        for (const i16 kind : SizeKinds())
            ExpectMonotoneIn(kind, choice, plan, slack, from);
    }
}

TEST_P(EveryAnalysis, HasSmallerErrorsAndWidthsWithMoreSubjects) {
    if (GetParam().MenuNo >= 0 || GetParam().ProcedureNo == ProcedureTest)
        return;
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        f64 former = NoValue;
        for (const char* size : {"50", "100", "200", "400"}) {
            const f64 result = PowerOf(choice, PlanOfPrecision(size));
            EXPECT_LT(result, former) << Describe(choice) << " at " << size;
            former = result;
        }
    }
}

TEST_P(EveryAnalysis, FindsSmallSizes) {
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        if (IsExact(choice))
            continue;
        const Values plan = PlanOf(choice);
        for (const i16 kind : SizeKinds())
            ExpectSmallSizesFound(kind, choice, plan);
    }
}

INSTANTIATE_TEST_SUITE_P(Menus, EveryAnalysis, ::testing::ValuesIn(Analyses()),
                         [](const auto& info) { return NameOf(info.param); });

} // namespace
} // namespace quorvanta::checks
