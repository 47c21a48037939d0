// Where an analysis or an output is saved to.
#pragma once

#include <string>

namespace quorvanta {

// The extension of analysis files.
inline constexpr const char* AnalysisExtension = "dim";

// What the window in front is called in messages: "Summary", "Distribution Graph", "Calculation",
// "Table", "Graph" or "Monte Carlo". A free-standing window lies in front of the child windows.
std::string WindowKindName();

// The same name for the child window alone.
std::string ChildKindName();

// Asks for the name of a file to save to: "dim", "rtf" or "bmp". An analysis with a file proposes
// the name and the folder of that; any other its caption without blanks. Empty when the user gives
// up.
std::string AskFileName(const std::string& extension);

// Writes the bytes of an output, a text or a picture, to a file in place of what it held. False,
// told in the status line, if that fails; a file that exists is then as it was.
bool WriteTextFile(const std::string& path, const std::string& text);

} // namespace quorvanta
