#include "montecarlo/simulation.h"

#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/floating_windows.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/number_text.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/values.h"
#include "groupseq/designs.h"
#include "montecarlo/simdesign.h"
#include "montecarlo/simstudy.h"
#include "multcomp/family.h"
#include "multcomp/procedures.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"
#include "output/counted_sizes.h"
#include "output/format.h"
#include "tests/powereq.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace quorvanta {

i32 SimNo;
i32 MaxNoOfSim;
std::string SimSeed;
Array1<i32> CountRejectH0;
Array1<i32> CountRejectH1;
Array1<i32> CountAcceptH0;
Array1<i32> CountAcceptH1;

namespace {

i16 analyses = 1;    // K
SizePair groups;     // that have the first and the second size
Array1<f32> timesH0; // (0..K) of the analyses where they are other ones if H0 is true; else empty
Array1<f32> timesH1;
i16 simulated = 0; // the analysis that was run last, and its window
i32 simulatedOpening = 0;
McTable rejections;
std::vector<SimPoint> history;
i32 historyStep = 1; // replicates between two of its points, at least
f64 busySeconds = 0; // of the run so far, without its pauses
f64 busySince = 0;
f64 drawnAt = 0; // when its estimates were drawn last

void Refuse(const std::string& message) {
    ShowMessage(message);
    Cancelled = True;
}

// --- Reading the dialog -------------------------------------------------------------------------

// Every parameter but the unknown, which is what the simulation estimates, has a value, and a good
// one.
bool SimReadPar() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !HasValue(ParText(ParKind(i)))) {
            ShowMessage(StripAmpersand(ParLabel(ParKind(i))) + " Has No Value.");
            return false;
        }
    ReadParValues();
    return SelCheckPar();
}

// A number too large for 64 bits is as large as one can be.
f64 TextNumber(const std::string& text) {
    return IsReadable(text) ? ReadNumber(text) : std::numeric_limits<f64>::max();
}

// A probability of analysis i; 0 stands for nothing entered.
f32 ReadProbability(const std::string& text, const char* message) {
    const f64 p = TextNumber(text);
    if (p >= 0 && p <= 1)
        return Single(p);
    Refuse(message);
    return 0;
}

// --- Sizes --------------------------------------------------------------------------------------

i16 SizeInStudy(f64 n) {
    if (n > f64{std::numeric_limits<i16>::max()}) {
        if (Cancelled == False)
            Refuse("A Sample of a Simulation Has " +
                   std::to_string(std::numeric_limits<i16>::max()) + " Subjects at Most.");
        return 0;
    }
    return ToI16(n);
}

// What is entered for an interim analysis, else an equal step; not beyond 32 bits.
f64 AtAnalysis(const std::string& text, i16 k, f64 atLast) {
    if (k == analyses)
        return atLast;
    constexpr f64 largest{std::numeric_limits<f32>::max()};
    return HasValue(text) ? MinOf(TextNumber(text), largest) : atLast * k / analyses;
}

template <class Cells>
void CheckRising(const Cells& cells, const char* name, const char* than) {
    for (i16 k = 2; k <= analyses && Cancelled == False; ++k)
        if (cells(k - 1) > cells(k))
            Refuse(name + std::to_string(k - 1) + than + std::to_string(k) + ".");
}

f64 StudyTimeOf() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (ParKind(i) == Kind::TotalStudyTime)
            return ParValue(i);
    return 0;
}

// A design that waits for its information has times of its own if H0 is true.
void ReadTimesUnderH0(f64 lastTime) {
    timesH0.ReDim(1, 0);
    if (!SimHasTwoClocks())
        return;
    timesH1 = SimTime;
    timesH0.ReDim(0, analyses);
    for (i16 k = 1; k <= analyses; ++k)
        timesH0(k) = Single(AtAnalysis(InterimSize2Text(k - 1), k, lastTime));
    CheckRising(timesH0, "Time for Interim Analysis ", " Is Larger Than for Interim Analysis ");
}

