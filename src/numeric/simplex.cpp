#include "numeric/simplex.h"

#include <cmath>
#include <cstddef>

namespace quorvanta {

namespace {

constexpr f64 Nothing = 1e-9;

// A row for each condition: the coefficients of all variables, those of the artificial ones last,
// and the right-hand side. Each row has one variable in the basis.
class Tableau {
  public:
    explicit Tableau(const LinearConditions& conditions)
        : variables_(conditions.A.empty() ? 0 : conditions.A.front().size()) {
        const std::size_t rows = conditions.A.size();
        for (std::size_t i = 0; i < rows; ++i) {
            std::vector<f64> row = conditions.A[i];
            row.resize(variables_ + rows, 0.0);
            row[variables_ + i] = 1;
            row.push_back(conditions.B[i]);
            rows_.push_back(row);
            basis_.push_back(variables_ + i);
        }
    }

    // Raises the sum of the weights until no variable, of the first so many, raises it further.
    void Maximise(const std::vector<f64>& weights, std::size_t columns) {
        for (std::size_t column = Entering(weights, columns); column < columns;
             column = Entering(weights, columns)) {
            const std::size_t row = Leaving(column);
            if (row == rows_.size())
                return; // without bound
            Pivot(row, column);
        }
    }

    f64 Sum(const std::vector<f64>& weights) const {
        f64 sum = 0;
        for (std::size_t i = 0; i < rows_.size(); ++i)
            sum += weights[basis_[i]] * rows_[i].back();
        return sum;
    }

    // Exchanges artificial variables, all 0 now, for others; a row that has none says nothing.
    void DropArtificial() {
        for (std::size_t i = rows_.size(); i-- > 0;) {
            std::size_t column = 0;
            while (basis_[i] >= variables_ && column < variables_ &&
                   std::fabs(rows_[i][column]) <= Nothing)
                ++column;
            if (basis_[i] < variables_)
                continue;
            if (column < variables_) {
                Pivot(i, column);
            } else {
                rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(i));
                basis_.erase(basis_.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
    }

  private:
    // The first variable that raises the sum.
    std::size_t Entering(const std::vector<f64>& weights, std::size_t columns) const {
        for (std::size_t j = 0; j < columns; ++j) {
            f64 gain = weights[j];
            for (std::size_t i = 0; i < rows_.size(); ++i)
                gain -= weights[basis_[i]] * rows_[i][j];
            if (gain > Nothing)
                return j;
        }
        return columns;
    }

    // The row whose variable is the first to become 0; of equals that with the first variable.
    std::size_t Leaving(std::size_t column) const {
        std::size_t best = rows_.size();
        f64 least = 0;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (rows_[i][column] <= Nothing)
                continue;
            const f64 ratio = rows_[i].back() / rows_[i][column];
            if (best == rows_.size() || ratio < least ||
                (ratio == least && basis_[i] < basis_[best])) {
                best = i;
                least = ratio;
            }
        }
        return best;
    }

    void Pivot(std::size_t row, std::size_t column) {
        const f64 pivot = rows_[row][column];
        for (f64& x : rows_[row])
            x /= pivot;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const f64 factor = rows_[i][column];
            if (i == row || factor == 0)
                continue;
            for (std::size_t j = 0; j < rows_[i].size(); ++j)
                rows_[i][j] -= factor * rows_[row][j];
        }
        basis_[row] = column;
    }

    std::size_t variables_;
    std::vector<std::vector<f64>> rows_;
    std::vector<std::size_t> basis_;
};

} // namespace

std::optional<f64> LargestSum(const std::vector<f64>& weights, const LinearConditions& conditions) {
    Tableau tableau(conditions);
    const std::size_t variables = weights.size();
    const std::size_t all = variables + conditions.A.size();
    std::vector<f64> artificial(all, -1.0);
    for (std::size_t j = 0; j < variables; ++j)
        artificial[j] = 0;
    tableau.Maximise(artificial, all);
    if (tableau.Sum(artificial) < -Nothing)
        return std::nullopt;
    tableau.DropArtificial();
    tableau.Maximise(weights, variables);
    return tableau.Sum(weights);
}

} // namespace quorvanta
