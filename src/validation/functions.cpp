#include "validation/functions.h"

#include "core/general.h"
#include "numeric/gamma0.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rounding.h"
#include "validation/number.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quorvanta::validation {

namespace {

f64 TakeLast(ReferenceRow& row) {
    if (row.Arguments.empty())
        throw std::runtime_error("not a reference value: " + row.Function);
    const f64 last = row.Arguments.back();
    row.Arguments.pop_back();
    return last;
}

ReferenceRow ReadReferenceRow(const std::string& line, bool hasTolerance) {
    std::istringstream cells(line);
    ReferenceRow row;
    std::getline(cells, row.Function, ',');
    std::string cell;
    while (std::getline(cells, cell, ','))
        row.Arguments.push_back(ParseNumber(cell));
    if (hasTolerance)
        row.Tolerance = TakeLast(row);
    row.Value = TakeLast(row);
    return row;
}

} // namespace

std::vector<ReferenceSection> ReadReferenceTable(std::istream& file) {
    std::vector<ReferenceSection> sections;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line.front() == '#')
            continue;
        if (line.front() == '[') {
            const std::size_t first = line.find("; ");
            const std::size_t second = line.find("; ", first + 2);
            sections.push_back({line.substr(1, first - 1),
                                line.substr(first + 2, second - first - 2),
                                line.substr(second + 2, line.size() - second - 3),
                                {}});
            continue;
        }
        if (sections.empty())
            sections.emplace_back();
        const bool hasTolerance = !sections.back().Function.empty();
        sections.back().Rows.push_back(ReadReferenceRow(line, hasTolerance));
    }
    return sections;
}

std::vector<ReferenceSection> ReadReferenceTable(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("can't read " + path);
    return ReadReferenceTable(file);
}

