// The catalogue of parameter kinds against a listing that was compiled apart from it.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/kinds.h"
#include "support/number.h"
#include "support/tsv.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 UndefinedKind = 349;

class ParameterCatalogue : public testing::Test {
  protected:
    void SetUp() override {
        ResetAnalysisState();
        SetAllParKinds();
    }
};

// "0.30" as the text of its number: "0.3"; ".1": "0.1".
std::string Shortest(std::string text) {
    if (text.find('.') != std::string::npos) {
        while (text.back() == '0')
            text.pop_back();
        if (text.back() == '.')
            text.pop_back();
    }
    if (text.front() == '.')
        text.insert(0, "0");
    return text;
}

f64 Number(const std::string& text) {
    return text.empty() ? 0 : checks::ParseNumber(text);
}

TEST_F(ParameterCatalogue, EveryCellIsAsListed) {
    std::set<int> kinds;
    for (const auto& row : checks::ReadTsv("catalogue_parameter_kinds.tsv")) {
        const int kind = std::stoi(row[0]);
        SCOPED_TRACE("kind " + row[0]);
        EXPECT_TRUE(kinds.insert(kind).second);
        EXPECT_EQ(ParLabel(kind), row[1]);
        EXPECT_EQ(ParText(kind), Shortest(row[2]));
        EXPECT_EQ(ParXminText(kind), Shortest(row[3]));
        EXPECT_EQ(ParXmaxText(kind), Shortest(row[4]));
        EXPECT_EQ(ParXstepText(kind), Shortest(row[5]));
        EXPECT_EQ(ParZValuesText(kind),
                  Shortest(row[3]) + " " + Shortest(row[2]) + " " + Shortest(row[4]));
        EXPECT_EQ(ParMin(kind), static_cast<f64>(static_cast<f32>(Number(row[6]))));
        EXPECT_EQ(ParMax(kind), static_cast<f64>(static_cast<f32>(Number(row[7]))));
    }
    EXPECT_EQ(kinds.size(), 370U);
    EXPECT_EQ(*kinds.begin(), 0);
    EXPECT_EQ(*kinds.rbegin(), MaxKind);
    EXPECT_FALSE(kinds.contains(UndefinedKind));
}

TEST_F(ParameterCatalogue, UndefinedKindStaysEmpty) {
    for (const auto* texts :
         {&ParLabel, &ParText, &ParXminText, &ParXmaxText, &ParXstepText, &ParZValuesText})
        EXPECT_EQ((*texts)(UndefinedKind), "");
    EXPECT_EQ(ParMin(UndefinedKind), 0.0);
    EXPECT_EQ(ParMax(UndefinedKind), 0.0);
}

TEST_F(ParameterCatalogue, LimitsAreSingles) {
    EXPECT_EQ(ParMin(Kind::SignificanceLevel), 0.000009999999747378752);
    EXPECT_EQ(ParMax(Kind::SignificanceLevel), 0.9999899864196777);
    EXPECT_EQ(ParMin(Kind::SignificanceLevel), ProbabilityFloor);
    EXPECT_EQ(ParMax(Kind::SignificanceLevel), ProbabilityCeiling);
    EXPECT_EQ(ParMax(Kind::H1CorrelationMinusH0), static_cast<f64>(1.99999F));
    EXPECT_NE(ParMax(Kind::H1CorrelationMinusH0), 1.99999);
}

TEST_F(ParameterCatalogue, TextsAreThoseOfTheirNumbers) {
    EXPECT_EQ(ParText(Kind::Sd), "0.3");
    EXPECT_EQ(ParText(Kind::Size2Over1), "1");
    EXPECT_EQ(ParText(Kind::MeanLeftLimit), "-0.4");
    EXPECT_EQ(ParXstepText(367), "0.1");
    EXPECT_EQ(ParXminText(0), "0.001");
    EXPECT_EQ(ParZValuesText(1), "0.7 0.8 0.9");
    EXPECT_EQ(ParZValuesText(38), "-50 0 50");
}