// Analyses of event times see all subjects, each until the time of the analysis.
void ReadSizes() {
    const i16 K = analyses;
    SimSize1.ReDim(0, K);
    SimSize2.ReDim(0, K);
    SimTime.ReDim(0, K);
    const SizePair sizes = CountedSizes();
    groups = CountedGroups();
    const f64 lastTime = UsesEventTimes() ? StudyTimeOf() : 0;
    for (i16 k = 1; k <= K; ++k) {
        const std::string& text1 = InterimSize1Text(k - 1);
        const std::string& text2 = InterimSize2Text(k - 1);
        const bool byTime = lastTime > 0;
        SimTime(k) = byTime ? Single(AtAnalysis(text1, k, lastTime)) : 0;
        SimSize1(k) = SizeInStudy(byTime ? sizes.First : AtAnalysis(text1, k, sizes.First));
        SimSize2(k) = SizeInStudy(byTime ? sizes.Second : AtAnalysis(text2, k, sizes.Second));
    }
    CheckRising(SimTime, "Time for Interim Analysis ", " Is Larger Than for Interim Analysis ");
    CheckRising(SimSize1, "Sample Size 1 at Interim Analysis ",
                " Is Larger Than at Interim Analysis ");
    CheckRising(SimSize2, "Sample Size 2 at Interim Analysis ",
                " Is Larger Than at Interim Analysis ");
    ReadTimesUnderH0(lastTime);
}

// --- Counting -----------------------------------------------------------------------------------

struct Counts {
    Array1<i32>& Reject;
    Array1<i32>& Accept;
};

Counts CountsOf(i16 IsH1) {
    return IsH1 != 0 ? Counts{CountRejectH1, CountAcceptH1} : Counts{CountRejectH0, CountAcceptH0};
}

void AddHundredths(i32& count, f32 p) {
    count = ToI32(f64{static_cast<f64>(count)} + f64{p});
}

// One study, with H0 or H1 true: analysis after analysis until it is decided.
void RunStudy(i16 IsH1) {
    const Counts counts = CountsOf(IsH1);
    const i16 overAll = static_cast<i16>(analyses + 1);
    if (timesH0.HighBound() > 0)
        SimTime = IsH1 != 0 ? timesH1 : timesH0;
    SimStage = 0;
    for (;;) {
        f32 p = 1;
        SelSimStatistic(p, IsH1);
        const i16 k = SimStage;
        if (p < 0) {
            AddHundredths(counts.Reject(k), p);
            AddHundredths(counts.Reject(overAll), p);
            return;
        }
        if (p < RejectP(k)) {
            ++counts.Reject(k);
            ++counts.Reject(overAll);
            return;
        }
        if (p > AcceptP(k)) {
            ++counts.Accept(k);
            return;
        }
        if (k >= analyses || SimStudy.Stop != False)
            return;
    }
}

void RunInterval() {
    SimStage = 0;
    SelSimInterval();
    const auto count = [](Array1<i32>& cells, bool holds) { cells(1) += holds ? 1 : 0; };
    count(CountRejectH0, SimStudy.Covers);
    count(CountRejectH1, SimStudy.IsNarrow);
    count(CountAcceptH1, SimStudy.Covers && SimStudy.IsNarrow);
}

void Replicate() {
    if (IsIntervalSim == True) {
        RunInterval();
    } else {
        RunStudy(0);
        RunStudy(1);
    }
    ThrowIfFloatFault();
}

void ResetCounts() {
    const i16 K = analyses;
    for (Array1<i32>* counts : {&CountRejectH0, &CountRejectH1})
        counts->ReDim(0, K + 1);
    for (Array1<i32>* counts : {&CountAcceptH0, &CountAcceptH1})
        counts->ReDim(0, K);
}

// --- Estimates ----------------------------------------------------------------------------------

f64 ShareOf(i32 count) {
    return static_cast<f64>(count) / static_cast<f64>(SimNo);
}

f64 HalfWidth(f64 variance) {
    return 1.96 * std::sqrt(MaxOf(variance, 0) / static_cast<f64>(SimNo));
}

