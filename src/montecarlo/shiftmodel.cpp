#include "montecarlo/shiftmodel.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/values.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <span>

namespace quorvanta {

f32 ShiftPar1;
f32 ShiftPar2 = 1;
i16 ShiftFamily;
i16 ShiftNoOfPar;
Array1<i16> ShiftList;
i16 ShiftOK;
FixedArray<std::string, 0, ShiftFields - 1> ShiftParText;

namespace {

constexpr i16 MaxDistr = 2;
constexpr i16 NullRow = 1;

// ShiftFamily
constexpr i16 FamilyOfShifts = 1;
constexpr i16 FamilyOfSymmetric = 2;
constexpr i16 FamilyOfShapes = 3;
constexpr i16 FamilyOfCounts = 4;

constexpr std::string_view Names[] = {
    "Uniform",     "Normal",    "Exponential",    "Laplace",       "Cauchy", "Weibull",
    "Logistic",    "Piecewise", "Lognormal",      "Extreme Value", "Gamma",  "Binomial",
    "Multinomial", "Poisson",   "Hypergeometric", "Chi-square"};
constexpr i16 NoOfNames = static_cast<i16>(std::size(Names));

// --- The lists -----------------------------------------------------------------------------------

constexpr i16 ShiftCodes[] = {SimUniform, SimNormal,   SimExponential, SimLaplace,
                              SimCauchy,  SimLogistic, SimExtremeValue};
constexpr i16 GeneralCodes[] = {SimUniform,   SimNormal,      SimExponential, SimLaplace,
                                SimCauchy,    SimWeibull,     SimLogistic,    SimChi2,
                                SimLognormal, SimExtremeValue};
constexpr i16 SymmetricCodes[] = {SimUniform, SimNormal, SimLaplace, SimCauchy, SimLogistic};
constexpr i16 ScaleShapeCodes[] = {SimExponential, SimWeibull, SimGamma, SimLognormal};
constexpr i16 DiscreteCodes[] = {SimBinomial, SimMultinomial, SimPoisson};

struct ListRow {
    DistrList List;
    std::string_view Caption;
    i16 Family;
    std::span<const i16> Codes;
};

constexpr ListRow Lists[] = {
    {DistrList::ShiftModels, "Shift Models F [(x - m)/s]", FamilyOfShifts, ShiftCodes},
    {DistrList::GeneralModels, "General Models F[x,m,s]", FamilyOfShifts, GeneralCodes},
    {DistrList::Symmetric, "Symmetric Distributions", FamilyOfSymmetric, SymmetricCodes},
    {DistrList::ScaleShape, "Scale/Shape Distributions", FamilyOfShapes, ScaleShapeCodes},
    {DistrList::Discrete, "Discrete Distributions", FamilyOfCounts, DiscreteCodes}};

const ListRow* shown = &Lists[0];
i16 stepShown = 1;
i16 stepsShown = 1;

// --- The fields ----------------------------------------------------------------------------------

constexpr i16 AnyCode = -1; // of the family; after the rows of its exceptions

struct FieldRow {
    i16 Family;
    i16 Code;
    std::string_view Captions[ShiftFields];
};

constexpr FieldRow Fields[] = {{FamilyOfShifts, SimWeibull, {"Shape (g)", "Scale (s)"}},
                               {FamilyOfShifts, SimLognormal, {"Shape (1/s)", "Scale (exp(m))"}},
                               {FamilyOfShifts, SimChi2, {"Degree of Freedom", ""}},
                               {FamilyOfShifts, AnyCode, {"Location (m)", "Scale (s)"}},
                               {FamilyOfSymmetric, AnyCode, {"Median (m)", "Scale (s)"}},
                               {FamilyOfShapes, SimWeibull, {"Shape Par.", ""}},
                               {FamilyOfCounts, SimBinomial, {"N", "Prop. p"}},
                               {FamilyOfCounts, SimMultinomial, {"No of Categ.", ""}},
                               {FamilyOfCounts, SimPoisson, {"Mean m", ""}}};

// Tests that ask for the parameters of the distribution; any other test has its own.
constexpr i16 TestsWithFields[] = {25, 31, 41, 51, 52, 106, 107, 108, 109, 111, 113, 202, 203, 331};

bool AsksForParameters() {
    return std::ranges::find(TestsWithFields, TestNo) != std::end(TestsWithFields);
}

const FieldRow* FieldsOf(i16 family, i16 code) {
    const auto* row = std::ranges::find_if(Fields, [family, code](const FieldRow& field) {
        return field.Family == family && (field.Code == code || field.Code == AnyCode);
    });
    return row == std::end(Fields) ? nullptr : row;
}

void CountFields() {
    ShiftNoOfPar = 0;
    while (ShiftNoOfPar < ShiftFields && !ShiftFieldCaption(ShiftNoOfPar).empty())
        ++ShiftNoOfPar;
}

bool HasScale() {
    return ShiftFieldCaption(1).starts_with("Scale");
}

std::string FieldText(f32 value) {
    return Format(f64{value}, "0.######");
}

// Nothing for a text that no 32 bits hold.
std::optional<f32> FieldNumber(const std::string& text) {
    if (!IsReadable(text) || std::abs(ReadNumber(text)) > f64{std::numeric_limits<f32>::max()})
        return std::nullopt;
    return Single(ReadNumber(text));
}

bool Refuse(const std::string& message) {
    ShowMessage(message);
    return false;
}

// What a cancel brings back.
struct Selection {
    i16 Code = SimDistrNo;
    f32 Par1 = ShiftPar1;
    f32 Par2 = ShiftPar2;
    FixedArray<i16, 1, 2> Codes = SimDistrOption;
    FixedArray<f32, 1, 2> Pars1 = SimDistrPar1;
    FixedArray<f32, 1, 2> Pars2 = SimDistrPar2;

