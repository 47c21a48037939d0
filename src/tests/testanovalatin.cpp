#include "tests/testanovalatin.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

i16 side; // position of the size of a square
i16 squares;

// The degrees of freedom of the error in r squares of t treatments (D. C. Montgomery, Design and
// Analysis of Experiments, 1984, section 5.2): after squares, rows, columns and treatments, with
// rows and columns that are the squares' own or the same in all;
f64 OwnRowsAndColumnsDf(f64 t, f64 r) {
    return (t - 1) * (r * (t - 1) - 1);
}
f64 CommonRowsAndColumnsDf(f64 t, f64 r) {
    return (t - 1) * (r * (t + 1) - 3);
}
// where squares are random, those of the interaction of treatments and squares.
f64 RandomSquaresDf(f64 t, f64 r) {
    return (t - 1) * (r - 1);
}

TestedMeans Treatments() {
    return {.Levels = side, .Head = "Treatment"};
}

// A treatment stands once in each row of each square.
AnovaDesign ReplicatedSquares(f64 (*errorDf)(f64 t, f64 r)) {
    const f32 t = Single(ParValue(side));
    const f32 r = Single(ParValue(squares));
    return MainEffect(t, Single(f64{r} * f64{t}), errorDf(f64{t}, f64{r}));
}

void AddSquares() {
    side = AddPar(Kind::ReplicatedSquareSize);
    squares = AddPar(Kind::NoOfSquares);
}

} // namespace

void TESTANOVALATIN::SetupTest() {
    AnovaEffect::Offer({Check::Contrast}, {});
}

void TESTANOVALATIN::SetParList() {
    StartAnovaList();
    side = AddPar(Kind::SquareSize);
}

// H. Scheffe, The Analysis of Variance, 1959, section 5.1.
f64 TESTANOVALATIN::RootFunction() {
    const f32 t = Single(ParValue(side));
    return Effect().PowerEq(MainEffect(t, t, (f64{t} - 1) * (f64{t} - 2)));
}

TestedMeans TESTANOVALATIN::Tested() {
    return Treatments();
}

void TESTANOVALATINREPL::SetupTest() {
    AnovaEffect::Offer({Check::Contrast, Check::SquaresAsLevels}, {});
}

void TESTANOVALATINREPL::SetParList() {
    StartAnovaList(Kind::ReplicatedSquareContrastMean);
    AddSquares();
}

f64 TESTANOVALATINREPL::RootFunction() {
    return Effect().PowerEq(ReplicatedSquares(
        Ticked(Check::SquaresAsLevels) ? &CommonRowsAndColumnsDf : &OwnRowsAndColumnsDf));
}

TestedMeans TESTANOVALATINREPL::Tested() {
    return Treatments();
}

void TESTANOVALATINREPLRAND::SetupTest() {
    AnovaEffect::Offer({Check::Contrast, Check::RandomSquares}, {});
}

void TESTANOVALATINREPLRAND::SetParList() {
    StartAnovaList(Kind::ReplicatedSquareContrastMean);
    AddSquares();
}

f64 TESTANOVALATINREPLRAND::RootFunction() {
    return Effect().PowerEq(ReplicatedSquares(
        Ticked(Check::RandomSquares) ? &RandomSquaresDf : &CommonRowsAndColumnsDf));
}

TestedMeans TESTANOVALATINREPLRAND::Tested() {
    return Treatments();
}

} // namespace quorvanta
