#include "support/solutions.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/records.h"
#include "core/setup.h"
#include "core/values.h"
#include "support/number.h"
#include "support/tsv.h"

#include <bit>
#include <cinttypes>
#include <cstdio>

namespace quorvanta::checks {

namespace {

constexpr i16 lastMenuNo = 999;
constexpr i16 lastDistrNo = 12;

struct ValueSet {
    std::string Name;
    Values Texts;
};

std::vector<ValueSet> ReadValueSets() {
    std::vector<ValueSet> sets;
    for (const std::string& name : SolutionColumns())
        sets.push_back({name, {}});
    for (const auto& row : ReadTsv("plan_values.tsv"))
        for (std::size_t i = 1; i < sets.size(); ++i)
            sets[i].Texts[static_cast<i16>(std::stoi(row[0]))] = row[i];
    return sets;
}

bool IsServed(const AnalysisChoice& analysis) {
    if (analysis.MenuNo >= 0 &&
        !IsServedIn({.IsTest = True, .TestNo = TestNoOfMenu(analysis.MenuNo)}, CurrentWindowKind()))
        return false;
    Open(analysis);
    const bool isServed = ChoosingOptions;
    CancelOptions();
    return isServed;
}

std::string BitsOf(f64 value) {
    if (value == NoValue)
        return "-";
    constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;
    const auto mixed =
        static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(value) * golden >> 32U);
    char text[12];
    std::snprintf(text, sizeof text, "%08" PRIx32, mixed);
    return text;
}

// Solves for the parameter as the driver does on a press of its label.
f64 SolutionFor(i16 parNo) {
    Calculated = False;
    const i16 kind = ParKind(parNo);
    try {
        SolveFor(parNo);
    } catch (const RunTimeError&) {
        return NoValue;
    }
    return HasValue(ParText(kind)) ? ParValue(parNo) : NoValue;
}

std::string SolutionsFrom(const AnalysisChoice& choice, Values values) {
    Start(choice, values);
    const i16 last = NoOfPar;
    // A power that follows from the other values, so that each of them is a solution.
    if (const f64 power = SolutionFor(PowerParNo); !values.empty() && power != NoValue)
        values[ParKind(PowerParNo)] = NumberText(power, 6, std::chars_format::fixed);
    std::string bits;
    for (i16 i = 0; i <= last; ++i) {
        Start(choice, values);
        bits += (i == 0 ? "" : " ") + BitsOf(SolutionFor(i));
    }
    return bits;
}

} // namespace

std::string Joined(const AnalysisChoice& choice) {
    std::string text = choice.MenuNo >= 0 ? "menu " + std::to_string(choice.MenuNo)
                                          : "distribution " + std::to_string(choice.DistrNo) + " " +
                                                std::to_string(choice.ParListNo) + " " +
                                                std::to_string(choice.ProcedureNo);
    text += ", samples " + std::to_string(choice.NoOfSamples) + ", tails " +
            std::to_string(choice.NoOfTails) + (choice.Left ? " left" : "");
    for (const i16 kind : choice.Checks)
        text += ", check " + std::to_string(kind);
    for (const auto& [group, option] : choice.Groups)
        text += ", " + std::to_string(group) + "=" + std::to_string(option);
    if (choice.Method != 0)
        text += ", method " + std::to_string(choice.Method);
    return text;
}

std::vector<AnalysisChoice> ServedAnalyses() {
    std::vector<AnalysisChoice> analyses;
    AnalysisChoice analysis;
    for (analysis.MenuNo = 0; analysis.MenuNo <= lastMenuNo; ++analysis.MenuNo)
        if (!TestMenuName(analysis.MenuNo).empty() && IsServed(analysis))
            analyses.push_back(analysis);
    analysis.MenuNo = -1;
    for (i16 distrNo = 0; distrNo <= lastDistrNo; ++distrNo)
        for (std::size_t i = 0; i < DistrParList(distrNo).size(); ++i)
            for (const i16 procedureNo : {ProcedureTest, ProcedureEstimate, ProcedureInterval}) {
                analysis.DistrNo = distrNo;
                analysis.ParListNo = static_cast<i16>(i);
                analysis.ProcedureNo = procedureNo;
                if (IsServed(analysis))
                    analyses.push_back(analysis);
            }
    return analyses;
}

std::vector<std::string> SolutionColumns() {
    return {"start", "right", "left", "between", "few"};
}

std::vector<SolutionRow> Solutions(const AnalysisChoice& analysis, std::size_t step) {
    static const std::vector<ValueSet> sets = ReadValueSets();
    std::vector<SolutionRow> rows;
    std::size_t next = 0;
    for (const AnalysisChoice& choice : AllChoices(analysis)) {
        if (next++ % step != 0)
            continue;
        rows.push_back({Joined(choice), {}});
        for (const ValueSet& set : sets)
            rows.back().Cells.push_back(SolutionsFrom(choice, set.Texts));
    }
    return rows;
}

} // namespace quorvanta::checks