TEST_F(ParameterCatalogue, FillingAgainBringsTheStartValuesBack) {
    ParText(Kind::Power) = "-";
    ParXminText(1) = "0.5";
    SetAllParKinds();
    EXPECT_EQ(ParText(Kind::Power), "0.8");
    EXPECT_EQ(ParXminText(1), "0.7");
}

TEST_F(ParameterCatalogue, ErrorLevelIsASignificanceLevelByAnotherName) {
    EXPECT_EQ(ParLabel(Kind::SignificanceLevel), "S&ignificance Level");
    EXPECT_EQ(ParLabel(Kind::ErrorLevel), "Error &Level");
    for (const auto* texts : {&ParText, &ParXminText, &ParXmaxText, &ParXstepText, &ParZValuesText})
        EXPECT_EQ((*texts)(0), (*texts)(143));
    EXPECT_EQ(ParMin(Kind::SignificanceLevel), ParMin(Kind::ErrorLevel));
    EXPECT_EQ(ParMax(Kind::SignificanceLevel), ParMax(Kind::ErrorLevel));
}

TEST_F(ParameterCatalogue, TwinsAreAlikeInEveryCell) {
    for (const auto& [kind, twin] : {std::pair{29, 97}, {247, 269}}) {
        for (const auto* texts :
             {&ParLabel, &ParText, &ParXminText, &ParXmaxText, &ParXstepText, &ParZValuesText})
            EXPECT_EQ((*texts)(kind), (*texts)(twin));
        EXPECT_EQ(ParMin(kind), ParMin(twin));
        EXPECT_EQ(ParMax(kind), ParMax(twin));
    }
}

TEST_F(ParameterCatalogue, LabelsAreNoKeys) {
    int left = 0;
    for (int kind = 0; kind <= MaxKind; ++kind)
        left += ParLabel(kind) == "H0: &Left Equivalence Limit";
    EXPECT_EQ(left, 12);
}

TEST_F(ParameterCatalogue, RangeOfZeroCoefficientsLeavesItsStartValueOut) {
    EXPECT_EQ(ParText(268), "1");
    EXPECT_EQ(ParXminText(268), "3");
    EXPECT_EQ(ParXmaxText(268), "7");
}

TEST_F(ParameterCatalogue, OnlyTheRangeOfTheShapeHasTooManySteps) {
    EXPECT_EQ(ParXminText(27), "0.2");
    EXPECT_EQ(ParXmaxText(27), "50");
    EXPECT_EQ(ParXstepText(27), "0.02");
    constexpr f64 mostSteps = 100;
    for (int kind = 0; kind <= MaxKind; ++kind) {
        if (kind == UndefinedKind)
            continue;
        const f64 steps =
            (Number(ParXmaxText(kind)) - Number(ParXminText(kind))) / Number(ParXstepText(kind)) +
            1;
        EXPECT_GE(steps, 2) << kind;
        EXPECT_EQ(steps > mostSteps + 0.5, kind == 27) << kind;
    }
}

TEST_F(ParameterCatalogue, HazardDifferenceStartsBelowItsRange) {
    EXPECT_EQ(ParText(Kind::H0Rate2Minus1), "-0.3");
    EXPECT_EQ(ParXminText(64), "-0.2");
}

TEST_F(ParameterCatalogue, LossRatesStartAtNoneWithARangeOfLosses) {
    for (const int kind : {13, 45, 84}) {
        EXPECT_EQ(ParText(kind), "0");
        EXPECT_EQ(ParXminText(kind), "0.3");
        EXPECT_EQ(ParXmaxText(kind), "0.7");
    }
}

TEST_F(ParameterCatalogue, SizePerSequenceStartsBelowItsRange) {
    EXPECT_EQ(ParText(289), "6");
    EXPECT_EQ(ParXminText(289), "10");
}

