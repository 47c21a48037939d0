#include "ranksurv/groupsizes.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "numeric/rounding.h"
#include "tests/lists/turningpoint.h"

namespace quorvanta {

namespace {

constexpr f32 leastSize = 2;

bool IsLargeEnough(f32 size, i16 kind) {
    if (size >= leastSize)
        return true;
    ShowMessage(StripAmpersand(ParLabel(kind)) + " Must Be >=2.");
    return false;
}

} // namespace

void GroupSizes::AddEach() {
    total_ = 0;
    each_ = AddSizes();
}

void GroupSizes::AddTotal(i16 totalKind, i16 ratioKind) {
    total_ = AddPar(totalKind);
    AddPar(ratioKind);
}

f32 GroupSizes::First() const {
    return total_ == 0 ? each_.First() : Single(Total() / (Ratio() + 1));
}

f32 GroupSizes::Second() const {
    return total_ == 0 ? each_.Second() : Single(Total() * Ratio() / (Ratio() + 1));
}

f64 GroupSizes::Total() const {
    return total_ == 0 ? f64{each_.First()} + f64{each_.Second()} : f64{Single(ParValue(total_))};
}

f64 GroupSizes::Ratio() const {
    return total_ == 0 ? f64{each_.Second()} / f64{each_.First()}
                       : f64{Single(ParValue(total_ + 1))};
}

bool GroupSizes::CountsSubjects() const {
    return ParKind(total_) == Kind::TotalSize;
}

bool GroupSizes::Check() const {
    if (total_ == 0)
        return each_.Check();
    if (!CountsSubjects() || UnknownParNo == total_ || UnknownParNo == total_ + 1)
        return true;
    return IsLargeEnough(First(), Kind::Size1) && IsLargeEnough(Second(), Kind::Size2);
}

void GroupSizes::Narrow(f64& lower, f64& upper, f64 (*residual)()) const {
    if (total_ == 0)
        return each_.Narrow(lower, upper);
    const f64 least{leastSize};
    if (UnknownParNo == total_ && CountsSubjects())
        lower = MaxOf(lower, least * (Ratio() + 1) / MinOf(1, Ratio()));
    if (UnknownParNo != total_ + 1)
        return;
    if (CountsSubjects()) {
        const f64 most = Total() / least - 1;
        upper = MinOf(upper, most);
        lower = MaxOf(lower, 1 / most);
    }
    KeepNearestRoot(lower, upper, Side::Above, residual);
}

} // namespace quorvanta
