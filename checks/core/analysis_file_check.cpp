#include "core/analysis.h"
#include "core/analysis_codec.h"
#include "core/analysis_file.h"
#include "core/driver.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/last_step.h"
#include "core/option_choice.h"
#include "core/records.h"
#include "core/run.h"
#include "core/save_file.h"
#include "core/setup.h"
#include "core/showpar.h"
#include "core/step_back.h"
#include "core/typed_text.h"
#include "output/saving.h"
#include "support/analysis_fixture.h"
#include "support/refusals.h"
#include "support/temporary_folder.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <sys/stat.h>

namespace quorvanta::checks {
namespace {

constexpr i16 unpaired = 0;
constexpr i16 alpha = Kind::SignificanceLevel;
constexpr i16 power = Kind::Power;
constexpr i16 sd = Kind::Sd;
constexpr i16 size1 = Kind::Size1;
constexpr i16 h1Difference = Kind::H1Mean2Minus1;

constexpr std::size_t fileBytes = 6350;

class Files : public AnalysisFixture {
  protected:
    void OpenInWindow(i16 windowKind, i16 menuNo) {
        FileCommand(windowKind);
        NewTest(menuNo);
        AcceptOptions();
    }

    // The unpaired test with sizes per difference, at three levels.
    void OpenRun(i16 windowKind) {
        FileCommand(windowKind);
        NewTest(unpaired);
        Pick(Group::Mean2, 1);
        AcceptOptions();
        SwapAxis(YRole, PositionOf(size1));
        SwapAxis(XRole, PositionOf(h1Difference));
        SwapAxis(ZRole, PositionOf(alpha));
        TypedAxisText(AxisText::Xmin, "0.2");
        TypedAxisText(AxisText::Xmax, "0.8");
        TypedAxisText(AxisText::Xstep, "0,1");
        TypedAxisText(AxisText::ZValues, "0.01 0.05 0.1");
        Type(power, "0.9");
        RunOrCancel();
    }

    std::string SaveTo(const std::string& name) {
        platform.FileNames.push_back(folder.Path(name));
        FileCommand(FileSaveAnalysis);
        return folder.Path(name);
    }

    void Open(const std::string& path) {
        platform.FileNames.push_back(path);
        FileCommand(FileOpenAnalysis);
    }

    AnalysisRecord RecordIn(const std::string& path) {
        return DecodeAnalysis(LoadFile(path, fileBytes).value_or("")).value();
    }

    // Saves the record as it stands, without a look at what it says.
    std::string WriteRecord(const AnalysisRecord& record) {
        folder.Write("made.dim", EncodeAnalysis(record).value());
        return folder.Path("made.dim");
    }

