// The menu tree and its numbers against a listing that was compiled apart from it.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "support/tsv.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

class MenuCatalogue : public testing::Test {
  protected:
    void SetUp() override { ResetAnalysisState(); }
};

struct Entry {
    int Depth;
    MenuItem Item;
};

void Collect(const MenuItem& item, int depth, std::vector<Entry>& entries) {
    entries.push_back({depth, item});
    for (const MenuItem& child : item.Children)
        Collect(child, depth + 1, entries);
}

// All entries, the pop-up menu last, as they are read from top to bottom.
std::vector<Entry> AllEntries() {
    std::vector<Entry> entries;
    for (const MenuItem& head : MainMenu())
        Collect(head, 0, entries);
    Collect(OutputMenu(), 0, entries);
    return entries;
}

std::vector<Entry> TestEntries() {
    auto entries = AllEntries();
    std::erase_if(entries,
                  [](const Entry& entry) { return entry.Item.Action != MenuAction::Test; });
    return entries;
}

std::string Text(i16 number) {
    return number == NoNumber ? "" : std::to_string(number);
}

TEST_F(MenuCatalogue, EveryEntryIsAsListed) {
    auto entries = AllEntries();
    std::erase_if(entries,
                  [](const Entry& entry) { return entry.Item.Action == MenuAction::Separator; });
    const auto rows = checks::ReadTsv("catalogue_menus.tsv");
    ASSERT_EQ(entries.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& row = rows[i];
        const MenuItem& item = entries[i].Item;
        SCOPED_TRACE(row[1] + "(" + row[2] + ")");
        EXPECT_EQ(std::to_string(entries[i].Depth), row[0]);
        EXPECT_EQ(item.Name, row[1]);
        EXPECT_EQ(Text(item.Index), row[2]);
        EXPECT_EQ(item.Caption, row[3]);
        EXPECT_EQ(Text(item.MenuNo), row[4]);
        EXPECT_EQ(Text(item.TestNo), row[5]);
        if (item.Action == MenuAction::Test) {
            EXPECT_EQ(TestMenuName(item.MenuNo), row[6]);
            EXPECT_EQ(std::to_string(MenuToTestNo(item.MenuNo)), row[5]);
        }
    }
}

TEST_F(MenuCatalogue, SeparatorsFillTheGapsOfTheIndices) {
    std::set<std::pair<std::string, std::string>> listed;
    for (const auto& row : checks::ReadTsv("catalogue_separators.tsv"))
        listed.insert({row[0], row[1]});
    std::set<std::pair<std::string, std::string>> found;
    for (const auto& [depth, item] : AllEntries()) {
        if (item.Action != MenuAction::Separator)
            continue;
        EXPECT_EQ(item.Caption, "");
        EXPECT_TRUE(found.insert({std::string(item.Name), Text(item.Index)}).second);
    }
    EXPECT_EQ(found, listed);
}

// Indices rise within a control array, and no menu begins or ends with a separator.
TEST_F(MenuCatalogue, MenusAreInOrder) {
    for (const auto& [depth, item] : AllEntries()) {
        SCOPED_TRACE(std::string(item.Name) + " " + std::string(item.Caption));
        EXPECT_EQ(item.Action == MenuAction::Submenu, !item.Children.empty());
        if (item.Children.empty())
            continue;
        EXPECT_NE(item.Children.front().Action, MenuAction::Separator);
        EXPECT_NE(item.Children.back().Action, MenuAction::Separator);
        std::map<std::string_view, i16> last;
        for (const MenuItem& child : item.Children) {
            const auto [before, first] = last.emplace(child.Name, child.Index);
            EXPECT_TRUE(first || before->second < child.Index);
            before->second = child.Index;
        }
    }
}

TEST_F(MenuCatalogue, MenuBarReadsFromFileToHelp) {
    const std::vector<std::string_view> captions = {"  &File ",
                                                    "&Parametric Tests",
                                                    "&Non-Parametric Tests",
                                                    "&Group Sequential Tests",
                                                    "&Multiple Comparisons",
                                                    "&Equivalence/Non-inferiority",
                                                    "&Distribution Parameters",
                                                    "&Current Analysis",
                                                    "&Help"};
    std::vector<std::string_view> found;
    std::set<char> accelerators;
    for (const MenuItem& head : MainMenu()) {
        found.push_back(head.Caption);
        EXPECT_TRUE(accelerators.insert(head.Caption[head.Caption.find('&') + 1]).second);
        EXPECT_EQ(head.Index, NoIndex);
    }
    EXPECT_EQ(found, captions);
}

TEST_F(MenuCatalogue, HeadsHaveTheirHelpNumbers) {
    for (const auto& [depth, item] : AllEntries()) {
        const i16 expected = item.Name == "mnuFileHead" ? 100 : item.Name == "mnuParProc" ? 800 : 0;
        EXPECT_EQ(item.HelpNo, expected) << item.Name;
    }
}

