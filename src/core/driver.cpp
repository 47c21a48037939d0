#include "core/driver.h"

#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/codepage.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/root.h"
#include "core/setup.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 PowerParNo = 1;
constexpr i16 PowerKind = 1;
constexpr i16 IntervalPowerKind = 318;
constexpr i16 WidthProbabilityKind = 101;

// The power, whatever its label says: a probability that the equation yields directly.
bool UnknownIsPower() {
    const i16 kind = ParKind(UnknownParNo);
    return (UnknownParNo == PowerParNo && (kind == PowerKind || kind == IntervalPowerKind)) ||
           kind == WidthProbabilityKind;
}

// A search without a change of sign may end on a zero outside its interval, which is no solution.
// The power alone may lie outside the range in which it is searched: 0.999999 is a fact.
bool IsWithin(f64 root, f64 lower, f64 upper) {
    constexpr f64 slack = 1.0E-5;
    if (UnknownIsPower())
        return root >= 0 && root <= 1;
    return root >= lower - slack && root <= upper + slack;
}

bool IsRangeEndMark(f64 root) {
    const f64 whole = std::trunc(root);
    return std::any_of(std::begin(RangeEndMarks), std::end(RangeEndMarks),
                       [whole](i32 mark) { return whole == mark; });
}

// The root of the current test's equation, or NoValue when there is none with |f| <= 0.001.
f64 FindUnknown() {
    const i16 kind = ParKind(UnknownParNo);
    f64 lower = ParMin(kind);
    f64 upper = ParMax(kind);
    SelSearchLimits(lower, upper);
    if (!(upper > lower))
        return NoValue;
    ClearFloatFaults();
    i16 iterations = 0;
    f64 root = NoValue;
    f64 residual = NoValue;
    try {
        FindRootOf(TryValue, lower, upper, RootTolerance, RootIterations, iterations, root,
                   residual);
    } catch (const RunTimeError&) {
        // Outside its limits an equation need not hold, and a search that got there has failed.
        const f64 trial = ParValue(UnknownParNo);
        if (trial >= lower && trial <= upper)
            throw;
        return NoValue;
    }
    if (!(std::fabs(residual) <= RootResidual) || !IsWithin(root, lower, upper))
        return NoValue;
    return root;
}

void ReadParValues() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        ParValue(i) = ReadNumber(ParText(ParKind(i)));
}

std::optional<std::string> FirstForbidden(const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(text, i);
        const std::string character = text.substr(i, length);
        if (std::string_view("0123456789.-, ").find(character) == std::string_view::npos)
            return character;
        i += length;
    }
    return std::nullopt;
}

void EraseAll(std::string& text, const std::string& part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
}

// What these windows tell of the former result is no longer true.
void HideFormerResult() {
    for (const auto window :
         {FloatingWindow::Summary, FloatingWindow::DistrGraph, FloatingWindow::Output})
        ThePlatform().Hide(window);
}

bool hintDue = false;

RunRefusal refusal;

// The points of a run along x.
struct XAxis {
    f32 Min = 0;
    f32 Max = 0;
    f32 Step = 0;
    i16 Points = 0;
};

// Reads the axis from the texts of the x kind; nothing, after a message, if it can't be walked.
std::optional<XAxis> ReadXAxis() {
    const i16 kind = ParKind(XParNo);
    XAxis axis;
    axis.Min = static_cast<f32>(ReadNumber(ParXminText(kind)));
    axis.Max = static_cast<f32>(ReadNumber(ParXmaxText(kind)));
    axis.Step = static_cast<f32>(ReadNumber(ParXstepText(kind)));
    const auto refuse = [](AxisText where, const char* message) {
        refusal.Axis = where;
        ShowMessage(message);
        return std::nullopt;
    };
    if (axis.Step > 0 && !(axis.Min < axis.Max))
        return refuse(AxisText::Xmin, "Xmin Must Be < Xmax If Xstep > 0.");
    if (axis.Step < 0 && !(axis.Min > axis.Max))
        return refuse(AxisText::Xmin, "Xmin Must Be > Xmax If Xstep < 0.");
    if (axis.Step == 0)
        return refuse(AxisText::Xstep, "Xstep Must Be # 0.");
    // 0.001: the quotient of 32-bit steps may fall just short of a whole number.
    const f32 n = static_cast<f32>(Int((static_cast<f64>(axis.Max) - static_cast<f64>(axis.Min)) /
                                           static_cast<f64>(axis.Step) +
                                       0.001) +
                                   1);
    if (!(n <= static_cast<f32>(MaxSteps)))
        return refuse(AxisText::Xstep, "Maximum Number of Steps Is 100.");
    axis.Points = ToI16(static_cast<f64>(n));
    return axis;
}

