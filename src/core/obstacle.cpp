#include "core/obstacle.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/search.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

bool isTold = false;

// Gives the unknown and the values back that another search needs in their places.
class StateApart {
  public:
    StateApart() = default;
    ~StateApart() {
        UnknownParNo = unknown_;
        ParValue = values_;
    }
    StateApart(const StateApart&) = delete;
    StateApart& operator=(const StateApart&) = delete;

  private:
    i16 unknown_ = UnknownParNo;
    FixedArray<f64, 0, MaxPar> values_ = ParValue;
};

struct Limits {
    f64 Lower;
    f64 Upper;
};

Limits SearchedLimits() {
    const i16 kind = ParKind(UnknownParNo);
    Limits limits{ParMin(kind), ParMax(kind)};
    SelSearchLimits(limits.Lower, limits.Upper);
    return limits;
}

// A design of the power family is made for its power, and so has no other one.
bool IsMadeForItsPower() {
    if (IsGroupSeq == False)
        return false;
    ReadBoundChoice();
    return BoundType == BoundPowerFamily;
}

// The equation of a design has no value where its boundaries have no solution.
bool HasBoundaries(f64 x) {
    const StateApart apart;
    ParValue(UnknownParNo) = x;
    try {
        return SelRootFunction() != NoValue;
    } catch (const RunTimeError&) {
        ClearFloatFaults();
        return true;
    }
}

// What is asked for at position 1, with x in the place of the unknown; NoValue if it has no value.
f64 PowerWith(f64 x) {
    if (UnknownParNo == PowerParNo || IsMadeForItsPower())
        return NoValue;
    const StateApart apart;
    ParValue(UnknownParNo) = x;
    UnknownParNo = PowerParNo;
    try {
        return SolveUnknown();
    } catch (const RunTimeError&) {
        ClearFloatFaults();
        return NoValue;
    }
}

std::string Label(i16 parNo) {
    return StripAmpersand(ParLabel(ParKind(parNo)));
}

// The power at an end of the range, which need not be told to more than three decimals.
std::string Rounded(f64 power) {
    return std::fabs(power) <= 1 ? Format(power, "0.0##") : FormatPar(ParKind(PowerParNo), power);
}

std::string Text(i16 parNo, f64 value) {
    const bool isSmall = std::fabs(value) <= 1;
    return isSmall ? Format(value, "0.0####") : FormatPar(ParKind(parNo), value);
}

// A power of the size of the level whatever the unknown, or one that vanishes.
std::string Reason(f64 atLower, f64 atUpper) {
    constexpr f64 close = 0.002;
    const f64 level = ParValue(LevelParNo);
    const bool isTest = IsTest == True || ProcedureNo == ProcedureTest;
    if (!isTest || NoOfTails == TwoOneSided || UnknownParNo == LevelParNo)
        return "";
    // With a handful of subjects the approximations are off by more.
    constexpr f64 coarse = 0.02;
    const f64 offLower = std::fabs(atLower - level);
    const f64 offUpper = std::fabs(atUpper - level);
    if (std::min(offLower, offUpper) <= close && std::max(offLower, offUpper) <= coarse)
        return " H1 equals H0.";
    if (NoOfTails == OneSided && std::fmax(atLower, atUpper) <= level + close)
        return " H1 lies on the other side of H0.";
    return "";
}

} // namespace

std::string Obstacle() {
    const StateApart apart;
    const auto [lower, upper] = SearchedLimits();
    const std::string label = Label(UnknownParNo);
    const std::string from = Text(UnknownParNo, lower);
    const std::string to = Text(UnknownParNo, upper);
    if (upper < lower)
        return "The other values leave nothing for " + label + ": at least " + from +
               " and at most " + to + ".";
    if (IsGroupSeq == True && !HasBoundaries(lower) && !HasBoundaries(upper))
        return std::string(NoBoundaries);
    const f64 asked = ParValue(PowerParNo);
    const f64 atLower = PowerWith(lower);
    const f64 atUpper = PowerWith(upper);
    if (atLower == NoValue || atUpper == NoValue)
        return "No value of " + label + " from " + from + " to " + to +
               " agrees with the other values.";
    const std::string power = Label(PowerParNo);
    const std::string question = ", and " + Text(PowerParNo, asked) + " is asked.";
    if (upper == lower)
        return power + " is " + Rounded(atLower) + " already with " + label + " " + from + question;
    const std::string range = label + " from " + from + " to " + to + ": " + power + " goes from " +
                              Rounded(atLower) + " to " + Rounded(atUpper) + question;
    if ((asked - atLower) * (asked - atUpper) < 0)
        return range + " It is passed in a jump.";
    return range + Reason(atLower, atUpper);
}

void TellObstacle(const std::string& obstacle) {
    isTold = true;
    ThePlatform().ShowStatus(obstacle);
}

void ForgetObstacle() {
    if (isTold)
        ThePlatform().ShowStatus("");
    isTold = false;
}

} // namespace quorvanta
