// What the program is called.
#pragma once

namespace quorvanta {

inline constexpr const char* ProgramName = "Quorvanta";
inline constexpr const char* ProgramVersion = "3.0";

} // namespace quorvanta