// The z-values of the run; one of no meaning when the analysis has no z parameter.
std::optional<std::vector<f32>> ReadZValues() {
    if (!HasZPar())
        return std::vector<f32>{0.0F};
    const i16 kind = ParKind(ZParNo);
    std::istringstream words(ParZValuesText(kind));
    std::vector<f32> values;
    std::string word;
    std::string first;
    while (words >> word) {
        if (first.empty())
            first = word;
        values.push_back(static_cast<f32>(ReadNumber(word)));
    }
    if (values.empty()) {
        refusal.Axis = AxisText::ZValues;
        ShowMessage(StripAmpersand(ParLabel(kind)) + " Has No Value.");
        return std::nullopt;
    }
    ParText(kind) = first;
    return values;
}

// Walks the grid of a run: z outer, x inner. x is accumulated in 64 bits from the 32-bit minimum
// in 32-bit steps. Stops when visit answers false.
template <class Visit>
void WalkGrid(const XAxis& axis, const std::vector<f32>& zValues, Visit&& visit) {
    for (int j = 1; j <= static_cast<int>(zValues.size()); ++j) {
        f64 x = static_cast<f64>(axis.Min);
        for (int k = 1; k <= axis.Points; ++k, x += static_cast<f64>(axis.Step)) {
            if (HasZPar())
                ParValue(ZParNo) = static_cast<f64>(zValues[static_cast<std::size_t>(j - 1)]);
            ParValue(XParNo) = x;
            if (!visit(k, j, x))
                return;
        }
    }
}

// While this lives the parameters on the axes have their values from there.
class VaryingScope {
  public:
    VaryingScope() { SetVaryingPars(XParNo, ZParNo); }
    ~VaryingScope() { ClearVaryingPars(); }
    VaryingScope(const VaryingScope&) = delete;
    VaryingScope& operator=(const VaryingScope&) = delete;
};

// Checks every point before the first is calculated; false after the message of the first bad one.
bool AllPointsGood(const XAxis& axis, const std::vector<f32>& zValues) {
    ForgetRefused();
    int badPoint = 0;
    WalkGrid(axis, zValues, [&badPoint](int k, int, f64) {
        if (SelCheckPar())
            return true;
        badPoint = k;
        return false;
    });
    if (badPoint == 0)
        return true;
    const i16 parNo = RefusedParNo();
    if (parNo == XParNo)
        refusal.Axis = badPoint == 1 ? AxisText::Xmin : AxisText::Xmax;
    else if (HasZPar() && parNo == ZParNo)
        refusal.Axis = AxisText::ZValues;
    else
        refusal.ParNo = parNo;
    return false;
}

// The progress display of one run, which goes away however the run ends.
class RunProgress {
  public:
    explicit RunProgress(i32 points) : points_(points), start_(ThePlatform().Timer()) {}
    ~RunProgress() {
        if (shown_) {
            Calculating = False;
            ThePlatform().HideProgress();
        }
    }
    RunProgress(const RunProgress&) = delete;
    RunProgress& operator=(const RunProgress&) = delete;

