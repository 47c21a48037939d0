// What each kind of parameter is called, starts with, and may be.
#include "core/analysis_state.h"
#include "core/catalogue.h" // IWYU pragma: associated
#include "core/number_text.h"
#include "output/format.h"

#include <algorithm>
#include <iterator>

namespace quorvanta {

namespace {

// Roles of a kind, which can have several.
enum Role : unsigned {
    NoRole = 0,
    Count = 1,      // a whole number
    Population = 2, // one of which more mean less power
    Layout = 4,     // of a design
    Grid = 8,       // derived from a grid while grid data exist
    Power = 16      // a probability that the equation yields directly
};

// The limits are 32-bit floats: a typed 0.99999 is above none of them.
struct KindRow {
    i16 Kind;
    std::string_view Label;
    std::string_view Start;
    std::string_view Xmin;
    std::string_view Xmax;
    std::string_view Xstep;
    f32 Min;
    f32 Max;
    unsigned Roles = NoRole;
    SizeRole Size = SizeRole::None;
    Form SizeForm = AsValue; // how a second size is entered beside its first
};

// A ratio of sizes beside a total (320, 99, 347) has no first size to relate to.
//
// Several kinds share a label and differ in scale: there are twelve left equivalence limits. Kind
// 349 is not defined.
//
// Some rows look like slips and are not: the x range of kind 27 has more steps than a table takes,
// so the user must narrow it; those of 13, 45, 84, 118 to 121 (losses, which start at none), 64,
// 268 and 289 leave the start value out.
//
// clang-format off
constexpr KindRow KindRows[] = {
    // kind, label, start value, x minimum, x maximum, x step, least value, largest value, roles
    {  0, "S&ignificance Level",                    "0.05",  "0.001", "0.10",  "0.01",  0.00001F, 0.99999F},
    {  1, "&Power",                                 "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {  2, "&Standard Deviation",                    "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {  3, "&Standard Deviation of Difference",      "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {  4, "Sample Size &1",                         "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::First},
    {  5, "Sample Size &2 / Sample Size 1",         "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999, NoRole, SizeRole::Second, AsRatio},
    {  6, "H0: &Left Equivalence Limit",            "-0.40", "-0.50", "-0.30", "0.02",    -99999,    99999},
    {  7, "H0: &Right Equivalence Limit",           "0.40",  "0.30",  "0.50",  "0.02",    -99999,    99999},
    {  8, "H1: Pr&oportion 1",                      "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {  9, "H1: &Hazard Rate 1",                     "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    { 10, "A&ccrual Time",                          "2",     "1",     "3",     "0.5",          0,    99999},
    { 11, "&Total Study Time",                      "5",     "3",     "7",     "1",     0.00001F,    99999},
    { 12, "Time Interval &Length",                  "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    { 13, "&Loss Rate 1",                           "0",     "0.30",  "0.70",  "0.05",         0,    99999},
    { 14, "Sample Si&ze",                           "30",    "10",    "50",    "2",            4,    99999, Count, SizeRole::Single},
    { 15, "H1: Proportio&n 10 + Proportion 01",     "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 16, "D&iff. of Diagonal Probabilities",       "0.20",  "0.10",  "0.30",  "0.02", -0.99999F, 0.99999F},
    { 17, "&No of Groups",                          "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    { 18, "A&bsolute Error",                        "0.10",  "0.05",  "0.15",  "0.01",  0.00001F,    99999},
    { 19, "&Upper Absolute Error",                  "0.10",  "0.05",  "0.15",  "0.01",  0.00001F,    99999},
    { 20, "H1: Pro&b (Event at Mean)",              "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    { 21, "H1: Prob (&Event at Mean+StdDev)",       "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    { 22, "Confidence &Level",                      "0.95",  "0.90",  "0.99",  "0.01",  0.00001F, 0.99999F},
    { 23, "&Relative Error",                        "0.10",  "0.05",  "0.15",  "0.01",  0.00001F, 0.99999F},
    { 24, "&Upper Relative Error",                  "0.10",  "0.05",  "0.15",  "0.01",  0.00001F, 0.99999F},
    { 25, "Mult. &Corr. of X1 with X2 to Xp",       "0",     "0",     "0.5",   "0.01",         0, 0.99999F},
    { 26, "H1: &Scale 1",                           "0.20",  "0.10",  "0.30",  "0.02",  0.00001F,    99999},
    { 27, "&Shape (Std. Dev. on elog Scale)",       "0.30",  "0.20",  "50",    "0.02",  0.00001F,    99999},
    { 28, "H0: Intraclass &Correlation",            "0.30",  "0.20",  "0.40",  "0.02",         0, 0.99999F},
    { 29, "H0: &Left Equivalence Limit",            "0.80",  "0.70",  "0.90",  "0.02",  0.00001F,    99999},
    { 30, "H0: &Right Equivalence Limit",           "1.25",  "1.10",  "1.40",  "0.02",  0.00001F,    99999},
    { 31, "Pop&ulation Size",                       "500",   "100",   "1000",  "100",          3,    99999, Count | Population},
    { 32, "H1: Intraclass C&orrelation",            "0.50",  "0.40",  "0.60",  "0.02",         0, 0.99999F},
    { 33, "Acc&rual Rate",                          "0",     "-2",    "2",     "0.5",        -99,       99},
    { 34, "H1: Standard Deviation of &Means",       "0.10",  "0.05",  "0.15",  "0.01",         0,    99999, Grid},
    { 35, "H&0: Proportion",                        "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    { 36, "Degrees of &Freedom",                    "10",    "5",     "20",    "1",            2,    99999},
    { 37, "Sample Size &2",                         "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::Second},
    { 38, "Sample Size &2 - Sample Size 1",         "0",     "-50",   "50",    "5",       -99999,    99999, Count, SizeRole::Second, AsDifference},
    { 39, "Sample Size &1",                         "30",    "10",    "50",    "2",            4,    99999, Count, SizeRole::First},
    { 40, "H1:Pr&oportion  -  H0:Proportion",       "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    { 41, "H1:Pr&oportion / H0:Proportion",         "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 42, "Sample Size &2",                         "30",    "10",    "50",    "2",            4,    99999, Count, SizeRole::Second},
    { 43, "H1:&Hazard Rate - H0:Hazard Rate",       "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 44, "H1:&Hazard Rate / H0:Hazard Rate",       "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 45, "L&oss Rate 2",                           "0",     "0.30",  "0.70",  "0.05",         0,    99999},
    { 46, "L&oss Rate 2 - Loss Rate 1",             "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    { 47, "H0: &Left Equivalence Limit",            "0.30",  "0.10",  "0.50",  "0.05",  0.00001F, 0.99999F},
    { 48, "H0: &Right Equivalence Limit",           "0.70",  "0.50",  "0.90",  "0.05",  0.00001F, 0.99999F},
    { 49, "L&oss Rate 2 / Loss Rate 1",             "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999},
    { 50, "&Shape 1 (Std.Dev. on elog Scale)",      "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    { 51, "H&0: Proportion 2 - Proportion 1",       "0",     "-0.20", "0.20",  "0.05", -0.99999F, 0.99999F},
    { 52, "H1: Propor&tion 2 - Proportion 1",       "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    { 53, "H1: I&ncidence 1",                       "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 54, "S&hape 2 (Std.Dev. on elog Scale)",      "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    { 55, "H1:I&ncidence - H0:Incidence",           "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    { 56, "H1:I&ncidence / H0:Incidence",           "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 57, "H&0: Mean",                              "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    { 58, "H1: &Mean",                              "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 59, "H1:&Mean  -  H0:Mean",                   "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 60, "H1:&Mean  /  H0:Mean",                   "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    { 61, "H&0: Mean 2 - Mean 1",                   "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    { 62, "H1: M&ean 2 - Mean 1",                   "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 63, "H&0: Hazard Rate",                       "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    { 64, "H&0:Hazard Rate 2 - Hazard Rate 1",      "-0.3",  "-0.20", "0.20",  "0.05",    -99999,    99999},
    { 65, "H1:H&azard Rate 2 - Hazard Rate 1",      "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 66, "H&0: Incidence",                         "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    { 67, "H&0: Incidence 2 - Incidence 1",         "0",     "-0.20", "0.20",  "0.05", -0.99999F, 0.99999F},
    { 68, "H1: Inci&dence 2 - Incidence 1",         "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    { 69, "H1: Propor&tion 2",                      "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 70, "H1: Propor&tion 2 / Proportion 1",       "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 71, "H0: &Left Equivalence Limit",            "-0.30", "-0.50", "-0.10", "0.05", -0.99999F, 0.99999F},
    { 72, "H0: &Right Equivalence Limit",           "0.30",  "0.10",  "0.50",  "0.05", -0.99999F, 0.99999F},
    { 73, "H1: H&azard Rate 2",                     "0.70",  "0.50",  "0.90",  "0.02",  0.00001F,    99999},
    { 74, "H1:H&azard Rate 2 / Hazard Rate 1",      "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 75, "H0: &Left Equivalence Limit",            "0.30",  "0.10",  "0.50",  "0.05",  0.00001F,    99999},
    { 76, "H0: &Right Equivalence Limit",           "0.70",  "0.50",  "0.90",  "0.05",  0.00001F,    99999},
    { 77, "H0: &Left Equivalence Limit",            "-0.30", "-0.50", "-0.10", "0.05",    -99999,    99999},
    { 78, "H0: &Right Equivalence Limit",           "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 79, "H1: Inci&dence 2",                       "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 80, "H1:Inci&dence 2 / Incidence 1",          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 81, "H1: &Hazard Rate",                       "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    { 82, "H1: I&ncidence",                         "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 83, "H1: Pr&oportion",                        "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    { 84, "&Loss Rate",                             "0",     "0.30",  "0.70",  "0.05",         0,    99999},
    { 85, "Sample Si&ze",                           "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::Single},
    { 86, "H1: &Mean 1",                            "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 87, "H1: M&ean 2",                            "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 88, "H1: M&ean 2 / Mean 1",                   "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    { 89, "H&0: Median",                            "1",     "0.50",  "1.50",  "0.05",  0.00001F,    99999},
    { 90, "H1: &Median",                            "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 91, "H1:&Median  -  H0:Median",               "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    { 92, "H1:&Median  /  H0:Median",               "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 93, "H&0: Median 2 / Median 1",               "1",     "0.50",  "1.50",  "0.05",  0.00001F,    99999},
    { 94, "H1: &Median 1",                          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 95, "H1: M&edian 2",                          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 96, "H1: &Median 2 / Median 1",               "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    { 97, "H0: &Left Equivalence Limit",            "0.80",  "0.70",  "0.90",  "0.02",  0.00001F,    99999},
    { 98, "H0: &Right Equivalence Limit",           "1.25",  "1.10",  "1.40",  "0.02",  0.00001F,    99999},
    { 99, "Tot&al No of Events",                    "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::Single},
    {100, "&Width of Interval (w)",                 "1.0",   "0.8",   "1.2",   "0.05",  0.00001F,    99999},
    {101, "&Prob ( Width of Interval < w )",        "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {102, "Pr&oportion",                            "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    {103, "Pr&oportion 1",                          "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {104, "Propor&tion 2",                          "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {105, "Propor&tion 2 - Proportion 1",           "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {106, "Propor&tion 2 / Proportion 1",           "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {107, "S&hape 2 - Shape 1",                     "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {108, "S&hape 2 / Shape 1",                     "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {109, "H1:Intra. C&orr. - H0:Intra. Corr.",     "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {110, "H&0: Standard Deviation",                "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {111, "H1: &Standard Deviation",                "1.2",   "1",     "1.4",   "0.1",   0.00001F,    99999},
    {112, "H1: &Std.Dev. -  H0: Std.Dev.",          "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {113, "H1: &Std.Dev. / H0: Std.Dev.",           "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {114, "H&0: Std.Dev.2 / Std.Dev.1",             "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {115, "H1: Std.&Dev.2 / Std.Dev.1",             "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {116, "H0: &Left Equivalence Limit",            "0.80",  "0.70",  "0.90",  "0.02",  0.00001F,    99999},
    {117, "H0: &Right Equivalence Limit",           "1.25",  "1.10",  "1.40",  "0.02",  0.00001F,    99999},
    {118, "&Loss Incidence",                        "0",     "0.10",  "0.20",  "0.01",         0, 0.99999F},
    {119, "&Loss Incidence 1",                      "0",     "0.10",  "0.20",  "0.01",         0, 0.99999F},
    {120, "L&oss Incidence 2",                      "0",     "0.10",  "0.20",  "0.01",         0, 0.99999F},
    {121, "L&oss Incide.2 - Loss Incide.1",         "0",     "0.10",  "0.20",  "0.01",         0, 0.99999F},
    {122, "L&oss Incide.2 / Loss Incide.1",         "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999},
    {123, "H1: Proportio&n 11",                     "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    {124, "H1: &Scale",                             "1.2",   "1",     "1.4",   "0.1",   0.00001F,    99999},
    {125, "H1: &Scale -  H0: Scale",                "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {126, "H1: &Scale / H0: Scale",                 "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {127, "H&0: Scale 2 / Scale 1",                 "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {128, "H1: &Scale 2 / Scale 1",                 "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {129, "H0: &Left Equivalence Limit",            "0.80",  "0.70",  "0.90",  "0.02",  0.00001F,    99999},
    {130, "H0: &Right Equivalence Limit",           "1.25",  "1.10",  "1.40",  "0.02",  0.00001F,    99999},
    {131, "H&0: Location",                          "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {132, "H1: L&ocation",                          "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {133, "H1:L&ocation  -  H0:Location",           "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {134, "H1:L&ocation  /  H0:Location",           "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {135, "H0: &Left Equivalence Limit",            "-0.30", "-0.50", "-0.10", "0.05",    -99999,    99999},
    {136, "H0: &Right Equivalence Limit",           "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {137, "&Std.Dev. of c1X1+...+ckXk",             "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999, Grid},
    {138, "&True Std.Dev.2 / Std.Dev.1",            "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {139, "H1: &Standard Deviation 1",              "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {140, "H1: Standard &Deviation 2",              "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {141, "H1: S&cale 2",                           "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {142, "H&0: Scale",                             "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {143, "Error &Level",                           "0.05",  "0.001", "0.10",  "0.01",  0.00001F, 0.99999F},
    {144, "H1:Intra. C&orr. / H0:Intra. Corr.",     "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {145, "Relative &Width of Interval (w)",        "0.5",   "0.3",   "0.7",   "0.05",  0.00001F,    99999},
    {146, "&Scale",                                 "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {147, "H1: &Any (Mean i - Mean j)",             "0.10",  "0.05",  "0.15",  "0.01",         0,    99999},
    {148, "H1: &Min (Mean i - Mean j)",             "0.10",  "0.05",  "0.15",  "0.01",         0,    99999},
    {149, "Sample Size &k",                         "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::EachOther},
    {150, "Sample Size &k - Sample Size 1",         "0",     "-50",   "50",    "5",       -99999,    99999, Count, SizeRole::EachOther, AsDifference},
    {151, "Sample Size &k / Sample Size 1",         "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999, NoRole, SizeRole::EachOther, AsRatio},
    {152, "H1: P&rob (Sample2 > Sample1)",          "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Grid},
    {153, "H1: P&rob (Sample > 0)",                 "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Grid},
    {154, "H1: Pr&ob (Sample + Sample' > 0)",       "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Grid},
    {155, "Residual &Std.Dev.(elog Scale)",         "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {156, "&Coefficient of Variation",              "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {157, "H&0: Mean of Difference",                "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {158, "H1: &Mean of Difference",                "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {159, "H1:&Mean of Diff.- H0:Mean of Diff.",    "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {160, "H1:&Mean of Diff./ H0:Mean of Diff.",    "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {161, "H&0: Mean",                              "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {162, "H1: &Mean",                              "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {163, "Sample Si&ze",                           "30",    "10",    "50",    "2",            1,    99999, Count, SizeRole::Single},
    {164, "Sample Size &1",                         "30",    "10",    "50",    "2",            1,    99999, Count, SizeRole::First},
    {165, "Sample Size &2",                         "30",    "10",    "50",    "2",            1,    99999, Count, SizeRole::Second},
    {166, "H0: &Left Equivalence Limit",            "0.30",  "0.10",  "0.50",  "0.05",  0.00001F,    99999},
    {167, "H0: &Right Equivalence Limit",           "0.70",  "0.50",  "0.90",  "0.05",  0.00001F,    99999},
    {168, "H1: &Mean 1",                            "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {169, "H1: M&ean 2",                            "0.70",  "0.50",  "0.90",  "0.02",  0.00001F,    99999},
    {170, "&Study Time",                            "5",     "3",     "7",     "1",     0.00001F,    99999, NoRole, SizeRole::Exposure},
    {171, "&Study Time 1",                          "5",     "3",     "7",     "1",     0.00001F,    99999, NoRole, SizeRole::FirstExposure},
    {172, "Study &Time 2",                          "5",     "3",     "7",     "1",     0.00001F,    99999, NoRole, SizeRole::SecondExposure},
    {173, "Study &Time 2 - Study Time 1",           "0",     "-50",   "50",    "5",       -99999,    99999, NoRole, SizeRole::SecondExposure, AsDifference},
    {174, "Study &Time 2 / Study Time 1",           "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999, NoRole, SizeRole::SecondExposure, AsRatio},
    {175, "&Mean",                                  "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {176, "&Mean 1",                                "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {177, "M&ean 2",                                "0.70",  "0.50",  "0.90",  "0.02",  0.00001F,    99999},
    {178, "M&ean 2 - Mean 1",                       "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {179, "M&ean 2 / Mean 1",                       "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {180, "&Hazard Rate",                           "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {181, "&Hazard Rate 1",                         "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {182, "H&azard Rate 2",                         "0.70",  "0.50",  "0.90",  "0.02",  0.00001F,    99999},
    {183, "H&azard Rate 2 - Hazard Rate 1",         "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {184, "H&azard Rate 2 / Hazard Rate 1",         "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {185, "H&0: Correlation Coefficient",           "0.30",  "0.20",  "0.40",  "0.02", -0.99999F, 0.99999F},
    {186, "H1: &Correlation Coefficient",           "0.50",  "0.40",  "0.60",  "0.02", -0.99999F, 0.99999F},
    {187, "H1: &Corr.Coeff. - H0: Corr.Coeff.",     "0.30",  "0.20",  "0.40",  "0.05", -1.99999F, 1.99999F},
    {188, "H1: &Corr.Coeff. / H0: Corr.Coeff.",     "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {189, "H&0: Corr.Coeff.2 - Corr.Coeff.1",       "0",     "-0.20", "0.20",  "0.05", -1.99999F, 1.99999F},
    {190, "H1: &Correlation Coefficient 1",         "0.30",  "0.20",  "0.40",  "0.02", -0.99999F, 0.99999F},
    {191, "H1: C&orrelation Coefficient 2",         "0.50",  "0.40",  "0.60",  "0.02", -0.99999F, 0.99999F},
    {192, "H1: C&orr.Coeff.2 - Corr.Coeff.1",       "0.30",  "0.20",  "0.40",  "0.05", -1.99999F, 1.99999F},
    {193, "H1:  C&orr.Coeff.2 / Corr.Coeff.1",      "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {194, "H0: &Left Equivalence Limit",            "0.30",  "0.10",  "0.50",  "0.05", -1.99999F, 1.99999F},
    {195, "H0: &Right Equivalence Limit",           "0.70",  "0.50",  "0.90",  "0.05", -1.99999F, 1.99999F},
    {196, "Pop&ulation Size 1",                     "500",   "100",   "1000",  "100",          3,    99999, Count | Population},
    {197, "Population Si&ze 2",                     "500",   "100",   "1000",  "100",          3,    99999, Count | Population},
    {198, "Popul. Si&ze 2 - Popul. Size 1",         "0",     "-50",   "50",    "5",       -99999,    99999, Count | Population},
    {199, "Popul. Si&ze 2 / Popul. Size 1",         "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999},
    {200, "H1: &Odds Ratio",                        "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {201, "Number of &Categories",                  "5",     "3",     "7",     "1",            2,       10, Count},
    {202, "&Sum of Average Proportions^3",          "0.10",  "0.05",  "0.20",  "0.01",  0.00001F, 0.99999F, Grid},
    {203, "H&0: Regression Coefficient",            "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {204, "H1: R&egression Coefficient",            "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {205, "H1: R&egr.Coeff. - H0: Regr.Coeff.",     "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {206, "H1: R&egr.Coeff. / H0: Regr.Coeff.",     "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {207, "H&0: Regr.Coeff.2 - Regr.Coeff.1",       "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {208, "H1: R&egression Coefficient 1",          "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {209, "H1: Re&gression Coefficient 2",          "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {210, "H1: Re&gr.Coeff.2 - Regr.Coeff.1",       "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {211, "H1: Re&gr.Coeff.2 / Regr.Coeff.1",       "1.30",  "1.10",  "1.50",  "0.05",    -99999,    99999},
    {212, "Resid&ual Standard Deviation",           "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {213, "&Std.Deviation for Covariate",           "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {214, "&Std.Deviation for Covariate 1",         "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {215, "Std.&Deviation for Covariate 2",         "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {216, "&Std.Deviation 1",                       "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {217, "Std.&Deviation 2",                       "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999},
    {218, "Std.&Dev. 2 - Std.Dev. 1",               "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {219, "Std.&Dev. 2 / Std.Dev. 1",               "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {220, "&Correlation Coefficient",               "0.30",  "0.20",  "0.40",  "0.02", -0.99999F, 0.99999F},
    {221, "Std.&Dev.Cov.2 - Std.Dev.Cov.1",         "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {222, "Std.&Dev.Cov.2 / Std.Dev.Cov.1",         "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {223, "Number of &Raters",                      "20",    "10",    "30",    "1",            2,    99999, Count},
    {224, "Number of &Subjects",                    "30",    "10",    "50",    "2",            2,    99999, Count, SizeRole::Single},
    {225, "H0: &Odds",                              "1",     "0.50",  "1.50",  "0.05",  0.00001F,    99999},
    {226, "H1: O&dds",                              "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {227, "H1: O&dds - H0: Odds",                   "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {228, "H1: O&dds / H0: Odds",                   "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {229, "H1: &Odds 1",                            "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {230, "H1: O&dds 2",                            "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {231, "H1: O&dds 2 - Odds 1",                   "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {232, "H1: O&dds 2 / Odds 1",                   "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {233, "&Odds",                                  "1",     "0.50",  "1.50",  "0.05",  0.00001F,    99999},
    {234, "&Odds 1",                                "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {235, "O&dds 2",                                "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {236, "O&dds 2 - Odds 1",                       "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {237, "O&dds 2 / Odds 1",                       "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {238, "&No of A-factor Levels",                 "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {239, "No &of B-factor Levels",                 "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {240, "H1: &Std.Dev. of Proportions",           "0.30",  "0.20",  "0.40",  "0.02",         0, 0.99999F, Grid},
    {241, "H1:&Any Prop.(i,j) - Prop.(k,j)",        "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    {242, "H1:&Min Prop.(i,j) - Prop.(k,j), any j", "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    {243, "&No of C-factor Levels",                 "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {244, "Si&ze of Latin Square",                  "5",     "3",     "7",     "1",            3,       10, Count | Layout},
    {245, "Number of Latin S&quares",               "4",     "2",     "10",    "1",            2,      999, Count | Layout},
    {246, "Number of &Blocks",                      "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {247, "H1: &Mean of c1X1+...+ckXk",             "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {248, "Sample Si&ze",                           "30",    "10",    "50",    "2",            2,    99999, Count, SizeRole::Single},
    {249, "&Greenhouse-Geisser Epsilon",            "0.50",  "0.40",  "0.60",  "0.02",  0.00001F,        1, Grid},
    {250, "H1: &Non-centrality Parameter",          "0.30",  "0.20",  "0.40",  "0.02",         0,    99999, Grid},
    {251, "&Within Error Term",                     "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999, Grid},
    {252, "Epsilon &Bias Factor g1",                "-1",    "-10",   "10",    "1",         -100,      100, Grid},
    {253, "&Between Error Term",                    "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999, Grid},
    {254, "H1: &Mahalanobis Distance",              "0.30",  "0.20",  "0.40",  "0.02",         0,    99999, Grid},
    {255, "No of &Repeated Measurements",           "5",     "3",     "7",     "1",            2,       10, Layout},
    {256, "No of Wit&hin Factor Levels",            "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {257, "H1: Pro&b (Event at X1=0)",              "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    {258, "H1: Prob (&Event at X1=1)",              "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    {259, "Proportion of Sample with &X1 = 1",      "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    {260, "H1: &Rate at Mean",                      "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {261, "H1: R&ate at Mean+StdDev",               "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {262, "H1: &Rate at X1=0",                      "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {263, "H1: R&ate at X1=1",                      "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {264, "H1: H&azard Ratio",                      "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,      100},
    {265, "&Mult. Corr. of Y with X1 to Xp+q",      "0.5",   "0",     "0.5",   "0.01",         0, 0.99999F},
    {266, "M&ult. Corr. of Y with Xp+1 to Xp+q",    "0.3",   "0",     "0.5",   "0.01",         0, 0.99999F},
    {267, "Total Number (p+q) of &Covariates",      "5",     "3",     "7",     "1",            1,       10},
    {268, "H0: No (p) of &Regr.Coeff. = 0",         "1",     "3",     "7",     "1",            1,       10},
    {269, "H1: &Mean of c1X1+...+ckXk",             "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {270, "Si&ze of Latin Square",                  "5",     "3",     "7",     "1",            2,       10, Count | Layout},
    {271, "H&0: Cronbach's Alpha",                  "0.30",  "0.20",  "0.40",  "0.02",         0, 0.99999F},
    {272, "H1: &Cronbach's Alpha",                  "0.50",  "0.40",  "0.60",  "0.02",         0, 0.99999F},
    {273, "H1:&Cronb's alpha-H0:Cronb's alpha",     "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {274, "H1:&Cronb's alpha/H0:Cronb's alpha",     "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {275, "H&0: Cronbach's Alpha 2 - Alpha 1",      "0",     "-0.20", "0.20",  "0.05", -0.99999F, 0.99999F},
    {276, "H1: &Cronbach's Alpha 1",                "0.50",  "0.40",  "0.60",  "0.02",         0, 0.99999F},
    {277, "H1: C&ronbach's alpha 2",                "0.50",  "0.40",  "0.60",  "0.02",         0, 0.99999F},
    {278, "H1: C&ronbach's alpha 2 - alpha 1",      "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {279, "H1: C&ronbach's alpha 2 / alpha 1",      "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {280, "Number of &Items",                       "20",    "10",    "30",    "1",            2,    99999, Count},
    {281, "Number of &Items 1",                     "20",    "10",    "30",    "1",            2,    99999, Count},
    {282, "Number of I&tems 2",                     "20",    "10",    "30",    "1",            2,    99999, Count},
    {283, "No of I&tems 2 - No of Items 1",         "0",     "-50",   "50",    "5",       -99999,    99999, Count},
    {284, "No of I&tems 2 / No of Items 1",         "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999},
    {285, "No of Se&quences",                       "4",     "2",     "10",    "1",            2,      999, Count | Layout},
    {286, "No of &Periods",                         "4",     "2",     "10",    "1",            2,      999, Count | Layout},
    {287, "&Variance due to Design",                "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999, Grid},
    {288, "Number of &Treatments",                  "4",     "2",     "10",    "1",            2,      999, Count | Layout},
    {289, "&Sample Size per Sequence",              "6",     "10",    "50",    "2",            2,    99999, Count, SizeRole::Single},
    {290, "H1: &Median^c1*....*Median^ck",          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999, Grid},
    {291, "H0: &Kappa",                             "0.30",  "0.20",  "0.40",  "0.02",    -99999, 0.99999F},
    {292, "H1: K&appa",                             "0.50",  "0.40",  "0.60",  "0.02",    -99999, 0.99999F},
    {293, "H1: &Kappa - H0: Kappa",                 "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {294, "H1: Kappa / H0: Kappa",                  "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {295, "H0: &Concordance Coefficient",           "0.30",  "0.20",  "0.40",  "0.02",         0, 0.99999F},
    {296, "H1: C&oncordance Coefficient",           "0.50",  "0.40",  "0.60",  "0.02",         0, 0.99999F},
    {297, "H1: &Conc.Coeff. - H0: Conc.Coeff.",     "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {298, "H1: &Conc.Coeff. / H0: Conc. Coeff.",    "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {299, "H0: &Location Shift",                    "1",     "0.50",  "1.50",  "0.05",         0,    99999},
    {300, "H1: L&ocation Shift",                    "1.30",  "1.10",  "1.50",  "0.05",         0,    99999},
    {301, "H1: &Loc.Shift. - H0: Loc.Shift",        "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999},
    {302, "H1: &Loc.Shift / H0: Loc.Shift",         "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {303, "H0: &Scale Shift",                       "1",     "0.50",  "1.50",  "0.05",  0.00001F,    99999},
    {304, "H1: S&cale Shift",                       "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999},
    {305, "H1:&Scale Shift. - H0:Scale Shift",      "0",     "-0.30", "0.30",  "0.10",    -99999,    99999},
    {306, "H1:&Scale Shift / H0:Scale Shift",       "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {307, "H1:Sum Of Diff. in Pr&oportions",        "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {308, "H0:Sum Of Std.Dev.of Pr&oportions",      "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F, Grid},
    {309, "H1:Sum Of Std.Dev.of Pr&oportions",      "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F, Grid},
    {310, "Number of &Strata",                      "4",     "2",     "10",    "1",            2,      999, Count},
    {311, "H1: &Trend",                             "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {312, "&Average Proportion",                    "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F, Grid},
    {313, "&Variance Term",                         "0.20",  "0.10",  "0.30",  "0.02",  0.00001F,    99999, Grid},
    {314, "Variance of &Group Levels",              "0.30",  "0.20",  "0.40",  "0.02",  0.00001F,    99999, Grid},
    {315, "H1: P&robability of Concordance",        "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F},
    {316, "Number of &Intervals",                   "5",     "3",     "7",     "1",            1,       10, Count},
    {317, "H0: &Non-Inferiority Limit",             "-0.20", "-0.30", "-0.10", "0.02", -0.99999F, 0.99999F},
    {318, "P&rob (Conf.Interval within Limits)",    "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {319, "H0: &Non-Inferiority Limit",             "0.80",  "0.70",  "0.90",  "0.02",  0.00001F,    99999},
    {320, "&Total Sample Size",                     "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::Single},
    {321, "Confidence &Level",                      "0.90",  "0.80",  "0.99",  "0.01",  0.00001F, 0.99999F},
    {322, "Sample Size Sequence &1",                "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::FirstSequence},
    {323, "Sample Size Sequence &2",                "30",    "10",    "50",    "2",            3,    99999, Count, SizeRole::SecondSequence},
    {324, "Sample Size Seq. &2 - Seq. 1",           "0",     "-50",   "50",    "5",       -99999,    99999, Count, SizeRole::SecondSequence, AsDifference},
    {325, "Sample Size Seq. &2 / Seq. 1",           "1.0",   "0.5",   "1.5",   "0.1",   0.00001F,     9999, NoRole, SizeRole::SecondSequence, AsRatio},
    {326, "&Sample Size per Group",                 "30",    "10",    "50",    "2",            2,    99999, Count, SizeRole::Single},
    {327, "&Sample Size per Cell",                  "30",    "10",    "50",    "2",            2,    99999, Count, SizeRole::Single},
    {328, "&Sample Size per Cell",                  "30",    "10",    "50",    "2",            1,    99999, Count, SizeRole::Single},
    {329, "&Shape",                                 "1",     "0.5",   "2",     "0.1",          0,       99},
    {330, "H0: &Non-Inferiority Limit",             "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {331, "H1: &Rank Correlation tau",              "0.50",  "0.40",  "0.60",  "0.02", -0.99999F, 0.99999F},
    {332, "H0:Ha&zard Rate 2 / Hazard Rate 1",      "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,    99999},
    {333, "H0:Inci&dence 2 / Incidence 1",          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {334, "Number of X-&Categories",                "5",     "3",     "7",     "1",            2,       10, Count},
    {335, "Number of Y-&Categories",                "5",     "3",     "7",     "1",            2,       10, Count},
    {336, "H1: Proportio&n 10 / Proportion 01",     "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {337, "H0: &Variance Component of Kappa",       "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999, Grid},
    {338, "H1: Variance &Component of Kappa",       "1.2",   "1",     "1.4",   "0.1",   0.00001F,    99999, Grid},
    {339, "H1: Weighted H&azard 2-Hazard 1",        "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {340, "H0: Weighted &Std. Deviation",           "1",     "0.5",   "1.5",   "0.1",   0.00001F,    99999, Grid},
    {341, "H1: Weighted &Std. Deviation",           "1.2",   "1",     "1.4",   "0.1",   0.00001F,    99999, Grid},
    {342, "H1: Weighted Inci&d. 2 - Incid. 1",      "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F, Grid},
    {343, "Number of Accrual &Intervals",           "5",     "3",     "7",     "1",            1,       10, Count},
    {344, "Total No of &Analyses",                  "2",     "2",     "10",    "1",            1,      999},
    {345, "P&rob (Coverage and Width < w)",         "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {346, "&No of Contrasts",                       "3",     "1",     "9",     "1",            1,        9},
    {347, "Total Time at &Risk",                    "5",     "3",     "7",     "1",     0.00001F,    99999, NoRole, SizeRole::TimeAtRisk},
    {348, "Proportion Drop-Outs",                   "0.30",  "0.20",  "0.40",  "0.02",         0, 0.99999F},
    {350, "H0:H&azard Rate 2 / Hazard Rate 1",      "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {351, "&Dimension of Normal Distribution",      "5",     "3",     "7",     "1",            2,       10},
    {352, "H1: Weighted Log(H&azardRatio)",         "0.30",  "0.10",  "0.50",  "0.05",    -99999,    99999, Grid},
    {353, "H1: Survival Pr&oportion 1",             "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {354, "H1: Survival Propor&tion 2",             "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {355, "H1: S&urvival Prop.2 - Prop.1",          "0.30",  "0.20",  "0.40",  "0.05", -0.99999F, 0.99999F},
    {356, "H1: S&urvival Prop.2 / Prop.1",          "1.20",  "1.10",  "1.30",  "0.05",  0.00001F,    99999},
    {357, "&Correlation Covariate with Outcome",    "0.30",  "0.20",  "0.40",  "0.02", -0.99999F, 0.99999F},
    {358, "&Information Fraction",                  "0.30",  "0.20",  "0.40",  "0.02",  0.00001F, 0.99999F},
    {359, "&Observed Mean",                         "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {360, "&Observed Mean 2 - Mean 1",              "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
    {361, "&Conditional Power",                     "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {362, "&Observed Hazard Ratio",                 "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,      100},
    {363, "&Observed Proportion",                   "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {364, "&Observed Prop.2 - Prop.1",              "0",     "-0.20", "0.20",  "0.05", -0.99999F, 0.99999F},
    {365, "&Observed Proportion 1",                 "0.50",  "0.40",  "0.60",  "0.02",  0.00001F, 0.99999F},
    {366, "&Predictive Power",                      "0.80",  "0.70",  "0.90",  "0.02",  0.00001F, 0.99999F, Power},
    {367, "&Overdispersion Adjustment",             "1",     "1",     "10",    ".1",           1,    99999},
    {368, "H1: R&ate Ratio",                        "0.50",  "0.30",  "0.70",  "0.02",  0.00001F,      100},
    {369, "No of Linear &Combinations",             "3",     "1",     "9",     "1",            1,        9},
    {370, "H&0: Median 2 - Median 1",               "0",     "-0.30", "0.30",  "0.05",    -99999,    99999},
};
// clang-format on

// The row of a kind; nothing for one that is not defined.
const KindRow* RowOf(i16 kind) {
    static_assert(std::ranges::is_sorted(KindRows, {}, &KindRow::Kind));
    const auto* row = std::ranges::lower_bound(KindRows, kind, {}, &KindRow::Kind);
    return row != std::end(KindRows) && row->Kind == kind ? row : nullptr;
}

bool HasRole(i16 kind, Role role) {
    const KindRow* row = RowOf(kind);
    return row != nullptr && (row->Roles & role) != 0;
}

std::string NumberText(std::string_view text) {
    return Str(Val(text));
}

} // namespace

void SetAllParKinds() {
    for (const KindRow& row : KindRows) {
        const i16 kind = row.Kind;
        ParLabel(kind) = row.Label;
        ParText(kind) = NumberText(row.Start);
        ParXminText(kind) = NumberText(row.Xmin);
        ParXmaxText(kind) = NumberText(row.Xmax);
        ParXstepText(kind) = NumberText(row.Xstep);
        ParZValuesText(kind) = ParXminText(kind) + " " + ParText(kind) + " " + ParXmaxText(kind);
        ParMin(kind) = row.Min;
        ParMax(kind) = row.Max;
    }
}

bool IsCountKind(i16 kind) {
    return HasRole(kind, Count);
}

bool IsPopulationKind(i16 kind) {
    return HasRole(kind, Population);
}

bool IsLayoutKind(i16 kind) {
    return HasRole(kind, Layout);
}

bool IsGridKind(i16 kind) {
    return HasRole(kind, Grid);
}

bool IsPowerKind(i16 kind) {
    return HasRole(kind, Power);
}

SizeRole SizeRoleOf(i16 kind) {
    const KindRow* row = RowOf(kind);
    return row != nullptr ? row->Size : SizeRole::None;
}

Form SizeFormOf(i16 kind) {
    const KindRow* row = RowOf(kind);
    return row != nullptr ? row->SizeForm : AsValue;
}

} // namespace quorvanta
