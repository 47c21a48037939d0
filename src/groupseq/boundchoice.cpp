#include "groupseq/boundchoice.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/platform.h"
#include "groupseq/groupseq.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <array>

namespace quorvanta {

i16 BoundTypeShown;
std::string FamilyParText;

namespace {

struct BoundRow {
    std::string_view Name;
    std::string_view ParCaption;
    f64 Start;
    f64 Min; // of the parameter
    f64 Max;
};

// Within these ranges no boundary leaves 32 bits, whatever the fractions.
constexpr std::array<BoundRow, NoOfBoundTypes> Bounds{
    {{"Pocock", "", 0, 0, 0},
     {"O'Brien and Fleming", "", 0, 0, 0},
     {"Wang and Tsiati", "Delta", 0.25, -1, 1},
     {"Haybittle and Peto", "", 0, 0, 0},
     {"Lan-DeMets (Pocock)", "", 0, 0, 0},
     {"Lan-DeMets (O'Brien-Fleming)", "", 0, 0, 0},
     {"Gamma family (Hwang-Shih-DeCani)", "Gamma", -4, -20, 20},
     {"Rho family (Kim-DeMets)", "Rho", 2, 0.01, 20},
     {"User defined", "", 0, 0, 0},
     {"Power family", "Delta", 0, -1, 0.5}}};

bool IsType(i16 type) {
    return type >= 0 && type < NoOfBoundTypes;
}

const BoundRow& RowOf(i16 type) {
    return Bounds[static_cast<std::size_t>(IsType(type) ? type : 0)];
}

std::string Text(f64 value) {
    return Format(value, "0.####");
}

} // namespace

std::string_view BoundName(i16 type) {
    return IsType(type) ? RowOf(type).Name : std::string_view();
}

std::string_view FamilyParCaption(i16 type) {
    return IsType(type) ? RowOf(type).ParCaption : std::string_view();
}

void ReadBoundChoice() {
    // One analysis alone has the same bound with every type.
    if (NoOfInterim == 0) {
        BoundType = BoundPocock;
        FamilyPar = 0;
        return;
    }
    BoundType = IsType(SimDistrOption(1)) ? SimDistrOption(1) : BoundPocock;
    const BoundRow& row = RowOf(BoundType);
    const f64 entered{SimDistrPar1(1)};
    FamilyPar = Single(entered >= row.Min && entered <= row.Max ? entered : row.Start);
}

void StoreBoundChoice(i16 type, f32 familyPar) {
    SimDistrOption(1) = type;
    SimDistrPar1(1) = familyPar;
    ReadBoundChoice();
}

bool ShowBoundaries() {
    ReadBoundChoice();
    BoundTypeShown = BoundType;
    FamilyParText = FamilyParCaption(BoundType).empty() ? "" : Text(f64{FamilyPar});
    return ThePlatform().AskBoundary();
}

void ChooseBoundType(i16 type) {
    BoundTypeShown = type;
    FamilyParText = FamilyParCaption(type).empty() ? "" : Text(RowOf(type).Start);
}

bool AcceptBoundary() {
    const BoundRow& row = RowOf(BoundTypeShown);
    if (row.ParCaption.empty()) {
        StoreBoundChoice(BoundTypeShown, 0);
        return true;
    }
    const bool isReadable = IsReadable(FamilyParText);
    const f64 entered = isReadable ? ReadNumber(FamilyParText) : 0;
    if (!isReadable || entered < row.Min || entered > row.Max) {
        ShowMessage(std::string(row.ParCaption) + " Must Be >= " + Text(row.Min) +
                    " and <= " + Text(row.Max) + ".");
        return false;
    }
    StoreBoundChoice(BoundTypeShown, Single(entered));
    return true;
}

} // namespace quorvanta
