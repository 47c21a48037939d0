#include "core/option_choice.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/menus.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/records.h"

namespace quorvanta {

namespace {

bool IsStudentDesign() {
    return TestNo == StudentDesign;
}

void LayOutOptions() {
    ClearOptions();
    SelSetupTest();
    // Only a test rejects.
    InterimShown = IsGroupSeq == True;
    LeftTailOffered = NoOfTails != TwoSided && (IsTest == True || ProcedureNo == ProcedureTest);
    SelSetLabels();
    // A simulated test may be made at several times; an estimate has one.
    if (CurrentWindowKind() == SimulationWindow && (IsTest == True || ProcedureNo == ProcedureTest))
        InterimShown = true;
}

// The grids of multiple comparisons ask for what the options need.
void OptionsChanged() {
    Calculated = False;
    if (IsMultComp == True)
        HasGridData = False;
    LayOutOptions();
    ThePlatform().RefreshOptions();
    UpdateMenus();
}

// What was forced and is chosen once more is still forced.
void ChooseAsOwn(i16 choice, i16& chosen, i16& own) {
    if (choice == chosen)
        return;
    chosen = choice;
    own = 0;
}

} // namespace

void StartTwoSidedInterval() {
    CheckValue(Check::TwoSidedInterval) = IsIntervalAnalysis() ? 1 : 0;
}

void NewSetup() {
    if (TestNo != GridTestNo && IsMultComp == False) {
        ResetGrids();
        HasGridData = False;
    }
    if (IsTest == False && ParListNo >= static_cast<i16>(DistrParList(DistrNo).size()))
        ParListNo = 0;
    LayOutOptions();
}

void ChooseSamples(i16 noOfSamples) {
    ChooseAsOwn(noOfSamples, NoOfSamples, OwnSamples);
    OptionsChanged();
}

void ChooseTails(i16 noOfTails) {
    ChooseAsOwn(noOfTails, NoOfTails, OwnTails);
    OptionsChanged();
}

void ChooseLeftTail(bool left) {
    LeftTail = ToFlag(left);
    OptionsChanged();
}

void ChooseProcedure(i16 procedureNo) {
    if (procedureNo < ProcedureTest || procedureNo > ProcedureInterval)
        throw RunTimeError(Fault::BadIndex);
    if (procedureNo != ProcedureNo) {
        ProcedureNo = procedureNo;
        StartTwoSidedInterval();
    }
    OptionsChanged();
}

std::span<const std::string_view> OfferedParLists() {
    if (IsTest == False)
        return DistrParList(DistrNo);
    const bool isDesignOfMeans = IsGroupSeq == True && (TestNo == MeansDesign || IsStudentDesign());
    return isDesignOfMeans ? DistrParList(DistrNormal).first(2)
                           : std::span<const std::string_view>();
}

i16 ChosenParList() {
    return IsTest == False ? ParListNo : ToI16(IsStudentDesign() ? 1 : 0);
}

void ChooseParList(i16 parListNo) {
    if (parListNo < 0 || parListNo >= static_cast<i16>(OfferedParLists().size()))
        throw RunTimeError(Fault::BadIndex);
    if (IsTest == False)
        ParListNo = parListNo;
    else
        TestNo = parListNo == 0 ? MeansDesign : StudentDesign;
    OptionsChanged();
}

void ChooseCheck(i16 position, bool ticked) {
    const i16 kind = CheckList(position);
    CheckValue(kind) = ticked ? 1 : 0;
    if (ticked)
        ClearExcludedChecks(kind);
    OptionsChanged();
}

void ChooseIntPar(i16 position, i16 option) {
    IntParValue(IntParList(position)) = option;
    OptionsChanged();
}

void ChooseAdjustMethod(i16 method) {
    AdjustMethod = method;
    OptionsChanged();
}

void ChooseInterim(i16 noOfInterim) {
    NoOfInterim = noOfInterim;
    OptionsChanged();
}

} // namespace quorvanta
