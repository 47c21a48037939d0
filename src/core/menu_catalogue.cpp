// The menu tree, and what each of its entries stands for.
#include "core/analysis_state.h"
#include "core/catalogue.h" // IWYU pragma: associated
#include "core/general.h"

#include <algorithm>

namespace quorvanta {

namespace {

// A row of the menus as they are read from top to bottom: what a submenu holds follows its row, one
// level deeper.
struct MenuRow {
    i16 Depth;
    MenuItem Item;
};

constexpr MenuRow Row(i16 depth, std::string_view name, i16 index, std::string_view caption,
                      MenuAction action) {
    return {depth, {name, index, caption, action, NoNumber, {}, NoNumber, 0}};
}

constexpr MenuRow Head(std::string_view name, std::string_view caption, i16 helpNo = 0) {
    MenuRow row = Row(0, name, NoIndex, caption, MenuAction::Submenu);
    row.Item.HelpNo = helpNo;
    return row;
}

constexpr MenuRow Menu(i16 depth, std::string_view name, i16 index, std::string_view caption) {
    return Row(depth, name, index, caption, MenuAction::Submenu);
}

constexpr MenuRow Test(i16 depth, std::string_view name, i16 index, std::string_view caption,
                       i16 menuNo, i16 testNo) {
    MenuRow row = Row(depth, name, index, caption, MenuAction::Test);
    row.Item.MenuNo = menuNo;
    row.Item.TestNo = testNo;
    return row;
}

// A distribution is numbered by its index.
constexpr MenuRow Distribution(std::string_view name, i16 index, std::string_view caption) {
    MenuRow row = Row(1, name, index, caption, MenuAction::Distribution);
    row.Item.MenuNo = index;
    return row;
}

constexpr MenuRow Command(MenuAction action, std::string_view name, i16 index,
                          std::string_view caption) {
    return Row(1, name, index, caption, action);
}

constexpr MenuRow Gap(i16 depth, std::string_view name, i16 index) {
    return Row(depth, name, index, "", MenuAction::Separator);
}

// Two separators have a test number: it can be asked for by menu number, but not chosen.
constexpr MenuRow Gap(i16 depth, std::string_view name, i16 index, i16 testNo) {
    MenuRow row = Gap(depth, name, index);
    row.Item.MenuNo = index;
    row.Item.TestNo = testNo;
    return row;
}

constexpr auto File = MenuAction::File;
constexpr auto GetInfo = MenuAction::GetInfo;
constexpr auto Help = MenuAction::Help;
constexpr auto Output = MenuAction::Output;

// clang-format off
constexpr MenuRow MainRows[] = {
    Head("mnuFileHead", "  &File ", 100),
        Command(File, "mnuFile", 0, "New &Calculation"),
        Command(File, "mnuFile", 1, "New &Table"),
        Command(File, "mnuFile", 2, "New &Graph"),
        Command(File, "mnuFile", 3, "New &Monte Carlo Simulation"),
        Gap(1, "mnuFile", 4),
        Command(File, "mnuFile", 5, "&Open Analysis"),
        Gap(1, "mnuFile", 6),
        Command(File, "mnuFile", 7, "Save &Analysis"),
        Gap(1, "mnuFile", 8),
        Command(File, "mnuFile", 9, "&Print Output"),
        Command(File, "mnuFile", 10, "Cop&y Output"),
        Command(File, "mnuFile", 11, "&Save Output"),
        Gap(1, "mnuFile", 12),
        Command(File, "mnuFile", 13, "E&xit"),

    // The last two columns of a test: menu number, test number.
    Head("mnuTestProc", "&Parametric Tests"),
        Menu(1, "mnuTest", 0, "&Student's t-test"),
            Test(2, "mnuStudent", 0, "&Unpaired", 0, 0),
            Test(2, "mnuStudent", 1, "&Paired", 1, 1),
        Menu(1, "mnuTest", 10, "&ANOVA"),
            Test(2, "mnuANOVA", 0, "&One-way, fixed effects", 10, 2),
            Test(2, "mnuANOVA", 1, "&Two-way, fixed effects", 11, 3),
            Test(2, "mnuANOVA", 2, "T&hree-way, fixed effects, additive", 12, 4),
            Gap(2, "mnuANOVA", 3),
            Test(2, "mnuANOVA", 4, "&Single Latin Square", 14, 6),
            Test(2, "mnuANOVA", 5, "&Replicated Latin Squares", 15, 7),
            Test(2, "mnuANOVA", 6, "R&eplicated Latin Squares, block factor", 16, 8),
            Gap(2, "mnuANOVA", 7),
            Test(2, "mnuANOVA", 8, "Randomized &Blocks, one factor", 18, 10),
            Test(2, "mnuANOVA", 9, "Randomized Blocks, two &factors", 19, 11),
        Menu(1, "mnuTest", 20, "A&NOVA Repeated Measures"),
            Test(2, "mnuANOVAREP", 0, "&One within factor", 20, 12),
            Test(2, "mnuANOVAREP", 1, "One &within, one between factor", 21, 13),
        Menu(1, "mnuTest", 30, "MANOVA &Hotelling's T2"),
            Test(2, "mnuMANOVA", 0, "&One group", 30, 14),
            Test(2, "mnuMANOVA", 1, "&Two groups", 31, 15),
        Menu(1, "mnuTest", 40, "MANOVA Repeated Meas&ures"),
            Test(2, "mnuMANOVAREP", 0, "&One within factor", 40, 16),
            Test(2, "mnuMANOVAREP", 1, "One &within, one between factor", 41, 17),
        Test(1, "mnuTest", 50, "AN&COVA", 50, 130),
        Gap(1, "mnuTest", 60, 19),
        Test(1, "mnuTest", 70, "&McNemar test", 70, 20),
        Test(1, "mnuTest", 80, "Pair&ed Proportions test", 80, 120),
        Test(1, "mnuTest", 90, "Stuart-Ma&xwell test", 90, 105),
        Test(1, "mnuTest", 100, "&Fisher's Exact test", 100, 19),
        Menu(1, "mnuTest", 110, "Chi-s&quare test "),
            Test(2, "mnuChi2", 0, "1 x C table, &Goodness Of Fit", 110, 25),
            Test(2, "mnuChi2", 1, "2 x 2 table, Two &Proportions", 111, 21),
            Test(2, "mnuChi2", 2, "R x C table, &Homogeneity", 112, 22),
            Test(2, "mnuChi2", 3, "R x C table, &Independence", 113, 110),
        Test(1, "mnuTest", 120, "Mantel-Haens&zel test", 120, 23),
        Test(1, "mnuTest", 130, "&Cochran-Armitage Trend test", 130, 24),
        Gap(1, "mnuTest", 140),
        Menu(1, "mnuTest", 150, "&Exponential Survival (MLE)"),
            Test(2, "mnuExpML", 0, "Hazard Difference test (&Lachin - Foulkes)", 150, 203),
            Test(2, "mnuExpML", 1, "Hazard Ratio test (&George - Desu)", 151, 204),
            Test(2, "mnuExpML", 2, "Hazard Ratio test (&Rubenstein et. al.)", 152, 205),
        Gap(1, "mnuTest", 160),
        Menu(1, "mnuTest", 170, "L&inear Regression"),
            Test(2, "mnuLinReg", 0, "&Simple", 170, 54),
            Test(2, "mnuLinReg", 1, "&Multiple", 171, 55),
        Menu(1, "mnuTest", 180, "Logis&tic Regression"),
            Test(2, "mnuLogReg", 0, "&Continuous covariate", 180, 56),
            Test(2, "mnuLogReg", 1, "&Binary covariate", 181, 57),
        Menu(1, "mnuTest", 190, "&Poisson Regression"),
            Test(2, "mnuPoissReg", 0, "&Continuous covariate", 190, 58),
            Test(2, "mnuPoissReg", 1, "&Binary covariate", 191, 59),
        Gap(1, "mnuTest", 200),
        Test(1, "mnuTest", 210, "Pearson's Co&rrelation test", 210, 61),
        Gap(1, "mnuTest", 220, 60),
        Menu(1, "mnuTest", 230, "T&wo-way Crossover Design"),
            Test(2, "mnuTwoXO", 0, "&Additive Model", 230, 69),
            Test(2, "mnuTwoXO", 1, "&Muliplicative Model", 231, 70),
        Menu(1, "mnuTest", 240, "General Crossover &Design"),
            Test(2, "mnuGenXO", 0, "&Additive Model", 240, 71),
            Test(2, "mnuGenXO", 1, "&Multiplicative Model", 241, 72),
        Gap(1, "mnuTest", 250),
        Menu(1, "mnuTest", 260, "&Goodness of Fit test"),
            Menu(2, "mnuGoF", 0, "&Chi-square test"),
                Test(3, "mnuGoFChi2", 0, "&Discrete Distribution", 260, 106),
                Test(3, "mnuGoFChi2", 1, "&Continuous Distribution", 261, 107),
            Test(2, "mnuGoF", 1, "&Kolmogorov-Smirnov test", 263, 109),

    Head("mnuNonParProc", "&Non-Parametric Tests"),
        Menu(1, "mnuNonParTest", 300, "&Wilcoxon-Mann-Whitney test"),
            Test(2, "mnuMW", 0, "&Continuous outcome", 300, 41),
            Test(2, "mnuMW", 1, "&Ordered categories", 301, 42),
        Menu(1, "mnuNonParTest", 310, "&Nonparametric Location test"),
            Test(2, "mnuNonParLoc", 0, "&Normal Scores test", 310, 43),
            Test(2, "mnuNonParLoc", 1, "&Kruskal-Wallis test", 311, 44),
            Test(2, "mnuNonParLoc", 2, "&Jonckheere-Terpstra test", 312, 112),
        Test(1, "mnuNonParTest", 320, "&Friedman's test", 320, 377),
        Menu(1, "mnuNonParTest", 330, "N&onparametric Scale test"),
            Test(2, "mnuNonParScale", 0, "&Siegel-Tukey test", 330, 45),
            Test(2, "mnuNonParScale", 1, "&Ansari-Bradley test", 331, 46),
            Test(2, "mnuNonParScale", 2, "&Klotz test", 332, 47),
            Test(2, "mnuNonParScale", 3, "&Mood test", 333, 48),
            Test(2, "mnuNonParScale", 4, "&Conover test", 334, 49),
        Test(1, "mnuNonParTest", 340, "&Kolmogorov-Smirnov two-sample test", 340, 111),
        Test(1, "mnuNonParTest", 350, "S&avage test", 350, 50),
        Test(1, "mnuNonParTest", 360, "Wilcoxon Sign&ed-rank test", 360, 51),
        Test(1, "mnuNonParTest", 370, "Sign &test", 370, 52),
        Gap(1, "mnuNonParTest", 380),
        Menu(1, "mnuNonParTest", 390, "&Life Table test (Mantel-Haenszel)"),
            Test(2, "mnuLifeTable", 0, "&Exponential distribution", 390, 26),
            Test(2, "mnuLifeTable", 1, "&Weibull distribution", 391, 27),
            Test(2, "mnuLifeTable", 2, "&Gamma distribution", 392, 28),
            Test(2, "mnuLifeTable", 3, "&Lognormal distribution", 393, 29),
            Test(2, "mnuLifeTable", 4, "&Piecewise Exponential distribution", 394, 30),
        Menu(1, "mnuNonParTest", 400, "&Log-rank test"),
            Menu(2, "mnuLogRankApproach", 0, "&Non-Parametric Approach"),
                Test(3, "mnuLogRankPropHaz", 0, "Proportional Hazards (&Schoenfeld)", 400, 200),
                Test(3, "mnuLogRankPropHaz", 1, "Proportional Hazards (&Freedman)", 401, 36),
            Menu(2, "mnuLogRankApproach", 1, "&Parametric Approach"),
                Test(3, "mnuLogRankExp", 0, "Hazard approach (&Lachin - Foulkes)", 402, 31),
                Test(3, "mnuLogRankExp", 1, "LOG(Hazard) approach (&George - Desu)", 403, 202),
                Test(3, "mnuLogRankExp", 2, "LOG(Hazard) approach (&Rubenstein et. al.)", 404, 37),
            Menu(2, "mnuLogRankApproach", 2, "&Monte Carlo Simulation"),
                Test(3, "mnuLogRankMonte", 0, "&Exponential distribution", 405, 331),
                Test(3, "mnuLogRankMonte", 1, "&Weibull distribution", 406, 32),
                Test(3, "mnuLogRankMonte", 2, "&Gamma distribution", 407, 33),
                Test(3, "mnuLogRankMonte", 3, "&Lognormal distribution", 408, 34),
                Test(3, "mnuLogRankMonte", 4, "&Piecewise Exponential distribution", 409, 35),
        Test(1, "mnuNonParTest", 410, "Non-&inferiority Log-rank test", 410, 201),
        Menu(1, "mnuNonParTest", 420, "&Stratified Log-rank test"),
            Test(2, "mnuLogRankStrat", 0, "&Non-Parametric Approach", 420, 179),
            Menu(2, "mnuLogRankStrat", 1, "&Parametric Approach"),
                Test(3, "mnuLogRankExpStrat", 0, "Hazard approach (&Lachin - Foulkes)", 421, 180),
                Test(3, "mnuLogRankExpStrat", 1, "LOG(Hazard) approach (&George - Desu)", 422, 181),
                Test(3, "mnuLogRankExpStrat", 2, "LOG(Hazard) approach (&Rubenstein et. al.)", 423, 182),
            Test(2, "mnuLogRankStrat", 2, "&Monte Carlo Simulation", 424, 183),
        Menu(1, "mnuNonParTest", 430, "&Gehan-Wilcoxon test"),
            Test(2, "mnuGeWilc", 0, "&Exponential distribution", 430, 85),
            Test(2, "mnuGeWilc", 1, "&Weibull distribution", 431, 86),
            Test(2, "mnuGeWilc", 2, "&Gamma distribution", 432, 87),
            Test(2, "mnuGeWilc", 3, "&Lognormal distribution", 433, 88),
            Test(2, "mnuGeWilc", 4, "&Piecewise Exponential distribution", 434, 89),
        Menu(1, "mnuNonParTest", 440, "Cox-&Mantel test"),
            Test(2, "mnuCoxMant", 0, "&Exponential distribution", 440, 90),
            Test(2, "mnuCoxMant", 1, "&Weibull distribution", 441, 91),
            Test(2, "mnuCoxMant", 2, "&Gamma distribution", 442, 92),
            Test(2, "mnuCoxMant", 3, "&Lognormal distribution", 443, 93),
            Test(2, "mnuCoxMant", 4, "&Piecewise Exponential distribution", 444, 94),
        Menu(1, "mnuNonParTest", 450, "&Cox F-test"),
            Test(2, "mnuCoxF", 0, "&Exponential distribution", 450, 95),
            Test(2, "mnuCoxF", 1, "&Weibull distribution", 451, 96),
            Test(2, "mnuCoxF", 2, "&Gamma distribution", 452, 97),
            Test(2, "mnuCoxF", 3, "&Lognormal distribution", 453, 98),
            Test(2, "mnuCoxF", 4, "&Piecewise Exponential distribution", 454, 99),
        Menu(1, "mnuNonParTest", 460, "&Peto and Peto's Generalised Wilcoxon test"),
            Test(2, "mnuPetoPeto", 0, "&Exponential distribution", 460, 100),
            Test(2, "mnuPetoPeto", 1, "&Weibull distribution", 461, 101),
            Test(2, "mnuPetoPeto", 2, "&Gamma distribution", 462, 102),
            Test(2, "mnuPetoPeto", 3, "&Lognormal distribution", 463, 103),
            Test(2, "mnuPetoPeto", 4, "&Piecewise Exponential distribution", 464, 104),
        Menu(1, "mnuNonParTest", 470, "Co&x Regression"),
            Test(2, "mnuCoxRegr", 0, "&Continuous covariate", 470, 38),
            Test(2, "mnuCoxRegr", 1, "&Binary covariate", 471, 39),
        Gap(1, "mnuNonParTest", 480),
        Menu(1, "mnuNonParTest", 490, "Rank Co&rrelation test"),
            Test(2, "mnuCorrel", 0, "&Spearman's Rank Correlation rho", 490, 62),
            Test(2, "mnuCorrel", 1, "&Kendall's Rank Correlation tau", 491, 63),
        Gap(1, "mnuNonParTest", 500),
        Menu(1, "mnuNonParTest", 510, "Reliabilit&y test"),
            Test(2, "mnuReliab", 0, "&Intraclass Correlation Coefficient", 510, 64),
            Test(2, "mnuReliab", 1, "&Cronbach's Alpha", 511, 65),
            Test(2, "mnuReliab", 2, "Intraclass &Kappa", 512, 66),
            Menu(2, "mnuReliab", 3, "Co&hen's Kappa"),
                Test(3, "mnuCohen", 0, "&Dichotomous Rating", 513, 118),
                Test(3, "mnuCohen", 1, "&General Rating", 514, 119),
            Test(2, "mnuReliab", 4, "&Lin's Concordance Coefficient", 515, 67),

    Head("mnuGroupSeqProc", "&Group Sequential Tests"),
        Menu(1, "mnuGroupSeqTest", 600, "&Normal Distribution Means"),
            Test(2, "mnuGrpSeqNorm", 0, "&Design", 600, 124),
            Test(2, "mnuGrpSeqNorm", 1, "&Conditional Power", 601, 400),
            Test(2, "mnuGrpSeqNorm", 2, "&Predictive Power", 602, 401),
        Gap(1, "mnuGroupSeqTest", 610),
        Menu(1, "mnuGroupSeqTest", 620, "&Test of Proportions"),
            Test(2, "mnuGrpSeqProp", 0, "&Design", 620, 126),
            Test(2, "mnuGrpSeqProp", 1, "&Conditional Power", 621, 402),
            Test(2, "mnuGrpSeqProp", 2, "&Predictive Power", 622, 403),
        Menu(1, "mnuGroupSeqTest", 630, "&Logrank test"),
            Test(2, "mnuGrpSeqSurv", 0, "&Design", 630, 127),
            Test(2, "mnuGrpSeqSurv", 1, "&Conditional Power", 631, 404),
            Test(2, "mnuGrpSeqSurv", 2, "&Predictive Power", 632, 405),

    Head("mnuMultCompProc", "&Multiple Comparisons"),
        Menu(1, "mnuMultCompTest", 700, "&ANOVA"),
            Test(2, "mnuANOVAMultTest", 0, "&Comparison With a Control", 700, 138),
            Test(2, "mnuANOVAMultTest", 1, "&All-Pairwise Comparisons", 701, 139),
            Test(2, "mnuANOVAMultTest", 2, "&Test of Each Mean", 702, 140),
            Test(2, "mnuANOVAMultTest", 3, "&Linear Combinations of the Means", 703, 141),
        Menu(1, "mnuMultCompTest", 710, "&Multivariate Normal Distribution"),
            Test(2, "mnuMultNormTest", 0, "&Comparison With a Control", 710, 142),
            Test(2, "mnuMultNormTest", 1, "&All-Pairwise Comparisons", 711, 143),
            Test(2, "mnuMultNormTest", 2, "&Test of Each Mean", 712, 144),
            Test(2, "mnuMultNormTest", 3, "&Linear Combinations of the Means", 713, 145),
        Gap(1, "mnuMultCompTest", 720),
        Menu(1, "mnuMultCompTest", 730, "ANOVA, &Confidence Intervals"),
            Test(2, "mnuANOVACI", 0, "&Comparison With a Control", 730, 135),
            Test(2, "mnuANOVACI", 1, "&All-Pairwise Comparisons", 731, 136),
            Test(2, "mnuANOVACI", 2, "Comparison With the &Best", 732, 137),

    Head("mnuEqivNIProc", "&Equivalence/Non-inferiority"),
        Menu(1, "mnuEquivNICI", 800, "&Equivalence, Confidence Interval"),
            Test(2, "mnuEquivCI", 0, "&Difference of Means. t-distribution", 800, 74),
            Test(2, "mnuEquivCI", 1, "&Ratio of Medians. Lognormal distribution", 801, 75),
            Test(2, "mnuEquivCI", 2, "Difference of Proportions. &Binomial distribution", 802, 76),
            Test(2, "mnuEquivCI", 3, "Difference of &Paired Proportions", 803, 121),
            Test(2, "mnuEquivCI", 4, "Comparison of &Survival, Exponential distribution", 804, 77),
        Menu(1, "mnuEquivNICI", 810, "&Bioequivalence, Two-way Crossover Design"),
            Test(2, "mnuBioEquiv", 0, "&Test approach", 810, 78),
            Test(2, "mnuBioEquiv", 1, "&Confidence interval approach", 811, 79),
        Gap(1, "mnuEquivNICI", 820),
        Menu(1, "mnuEquivNICI", 830, "&Non-inferiority, Confidence Interval"),
            Test(2, "mnuNonInf", 0, "&Difference of Means. t-distribution", 830, 81),
            Test(2, "mnuNonInf", 1, "&Ratio of Medians. Lognormal distribution", 831, 82),
            Test(2, "mnuNonInf", 2, "Difference of Proportions. &Binomial distribution", 832, 83),
            Test(2, "mnuNonInf", 3, "Difference of &Paired Proportions.", 833, 122),
            Test(2, "mnuNonInf", 4, "Comparison of &Survival, Exponential distribution", 834, 84),

    Head("mnuParProc", "&Distribution Parameters", 800),
        Distribution("mnuPar", 0, "&Normal Distribution"),
        Distribution("mnuPar", 1, "&Lognormal Distribution"),
        Distribution("mnuPar", 2, "&Exponential Distribution"),
        Gap(1, "mnuPar", 3),
        Distribution("mnuPar", 4, "&Binomial Distribution"),
        Distribution("mnuPar", 5, "&Hypergeometric Distribution"),
        Distribution("mnuPar", 6, "&Poisson Distribution"),
        Gap(1, "mnuPar", 7),
        Distribution("mnuPar", 8, "&Finite Population"),
        Gap(1, "mnuPar", 9),
        Distribution("mnuPar", 10, "Bi&variate Normal Distribution"),

    Head("mnuGetInfoHead", "&Current Analysis"),
        Command(GetInfo, "mnuGetInfo", 0, "&Description"),
        Command(GetInfo, "mnuGetInfo", 1, "&Parameters"),
        Command(GetInfo, "mnuGetInfo", 2, "&Example"),
        Command(GetInfo, "mnuGetInfo", 3, "&Summary Statement"),
        Command(GetInfo, "mnuGetInfo", 4, "Distribution &Graph"),

    Head("mnuHelpHead", "&Help"),
        Command(Help, "mnuHelp", 0, "&Contents"),
        Command(Help, "mnuHelp", 1, "&Search for Help on..."),
        Gap(1, "mnuHelp", 2),
        Command(Help, "mnuHelp", 3, "&About..."),
};

constexpr MenuRow OutputRows[] = {
    Head("mnuOutput", "Output"),
        Command(Output, "mnuOutputOption", 1, "&Save Analysis"),
        Gap(1, "mnuOutputOption", 2),
        Command(Output, "mnuOutputOption", 3, "&Print Output"),
        Command(Output, "mnuOutputOption", 4, "&Copy Output"),
        Command(Output, "mnuOutputOption", 5, "S&ave Output"),
};
// clang-format on

// The rows as a tree: level after level, so that the entries of one menu stand side by side.
template <std::size_t Count>
class MenuTree {
  public:
    explicit constexpr MenuTree(const MenuRow (&rows)[Count]) {
        std::size_t place[Count] = {};
        std::size_t placed = 0;
        for (i16 depth = 0; placed < Count; ++depth) {
            for (std::size_t row = 0; row < Count; ++row)
                if (rows[row].Depth == depth) {
                    items_[placed] = rows[row].Item;
                    place[row] = placed++;
                }
            if (depth == 0)
                heads_ = placed;
        }
        for (std::size_t row = 0; row + 1 < Count; ++row)
            if (rows[row].Item.Action == MenuAction::Submenu)
                items_[place[row]].Children = {items_ + place[row + 1], ChildCount(rows, row)};
    }

