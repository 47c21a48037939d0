#include "output/statement_labels.h"

#include "core/general.h"

#include <algorithm>
#include <string>

namespace quorvanta {

namespace {

struct LabelPart {
    Says What;
    std::string_view Part;
};

constexpr LabelPart LabelParts[] = {
    {Says::ConfidenceLevel, "Confidence"},
    {Says::Relative, "Relative"},
    {Says::Limit, "Limit"},
    {Says::Inferiority, "Inferior"},
    {Says::NoOfCoefficients, "No (p)"},
    {Says::Difference, "-"},
    {Says::DifferenceOfTwo, " - "},
    {Says::Ratio, "/"},
    {Says::Ratio, "^"},
    {Says::Ratio, " Ratio"},
    {Says::Comparison, "-"},
    {Says::Comparison, "/"},
    {Says::Place, " at "},
    {Says::Sum, " + "},
    {Says::Brackets, "("},
    {Says::Mean, "Mean"},
    {Says::Contrast, "c1"},
    {Says::Distance, "Mahalanobi"},
    {Says::Proportion, "Proportion"},
    {Says::Trend, "Trend"},
    {Says::Concordance, "Conc"},
    {Says::OrderOfSamples, "Sample2 >"},
    {Says::OrderInSample, "Sample >"},
};

} // namespace

bool LabelSays(std::string_view label, Says what) {
    const std::string text = StripAmpersand(label);
    return std::ranges::any_of(LabelParts, [&text, what](const LabelPart& row) {
        return row.What == what && text.find(row.Part) != std::string::npos;
    });
}

} // namespace quorvanta
