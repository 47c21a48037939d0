// Shift models: which distribution the data follow, under H0 and under H1, where a test has no
// parametric alternative. The user names it in frmShiftModel, which only draws what stands here.
//
// The choice is kept in the table of distributions of the analysis: one row for H1 alone, or one
// for H0 with that for H1 behind it. The codes are those of SimDistrNo (numeric/randdist.h); a
// distribution is its standard form, times its scale, plus its location.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

// The lists of distributions to choose from.
enum class DistrList { ShiftModels, GeneralModels, Symmetric, ScaleShape, Discrete };

// How many distributions are chosen from it: 2 where a test is about the distribution itself, that
// under H0 and that under H1; else 1.
i16 StepsOf(DistrList list);

// --- The table of distributions ------------------------------------------------------------------

struct DistrRow {
    i16 Code = 0;
    f32 Par1 = 0; // location or shape, or the first parameter of a discrete distribution
    f32 Par2 = 1; // scale, or the second one

    friend bool operator==(const DistrRow&, const DistrRow&) = default;
};

// Its rows: 0 (nothing was chosen yet), 1 or 2.
i16 NoOfDistr();
// The row of that number, from 1. RunTimeError (BadIndex) beyond NoOfDistr.
DistrRow Distr(i16 row);
// "H0: " or "H1: ".
std::string DistrLabel(i16 row);

// No row is left.
void ClearDistrRows();

// The row becomes the selection: SimDistrNo and its parameters, of which the functionals speak.
void SelectDistr(const DistrRow& row);

// The selection becomes the row of the step: the only one, for H1, or in a second step the one for
// H1 behind the first, which is then that for H0.
void StoreDistrRow(i16 step);

// The last row is kept for H1, and H0 is the same distribution with location 0, or with scale 1.
// Nothing without a row.
void SetNullFromShift();
void SetNullFromScale();

// A distribution beside the name of the hypothesis, or of the group, that it belongs to.
using NamedDistr = std::pair<std::string, DistrRow>;

// The family that SimulateFamily selected: at this location, or with its shape, and of this scale.
DistrRow SimulatedDistr(f32 location, f32 scale);

// "Normal Distribution"; empty for a code that there is none of.
std::string SimDistrName(i16 code);
// "Normal Distribution, m = 0.5, s = 1".
std::string DistrText(f32 par1, f32 par2, i16 code);

// --- The selection -------------------------------------------------------------------------------

// Lets the user choose a distribution from the list: for H1, or with two steps for H0 and then for
// H1. False when he cancels: selection and table stay as they were. Otherwise the table holds the
// choice, which is shown again the next time.
bool ShowDistributions(DistrList list, i16 steps = 1);

extern f32 ShiftPar1;         // the parameters of SimDistrNo that were entered
extern f32 ShiftPar2;         // 1 where none was
extern i16 ShiftFamily;       // 1 shift and general models, 2 symmetric, 3 scale/shape, 4 discrete
extern i16 ShiftNoOfPar;      // fields in use: 0, 1 or 2
extern Array1<i16> ShiftList; // (0..n) codes of the buttons
extern i16 ShiftOK;           // -1: the dialog ended with OK
inline constexpr int ShiftFields = 2;
extern FixedArray<std::string, 0, ShiftFields - 1> ShiftParText; // what stands in the fields

std::string ShiftCaption();   // of the window
std::string ShiftHeading();   // "Alternative Distribution (H1:)", "Null Distribution (H0:)"
std::string ShiftOkCaption(); // of its button: "&OK", "&Next"

// The button of SimDistrNo; -1 where the list does not have it.
i16 ShiftButton();
// The user presses a button: SimDistrNo, and the fields of that distribution.
void ChooseShiftDistr(i16 button);
// Caption of a field, 0 or 1; empty where it is not in use: a test may not ask for parameters, a
// distribution may not have them.
std::string_view ShiftFieldCaption(i16 field);

// Is the selection a distribution? Shows its message if not.
bool CheckDistrPar();

// Takes the fields into the selection and checks it. Nothing was wrong: ShiftNothing; otherwise,
// after the message, the field, or the buttons.
enum class ShiftRefused { Nothing, Field1, Field2, Buttons };
ShiftRefused AcceptShift();

// The density at x of a continuous row (no binomial, multinomial, Poisson, gamma or hypergeometric
// one) with parameters that are its; NoValue where it has none.
f64 DistrDensity(const DistrRow& distr, f64 x);

// A density or, of a discrete distribution, its probabilities, for a picture.
struct DistrCurve {
    std::string Label; // "H0", "H1"
    bool IsDiscrete = false;
    std::vector<std::pair<f64, f64>> Points; // from left to right
};

// The distributions as the fields stand, H0 first: none as long as what stands there is no
// distribution, or where a test gives the shape.
std::vector<DistrCurve> ShiftCurves();

// --- Functionals ---------------------------------------------------------------------------------

// They take d = ShiftPar1/ShiftPar2 of SimDistrNo. With a scale of 0 or less they show a message,
// set Cancelled and answer 0.5. Probabilities are held within 1e-5..0.99999 (32 bits), and 0.5 for
// a distribution that has none of it.

// P(X < Y), Y shifted by d against X: codes 0 to 4, 6 and 9.
f32 PrMWFromShift();
// P(X > 0) of a symmetric distribution with median d: codes 0, 1, 3, 4 and 6.
f32 PrSignFromShift();
// P(X > 0) and P(X + X' > 0) of two independent observations; likewise.
struct SignedRankPair {
    f32 P1;
    f32 P2;
};
SignedRankPair PrSignedRankFromShift();

// Is the code one of the list?
bool IsOffered(DistrList list, i16 code);

// The shift in scales, within 1e6, at which a functional of SimDistrNo that rises with it comes to
// be p, 0 < p < 1: that of the probability P(X < Y) or P(X > 0) that was entered.
f32 ShiftOf(f32 (*functional)(), f32 p);

// The family of a test whose own parameters are location and scale: the one that was chosen from
// the list, else a normal one, or the first of a list that has none. A shape that was not chosen is
// 1.
void SimulateFamily(DistrList list);

// A row as it is simulated: SimDistrNo, and SimDistrPar of a family that has a shape.
void SimulateDistr(const DistrRow& distr);

} // namespace quorvanta