    TemporaryFolder folder;
};

// --- Commands ---------------------------------------------------------------------------------

TEST_F(Files, OpenAsksForAnExistingFile) {
    FileCommand(FileOpenAnalysis);
    ASSERT_EQ(platform.FileDialogs.size(), 1U);
    EXPECT_EQ(platform.FileDialogs[0].Filter, "All Files (*.*)|*.*|Quorvanta Files (*.dim)|*.dim");
    EXPECT_EQ(platform.FileDialogs[0].FilterIndex, 2);
    EXPECT_EQ(AnalysisNo, 0);
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Files, SaveDoesNothingWithoutAnAnalysis) {
    FileCommand(FileSaveAnalysis);
    FileCommand(CalculationWindow);
    FileCommand(FileSaveAnalysis);
    EXPECT_TRUE(platform.FileDialogs.empty());
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Files, SaveAsksForANameThatStartsAsTheCaptionWithoutBlanks) {
    OpenInWindow(CalculationWindow, unpaired);
    FileCommand(FileSaveAnalysis);
    ASSERT_EQ(platform.FileDialogs.size(), 1U);
    const FileDialog& dialog = platform.FileDialogs[0];
    EXPECT_EQ(dialog.Title, "Save Calculation");
    EXPECT_EQ(dialog.FileName, "Calculation1");
    EXPECT_EQ(dialog.DefaultExtension, "dim");
    EXPECT_EQ(AnalysisState(1).Changed, True) << "the user has given up";
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(Files, OutputsAskForNamesOfTheirOwnKind) {
    OpenInWindow(CalculationWindow, unpaired);
    EXPECT_EQ(AskFileName(TextForms, "Table"), "");
    EXPECT_EQ(AskFileName(TableForms, "Table"), "");
    EXPECT_EQ(AskFileName(PictureForms, "Table"), "");
    ASSERT_EQ(platform.FileDialogs.size(), 3U);
    EXPECT_EQ(platform.FileDialogs[0].Filter, "Text Files (*.rtf)|*.rtf|Web Pages (*.html)|*.html");
    EXPECT_EQ(platform.FileDialogs[0].DefaultExtension, "rtf");
    EXPECT_EQ(platform.FileDialogs[1].Filter, "Text Files (*.rtf)|*.rtf|Web Pages (*.html)|*.html|"
                                              "CSV Tables (*.csv)|*.csv");
    EXPECT_EQ(platform.FileDialogs[2].Filter,
              "Graph Files (*.bmp)|*.bmp|PNG Pictures (*.png)|*.png|SVG Drawings (*.svg)|*.svg|"
              "PDF Documents (*.pdf)|*.pdf");
    EXPECT_EQ(platform.FileDialogs[2].DefaultExtension, "bmp");
    for (const FileDialog& dialog : platform.FileDialogs)
        EXPECT_EQ(dialog.FilterIndex, 1) << "the told form, unless another is chosen";
    EXPECT_EQ(platform.FileDialogs[0].Title, "Save Table");
}

TEST_F(Files, ExitClosesTheMainWindow) {
    FileCommand(FileExit);
    EXPECT_TRUE(platform.MainClosed);
}

TEST_F(Files, NothingHappensDuringARun) {
    OpenInWindow(CalculationWindow, unpaired);
    Calculating = True;
    for (const i16 entry : {i16{0}, i16{1}, FileOpenAnalysis, FileSaveAnalysis, FilePrintOutput,
                            FileCopyOutput, FileSaveOutput, FileExit})
        FileCommand(entry);
    Calculating = False;
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_TRUE(platform.FileDialogs.empty());
    EXPECT_FALSE(platform.MainClosed);
}

// --- Saving -----------------------------------------------------------------------------------

TEST_F(Files, ASavedAnalysisIsUnchangedAndHasTheNameOfItsFile) {
    OpenInWindow(CalculationWindow, unpaired);
    SolveFor(PositionOf(size1));
    EXPECT_EQ(AnalysisState(1).Changed, True);
    SaveTo("My Study.dim");
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(AnalysisFileName, "My Study.dim");
    EXPECT_EQ(LoadFile(folder.Path("My Study.dim"), 2 * fileBytes).value().size(), fileBytes);
}

// The dialog leads back to the file, not to another one without its blanks in another folder.
// A file doesn't tell what was forced: where there was nothing to choose, nothing is carried on.
TEST_F(Files, WhatTheTestOfAFileForcesIsNotCarriedIntoTheNext) {
    OpenInWindow(CalculationWindow, 800);
    ASSERT_EQ(NoOfTails, TwoOneSided);
    const std::string path = SaveTo("equivalence.dim");
    OpenInWindow(CalculationWindow, unpaired);
    ChooseTails(OneSided);
    Open(path);
    EXPECT_EQ(NoOfTails, TwoOneSided);
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, TwoSided);
    ChooseTails(TwoOneSided);
    AcceptOptions();
    const std::string own = SaveTo("own.dim");
    Open(own);
    NewTest(unpaired);
    EXPECT_EQ(NoOfTails, TwoOneSided) << "it was chosen among others";
}

TEST_F(Files, AnAnalysisWithAFileProposesItsNameAndFolder) {
    OpenInWindow(CalculationWindow, unpaired);
    SolveFor(PositionOf(size1));
    FileCommand(FileSaveAnalysis);
    EXPECT_EQ(platform.FileDialogs.back().FileName, "Calculation1");
    EXPECT_EQ(platform.FileDialogs.back().Folder, "");
    SaveTo("My Study.dim");
    std::filesystem::create_directory(folder.Path("other"));
    const auto expectProposed = [this](const std::string& name, const std::string& place) {
        for (const std::span<const FileForm> forms :
             {std::span<const FileForm>(AnalysisForms), TextForms}) {
            AskFileName(forms, "Table");
            EXPECT_EQ(platform.FileDialogs.back().FileName, name);
            EXPECT_EQ(platform.FileDialogs.back().Folder, place);
        }
    };
    const std::string place = std::filesystem::path(folder.Path("x")).parent_path().string();
    expectProposed("My Study", place);
    SaveTo("other/Second one.dim");
    expectProposed("Second one", folder.Path("other"));
    Open(folder.Path("My Study.dim"));
    expectProposed("My Study", place);
    ChildActivated(1);
    expectProposed("Second one", folder.Path("other"));
    FileCommand(CalculationWindow);
    NewTest(unpaired);
    AcceptOptions();
    expectProposed("Calculation3", "");
}

TEST_F(Files, AnAnalysisWithTooMuchTextIsNotSavedAndTheUserIsTold) {
    OpenInWindow(CalculationWindow, unpaired);
    const std::string path = SaveTo("a.dim");
    const auto before = LoadFile(path, fileBytes);
    MarkChanged();
    StoreAnalysis();
    const std::size_t free = 1500 - TextBytes(RecordIn(path));
    OutTitle(0) = std::string(free, 't');
    SaveTo("a.dim");
    EXPECT_TRUE(platform.Messages.empty());
    const auto full = LoadFile(path, fileBytes);
    EXPECT_NE(full, before);

    OutTitle(0) += "u";
    MarkChanged();
    SaveTo("a.dim");
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "The Analysis Can't Be Saved. Its Texts Take 1501 Characters, and a File Holds "
                  "1500.\r\n\r\nPlease Shorten the Title or the Labels."});
    EXPECT_EQ(platform.Messages[0].ShownIcon, Icon::Exclamation);
    EXPECT_EQ(AnalysisState(1).Changed, True);
    EXPECT_EQ(LoadFile(path, fileBytes), full);
}

// A failed save ends as a Cancel does, without a message; the status line says why.
TEST_F(Files, AFailedSaveLeavesEverythingAsItWas) {
    OpenInWindow(CalculationWindow, unpaired);
    const std::string path = SaveTo("a.dim");
    const auto saved = LoadFile(path, fileBytes);
    const std::filesystem::path place(folder.Path(""));
    Type(alpha, "0.01");
    const auto expectFailed = [&](const std::string& name) {
        SCOPED_TRACE(name);
        platform.Statuses.clear();
        SaveTo(name);
        EXPECT_EQ(platform.Statuses,
                  std::vector<std::string>{"The Analysis Can't Be Saved. The File " +
                                           folder.Path(name) + " Can't Be Written."});
        EXPECT_TRUE(platform.Messages.empty());
        EXPECT_EQ(AnalysisState(1).Changed, True);
        EXPECT_EQ(Analysis(1).AnalysisFileName, "a.dim");
        EXPECT_EQ(Cancelled, False);
    };
    expectFailed("missing/a.dim");
    {
        const FileSizeLimit fullDisk(1000);
        expectFailed("a.dim");
        expectFailed("new.dim");
    }
    std::filesystem::permissions(path, std::filesystem::perms::all);
    std::filesystem::permissions(place, static_cast<std::filesystem::perms>(0555));
    {
        const OrdinaryUser readOnlyFolder;
        expectFailed("a.dim");
        expectFailed("new.dim");
    }
    std::filesystem::permissions(place, std::filesystem::perms::all);
    EXPECT_EQ(LoadFile(path, fileBytes), saved);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.dim"});
    std::filesystem::remove_all(place); // the folder has vanished
    expectFailed("a.dim");
}

