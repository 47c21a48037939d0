// The full-text search of the help.
#include "ui/helpsearch.h"

#include <gtest/gtest.h>

namespace quorvanta {
namespace {

class HelpTextSearch : public testing::Test {
  protected:
    HelpTextSearch() {
        Add("a", "One", "<p>The <i>t</i>-test of <i>n</i><sub>1</sub> subjects</p><p>Power</p>");
        Add("b", "The Power", "<p>A power &amp; more: 5 &lt; 6, t and test.</p>");
        Add("c", "Means x\u0304", "<li>Powerful</li><li>x\u0304 power power</li>");
    }

    void Add(const QString& name, const QString& title, const QString& body) {
        search_.Add(QUrl(name), "<html><head><title>" + title + "</title></head><body><h1>" +
                                    title + "</h1>" + body + "</body></html>");
    }

    // The names of the pages found, in their order.
    QString Find(const QString& words) {
        QString names;
        for (const HelpHit& hit : search_.Find(words))
            names += hit.Page.toString();
        return names;
    }

  private:
    HelpSearch search_;
};

TEST_F(HelpTextSearch, FindsPagesWithAllWords) {
    EXPECT_EQ(Find("subjects power"), "a");
    EXPECT_EQ(Find("power subjects "), "a");
    EXPECT_EQ(Find("subjects more"), "");
    EXPECT_EQ(Find("SUBJECTS"), "a");
}

TEST_F(HelpTextSearch, LetsTheLastWordGoOn) {
    EXPECT_EQ(Find("subj"), "a");
    EXPECT_EQ(Find("subj "), "");
    EXPECT_EQ(Find("subj power"), "");
    EXPECT_EQ(Find("bjects"), "") << "words are found from their beginning";
}

TEST_F(HelpTextSearch, KeepsTogetherWhatBelongsTogether) {
    EXPECT_EQ(Find("t-test"), "a");
    EXPECT_EQ(Find("t test"), "ab");
    EXPECT_EQ(Find("n1"), "a") << "an index belongs to its letter";
    EXPECT_EQ(Find("subjectspower"), "") << "paragraphs are apart";
}

TEST_F(HelpTextSearch, PutsTitlesFirstThenWhatOccursOften) {
    EXPECT_EQ(Find("power"), "bca");
}

TEST_F(HelpTextSearch, PutsThePageOfThatTitleFirstOfAll) {
    Add("d", "Power of the Power", "<p>Power, power, power</p>");
    Add("e", "Power", "<p>Power</p>");
    EXPECT_EQ(Find("power"), "edbca");
}

// Four words or more that stand side by side are worth more than a title that has them all.
TEST_F(HelpTextSearch, PutsAWholePhraseFirst) {
    Add("d", "Tests, means, one way", "<p>one test, one way, means, tests</p>");
    Add("e", "x", "<p>Means › Tests › One way</p>");
    EXPECT_EQ(Find("means tests one way"), "ed");
    EXPECT_EQ(Find("means tests one"), "de");
    Add("f", "Example: means, tests, one way", "<p>means tests one way</p>");
    EXPECT_EQ(Find("means tests one way"), "fed") << "in the title first";
}

TEST_F(HelpTextSearch, ReadsCharactersThatAreMarksInHtml) {
    EXPECT_EQ(Find("5 6"), "b");
    EXPECT_EQ(Find("amp"), "");
    EXPECT_EQ(Find("lt"), "");
    EXPECT_EQ(Find("x\u0304"), "c");
    EXPECT_EQ(Find("x"), "c");
}

TEST_F(HelpTextSearch, FindsNothingForNothing) {
    for (const char* words : {"", " ", "-", "\"", "*", "( )"})
        EXPECT_EQ(Find(words), "") << words;
    EXPECT_EQ(HelpSearch().Find("power").size(), 0);
}

TEST(HelpStems, AreOneForAllFormsOfAWord) {
    const QStringList families[] = {{"round", "rounds", "rounded", "rounding"},
                                    {"size", "sizes", "sized", "sizing"},
                                    {"plan", "plans", "planned", "planning"},
                                    {"study", "studies"},
                                    {"class", "classes"},
                                    {"fall", "falls", "falling"},
                                    {"pair", "pairs", "paired"}};
    for (const QStringList& family : families)
        for (const QString& word : family)
            EXPECT_EQ(StemOf(word), StemOf(family.front())) << qPrintable(word);
    for (const char* word : {"is", "bias", "radius", "less", "bed", "sing", "red", "n1", "chi"})
        EXPECT_EQ(StemOf(word), StemOf(StemOf(word))) << word;
    EXPECT_NE(StemOf("mean"), StemOf("median"));
    EXPECT_EQ(StemOf("radius"), "radius");
    EXPECT_EQ(StemOf("red"), "red");
}

TEST_F(HelpTextSearch, FindsAWordInAllItsForms) {
    Add("d", "Counts", "<p>They are rounded up to whole sizes.</p>");
    EXPECT_EQ(Find("round up"), "d");
    EXPECT_EQ(Find("rounding sized "), "d");
    EXPECT_EQ(Find("count"), "d");
    EXPECT_EQ(Find("counting "), "d");
    EXPECT_EQ(Find("rou"), "d");
    Add("e", "Limits", "<p>A rounded upper limit, upper, uppermost.</p>");
    EXPECT_EQ(Find("round up"), "de") << "the whole word first";
    EXPECT_EQ(Find("rou "), "");
}

TEST_F(HelpTextSearch, KnowsOtherWords) {
    Add("d", "x", "<p>difference and standard deviation</p>");
    Add("e", "y", "<p>An effect of some size: effect size.</p>");
    EXPECT_EQ(Find("effect size"), "ed") << "first what has the words themselves";
    EXPECT_EQ(Find("Cohen's d"), "d");
    EXPECT_EQ(Find("ttest"), "a");
    EXPECT_EQ(Find("ttest subjects"), "a");
    EXPECT_EQ(Find("ttest zzz"), "");
}

TEST_F(HelpTextSearch, PutsProofLast) {
    HelpSearch search;
    search.Add(QUrl("proof"), "<html><head><title>Power</title></head><body class=\"proof\">"
                              "<p>power power</p></body></html>");
    search.Add(QUrl("page"), "<html><head><title>x</title></head><body>power</body></html>");
    const QList<HelpHit> hits = search.Find("power");
    ASSERT_EQ(hits.size(), 2);
    EXPECT_EQ(hits[0].Page.toString(), "page");
    EXPECT_EQ(hits[1].Page.toString(), "proof");
}

TEST_F(HelpTextSearch, LivesWithBrokenHtml) {
    Add("d", "x", "broken <p");
    Add("e", "x", "broken < b > <");
    EXPECT_EQ(Find("broken"), "de");
    HelpSearch search;
    search.Add(QUrl("f"), "no tags at all");
    EXPECT_EQ(search.Find("tags").size(), 0);
}

} // namespace
} // namespace quorvanta