constexpr const char* ProbabilityPicture = "#0.0000";

std::string ShareText(f64 p, f64 variance) {
    return SimInterval(Single(p), Single(HalfWidth(variance)), ProbabilityPicture);
}

// Half widths are those of a share; of a count in hundredths, which say nothing of their spread,
// those of the worst case.
struct PowerShare {
    f64 Estimate;
    f64 Variance;
};
PowerShare PowerOf(i32 count) {
    if (count >= 0) {
        const f64 q = ShareOf(count);
        return {q, q * (1 - q)};
    }
    return {-ShareOf(count) / 100, 0.25};
}

// The size, or study time, at analysis k.
f64 SizeAt(i16 k, bool isH1) {
    if (SimTime(analyses) > 0)
        return f64{timesH0.HighBound() < k ? SimTime(k) : isH1 ? timesH1(k) : timesH0(k)};
    return groups.First * static_cast<f64>(SimSize1(k)) +
           groups.Second * static_cast<f64>(SimSize2(k));
}

// The average size, where share(k) is the probability to stop at analysis k; that of the last one
// is what is left. The half width is the variance over n, without a root.
std::string AverageSizeText(Array1<f64> share, bool isH1) {
    const i16 K = analyses;
    share(K) = 1;
    f64 mean = 0;
    f64 squares = 0;
    for (i16 k = 1; k < K; ++k) {
        const f64 size = SizeAt(k, isH1);
        mean += size * share(k);
        squares += share(k) * size * size;
        share(K) -= share(k);
    }
    const f64 last = SizeAt(K, isH1);
    mean += last * share(K);
    squares += share(K) * last * last;
    const f64 halfWidth = 1.96 * (squares - mean * mean) / static_cast<f64>(SimNo);
    return SimInterval(Single(mean), Single(halfWidth), last < 1000 ? "0000.0" : "00000");
}

// Points lie closer at the start of a run than later: twice as far apart whenever there are enough.
void AddToHistory() {
    constexpr std::size_t most = 200;
    const i16 over = analyses > 1 ? static_cast<i16>(analyses + 1) : i16{1};
    if (!history.empty() && SimNo < history.back().SimNo + historyStep)
        return;
    const PowerShare power = PowerOf(CountRejectH1(over));
    history.push_back({SimNo, Single(power.Estimate), Single(HalfWidth(power.Variance))});
    if (history.size() < most)
        return;
    std::size_t kept = 0;
    for (std::size_t i = 1; i < history.size(); i += 2)
        history[kept++] = history[i];
    history.resize(kept);
    historyStep *= 2;
}

// --- The run ------------------------------------------------------------------------------------

void StartStream() {
    SimSeed = SeedText;
    if (!HasValue(SimSeed))
        return Randomize(f64{Single(ThePlatform().Timer())});
    constexpr f64 largest{std::numeric_limits<f32>::max()};
    const f64 entered = NumberIn(SimSeed).value_or(largest);
    const f64 seed = MaxOf(-largest, MinOf(entered, largest));
    Rnd(-std::fabs(seed));
    Randomize(seed);
}

// Nothing, 0 or less: no maximum.
void ReadMaximum() {
    const f64 entered = MinOf(TextNumber(MaxNoOfSimText), f64{std::numeric_limits<i32>::max()});
    MaxNoOfSim = entered <= 0 ? 0 : ToI32(entered);
    if (MaxNoOfSim <= 0)
        MaxNoOfSim = MostSimulations;
}