TEST_F(ParameterCatalogue, EveryStartValueIsAllowed) {
    for (int kind = 0; kind <= MaxKind; ++kind) {
        EXPECT_LE(ParMin(kind), Number(ParText(kind))) << kind;
        EXPECT_GE(ParMax(kind), Number(ParText(kind))) << kind;
    }
}

// --- Roles --------------------------------------------------------------------------------------

using RoleRow = std::tuple<std::string, int, std::string>;

std::string SizeRoleInWords(SizeRole role) {
    switch (role) {
    case SizeRole::None:
        return "";
    case SizeRole::Single:
        return "one size";
    case SizeRole::First:
        return "size 1";
    case SizeRole::Second:
        return "size 2";
    case SizeRole::EachOther:
        return "size of each other group";
    case SizeRole::FirstSequence:
        return "size of sequence 1";
    case SizeRole::SecondSequence:
        return "size of sequence 2";
    case SizeRole::Exposure:
        return "exposure";
    case SizeRole::TimeAtRisk:
        return "time at risk";
    case SizeRole::FirstExposure:
        return "exposure 1";
    case SizeRole::SecondExposure:
        return "exposure 2";
    }
    return "unknown";
}

std::vector<std::string> RolesInWords(i16 kind) {
    std::vector<std::string> roles;
    if (IsCountKind(kind))
        roles.emplace_back("counts");
    if (IsPopulationKind(kind))
        roles.emplace_back("population");
    if (IsLayoutKind(kind))
        roles.emplace_back("layout");
    if (IsGridKind(kind))
        roles.emplace_back("grid");
    if (IsPowerKind(kind))
        roles.emplace_back("power");
    constexpr const char* forms[] = {"", " as difference", " as ratio"};
    if (SizeRoleOf(kind) != SizeRole::None)
        roles.push_back(SizeRoleInWords(SizeRoleOf(kind)) + forms[SizeFormOf(kind)]);
    return roles;
}

TEST_F(ParameterCatalogue, EveryRoleIsAsListed) {
    std::multiset<RoleRow> listed;
    for (const auto& row : checks::ReadTsv("catalogue_kind_roles.tsv"))
        listed.emplace(row[0], std::stoi(row[1]), row[2]);
    std::multiset<RoleRow> found;
    for (i16 kind = 0; kind <= MaxKind; ++kind)
        for (const std::string& role : RolesInWords(kind))
            found.emplace(role, kind, StripAmpersand(ParLabel(kind)));
    EXPECT_EQ(found, listed);
}

// What is no kind has no role.
TEST_F(ParameterCatalogue, UndefinedKindsHaveNoRole) {
    for (const int kind : {-1, static_cast<int>(UndefinedKind), MaxKind + 1})
        EXPECT_TRUE(RolesInWords(static_cast<i16>(kind)).empty()) << kind;
}

// The labels say the same: a number of something counts, a size does, and a ratio of sizes is the
// form of a second one.
TEST_F(ParameterCatalogue, RolesAgreeWithLabels) {
    const std::regex number("(Total )?No of .*|Number of .*|.*Sample Size.*|Popul.* Size.*|"
                            "Size of Latin Square");
    // Numbers that no search solves for.
    const std::set<i16> fixed{255, 344, 346, 369};
    for (i16 kind = 0; kind <= MaxKind; ++kind) {
        SCOPED_TRACE(kind);
        const std::string label = StripAmpersand(ParLabel(kind));
        const bool isRatio = label.find(" / ") != std::string::npos;
        const bool isNumber = std::regex_match(label, number) && fixed.count(kind) == 0;
        EXPECT_EQ(IsCountKind(kind), isNumber && !isRatio);
        EXPECT_EQ(IsPopulationKind(kind), label.starts_with("Popul") && !isRatio);
        EXPECT_TRUE(SizeFormOf(kind) != AsRatio || isRatio);
        EXPECT_TRUE(SizeFormOf(kind) != AsDifference || label.find(" - ") != std::string::npos);
    }
}

} // namespace

} // namespace quorvanta