TEST_F(MenuCatalogue, OneHundredAndFortyTwoTestsEachWithItsOwnNumbers) {
    std::set<i16> menuNumbers;
    std::set<i16> testNumbers;
    for (const auto& [depth, item] : TestEntries()) {
        EXPECT_TRUE(menuNumbers.insert(item.MenuNo).second) << item.MenuNo;
        EXPECT_TRUE(testNumbers.insert(item.TestNo).second) << item.TestNo;
    }
    EXPECT_EQ(menuNumbers.size(), 142U);
}

// A menu number is the index of its entry and a base that belongs to the control array.
TEST_F(MenuCatalogue, MenuNumbersAreIndexAndBase) {
    std::map<std::string_view, int> bases = {{"mnuTest", 0}, {"mnuNonParTest", 0}, {"mnuGoF", 262}};
    const auto rows = checks::ReadTsv("catalogue_handlers.tsv");
    for (const auto& row : rows)
        bases.emplace(row[0], std::stoi(row[1]));
    std::set<std::string_view> used;
    for (const auto& [depth, item] : TestEntries()) {
        used.insert(item.Name);
        if (item.Name == "mnuReliab")
            EXPECT_EQ(item.MenuNo, item.Index + (item.Index == 4 ? 511 : 510));
        else if (item.Name == "mnuLogRankStrat")
            EXPECT_EQ(item.MenuNo, item.Index == 0 ? 420 : 424);
        else
            EXPECT_EQ(item.MenuNo, item.Index + bases.at(item.Name)) << item.Name << item.Index;
    }
    EXPECT_EQ(used.size(), bases.size() + 2);
}

TEST_F(MenuCatalogue, IrregularHandlers) {
    std::map<std::pair<std::string_view, i16>, MenuItem> entries;
    for (const auto& [depth, item] : AllEntries())
        entries[{item.Name, item.Index}] = item;
    for (const i16 index : std::vector<i16>{600, 620, 630})
        EXPECT_EQ((entries[{"mnuGroupSeqTest", index}].Action), MenuAction::Submenu);
    EXPECT_EQ((entries[{"mnuGoF", 0}].Action), MenuAction::Submenu);
    EXPECT_EQ((entries[{"mnuGoF", 1}].MenuNo), 263);
    EXPECT_EQ((entries[{"mnuReliab", 3}].Action), MenuAction::Submenu);
    EXPECT_EQ((entries[{"mnuReliab", 4}].MenuNo), 515);
    EXPECT_EQ((entries[{"mnuLogRankStrat", 1}].Action), MenuAction::Submenu);
    EXPECT_EQ((entries[{"mnuLogRankStrat", 2}].MenuNo), 424);
    EXPECT_EQ((entries[{"mnuTest", 110}].Action), MenuAction::Submenu);
}

TEST_F(MenuCatalogue, TheNumberOfATestSaysItsKind) {
    int designs = 0;
    int comparisons = 0;
    for (const auto& [depth, item] : TestEntries()) {
        IsGroupSeq = IsMultComp = False;
        const i16 testNo = MenuToTestNo(item.MenuNo);
        EXPECT_EQ(IsDesignTest(testNo), IsGroupSeq == True) << item.MenuNo;
        EXPECT_EQ(IsMultipleComparison(testNo), IsMultComp == True) << item.MenuNo;
        designs += IsGroupSeq == True;
        comparisons += IsMultComp == True;
    }
    EXPECT_EQ(designs, 3);
    EXPECT_EQ(comparisons, 11);
    EXPECT_TRUE(IsDesignTest(StudentDesign)) << "an option of the design of means";
    EXPECT_FALSE(IsMultipleComparison(134));
    EXPECT_FALSE(IsMultipleComparison(146));
}

TEST_F(MenuCatalogue, TwoSeparatorsAreMapped) {
    EXPECT_EQ(MenuToTestNo(60), 19);
    EXPECT_EQ(MenuToTestNo(220), 60);
    EXPECT_EQ(TestMenuName(60), "");
    EXPECT_EQ(TestMenuName(220), "");
}

TEST_F(MenuCatalogue, UnknownNumbersGiveTheUnpairedTTest) {
    std::set<i16> known = {60, 220};
    for (const auto& [depth, item] : TestEntries())
        known.insert(item.MenuNo);
    for (int number = -1000; number <= 1000; ++number) {
        const i16 menuNo = static_cast<i16>(number);
        if (known.contains(menuNo))
            continue;
        EXPECT_EQ(MenuToTestNo(menuNo), 0) << number;
        EXPECT_EQ(TestMenuName(menuNo), "") << number;
    }
    EXPECT_EQ(MenuToTestNo(std::numeric_limits<i16>::max()), 0);
    EXPECT_EQ(MenuToTestNo(std::numeric_limits<i16>::min()), 0);
}

