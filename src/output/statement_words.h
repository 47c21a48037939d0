// The words of a summary statement: labels of the parameter catalogue turned into prose, articles,
// plurals and lists.
#pragma once

#include "core/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

// Every occurrence of a part replaced, from left to right; what a replacement brings in is not
// looked at again.
void ReplaceAll(std::string& text, std::string_view part, std::string_view replacement);

// The text without the blanks at its ends.
std::string_view Trimmed(std::string_view text);

// Runs of blanks become one blank.
std::string SingleBlanks(std::string_view text);

// The words between the blanks of a text.
std::vector<std::string> Words(const std::string& text);

// A label in lower case, without its access-key mark, with the abbreviations of the catalogue
// spelled out and the capitals of names restored. A fixed list of replacements in a fixed order,
// where later ones build on and undo earlier ones. It knows the names that its list holds and no
// others, and it turns 99999, which stands for no value, into 0.
std::string SumNormalise(std::string_view text);

// A label as it can stand in a sentence: normalised, and then freed of what the catalogue's
// abbreviations leave behind ("corr.coefficient2", double blanks, a missing blank after "H1:").
std::string SumPhrase(std::string_view label);

// The label without access-key mark and without its prefix "H0:" or "H1:", which is dropped only
// at the start.
std::string SumNameAfterH(std::string_view label);

// "an" before a vowel or y, capital or not, else "a".
std::string SumArticle(std::string_view word);

// The article of a label with its blank, "a " or "an ", by the first letter of its name without
// prefix. Not quite the letters of SumArticle: o and y take "a ", as "one-sided" does.
std::string SumArticleLabel(std::string_view label);

// "" for one, "s" for any other number.
std::string SumPlural(i32 n);

// What joins item i of a list to the text before it: " and" ahead of the last item, else ",".
void SumAnd(i32 i, i32 last, std::string& text);

// The items as a list in running text: "0.01, 0.02 and 0.05".
std::string SumList(const std::vector<std::string>& items);

// The same of numbers of which each takes its turn: "0.01, 0.02 or 0.05".
std::string SumAlternatives(const std::vector<std::string>& items);

// The parts of a text between ", ".
std::vector<std::string> SplitAtCommas(const std::string& text);

} // namespace quorvanta
