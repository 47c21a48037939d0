#include "core/analysis_file.h"
#include "core/driver.h"
#include "core/kinds.h"
#include "core/records.h"
#include "core/run.h"
#include "core/save_file.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "output/document.h"
#include "output/printcopy.h"
#include "output/rtf.h"
#include "output/saving.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"
#include "support/csv_reader.h"
#include "support/recording_surface.h"
#include "support/rtf_reader.h"
#include "support/temporary_folder.h"

#include <algorithm>

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 size1 = Kind::Size1;

class Outputs : public AnalysisFixture {
  protected:
    void OpenWithResult(i16 windowKind) {
        FileCommand(windowKind);
        NewTest(unpaired);
        Pick(Group::Mean2, 1);
        AcceptOptions();
        if (windowKind == CalculationWindow)
            SolveFor(PositionOf(size1));
        else
            RunOrCancel();
    }

    std::string Saved(const std::string& name) {
        return LoadFile(folder.Path(name), 1U << 20U).value_or("(not saved)");
    }

    bool HasText(const RecordingSurface& surface, const std::string& part) {
        for (const auto& text : surface.Texts)
            if (text.Text.find(part) != std::string::npos)
                return true;
        return false;
    }

    TemporaryFolder folder;
};

TEST_F(Outputs, NamesOfTheWindowInFront) {
    OpenWithResult(CalculationWindow);
    EXPECT_EQ(WindowKindName(), "Calculation");
    platform.Show(FloatingWindow::DistrGraph);
    EXPECT_EQ(WindowKindName(), "Distribution Graph");
    platform.Show(FloatingWindow::Summary);
    EXPECT_EQ(WindowKindName(), "Summary");
    platform.Shown.clear();
    OpenWithResult(TableWindow);
    EXPECT_EQ(WindowKindName(), "Table");
    OpenWithResult(GraphWindow);
    EXPECT_EQ(WindowKindName(), "Graph");
    Analysis(AnalysisNo).WindowKind = SimulationWindow;
    EXPECT_EQ(WindowKindName(), "Monte Carlo");
}

TEST_F(Outputs, ACalculationIsCopiedWithItsStatement) {
    OpenWithResult(CalculationWindow);
    FileCommand(FileCopyOutput);
    const std::string& text = platform.PlainClipboard;
    EXPECT_NE(text.find("Student's t-test, Unpaired, two-sided."), std::string::npos);
    EXPECT_NE(text.find("Significance Level"), std::string::npos);
    EXPECT_NE(text.find("Sample Size 1"), std::string::npos);
    EXPECT_NE(text.find("\nSample Size 1\t" + ParText(size1) + "\n"), std::string::npos);
    EXPECT_NE(text.find("\n\n" + SumStatement()), std::string::npos) << "one paragraph";
    EXPECT_NE(text.find("The test used is"), std::string::npos);
    EXPECT_EQ(platform.RtfClipboard.substr(0, 6), "{\\rtf0");
    EXPECT_EQ(platform.HtmlClipboard, HtmlOf(ResultDocument()));
    const ShownRtf rtf = Read(platform.RtfClipboard);
    const std::u16string size(ParText(size1).begin(), ParText(size1).end());
    EXPECT_NE(rtf.Text.find(u"\nSample Size 1\t" + size + u"\n"), std::u16string::npos);
    EXPECT_EQ(rtf.Rows.size(), static_cast<std::size_t>(NoOfPar) + 1);
    ASSERT_EQ(platform.Messages.size(), 1U);
    EXPECT_EQ(platform.Messages[0].Text,
              "Calculation Has Been Copied To the Clipboard for Pasting Into Other Applications");
    EXPECT_EQ(platform.Messages[0].Title, "Copy");
}

TEST_F(Outputs, ATableIsCopiedWithItsNumbers) {
    OpenWithResult(TableWindow);
    FileCommand(FileCopyOutput);
    EXPECT_NE(platform.PlainClipboard.find("H1: Mean 2 - Mean 1"), std::string::npos);
    EXPECT_NE(platform.PlainClipboard.find("ranging from"), std::string::npos);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Table Has Been Copied To the Clipboard for Pasting Into Other Applications"});
    EXPECT_TRUE(platform.FormsAsked.empty());
}

