#include "validation/cases.h"

#include "core/analysis_state.h"
#include "core/driver.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "validation/cells.h"
#include "validation/number.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quorvanta::validation {

namespace {

// The parts of a list; none of an empty text.
std::vector<std::string> Split(const std::string& text, char separator) {
    return text.empty() ? std::vector<std::string>{} : CellsOf(text, separator);
}

i16 Number(const std::string& text) {
    return static_cast<i16>(std::stoi(text));
}

std::pair<i16, std::string> Assignment(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        throw std::runtime_error("no value in " + text);
    return {Number(text.substr(0, equals)), text.substr(equals + 1)};
}

void ReadMenu(std::istream& analysis, AnalysisChoice& choice) {
    analysis >> choice.MenuNo >> std::ws;
    if (analysis.peek() == 'm') {
        std::string word;
        analysis >> word >> choice.Method;
        return;
    }
    DistrRow distr;
    while (analysis >> distr.Code >> distr.Par1 >> distr.Par2)
        choice.Distributions.push_back(distr);
}

// The first seven cells of a row of ten, and the others.
std::vector<std::string> ParseChoice(const std::string& line, CaseWithValues& row) {
    const auto cells = Split(line, '\t');
    if (cells.size() != 10)
        throw std::runtime_error("not a validation case: " + line);
    row.Analysis = cells[0];
    std::istringstream analysis(cells[0]);
    std::string word;
    analysis >> word;
    if (word == "menu")
        ReadMenu(analysis, row);
    else
        analysis >> row.DistrNo >> row.ParListNo >> row.ProcedureNo;
    row.NoOfSamples = Number(cells[1]);
    row.NoOfTails = Number(cells[2]);
    row.Left = cells[3] == "-1";
    for (const std::string& kind : Split(cells[4], ','))
        row.Checks.push_back(Number(kind));
    for (const std::string& group : Split(cells[5], ',')) {
        const auto [kind, option] = Assignment(group);
        row.Groups[kind] = Number(option);
    }
    for (const std::string& value : Split(cells[6], ';'))
        row.Values.insert(Assignment(value));
    return {cells.begin() + 7, cells.end()};
}

void Parse(const std::string& line, ValidationCase& row) {
    const auto results = ParseChoice(line, row);
    row.UnknownKind = Number(results[0]);
    row.Exact = ParseNumber(results[1]);
    row.Tolerance = ParseNumber(results[2]);
}

void Parse(const std::string& line, SimulationCase& row) {
    const auto results = ParseChoice(line, row);
    row.Size = ParseNumber(results[0]);
    row.Power = ParseNumber(results[1]);
    row.Error = ParseNumber(results[2]);
}

template <class Case>
std::vector<Case> ReadCases(std::istream& file) {
    std::vector<Case> cases;
    std::string line;
    bool isHead = true;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!isHead)
            Parse(line, cases.emplace_back());
        isHead = false;
    }
    return cases;
}

std::ifstream OpenFile(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("no file " + path);
    return file;
}

i16 PositionOf(i16 kind) {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (ParKind(i) == kind)
            return i;
    throw std::runtime_error("kind " + std::to_string(kind) + " is not in the list");
}

bool HasKind(i16 kind) {
    return std::find(&ParKind(0), &ParKind(0) + NoOfPar + 1, kind) != &ParKind(0) + NoOfPar + 1;
}

void TickChecks(const std::vector<i16>& kinds) {
    for (i16 i = 0; i < NoOfCheck; ++i)
        ChooseCheck(i, false);
    for (const i16 kind : kinds) {
        i16 position = 0;
        while (position < NoOfCheck && CheckList(position) != kind)
            ++position;
        if (position == NoOfCheck)
            throw std::runtime_error("check box " + std::to_string(kind) + " is not offered");
        ChooseCheck(position, true);
    }
}

// In the order of the window: an option may be what offers the groups after it.
void PickOptions(std::map<i16, i16> groups) {
    for (i16 position = 0; position < NoOfIntPar; ++position)
        if (const auto group = groups.find(IntParList(position)); group != groups.end()) {
            ChooseIntPar(position, group->second);
            groups.erase(group);
        }
    if (!groups.empty())
        throw std::runtime_error("group " + std::to_string(groups.begin()->first) +
                                 " is not offered");
}

// What replaces the patients takes groups and check boxes out of reach.
void StartWithSizes() {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        if (IntParList(i) == Group::Given)
            ChooseIntPar(i, 0);
}

// Accrual that is slow at first and at last.
const AccrualTable SomeAccrual{{0.4, 0.1}, {0.8, 0.3}, {1.2, 0.6}, {1.6, 0.9}, {2, 1}};

// "1:0.3 2:1", ends of intervals with the proportions accrued by then.
AccrualTable ParseAccrual(const std::string& text) {
    AccrualTable table;
    for (const std::string& interval : Split(text, ' ')) {
        const auto cells = Split(interval, ':');
        table.emplace_back(ParseNumber(cells.at(0)), ParseNumber(cells.at(1)));
    }
    return table;
}