    // One more point is done. The display appears when the first point foretells a long run, or
    // when the run has become one.
    void Step() {
        const FloatFaultsApart apart;
        ++done_;
        if (shown_) {
            ThePlatform().StepProgress();
        } else {
            const f64 elapsed = ThePlatform().Timer() - start_;
            constexpr f64 longRun = 5;
            constexpr f64 patience = 1;
            if (done_ == 1 && elapsed * points_ > longRun) {
                Show(points_);
                ThePlatform().StepProgress();
            } else if (elapsed > patience && done_ < points_) {
                Show(points_ - done_); // of which none is done yet
            }
        }
        if (shown_)
            ThePlatform().DoEvents();
    }

  private:
    void Show(i32 total) {
        shown_ = true;
        Calculating = True;
        ThePlatform().ShowProgress(total);
    }

    i32 points_;
    i32 done_ = 0;
    f64 start_;
    bool shown_ = false;
};

// The values of a run, which become the result once the run is complete.
struct RunValues {
    RunValues(int points, const std::vector<f32>& zValues)
        : X(1, points), Y(1, points, 1, static_cast<int>(zValues.size())),
          Z(1, static_cast<int>(zValues.size())) {
        std::copy(zValues.begin(), zValues.end(), Z.Raw().begin());
    }

    void Store(int k, int j, f64 x, f64 root) {
        X(k) = static_cast<f32>(x);
        const f32 y = static_cast<f32>(root);
        Y(k, j) = y;
        if (y < static_cast<f32>(NoValue)) {
            YMax = std::max(YMax, y);
            YMin = std::min(YMin, y);
        }
    }

    bool HasValues() const { return YMax >= YMin; }

    void BecomeResult() {
        TableX = std::move(X);
        TableY = std::move(Y);
        ZValues = std::move(Z);
        TableYKind = ParKind(UnknownParNo);
        TableYMin = GraphYMin = YMin;
        TableYMax = GraphYMax = YMax;
        Calculated = True;
    }

    Array1<f32> X;
    Array2<f32> Y;
    Array1<f32> Z;
    f32 YMin = static_cast<f32>(NoValue);
    f32 YMax = -static_cast<f32>(NoValue);
};

} // namespace

void StartDriver() {
    hintDue = false;
    ClearVaryingPars();
}

f64 TryValue(f64 x) {
    // A run that shows its progress is cancelled between two evaluations, however long they take.
    if (Calculating == True) {
        const FloatFaultsApart apart;
        ThePlatform().DoEvents();
    }
    ParValue(UnknownParNo) = x;
    const f64 residual = SelRootFunction();
    ThrowIfFloatFault();
    return residual;
}

f64 SolveUnknown() {
    const f64 root = FindUnknown();
    if (std::fabs(static_cast<f32>(root)) == static_cast<f32>(NoValue) || IsRangeEndMark(root))
        return NoValue;
    return root;
}

std::string CheckTyped(const std::string& text) {
    std::string clean = text;
    while (const auto forbidden = FirstForbidden(clean)) {
        ThePlatform().Beep();
        ShowMessage(*forbidden + "   Is Not Allowed. Must Be a Digit.");
        EraseAll(clean, *forbidden);
    }
    Calculated = False;
    GetInfoEnabled(3) = false;
    GetInfoEnabled(4) = false;
    ThePlatform().RefreshMenus();
    MarkChanged();
    return clean;
}

std::string TypedParText(i16 parNo, const std::string& text) {
    const std::string clean = CheckTyped(text);
    const i16 kind = ParKind(parNo);
    ParText(kind) = clean;
    if (HasGridData == True && IsGridKind(kind)) {
        HasGridData = False;
        HasDistrGraph = False;
        ParListName = Headline();
    }
    return clean;
}

void GetFromTable(i16 parNo) {
    if (!SelIsTablePar(parNo))
        return;
    const f64 value = static_cast<f64>(SelCalcTablePar());
    if (Cancelled == True) {
        Cancelled = False;
        return;
    }
    ParText(ParKind(parNo)) = Format(value, "#####0.0#####");
    Calculated = False;
    MarkChanged();
    UpdateMenus();
    ThePlatform().RefreshChild();
}

