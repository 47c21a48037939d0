// Hazards as they are entered, and what the losses are beside them: the kinds of parameters of the
// survival tests by the form of input.
#pragma once

#include "core/types.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

// How the survival of a group is entered: as its hazard, its median survival time, or its
// incidence, the proportion with an event within one unit of time.
enum class SurvivalInput { Hazard, Median, Incidence };

// Offers the two check boxes; what is chosen.
void OfferSurvivalInput();
SurvivalInput ChosenSurvivalInput();

// The hazard that a survival parameter stands for, above 0. Incidences are below 1.
f32 HazardOf(SurvivalInput input, f32 value);
// The hazard of losses, 0 or more: entered as an incidence beside incidences, else as a rate.
f32 LossHazardOf(SurvivalInput input, f32 value);

// The kinds of one survival parameter; of two, whose H0 is a difference or a ratio; of losses.
const OneSampleKinds& OneSurvivalKinds(SurvivalInput input);
const TwoSampleKinds& TwoSurvivalKinds(SurvivalInput input, bool isRatio);
const SampleKinds& LossKinds(SurvivalInput input);

} // namespace quorvanta
