// The names by which code speaks of kinds: of parameters, of groups of interchangeable parameters
// and of check boxes. What each is called on the screen, and what it may be, stands in the
// catalogues.
//
// "MinusH0" and "OverH0" name an H1 value entered as a difference from the H0 value or a ratio to
// it, "2Minus1" and "2Over1" what compares two samples. A name without H0 or H1 is that of an
// estimate, or of a quantity that both hypotheses share.
#pragma once

#include "core/types.h"

namespace quorvanta {

namespace Kind {

// Level and power.
inline constexpr i16 SignificanceLevel = 0;
inline constexpr i16 Power = 1;
inline constexpr i16 ErrorLevel = 143; // of a point estimate
inline constexpr i16 ConfidenceLevel = 22;
inline constexpr i16 TestConfidenceLevel = 321; // of a test that is stated through an interval
inline constexpr i16 ProbabilityWithinLimits = 318;

// Sizes.
inline constexpr i16 Size = 85;
inline constexpr i16 Size1 = 4;
inline constexpr i16 Size2 = 37;
inline constexpr i16 Size2Minus1 = 38;
inline constexpr i16 Size2Over1 = 5;
inline constexpr i16 SizeFrom4 = 14; // of a statistic that needs four subjects
inline constexpr i16 Size1From4 = 39;
inline constexpr i16 Size2From4 = 42;
inline constexpr i16 SequenceSize1 = 322;
inline constexpr i16 SequenceSize2 = 323;
inline constexpr i16 SequenceSize2Minus1 = 324;
inline constexpr i16 SequenceSize2Over1 = 325;
inline constexpr i16 Population = 31;
inline constexpr i16 Population1 = 196;
inline constexpr i16 Population2 = 197;
inline constexpr i16 Population2Minus1 = 198;
inline constexpr i16 Population2Over1 = 199;
inline constexpr i16 DegreesOfFreedom = 36;
inline constexpr i16 NoOfGroups = 17;

// Precision of an estimate.
inline constexpr i16 AbsoluteError = 18;
inline constexpr i16 UpperAbsoluteError = 19;
inline constexpr i16 RelativeError = 23;
inline constexpr i16 UpperRelativeError = 24;
inline constexpr i16 IntervalWidth = 100;
inline constexpr i16 RelativeWidth = 145;
inline constexpr i16 WidthProbability = 101;

// Means.
inline constexpr i16 H0Mean = 57;
inline constexpr i16 H1Mean = 58;
inline constexpr i16 H1MeanMinusH0 = 59;
inline constexpr i16 H1MeanOverH0 = 60;
inline constexpr i16 H0Mean2Minus1 = 61;
inline constexpr i16 H1Mean2Minus1 = 62;
inline constexpr i16 H1Mean1 = 86;
inline constexpr i16 H1Mean2 = 87;
inline constexpr i16 H1Mean2Over1 = 88;
inline constexpr i16 MeanLeftLimit = 6;
inline constexpr i16 MeanRightLimit = 7;
inline constexpr i16 MeanNonInferiorityLimit = 330;
inline constexpr i16 H0MeanOfDifference = 157;
inline constexpr i16 H1MeanOfDifference = 158;
inline constexpr i16 H1MeanOfDifferenceMinusH0 = 159;
inline constexpr i16 H1MeanOfDifferenceOverH0 = 160;
inline constexpr i16 Sd = 2;
inline constexpr i16 SdOfDifference = 3;
inline constexpr i16 Sd1 = 216;
inline constexpr i16 Sd2 = 217;
inline constexpr i16 Sd2Minus1 = 218;
inline constexpr i16 Sd2Over1 = 219;

// Medians of lognormal distributions.
inline constexpr i16 H0Median = 89;
inline constexpr i16 H1Median = 90;
inline constexpr i16 H1MedianMinusH0 = 91;
inline constexpr i16 H1MedianOverH0 = 92;
inline constexpr i16 H0Median2Over1 = 93;
inline constexpr i16 H1Median1 = 94;
inline constexpr i16 H1Median2 = 95;
inline constexpr i16 H1Median2Over1 = 96;
inline constexpr i16 MedianLeftLimit = 97;
inline constexpr i16 MedianRightLimit = 98;
inline constexpr i16 RatioLeftLimit = 29;
inline constexpr i16 RatioRightLimit = 30;
inline constexpr i16 RatioNonInferiorityLimit = 319;
inline constexpr i16 Shape = 27;
inline constexpr i16 Shape1 = 50;
inline constexpr i16 Shape2 = 54;
inline constexpr i16 Shape2Minus1 = 107;
inline constexpr i16 Shape2Over1 = 108;
inline constexpr i16 LogSd = 155;
inline constexpr i16 CoefficientOfVariation = 156;

// Standard deviations.
inline constexpr i16 H0Sd = 110;
inline constexpr i16 H1Sd = 111;
inline constexpr i16 H1SdMinusH0 = 112;
inline constexpr i16 H1SdOverH0 = 113;
inline constexpr i16 H0Sd2Over1 = 114;
inline constexpr i16 H1Sd2Over1 = 115;
inline constexpr i16 H1Sd1 = 139;
inline constexpr i16 H1Sd2 = 140;
inline constexpr i16 SdLeftLimit = 116;
inline constexpr i16 SdRightLimit = 117;
inline constexpr i16 TrueSd2Over1 = 138;

// Exponential distributions.
inline constexpr i16 H0Location = 131;
inline constexpr i16 H1Location = 132;
inline constexpr i16 H1LocationMinusH0 = 133;
inline constexpr i16 H1LocationOverH0 = 134;
inline constexpr i16 LocationLeftLimit = 135;
inline constexpr i16 LocationRightLimit = 136;
inline constexpr i16 H0Scale = 142;
inline constexpr i16 H1Scale = 124;
inline constexpr i16 H1ScaleMinusH0 = 125;
inline constexpr i16 H1ScaleOverH0 = 126;
inline constexpr i16 H0Scale2Over1 = 127;
inline constexpr i16 H1Scale2Over1 = 128;
inline constexpr i16 H1Scale1 = 26;
inline constexpr i16 H1Scale2 = 141;
inline constexpr i16 ScaleLeftLimit = 129;
inline constexpr i16 ScaleRightLimit = 130;
inline constexpr i16 Scale = 146;

// Proportions and odds.
inline constexpr i16 H0Proportion = 35;
inline constexpr i16 H1Proportion = 83;
inline constexpr i16 H1ProportionMinusH0 = 40;
inline constexpr i16 H1ProportionOverH0 = 41;
inline constexpr i16 ProportionLeftLimit = 47;
inline constexpr i16 ProportionRightLimit = 48;
inline constexpr i16 H0Proportion2Minus1 = 51;
inline constexpr i16 H1Proportion1 = 8;
inline constexpr i16 H1Proportion2 = 69;
inline constexpr i16 H1Proportion2Minus1 = 52;
inline constexpr i16 H1Proportion2Over1 = 70;
inline constexpr i16 ProportionDifferenceLeftLimit = 71;
inline constexpr i16 ProportionDifferenceRightLimit = 72;
inline constexpr i16 ProportionNonInferiorityLimit = 317;
inline constexpr i16 Proportion = 102;
inline constexpr i16 Proportion1 = 103;
inline constexpr i16 Proportion2 = 104;
inline constexpr i16 Proportion2Minus1 = 105;
inline constexpr i16 Proportion2Over1 = 106;
inline constexpr i16 H0Odds = 225;
inline constexpr i16 H1Odds = 226;
inline constexpr i16 H1OddsMinusH0 = 227;
inline constexpr i16 H1OddsOverH0 = 228;
inline constexpr i16 H1Odds1 = 229;
inline constexpr i16 H1Odds2 = 230;
inline constexpr i16 H1Odds2Minus1 = 231;
inline constexpr i16 H1Odds2Over1 = 232;
inline constexpr i16 Odds = 233;
inline constexpr i16 Odds1 = 234;
inline constexpr i16 Odds2 = 235;
inline constexpr i16 Odds2Minus1 = 236;
inline constexpr i16 Odds2Over1 = 237;
inline constexpr i16 H1Proportion11 = 123;
inline constexpr i16 H1Proportion10Plus01 = 15;
inline constexpr i16 H1Proportion10Over01 = 336;
inline constexpr i16 DiagonalDifference = 16;

// Poisson distributions: means, and rates of events in a study time.
inline constexpr i16 H0PoissonMean = 161;
inline constexpr i16 H1PoissonMean = 162;
inline constexpr i16 PoissonMeanLeftLimit = 166;
inline constexpr i16 PoissonMeanRightLimit = 167;
inline constexpr i16 H1PoissonMean1 = 168;
inline constexpr i16 H1PoissonMean2 = 169;
inline constexpr i16 PoissonMean = 175;
inline constexpr i16 PoissonMean1 = 176;
inline constexpr i16 PoissonMean2 = 177;
inline constexpr i16 PoissonMean2Minus1 = 178;
inline constexpr i16 PoissonMean2Over1 = 179;
inline constexpr i16 PoissonSize = 163;
inline constexpr i16 PoissonSize1 = 164;
inline constexpr i16 PoissonSize2 = 165;
inline constexpr i16 H0Rate = 63;
inline constexpr i16 H1Rate = 81;
inline constexpr i16 H1RateMinusH0 = 43;
inline constexpr i16 H1RateOverH0 = 44;
inline constexpr i16 RateLeftLimit = 75;
inline constexpr i16 RateRightLimit = 76;
inline constexpr i16 H0Rate2Minus1 = 64;
inline constexpr i16 H1Rate1 = 9;
inline constexpr i16 H1Rate2 = 73;
inline constexpr i16 H1Rate2Minus1 = 65;
inline constexpr i16 H1Rate2Over1 = 74;
inline constexpr i16 RateDifferenceLeftLimit = 77;
inline constexpr i16 RateDifferenceRightLimit = 78;
inline constexpr i16 Rate = 180;
inline constexpr i16 Rate1 = 181;
inline constexpr i16 Rate2 = 182;
inline constexpr i16 Rate2Minus1 = 183;
inline constexpr i16 Rate2Over1 = 184;
inline constexpr i16 StudyTime = 170;
inline constexpr i16 StudyTime1 = 171;
inline constexpr i16 StudyTime2 = 172;
inline constexpr i16 StudyTime2Minus1 = 173;
inline constexpr i16 StudyTime2Over1 = 174;

// Correlation and regression.
inline constexpr i16 H0Correlation = 185;
inline constexpr i16 H1Correlation = 186;
inline constexpr i16 H1CorrelationMinusH0 = 187;
inline constexpr i16 H1CorrelationOverH0 = 188;
inline constexpr i16 CorrelationLeftLimit = 194;
inline constexpr i16 CorrelationRightLimit = 195;
inline constexpr i16 Correlation = 220;
inline constexpr i16 H0Correlation2Minus1 = 189;
inline constexpr i16 H1Correlation1 = 190;
inline constexpr i16 H1Correlation2 = 191;
inline constexpr i16 H1Correlation2Minus1 = 192;
inline constexpr i16 H1Correlation2Over1 = 193;
inline constexpr i16 H0Slope = 203;
inline constexpr i16 H1Slope = 204;
inline constexpr i16 H1SlopeMinusH0 = 205;
inline constexpr i16 H1SlopeOverH0 = 206;
inline constexpr i16 ResidualSd = 212;
inline constexpr i16 CovariateSd = 213;
inline constexpr i16 H0Slope2Minus1 = 207;
inline constexpr i16 H1Slope1 = 208;
inline constexpr i16 H1Slope2 = 209;
inline constexpr i16 H1Slope2Minus1 = 210;
inline constexpr i16 H1Slope2Over1 = 211;
inline constexpr i16 CovariateSd1 = 214;
inline constexpr i16 CovariateSd2 = 215;
inline constexpr i16 CovariateSd2Minus1 = 221;
inline constexpr i16 CovariateSd2Over1 = 222;
inline constexpr i16 TestedCoefficients = 268;
inline constexpr i16 CorrelationWithAll = 265;
inline constexpr i16 CorrelationWithOthers = 266;
inline constexpr i16 NoOfCovariates = 267;

// Regression on one covariate beside others: of an event, of a rate.
inline constexpr i16 H1EventAtMean = 20;
inline constexpr i16 H1EventAtMeanPlusSd = 21;
inline constexpr i16 H1EventAtX0 = 257;
inline constexpr i16 H1EventAtX1 = 258;
inline constexpr i16 H1OddsRatio = 200;
inline constexpr i16 H1RateAtMean = 260;
inline constexpr i16 H1RateAtMeanPlusSd = 261;
inline constexpr i16 H1RateAtX0 = 262;
inline constexpr i16 H1RateAtX1 = 263;
inline constexpr i16 H1RateRatio = 368;
inline constexpr i16 ProportionAtX1 = 259;
inline constexpr i16 CorrelationOfCovariates = 25;
inline constexpr i16 Overdispersion = 367;
inline constexpr i16 GammaShape = 329;

// Analysis of variance: the effect under H1, the layout, the sizes.
inline constexpr i16 SdOfMeans = 34;
inline constexpr i16 AnyMeanDifference = 147;
inline constexpr i16 MinMeanDifference = 148;
inline constexpr i16 ContrastMean = 247;
inline constexpr i16 ReplicatedSquareContrastMean = 269;
inline constexpr i16 ContrastSd = 137;
inline constexpr i16 CovariateCorrelation = 357;
inline constexpr i16 LevelsA = 238;
inline constexpr i16 LevelsB = 239;
inline constexpr i16 LevelsC = 243;
inline constexpr i16 SquareSize = 244; // of a single Latin square
inline constexpr i16 ReplicatedSquareSize = 270;
inline constexpr i16 NoOfSquares = 245;
inline constexpr i16 NoOfBlocks = 246;
inline constexpr i16 SizeK = 149; // of each group but the first
inline constexpr i16 SizeKMinus1 = 150;
inline constexpr i16 SizeKOver1 = 151;
inline constexpr i16 SizePerGroup = 326;
inline constexpr i16 SizePerCell = 327;
inline constexpr i16 AdditiveSizePerCell = 328; // one will do where no interaction is estimated

// Multiple comparisons.
inline constexpr i16 CoverageAndWidthProbability = 345;
inline constexpr i16 NormalDimension = 351;
inline constexpr i16 LinearCombinations = 369;

// Repeated measurements.
inline constexpr i16 WithinError = 251;
inline constexpr i16 BetweenError = 253;
inline constexpr i16 Epsilon = 249;
inline constexpr i16 EpsilonBias = 252;
inline constexpr i16 MahalanobisDistance = 254;
inline constexpr i16 WithinLevels = 256;
inline constexpr i16 SizeFrom2 = 248; // of a statistic for which two subjects will do
inline constexpr i16 TotalSize = 320;

// Agreement of raters and items, and rank correlation.
inline constexpr i16 NoOfSubjects = 224;
inline constexpr i16 NoOfRaters = 223;
inline constexpr i16 NoOfItems = 280;
inline constexpr i16 NoOfItems1 = 281;
inline constexpr i16 NoOfItems2 = 282;
inline constexpr i16 NoOfItems2Minus1 = 283;
inline constexpr i16 NoOfItems2Over1 = 284;
inline constexpr i16 H0Intraclass = 28;
inline constexpr i16 H1Intraclass = 32;
inline constexpr i16 H1IntraclassMinusH0 = 109;
inline constexpr i16 H1IntraclassOverH0 = 144;
inline constexpr i16 H0Alpha = 271;
inline constexpr i16 H1Alpha = 272;
inline constexpr i16 H1AlphaMinusH0 = 273;
inline constexpr i16 H1AlphaOverH0 = 274;
inline constexpr i16 H0Alpha2Minus1 = 275;
inline constexpr i16 H1Alpha1 = 276;
inline constexpr i16 H1Alpha2 = 277;
inline constexpr i16 H1Alpha2Minus1 = 278;
inline constexpr i16 H1Alpha2Over1 = 279;
inline constexpr i16 H0Kappa = 291;
inline constexpr i16 H1Kappa = 292;
inline constexpr i16 H1KappaMinusH0 = 293;
inline constexpr i16 H1KappaOverH0 = 294;
inline constexpr i16 H0KappaVariance = 337;
inline constexpr i16 H1KappaVariance = 338;
inline constexpr i16 NoOfCategories = 201;
inline constexpr i16 H0Concordance = 295;
inline constexpr i16 H1Concordance = 296;
inline constexpr i16 H1ConcordanceMinusH0 = 297;
inline constexpr i16 H1ConcordanceOverH0 = 298;
inline constexpr i16 H0LocationShift = 299;
inline constexpr i16 H1LocationShift = 300;
inline constexpr i16 H1LocationShiftMinusH0 = 301;
inline constexpr i16 H1LocationShiftOverH0 = 302;
inline constexpr i16 H0ScaleShift = 303;
inline constexpr i16 H1ScaleShift = 304;
inline constexpr i16 H1ScaleShiftMinusH0 = 305;
inline constexpr i16 H1ScaleShiftOverH0 = 306;
inline constexpr i16 H1Tau = 331;
inline constexpr i16 H1ProbabilityOfConcordance = 315;

// Rank tests.
inline constexpr i16 H1ProbabilityOfOrder = 152; // that an observation of sample 2 is the larger
inline constexpr i16 H1ProbabilityAbove0 = 153;
inline constexpr i16 H1ProbabilityOfSumAbove0 = 154; // of two observations
inline constexpr i16 SumOfCubedProportions = 202;    // of the categories, averaged over the samples

// Contingency tables and trends.
inline constexpr i16 NonCentrality = 250; // of chi-square, for each subject
inline constexpr i16 NoOfXCategories = 334;
inline constexpr i16 NoOfYCategories = 335;
inline constexpr i16 H1SdOfProportions = 240;
inline constexpr i16 H1AnyProportionDifference = 241;
inline constexpr i16 H1LeastProportionDifference = 242;
inline constexpr i16 H1SumOfDifferences = 307;
inline constexpr i16 H0SumOfVariances = 308;
inline constexpr i16 H1SumOfVariances = 309;
inline constexpr i16 NoOfStrata = 310;
inline constexpr i16 H1Trend = 311;
inline constexpr i16 AverageProportion = 312;
inline constexpr i16 TrendVariance = 313;
inline constexpr i16 LevelVariance = 314;

// General crossover designs.
inline constexpr i16 H1MedianOfCombination = 290; // product of powers of medians
inline constexpr i16 DesignVariance = 287;
inline constexpr i16 NoOfSequences = 285;
inline constexpr i16 NoOfPeriods = 286;
inline constexpr i16 NoOfTreatments = 288;
inline constexpr i16 SizePerSequence = 289;
// Survival: hazard rates are the rates above. What two groups share stands last.
inline constexpr i16 H0Rate2Over1 = 332;
inline constexpr i16 H0Incidence = 66;
inline constexpr i16 H1Incidence = 82;
inline constexpr i16 H1IncidenceMinusH0 = 55;
inline constexpr i16 H1IncidenceOverH0 = 56;
inline constexpr i16 H0Incidence2Minus1 = 67;
inline constexpr i16 H0Incidence2Over1 = 333;
inline constexpr i16 H1Incidence1 = 53;
inline constexpr i16 H1Incidence2 = 79;
inline constexpr i16 H1Incidence2Minus1 = 68;
inline constexpr i16 H1Incidence2Over1 = 80;
inline constexpr i16 H0Median2Minus1 = 370;
inline constexpr i16 H1HazardRatio = 264;
inline constexpr i16 HazardRatioNonInferiorityLimit = 350;
inline constexpr i16 H1Survival1 = 353;
inline constexpr i16 H1Survival2 = 354;
inline constexpr i16 H1Survival2Minus1 = 355;
inline constexpr i16 H1Survival2Over1 = 356;
inline constexpr i16 LossRate = 84;
inline constexpr i16 LossRate1 = 13;
inline constexpr i16 LossRate2 = 45;
inline constexpr i16 LossRate2Minus1 = 46;
inline constexpr i16 LossRate2Over1 = 49;
inline constexpr i16 LossIncidence = 118;
inline constexpr i16 LossIncidence1 = 119;
inline constexpr i16 LossIncidence2 = 120;
inline constexpr i16 LossIncidence2Minus1 = 121;
inline constexpr i16 LossIncidence2Over1 = 122;
inline constexpr i16 DropOuts = 348;
inline constexpr i16 AccrualRate = 33;
inline constexpr i16 AccrualIntervals = 343;
inline constexpr i16 AccrualTime = 10;
inline constexpr i16 TotalStudyTime = 11;
inline constexpr i16 IntervalLength = 12;
inline constexpr i16 NoOfIntervals = 316;
inline constexpr i16 Events = 99;
inline constexpr i16 TimeAtRisk = 347;
inline constexpr i16 WeightedHazardDifference = 339;
inline constexpr i16 WeightedIncidenceDifference = 342;
inline constexpr i16 WeightedLogHazardRatio = 352;
inline constexpr i16 H0WeightedSd = 340;
inline constexpr i16 H1WeightedSd = 341;

// A look at a trial that goes on
inline constexpr i16 InformationFraction = 358;
inline constexpr i16 ObservedMean = 359;
inline constexpr i16 ObservedMean2Minus1 = 360;
inline constexpr i16 ConditionalPower = 361;
inline constexpr i16 ObservedHazardRatio = 362;
inline constexpr i16 ObservedProportion = 363;
inline constexpr i16 ObservedProportion2Minus1 = 364;
inline constexpr i16 ObservedProportion1 = 365;
inline constexpr i16 PredictivePower = 366;

} // namespace Kind

namespace Group {

inline constexpr i16 H1Mean = 0;
inline constexpr i16 Mean2 = 1;
inline constexpr i16 Size2 = 2;
inline constexpr i16 H1Sd = 3;
inline constexpr i16 H1Rate = 4;
inline constexpr i16 Rate2 = 5;
inline constexpr i16 H1Incidence = 6;
inline constexpr i16 Incidence2 = 7;
inline constexpr i16 LossRate2 = 8;
inline constexpr i16 H1Median = 9;
inline constexpr i16 Median2 = 10;
inline constexpr i16 H1Proportion = 11;
inline constexpr i16 Proportion2 = 12;
inline constexpr i16 H1Sd2 = 13;
inline constexpr i16 H1Location = 14;
inline constexpr i16 H1Scale = 15;
inline constexpr i16 H1Scale2 = 16;
inline constexpr i16 EffectSize = 17;
inline constexpr i16 SizeK = 18;
inline constexpr i16 LogSd = 19;
inline constexpr i16 Discordant = 20;
inline constexpr i16 H1MeanOfDifference = 21;
inline constexpr i16 StudyTime2 = 22;
inline constexpr i16 H1Correlation = 23;
inline constexpr i16 Correlation2 = 24;
inline constexpr i16 Population2 = 25;
inline constexpr i16 AverageProportions = 26;
inline constexpr i16 H1Slope = 27;
inline constexpr i16 Slope2 = 28;
inline constexpr i16 Sd2 = 29;
inline constexpr i16 LossIncidence2 = 30;
inline constexpr i16 Shape2 = 31;
inline constexpr i16 EventEffect = 32;
inline constexpr i16 H1Intraclass = 33;
inline constexpr i16 H1Odds = 34;
inline constexpr i16 Odds2 = 35;
inline constexpr i16 TestedOfTwoFactors = 36;
inline constexpr i16 EffectOfProportions = 37;
inline constexpr i16 TestedOfThreeFactors = 38;
inline constexpr i16 CorrelationMatrix = 39;
inline constexpr i16 RateEffect = 40;
inline constexpr i16 TestedBetweenOrWithin = 43;
inline constexpr i16 H1Alpha = 44;
inline constexpr i16 Alpha2 = 45;
inline constexpr i16 NoOfItems2 = 46;
inline constexpr i16 Parameterization = 47;
inline constexpr i16 H1Kappa = 48;
inline constexpr i16 H1Concordance = 49;
inline constexpr i16 LocationShift = 50;
inline constexpr i16 ScaleShift = 51;
inline constexpr i16 TauOrConcordance = 52;
inline constexpr i16 SequenceSize2 = 53;
inline constexpr i16 Given = 55; // sample size, number of events or time at risk
inline constexpr i16 SlopeProjection = 56;
inline constexpr i16 HazardEffect = 57;
inline constexpr i16 RateDistribution = 58;

} // namespace Group

namespace Check {

inline constexpr i16 DegreesOfFreedom = 0;
inline constexpr i16 Correction = 1;
inline constexpr i16 ArcSine = 2;
inline constexpr i16 Incidences = 3;
inline constexpr i16 Events = 4;
inline constexpr i16 GroupsInAnova = 5;
inline constexpr i16 Exact = 7;
inline constexpr i16 Odds = 9;
inline constexpr i16 Contrast = 10;
inline constexpr i16 Additive = 11;
inline constexpr i16 Medians = 12;
inline constexpr i16 RandomSquares = 13;
inline constexpr i16 LinearCombination = 14;
inline constexpr i16 SquaresAsLevels = 15;
inline constexpr i16 Satterthwaite = 16;
inline constexpr i16 Carryover = 17;
inline constexpr i16 DependentSamples = 20;
inline constexpr i16 CovarianceMatrix = 22;
inline constexpr i16 OddsRatio = 23;
inline constexpr i16 FirstOrder = 24;
inline constexpr i16 SecondOrder = 25;
inline constexpr i16 Multinomial = 26;
inline constexpr i16 Score = 27;
inline constexpr i16 UserDefinedAccrual = 28;
inline constexpr i16 UnrestrictedMl = 30;
inline constexpr i16 HazardRatio = 33;
inline constexpr i16 TotalSize = 35;
inline constexpr i16 TwoSidedInterval = 36;
inline constexpr i16 Overdispersion = 37;
inline constexpr i16 FixedInterimTimes = 38;
inline constexpr i16 VarianceOfH1 = 39;

} // namespace Check

} // namespace quorvanta
