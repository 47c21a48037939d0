#include "output/statement_words.h"

#include "core/general.h"

#include <algorithm>
#include <span>
#include <sstream>

namespace quorvanta {

namespace {

struct Replacement {
    std::string_view Part;
    std::string_view By;
};

void Apply(std::string& text, std::span<const Replacement> list) {
    for (const Replacement& replacement : list)
        ReplaceAll(text, replacement.Part, replacement.By);
}

// The order is part of the list: "deG" repairs what "gree" did to degrees, "ct c" what "ct C" did
// to a product, "Hw" what "Wang" did to Hwang. Each is applied to the result of those before it.
constexpr Replacement Normalisations[] = {
    {"no of", "number of"},
    {"a-", "A-"},
    {"b-", "B-"},
    {"c-", "C-"},
    {"ct axb", "ct AxB"},
    {"ct a", "ct A"},
    {"ct b", "ct B"},
    {"ct c", "ct C"},
    {"n axb", "n AxB"},
    {"or a", "or A"},
    {"or b", "or B"},
    {"uneq.", "unequal "},
    {"satterthwaite", "with Satterthwaite approximation"},
    {"std.", "standard "},
    {"dev.", "deviation "},
    {"diff.", "difference "},
    {"comp.symmetry", "compound symmetry"},
    {"auto correlation", "auto correlation covariance matrix"},
    {"general matrix", "general covariance matrix"},
    {"gree", "Gree"},
    {"-gei", "-Gei"},
    {"mult. corr.", "multiple correlation coefficient"},
    {"pears", "Pears"},
    {"spear", "Spear"},
    {"kend", "Kend"},
    {"cron", "Cron"},
    {"lin's", "Lin's"},
    {"h0:", "H0:"},
    {"h1:", "H1:"},
    {"popul.", "population"},
    {"poi", "Poi"},
    {"regr.", "regression "},
    {"coeff.", "coefficient"},
    {"cov.", "covariate"},
    {"stude", "Stude"},
    {"o'b", "O'B"},
    {"flem", "Flem"},
    {"poc", "Poc"},
    {"wang", "Wang"},
    {"tsi", "Tsi"},
    {"hay", "Hay"},
    {"peto", "Peto"},
    {"lan-dem", "Lan-DeM"},
    {"hW", "Hw"},
    {"shih", "Shih"},
    {"deca", "DeCa"},
    {"kim-dem", "Kim-DeM"},
    {"anov", "Anov"},
    {"bonf", "Bonf"},
    {"sch", "Sch"},
    {"freed", "Freed"},
    {"kolm", "Kolm"},
    {"smir", "Smir"},
    {"cauc", "Cauc"},
    {"lapl", "Lapl"},
    {"weib", "Weib"},
    {"lach", "Lach"},
    {"foulk", "Foulk"},
    {"rube", "Rube"},
    {"geor", "Geor"},
    {"desu", "Desu"},
    {"krus", "Krus"},
    {"wall", "Wall"},
    {"jonc", "Jonc"},
    {"terp", "Terp"},
    {"sieg", "Sieg"},
    {"tuke", "Tuke"},
    {"ansa", "Ansa"},
    {"brad", "Brad"},
    {"klot", "Klot"},
    {"mood", "Mood"},
    {"cono", "Cono"},
    {"dunn", "Dunn"},
    {"mcb", "MCB"},
    {"sidak", "Sidak"},
    {" h0", " H0"},
    {" h1", " H1"},
    {"coh", "Coh"},
    {"maha", "Maha"},
    {"Prop", "prop"},
    {"fract.o", "fraction o"},
    {"Anova", "ANOVA"},
    {"holm", "Holm"},
    {"hoch", "Hoch"},
    {"prob", "Prob"},
    {"conf.", "confidence "},
    {"pr(ci", "Pr(CI"},
    {"| h0", "| H0"},
    {"| h1", "| H1"},
    {" ci", " CI"},
    {"monte carlo", "Monte Carlo"},
    {" no ", " No "},
    {" no)", " No)"},
    {" No int", " no int"},
    {"99999", "0"},
    {"deG", "deg"},
    {"ct C", "ct c"},
};

// What the list above leaves unfit for a protocol. Its stems catch words that they don't mean
// (Freedman's catches freedom, the capital of "Prob (" a probability), and the screen has
// abbreviations that it doesn't know.
constexpr Replacement Afterthoughts[] = {
    {"Freedom", "freedom"},
    {"Probabilit", "probabilit"},
    {"alphA-H0", "alpha - H0"},
    {"alpha/H0", "alpha / H0"},
    {"Cronb's", "Cronbach's"},
    {"pr(cov", "Pr(cov"},
    {"mean+stddev", "mean + standard deviation"},
    {"intra. corr.", "intraclass correlation"},
    {"corr.coefficient", "correlation coefficient"},
    {"conc.", "concordance "},
    {"coefficient1", "coefficient 1"},
    {"coefficient2", "coefficient 2"},
    {"deviation covariate", "deviation for covariate "},
    {"incide.", "incidence "},
    {"incid.", "incidence "},
    {"prop.", "proportion "},
    {"(k,j), any j", "(k,j) for any j"},
    {"sum of difference in", "sum of differences in"},
    {"sum of standard deviation of", "sum of variances of"}, // which is what is entered there
    {"loc.shift", "location shift"},
    {"shift.", "shift"},
    {"seq.", "sequence "},
    {"hazardratio", "hazard ratio"},
    {"2-hazard", "2 - hazard"},
    {"latin", "Latin"},
    {"....", "..."},
    {"No (p) of regression coefficient = 0", "number (p) of regression coefficients equal to 0"},
    {"proportion drop-outs", "proportion of drop-outs"},
    {"correlation covariate with", "correlation of covariate with"},
    {"on elog scale", "on the natural log scale"},
    {"elog scale", "natural log scale"},
    {"H0:", "H0: "},
    {"H1:", "H1: "},
    {"( ", "("},
    {" )", ")"},
    {"Prob (width of interval < w)", "probability of an interval width below w"},
};

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

bool StartsWithOneOf(std::string_view text, std::string_view letters) {
    return !text.empty() && letters.find(text.front()) != std::string_view::npos;
}

} // namespace

void ReplaceAll(std::string& text, std::string_view part, std::string_view replacement) {
    for (std::size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + replacement.size()))
        text.replace(at, part.size(), replacement);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string SingleBlanks(std::string_view text) {
    std::string single;
    for (const char c : text)
        if (c != ' ' || single.empty() || single.back() != ' ')
            single += c;
    return single;
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    std::string word;
    while (stream >> word)
        words.push_back(word);
    return words;
}

std::string SumNormalise(std::string_view text) {
    std::string normal = LowerCase(StripAmpersand(text));
    Apply(normal, Normalisations);
    return normal;
}

std::string SumPhrase(std::string_view label) {
    std::string phrase = SingleBlanks(SumNormalise(label));
    Apply(phrase, Afterthoughts);
    return std::string(Trimmed(SingleBlanks(phrase)));
}

std::string SumNameAfterH(std::string_view label) {
    const std::string text = StripAmpersand(label);
    const std::string_view name = text;
    const bool hasPrefix = name.starts_with("H0:") || name.starts_with("H1:");
    constexpr std::size_t prefix = 3;
    return std::string(hasPrefix ? Trimmed(name.substr(prefix)) : name);
}

std::string SumArticle(std::string_view word) {
    return StartsWithOneOf(word, "aAeEiIoOuUyY") ? "an" : "a";
}

std::string SumArticleLabel(std::string_view label) {
    return StartsWithOneOf(LowerCase(SumNameAfterH(label)), "aeiu") ? "an " : "a ";
}

std::string SumPlural(i32 n) {
    return n == 1 ? "" : "s";
}

void SumAnd(i32 i, i32 last, std::string& text) {
    text += i == last ? " and" : ",";
}

std::string SumList(const std::vector<std::string>& items) {
    std::string list;
    const i32 last = static_cast<i32>(items.size());
    for (i32 i = 1; i <= last; ++i) {
        if (i > 1) {
            SumAnd(i, last, list);
            list += " ";
        }
        list += items[static_cast<std::size_t>(i - 1)];
    }
    return list;
}

std::string SumAlternatives(const std::vector<std::string>& items) {
    std::string list = SumList(items);
    constexpr std::string_view conjunction = " and ";
    const std::size_t at = list.rfind(conjunction);
    if (at != std::string::npos)
        list.replace(at, conjunction.size(), " or ");
    return list;
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
    constexpr std::string_view comma = ", ";
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t at = text.find(comma); at != std::string::npos; at = text.find(comma, from)) {
        parts.push_back(text.substr(from, at - from));
        from = at + comma.size();
    }
    parts.push_back(text.substr(from));
    return parts;
}

} // namespace quorvanta
