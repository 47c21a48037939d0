#include "core/analysis_file.h"

#include "core/analysis.h"
#include "core/analysis_codec.h"
#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/help_numbers.h"
#include "core/menus.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/program_name.h"
#include "core/records.h"
#include "core/save_file.h"
#include "core/showpar.h"
#include "core/values.h"
#include "montecarlo/simulation.h"
#include "output/printcopy.h"
#include "output/saving.h"
#include "output/titles.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>

namespace quorvanta {

namespace {

// --- What a file may say ----------------------------------------------------------------------

template <class T>
bool IsWithin(T value, int low, int high) {
    return value >= low && value <= high;
}

template <class Cells>
bool AllWithin(const Cells& cells, int count, int low, int high) {
    return std::ranges::all_of(cells.Raw().first(static_cast<std::size_t>(count)),
                               [low, high](i16 cell) { return IsWithin(cell, low, high); });
}

template <class Cells>
bool AllFinite(const Cells& cells) {
    return std::ranges::all_of(cells.Raw(), [](f32 cell) { return std::isfinite(cell); });
}

// Every group in use has the option that is chosen in it: not all have three.
bool HasUsableGroups(const AnalysisRecord& record) {
    if (!IsWithin(record.NoOfIntPar, 0, 4) ||
        !AllWithin(record.IntParList, record.NoOfIntPar, 0, MaxGroupKind))
        return false;
    for (i16 i = 0; i < record.NoOfIntPar; ++i) {
        const i16 group = record.IntParList(i);
        const i16 option = record.IntParValue(group);
        if (!IsWithin(option, 0, 2) || IntParOption(option, group).empty())
            return false;
    }
    return true;
}

bool HasUsableChecks(const AnalysisRecord& record) {
    if (!IsWithin(record.NoOfCheck, 0, 5) ||
        !AllWithin(record.CheckList, record.NoOfCheck, 0, MaxCheckKind))
        return false;
    for (i16 i = 0; i < record.NoOfCheck; ++i)
        if (!IsWithin(record.CheckValue(record.CheckList(i)), 0, 1))
            return false;
    return true;
}

bool HasUsableChoices(const AnalysisRecord& record) {
    return IsWithin(record.NoOfSamples, OneSample, MoreSamples) &&
           IsWithin(record.NoOfTails, OneSided, TwoOneSided) &&
           IsWithin(record.ParListNo, 0, 100) &&
           IsWithin(record.ProcedureNo, ProcedureTest, ProcedureInterval) &&
           IsWithin(record.NoOfInterim, 0, 5) && HasUsableGroups(record) && HasUsableChecks(record);
}

// A z parameter one past the list stands for none.
bool HasUsablePars(const AnalysisRecord& record) {
    return IsWithin(record.NoOfPar, 1, MaxPar) &&
           AllWithin(record.ParKind, record.NoOfPar + 1, 0, MaxKind) &&
           IsWithin(record.UnknownParNo, 0, record.NoOfPar) &&
           IsWithin(record.XParNo, 0, record.NoOfPar) &&
           IsWithin(record.ZParNo, 0, record.NoOfPar + 1) && IsWithin(record.XKind, 0, MaxKind) &&
           IsWithin(record.ZKind, 0, MaxKind);
}

bool HasUsableGrids(const AnalysisRecord& record) {
    constexpr int grids = 8;
    return IsWithin(record.NoOfGrids, 0, grids - 1) && AllWithin(record.GridRows, grids, 0, 10) &&
           AllWithin(record.GridCols, grids, 0, 11) && AllWithin(record.GridKind, grids, 0, 10) &&
           (record.IsMultComp == False || IsWithin(record.GridFlag(MethodFlag), 0, 6)) &&
           std::ranges::all_of(record.GridData.Raw(),
                               [](const auto& store) { return AllFinite(store); });
}

bool HasUsableSimulation(const AnalysisRecord& record) {
    return IsWithin(record.SimDistrNo, 0, 15) && AllFinite(record.SimDistrPar1) &&
           AllFinite(record.SimDistrPar2) && IsWithin(record.DistrGraphStyle, 0, 3);
}

// The name says what was analysed: without it no test was ever chosen.
bool NamesAnalysis(const AnalysisRecord& record) {
    if (record.IsTest == True)
        return !record.TestName.empty() && !PathToTest(MenuTestNo(record.TestNo)).empty();
    const auto parameters = DistrParList(record.DistrNo);
    return !record.DistrName.empty() &&
           IsWithin(record.ParListNo, 0, static_cast<int>(parameters.size()) - 1);
}

bool IsSound(const AnalysisRecord& record) {
    return IsWithin(record.WindowKind, CalculationWindow, SimulationWindow) &&
           HasUsableChoices(record) && HasUsablePars(record) &&
           IsWithin(record.NoOfTitles, 0, 16) && HasUsableGrids(record) &&
           HasUsableSimulation(record) && NamesAnalysis(record);
}

// What this version lacks to show the analysis of a sound record; empty if it can be shown.
std::string Lacking(const AnalysisRecord& record) {
    const AnalysisKey key{record.IsTest, record.TestNo, record.DistrNo, record.ProcedureNo,
                          record.ParListNo};
    if (!IsServedIn(key, record.WindowKind))
        return record.IsTest == True ? record.TestName : record.DistrName;
    return "";
}

// Any number but 0 is true. What kind of test it is follows from its number.
void NormaliseFlags(AnalysisRecord& record) {
    for (i16* flag : {&record.IsTest, &record.LeftTail, &record.HasGridData, &record.HasDistrGraph})
        *flag = ToFlag(*flag != 0);
    const bool isTest = record.IsTest == True;
    record.IsGroupSeq = ToFlag(isTest && IsDesignTest(record.TestNo));
    record.IsMultComp = ToFlag(isTest && IsMultipleComparison(record.TestNo));
}

// The record of a file, or why there is none to open.
struct FileContent {
    std::optional<AnalysisRecord> Record;
    std::string Problem;
};

FileContent ContentOf(const std::string& path) {
    const auto refused = [&path](const std::string& problem) {
        return FileContent{std::nullopt, "The File " + path + " " + problem};
    };
    const auto bytes = LoadFile(path, AnalysisFileBytes);
    if (!bytes)
        return refused("Can't Be Read.");
    auto record = DecodeAnalysis(*bytes);
    if (record)
        NormaliseFlags(*record);
    if (!record || !IsSound(*record))
        return refused("Is No Analysis, or Is Damaged.");
    if (const std::string lacking = Lacking(*record); !lacking.empty())
        return refused("Can't Be Opened. " + lacking + " Is Not Available in This Version.");
    return {std::move(record), ""};
}

// The list that the test builds today is the one of the file.
bool IsListOf(const AnalysisRecord& record) {
    if (NoOfPar != record.NoOfPar)
        return false;
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (ParKind(i) != record.ParKind(i))
            return false;
    return true;
}

std::string FileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

// The analysis goes by the name of its file.
void NameAnalysis(const std::string& path) {
    AnalysisFileName = FileName(path);
    AnalysisState(AnalysisNo).Path = path;
    StoreAnalysis();
    ThePlatform().RefreshChild();
}

// --- Commands ---------------------------------------------------------------------------------

void OpenAnalysis() {
    FileDialog dialog;
    dialog.Title = "Open Analysis";
    dialog.Filter = std::string("All Files (*.*)|*.*|") + ProgramName + " Files (*.dim)|*.dim";
    dialog.FilterIndex = 2;
    dialog.DefaultExtension = AnalysisExtension;
    if (const auto path = ThePlatform().AskOpenName(dialog))
        ReadAnalysisFile(*path);
}

void SaveAnalysis() {
    if (!HasAnalysisToSave())
        return;
    const std::string path = AskFileName(AnalysisForms, ChildKindName());
    if (!path.empty())
        WriteAnalysisFile(path);
}

void CopyOutput() {
    OutputCommand(OutputAction::Copy);
    if (Cancelled == False)
        TellCopied();
}

} // namespace

void FileCommand(i16 index) {
    const bool opens = index <= SimulationWindow || index == FileOpenAnalysis;
    if (opens && AskToStopRun())
        return;
    if (SimRunning == True && index == FileExit)
        return ThePlatform().CloseMain();
    if (Calculating == True)
        return;
    StoreAnalysis();
    switch (index) {
    case CalculationWindow:
    case TableWindow:
    case GraphWindow:
    case SimulationWindow:
        NewWindow(index);
        break;
    case FileOpenAnalysis:
        OpenAnalysis();
        break;
    case FileSaveAnalysis:
        SaveAnalysis();
        break;
    case FilePrintOutput:
        OutputCommand(OutputAction::Print);
        break;
    case FileCopyOutput:
        CopyOutput();
        break;
    case FileSaveOutput:
        OutputCommand(OutputAction::Save);
        break;
    case FileExit:
        ThePlatform().CloseMain();
        break;
    default:
        break;
    }
    Cancelled = False;
}

bool HasAnalysisToSave() {
    return AnalysisNo > 0 && Analysis(AnalysisNo).NoOfPar >= 1;
}

bool ReadAnalysisFile(const std::string& path) {
    if (AskToStopRun() || Calculating == True)
        return false;
    auto [record, problem] = ContentOf(path);
    ThePlatform().ShowStatus(problem);
    if (!record)
        return false;
    FileCommand(record->WindowKind);
    record->WindowNo = Analysis(AnalysisNo).WindowNo;
    Analysis(AnalysisNo) = *record;
    // A calculation shows the result that its file holds.
    AnalysisState(AnalysisNo).Calculated =
        ToFlag(CurrentWindowKind() == SimulationWindow
                   ? HasValue(record->PowerEstimateText(0))
                   : !IsTableOrGraph() && HasValue(record->ParText(record->UnknownParNo)));
    LoadAnalysis();
    DisownForcedChoices();
    if (!IsListOf(*record)) {
        // The result belonged to another list of parameters.
        Calculated = False;
        ParText(ParKind(UnknownParNo)) = "-";
        ClearEstimates();
    }
    NameAnalysis(path);
    TakeTitlesFromFile();
    if (IsTableOrGraph())
        EnsureRun();
    if (HasGridData == True)
        ThePlatform().Show(FloatingWindow::Grid);
    MarkChanged();
    StoreAnalysis();
    UpdateMenus();
    return true;
}

bool WriteAnalysisFile(const std::string& path) {
    StoreAnalysis();
    AnalysisRecord record = Analysis(AnalysisNo);
    record.AnalysisFileName = FileName(path);
    const auto bytes = EncodeAnalysis(record);
    if (!bytes) {
        ShowMessage("The Analysis Can't Be Saved. Its Texts Take " +
                    std::to_string(TextBytes(record)) + " Characters, and a File Holds " +
                    std::to_string(MaxTextBytes) + "." + CrLf + CrLf +
                    "Please Shorten the Title or the Labels.");
        return false;
    }
    if (!SaveFile(path, *bytes)) {
        ThePlatform().ShowStatus("The Analysis Can't Be Saved. The File " + path +
                                 " Can't Be Written.");
        return false;
    }
    AnalysisState(AnalysisNo).Changed = False;
    NameAnalysis(path);
    ThePlatform().ShowStatus(KeepsAllLetters(record)
                                 ? ""
                                 : "The File Has No Room for Some Letters of the Title or the "
                                   "Labels. They Are Saved as \"?\".");
    return true;
}

bool QueryCloseChild(i16 analysisNo, i16 closeMode) {
    CloseMode = closeMode;
    SimStop();
    if (Calculating == True)
        return false;
    if (AnalysisState(analysisNo).Changed == False)
        return true;
    ChildActivated(analysisNo);
    const Answer answer =
        ThePlatform().MsgBox(Analysis(analysisNo).AnalysisFileName + " Has Been Changed." + CrLf +
                                 CrLf + "Save Analysis?",
                             Buttons::YesNoCancel, Icon::Exclamation, "");
    if (answer != Answer::Yes)
        return answer == Answer::No;
    FileCommand(FileSaveAnalysis);
    // A save that was given up, or failed, leaves the analysis unsaved and so the window open.
    return AnalysisState(analysisNo).Changed == False;
}

} // namespace quorvanta
