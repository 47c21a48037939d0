// Round limits and steps of axes (the module Scale).
#pragma once

#include "core/types.h"

#include <optional>
#include <string>

namespace quorvanta {

// Round limits around low..high that are exactly n round steps apart, after C. R. Lewart,
// "Algorithm 463: Algorithms SCALE1, SCALE2, and SCALE3 for determination of scales on computer
// generated plots", Communications of the ACM 16 (1973), 639-640. The step is 1, 2, 5 or 10 times a
// power of ten, or the next of that row where the limits would not fit; what is left over of the n
// steps lies half below and half above. n below 2 counts as 2, and a high that does not lie above
// low is taken as low + 1 (or as the next number that can be told from low). low..high is always
// inside newLow..newHigh. The limits must be finite. Limits and step are rounded to 32 bits where
// they are formed, all else is 64 bits.
void NiceScale(f32 low, f32 high, i16 n, f32& newLow, f32& newHigh, f32& step);

// The picture for the numbers at the ticks of an axis that begin at first: no decimals if step and
// first are whole, otherwise one, and as many further ones as the two need.
std::string TickFormat(f32 step, f32 first);

// The limit that a text stands for; nothing for "Auto" and for what is no number. A text that is
// longer than any number needs to be is none, so that no text is a run-time error.
std::optional<f64> TypedLimit(const std::string& text);

} // namespace quorvanta
