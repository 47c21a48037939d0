#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "output/statement_words.h"
#include "support/scripted_platform.h"
#include "support/tsv.h"

#include <cctype>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

struct Wording {
    std::string Text;
    std::string Expected;
};

// --- SumNormalise -----------------------------------------------------------------------------

// One text for each replacement, in the order of the list, as the list's own words give it by hand.
TEST(SumNormalise, MakesEachReplacement) {
    const std::vector<Wording> wordings = {
        {"&No of Groups", "number of groups"},
        {"A-factor", "A-factor"},
        {"B-factor", "B-factor"},
        {"C-factor", "C-factor"},
        {"Effect AxB", "effect AxB"},
        {"Main Effect A", "main effect A"},
        {"Main Effect B", "main effect B"},
        {"Interaction AxB", "interaction AxB"},
        {"Between Factor A", "between factor A"},
        {"Within Factor B", "within factor B"},
        {"Uneq.Std.", "unequal standard "},
        {"Satterthwaite", "with Satterthwaite approximation"},
        {"Std.", "standard "},
        {"Dev.", "deviation "},
        {"Diff.", "difference "},
        {"Comp.Symmetry", "compound symmetry"},
        {"Auto Correlation", "auto correlation covariance matrix"},
        {"General Matrix", "general covariance matrix"},
        {"Greenhouse", "Greenhouse"},
        {"Greenhouse-Geisser", "Greenhouse-Geisser"},
        {"Mult. Corr.", "multiple correlation coefficient"},
        {"Pearson", "Pearson"},
        {"Spearman", "Spearman"},
        {"Kendall", "Kendall"},
        {"Cronbach", "Cronbach"},
        {"Lin's", "Lin's"},
        {"H0:Mean", "H0:mean"},
        {"H1:Mean", "H1:mean"},
        {"Popul. Size", "population size"},
        {"Poisson", "Poisson"},
        {"Regr.Model", "regression model"},
        {"Coeff.", "coefficient"},
        {"Cov.", "covariate"},
        {"Student", "Student"},
        {"O'Brien", "O'Brien"},
        {"Fleming", "Fleming"},
        {"Pocock", "Pocock"},
        {"Wang", "Wang"},
        {"Tsiatis", "Tsiatis"},
        {"Haybittle", "Haybittle"},
        {"Peto", "Peto"},
        {"Lan-DeMets", "Lan-DeMets"},
        {"Hwang", "Hwang"},
        {"Shih", "Shih"},
        {"DeCani", "DeCani"},
        {"Kim-DeMets", "Kim-DeMets"},
        {"ANOVA", "ANOVA"},
        {"Bonferroni", "Bonferroni"},
        {"Scheffe", "Scheffe"},
        {"Freedman", "Freedman"},
        {"Kolmogorov", "Kolmogorov"},
        {"Smirnov", "Smirnov"},
        {"Cauchy", "Cauchy"},
        {"Laplace", "Laplace"},
        {"Weibull", "Weibull"},
        {"Lachin", "Lachin"},
        {"Foulkes", "Foulkes"},
        {"Rubenstein", "Rubenstein"},
        {"George", "George"},
        {"Desu", "Desu"},
        {"Kruskal", "Kruskal"},
        {"Wallis", "Wallis"},
        {"Jonckheere", "Jonckheere"},
        {"Terpstra", "Terpstra"},
        {"Siegel", "Siegel"},
        {"Tukey", "Tukey"},
        {"Ansari", "Ansari"},
        {"Bradley", "Bradley"},
        {"Klotz", "Klotz"},
        {"Mood", "Mood"},
        {"Conover", "Conover"},
        {"Dunnett", "Dunnett"},
        {"MCB", "MCB"},
        {"Sidak", "Sidak"},
        {"Under H0", "under H0"},
        {"Under H1", "under H1"},
        {"Cohen", "Cohen"},
        {"Mahalanobis", "Mahalanobis"},
        {"Fract.of", "fraction of"},
        {"Holm", "Holm"},
        {"Hochberg", "Hochberg"},
        {"Prob (Event)", "Prob (event)"},
        {"Conf.Level", "confidence level"},
        {"Pr(CI Within Limits | H0 true)", "Pr(CI within limits | H0 true)"},
        {"Pr(CI Within Limits | H1 true)", "Pr(CI within limits | H1 true)"},
        {"95% CI", "95% CI"},
        {"Monte Carlo", "Monte Carlo"},
        {"H0: No (p) of", "H0: No (p) of"},
        {"(Yes or No)", "(yes or No)"},
    };
    for (const Wording& wording : wordings)
        EXPECT_EQ(SumNormalise(wording.Text), wording.Expected);
}

