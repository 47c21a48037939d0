#include "tests/lists/anovaeffect.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/turningpoint.h"

namespace quorvanta {

namespace {

// Of F-tests, by type of effect: they have no limits.
constexpr EffectKinds TypeKinds[]{{Kind::SdOfMeans, NoKind, NoKind},
                                  {Kind::AnyMeanDifference, NoKind, NoKind},
                                  {Kind::MinMeanDifference, NoKind, NoKind}};

AnovaEffect current;

// Options of Group::TestedOfTwoFactors.
constexpr i16 MainEffectB = 1;
constexpr i16 Interaction = 2;

} // namespace

void AnovaEffect::Offer(std::initializer_list<i16> checks, std::initializer_list<i16> tested,
                        std::initializer_list<i16> contrastTails) {
    FixSamples(MoreSamples);
    OfferChecks(checks);
    OfferGroups(tested);
    if (Ticked(Check::Contrast)) {
        OfferTails(contrastTails);
        return;
    }
    OfferTails({TwoSided});
    OfferGroups({Group::EffectSize});
}

f32 AnovaEffect::Value() const {
    return Single(hypotheses_.Truth());
}

f32 AnovaEffect::Sd() const {
    return Single(ParValue(sd_));
}

bool AnovaEffect::IsTablePar(i16 parNo) const {
    return parNo == hypotheses_.TruthParNo() || (isContrast_ && parNo == sd_);
}

std::vector<Grid> AnovaEffect::Grids(const TestedMeans& tested) const {
    return isContrast_ ? ContrastGrids(tested) : MeansGrids(tested);
}

f32 AnovaEffect::FromGrids(i16 parNo, const TestedMeans& tested) const {
    if (!isContrast_)
        return Single(EffectFromGrids(tested, type_));
    return Single(parNo == sd_ ? ContrastSdFromGrids(tested) : ContrastFromGrids(tested));
}

bool AnovaEffect::Check() const {
    return hypotheses_.Check();
}

void AnovaEffect::Narrow(f64& lower, f64& upper) const {
    hypotheses_.Narrow(lower, upper);
}

f64 AnovaEffect::PowerEq(const AnovaDesign& design) const {
    return PowerEq(design, Sd());
}

f64 AnovaEffect::PowerEq(const AnovaDesign& design, f32 sd) const {
    if (!isContrast_)
        return AnovEq(design, type_, Value(), sd);
    if (NoOfTails != TwoOneSided)
        return ContrastPowerEq(design, Value(), sd, 0, 0);
    const f64 contrast{Value()};
    return ContrastPowerEq(design, Value(), sd, Single(contrast - f64{hypotheses_.Left()}),
                           Single(f64{hypotheses_.Right()} - contrast));
}

AnovaEffect AddAnovaEffect(i16 contrastMean) {
    AnovaEffect effect;
    effect.isContrast_ = Ticked(Check::Contrast);
    effect.type_ = static_cast<AnovaEffectType>(ChosenOption(Group::EffectSize));
    effect.hypotheses_ = AddHypotheses(
        effect.isContrast_ ? EffectKinds{contrastMean, Kind::MeanLeftLimit, Kind::MeanRightLimit}
                           : TypeKinds[static_cast<int>(effect.type_)]);
    effect.sd_ = AddPar(effect.isContrast_ ? Kind::ContrastSd : Kind::Sd);
    return effect;
}

void AnovaModule::Narrow(f64& lower, f64& upper, f64 (*residual)()) {
    current.Narrow(lower, upper);
    if (IsLayoutKind(ParKind(UnknownParNo)))
        StartAtHighestPower(lower, upper, residual);
}

void AnovaModule::StartAnovaList(i16 contrastMean) {
    StartTestList();
    current = AddAnovaEffect(contrastMean);
}

const AnovaEffect& AnovaModule::Effect() {
    return current;
}

void AnovaModule::WithoutInteractionIfAdditive() {
    if (Ticked(Check::Additive))
        DisableOption(Group::TestedOfTwoFactors, Interaction);
}

AnovaDesign AnovaModule::EffectOfTwo(f32 a, f32 b, f32 n, f64 errorDf) {
    switch (ChosenOption(Group::TestedOfTwoFactors)) {
    case Interaction:
        return InteractionEffect(a, b, n, errorDf);
    case MainEffectB:
        return MainEffect(b, Single(f64{a} * f64{n}), errorDf);
    default:
        return MainEffect(a, Single(f64{b} * f64{n}), errorDf);
    }
}

TestedMeans AnovaModule::MeansOfTwo(i16 levels) {
    const i16 tested = ChosenOption(Group::TestedOfTwoFactors);
    const i16 second = static_cast<i16>(levels + 1);
    const bool isB = tested == MainEffectB;
    if (Ticked(Check::Additive) || (current.IsContrast() && tested != Interaction))
        return {.Levels = isB ? second : levels, .Head = isB ? "B" : "A"};
    return {.Levels = levels,
            .Head = "A",
            .Columns = second,
            .Part = tested == Interaction ? MatrixEffect::Interaction
                                          : (isB ? MatrixEffect::Columns : MatrixEffect::Rows)};
}

} // namespace quorvanta
