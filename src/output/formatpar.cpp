#include "output/formatpar.h"

#include "core/catalogue.h"
#include "core/general.h"
#include "output/format.h"

namespace quorvanta {

std::string FormatPar(i16 kind, f64 x) {
    if (IsCountKind(kind))
        return Format(WholeCount(kind, x), "0");
    return Format(x, FormatBySize(x));
}

f64 WholeCount(i16 kind, f64 x) {
    constexpr f64 slack = 1e-5;
    return IsPopulationKind(kind) ? Int(x + slack) : Int(x - slack) + 1;
}

} // namespace quorvanta