// The windows belong to the run while this lives, however it ends.
class Running {
  public:
    Running() {
        SimRunning = True;
        Calculating = True;
        Paused = False;
        HideWindows(Occasion::ResultGone);
        ThePlatform().RefreshChild();
        ThePlatform().RefreshSimulation();
    }
    ~Running() {
        SimRunning = False;
        Calculating = False;
        Paused = True;
        ThePlatform().RefreshSimulation();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
};

// The user's turn.
void Yield() {
    const FloatFaultsApart apart;
    ThePlatform().DoEvents();
}

// The texts are those of each display; they are drawn as often as an eye can follow, which a fast
// test is a hundred times ahead of. Every change of state draws them, so the last ones are seen.
void Display() {
    constexpr f64 secondsBetweenPictures = 0.03;
    const FloatFaultsApart apart;
    SampleSizeEstimateText(2) = Str(static_cast<f64>(SimNo));
    SimUpdateDisplay();
    const f64 now = ThePlatform().Timer();
    if (drawnAt <= now && now < drawnAt + secondsBetweenPictures)
        return;
    drawnAt = now;
    ThePlatform().RefreshSimulation();
}

// Until the maximum, or until the user ends it.
void Loop() {
    const i32 start = ToI32(ThePlatform().Timer());
    i32 interval = 1;
    SimNo = 0;
    do {
        if (Paused == True) {
            Yield();
            if (Cancelled == True)
                break;
            continue;
        }
        ++SimNo;
        if (SimNo == 101)
            interval = SimUpdateInterval(ToI32(Int(ThePlatform().Timer())) - start);
        if (SimNo % interval == 0) {
            if (Cancelled == True)
                return;
            Display();
        }
        Yield();
        if (Cancelled == True)
            break;
        Replicate();
    } while (SimNo != MaxNoOfSim);
    if (Cancelled == True)
        SimNo = 0;
}

// What was counted stays in the texts.
void Finish() {
    Cancelled = False;
    if (IsMultCompTest())
        rejections = McShowResult(analyses);
    OutputReady = True;
    Calculated = True;
    MarkChanged();
    StoreAnalysis();
    UpdateMenus();
    ThePlatform().RefreshChild();
}

} // namespace

void SimStart() {
    if (SimRunning == True || NoOfPar < 1)
        return;
    if (!HasSimulation(CurrentKey()))
        return ShowNotAvailable(IsTest == True ? TestName : DistrName);
    Cancelled = False;
    if (!SimReadPar())
        return;
    AnalysisStep before = BeforeStep(StepKind::Calculation);
    SimRun();
    if (OutputReady == False)
        return;
    RememberStep(std::move(before));
    UpdateMenus(); // which offer to take it back
}

void SimRun() {
    analyses = NoOfAnalyses();
    IsIntervalSim = ToFlag(IsTest == False && ProcedureNo != ProcedureTest);
    IsEquivInterval = ToFlag(ParKind(LevelParNo) == Kind::TestConfidenceLevel);
    ResetCounts();
    ClearFloatFaults();
    if (IsGroupSeq == True)
        SimReadDesign();
    else
        SimReadLimits();
    if (Cancelled == False)
        ReadSizes();
    if (Cancelled == False)
        SelGetSimPar();
    if (Cancelled == True) {
        Cancelled = False;
        return;
    }
    ThrowIfFloatFault();
    ClearEstimates();
    history.clear();
    rejections = {};
    historyStep = 1;
    simulated = AnalysisNo;
    simulatedOpening = OpeningOf(AnalysisNo);
    StartStream();
    ReadMaximum();
    {
        const Running running;
        busySeconds = 0;
        busySince = ThePlatform().Timer();
        drawnAt = std::numeric_limits<f64>::infinity();
        Loop();
    }
    Finish();
}

void SimReadLimits() {
    const bool isInterval = IsIntervalSim == True || IsEquivInterval == True;
    RejectP.ReDim(0, analyses);
    AcceptP.ReDim(0, analyses);
    for (i16 i = 1; i <= analyses; ++i) {
        f32 reject = ReadProbability(RejectH0Text(i - 1),
                                     isInterval ? "Confidence Level Is Outside (0, 1)."
                                                : "Probability To Reject H0 Is Outside (0, 1).");
        if (reject == 0)
            reject = Single(ParValue(LevelParNo));
        RejectP(i) = IsEquivInterval == True ? LevelOfInterval(f64{reject}) : reject;
        const f32 accept =
            ReadProbability(AcceptH0Text(i - 1), "Probability To Accept H0 Is Outside (0, 1).");
        // A family is not accepted as a whole.
        AcceptP(i) = accept == 0 || IsMultCompTest() ? 1.0F : accept;
    }
}

