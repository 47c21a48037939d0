// The report of a validation, as one document that is written as text and as PDF.
#pragma once

#include "validation/run.h"

#include <string>
#include <utility>
#include <vector>

namespace quorvanta::validation {

struct Report {
    // What was validated, with what, when: names and values, in their order.
    std::vector<std::pair<std::string, std::string>> Facts;
    std::vector<ResultSection> Sections;

    std::size_t Count() const;
    std::size_t Count(Verdict verdict) const;
    // Every case that has a bound keeps it.
    bool Passes() const { return Count(Verdict::Fail) == 0; }
};

// One sentence: how many cases agree, and how many don't.
std::string Summary(const Report& report);

// A line of the document.
struct Line {
    enum class Kind {
        Title,
        Heading,
        Words,   // one cell of running text
        Fact,    // two cells: name and value
        Counts,  // a section with its numbers of cases; the first such line names the columns
        Columns, // what the cells of the cases below are
        Case     // one result
    };
    Kind What = Kind::Words;
    std::vector<std::string> Cells;
    bool Fails = false; // a case that failed, or what counts one
};

// The whole document from top to bottom.
std::vector<Line> Document(const Report& report);

// The document in plain text, a line of it for each of its own, cells in columns.
std::string PlainText(const std::vector<Line>& document);

// What the cells of a Case line are, by their numbers.
namespace CaseCell {

inline constexpr std::size_t Name = 0;
inline constexpr std::size_t VerdictWord = 1;
inline constexpr std::size_t Expected = 2;
inline constexpr std::size_t Found = 3;
inline constexpr std::size_t Deviation = 4;
inline constexpr std::size_t Allowed = 5;
inline constexpr std::size_t Question = 6;

} // namespace CaseCell

} // namespace quorvanta::validation
