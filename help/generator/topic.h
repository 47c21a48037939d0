// The files that the help is written in, as they are read.
//
// A topic, help/topics/<number>-<any words>.md, begins with its title, "# Title". Lines
// "keywords: one; another" (for the index) and "section: Windows" (where it stands in the
// contents; not for the topics of analyses, which stand where their menu entry stands) follow it,
// and "texts: 328" where the words for parameters that analysis 328 has of its own hold for this
// one as well; then, after a blank line, its text.
//
// The text of a parameter, help/parameters/<kind>.md, begins with the parameter's label. A file
// <kind>-<number>.md holds what the pages of the analysis with that description say in its place.
#pragma once

#include "core/types.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::help {

struct Topic {
    i32 Number = 0;
    std::string Title;
    std::string Section;
    std::vector<std::string> Keywords;
    i32 TextsOf = 0; // the description that shares its texts of parameters; 0: none
    std::string Text;
    std::string File; // its name, for messages
};

// All of a file; throws std::runtime_error if it can't be read.
std::string ReadText(const std::filesystem::path& path);

// The topics of a folder by number. Throws std::runtime_error for a file that can't be read, a
// title or number that is missing, and a number that occurs twice.
std::map<i32, Topic> ReadTopics(const std::filesystem::path& folder);

// The texts of the parameters, by kind and description number; 0: for every analysis.
using ParameterTexts = std::map<std::pair<i16, i32>, std::string>;

// Reads a folder of them. Throws std::runtime_error for a file that can't be read or that begins
// with another label than the catalogue has.
ParameterTexts ReadParameterTexts(const std::filesystem::path& folder);

// The text of a kind in the analysis of that description: its own, or that of the description that
// shares its texts (0: none does), or the one for every analysis. Throws std::runtime_error if
// there is none.
const std::string& TextOf(const ParameterTexts& texts, i16 kind, i32 description, i32 textsOf);

} // namespace quorvanta::help