    void BringBack() const {
        SimDistrNo = Code;
        ShiftPar1 = Par1;
        ShiftPar2 = Par2;
        SimDistrOption = Codes;
        SimDistrPar1 = Pars1;
        SimDistrPar2 = Pars2;
    }
};

// --- The table -----------------------------------------------------------------------------------

// A row that was never stored is all 0, which no distribution is: one without parameters has
// scale 1.
bool IsStored(i16 row) {
    return SimDistrOption(row) >= 0 && SimDistrOption(row) < NoOfNames &&
           (SimDistrOption(row) != 0 || SimDistrPar1(row) != 0 || SimDistrPar2(row) != 0);
}

void WriteRow(i16 row, const DistrRow& distr) {
    SimDistrOption(row) = distr.Code;
    SimDistrPar1(row) = distr.Par1;
    SimDistrPar2(row) = distr.Par2;
}

std::vector<DistrRow> AllRows() {
    std::vector<DistrRow> rows;
    for (i16 row = 1; row <= NoOfDistr(); ++row)
        rows.push_back(Distr(row));
    return rows;
}

// The first parameter is what a null hypothesis has 0 of.
bool HasLocation() {
    return ShiftFieldCaption(0).starts_with("Location");
}

// What the step starts with: the choice of the last time; else the start values, in the second step
// with the distribution and scale that were chosen in the first. The start value of the location
// is how far H1 lies from H0.
void SelectForStep(const std::vector<DistrRow>& before) {
    const std::size_t step = static_cast<std::size_t>(stepShown);
    if (!before.empty()) {
        SelectDistr(stepsShown == 1 || step > before.size() ? before.back() : before[step - 1]);
    } else if (stepShown == 1) {
        SelectDistr({SimDistrNo, SimDistrShape, SimDistrScale});
        if (stepsShown > 1 && HasLocation())
            ShiftPar1 = 0;
    } else if (HasLocation()) {
        ShiftPar1 = Single(f64{ShiftPar1} + f64{SimDistrShape});
    }
    ShiftParText(0) = FieldText(ShiftPar1);
    ShiftParText(1) = FieldText(ShiftPar2);
    CountFields();
}

// --- Curves --------------------------------------------------------------------------------------

// The density of scaled observations; that of none stays without a value.
f64 Scaled(f32 standard, f64 scale) {
    return f64{standard} == NoValue ? NoValue : f64{standard} / scale;
}

struct Span {
    f64 Low;
    f64 High;
};

// Where the curve is worth seeing.
Span SpanOf(const DistrRow& distr) {
    const f64 scale{distr.Par2};
    const f64 shape{distr.Par1};
    switch (distr.Code) {
    case SimWeibull:
        return {0, f64{WeibullInv(0.995F, distr.Par2, distr.Par1)}};
    case SimLognormal:
        return {0, f64{LognormInv(0.99F, Single(std::log(scale)), Single(1 / shape))}};
    case SimChi2:
        return {0, shape + 4 * std::sqrt(2 * shape)};
    default:
        break;
    }
    const Span standard = distr.Code == SimUniform       ? Span{-0.75, 0.75}
                          : distr.Code == SimExponential ? Span{-0.5, 5}
                          : distr.Code == SimNormal      ? Span{-3.5, 3.5}
                                                         : Span{-6, 6};
    return {shape + scale * standard.Low, shape + scale * standard.High};
}

DistrCurve DensityCurve(const DistrRow& distr, Span span) {
    constexpr int steps = 240;
    DistrCurve curve;
    for (int i = 0; i <= steps; ++i) {
        const f64 x = span.Low + (span.High - span.Low) * i / steps;
        const f64 density = DistrDensity(distr, x);
        if (std::isfinite(density) && density < NoValue)
            curve.Points.emplace_back(x, density);
    }
    return curve;
}

// The counts of a discrete distribution; none where it has too many to be told apart.
DistrCurve CountsCurve(const DistrRow& distr) {
    constexpr f64 most = 200;
    DistrCurve curve;
    curve.IsDiscrete = true;
    const f64 first{distr.Par1};
    const bool isBinomial = distr.Code == SimBinomial;
    const bool isGood =
        first > 0 && first <= most && (!isBinomial || (distr.Par2 > 0 && distr.Par2 < 1));
    if (!isGood)
        return curve;
    const i16 last = ToI16(isBinomial ? Int(first) : Int(first + 4 * std::sqrt(first) + 3));
    for (i16 x = 0; x <= last; ++x) {
        const f32 probability =
            isBinomial ? BinDensity(last, x, distr.Par2) : PoissonDensity(x, distr.Par1);
        curve.Points.emplace_back(f64{static_cast<f32>(x)}, f64{probability});
    }
    return curve;
}

bool IsDiscrete(i16 code) {
    return code == SimBinomial || code == SimMultinomial || code == SimPoisson;
}

// Can the row be drawn?
bool IsDistribution(const DistrRow& distr) {
    switch (distr.Code) {
    case SimMultinomial:
    case SimGamma:
        return false;
    case SimChi2:
        return distr.Par1 >= 2;
    case SimWeibull:
    case SimLognormal:
        return distr.Par1 > 0 && distr.Par2 > 0;
    default:
        return distr.Par2 > 0;
    }
}

// The selection as the fields stand; without fields the standard form.
std::optional<DistrRow> RowOfFields() {
    DistrRow row{SimDistrNo, 0, 1};
    f32* const pars[] = {&row.Par1, &row.Par2};
    for (i16 i = 0; i < ShiftNoOfPar; ++i) {
        const auto number = FieldNumber(ShiftParText(i));
        if (!number || !HasValue(ShiftParText(i)))
            return std::nullopt;
        *pars[i] = *number;
    }
    return row;
}

std::optional<DistrRow> NullOf(const DistrRow& alternative) {
    if (stepShown > 1)
        return Distr(NullRow);
    if (shown->List == DistrList::ShiftModels || shown->List == DistrList::Symmetric)
        return DistrRow{alternative.Code, 0, alternative.Par2};
    return std::nullopt;
}

// --- Functionals ---------------------------------------------------------------------------------

f32 Clipped(f64 probability) {
    return MaxSingle(1e-5F, MinSingle(0.99999F, Single(probability)));
}

// The shift in scales; nothing, after a message, without a scale. Held within what no distribution
// function tells from certainty.
std::optional<f64> Shift() {
    if (!(ShiftPar2 > 0)) {
        Refuse("Scale Must Be > 0.");
        Cancelled = True;
        return std::nullopt;
    }
    constexpr f64 far = 1e7;
    return MaxOf(-far, MinOf(far, f64{ShiftPar1} / f64{ShiftPar2}));
}

f64 Exp(f64 x) {
    return ExpClamped(Single(x));
}

// Quadratic near 0, where the closed form loses its figures: 1/2 + d/6 - d^3/180.
f64 OrderOfLogistic(f64 d) {
    constexpr f64 near = 0.01;
    if (std::fabs(d) < near)
        return 0.5 + d / 6 - d * d * d / 180;
    if (d < 0)
        return 1 - OrderOfLogistic(-d);
    const f64 e = std::exp(-d); // numerator and denominator over e^(2 d)
    return (1 - e - d * e) / ((1 - e) * (1 - e));
}

// P(X - X' < d) of two independent observations.
f64 PrOrder(i16 code, f64 d) {
    switch (code) {
    case SimUniform:
        if (d >= 1 || d <= -1)
            return d > 0 ? 1 : 0;
        return d >= 0 ? 1 - (1 - d) * (1 - d) / 2 : (1 + d) * (1 + d) / 2;
    case SimNormal:
        return f64{NorCdf(Single(d / std::sqrt(2.0)))};
    case SimExponential:
        return d < 0 ? Exp(d) / 2 : 1 - Exp(-d) / 2;
    case SimLaplace:
        return d < 0 ? (1 - d / 2) * Exp(d) / 2 : 1 - (d / 2 + 1) * Exp(-d) / 2;
    case SimCauchy:
        return 0.5 + std::atan(d / 2) / Pi;
    case SimLogistic:
        return OrderOfLogistic(d);
    case SimExtremeValue:
        return 1 / (1 + Exp(-d));
    default:
        return 0.5;
    }
}

f64 PrAbove0(i16 code, f64 d) {
    switch (code) {
    case SimUniform:
        return MaxOf(0, MinOf(1, 0.5 + d));
    case SimNormal:
        return f64{NorCdf(Single(d))};
    case SimLaplace:
        return d >= 0 ? 1 - Exp(-d) / 2 : Exp(d) / 2;
    case SimCauchy:
        return std::atan(d) / Pi + 0.5;
    case SimLogistic:
        return 1 / (Exp(-d) + 1);
    default:
        return 0.5;
    }
}

bool IsSymmetric(i16 code) {
    return std::ranges::find(SymmetricCodes, code) != std::end(SymmetricCodes);
}

} // namespace

// --- The table of distributions ------------------------------------------------------------------

i16 StepsOf(DistrList list) {
    return list == DistrList::GeneralModels || list == DistrList::Discrete ? MaxDistr : i16{1};
}

i16 NoOfDistr() {
    if (!IsStored(NullRow))
        return 0;
    return IsStored(MaxDistr) ? MaxDistr : i16{1};
}

DistrRow Distr(i16 row) {
    if (row < 1 || row > NoOfDistr())
        throw RunTimeError(Fault::BadIndex);
    return {SimDistrOption(row), SimDistrPar1(row), SimDistrPar2(row)};
}

std::string DistrLabel(i16 row) {
    return NoOfDistr() == MaxDistr && row == NullRow ? "H0: " : "H1: ";
}

void ClearDistrRows() {
    for (i16 row = 1; row <= MaxDistr; ++row)
        WriteRow(row, {0, 0, 0});
}

void StoreDistrRow(i16 step) {
    if (step == 1)
        ClearDistrRows();
    WriteRow(step, {SimDistrNo, ShiftPar1, ShiftPar2});
}

void SetNullFromShift() {
    if (NoOfDistr() == 0)
        return;
    const DistrRow alternative = Distr(NoOfDistr());
    WriteRow(MaxDistr, alternative);
    WriteRow(NullRow, {alternative.Code, 0, alternative.Par2});
}

void SetNullFromScale() {
    if (NoOfDistr() == 0)
        return;
    const DistrRow alternative = Distr(NoOfDistr());
    WriteRow(MaxDistr, alternative);
    WriteRow(NullRow, {alternative.Code, alternative.Par1, 1});
}

void SelectDistr(const DistrRow& row) {
    SimDistrNo = row.Code;
    ShiftPar1 = row.Par1;
    ShiftPar2 = row.Par2;
}

std::string SimDistrName(i16 code) {
    if (code < 0 || code >= NoOfNames)
        return "";
    return std::string(Names[code]) + " Distribution";
}

std::string DistrText(f32 par1, f32 par2, i16 code) {
    const auto with = [](const char* name, f32 value) {
        return ", " + std::string(name) + " = " + FieldText(value);
    };
    const std::string name = SimDistrName(code);
    switch (code) {
    case SimWeibull:
        return name + with("g", par1) + with("s", par2);
    case SimLognormal:
        return name + with("1/s", par1) + with("exp(m)", par2);
    case SimChi2:
        return name + with("Degree of Freedom", par1);
    case SimBinomial:
        return name + with("N", par1) + with("p", par2);
    case SimMultinomial:
        return name + with("No of Categ.", par1);
    case SimPoisson:
        return name + with("m", par1);
    case SimPiecewise:
    case SimGamma:
    case SimHypergeometric:
        return name;
    default:
        return name + with("m", par1) + with("s", par2);
    }
}

// --- The selection -------------------------------------------------------------------------------

bool ShowDistributions(DistrList list, i16 steps) {
    const Selection former;
    shown = std::ranges::find(Lists, list, &ListRow::List);
    ShiftFamily = shown->Family;
    ShiftList.ReDim(0, static_cast<int>(shown->Codes.size()) - 1);
    std::ranges::copy(shown->Codes, ShiftList.Raw().begin());
    stepsShown = steps;
    const std::vector<DistrRow> before = AllRows();
    for (stepShown = 1; stepShown <= steps; ++stepShown) {
        SelectForStep(before);
        ShiftOK = False;
        if (!ThePlatform().AskDistribution()) {
            former.BringBack();
            return false;
        }
        StoreDistrRow(stepShown);
    }
    return true;
}

std::string ShiftCaption() {
    return std::string(shown->Caption);
}

std::string ShiftHeading() {
    return stepShown < stepsShown ? "Null Distribution (H0:)" : "Alternative Distribution (H1:)";
}

std::string ShiftOkCaption() {
    return stepShown < stepsShown ? "&Next" : "&OK";
}

i16 ShiftButton() {
    const auto codes = ShiftList.Raw();
    const auto at = std::ranges::find(codes, SimDistrNo);
    return at == codes.end() ? i16{-1} : static_cast<i16>(at - codes.begin());
}

void ChooseShiftDistr(i16 button) {
    SimDistrNo = ShiftList(button);
    CountFields();
}

std::string_view ShiftFieldCaption(i16 field) {
    if (field < 0 || field >= ShiftFields)
        throw RunTimeError(Fault::BadIndex);
    if (!AsksForParameters() || ShiftButton() < 0)
        return "";
    const FieldRow* row = FieldsOf(ShiftFamily, SimDistrNo);
    return row == nullptr ? "" : row->Captions[field];
}

bool CheckDistrPar() {
    if (!AsksForParameters())
        return true;
    if (HasScale() && !(ShiftPar2 > 0))
        return Refuse("Scale Must Be > 0.");
    if (SimDistrNo == SimWeibull && !(ShiftPar1 > 0))
        return Refuse("Shape g Must Be > 0.");
    if (SimDistrNo == SimChi2 && (!(ShiftPar1 >= 2) || ShiftPar1 != std::floor(ShiftPar1)))
        return Refuse("Degrees of Freedom Must Be Integer >= 2.");
    return true;
}

ShiftRefused AcceptShift() {
    if (ShiftButton() < 0) {
        Refuse("No Distribution Is Chosen.");
        return ShiftRefused::Buttons;
    }
    ShiftPar1 = 0;
    ShiftPar2 = 1;
    f32* const pars[] = {&ShiftPar1, &ShiftPar2};
    constexpr ShiftRefused fields[] = {ShiftRefused::Field1, ShiftRefused::Field2};
    for (i16 i = 0; i < ShiftNoOfPar; ++i) {
        const auto number = FieldNumber(ShiftParText(i));
        if (!HasValue(ShiftParText(i)) || !number) {
            Refuse(number ? "A Value Is Missing."
                          : std::string(ShiftFieldCaption(i)) + " Is Too Large.");
            return fields[i];
        }
        *pars[i] = *number;
    }
    if (!CheckDistrPar())
        return HasScale() && !(ShiftPar2 > 0) ? ShiftRefused::Field2 : ShiftRefused::Field1;
    ShiftOK = True;
    return ShiftRefused::Nothing;
}

f64 DistrDensity(const DistrRow& distr, f64 x) {
    const f64 scale{distr.Par2};
    const f64 shape{distr.Par1};
    switch (distr.Code) {
    case SimWeibull: // WeibullDensity is not one for a scale other than 1
        return Scaled(WeibullDensity(Single(x / scale), 1, distr.Par1), scale);
    case SimLognormal:
        return f64{LognormDensity(Single(x), Single(std::log(scale)), Single(1 / shape))};
    case SimChi2:
        return f64{GammaDensity(Single(x), 2, Single(shape / 2))};
    default:
        break;
    }
    const f32 z = Single((x - f64{distr.Par1}) / scale);
    const auto standard = [z, code = distr.Code] {
        switch (code) {
        case SimUniform:
            return UniformDensity(z);
        case SimExponential:
            return ExpDensity(z);
        case SimLaplace:
            return LaplaceDensity(z);
        case SimCauchy:
            return CauchyDensity(z);
        case SimLogistic:
            return LogisticDensity(z);
        case SimExtremeValue:
            return ExtremeDensity(z);
        default:
            return NorDensity(z);
        }
    };
    return Scaled(standard(), scale);
}

std::vector<DistrCurve> ShiftCurves() {
    if (ShiftButton() < 0)
        return {};
    const auto alternative = RowOfFields();
    const bool givesShape =
        ShiftFamily != FamilyOfShapes || ShiftNoOfPar > 0 || SimDistrNo == SimExponential;
    if (!alternative || !givesShape || !IsDistribution(*alternative))
        return {};
    const bool isNull = stepShown < stepsShown;
    std::vector<std::pair<std::string, DistrRow>> rows;
    const auto null = isNull ? std::nullopt : NullOf(*alternative);
    if (null && IsDistribution(*null))
        rows.emplace_back("H0", *null);
    rows.emplace_back(isNull ? "H0" : "H1", *alternative);
    const bool counts =
        std::ranges::any_of(rows, [](const auto& row) { return IsDiscrete(row.second.Code); });
    Span span = SpanOf(*alternative);
    if (!counts)
        for (const auto& [label, row] : rows)
            span = {MinOf(span.Low, SpanOf(row).Low), MaxOf(span.High, SpanOf(row).High)};
    if (!std::isfinite(span.High - span.Low))
        return {};
    std::vector<DistrCurve> curves;
    for (const auto& [label, row] : rows) {
        DistrCurve curve = counts ? CountsCurve(row) : DensityCurve(row, span);
        curve.Label = label;
        if (!curve.Points.empty())
            curves.push_back(std::move(curve));
    }
    return curves;
}

// --- Functionals ---------------------------------------------------------------------------------

// With Y = X' + d, P(X < Y) = P(X - X' < d). The difference of two exponential observations is
// Laplace, that of two extreme values logistic, that of two Cauchy ones twice such a one (N. L.
// Johnson, S. Kotz and N. Balakrishnan, Continuous Univariate Distributions, 2nd edition, 1994).
f32 PrMWFromShift() {
    const auto d = Shift();
    return d ? Clipped(PrOrder(SimDistrNo, *d)) : 0.5F;
}

f32 PrSignFromShift() {
    const auto d = Shift();
    return d ? Clipped(PrAbove0(SimDistrNo, *d)) : 0.5F;
}

bool IsOffered(DistrList list, i16 code) {
    const auto* row = std::ranges::find(Lists, list, &ListRow::List);
    return std::ranges::find(row->Codes, code) != row->Codes.end();
}

f32 ShiftOf(f32 (*functional)(), f32 p) {
    const Selection former;
    constexpr int halvings = 80;
    f64 low = -1e6;
    f64 high = 1e6;
    ShiftPar2 = 1;
    for (int i = 0; i < halvings; ++i) {
        ShiftPar1 = Single((low + high) / 2);
        (functional() < p ? low : high) = (low + high) / 2;
    }
    former.BringBack();
    return Single((low + high) / 2);
}

void SimulateFamily(DistrList list) {
    DistrRow family{IsOffered(list, SimNormal) ? i16{SimNormal} : SimExponential, 1, 1};
    if (NoOfDistr() > 0 && IsOffered(list, Distr(NoOfDistr()).Code))
        family = Distr(NoOfDistr());
    if (!(family.Par1 > 0))
        family.Par1 = 1;
    SimulateDistr(family);
}

DistrRow SimulatedDistr(f32 location, f32 scale) {
    return {SimDistrNo, IsOffered(DistrList::ShiftModels, SimDistrNo) ? location : SimDistrPar,
            scale};
}

void SimulateDistr(const DistrRow& distr) {
    SimDistrNo = distr.Code;
    SimDistrPar = distr.Par1;
}

// The sum of two symmetric observations about the median d is their difference, moved by 2 d:
// P(X + X' > 0) is P(X - X' < 2 d). Beyond a half, where a uniform observation is always on one
// side of 0, a sum of two is as well.
SignedRankPair PrSignedRankFromShift() {
    const auto d = Shift();
    if (!d || !IsSymmetric(SimDistrNo))
        return {0.5F, 0.5F};
    return {Clipped(PrAbove0(SimDistrNo, *d)), Clipped(PrOrder(SimDistrNo, 2 * *d))};
}

} // namespace quorvanta