TEST(SumNormalise, LaterReplacementsUndoWhatEarlierOnesOverdid) {
    // "gree" gives deGrees, "deG" takes it back.
    EXPECT_EQ(SumNormalise("Degrees"), "degrees");
    // "ct c" gives produCt C..., "ct C" takes it back; with it factor C, which "ct C" can't tell
    // from a product.
    EXPECT_EQ(SumNormalise("Product Carried"), "product carried");
    EXPECT_EQ(SumNormalise("Main Effect C"), "main effect c");
    // "wang" gives hWang.
    EXPECT_EQ(SumNormalise("Hwang-Shih-DeCani"), "Hwang-Shih-DeCani");
    // "mult. corr." is one replacement and must be whole when "coeff." comes.
    EXPECT_EQ(SumNormalise("Mult. Corr."), "multiple correlation coefficient");
    // "std." before "dev.", each with a blank of its own.
    EXPECT_EQ(SumNormalise("Std.Dev.1"), "standard deviation 1");
    // "no of" is gone before " no " is looked for.
    EXPECT_EQ(SumNormalise("Total No of Events"), "total number of events");
}

TEST(SumNormalise, NoIntStaysLowerCase) {
    EXPECT_EQ(SumNormalise("With No Interaction"), "with no interaction");
    EXPECT_EQ(SumNormalise("With No Carryover"), "with No carryover");
}

TEST(SumNormalise, WritesNoValueAsZero) {
    EXPECT_EQ(SumNormalise("99999"), "0");
    EXPECT_EQ(SumNormalise("Mean = 99999,"), "mean = 0,");
}

TEST(SumNormalise, KnowsTheListedStemsOnly) {
    EXPECT_EQ(SumNormalise("MCNEMAR AND FISHER"), "mcnemar and fisher");
    EXPECT_EQ(SumNormalise("WILCOXON"), "wilcoxon");
    EXPECT_EQ(SumNormalise("KENDALL"), "Kendall");
    EXPECT_EQ(SumNormalise("LATIN SQUARE"), "latin square");
}

TEST(SumNormalise, ReplacesEveryOccurrence) {
    EXPECT_EQ(SumNormalise("Std.Std.Std."), "standard standard standard ");
    EXPECT_EQ(SumNormalise(""), "");
    EXPECT_EQ(SumNormalise("&&"), "");
}

TEST(SumNormalise, LeavesWhatIsNotAscii) {
    EXPECT_EQ(SumNormalise("M\xC3\x9CLLER"), "m\xC3\x9Cller");
}

// --- Labels -----------------------------------------------------------------------------------

// The file holds for each kind its label as the list of replacements turns it, by a program of its
// own that has the list only, and the phrase that should stand in a sentence. The phrases that
// differ from what the list gives were written by hand.
TEST(StatementLabels, AllReadAsTheyShould) {
    const ScriptedPlatform platform;
    Main();
    const auto rows = checks::ReadTsv("statement_labels.tsv");
    ASSERT_EQ(rows.size(), 370U);
    for (const auto& row : rows) {
        const auto kind = std::stoi(row[0]);
        EXPECT_EQ(ParLabel(kind), row[1]);
        EXPECT_EQ(SumNormalise(ParLabel(kind)), row[2]) << "kind " << kind;
        EXPECT_EQ(SumPhrase(ParLabel(kind)), row[3]) << "kind " << kind;
    }
}

