// The place of the unknown while an engine looks at its own equation.
#pragma once

#include "core/analysis_state.h"
#include "core/types.h"

namespace quorvanta {

// While this lives the unknown has a trial value; then its own again, however it ends.
class TrialValue {
  public:
    explicit TrialValue(f64 x) : before_(ParValue(UnknownParNo)) { ParValue(UnknownParNo) = x; }
    ~TrialValue() { ParValue(UnknownParNo) = before_; }
    TrialValue(const TrialValue&) = delete;
    TrialValue& operator=(const TrialValue&) = delete;

  private:
    f64 before_;
};

} // namespace quorvanta
