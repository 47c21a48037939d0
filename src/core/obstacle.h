// Why a search found nothing, in the terms of the analysis.
#pragma once

#include <string>

namespace quorvanta {

// What stands in the way of a solution for the present ParValue and UnknownParNo, which the search
// has just failed to find: the range of the unknown, what the power (or the width, error or
// probability in its place) comes to at both of its ends, and what is asked. The state stays as it
// is.
std::string Obstacle();

// Tells it in the status line.
void TellObstacle(const std::string& obstacle);

// Another calculation begins: what stood in the way may do so no longer.
void ForgetObstacle();

} // namespace quorvanta
