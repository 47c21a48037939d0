// What the program is called.
#pragma once

namespace quorvanta {

inline constexpr const char* ProgramName = "Quorvanta";
inline constexpr const char* ProgramVersion = "3.0";

// As outputs name what has made them.
inline constexpr const char* ProgramNameAndVersion = "Quorvanta 3.0";

} // namespace quorvanta