TEST_F(Files, AFailedOutputLeavesTheOldFile) {
    EXPECT_FALSE(WriteTextFile(folder.Path("missing/a.rtf"), "x"));
    EXPECT_EQ(platform.Statuses,
              std::vector<std::string>{"The Output Can't Be Saved. The File " +
                                       folder.Path("missing/a.rtf") + " Can't Be Written."});
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_TRUE(WriteTextFile(folder.Path("a.rtf"), "{\\rtf0 x}"));
    EXPECT_EQ(platform.Statuses.back(), "") << "what failed before is no longer so";
    {
        const FileSizeLimit fullDisk(10);
        EXPECT_FALSE(WriteTextFile(folder.Path("a.rtf"), std::string(1000, 'y')));
    }
    EXPECT_EQ(LoadFile(folder.Path("a.rtf"), fileBytes), "{\\rtf0 x}");
}

TEST_F(Files, ClosingAskedToSaveSaves) {
    OpenInWindow(CalculationWindow, unpaired);
    platform.Answers.push_back(Answer::Yes);
    platform.FileNames.push_back(folder.Path("a.dim"));
    EXPECT_TRUE(QueryCloseChild(1, CloseByUser));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Calculation 1 Has Been Changed.\r\n\r\nSave Analysis?"});
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(Files, ClosingStopsWhenTheSaveIsGivenUpOrFails) {
    OpenInWindow(CalculationWindow, unpaired);
    platform.Answers = {Answer::Yes, Answer::Yes, Answer::Ok};
    EXPECT_FALSE(QueryCloseChild(1, CloseByUser));
    platform.FileNames.push_back(folder.Path("missing/a.dim"));
    EXPECT_FALSE(QueryCloseChild(1, CloseByUser));
    platform.Answers = {Answer::Cancel};
    EXPECT_FALSE(QueryCloseChild(1, CloseByUser));
    platform.Answers = {Answer::No};
    EXPECT_TRUE(QueryCloseChild(1, CloseByUser));
}

// --- Opening ----------------------------------------------------------------------------------

TEST_F(Files, ACalculationComesBackFieldByField) {
    FileCommand(CalculationWindow);
    NewTest(unpaired);
    Tick(Check::Satterthwaite);
    Pick(Group::Mean2, 1);
    Pick(Group::Sd2, 2);
    Pick(Group::Size2, 1);
    ChooseTails(OneSided);
    AcceptOptions();
    Type(power, "0,9");
    Type(alpha, "  0.025");
    SolveFor(PositionOf(size1));
    OutTitle.ReDim(0, 2);
    OutTitle(0) = "Größe – “Überlegenheit”, €";
    OutTitle(2) = "third {line} \\par";
    OutXAxis(0) = "x = 50 % \t of µ";
    OutZLabel = "ÿ";
    OutFontName = "A font of no machine";
    OutFontSize = "12.5";
    SeedText = "77";
    InterimSize2Text(5) = "last";
    const std::string path = SaveTo("a.dim");
    const AnalysisRecord saved = Analysis(1);
    EXPECT_EQ(RecordIn(path), saved);

    Type(alpha, "0.5");
    Open(path);
    EXPECT_EQ(AnalysisNo, 2);
    AnalysisRecord opened = Analysis(2);
    EXPECT_EQ(opened.WindowNo, 2);
    opened.WindowNo = saved.WindowNo;
    EXPECT_EQ(opened, saved);
    EXPECT_EQ(ParText(alpha), "  0.025");
    EXPECT_EQ(OutTitle(0), "Größe – “Überlegenheit”, €");
    EXPECT_EQ(OutTitle.HighBound(), 2);
}

TEST_F(Files, WhatTheCodePageLacksComesBack) {
    OpenInWindow(CalculationWindow, unpaired);
    OutTitle(0) = "α ≤ 5 %?";
    OutFontName = "明朝";
    const std::string path = SaveTo("μ.dim");
    EXPECT_EQ(platform.Statuses, std::vector<std::string>{""});
    Open(path);
    EXPECT_EQ(OutTitle(0), "α ≤ 5 %?");
    EXPECT_EQ(OutFontName, "明朝");
    EXPECT_EQ(AnalysisFileName, "μ.dim");
}

TEST_F(Files, LettersWithoutRoomComeBackAsQuestionMarks) {
    OpenInWindow(CalculationWindow, unpaired);
    OutTitle(0) = "α ≤ 5 %";
    StoreAnalysis();
    OutZLabel = std::string(1490 - TextBytes(Analysis(1)), 'z'); // and the name of the file
    const std::string path = SaveTo("a.dim");
    EXPECT_EQ(platform.Statuses,
              std::vector<std::string>{"The File Has No Room for Some Letters of the Title or the "
                                       "Labels. They Are Saved as \"?\"."});
    EXPECT_EQ(OutTitle(0), "α ≤ 5 %") << "saving leaves the window as it is";
    EXPECT_EQ(AnalysisState(1).Changed, False);
    Open(path);
    EXPECT_EQ(OutTitle(0), "? ? 5 %");
}

TEST_F(Files, NameProposedIsTheCaptionUpToDim) {
    OpenInWindow(CalculationWindow, unpaired);
    const auto proposed = [this](const std::string& caption) {
        AnalysisFileName = caption;
        AskFileName(AnalysisForms, "Table");
        return platform.FileDialogs.back().FileName;
    };
    EXPECT_EQ(proposed("Calculation 1"), "Calculation1");
    EXPECT_EQ(proposed("My plan.dim"), "Myplan");
    EXPECT_EQ(proposed("Phase 2.5.DIM"), "Phase2.5");
    EXPECT_EQ(proposed("Phase 2.5"), "Phase2.5");
    EXPECT_EQ(proposed(".dim"), ".dim");
}

// The value's text is in the file: nothing is calculated, as the altered text shows.
TEST_F(Files, ASavedCalculationShowsItsResultWithoutCalculating) {
    OpenInWindow(CalculationWindow, unpaired);
    SolveFor(PositionOf(size1));
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.ParText(record.UnknownParNo) = "123";
    Open(WriteRecord(record));
    EXPECT_EQ(ParText(size1), "123");
    EXPECT_EQ(Calculated, True);
    EXPECT_TRUE(GetInfoEnabled(3));
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Files, ASavedCalculationWithoutAResultHasNone) {
    OpenInWindow(CalculationWindow, unpaired);
    SolveFor(PositionOf(size1));
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    for (const char* text : {"-", " ", ""}) {
        record.ParText(record.UnknownParNo) = text;
        Open(WriteRecord(record));
        EXPECT_EQ(Calculated, False);
        EXPECT_FALSE(GetInfoEnabled(3));
    }
}

TEST_F(Files, OpeningAddsAWindowAndCountsAsChanged) {
    OpenInWindow(CalculationWindow, unpaired);
    const std::string path = SaveTo("a.dim");
    Open(path);
    Open(path);
    EXPECT_EQ(platform.Children,
              (std::vector<std::string>{"Calculation 1", "Calculation 2", "Calculation 3"}));
    EXPECT_EQ(Analysis(2).WindowNo, 2);
    EXPECT_EQ(Analysis(3).WindowNo, 3);
    EXPECT_EQ(AnalysisState(1).Changed, False);
    EXPECT_EQ(AnalysisState(2).Changed, True);
    EXPECT_EQ(AnalysisState(3).Changed, True);
    EXPECT_EQ(AnalysisFileName, "a.dim");

    Type(alpha, "0.2");
    ChildActivated(2);
    EXPECT_EQ(ParText(alpha), "0.05");
    ChildActivated(3);
    EXPECT_EQ(ParText(alpha), "0.2");

    EXPECT_FALSE(platform.Answers.size());
    EXPECT_TRUE(QueryCloseChild(2, CloseByUser)); // the answer is No
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"a.dim Has Been Changed.\r\n\r\nSave Analysis?"});
}

