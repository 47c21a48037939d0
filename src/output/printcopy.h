// Printing, copying and saving what the window in front shows with the questions that go before it.
#pragma once

#include "core/platform.h"
#include "output/presentation.h"

#include <string>

namespace quorvanta {

// True if the window in front has something to give out. A table or graph that a change has made
// stale is calculated anew for it.
bool HasOutput();

// Prints, copies or saves it; of a graph, its picture or its numbers, as the user says. A text that
// is to be printed is shown in the Output window first. Cancelled is -1 afterwards if the user gave
// up, if there is nothing to give out, or if it could not be saved.
void OutputCommand(OutputAction action);

// Tells that the window in front has been copied.
void TellCopied();

// The same as OutputCommand for the text that the Output window shows, with the message of a copy.
void OutputResult(OutputAction action);

// The same for the picture of the Distribution Graph window.
void OutputDistrGraph(OutputAction action);

// The same, without a message, for a picture that a window shows beside its texts; nothing happens
// without a result. The name is that of the picture in the question for a file.
void OutputPicture(OutputAction action, const Presentation& picture, const std::string& name);

} // namespace quorvanta
