#include "validation/report.h"

#include "core/program_name.h"
#include "validation/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <sstream>

namespace quorvanta::validation {

namespace {

constexpr int shownDigits = 9;

std::string NumberCell(f64 number) {
    if (std::isnan(number))
        return "-";
    if (std::isinf(number))
        return "none";
    return NumberText(number, shownDigits);
}

std::string DeviationCell(f64 deviation) {
    return std::isnan(deviation) ? "-" : NumberText(deviation, 2, std::chars_format::scientific);
}

std::string VerdictCell(Verdict verdict) {
    switch (verdict) {
    case Verdict::Pass:
        return "PASS";
    case Verdict::Fail:
        return "FAIL";
    case Verdict::NotBounded:
        break;
    }
    return "no bound";
}

std::string QuestionCell(const Result& result) {
    return result.Fault.empty() ? result.Question : "Can't be computed: " + result.Fault;
}

Line LineOf(const Result& result) {
    const Verdict verdict = result.Judgement();
    return {Line::Kind::Case,
            {result.Case, VerdictCell(verdict), NumberCell(result.Expected),
             NumberCell(result.Found), DeviationCell(result.Deviation()),
             NumberCell(result.Allowed), QuestionCell(result)},
            verdict == Verdict::Fail};
}

Line CountsOf(const ResultSection& section) {
    const std::size_t failed = section.Count(Verdict::Fail);
    return {Line::Kind::Counts,
            {section.Title, std::to_string(section.Results.size()),
             std::to_string(section.Count(Verdict::Pass)), std::to_string(failed),
             std::to_string(section.Count(Verdict::NotBounded))},
            failed > 0};
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

void AddSection(const ResultSection& section, std::vector<Line>& document) {
    document.push_back({Line::Kind::Heading, {section.Title}});
    for (const std::string& line : LinesOf(section.Source))
        document.push_back({Line::Kind::Words, {line}});
    document.push_back(
        {Line::Kind::Columns,
         {"Case", "Verdict", "Expected", "Found", "Deviation", "Allowed", "Question"}});
    for (const Result& result : section.Results)
        document.push_back(LineOf(result));
}

// --- Plain text ----------------------------------------------------------------------------------

bool IsTable(Line::Kind kind) {
    return kind != Line::Kind::Title && kind != Line::Kind::Heading && kind != Line::Kind::Words;
}

bool IsSameTable(Line::Kind a, Line::Kind b) {
    const auto table = [](Line::Kind kind) {
        return kind == Line::Kind::Columns ? Line::Kind::Case : kind;
    };
    return table(a) == table(b);
}

using Lines = std::vector<Line>::const_iterator;

// The rows of one table, padded to the widths of its columns; the last cell as it is.
void WriteTable(Lines first, Lines last, std::string& text) {
    std::vector<std::size_t> widths(first->Cells.size(), 0);
    for (Lines line = first; line != last; ++line)
        for (std::size_t i = 0; i + 1 < line->Cells.size(); ++i)
            widths[i] = std::max(widths[i], line->Cells[i].size());
    for (Lines line = first; line != last; ++line) {
        for (std::size_t i = 0; i < line->Cells.size(); ++i) {
            text += line->Cells[i];
            if (i + 1 < line->Cells.size())
                text.append(widths[i] - line->Cells[i].size() + 2, ' ');
        }
        text += '\n';
    }
}

std::string Underlined(const std::string& heading, char mark) {
    return heading + "\n" + std::string(heading.size(), mark) + "\n";
}

void WriteText(const Line& line, std::string& text) {
    if (line.What == Line::Kind::Title)
        text += Underlined(line.Cells.front(), '=') + "\n";
    else if (line.What == Line::Kind::Heading)
        text += "\n" + Underlined(line.Cells.front(), '-') + "\n";
    else
        text += line.Cells.front() + "\n";
}

} // namespace

std::size_t Report::Count() const {
    return std::accumulate(
        Sections.begin(), Sections.end(), std::size_t{0},
        [](std::size_t sum, const ResultSection& section) { return sum + section.Results.size(); });
}

std::size_t Report::Count(Verdict verdict) const {
    return std::accumulate(Sections.begin(), Sections.end(), std::size_t{0},
                           [verdict](std::size_t sum, const ResultSection& section) {
                               return sum + section.Count(verdict);
                           });
}

std::string Summary(const Report& report) {
    const std::size_t notBounded = report.Count(Verdict::NotBounded);
    const std::size_t bounded = report.Count() - notBounded;
    std::string text = std::string(report.Passes() ? "PASS" : "FAIL") + ": " +
                       std::to_string(report.Count(Verdict::Pass)) + " of " +
                       std::to_string(bounded) + " cases are within the deviation allowed.";
    if (!report.Passes())
        text += " " + std::to_string(report.Count(Verdict::Fail)) + " are not.";
    if (notBounded > 0)
        text += " " + std::to_string(notBounded) + " more have no bound.";
    return text;
}

std::vector<Line> Document(const Report& report) {
    std::vector<Line> document;
    document.push_back({Line::Kind::Title, {std::string("Validation of ") + ProgramName}});
    document.push_back({Line::Kind::Words, {Summary(report)}, !report.Passes()});
    document.push_back({Line::Kind::Heading, {"What was validated"}});
    for (const auto& [name, value] : report.Facts)
        document.push_back({Line::Kind::Fact, {name, value}});
    document.push_back({Line::Kind::Heading, {"How to read this report"}});
    document.push_back(
        {Line::Kind::Words,
         {"Each case is a value that does not come from this program, and what its engine has for "
          "it. The deviation allowed is what the known error of its approximations accounts for, "
          "and where the value was simulated the error of the simulation; \"no bound\" marks "
          "points where an approximation is known to be weak, which are "
          "shown and not judged. Sizes are compared before they are rounded up, unless the case is "
          "a whole size."}});
    document.push_back({Line::Kind::Heading, {"Sections"}});
    document.push_back({Line::Kind::Counts, {"Section", "Cases", "Pass", "Fail", "No bound"}});
    for (const ResultSection& section : report.Sections)
        document.push_back(CountsOf(section));
    for (const ResultSection& section : report.Sections)
        AddSection(section, document);
    return document;
}

std::string PlainText(const std::vector<Line>& document) {
    std::string text;
    for (Lines line = document.begin(); line != document.end();) {
        if (!IsTable(line->What)) {
            WriteText(*line++, text);
            continue;
        }
        const Lines first = line;
        while (line != document.end() && IsSameTable(line->What, first->What))
            ++line;
        WriteTable(first, line, text);
    }
    return text;
}

} // namespace quorvanta::validation