// The name in the file is an old one where the file was copied or renamed: what the window is
// called, and what a save proposes, must not lead back to the other file.
TEST_F(Files, AnOpenedAnalysisGoesByTheNameOfTheFileThatWasOpened) {
    OpenInWindow(CalculationWindow, unpaired);
    SaveTo("a.dim");
    folder.Write("b.dim", LoadFile(folder.Path("a.dim"), fileBytes).value());
    Open(folder.Path("b.dim"));
    EXPECT_EQ(AnalysisFileName, "b.dim");
    FileCommand(FileSaveAnalysis);
    EXPECT_EQ(platform.FileDialogs.back().FileName, "b");
}

TEST_F(Files, ATableAndAGraphComeBackCalculated) {
    for (const i16 kind : {TableWindow, GraphWindow}) {
        OpenRun(kind);
        const auto x = TableX;
        const auto y = TableY;
        ASSERT_EQ(TableX.HighBound(), 7);
        ASSERT_EQ(TableY.HighBound2(), 3);
        OutTitle.ReDim(0, 1);
        OutTitle(0) = "Edited title";
        OutTitle(1) = "of two lines";
        OutXAxis(0) = "Edited label";
        OutYAxis(1) = "0";
        OutYAxis(2) = "500";
        OutZLabel = "Level";
        OutDecimals = 2;
        OutCurveWidth = 3;
        const std::string path = SaveTo("a.dim");
        const AnalysisRecord saved = Analysis(AnalysisNo);
        ChildClosed(AnalysisNo);

        Open(path);
        AnalysisRecord opened = Analysis(AnalysisNo);
        EXPECT_EQ(opened.WindowKind, kind);
        opened.WindowNo = saved.WindowNo;
        EXPECT_EQ(opened, saved);
        EXPECT_EQ(Calculated, True);
        EXPECT_EQ(TableX, x);
        EXPECT_EQ(TableY, y);
        EXPECT_EQ(OutTitle(1), "of two lines");
        EXPECT_EQ(OutXAxis(0), "Edited label");
        EXPECT_EQ(OutYAxis(2), "500");
        EXPECT_TRUE(platform.Shown.count(FloatingWindow::Parameters));
        EXPECT_TRUE(platform.Messages.empty());
        RunOrCancel();
        EXPECT_EQ(OutXAxis(0), "Edited label");
        ChildClosed(AnalysisNo);
    }
}

TEST_F(Files, AGraphThatWasNeverDrawnOpensWithItsTitles) {
    OpenInWindow(GraphWindow, unpaired);
    const std::string path = SaveTo("a.dim");
    Open(path);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(OutTitle(0), "Student's t-test, Unpaired, two-sided.");
    EXPECT_FALSE(OutXAxis(0).empty());
    EXPECT_EQ(OutXAxis(1), "Auto");
}

// Texts that the user has emptied stay so: the limits tell that the graph was drawn.
TEST_F(Files, EmptiedTitlesStayEmpty) {
    OpenRun(GraphWindow);
    OutTitle(0).clear();
    OutXAxis(0).clear();
    OutYAxis(0).clear();
    OutZLabel.clear();
    Open(SaveTo("a.dim"));
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(OutTitle(0), "");
    EXPECT_EQ(OutXAxis(0), "");
    EXPECT_EQ(OutYAxis(0), "");
    EXPECT_EQ(OutZLabel, "");
}