const std::map<std::string, ReferenceFunction>& ReferenceFunctions() {
    using Args = std::vector<f64>;
    static const auto one = [](f32 (*f)(f32)) {
        return [f](const Args& a) { return f64{f(Single(a.at(0)))}; };
    };
    static const auto two = [](f32 (*f)(f32, f32)) {
        return [f](const Args& a) { return f64{f(Single(a.at(0)), Single(a.at(1)))}; };
    };
    static const auto three = [](f32 (*f)(f32, f32, f32)) {
        return [f](const Args& a) {
            return f64{f(Single(a.at(0)), Single(a.at(1)), Single(a.at(2)))};
        };
    };
    static const std::map<std::string, ReferenceFunction> functions = {
        {"NorCdf", one(NorCdf)},
        {"NorDensity", one(NorDensity)},
        {"NorInv", one(NorInv)},
        {"NorTail1",
         [](const Args& a) {
             f32 z = Single(a.at(0));
             f32 p = 0;
             NorTail(1, z, p);
             return f64{p};
         }},
        {"NorTail2",
         [](const Args& a) {
             f32 p = Single(a.at(0));
             f32 z = 0;
             NorTail(2, z, p);
             return f64{z};
         }},
        {"LogGammaStar", one(LogGammaStar)},
        {"Factorial", [](const Args& a) { return Factorial(ToI16(a.at(0))); }},
        {"GammaFn", [](const Args& a) { return GammaFn(a.at(0)); }},
        {"BetaInc",
         [](const Args& a) {
             f32 x = Single(a.at(0));
             return f64{BetaInc(x, Single(a.at(1)), Single(a.at(2)))};
         }},
        {"TCdf", two(TCdf)},
        {"TInv", two(TInv)},
        {"NcTCdf", three(NcTCdf)},
        {"Chi2Tail1",
         [](const Args& a) {
             f32 chi2 = Single(a.at(1));
             f32 p = 0;
             Chi2Tail(1, Single(a.at(0)), chi2, p);
             return f64{p};
         }},
        {"Chi2Tail2",
         [](const Args& a) {
             f32 p = Single(a.at(1));
             f32 chi2 = 0;
             Chi2Tail(2, Single(a.at(0)), chi2, p);
             return f64{chi2};
         }},
        {"Chi2Cdf", two(Chi2Cdf)},
        {"Chi2Inv", two(Chi2Inv)},
        {"NcChi2Cdf", three(NcChi2Cdf)},
        {"FTail1",
         [](const Args& a) {
             f32 f = Single(a.at(2));
             f32 p = 0;
             FTail(1, Single(a.at(0)), Single(a.at(1)), f, p);
             return f64{p};
         }},
        {"FTail2",
         [](const Args& a) {
             f32 p = Single(a.at(2));
             f32 f = 0;
             FTail(2, Single(a.at(0)), Single(a.at(1)), f, p);
             return f64{f};
         }},
        {"FCdf", three(FCdf)},
        {"FInv",
         [](const Args& a) {
             f32 df1 = Single(a.at(1));
             f32 df2 = Single(a.at(2));
             return f64{FInv(Single(a.at(0)), df1, df2)};
         }},
        {"NcFCdf",
         [](const Args& a) {
             f32 lambda = Single(a.at(3));
             return f64{NcFCdf(Single(a.at(0)), Single(a.at(1)), Single(a.at(2)), lambda)};
         }},
        {"BinDensity",
         [](const Args& a) {
             return f64{BinDensity(Single(a.at(0)), ToI16(a.at(1)), Single(a.at(2)))};
         }},
        {"BinCdf",
         [](const Args& a) {
             return f64{BinCdf(Single(a.at(0)), ToI16(a.at(1)), Single(a.at(2)))};
         }},
        {"BinInv", three(BinInv)},
        {"HyperDensity",
         [](const Args& a) {
             return HyperDensity(ToI16(a.at(0)), ToI16(a.at(1)), ToI16(a.at(2)), Single(a.at(3)));
         }},
        {"HyperCdf",
         [](const Args& a) {
             return f64{HyperCdf(ToI16(a.at(0)), ToI16(a.at(1)), ToI16(a.at(2)), Single(a.at(3)))};
         }},
        {"PoissonDensity",
         [](const Args& a) { return f64{PoissonDensity(ToI16(a.at(0)), Single(a.at(1)))}; }},
        {"PoissonCdf", two(PoissonCdf)},
        {"PoissonInv", two(PoissonInv)},
        {"KolSmiCdf", two(KolSmiCdf)},
        {"KolSmiDiscreteCdf",
         [](const Args& a) {
             Array1<f32> probs(1, static_cast<int>(a.size()) - 3);
             for (int i = 1; i <= probs.HighBound(); ++i)
                 probs(i) = Single(a.at(static_cast<std::size_t>(i) + 2));
             return f64{KolSmiDiscreteCdf(Single(a.at(0)), Single(a.at(1)), probs, ToI16(a.at(2)))};
         }},
        {"KolSmiInv",
         [](const Args& a) { return f64{KolSmiInv(Single(a.at(0)), Single(a.at(1)), 0)}; }},
        {"KolSmiTwoCdf",
         [](const Args& a) {
             return f64{
                 KolSmiTwoCdf(ToI16(a.at(0)), ToI16(a.at(1)), Single(a.at(2)), ToI16(a.at(3)))};
         }},
        {"ExpCdf", one(ExpCdf)},
        {"ExpDensity", one(ExpDensity)},
        {"ExpInv", one(ExpInv)},
        {"UniformInv", one(UniformInv)},
        {"LaplaceCdf", one(LaplaceCdf)},
        {"LaplaceDensity", one(LaplaceDensity)},
        {"LaplaceInv", one(LaplaceInv)},
        {"CauchyCdf", one(CauchyCdf)},
        {"CauchyDensity", one(CauchyDensity)},
        {"CauchyInv", one(CauchyInv)},
        {"LogisticCdf", one(LogisticCdf)},
        {"LogisticDensity", one(LogisticDensity)},
        {"LogisticInv", one(LogisticInv)},
        {"ExtremeCdf", one(ExtremeCdf)},
        {"ExtremeDensity", one(ExtremeDensity)},
        {"ExtremeInv", one(ExtremeInv)},
        {"WeibullCdf", three(WeibullCdf)},
        {"WeibullDensity", three(WeibullDensity)},
        {"WeibullInv", three(WeibullInv)},
        {"LognormCdf", three(LognormCdf)},
        {"LognormDensity", three(LognormDensity)},
        {"LognormInv", three(LognormInv)},
        {"GammaCdf", three(GammaCdf)},
        {"GammaDensity", three(GammaDensity)},
    };
    return functions;
}

} // namespace quorvanta::validation