TEST_F(MenuCatalogue, OnlyDesignsSetTheGroupSequentialFlag) {
    for (const auto& [depth, item] : TestEntries()) {
        IsGroupSeq = False;
        MenuToTestNo(item.MenuNo);
        const bool design = item.Name.starts_with("mnuGrpSeq") && item.Caption == "&Design";
        EXPECT_EQ(IsGroupSeq, ToFlag(design)) << item.MenuNo;
    }
}

TEST_F(MenuCatalogue, OnlyMultipleComparisonsSetTheirFlag) {
    for (const auto& [depth, item] : TestEntries()) {
        IsMultComp = False;
        MenuToTestNo(item.MenuNo);
        EXPECT_EQ(IsMultComp, ToFlag(item.MenuNo >= 700 && item.MenuNo <= 732)) << item.MenuNo;
    }
    // The gaps between the three menus are no comparisons.
    for (const i16 menuNo : std::vector<i16>{704, 709, 714, 720, 729, 733}) {
        IsMultComp = False;
        MenuToTestNo(menuNo);
        EXPECT_EQ(IsMultComp, False) << menuNo;
    }
}

TEST_F(MenuCatalogue, FlagsAreSetAndNeverCleared) {
    IsGroupSeq = IsMultComp = True;
    MenuToTestNo(0);
    EXPECT_EQ(IsGroupSeq, True);
    EXPECT_EQ(IsMultComp, True);
}

TEST_F(MenuCatalogue, LookingUpATestNumberTouchesNothing) {
    EXPECT_EQ(TestNoOfMenu(600), 124);
    EXPECT_EQ(TestNoOfMenu(700), 138);
    EXPECT_EQ(IsGroupSeq, False);
    EXPECT_EQ(IsMultComp, False);
}

TEST_F(MenuCatalogue, NamesAreTheCaptionsOnTheWay) {
    EXPECT_EQ(TestMenuName(0), "Student's t-test, Unpaired");
    EXPECT_EQ(TestMenuName(50), "ANCOVA");
    EXPECT_EQ(TestMenuName(260), "Goodness of Fit test, Chi-square test, Discrete Distribution");
    EXPECT_EQ(TestMenuName(402),
              "Log-rank test, Parametric Approach, Hazard approach (Lachin - Foulkes)");
    EXPECT_EQ(TestMenuName(424), "Stratified Log-rank test, Monte Carlo Simulation");
    EXPECT_EQ(TestMenuName(515), "Reliability test, Lin's Concordance Coefficient");
}

TEST_F(MenuCatalogue, NamesKeepTheCaptionsAsTheyStand) {
    EXPECT_EQ(TestMenuName(111), "Chi-square test , 2 x 2 table, Two Proportions");
    EXPECT_EQ(TestMenuName(833),
              "Non-inferiority, Confidence Interval, Difference of Paired Proportions.");
    EXPECT_EQ(TestMenuName(231), "Two-way Crossover Design, Muliplicative Model");
}

TEST_F(MenuCatalogue, GoodnessOfFitOfATableIsNoChiSquareTestOfTwoProportions) {
    EXPECT_EQ(TestMenuName(110), "Chi-square test , 1 x C table, Goodness Of Fit");
    EXPECT_EQ(MenuToTestNo(110), 25);
    EXPECT_EQ(MenuToTestNo(260), 106);
    EXPECT_EQ(MenuToTestNo(261), 107);
    EXPECT_EQ(MenuToTestNo(111), 21);
}

TEST_F(MenuCatalogue, FriedmansTestIsNumbered377) {
    EXPECT_EQ(TestMenuName(320), "Friedman's test");
    EXPECT_EQ(MenuToTestNo(320), 377);
    EXPECT_EQ(IsMultComp, False);
}

TEST_F(MenuCatalogue, ExponentialLifeTableTestIsNumberedBeforeTheSharedForms) {
    EXPECT_EQ(TestMenuName(390), "Life Table test (Mantel-Haenszel), Exponential distribution");
    EXPECT_EQ(MenuToTestNo(390), 26);
    EXPECT_EQ(MenuToTestNo(391), 27);
    EXPECT_EQ(MenuToTestNo(392), 28);
    EXPECT_EQ(MenuToTestNo(393), 29);
}

TEST_F(MenuCatalogue, DistributionsAreNumberedByTheirIndex) {
    const std::map<i16, std::string> names = {
        {DistrNormal, "Normal Distribution"},
        {DistrLognormal, "Lognormal Distribution"},
        {DistrExponential, "Exponential Distribution"},
        {DistrBinomial, "Binomial Distribution"},
        {DistrHypergeometric, "Hypergeometric Distribution"},
        {DistrPoisson, "Poisson Distribution"},
        {DistrFinitePopulation, "Finite Population"},
        {DistrBivariateNormal, "Bivariate Normal Distribution"}};
    for (i16 distrNo = -1; distrNo <= 11; ++distrNo) {
        const auto name = names.find(distrNo);
        EXPECT_EQ(DistrMenuName(distrNo), name == names.end() ? "" : name->second) << distrNo;
    }
}

} // namespace

} // namespace quorvanta