TEST_F(Outputs, AGraphAsksForPictureOrText) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture, OutputForm::Text, std::nullopt};
    FileCommand(FileCopyOutput);
    ASSERT_EQ(platform.CopiedPictures.size(), 1U);
    RecordingSurface surface(6, 4);
    platform.CopiedPictures[0](surface);
    EXPECT_TRUE(HasText(surface, "Student's t-test"));
    EXPECT_GT(surface.Lines.size(), 5U);
    EXPECT_TRUE(platform.PlainClipboard.empty());

    FileCommand(FileCopyOutput);
    EXPECT_FALSE(platform.PlainClipboard.empty());
    EXPECT_EQ(platform.CopiedPictures.size(), 1U);

    platform.Messages.clear();
    FileCommand(FileCopyOutput);
    EXPECT_TRUE(platform.Messages.empty()) << "given up";
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(platform.FormsAsked, (std::vector<OutputAction>(3, OutputAction::Copy)));
}

TEST_F(Outputs, TheSummaryInFrontIsCopiedAlone) {
    OpenWithResult(TableWindow);
    platform.Show(FloatingWindow::Summary);
    FileCommand(FileCopyOutput);
    EXPECT_EQ(platform.PlainClipboard, SumStatement());
    EXPECT_EQ(platform.RtfClipboard, RtfDocument(SumStatement()));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Summary Has Been Copied To the Clipboard for Pasting Into Other Applications"});
}

TEST_F(Outputs, SavesAsRtf) {
    OpenWithResult(TableWindow);
    platform.FileNames.push_back(folder.Path("t.rtf"));
    FileCommand(FileSaveOutput);
    EXPECT_EQ(platform.FileDialogs[0].Title, "Save Table");
    EXPECT_EQ(platform.FileDialogs[0].DefaultExtension, "rtf");
    EXPECT_EQ(platform.FileDialogs[0].FileName, "Table1");
    EXPECT_EQ(Saved("t.rtf").substr(0, 6), "{\\rtf0");
    EXPECT_EQ(Saved("t.rtf").back(), '}');
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(AnalysisState(1).Changed, True) << "the analysis itself is not saved";
}

TEST_F(Outputs, SavesAGraphAsABitmap) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture};
    platform.BitmapBytes = "BM....";
    platform.FileNames.push_back(folder.Path("g.bmp"));
    FileCommand(FileSaveOutput);
    EXPECT_TRUE(platform.FileDialogs[0].Filter.starts_with("Graph Files (*.bmp)|*.bmp|"));
    EXPECT_EQ(Saved("g.bmp"), "BM....");
    EXPECT_EQ(platform.FormsAsked, std::vector<OutputAction>{OutputAction::Save});
}

// The extension of the name says in which form; any other name is that of the told one.
TEST_F(Outputs, SavesATableInTheFormOfItsName) {
    OpenWithResult(TableWindow);
    const auto saved = [this](const std::string& name) {
        platform.FileNames.push_back(folder.Path(name));
        FileCommand(FileSaveOutput);
        return Saved(name);
    };
    EXPECT_EQ(saved("t.rtf"), RtfOf(ResultDocument()));
    EXPECT_EQ(saved("t.HTML"), HtmlOf(ResultDocument()));
    EXPECT_EQ(saved("t.csv"), CsvOf(ResultDocument()));
    EXPECT_EQ(saved("t"), RtfOf(ResultDocument()));
    const CsvRecords csv = ReadCsv(Saved("t.csv"));
    const TableBlock block = ResultDocument().Table.Blocks.at(0);
    ASSERT_EQ(csv.size(), block.Rows.size() + 1);
    for (std::size_t k = 0; k < block.Rows.size(); ++k)
        for (std::size_t j = 0; j < block.Rows[k].size(); ++j)
            EXPECT_EQ(csv[k + 1][j], TrimmedCell(block.Rows[k][j]));
    const auto& notes = csv[1];
    EXPECT_EQ(std::vector(notes.end() - 3, notes.end()),
              (std::vector<std::string>{ParListName, SumStatement(), "Quorvanta 3.0"}));
}

TEST_F(Outputs, TheStatementAloneHasNoTable) {
    OpenWithResult(TableWindow);
    platform.Show(FloatingWindow::Summary);
    platform.FileNames.push_back(folder.Path("s.html"));
    FileCommand(FileSaveOutput);
    EXPECT_EQ(platform.FileDialogs[0].Filter, "Text Files (*.rtf)|*.rtf|Web Pages (*.html)|*.html");
    EXPECT_EQ(Saved("s.html"), HtmlOf(StatementDocument()));
    EXPECT_EQ(Saved("s.html").find("<table"), std::string::npos);
    EXPECT_NE(Saved("s.html").find("<p>Quorvanta 3.0</p>"), std::string::npos);
}

