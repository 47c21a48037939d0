// Analysis files and the commands of the File menu.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// Entries of the File menu beside those that open a window (0 to 3, the window's kind).
inline constexpr i16 FileOpenAnalysis = 5;
inline constexpr i16 FileSaveAnalysis = 7;
inline constexpr i16 FilePrintOutput = 9;
inline constexpr i16 FileCopyOutput = 10;
inline constexpr i16 FileSaveOutput = 11;
inline constexpr i16 FileExit = 13;

// Carries out an entry of the File menu. Nothing happens during a run.
void FileCommand(i16 index);

// True if the window in front has an analysis: one without a test has nothing to save.
bool HasAnalysisToSave();

// Opens the file in a window of its own and calculates a table or graph anew; the analysis counts
// as changed from the start. False, and nothing has changed, during a run, and if the file can't
// be read, is no analysis that this program can have written, or is of an analysis that this
// version can't show; the status line says which. Lengths, counts, indices and numbers are looked
// at before one of them is used, since any bytes at all may come in.
bool ReadAnalysisFile(const std::string& path);

// Saves the current analysis, which then has the name of the file and counts as unchanged; the
// status line tells of letters that the file has no room for. False
// if it can't be saved; a file that exists is then as it was. Texts that are too long for a file
// are told in a message; a file that can't be written ends the command without one, as a Cancel
// does, and is told in the status line.
bool WriteAnalysisFile(const std::string& path);

// May the window of that record close? Refused during a run; asks about unsaved changes.
bool QueryCloseChild(i16 analysisNo, i16 closeMode);

} // namespace quorvanta
