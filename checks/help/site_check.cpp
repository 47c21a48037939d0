// The help as a whole: nothing is missing, no link is broken, and what it says of the program is
// what the program does.
#include "core/dispatch.h"
#include "core/help_numbers.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "generator/example.h"
#include "generator/markdown.h"
#include "generator/parameterlists.h"
#include "generator/site.h"
#include "generator/topic.h"
#include "support/analysis_fixture.h"
#include "support/statistics.h"

#include <algorithm>
#include <set>

namespace quorvanta::help {
namespace {

class HelpSite : public checks::AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    // Built once: no check changes it.
    static const Site& Help() {
        static const Site site = BuildSite(HELP_DIR);
        return site;
    }

    // The page of a number; a failure and an empty page if there is none.
    const Page& PageOfNumber(i32 number) {
        const auto page = std::ranges::find(Help().Pages, number, &Page::Number);
        if (page != Help().Pages.end())
            return *page;
        ADD_FAILURE() << "no page " << number;
        static const Page none;
        return none;
    }

    static bool Has(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    // The analyses that the menus offer and the program serves.
    static std::vector<HelpSubject> Served() {
        std::vector<HelpSubject> served;
        for (i32 number = 301; number < 900; ++number) {
            const HelpSubject subject = HelpSubjectOf(number);
            if (subject.Topic == HelpTopic::Description && IsServed(subject))
                served.push_back(subject);
        }
        return served;
    }
};

TEST_F(HelpSite, DescribesEveryAnalysisThatIsServed) {
    ASSERT_GE(Served().size(), 8U);
    std::set<i32> missing;
    for (const HelpSubject& analysis : Served()) {
        const i32 description = HelpDescriptionOf(analysis);
        if (std::ranges::find(Help().Pages, description, &Page::Number) == Help().Pages.end()) {
            missing.insert(description);
            continue;
        }
        EXPECT_TRUE(Has(PageOfNumber(description).Body, "<h2>Literature</h2>")) << description;
        // What is simulated only has a simulation for an example.
        const std::string& example =
            PageOfNumber(std::stoi("9" + std::to_string(description))).Body;
        EXPECT_TRUE(
            Has(example, IsSolved(analysis) ? "Press the label" : "Read at the end of the run"))
            << description;
        for (const HelpSubject& subject : ParameterSubjects(analysis)) {
            IsTest = subject.IsTest;
            TestNo = subject.TestNo;
            DistrNo = subject.DistrNo;
            NoOfSamples = subject.NoOfSamples;
            NoOfTails = subject.NoOfTails;
            ParListNo = subject.ParListNo;
            ProcedureNo = subject.ProcedureNo;
            PageOfNumber(HelpParameters());
        }
    }
    EXPECT_EQ(missing, std::set<i32>{});
}

// Every box that the user can get to see, reached by every combination of ticks and forms, is
// explained on the page that its window opens.
TEST_F(HelpSite, ExplainsEveryParameter) {
    Help();
    int lists = 0;
    for (const HelpSubject& analysis : Served()) {
        for (const HelpSubject& subject : ParameterSubjects(analysis)) {
            ChooseSamples(subject.NoOfSamples);
            ChooseTails(subject.NoOfTails);
            for (int ticks = 0; ticks < 1 << 5; ++ticks)
                for (int forms = 0; forms < 3 * 3 * 3 * 3;
                     forms += static_cast<int>(checks::StepOfCases(7))) {
                    for (i16 i = 0; i < NoOfCheck; ++i)
                        if (CheckEnabled(i))
                            ChooseCheck(i, (ticks >> i & 1) != 0);
                    int form = forms;
                    for (i16 i = 0; i < NoOfIntPar; ++i, form /= 3)
                        if (IntParOptionEnabled(form % 3, i) &&
                            !IntParOption(form % 3, IntParList(i)).empty())
                            ChooseIntPar(i, static_cast<i16>(form % 3));
                    SelSetParList();
                    ++lists;
                    const std::string& body = PageOfNumber(HelpParameters()).Body;
                    for (i16 i = 0; i <= NoOfPar; ++i) {
                        const std::string label = StripAmpersand(ParLabel(ParKind(i)));
                        ASSERT_TRUE(Has(body, "<h3><a name=\"p" + std::to_string(ParKind(i)) +
                                                  "\"></a>" + Escape(label) + "</h3>"))
                            << HelpParameters() << ": " << label;
                    }
                }
        }
    }
    EXPECT_GT(lists, static_cast<int>(10000 / checks::StepOfCases(7)));
}

TEST_F(HelpSite, HasNoBrokenLink) {
    EXPECT_EQ(BrokenLinks(Help()), std::vector<std::string>());
    Site broken;
    broken.Pages = {{"1.html", 1, "", "<a href=\"2.html\">a</a><a href=\"1.html#b\">c</a>", {}},
                    {"3.html", 3, "", "<a name=\"b\"></a><a href=\"3.html#b\">d</a>", {}}};
    EXPECT_EQ(BrokenLinks(broken),
              (std::vector<std::string>{"1.html: 2.html", "1.html: 1.html#b"}));
}

TEST_F(HelpSite, LeadsFromEveryDescriptionToTheGlossary) {
    constexpr i32 glossary = 55;
    EXPECT_GT(PageOfNumber(glossary).Keywords.size(), 60U) << "each term is in the index";
    for (const HelpSubject& analysis : Served())
        EXPECT_TRUE(Has(PageOfNumber(HelpDescriptionOf(analysis)).Body, "\"55.html\""))
            << HelpDescriptionOf(analysis);
}

TEST_F(HelpSite, HasEveryPageOnceAndInTheContents) {
    std::set<std::string> files;
    for (const Page& page : Help().Pages) {
        EXPECT_TRUE(files.insert(page.File).second) << page.File;
        EXPECT_FALSE(page.Title.empty()) << page.File;
        EXPECT_FALSE(page.Body.empty()) << page.File;
    }
    std::set<std::string> listed;
    const auto list = [&listed](const auto& self, const Entry& entry) -> void {
        EXPECT_TRUE(listed.insert(entry.File).second) << entry.File;
        for (const Entry& child : entry.Children)
            self(self, child);
    };
    list(list, Help().Contents);
    EXPECT_EQ(listed, files);
}

TEST_F(HelpSite, ShowsTheValuesThatAnAnalysisStartsWith) {
    EXPECT_TRUE(Has(PageOfNumber(2200).Body, "Start value: 0.05."));
    EXPECT_TRUE(Has(PageOfNumber(2200).Body, "Values: from 0.00001 to 0.99999."));
    EXPECT_TRUE(Has(PageOfNumber(2200).Body, "Values: 3 or more. Start value: 30."));
    EXPECT_FALSE(Has(PageOfNumber(2200).Body, "Start value: -."));
}

// What is simulated only has its parameters explained, in the words of the test that it shares its
// survival model with.
TEST_F(HelpSite, ExplainsWhatIsSimulatedOnly) {
    const std::string& gehan = PageOfNumber(862200).Body;
    EXPECT_TRUE(Has(gehan, "all of them but the power, which it estimates"));
    EXPECT_FALSE(Has(gehan, "can be the unknown: press its label"));
    EXPECT_TRUE(Has(gehan, "half of its patients have the event by then"));
    EXPECT_TRUE(Has(gehan, "With 1 it is exponential"));
    EXPECT_FALSE(Has(gehan, "geometric means"));
    EXPECT_FALSE(Has(gehan, "As the unknown"));
    EXPECT_TRUE(Has(PageOfNumber(2200).Body, "As the unknown"));
    EXPECT_TRUE(Has(PageOfNumber(2200).Body, "can be the unknown: press its label"));
}

TEST_F(HelpSite, TellsANonInferiorityLimitFromAnH0Value) {
    EXPECT_TRUE(Has(PageOfNumber(812100).Body, "has to lie on the good side of the limit"));
    EXPECT_FALSE(Has(PageOfNumber(2100).Body, "good side of the limit"));
}

TEST_F(HelpSite, SaysInTheFirstStepsWhatTheExampleReads) {
    const auto topics = ReadTopics(HELP_DIR "/topics");
    const Example example = ExampleOf(topics.at(9301).Text);
    const std::string& firstSteps = PageOfNumber(10).Body;
    EXPECT_TRUE(Has(firstSteps, "Its box shows " + example.Steps[0].Shown + ":"));
    EXPECT_TRUE(Has(firstSteps, "box shows " + example.Steps[2].Shown + "."));
    for (const auto& [label, text] : example.Steps[0].Typed)
        EXPECT_TRUE(Has(firstSteps, text + " for ") && Has(firstSteps, "<b>" + label + "</b>"))
            << label;
}

// The page of messages has each of them word for word, with "…" for what changes.
TEST_F(HelpSite, KnowsTheMessages) {
    OpenTest(0);
    Pick(Group::Mean2, 1);
    AcceptOptions();
    Type(Kind::SignificanceLevel, "0.05%");
    Type(Kind::Power, "");
    Solve(Kind::Size1);
    Type(Kind::Power, "2");
    Solve(Kind::Size1);
    Type(Kind::Power, "0");
    Solve(Kind::Size1);
    OpenTest(0);
    ChooseTails(OneSided);
    AcceptOptions();
    Type(Kind::Power, "0.8");
    Type(Kind::H1Mean2Minus1, "-1");
    Solve(Kind::Size1);
    Type(Kind::H1Mean2Minus1, "-2");
    Solve(Kind::Size1);
    OpenTest(0);
    ChooseLeftTail(true);
    AcceptOptions();
    Type(Kind::Power, "0.8");
    Type(Kind::H1Mean2Minus1, "1");
    Solve(Kind::Size1);
    platform.Answers.push_back(Answer::Cancel); // no window for a simulation
    NewTest(312);
    QueryCloseChild(AnalysisNo, CloseByUser);

    const std::string page = PageOfNumber(60).Body;
    std::set<std::string> known;
    for (const std::string& text : platform.Texts()) {
        std::string form = text;
        const auto replace = [&form](const std::string& part, const std::string& by) {
            if (const std::size_t at = form.find(part); at != std::string::npos)
                form.replace(at, part.size(), by);
        };
        for (const std::string label :
             {"%  ", "Power", "Nonparametric Location test, Jonckheere-Terpstra test"})
            replace(label, "…");
        replace("Calculation 1", "…");
        replace("0.99999", "…");
        replace("0.00001", "…");
        if (form.ends_with("…."))
            form.pop_back();
        replace(CrLf + CrLf, " ");
        EXPECT_TRUE(Has(page, "<td>" + Escape(form) + "</td>")) << text << " as " << form;
        known.insert(form);
    }
    EXPECT_EQ(known.size(), 9U);
}

// What stands in quotes between here and the end of the statement.
std::vector<std::string> Literals(const std::string& source, std::size_t at) {
    const std::string statement = source.substr(at, source.find(';', at) - at);
    std::vector<std::string> found;
    for (std::size_t open = statement.find('"'); open != std::string::npos;
         open = statement.find('"', open)) {
        const std::size_t close = statement.find('"', open + 1);
        found.push_back(statement.substr(open + 1, close - open - 1));
        open = close + 1;
    }
    return found;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// A message that the program shows and the page doesn't have is found in the sources: every text
// of a call that shows one.
TEST_F(HelpSite, KnowsTheMessagesOfTheSources) {
    const std::string page = PageOfNumber(60).Body;
    constexpr std::size_t shortest = 6; // parts of a message below that say nothing
    int messages = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_DIR)) {
        if (entry.path().extension() != ".cpp")
            continue;
        const std::string source = ReadText(entry.path());
        for (const std::string call : {"ShowMessage(", ".MsgBox(", "return Tell(", "Refuse("})
            for (std::size_t at = source.find(call); at != std::string::npos;
                 at = source.find(call, at + 1))
                for (const std::string& literal : Literals(source, at)) {
                    const std::string text = Trimmed(literal);
                    if (text.size() < shortest)
                        continue;
                    ++messages;
                    EXPECT_TRUE(Has(page, Escape(text))) << entry.path().filename() << ": " << text;
                }
    }
    EXPECT_GT(messages, 20);
}

} // namespace
} // namespace quorvanta::help