TEST_F(Outputs, SavesAGraphWithItsNotes) {
    OpenWithResult(GraphWindow);
    OutTitle.ReDim(0, 1);
    OutTitle(0) = "One";
    OutTitle(1) = "Two";
    for (const char* name : {"g.png", "g.svg", "g.PDF"}) {
        platform.OutputForms = {OutputForm::Picture};
        platform.FileNames.push_back(folder.Path(name));
        FileCommand(FileSaveOutput);
        EXPECT_EQ(Saved(name), platform.PictureBytes);
        EXPECT_EQ(platform.Notes.back().Title, "One Two");
        EXPECT_EQ(platform.Notes.back().Statement, SumStatement());
    }
}

// A picture that can't be made leaves the old file.
TEST_F(Outputs, NothingIsSavedOverAFile) {
    OpenWithResult(GraphWindow);
    ASSERT_TRUE(SaveFile(folder.Path("g.png"), "old"));
    platform.OutputForms = {OutputForm::Picture};
    platform.PictureBytes = "";
    platform.FileNames.push_back(folder.Path("g.png"));
    FileCommand(FileSaveOutput);
    EXPECT_EQ(Saved("g.png"), "old");
    EXPECT_EQ(platform.Statuses,
              std::vector<std::string>{"The Output Can't Be Saved. The File " +
                                       folder.Path("g.png") + " Can't Be Written."});
}

TEST_F(Outputs, AnOutputThatCantBeWrittenEndsLikeACancel) {
    OpenWithResult(TableWindow);
    platform.FileNames.push_back(folder.Path("no/t.rtf"));
    FileCommand(FileSaveOutput);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(platform.Statuses,
              std::vector<std::string>{"The Output Can't Be Saved. The File " +
                                       folder.Path("no/t.rtf") + " Can't Be Written."});
}

TEST_F(Outputs, PrintingATextShowsItFirst) {
    OpenWithResult(CalculationWindow);
    FileCommand(FilePrintOutput);
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Output));
    EXPECT_TRUE(platform.Printed.empty());
    OutputResult(OutputAction::Print);
    ASSERT_EQ(platform.PrintedForms, std::vector<OutputForm>{OutputForm::Text});
    RecordingSurface page(7, 10);
    page.Pages = true;
    platform.Printed[0](page);
    EXPECT_TRUE(HasText(page, "Sample Size 1"));
    EXPECT_TRUE(HasText(page, "The test used is"));
    for (const auto& text : page.Texts)
        EXPECT_LE(text.At.X + text.Width, 7) << text.Text;
}

TEST_F(Outputs, PrintingAGraph) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture, OutputForm::Text};
    FileCommand(FilePrintOutput);
    ASSERT_EQ(platform.PrintedForms, std::vector<OutputForm>{OutputForm::Picture});
    RecordingSurface page(10, 7);
    page.Printer = true;
    platform.Printed[0](page);
    EXPECT_GT(page.Lines.size(), 5U);
    FileCommand(FilePrintOutput);
    EXPECT_TRUE(platform.Shown.count(FloatingWindow::Output));
}

// Where the last line of a drawing lies.
f64 LowestLine(const RecordingSurface& surface) {
    f64 lowest = 0;
    for (const auto& line : surface.Lines)
        for (const Point& point : line.Points)
            lowest = std::max(lowest, point.Y);
    return lowest;
}

// The same paragraph as under a table, below the plot and all its labels, and on the page.
TEST_F(Outputs, APrintedGraphHasItsStatementUnderIt) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture, OutputForm::Picture};
    FileCommand(FilePrintOutput);
    RecordingSurface page(10, 7);
    page.Printer = true;
    page.Pages = true;
    platform.Printed[0](page);

    const auto first = std::ranges::find_if(page.Texts, [](const auto& text) {
        return text.Text.size() > 20 && SumStatement().starts_with(text.Text);
    });
    ASSERT_NE(first, page.Texts.end());
    std::string statement;
    f64 bottom = LowestLine(page);
    for (auto text = page.Texts.begin(); text != first; ++text)
        bottom = std::max(bottom, text->At.Y + text->Height);
    for (auto text = first; text != page.Texts.end(); ++text) {
        statement += (statement.empty() ? "" : " ") + text->Text;
        EXPECT_GE(text->At.Y, bottom) << text->Text;
        EXPECT_LE(text->At.X + text->Width, 10) << text->Text;
        EXPECT_LE(text->At.Y + text->Height, 7) << text->Text;
        EXPECT_EQ(text->Page, 1);
    }
    std::string paragraph = SumStatement();
    for (std::size_t at = 0; (at = paragraph.find("  ", at)) != std::string::npos;)
        paragraph.erase(at, 1);
    EXPECT_EQ(statement, paragraph);

    // The picture itself goes out without words, as it stands in the window.
    FileCommand(FileCopyOutput);
    RecordingSurface picture(10, 7);
    platform.CopiedPictures.at(0)(picture);
    EXPECT_FALSE(HasText(picture, "The test used is"));
}

