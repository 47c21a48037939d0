#include "tests/lists/samples.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"

namespace quorvanta {

void OfferForms(const SampleKinds& kinds) {
    if (NoOfSamples == TwoSamples)
        OfferGroups({kinds.Group});
}

f32 SampleValues::First() const {
    return Single(ParValue(first_));
}

f32 SampleValues::Second() const {
    return ParDep(second_, First(), form_);
}

f64 SampleValues::FirstAt(f64 x) const {
    return ValueAt(first_, x);
}

f64 SampleValues::SecondAt(f64 x) const {
    return DependentAt(second_, FirstAt(x), form_, x);
}

bool SampleValues::FirstIsUnknown() const {
    return UnknownParNo == first_;
}

bool SampleValues::HasUnknown() const {
    return FirstIsUnknown() || (HasSecond() && UnknownParNo == second_);
}

bool SampleValues::SecondDependsOnUnknown() const {
    return UnknownParNo == second_ || (form_ != AsValue && FirstIsUnknown());
}

Range SampleValues::FirstRange() const {
    return {ParMin(ParKind(first_)), ParMax(ParKind(first_))};
}

Range SampleValues::SecondRange() const {
    return {ParMin(kind_), ParMax(kind_)};
}

bool SampleValues::Check() const {
    return Check(FirstRange(), SecondRange());
}

void SampleValues::Narrow(f64& lower, f64& upper) const {
    Narrow(lower, upper, FirstRange(), SecondRange());
}

bool SampleValues::Check(Range first, Range second) const {
    if (!FirstIsUnknown() && !CheckRange(first_, first.Min, first.Max))
        return false;
    return !HasSecond() || CheckPair(first_, second_, second.Min, second.Max, form_);
}

void SampleValues::Narrow(f64& lower, f64& upper, Range first, Range second) const {
    if (HasSecond())
        PairLimits(lower, upper, first_, second.Min, second.Max, form_);
    if (FirstIsUnknown()) {
        lower = MaxOf(lower, first.Min);
        upper = MinOf(upper, first.Max);
    }
}

SampleValues AddSampleValues(const SampleKinds& kinds) {
    return NoOfSamples == TwoSamples ? AddPair(kinds) : AddCommonValue(kinds);
}

SampleValues AddCommonValue(const SampleKinds& kinds) {
    SampleValues values;
    values.first_ = AddPar(kinds.One);
    return values;
}

SampleValues AddPair(const SampleKinds& kinds) {
    SampleValues values;
    values.form_ = ChosenForm(kinds.Group);
    // Of two forms the second one is the ratio.
    if (values.form_ == AsDifference && kinds.Second[AsDifference] == NoKind)
        values.form_ = AsRatio;
    values.kind_ = kinds.Second[0];
    values.first_ = AddPar(kinds.First);
    values.second_ = AddPar(kinds.Second[values.form_]);
    return values;
}

SampleValues AddSizes(const SampleKinds& kinds) {
    WorkNo = ChosenOption(kinds.Group);
    return AddSampleValues(kinds);
}

f64 ValueAt(i16 position, f64 x) {
    return position == UnknownParNo ? x : ParValue(position);
}

f64 DependentAt(i16 position, f64 base, Form form, f64 x) {
    return FromForm(form, base, ValueAt(position, x));
}

} // namespace quorvanta