    constexpr std::span<const MenuItem> Heads() const { return {items_, heads_}; }

  private:
    static constexpr std::size_t ChildCount(const MenuRow (&rows)[Count], std::size_t parent) {
        std::size_t children = 0;
        for (std::size_t row = parent + 1; row < Count && rows[row].Depth > rows[parent].Depth;
             ++row)
            if (rows[row].Depth == rows[parent].Depth + 1)
                ++children;
        return children;
    }

    MenuItem items_[Count] = {};
    std::size_t heads_ = 0;
};

constexpr MenuTree MainTree(MainRows);
constexpr MenuTree OutputTree(OutputRows);

// The row of a menu number; the table's end for a number that none has.
const MenuRow* FindTest(i16 menuNo) {
    return std::ranges::find_if(MainRows, [menuNo](const MenuRow& row) {
        return row.Item.TestNo != NoNumber && row.Item.MenuNo == menuNo;
    });
}

} // namespace

std::span<const MenuItem> MainMenu() {
    return MainTree.Heads();
}

const MenuItem& OutputMenu() {
    return OutputTree.Heads().front();
}

i16 TestNoOfMenu(i16 menuNo) {
    const MenuRow* row = FindTest(menuNo);
    return row == std::end(MainRows) ? i16{0} : row->Item.TestNo;
}

i16 MenuToTestNo(i16 menuNo) {
    if (menuNo == 600 || menuNo == 620 || menuNo == 630)
        IsGroupSeq = True;
    if ((menuNo >= 700 && menuNo <= 703) || (menuNo >= 710 && menuNo <= 713) ||
        (menuNo >= 730 && menuNo <= 732))
        IsMultComp = True;
    return TestNoOfMenu(menuNo);
}

std::string TestMenuName(i16 menuNo) {
    const MenuRow* row = FindTest(menuNo);
    if (row == std::end(MainRows))
        return {};
    std::string path(row->Item.Caption);
    for (i16 depth = row->Depth; depth > 1; --row)
        if (row->Depth < depth) {
            path = std::string(row->Item.Caption) + ", " + path;
            depth = row->Depth;
        }
    return StripAmpersand(path);
}

std::string DistrMenuName(i16 distrNo) {
    const auto* row = std::ranges::find_if(MainRows, [distrNo](const MenuRow& candidate) {
        return candidate.Item.Action == MenuAction::Distribution &&
               candidate.Item.MenuNo == distrNo;
    });
    return row == std::end(MainRows) ? std::string() : StripAmpersand(row->Item.Caption);
}

} // namespace quorvanta
