// What the help numbers stand for.
#include "core/analysis_state.h"
#include "core/help_numbers.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvanta {
namespace {

void CollectAnalyses(std::span<const MenuItem> items, std::vector<const MenuItem*>& found) {
    for (const MenuItem& item : items) {
        if (item.Action == MenuAction::Test || item.Action == MenuAction::Distribution)
            found.push_back(&item);
        CollectAnalyses(item.Children, found);
    }
}

// Every analysis of the menus in turn as the current one.
template <class Visit>
void ForEachAnalysis(Visit&& visit) {
    ResetAnalysisState();
    std::vector<const MenuItem*> analyses;
    CollectAnalyses(MainMenu(), analyses);
    ASSERT_GE(analyses.size(), 150U);
    for (const MenuItem* item : analyses) {
        IsTest = ToFlag(item->Action == MenuAction::Test);
        (IsTest == True ? TestNo : DistrNo) = IsTest == True ? item->TestNo : item->MenuNo;
        visit();
    }
}

TEST(HelpNumbers, OfDescriptionsAreTakenApart) {
    ForEachAnalysis([] {
        const HelpSubject subject = HelpSubjectOf(HelpDescription());
        EXPECT_EQ(subject.Topic, HelpTopic::Description);
        EXPECT_EQ(subject.IsTest, IsTest);
        EXPECT_EQ(IsTest == True ? subject.TestNo : subject.DistrNo,
                  IsTest == True ? TestNo : DistrNo);
        EXPECT_EQ(HelpDescriptionOf(subject), HelpDescription());
    });
}

TEST(HelpNumbers, OfExamplesAreTakenApart) {
    ForEachAnalysis([] {
        HelpSubject subject = HelpSubjectOf(HelpExample());
        EXPECT_EQ(subject.Topic, HelpTopic::Example);
        EXPECT_EQ(HelpDescriptionOf(subject), HelpDescription());
        subject.Topic = HelpTopic::Description;
        EXPECT_EQ(subject, HelpSubjectOf(HelpDescription()));
    });
}

TEST(HelpNumbers, OfParametersAreTakenApart) {
    ForEachAnalysis([] {
        const auto lists = IsTest == True ? i16{1} : static_cast<i16>(DistrParList(DistrNo).size());
        for (NoOfSamples = 1; NoOfSamples <= 3; ++NoOfSamples)
            for (NoOfTails = 1; NoOfTails <= 3; ++NoOfTails)
                for (ParListNo = 0; ParListNo < lists; ++ParListNo)
                    for (ProcedureNo = 0; ProcedureNo <= (IsTest == True ? 0 : 2); ++ProcedureNo) {
                        const HelpSubject subject = HelpSubjectOf(HelpParameters());
                        EXPECT_EQ(subject.Topic, HelpTopic::Parameters);
                        EXPECT_EQ(HelpDescriptionOf(subject), HelpDescription());
                        EXPECT_EQ(subject.NoOfSamples, NoOfSamples);
                        EXPECT_EQ(subject.NoOfTails, NoOfTails);
                        EXPECT_EQ(subject.ParListNo, ParListNo);
                        EXPECT_EQ(subject.ProcedureNo, ProcedureNo);
                    }
    });
}

TEST(HelpNumbers, OfMenusAreKnown) {
    EXPECT_EQ(HelpSubjectName(HelpSubjectOf(100)), "  File ");
    EXPECT_EQ(HelpSubjectName(HelpSubjectOf(800)), "Distribution Parameters");
    EXPECT_EQ(HelpSubjectOf(800).Topic, HelpTopic::Menu);
    EXPECT_EQ(HelpDescriptionOf(HelpSubjectOf(800)), 0);
}

TEST(HelpNumbers, WithoutMeaningStandForNothing) {
    for (const i32 number : {-1,
                             0,
                             1,
                             99,
                             101,
                             299,
                             300, // below the descriptions
                             306,
                             310,
                             799, // tests without an entry
                             804,
                             812,
                             899,
                             900,
                             1000, // distributions without an entry
                             1001,
                             1010,
                             1099, // no tails
                             1102, // a procedure of a test
                             1400,
                             4100, // no such tails, no such samples
                             1113,
                             1150,          // no such procedure, no such parameter
                             31110,         // no such distribution
                             31100 + 20000, // no such test
                             9300,
                             9306,
                             9800,
                             99301,
                             93010, // no examples
                             9999999,
                             10'000'000,
                             2'000'000'000, // beyond all analyses
                             std::numeric_limits<i32>::max(),
                             std::numeric_limits<i32>::min()})
        EXPECT_EQ(HelpSubjectOf(number), HelpSubject()) << number;
    EXPECT_EQ(HelpSubjectName({}), "");
    EXPECT_EQ(HelpDescriptionOf({}), 0);
}

TEST(HelpNumbers, AreNamed) {
    EXPECT_EQ(HelpSubjectName(HelpSubjectOf(301)), "Student's t-test, Unpaired");
    EXPECT_EQ(HelpSubjectName(HelpSubjectOf(9301)), "Student's t-test, Unpaired");
    EXPECT_EQ(HelpSubjectName(HelpSubjectOf(801)), "Normal Distribution");
    EXPECT_EQ(HelpChoicesInWords(HelpSubjectOf(301)), "");

    const HelpSubject test = HelpSubjectOf(812100);
    EXPECT_EQ(HelpSubjectName(test),
              "Non-inferiority, Confidence Interval, Difference of Means. t-distribution");
    EXPECT_EQ(HelpChoicesInWords(test), "two samples, one-sided");

    const HelpSubject interval = HelpSubjectOf(1222);
    EXPECT_EQ(HelpSubjectName(interval), "mean (std.dev. unknown), Normal Distribution");
    EXPECT_EQ(HelpChoicesInWords(interval), "confidence interval, one sample, two-sided");
    EXPECT_EQ(HelpChoicesInWords(HelpSubjectOf(103341)),
              "point estimate, more than two samples, two one-sided");
}

TEST(HelpNumbers, LeadToTheMenus) {
    const MenuPath path = PathToTest(0);
    ASSERT_EQ(path.size(), 3U);
    EXPECT_EQ(path.front()->Name, "mnuTestProc");
    EXPECT_EQ(path.back()->Name, "mnuStudent");
    EXPECT_EQ(PathToDistribution(10).back()->MenuNo, 10);
    EXPECT_TRUE(PathToTest(125).empty());
    EXPECT_TRUE(PathToDistribution(3).empty());
}

} // namespace
} // namespace quorvanta