void SimUpdateDisplay() {
    const i16 K = analyses;
    const i16 rows = K >= 2 ? static_cast<i16>(K + 1) : K;
    Array1<f64> stopH0(0, rows);
    Array1<f64> stopH1(0, rows);
    for (i16 i = 1; i <= rows; ++i) {
        const f64 p = ShareOf(CountRejectH0(i));
        SignEstimateText(i - 1) = ShareText(p, p * (1 - p));
        const PowerShare power = PowerOf(CountRejectH1(i));
        PowerEstimateText(i - 1) = ShareText(power.Estimate, power.Variance);
        stopH1(i) = power.Estimate;
    }
    for (i16 i = 1; i <= K; ++i) {
        const f64 r = ShareOf(CountAcceptH1(i));
        PrAcceptEstimateText(i - 1) = ShareText(r, r * (1 - r));
        // Deliberately not alike: those that stop under H0 are those that accept it.
        stopH0(i) = ShareOf(CountAcceptH0(i));
        stopH1(i) += r;
    }
    AddToHistory();
    if (K < 2)
        return;
    SampleSizeEstimateText(0) = AverageSizeText(stopH0, false);
    SampleSizeEstimateText(1) = AverageSizeText(stopH1, true);
}

const char* SimAverageCaption() {
    if (IsGroupSeq == True)
        return GsAverageCaption();
    return UsesEventTimes() ? "Average  Study Time" : "Average  Total Size";
}

std::string SimInterval(f32 estimate, f32 halfWidth, const std::string& picture) {
    const f64 e{estimate};
    const f64 h{halfWidth};
    const auto text = [&picture](f64 x) {
        constexpr f64 decimals = 1e4;
        return Format(Int(x * decimals + 0.5) / decimals, picture);
    };
    return text(MaxOf(e - h, 0)) + "   " + text(e) + "   " + text(e + h);
}

i32 SimUpdateInterval(i32 elapsed) {
    struct Row {
        i32 AtLeast;
        i32 Interval;
    };
    constexpr Row rows[] = {{26, 1}, {11, 5}, {6, 10}, {3, 100}, {2, 200}, {1, 500}, {0, 1000}};
    constexpr i32 pastMidnight = 2000;
    for (const Row& row : rows)
        if (elapsed >= row.AtLeast)
            return row.Interval;
    return pastMidnight;
}

void SimPause() {
    if (SimRunning == False || Cancelled == True)
        return;
    const f64 now = ThePlatform().Timer();
    if (Paused == False)
        busySeconds += now - busySince;
    busySince = now;
    Paused = ToFlag(Paused == False);
    ThePlatform().RefreshSimulation();
}

void SimStop() {
    if (SimRunning == False)
        return;
    Cancelled = True;
    Paused = True;
    ThePlatform().RefreshSimulation();
}

bool AskToStopRun() {
    if (SimRunning == False)
        return false;
    const Answer answer =
        ThePlatform().MsgBox("Calculation Ongoing " + CrLf + CrLf + "Exit Ongoing Calculation?",
                             Buttons::YesNo, Icon::Question, "");
    if (answer == Answer::Yes)
        SimStop();
    return true;
}

f64 SimSecondsLeft() {
    constexpr i32 enough = 100; // replicates to know the speed from
    if (SimRunning == False || MaxNoOfSim >= MostSimulations || SimNo < enough)
        return -1;
    const f64 busy = busySeconds + (Paused == True ? 0 : ThePlatform().Timer() - busySince);
    return busy / static_cast<f64>(SimNo) * static_cast<f64>(MaxNoOfSim - SimNo);
}

const std::vector<SimPoint>& SimHistory() {
    return history;
}

const McTable& SimRejections() {
    return rejections;
}

i16 SimAnalysis() {
    return OpeningOf(simulated) == simulatedOpening ? simulated : i16{0};
}

} // namespace quorvanta
