// The form in which a quantity is entered that another one stands beside: the second mean beside
// the first, the H1 value beside the H0 value, the second size beside the first.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The options of a group of interchangeable parameters, in their order.
enum Form : i16 {
    AsValue,      // itself
    AsDifference, // its difference from the base
    AsRatio       // its ratio to the base
};

// The quantity, from its base and what is entered.
constexpr f64 FromForm(Form form, f64 base, f64 entry) {
    return form == AsValue ? entry : (form == AsDifference ? base + entry : base * entry);
}

// What is entered for a quantity. A ratio needs a base other than 0.
constexpr f64 InForm(Form form, f64 base, f64 quantity) {
    return form == AsValue ? quantity : (form == AsDifference ? quantity - base : quantity / base);
}

// How far the quantity is above its base.
constexpr f64 ExcessOverBase(Form form, f64 base, f64 entry) {
    return form == AsRatio ? base * (entry - 1) : FromForm(form, base, entry) - base;
}

struct Range {
    f64 Min;
    f64 Max;
};

// The entries that keep the quantity in its range. A ratio needs a base other than 0. A sum and a
// product have their two sides in either order, so beside an entry these are the bases that do.
constexpr Range InForm(Form form, f64 base, Range quantity) {
    const f64 low = InForm(form, base, quantity.Min);
    const f64 high = InForm(form, base, quantity.Max);
    return form == AsRatio && base < 0 ? Range{high, low} : Range{low, high};
}

} // namespace quorvanta
