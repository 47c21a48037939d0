#include "core/run.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/floating_windows.h"
#include "core/general.h"
#include "core/menus.h"
#include "core/obstacle.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/search.h"
#include "core/values.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

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
    const f32 n =
        static_cast<f32>(Int((f64{axis.Max} - f64{axis.Min}) / f64{axis.Step} + 0.001) + 1);
    if (!(n <= static_cast<f32>(MaxSteps)))
        return refuse(AxisText::Xstep, "Maximum Number of Steps Is 100.");
    axis.Points = ToI16(f64{n});
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
//
// As many points as were counted, and no bound on x besides: one that lies closer to the end of the
// axis than the count looks would leave the last row of a table without a value.
template <class Visit>
void WalkGrid(const XAxis& axis, const std::vector<f32>& zValues, Visit&& visit) {
    for (int j = 1; j <= static_cast<int>(zValues.size()); ++j) {
        f64 x = f64{axis.Min};
        for (int k = 1; k <= axis.Points; ++k, x += f64{axis.Step}) {
            if (HasZPar())
                ParValue(ZParNo) = f64{zValues[static_cast<std::size_t>(j - 1)]};
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

    bool IsShown() const { return shown_; }

  private:
    void Show(i32 total) {
        shown_ = true;
        Calculating = True;
        ThePlatform().ShowProgress(total, "");
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
        TableDesigns = std::move(Designs);
        TableYKind = ParKind(UnknownParNo);
        TableYMin = GraphYMin = YMin;
        TableYMax = GraphYMax = YMax;
        Calculated = True;
    }

    Array1<f32> X;
    Array2<f32> Y;
    Array1<f32> Z;
    DesignRanges Designs;
    f32 YMin = static_cast<f32>(NoValue);
    f32 YMax = -static_cast<f32>(NoValue);
};

// What stands in the way at the first point, where a run has found no value at all.
std::string ObstacleAtFirst(const XAxis& axis, const std::vector<f32>& zValues) {
    ParValue(XParNo) = f64{axis.Min};
    if (HasZPar())
        ParValue(ZParNo) = f64{zValues.front()};
    return "With " + StripAmpersand(ParLabel(ParKind(XParNo))) + " " + Str(axis.Min) + ": " +
           Obstacle();
}

} // namespace

const RunRefusal& LastRefusal() {
    return refusal;
}

void CalcRun() {
    refusal = {};
    if (Calculated == True || NoOfPar < 1)
        return;
    ForgetObstacle();
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
    bool wasShown = false;
    {
        RunProgress progress(static_cast<i32>(values.Y.Raw().size()));
        WalkGrid(*axis, *zValues, [&values, &progress](int k, int j, f64 x) {
            f64 root = FindUnknown();
            constexpr f64 rangeEnd = 66666;
            if (std::trunc(root) == rangeEnd)
                root = NoValue;
            values.Store(k, j, x, root);
            if (root < NoValue && Cancelled == False) {
                ParValue(UnknownParNo) = root;
                SelNoteDesign(values.Designs);
            }
            if (Cancelled == False)
                progress.Step();
            return Cancelled == False;
        });
        wasShown = progress.IsShown();
    }
    if (Cancelled == True) {
        ThePlatform().ShowStatus("The run was cancelled.");
        return;
    }
    if (!values.HasValues()) {
        TellObstacle(ObstacleAtFirst(*axis, *zValues));
        Cancelled = ShowCantCalculate();
        return;
    }
    values.BecomeResult();
    FindDistrGraph();
    HideWindows(Occasion::ResultGone);
    UpdateMenus();
    if (wasShown)
        ThePlatform().ShowStatus("The run is complete.");
}

} // namespace quorvanta
