// The validation of the program: every reference value of other origin, computed once more by the
// engine that this program is linked with.
#pragma once

#include "core/types.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvanta::validation {

// A file of reference data: its name under checks/data, with "/" between folders, and its bytes.
struct DataFile {
    std::string Name;
    std::string Bytes;
};

// True for a name that the validation knows how to answer: "validation/<any>.tsv", "exact.csv",
// "whole_sizes.tsv", "multiple_comparisons.tsv", "adjusted_values.tsv".
bool IsDataFile(const std::string& name);

enum class Verdict {
    Pass,
    Fail,
    NotBounded // a known weak corner of an approximation: looked at, with no bound to keep
};

// What the engine has for one reference value.
struct Finding {
    std::string Question; // in words: the analysis with its values, and what is asked for
    f64 Expected = 0;
    f64 Found = 0;       // no number where the engine has none
    f64 Allowed = 0;     // the deviation allowed, absolutely; infinite: not bounded
    std::string Fault{}; // why there is no value

    f64 Deviation() const { return Found - Expected; }
    Verdict Judgement() const;
};

struct Result : Finding {
    std::string Case; // "means 12": the file, and the row in it
};

// A reference value that waits for the engine's.
struct Case {
    std::string Name;
    std::function<Finding()> Compute;
};

// Those of one file, or of one section of a file of functions.
struct CaseSection {
    std::string Title;
    std::string Source; // where the expected values come from
    std::vector<Case> Cases;
};

// The cases of the data, analyses first. Throws std::runtime_error where a file can't be read.
std::vector<CaseSection> ReadSections(std::vector<DataFile> files);

// The number of all cases.
std::size_t CountCases(const std::vector<CaseSection>& sections);

struct ResultSection {
    std::string Title;
    std::string Source;
    std::vector<Result> Results;

    std::size_t Count(Verdict verdict) const;
};

// Called after each case with the number of those done; false ends the run.
using Progress = std::function<bool(std::size_t done)>;

// Computes every case; nothing if it was ended. Starts the engine anew: the state is that of a
// program with one Calculation window, and ends as the last case left it.
std::optional<std::vector<ResultSection>> Compute(const std::vector<CaseSection>& sections,
                                                  const Progress& progress);

// The stem of a file's name as a heading: "proportions_exact" is "Proportions, exact".
std::string TitleOf(const std::string& stem);

// The comment lines at the head of a file: where its values come from.
std::string SourceOf(const std::string& bytes);

} // namespace quorvanta::validation
