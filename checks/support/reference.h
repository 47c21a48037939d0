// Tables of reference values, and the distribution functions by the names that they have there.
#pragma once

#include "core/types.h"
#include "numeric/gamma0.h"
#include "numeric/probdist.h"

#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvanta {

// One line of a table: function, arguments, value.
struct ReferenceRow {
    std::string Function;
    std::vector<f64> Arguments;
    f64 Value = 0;
};

// The rows of a file of comma-separated values; lines that begin with "#" are comments.
inline std::vector<ReferenceRow> ReadReferenceTable(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("can't read " + path);
    std::vector<ReferenceRow> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line.front() == '#')
            continue;
        std::istringstream cells(line);
        ReferenceRow row;
        std::getline(cells, row.Function, ',');
        std::string cell;
        while (std::getline(cells, cell, ','))
            row.Arguments.push_back(std::stod(cell));
        row.Value = row.Arguments.back();
        row.Arguments.pop_back();
        rows.push_back(row);
    }
    return rows;
}

using ReferenceFunction = std::function<f64(const std::vector<f64>&)>;

// The functions by name. Each takes the arguments of a row, rounded to its own widths.
inline const std::map<std::string, ReferenceFunction>& ReferenceFunctions() {
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

} // namespace quorvanta