TEST_F(Outputs, AStatementTooLongForTheGraphsPageHasTheNext) {
    OpenWithResult(GraphWindow);
    platform.OutputForms = {OutputForm::Picture};
    FileCommand(FilePrintOutput);
    RecordingSurface page(5, 1.6);
    page.Printer = true;
    page.Pages = true;
    platform.Printed[0](page);
    int onSecond = 0;
    for (const auto& text : page.Texts)
        onSecond += text.Page == 2 ? 1 : 0;
    EXPECT_GT(onSecond, 2);
    EXPECT_EQ(page.Page, 2);
    EXPECT_GT(LowestLine(page), 0.8) << "the graph has the first page to itself";
}

TEST_F(Outputs, PrintingTheSummaryPrintsIt) {
    OpenWithResult(CalculationWindow);
    platform.Show(FloatingWindow::Summary);
    FileCommand(FilePrintOutput);
    EXPECT_EQ(platform.Printed.size(), 1U);
}

// What is given out belongs to the values that the window shows.
TEST_F(Outputs, AStaleTableIsCalculatedAnew) {
    OpenWithResult(TableWindow);
    const auto before = TableY;
    Type(alpha, "0.01");
    ASSERT_EQ(Calculated, False);
    FileCommand(FileCopyOutput);
    EXPECT_EQ(Calculated, True);
    EXPECT_NE(TableY, before);
    EXPECT_FALSE(platform.PlainClipboard.empty());
}

TEST_F(Outputs, AStaleTableThatCantBeCalculatedGivesNothing) {
    OpenWithResult(TableWindow);
    TypedAxisText(AxisText::Xstep, "0");
    FileCommand(FileCopyOutput);
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xstep Must Be # 0."});
    EXPECT_TRUE(platform.PlainClipboard.empty());
    EXPECT_EQ(Cancelled, False);
}

// From the Output window, which shows the result already.
TEST_F(Outputs, OnlyACopyOfAShownResultIsTold) {
    OpenWithResult(CalculationWindow);
    OutputResult(OutputAction::Copy);
    EXPECT_FALSE(platform.PlainClipboard.empty());
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Calculation Has Been Copied To the "
                                                         "Clipboard for Pasting Into Other "
                                                         "Applications"});
    platform.Messages.clear();
    OutputResult(OutputAction::Print);
    EXPECT_EQ(platform.Printed.size(), 1U);
    platform.FileNames.push_back(folder.Path("a.rtf"));
    OutputResult(OutputAction::Save);
    EXPECT_NE(Saved("a.rtf"), "(not saved)");
    platform.FileNames.push_back(std::nullopt);
    OutputResult(OutputAction::Save);
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(Cancelled, False);

    platform.PlainClipboard.clear();
    Type(alpha, "0.1");
    OutputResult(OutputAction::Copy);
    EXPECT_TRUE(platform.PlainClipboard.empty()) << "a stale result";
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Outputs, WithoutAResultThereIsNothingToGive) {
    FileCommand(FileCopyOutput);
    FileCommand(CalculationWindow);
    FileCommand(FileCopyOutput);
    NewTest(unpaired);
    AcceptOptions();
    Type(alpha, "");
    Type(alpha, "0.05");
    ASSERT_EQ(Calculated, False);
    for (const i16 entry : {FilePrintOutput, FileCopyOutput, FileSaveOutput})
        FileCommand(entry);
    EXPECT_FALSE(HasOutput());
    EXPECT_TRUE(platform.PlainClipboard.empty());
    EXPECT_TRUE(platform.FileDialogs.empty());
    EXPECT_TRUE(platform.Messages.empty());
}

} // namespace
} // namespace quorvanta::checks