TEST_F(Files, ATableWhoseRunFailsOpensWithoutAResult) {
    OpenRun(TableWindow);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.XstepText = "0";
    Open(WriteRecord(record));
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Xstep Must Be # 0."});
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(TableX.Raw().empty());
}

TEST_F(Files, GridsComeBack) {
    OpenInWindow(CalculationWindow, unpaired);
    HasGridData = True;
    NoOfGrids = 2;
    GridKind(1) = 1;
    GridRows(1) = 3;
    GridCols(1) = 10;
    GridData(1).ReDim(0, 3, 0, 10);
    GridData(1)(3, 10) = 0.125F;
    GridKind(2) = 10;
    GridRows(2) = 2;
    GridCols(2) = 11;
    GridTexts.ReDim(0, 2, 0, 11);
    GridTexts(2, 11) = "1/3";
    GridTitle(1) = "Means";
    GridHead(2) = "Weight";
    GridName = "Design";
    Type(sd, "0.4");
    const std::string path = SaveTo("a.dim");
    Type(sd, "0.9");
    ResetGrids();
    Open(path);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(GridData(1)(3, 10), 0.125F);
    EXPECT_EQ(GridData(1).HighBound1(), 3);
    EXPECT_EQ(GridTexts(2, 11), "1/3");
    EXPECT_EQ(GridTitle(1), "Means");
    EXPECT_EQ(GridHead(2), "Weight");
    EXPECT_EQ(GridName, "Design");
    EXPECT_EQ(ParText(sd), "0.4");
}

// The test's own list counts, not the file's: a result of another list is none.
// The means 1, 3 and 8 of three groups: their standard deviation is sqrt(26/3).
class GridFiles : public Files {
  protected:
    static constexpr i16 menuOneWay = 10;
    static constexpr const char* derived = "2.94392";

    void FillMeans(const std::vector<std::string>& means) {
        platform.GridFillings.emplace_back([means] {
            for (std::size_t i = 0; i < means.size(); ++i)
                GridOK(static_cast<i16>(i + 1), 1, means[i], Leaving::Nothing);
            return !AcceptGrid().has_value();
        });
        GetFromTable(PositionOf(Kind::SdOfMeans));
    }

    void OpenWithMeans(i16 windowKind) {
        OpenInWindow(windowKind, menuOneWay);
        Type(Kind::NoOfGroups, "3");
        FillMeans({"1", "3", "8"});
    }
};

TEST_F(GridFiles, AValueThatDerivesFromAGridComesBackWithIt) {
    OpenWithMeans(CalculationWindow);
    ASSERT_EQ(ParText(Kind::SdOfMeans), derived);
    const std::string path = SaveTo("means.dim");
    ParText(Kind::SdOfMeans) = "7"; // of another analysis
    Open(path);
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(ParText(Kind::SdOfMeans), derived);
    EXPECT_TRUE(IsBluePar(PositionOf(Kind::SdOfMeans)));
    EXPECT_TRUE(platform.IsShown(FloatingWindow::Grid)) << "the grids of a reopened analysis";
    ASSERT_EQ(FilledGrids().size(), 1U);
    EXPECT_EQ(FilledGrids().front().Cells(3, 1), "8");
    // Opened again, the grid shows what was filled in.
    platform.GridFillings.emplace_back([] {
        EXPECT_EQ(GridText(2, 1), "3");
        return false;
    });
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(ParText(Kind::SdOfMeans), derived) << "a cancel keeps the value";
    EXPECT_EQ(HasGridData, True);
}

// Seven grids, each of the largest size that its store has: all that a record has room for.
TEST_F(GridFiles, TheLargestGridsComeBackCellForCell) {
    OpenInWindow(CalculationWindow, menuOneWay);
    constexpr i16 rows = 10;
    const std::map<i16, i16> columns{{1, 10}, {2, 1}, {4, 10}, {5, 10}, {8, 10}, {9, 10}};
    const auto cell = [](i16 store, int i, int j) {
        return static_cast<f32>(1000 * store + 20 * i + j) / 8;
    };
    const auto add = [](i16 store, i16 width) {
        ++NoOfGrids;
        GridKind(NoOfGrids) = store;
        GridRows(NoOfGrids) = rows;
        GridCols(NoOfGrids) = width;
    };
    NoOfGrids = 0;
    for (const auto& [store, width] : columns) {
        add(store, width);
        GridData(store).ReDim(0, rows, 0, width);
        for (int i = 1; i <= rows; ++i)
            for (int j = 1; j <= width; ++j)
                GridData(store)(i, j) = cell(store, i, j);
    }
    add(TextStore, 11);
    GridTexts.ReDim(0, rows, 0, 11);
    GridTexts(rows, 11) = "1/3";
    HasGridData = True;
    const std::string path = SaveTo("largest.dim");
    ResetGrids();
    Open(path);
    EXPECT_EQ(HasGridData, True);
    EXPECT_EQ(NoOfGrids, 7);
    for (const auto& [store, width] : columns) {
        ASSERT_EQ(GridData(store).HighBound1(), rows) << store;
        ASSERT_EQ(GridData(store).HighBound2(), width) << store;
        for (int i = 1; i <= rows; ++i)
            for (int j = 1; j <= width; ++j)
                EXPECT_EQ(GridData(store)(i, j), cell(store, i, j)) << store;
    }
    EXPECT_EQ(GridTexts(rows, 11), "1/3");
}

TEST_F(GridFiles, ATableTakesAValueFromItsGrid) {
    FileCommand(TableWindow);
    NewTest(menuOneWay);
    Pick(Group::SizeK, 2); // sizes in proportion: the same weights for all points
    AcceptOptions();
    SwapAxis(XRole, PositionOf(Kind::Size1));
    SwapAxis(ZRole, PositionOf(Kind::Sd));
    Type(Kind::NoOfGroups, "3");
    FillMeans({"1", "3", "8"});
    EXPECT_EQ(ParText(Kind::SdOfMeans), derived);
    SwapAxis(ZRole, PositionOf(Kind::NoOfGroups));
    platform.Messages.clear();
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Can't Be Calculated When No of Groups Is the X-, Y-, or "
                                       "Z-axis."});
    EXPECT_EQ(ParText(Kind::SdOfMeans), derived);
}