void SolveFor(i16 parNo) {
    if (Calculated == True && parNo == UnknownParNo)
        return;
    Cancelled = False;
    UnknownParNo = parNo;
    Calculated = False;
    ZParNo = parNo == 0 ? 1 : 0;
    XParNo = parNo <= 1 ? 2 : 1;
    FixParNos();
    CalcUnknown();
}

void CalcUnknown() {
    if (Calculated == True || NoOfPar < 1)
        return;
    ReadParValues();
    std::string& result = ParText(ParKind(UnknownParNo));
    result = "-";
    ThePlatform().RefreshChild();
    if (IsMultComp == True)
        HasGridData = False;
    if (!SelCheckPar()) {
        if (IsGroupSeq == False && IsMultComp == False)
            Calculated = True;
        UpdateMenus();
        return;
    }
    const f64 root = SolveUnknown();
    if (root == NoValue) {
        ShowCantCalculate();
    } else {
        ParValue(UnknownParNo) = root;
        result = FormatPar(ParKind(UnknownParNo), root);
        MarkChanged();
    }
    Calculated = True;
    StoreAnalysis();
    HideFormerResult();
    ThePlatform().RefreshChild();
    UpdateMenus();
}

const RunRefusal& LastRefusal() {
    return refusal;
}

void CalcRun() {
    refusal = {};
    if (Calculated == True || NoOfPar < 1)
        return;
    ReadParValues();
    const auto axis = ReadXAxis();
    if (!axis) {
        Cancelled = True;
        return;
    }
    const auto zValues = ReadZValues();
    if (!zValues) {
        Cancelled = True;
        return;
    }
    const VaryingScope varying;
    if (!AllPointsGood(*axis, *zValues)) {
        Cancelled = True;
        return;
    }

    RunValues values(axis->Points, *zValues);
    {
        RunProgress progress(static_cast<i32>(values.Y.Raw().size()));
        WalkGrid(*axis, *zValues, [&values, &progress](int k, int j, f64 x) {
            f64 root = FindUnknown();
            constexpr f64 rangeEnd = 66666;
            if (std::trunc(root) == rangeEnd)
                root = NoValue;
            values.Store(k, j, x, root);
            progress.Step();
            return Cancelled == False;
        });
    }
    if (Cancelled == True)
        return;
    if (!values.HasValues()) {
        Cancelled = ShowCantCalculate();
        return;
    }
    values.BecomeResult();
    HideFormerResult();
    UpdateMenus();
}

i16 ShowCantCalculate() {
    hintDue = !hintDue;
    std::string text = "Can't Be Calculated";
    if (CurrentWindowKind() > CalculationWindow)
        text += " For Any x-value";
    text += ".";
    if (NoOfTails == OneSided && hintDue)
        text += std::string(" Please Check if TickBox 'Reject in Left Tail' Should Be ") +
                (LeftTail == True ? "UnTicked" : "Ticked") + ".";
    ShowMessage(text);
    return True;
}

bool HasValue(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return false;
    const std::size_t last = text.find_last_not_of(' ');
    return text.compare(first, last - first + 1, "-") != 0;
}

bool AllValuesPresent() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !HasValue(ParText(ParKind(i))))
            return false;
    return true;
}

bool IsGridKind(i16 kind) {
    constexpr i16 kinds[] = {34,  137, 152, 153, 154, 202, 240, 247, 249, 250, 251,
                             252, 253, 254, 269, 287, 290, 307, 308, 309, 311, 312,
                             313, 314, 337, 338, 339, 340, 341, 342, 352};
    return std::binary_search(std::begin(kinds), std::end(kinds), kind);
}

bool IsBluePar(i16 parNo) {
    return SelIsTablePar(parNo) || (HasGridData == True && IsGridKind(ParKind(parNo)));
}

} // namespace quorvanta