// Hazards that grow, and losses; the second group has the larger hazards, or the smaller ones.
IntervalTable SomeIntervals(bool left) {
    IntervalTable table{{0, 0.2, 0.4, 0.05, 0.05},
                        {1, 0.3, 0.5, 0.05, 0.1},
                        {2, 0.4, 0.8, 0.1, 0.1},
                        {3, 0.4, 0.8, 0.1, 0.1},
                        {4, 0.5, 0.8, 0, 0}};
    for (std::array<f64, 5>& interval : table)
        if (left)
            std::swap(interval[1], interval[2]);
    return table;
}

// "0:0.3:0.5:0:0 2:0.4:0.5:0:0", rows of the table.
IntervalTable ParseIntervals(const std::string& text) {
    IntervalTable table;
    for (const std::string& interval : Split(text, ' ')) {
        const auto cells = Split(interval, ':');
        table.emplace_back();
        for (std::size_t i = 0; i < table.back().size(); ++i)
            table.back().at(i) = ParseNumber(cells.at(i));
    }
    return table;
}

void FillStore(i16 rows, i16 columns) {
    GridData(1).ReDim(0, rows, 0, columns);
    HasGridData = True;
    GridTestNo = TestNo;
}

// A table typed in the place of the number of its intervals; that number.
std::string FillTable(i16 kind, const std::string& text) {
    if (kind == Kind::AccrualIntervals) {
        const AccrualTable table = ParseAccrual(text);
        FillAccrual(table);
        return std::to_string(table.size());
    }
    const IntervalTable table = ParseIntervals(text);
    FillIntervals(table);
    return std::to_string(table.size());
}

} // namespace

void FillIntervals(const IntervalTable& table) {
    FillStore(static_cast<i16>(table.size()), 5);
    for (std::size_t i = 0; i < table.size(); ++i)
        for (std::size_t j = 0; j < table[i].size(); ++j)
            GridData(1)(static_cast<i16>(i + 1), static_cast<i16>(j + 1)) =
                static_cast<f32>(table[i].at(j));
}

void FillAccrual(const AccrualTable& table) {
    const i16 rows = static_cast<i16>(table.size());
    FillStore(rows, 2);
    for (i16 i = 1; i <= rows; ++i) {
        const auto& [end, accrued] = table[static_cast<std::size_t>(i - 1)];
        GridData(1)(i, 1) = static_cast<f32>(end);
        GridData(1)(i, 2) = static_cast<f32>(accrued);
    }
}

std::vector<ValidationCase> ReadValidation(std::istream& file) {
    return ReadCases<ValidationCase>(file);
}

std::vector<ValidationCase> ReadValidation(const std::string& path) {
    std::ifstream file = OpenFile(path);
    return ReadCases<ValidationCase>(file);
}

std::vector<SimulationCase> ReadSimulationCases(const std::string& path) {
    std::ifstream file = OpenFile(path);
    return ReadCases<SimulationCase>(file);
}

void Open(const AnalysisChoice& choice) {
    if (choice.MenuNo >= 0) {
        NewTest(choice.MenuNo);
    } else {
        NewDistribution(choice.DistrNo);
        ChooseParList(choice.ParListNo);
        ChooseProcedure(choice.ProcedureNo);
    }
}

void SetUp(const AnalysisChoice& choice) {
    Open(choice);
    ChooseSamples(choice.NoOfSamples);
    ChooseTails(choice.NoOfTails);
    ChooseLeftTail(choice.Left);
    StartWithSizes();
    TickChecks(choice.Checks);
    ChooseTails(choice.NoOfTails); // a check box may be what offers them
    PickOptions(choice.Groups);
    AdjustMethod = choice.Method;
    ClearDistrRows();
    for (std::size_t i = 0; i < choice.Distributions.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        SimDistrOption(row) = choice.Distributions[i].Code;
        SimDistrPar1(row) = choice.Distributions[i].Par1;
        SimDistrPar2(row) = choice.Distributions[i].Par2;
    }
    AcceptOptions();
    if (HasKind(Kind::AccrualIntervals))
        FillAccrual(SomeAccrual);
    if (HasKind(Kind::NoOfIntervals))
        FillIntervals(SomeIntervals(choice.Left));
}

void SetUpWithValues(const CaseWithValues& values) {
    SetUp(values);
    for (const auto& [kind, text] : values.Values) {
        const bool isTable = text.find(':') != std::string::npos;
        TypedParText(PositionOf(kind), isTable ? FillTable(kind, text) : text);
    }
}

f64 SolveCase(const ValidationCase& validation) {
    SetUpWithValues(validation);
    Calculated = False;
    SolveFor(PositionOf(validation.UnknownKind));
    if (!HasValue(ParText(validation.UnknownKind)))
        return NoValue;
    return ParValue(UnknownParNo);
}

std::string ValuesOf(const CaseWithValues& values) {
    std::string text;
    for (const auto& [kind, value] : values.Values)
        text += (text.empty() ? "" : "; ") + StripAmpersand(ParLabel(kind)) + " " + value;
    return text;
}

std::string Describe(const CaseWithValues& values) {
    return ParListName + " " + ValuesOf(values);
}

} // namespace quorvanta::validation