TEST_F(GridFiles, AGridOfTooManyOrUnknownLinesIsToldOf) {
    OpenInWindow(CalculationWindow, menuOneWay);
    Type(Kind::NoOfGroups, "11");
    platform.Messages.clear();
    GetFromTable(PositionOf(Kind::SdOfMeans));
    Type(Kind::NoOfGroups, "");
    GetFromTable(PositionOf(Kind::SdOfMeans));
    EXPECT_EQ(platform.Texts(),
              (std::vector<std::string>{"No of Groups Has To Be Less Than or Equal to 10.",
                                        "No of Groups Has No Value."}));
    EXPECT_EQ(HasGridData, False);
}

TEST_F(GridFiles, TheStepIsTakenBackWithTheGrid) {
    OpenWithMeans(CalculationWindow);
    FillMeans({"1", "3", "11"});
    EXPECT_NE(ParText(Kind::SdOfMeans), derived);
    EXPECT_EQ(StepBackName(), "Undo Value from Tables");
    StepBack();
    EXPECT_EQ(ParText(Kind::SdOfMeans), derived);
    EXPECT_EQ(GridData(1)(3, 1), 8.0F);
    StepBack();
    EXPECT_EQ(GridData(1)(3, 1), 11.0F);
}

TEST_F(GridFiles, AnotherTestStartsWithEmptyGrids) {
    OpenWithMeans(CalculationWindow);
    NewTest(unpaired);
    EXPECT_EQ(HasGridData, False);
    EXPECT_EQ(GridData(1).HighBound1(), 1);
    EXPECT_FALSE(platform.IsShown(FloatingWindow::Grid));
}

TEST_F(GridFiles, AValueOfOnesOwnDiscardsTheGrid) {
    OpenWithMeans(CalculationWindow);
    TypedParText(PositionOf(Kind::SdOfMeans), "0.5");
    EXPECT_EQ(HasGridData, False);
    EXPECT_TRUE(FilledGrids().empty());
}

TEST_F(Files, TheRebuiltListRulesOverTheKindsOfTheFile) {
    OpenInWindow(CalculationWindow, unpaired);
    SolveFor(PositionOf(size1));
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.ParKind(record.UnknownParNo) = 85;
    Open(WriteRecord(record));
    EXPECT_EQ(PositionOf(Kind::Size), -1);
    EXPECT_EQ(PositionOf(size1), record.UnknownParNo);
    EXPECT_EQ(ParText(size1), "-");
    EXPECT_EQ(Calculated, False);

    record = RecordIn(folder.Path("a.dim"));
    record.NoOfPar = 2;
    record.UnknownParNo = record.XParNo = record.ZParNo = 1;
    Open(WriteRecord(record));
    EXPECT_EQ(NoOfPar, 7);
    EXPECT_EQ(Calculated, False);
    EXPECT_NE(UnknownParNo, XParNo);
}

// Texts go by position and kind: what stands at another kind, or beyond either list, is nobody's.
TEST_F(Files, TheTextsOfAnotherListAreNotTaken) {
    OpenInWindow(CalculationWindow, unpaired);
    const AnalysisRecord saved = RecordIn(SaveTo("a.dim"));
    const i16 last = NoOfPar;
    const i16 kindOfLast = ParKind(last);
    AnalysisRecord record = saved;
    record.ParKind(3) = 85;
    record.ParText(3) = "0.33";
    record.ParText(last) = "44";
    const std::string former = ParText(ParKind(3));
    Open(WriteRecord(record));
    EXPECT_EQ(ParText(ParKind(3)), former) << "another kind";
    EXPECT_EQ(ParText(kindOfLast), "44") << "the last one";
    EXPECT_NE(ParText(Kind::Size), "0.33");

    record = saved;
    record.NoOfPar = 2;
    record.UnknownParNo = record.XParNo = record.ZParNo = 1;
    record.ParText(last) = "77";
    Open(WriteRecord(record));
    EXPECT_EQ(ParText(kindOfLast), "44") << "beyond the list of the file";

    record = saved;
    record.NoOfPar = static_cast<i16>(last + 1);
    record.ParKind(last + 1) = alpha;
    record.ParText(last + 1) = "0.9";
    Open(WriteRecord(record));
    EXPECT_EQ(NoOfPar, last);
    EXPECT_EQ(ParText(alpha), "0.05") << "beyond today's list";
}

// A calculation that was never given out has none.
TEST_F(Files, AFileWithoutTitlesHasAnEmptyOne) {
    OpenRun(TableWindow);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.NoOfTitles = 0;
    record.OutTitle(0).clear();
    Open(WriteRecord(record));
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(OutTitle.HighBound(), 0);
    EXPECT_EQ(OutTitle(0), "");
    record.NoOfTitles = 1;
    record.OutTitle(0) = "The only one";
    Open(WriteRecord(record));
    EXPECT_EQ(OutTitle.HighBound(), 0);
    EXPECT_EQ(OutTitle(0), "The only one");
}

TEST_F(Files, AFullListOfCheckBoxesComesBack) {
    OpenInWindow(CalculationWindow, unpaired);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.NoOfCheck = 5;
    const i16 kinds[] = {30, 27, 24, 25, 39};
    for (int i = 0; i < 5; ++i) {
        record.CheckList(i) = kinds[i];
        record.CheckValue(kinds[i]) = 1;
    }
    Open(WriteRecord(record));
    EXPECT_EQ(AnalysisNo, 2);
    for (const i16 kind : kinds)
        EXPECT_EQ(CheckValue(kind), 1) << kind;
}

