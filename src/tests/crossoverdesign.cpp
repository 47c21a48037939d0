#include "tests/crossoverdesign.h"

#include "core/general.h"
#include "core/gridtable.h"
#include "numeric/matmultmat.h"

#include <cmath>

namespace quorvanta {

namespace {

// Sums of whole numbers over at most 100 observations: what is smaller, in relation to where it
// came from, is 0 but for rounding.
constexpr f64 Nothing = 1e-9;

i16 TreatmentAt(const Array2<f32>& design, i16 sequence, i16 period) {
    return ToI16(f64{design(sequence, period)});
}

// One row for each sequence and period; columns: carryover effects, whether there is a treatment at
// all, treatments.
Array2<f64> DesignMatrix(const Array2<f32>& design, i16 treatments, i16 nuisances) {
    const int periods = design.HighBound2();
    Array2<f64> x(1, design.HighBound1() * periods, 1, nuisances + treatments);
    int row = 0;
    for (i16 i = 1; i <= design.HighBound1(); ++i)
        for (i16 j = 1; j <= periods; ++j) {
            ++row;
            const i16 treatment = TreatmentAt(design, i, j);
            if (treatment > 0) {
                x(row, nuisances) = 1;
                x(row, nuisances + treatment) = 1;
            }
            const i16 former = j > 1 ? TreatmentAt(design, i, static_cast<i16>(j - 1)) : i16{0};
            if (former > 0 && nuisances > 1)
                x(row, former) = 1;
        }
    return x;
}

// Takes the means of the sequences and of the periods out of a column.
void TakeOutMeans(Array2<f64>& x, int column, int sequences, int periods) {
    Array1<f64> ofSequence(1, sequences);
    Array1<f64> ofPeriod(1, periods);
    f64 all = 0;
    for (int i = 1; i <= sequences; ++i)
        for (int j = 1; j <= periods; ++j) {
            const f64 value = x((i - 1) * periods + j, column);
            ofSequence(i) += value / periods;
            ofPeriod(j) += value / sequences;
            all += value / (sequences * periods);
        }
    for (int i = 1; i <= sequences; ++i)
        for (int j = 1; j <= periods; ++j)
            x((i - 1) * periods + j, column) -= ofSequence(i) + ofPeriod(j) - all;
}

// Eliminates the first variables, up to last, of a symmetric matrix, each but those that are
// nothing but a sum of others: the sweeps that form a generalised inverse (J. H. Goodnight, The
// American Statistician 33, 1979, 149-158). What is left in the other rows and columns is what the
// eliminated ones don't explain. Answers how many were eliminated.
int Eliminate(Array2<f64>& m, int last) {
    const int size = m.HighBound1();
    Array1<f64> diagonal(1, size);
    for (int p = 1; p <= last; ++p)
        diagonal(p) = m(p, p);
    int eliminated = 0;
    for (int p = 1; p <= last; ++p) {
        if (!(m(p, p) > Nothing * MaxOf(1, diagonal(p))))
            continue;
        ++eliminated;
        for (int i = 1; i <= size; ++i) {
            if (i == p)
                continue;
            const f64 factor = m(i, p) / m(p, p);
            for (int j = 1; j <= size; ++j)
                if (j != p)
                    m(i, j) -= factor * m(p, j);
        }
        for (int i = 1; i <= size; ++i)
            if (i != p)
                m(i, p) = m(p, i) = 0;
    }
    return eliminated;
}

} // namespace

CrossoverDesign::CrossoverDesign(const Array2<f32>& design, i16 treatments, bool carryover)
    : treatments_(treatments), information_(1, treatments, 1, treatments) {
    const i16 nuisances = static_cast<i16>(carryover ? treatments + 1 : 1);
    Array2<f64> x = DesignMatrix(design, treatments, nuisances);
    for (int column = 1; column <= x.HighBound2(); ++column)
        TakeOutMeans(x, column, design.HighBound1(), design.HighBound2());
    Array2<f64> transposed;
    Array2<f64> products;
    MatTranspose(x, transposed);
    MatMultMat(transposed, x, products);
    Eliminate(products, nuisances);
    for (i16 i = 1; i <= treatments; ++i)
        for (i16 j = 1; j <= treatments; ++j)
            information_(i, j) = products(nuisances + i, nuisances + j);
}

// The corner of the matrix that is bordered by the weights c: what is left of 0 is -c'C^- c.
std::optional<f64> CrossoverDesign::VarianceOf(const std::vector<f64>& weights) const {
    const int border = treatments_ + 1;
    Array2<f64> m(1, border, 1, border);
    for (int i = 1; i <= treatments_; ++i) {
        for (int j = 1; j <= treatments_; ++j)
            m(i, j) = information_(i, j);
        m(i, border) = m(border, i) = weights[static_cast<std::size_t>(i - 1)];
    }
    Eliminate(m, treatments_);
    // What the weights of compared treatments add up to is left beside those that were passed over.
    for (int i = 1; i <= treatments_; ++i)
        if (std::abs(m(i, border)) > 2 * SumTolerance)
            return std::nullopt;
    return -m(border, border);
}

std::optional<f64> CrossoverDesign::DistanceOf(const std::vector<f64>& effects) const {
    Array2<f64> swept = information_;
    if (Eliminate(swept, treatments_) < treatments_ - 1)
        return std::nullopt;
    f64 sum = 0;
    for (int i = 1; i <= treatments_; ++i)
        for (int j = 1; j <= treatments_; ++j)
            sum += effects[static_cast<std::size_t>(i - 1)] * information_(i, j) *
                   effects[static_cast<std::size_t>(j - 1)];
    return MaxOf(0, sum);
}

} // namespace quorvanta
