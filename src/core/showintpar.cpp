#include "core/showintpar.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/records.h"
#include "core/showpar.h"
#include "core/typed_text.h"
#include "core/values.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "montecarlo/simulation.h"
#include "multcomp/family.h"
#include "output/counted_sizes.h"
#include "output/format.h"
#include "output/statement_clauses.h"
#include "output/statement_simulation.h"

#include <cmath>

namespace quorvanta {

namespace {

// A design that is calculated: its analyses are shown as they come out, but for levels of the
// user's own.
bool IsDesign() {
    return IsGroupSeq == True && CurrentWindowKind() != SimulationWindow;
}

std::string& StoredCell(IntColumn column, i16 row) {
    switch (column) {
    case IntColumn::RejectH0:
        return RejectH0Text(row);
    case IntColumn::AcceptH0:
        return AcceptH0Text(row);
    case IntColumn::Size1:
        return InterimSize1Text(row);
    default:
        return InterimSize2Text(row);
    }
}

bool IsSize(IntColumn column) {
    return column == IntColumn::Size1 || column == IntColumn::Size2;
}

i16 FirstSize() {
    return FindSize({SizeRole::Single, SizeRole::First, SizeRole::FirstSequence});
}

i16 SecondSize() {
    const i16 first = FirstSize();
    return first == NoPar ? NoPar : FindSecondSize(SizeRoleOf(ParKind(first)));
}

// Analyses of event times are made at times of the study.
i16 StudyTimePar() {
    if (UsesEventTimes())
        for (i16 i = 0; i <= NoOfPar; ++i)
            if (ParKind(i) == Kind::TotalStudyTime)
                return i;
    return NoPar;
}

bool HasNumber(i16 parNo) {
    const std::string& text = ParText(ParKind(parNo));
    return HasValue(text) && IsReadable(text);
}

// The size, or time, of the last analysis; 0 where the parameters don't say it.
f64 AtLast(IntColumn column) {
    if (const i16 time = StudyTimePar(); time != NoPar)
        return HasNumber(time) ? ReadNumber(ParText(ParKind(time))) : 0;
    const i16 first = FirstSize();
    const i16 second = SecondSize();
    if (first == NoPar || !HasNumber(first) || (second != NoPar && !HasNumber(second)))
        return 0;
    const SizePair sizes = CountedSizes();
    return column == IntColumn::Size1 ? sizes.First : sizes.Second;
}

std::string SizeText(f64 size) {
    return size > 0 ? Format(size, "0.####") : "";
}

// The power needs no box, but where the distributions are chosen in it.
bool IsEstimated() {
    return IsPowerKind(ParKind(PowerParNo)) && !SelIsTablePar(PowerParNo);
}

std::string FirstSizeCaption() {
    if (StudyTimePar() != NoPar)
        return "   Study &Time";
    switch (SizeRoleOf(ParKind(FirstSize()))) {
    case SizeRole::FirstSequence:
        return "S&ample Seq. 1";
    case SizeRole::First:
        return "S&ample Size 1";
    default:
        return ParLabel(ParKind(FirstSize())).find("Sequence") != std::string::npos
                   ? "S&ample Size Per Sequence"
                   : "S&ample Size";
    }
}

bool HasDesignColumn(IntColumn column) {
    if (column == IntColumn::AcceptH0)
        return BoundType >= BoundUserDefined;
    if (HasInterimTimes())
        return column == IntColumn::Size1 || TimeFromSize == 0;
    return (column == IntColumn::Size1 ? Size1Index : Size2Index) != 0;
}

std::string DesignSizeCaption(IntColumn column) {
    if (HasInterimTimes() && TimeFromSize == 1)
        return "   Study &Time";
    if (HasInterimTimes())
        return column == IntColumn::Size1 ? "Study &Time|H1" : "Study Ti&me|H0";
    const i16 kind = ParKind(Size1Index);
    if (kind == Kind::Events)
        return "&No of Events";
    if (kind == Kind::TimeAtRisk)
        return "Time At Risk";
    if (column == IntColumn::Size2)
        return "Sa&mple Size 2";
    return Size2Index != 0 ? "S&ample Size 1" : "S&ample Size";
}

} // namespace

bool HasIntPar() {
    if (IsGroupSeq == True)
        GsReadDesign();
    return NoOfPar >= 1 &&
           (CurrentWindowKind() == SimulationWindow || (IsDesign() && NoOfInterim > 0));
}

bool HasIntRun() {
    return !IsDesign();
}

i16 IntRows() {
    return NoOfAnalyses();
}

std::string IntRowHead(i16 row) {
    return EstimateRowHead(row);
}

bool HasIntColumn(IntColumn column) {
    if (IsGroupSeq == True && column != IntColumn::RejectH0)
        return HasDesignColumn(column);
    switch (column) {
    case IntColumn::RejectH0:
        return true;
    case IntColumn::AcceptH0:
        return IsHypothesisTest() && !IsMultCompTest();
    case IntColumn::Size1:
        return StudyTimePar() != NoPar || FirstSize() != NoPar;
    default:
        return StudyTimePar() == NoPar && SecondSize() != NoPar;
    }
}

std::string IntColumnCaption(IntColumn column) {
    if (IsGroupSeq == True && IsSize(column))
        return DesignSizeCaption(column);
    switch (column) {
    case IntColumn::RejectH0:
        return IsHypothesisTest() && !IsConfidenceLevel() ? "&Reject H0 if p<"
                                                          : "Confidence &Level";
    case IntColumn::AcceptH0:
        return "Accep&t H0 if p>";
    case IntColumn::Size1:
        return FirstSizeCaption();
    default:
        return SizeRoleOf(ParKind(FirstSize())) == SizeRole::FirstSequence ? "Sa&mple Seq. 2"
                                                                           : "Sa&mple Size 2";
    }
}

bool IsIntCellOpen(IntColumn column, i16 row) {
    if (IsGroupSeq == True)
        return !IsSize(column) && BoundType == BoundUserDefined;
    return !IsSize(column) || row + 1 < NoOfAnalyses();
}

std::string IntCellText(IntColumn column, i16 row) {
    // What followed from other values.
    if (IsDesign() && Calculated == False && !IsIntCellOpen(column, row))
        return "";
    return IsGroupSeq == True || IsIntCellOpen(column, row) ? StoredCell(column, row)
                                                            : SizeText(AtLast(column));
}

std::string IntCellDefault(IntColumn column, i16 row) {
    if (IsGroupSeq == True && !IsIntCellOpen(column, row))
        return ""; // it follows from the boundaries
    if (column == IntColumn::RejectH0)
        return ParText(ParKind(LevelParNo));
    if (column == IntColumn::AcceptH0)
        return "1";
    if (IsGroupSeq == True)
        return "";
    const f64 step = AtLast(column) * (row + 1) / NoOfAnalyses();
    return SizeText(StudyTimePar() == NoPar ? std::nearbyint(step) : step);
}

std::string TypedIntCell(IntColumn column, i16 row, const std::string& text) {
    return IsIntCellOpen(column, row) ? CheckTyped(text, &StoredCell(column, row))
                                      : IntCellText(column, row);
}

std::string TypedMaxNoOfSim(const std::string& text) {
    return CheckTyped(text, &MaxNoOfSimText);
}

std::string TypedSeed(const std::string& text) {
    return CheckTyped(text, &SeedText);
}

i16 IntPar(i16 box) {
    if (IsDesign())
        return NoPar;
    i16 parNo = -1;
    for (i16 left = box; left >= 0; --left) {
        ++parNo;
        if (parNo <= NoOfPar && parNo == PowerParNo && IsEstimated())
            ++parNo;
    }
    return box >= 0 && parNo <= NoOfPar ? parNo : NoPar;
}

void StartIntPar() {
    if (!IsDesign())
        return SimStart();
    if (IsTableOrGraph())
        return RunOrCancel();
    if (Calculated == True)
        return RenewDesign();
    SolveFor(UnknownParNo);
}

} // namespace quorvanta
