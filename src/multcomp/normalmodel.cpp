#include "multcomp/normalmodel.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "multcomp/procedures.h"
#include "tests/repeatedeq.h"

namespace quorvanta {

namespace {

constexpr i16 covarianceStore = 4;

} // namespace

void NormalModel::Offer() {
    OfferGroups({Group::CorrelationMatrix});
}

i16 NormalModel::CovKind() {
    return ChosenOption(Group::CorrelationMatrix);
}

void NormalModel::Add() {
    sd_ = 0;
    correlation_ = 0;
    if (CovKind() == EnteredCovariance)
        return;
    sd_ = AddPar(Kind::Sd);
    correlation_ = AddPar(Kind::Correlation);
}

bool NormalModel::Check(i16 dimension) const {
    return CovKind() != EqualCorrelation ||
           CheckRange(correlation_,
                      MaxOf(ParMin(Kind::Correlation), SmallestCorrelation(ParValue(dimension))),
                      ParMax(Kind::Correlation));
}

std::vector<Grid> NormalModel::Grids(i16 d, const std::string& heads) {
    if (CovKind() != EnteredCovariance)
        return {};
    return {{.Store = covarianceStore,
             .Rows = d,
             .Columns = d,
             .Title = "Covariance Matrix",
             .RowHeads = heads,
             .ColumnHeads = heads,
             .Check = CovarianceMatrix(),
             .Symmetric = true}};
}

std::optional<Array2<f64>> NormalModel::Covariance(i16 d) const {
    if (CovKind() != EnteredCovariance)
        return McCovariance(CovKind(), d, ParValue(sd_), ParValue(correlation_));
    if (HasGridData == False || !IsFilled(Grids(d, "").front()))
        return std::nullopt;
    Array2<f64> covariance(1, d, 1, d);
    for (i16 i = 1; i <= d; ++i)
        for (i16 j = 1; j <= d; ++j)
            covariance(i, j) = GridFigure(covarianceStore, i, j);
    return covariance;
}

} // namespace quorvanta