TEST(StatementLabels, HaveNothingThatASentenceCantHold) {
    const ScriptedPlatform platform;
    Main();
    for (int kind = 0; kind <= MaxKind; ++kind) {
        const std::string phrase = SumPhrase(ParLabel(kind));
        for (const char* bad : {"  ", "&", "std.", "dev.", "diff.", "corr.", "coeff.", "prop.",
                                "H0:m", "H1:m", "( ", " )"})
            EXPECT_EQ(phrase.find(bad), std::string::npos) << phrase;
        // A number stands apart from its word, but for names of variables and samples.
        for (std::size_t i = 1; i < phrase.size(); ++i)
            if (std::isdigit(static_cast<unsigned char>(phrase[i])) != 0 && phrase[i - 1] == 't')
                ADD_FAILURE() << phrase;
    }
}

// --- Small words ------------------------------------------------------------------------------

TEST(SumArticle, LooksAtTheFirstLetter) {
    for (const char* word : {"a", "A", "e", "E", "i", "I", "o", "O", "u", "U", "y", "Y"})
        EXPECT_EQ(SumArticle(word), "an") << word;
    for (const std::string letter : {"b", "h", "H", "n", "P", "w", "1", "("})
        EXPECT_EQ(SumArticle(letter), "a") << letter;
    EXPECT_EQ(SumArticle("exponential distribution"), "an");
    EXPECT_EQ(SumArticle("normal distribution"), "a");
    EXPECT_EQ(SumArticle(""), "a");
}

TEST(SumArticleLabel, LooksAtTheNameAndKnowsFewerLetters) {
    EXPECT_EQ(SumArticleLabel("A&bsolute Error"), "an ");
    EXPECT_EQ(SumArticleLabel("&Upper Absolute Error"), "an ");
    EXPECT_EQ(SumArticleLabel("&Relative Error"), "a ");
    EXPECT_EQ(SumArticleLabel("H1: I&ncidence 1"), "an ");
    EXPECT_EQ(SumArticleLabel("H&0: Mean"), "a ");
    EXPECT_EQ(SumArticleLabel("Exponential Distribution"), "an ");
    // Where it differs from SumArticle on purpose.
    EXPECT_EQ(SumArticleLabel("One-sided"), "a ");
    EXPECT_EQ(SumArticleLabel("Yates' Correction"), "a ");
    EXPECT_EQ(SumArticleLabel(""), "a ");
}

TEST(SumPlural, IsForAnyNumberButOne) {
    EXPECT_EQ(SumPlural(1), "");
    EXPECT_EQ(SumPlural(0), "s");
    EXPECT_EQ(SumPlural(2), "s");
}

TEST(SumNameAfterH, DropsThePrefixAtTheStartOnly) {
    EXPECT_EQ(SumNameAfterH("H&0: Mean 2 - Mean 1"), "Mean 2 - Mean 1");
    EXPECT_EQ(SumNameAfterH("H1:&Mean  -  H0:Mean"), "Mean  -  H0:Mean");
    EXPECT_EQ(SumNameAfterH("&Power"), "Power");
    EXPECT_EQ(SumNameAfterH("Mean H0: 3"), "Mean H0: 3");
    EXPECT_EQ(SumNameAfterH("H2: Mean"), "H2: Mean");
    EXPECT_EQ(SumNameAfterH("H1:"), "");
}

TEST(SumAnd, PutsAndAheadOfTheLastItem) {
    std::string text = "1";
    SumAnd(2, 3, text);
    EXPECT_EQ(text, "1,");
    SumAnd(3, 3, text);
    EXPECT_EQ(text, "1, and");
}

TEST(SumList, ReadsAsRunningText) {
    EXPECT_EQ(SumList({}), "");
    EXPECT_EQ(SumList({"10"}), "10");
    EXPECT_EQ(SumList({"10", "20"}), "10 and 20");
    EXPECT_EQ(SumList({"10", "20", "30"}), "10, 20 and 30");
}

} // namespace
} // namespace quorvanta