// What is chosen in a group, or ticked, that the analysis does not offer, is another's.
TEST_F(Files, OnlyActiveGroupsAndCheckBoxesComeBack) {
    OpenInWindow(CalculationWindow, unpaired);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    constexpr i16 active = 1;
    constexpr i16 another = 3;
    constexpr i16 anothersBox = 25;
    ASSERT_EQ(record.IntParList(0), active);
    record.IntParValue(active) = 1;
    record.IntParValue(another) = 2;
    record.CheckValue(anothersBox) = 1;
    Open(WriteRecord(record));
    EXPECT_EQ(IntParValue(active), 1);
    EXPECT_EQ(IntParValue(another), 0);
    EXPECT_EQ(CheckValue(anothersBox), 0);
}

TEST_F(Files, AnyNumberButNoughtIsATrueFlag) {
    OpenInWindow(CalculationWindow, unpaired);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.IsTest = 1;
    record.LeftTail = 1;
    Open(WriteRecord(record));
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(IsTest, True);
    EXPECT_EQ(LeftTail, True);
}

// The numbers of a test that its file called a design were once read without a look at them.
TEST_F(Files, ATestIsOfTheKindThatItsNumberSays) {
    constexpr i16 mcNemar = 70;
    OpenInWindow(CalculationWindow, mcNemar);
    AnalysisRecord record = RecordIn(SaveTo("a.dim"));
    record.IsGroupSeq = True;
    record.IsMultComp = True;
    Open(WriteRecord(record));
    EXPECT_EQ(TestName, "McNemar test");
    EXPECT_EQ(IsGroupSeq, False);
    EXPECT_EQ(IsMultComp, False);

    for (const i16 menu : {i16{600}, i16{620}, i16{630}, i16{700}, i16{732}}) {
        SCOPED_TRACE(menu);
        OpenInWindow(CalculationWindow, menu);
        AnalysisRecord other = RecordIn(SaveTo("b.dim"));
        EXPECT_EQ(other.IsGroupSeq, ToFlag(menu < 700));
        EXPECT_EQ(other.IsMultComp, ToFlag(menu >= 700));
        other.IsGroupSeq = other.IsMultComp = False;
        Open(WriteRecord(other));
        EXPECT_EQ(IsGroupSeq, ToFlag(menu < 700));
        EXPECT_EQ(IsMultComp, ToFlag(menu >= 700));
    }
}

// --- Files that can't be used -----------------------------------------------------------------

class BadFiles : public Files {
  protected:
    void SetUp() override {
        Files::SetUp();
        OpenInWindow(CalculationWindow, unpaired);
        SolveFor(PositionOf(size1));
        good = RecordIn(SaveTo("good.dim"));
        before = Analysis(1);
    }

    // No window, no message, nothing changed; the status line says what is wrong.
    void ExpectRefused(const std::string& path, const std::string& why,
                       const std::string& problem = "Is No Analysis, or Is Damaged.") {
        SCOPED_TRACE(why);
        platform.Statuses.clear();
        Open(path);
        EXPECT_EQ(platform.Statuses, std::vector<std::string>{"The File " + path + " " + problem});
        EXPECT_EQ(AnalysisNo, 1);
        EXPECT_EQ(Analysis.HighBound(), 1);
        EXPECT_EQ(platform.Children.size(), 1U);
        EXPECT_TRUE(platform.Messages.empty());
        EXPECT_EQ(AnalysisState(1).Changed, False);
        EXPECT_EQ(Calculated, True);
        StoreAnalysis();
        EXPECT_EQ(Analysis(1), before);
    }

    void ExpectRefused(const std::function<void(AnalysisRecord&)>& spoil, const std::string& why,
                       const std::string& problem = "Is No Analysis, or Is Damaged.") {
        AnalysisRecord record = good;
        spoil(record);
        ExpectRefused(WriteRecord(record), why, problem);
    }

    AnalysisRecord good;
    AnalysisRecord before;
};

TEST_F(BadFiles, NothingOpensDuringARun) {
    const std::string path = WriteRecord(good);
    Calculating = True;
    EXPECT_FALSE(ReadAnalysisFile(path));
    Calculating = False;
    EXPECT_EQ(Analysis(1), before);
    EXPECT_EQ(Analysis.HighBound(), 1);
}

TEST_F(BadFiles, AFileOfZerosOpensNothing) {
    folder.Write("zeros.dim", std::string(fileBytes, '\0'));
    ExpectRefused(folder.Path("zeros.dim"), "zeros");
}

TEST_F(BadFiles, WhatIsNoFileOpensNothing) {
    const std::string unreadable = "Can't Be Read.";
    ExpectRefused(folder.Path("missing.dim"), "missing", unreadable);
    ExpectRefused(folder.Path(""), "folder", unreadable);
    folder.Write("empty.dim", "");
    ExpectRefused(folder.Path("empty.dim"), "empty");
    folder.Write("text.dim", "This is a text, not an analysis.");
    ExpectRefused(folder.Path("text.dim"), "text");
    folder.Write("ones.dim", std::string(100000, '\xFF'));
    ExpectRefused(folder.Path("ones.dim"), "ones");
    std::filesystem::create_directory(folder.Path("folder.dim"));
    ExpectRefused(folder.Path("folder.dim"), "a folder with the name of a file", unreadable);
    ASSERT_EQ(::mkfifo(folder.Path("pipe.dim").c_str(), 0666), 0);
    ExpectRefused(folder.Path("pipe.dim"), "a pipe that nobody writes");
    ExpectRefused("/dev/zero", "a device");
    folder.Write("secret.dim", EncodeAnalysis(good).value());
    std::filesystem::permissions(folder.Path("secret.dim"), std::filesystem::perms::none);
    std::filesystem::permissions(folder.Path(""), std::filesystem::perms::all);
    const OrdinaryUser user;
    ExpectRefused(folder.Path("secret.dim"), "unreadable", unreadable);
}

