// The choices that a test may offer: check boxes, and quantities that can be entered in several
// forms.
#include "core/analysis_state.h"
#include "core/catalogue.h" // IWYU pragma: associated

namespace quorvanta {

namespace {

struct CheckRow {
    i16 Kind;
    std::string_view Caption;
};

// A group without a caption shows a frame without one; a form without a caption is not shown.
struct GroupRow {
    i16 Kind;
    std::string_view Caption;
    std::string_view Options[3];
};

// clang-format off
constexpr CheckRow CheckRows[] = {
    { 0, "&Degrees Of Freedom"},
    { 1, "&Continuity Correction"},
    { 2, "Arc Si&ne Transformation"},
    { 3, "I&ncidence"},
    { 4, "&Number of Events"},
    { 5, "&No Of Groups In ANOVA"},
    { 6, "&Wilcoxon-Mann-Whitney test"},
    { 7, "&Exact Calculation"},
    { 8, "&Ordered Categories"},
    { 9, "&Odds"},
    {10, "Analyse &Contrast"},
    {11, "Additive &Effects"},
    {12, "&Medians"},
    {13, "&Random Squares"},
    {14, "Analyse Linear &Combination"},
    {15, "&Squares As Factor Levels"},
    {16, "&Uneq.Std.Dev.Satterthwaite"},
    {17, "&Carryover Effect"},
    {18, "&Location Shift"},
    {19, "&Scale and Location"},
    {20, "&Dependent Samples"},
    {21, "&Wilcoxon Signed-Rank test"},
    {22, "&Use Covariance Matrix"},
    {23, "&Odds Ratio"},
    {24, "&First Order Approach"},
    {25, "&Second Order Approach"},
    {26, "&Multinomial Approach"},
    {27, "&Score Test"},
    {28, "&User Defined Accrual"},
    {29, "&Random True H0"},
    {30, "&Unrestricted ML"},
    {31, "&Serial GateKeeping"},
    {32, "&Test of Interaction"},
    {33, "&Hazard Ratio"},
    {34, "&Parallel GateKeeping"},
    {35, "&Total Sample Size"},
    {36, "T&wo-sided Conf. Interval"},
    {37, "&Overdispersion"},
    {38, "&Fixed Interim Times"},
    {39, "&Use Var(H1) under H0"},
};

constexpr GroupRow GroupRows[] = {
    { 0, "",                     {"H1:Mean", "H1:Mean-H0:Mean", "H1:Mean/H0:Mean"}},
    { 1, "H1:",                  {"Mean 2", "Mean 2 - Mean 1", "Mean 2 / Mean 1"}},
    { 2, "",                     {"Sample Size 2", "Size 2 - Size 1", "Size 2 / Size 1"}},
    { 3, "",                     {"H1:Std.Deviation", "H1:StD.- H0:StD.", "H1:StD./ H0:StD."}},
    { 4, "",                     {"H1:Hazard Rate", "H1:Haz.- H0:Haz.", "H1:Haz./ H0:Haz."}},
    { 5, "H1:",                  {"Hazard Rate 2", "Hazard2 - Hazard1", "Hazard2 / Hazard1"}},
    { 6, "",                     {"H1:Incidence", "H1:Inc.- H0:Inc.", "H1:Inc./ H0:Inc."}},
    { 7, "H1:",                  {"Incidence 2", "Incide.2 - Incide.1", "Incide.2 / Incide.1"}},
    { 8, "",                     {"Loss Rate 2", "Loss 2 - Loss 1", "Loss 2 / Loss 1"}},
    { 9, "",                     {"H1:Median", "H1:Med.- H0:Med.", "H1:Med./ H0:Med."}},
    {10, "H1:",                  {"Median 2", "Median2/Median1"}},
    {11, "",                     {"H1:Proportion", "H1:Prop.- H0:Prop.", "H1:Prop./ H0:Prop"}},
    {12, "H1:",                  {"Proportion 2", "Prop.2 - Prop.1", "Prop.2 / Prop.1"}},
    {13, "H1:",                  {"Std.Deviation 2", "StdDev2/StdDev1"}},
    {14, "",                     {"H1:Location", "H1:Loc.- H0:Loc.", "H1:Loc./ H0:Loc."}},
    {15, "",                     {"H1:Scale", "H1:Scal.- H0:Scal.", "H1:Scal./ H0:Scal."}},
    {16, "H1:",                  {"Scale 2", "Scale 2 / Scale 1"}},
    {17, "H1: Effect Size",      {"Std.Dev of Means", "Any Mean Differ.", "Min Mean Differ."}},
    {18, "",                     {"Sample Size k", "Size k - Size 1", "Size k / Size 1"}},
    {19, "",                     {"Std. Deviation", "Coeff.of Variation"}},
    {20, "H1:",                  {"Proportion 11", "Prop.10 + Prop.01", "Prop.10 / Prop.01"}},
    {21, "",                     {"H1:Mean of Diff.", "H1:Mean-H0:Mean", "H1:Mean/H0:Mean"}},
    {22, "",                     {"Study Time 2", "Time 2 - Time 1", "Time 2 / Time 1"}},
    {23, "",                     {"H1:Correl. Coeff.", "H1:Corr.-H0:Corr.", "H1:Corr./H0:Corr."}},
    {24, "H1:",                  {"Corr. Coeff.2", "Corr.2 - Corr.1", "Corr.2 / Corr.1"}},
    {25, "",                     {"Population Size 2", "Popul.2 - Popul.1", "Popul.2 / Popul.1"}},
    {26, "H1:",                  {"Diff. Aver.Prop.", "Equal Aver.Prop."}},
    {27, "",                     {"H1:Regress.Coeff.", "H1:Regr.-H0:Regr.", "H1:Regr./H0:Regr."}},
    {28, "H1:",                  {"Regr. Coeff.2", "Regr.2 - Regr.1", "Regr.2 / Regr.1"}},
    {29, "",                     {"Std.Deviation 2", "StdDev2-StdDev1", "StdDev2/StdDev1"}},
    {30, "",                     {"Loss Incidence 2", "Loss 2 - Loss 1", "Loss 2 / Loss 1"}},
    {31, "",                     {"Shape 2", "Shape2-Shape1", "Shape2/Shape1"}},
    {32, "H1:",                  {"P(Event at m+SD)", "Odds Ratio"}},
    {33, "",                     {"H1:Intra.Corr.", "H1:Intra-H0:Intra", "H1:Intra/H0:Intra"}},
    {34, "",                     {"H1:Odds", "H1:Odds-H0:Odds", "H1:Odds/H0:Odds"}},
    {35, "H1:",                  {"Odds 2", "Odds 2 - Odds 1", "Odds 2 / Odds 1"}},
    {36, "H0:",                  {"Main Effect A", "Main Effect B", "Interaction AxB"}},
    {37, "H1: Effect Size",      {"Std.Dev of Prop.", "Any p(i,j) - p(k,j)", "Min p(i,j) - p(k,j)"}},
    {38, "H0:",                  {"Main Effect A", "Main Effect B", "Main Effect C"}},
    {39, "Correlation Matrix",   {"Comp.Symmetry", "Auto Correlation", "General Matrix"}},
    {40, "H1:",                  {"Rate at m+SD", "Rate Ratio"}},
    {41, "H1:",                  {"Proportion 1", "Proportion 2", "Proportion"}},
    {42, "H1:",                  {"Median 1", "Median 2"}},
    {43, "H0:",                  {"Between Factor A", "Within Factor B", "Interaction AxB"}},
    {44, "Cronbach's alpha",     {"H1:Alpha", "H1:Alpha-H0:Alpha", "H1:Alpha/H0:Alpha"}},
    {45, "H1:Cronbach's alpha",  {"Alpha 2", "Alpha 2 - Alpha 1", "Alpha 2 / Alpha 1"}},
    {46, "No Of Items",          {"Items 2", "Items 2 - Items 1", "Items 2 / Items 1"}},
    {47, "Parameterization",     {"Treat+Per+Carry", "Treat+Per+Trt * Per", "Seq+Treat+Per"}},
    {48, "",                     {"H1:Kappa", "H1:Kapp-H0:Kapp", "H1:Kapp/H0:Kapp"}},
    {49, "Concordance Coeff.",   {"H1:Coefficient", "H1:Coef-H0:Coeff", "H1:Coef/H0:Coeff"}},
    {50, "Location Shift",       {"H1:Location Shift", "H1:Loc.-H0:Loc.", "H1:Loc./H0:Loc."}},
    {51, "Scale Shift",          {"H1:Scale Shift", "H1:Scal-H0:Scale", "H1:Scal/H0:Scale"}},
    {52, "H1:",                  {"Rank Correlation", "Pr (Concordance)"}},
    {53, "",                     {"Sample Seq. 2", "Seq. 2 - Seq. 1", "Seq. 2 / Seq. 1"}},
    {54, "Power definitions",    {"Disjunctive Power", "Conjunctive Power", "Average Power"}},
    {55, "",                     {"Sample Size", "Number of Events", "Time at Risk"}},
    {56, "Slope Projection",     {"Design", "Trend", "Null"}},
    {57, "H1:",                  {"Regress. Coeff.", "Hazard Ratio"}},
    {58, "Rate Distribution",    {"Constant", "Gamma Distributed"}},
};
// clang-format on

} // namespace

void SetAllChecks() {
    for (const CheckRow& row : CheckRows)
        CheckLabel(row.Kind) = row.Caption;
    CheckValue.Fill(0);
}

void SetAllIntPar() {
    for (const GroupRow& row : GroupRows) {
        IntParCaption(row.Kind) = row.Caption;
        for (int option = 0; option <= 2; ++option)
            IntParOption(option, row.Kind) = row.Options[option];
    }
    IntParValue.Fill(0);
}

} // namespace quorvanta