TEST_F(BadFiles, TheGoodOneOpens) {
    Open(WriteRecord(good));
    EXPECT_EQ(AnalysisNo, 2);
}

TEST_F(BadFiles, NumbersBeyondTheirRangesOpenNothing) {
    const auto spoiled = [this](i16 AnalysisRecord::*field, std::initializer_list<int> values) {
        for (const int value : values)
            ExpectRefused(
                [field, value](AnalysisRecord& record) { record.*field = static_cast<i16>(value); },
                std::to_string(value));
    };
    spoiled(&AnalysisRecord::WindowKind, {-1, 4, 32767});
    spoiled(&AnalysisRecord::TestNo, {-1, 999, 32767, -32768});
    spoiled(&AnalysisRecord::NoOfSamples, {-1, 0, 4});
    spoiled(&AnalysisRecord::NoOfTails, {-1, 0, 4});
    spoiled(&AnalysisRecord::ParListNo, {-1, -32768});
    spoiled(&AnalysisRecord::ProcedureNo, {-1, 3});
    spoiled(&AnalysisRecord::NoOfInterim, {-1, 6});
    spoiled(&AnalysisRecord::NoOfIntPar, {-1, 5, 32767});
    spoiled(&AnalysisRecord::NoOfCheck, {-1, 6, 32767});
    spoiled(&AnalysisRecord::UnknownParNo, {-1, 8, 32767});
    spoiled(&AnalysisRecord::XParNo, {-1, 8, 32767});
    spoiled(&AnalysisRecord::ZParNo, {-1, 9, 32767});
    spoiled(&AnalysisRecord::XKind, {-1, 371});
    spoiled(&AnalysisRecord::ZKind, {-1, 371});
    spoiled(&AnalysisRecord::NoOfPar, {-1, 0, 13, 32767, -32768});
    spoiled(&AnalysisRecord::NoOfTitles, {-1, 17});
    spoiled(&AnalysisRecord::NoOfGrids, {-1, 8});
    spoiled(&AnalysisRecord::SimDistrNo, {-1, 16});
    spoiled(&AnalysisRecord::DistrGraphStyle, {-1, 4});
}

TEST_F(BadFiles, ListsWithImpossibleEntriesOpenNothing) {
    ExpectRefused([](AnalysisRecord& record) { record.ParKind(7) = 371; }, "kind");
    ExpectRefused([](AnalysisRecord& record) { record.ParKind(0) = -1; }, "kind");
    ExpectRefused([](AnalysisRecord& record) { record.IntParList(1) = 59; }, "group");
    ExpectRefused([](AnalysisRecord& record) { record.IntParList(0) = -1; }, "group");
    ExpectRefused([](AnalysisRecord& record) { record.IntParValue(1) = 3; }, "option");
    ExpectRefused([](AnalysisRecord& record) { record.IntParValue(1) = -1; }, "option");
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.IntParList(0) = 10; // a group of two options
            record.IntParValue(10) = 2;
        },
        "option that the group does not have");
    ExpectRefused([](AnalysisRecord& record) { record.CheckList(2) = 40; }, "check box");
    ExpectRefused([](AnalysisRecord& record) { record.CheckList(0) = -1; }, "check box");
    ExpectRefused([](AnalysisRecord& record) { record.CheckValue(Check::Satterthwaite) = 2; },
                  "tick");
    ExpectRefused([](AnalysisRecord& record) { record.GridRows(7) = 11; }, "rows");
    ExpectRefused([](AnalysisRecord& record) { record.GridCols(1) = -1; }, "columns");
    ExpectRefused([](AnalysisRecord& record) { record.GridCols(1) = 12; }, "columns");
    ExpectRefused([](AnalysisRecord& record) { record.GridKind(3) = 11; }, "store");
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.GridData(9)(10, 10) = std::numeric_limits<f32>::quiet_NaN();
        },
        "a cell that is no number");
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.SimDistrPar2(2) = std::numeric_limits<f32>::infinity();
        },
        "an infinite parameter");
}

TEST_F(BadFiles, AnAnalysisWithoutANameOpensNothing) {
    ExpectRefused([](AnalysisRecord& record) { record.TestName.clear(); }, "test");
    ExpectRefused([](AnalysisRecord& record) { record.IsTest = False; }, "distribution");
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.IsTest = False;
            record.DistrName = "Beta";
            record.DistrNo = 3;
        },
        "a distribution that the program lacks");
}

TEST_F(BadFiles, WhatThisVersionCanNotShowIsNamed) {
    // A test that has no simulation, and one that has no equation.
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.WindowKind = SimulationWindow;
            record.TestNo = 64;
            record.TestName = "Intraclass Correlation Coefficient";
        },
        "window",
        "Can't Be Opened. Intraclass Correlation Coefficient Is Not Available in This Version.");
    ExpectRefused(
        [](AnalysisRecord& record) {
            record.TestNo = 112;
            record.TestName = "Nonparametric Location test, Jonckheere-Terpstra test";
        },
        "test",
        "Can't Be Opened. Nonparametric Location test, Jonckheere-Terpstra test Is Not Available "
        "in This Version.");
}

TEST_F(BadFiles, AFileThatOpensTakesTheFormerProblemAway) {
    Open(folder.Path("missing.dim"));
    Open(WriteRecord(good));
    EXPECT_EQ(platform.Statuses.back(), "");
}

TEST_F(BadFiles, AFileCutShortOpensNothing) {
    const std::string whole = EncodeAnalysis(good).value();
    folder.Write("short.dim", whole.substr(0, 3000));
    ExpectRefused(folder.Path("short.dim"), "short");
}

} // namespace
} // namespace quorvanta::checks
