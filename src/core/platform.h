// What the logic needs of a windowing platform. Nothing else in the engine knows that windows
// exist: src/ui implements this on Qt, the checks with a scripted platform.
#pragma once

#include "core/types.h"

#include <optional>
#include <string>

namespace quorvanta {

enum class Icon { None, Exclamation, Question, Information, Critical };
enum class Buttons { Ok, OkCancel, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

// Free-standing windows that the logic hides and shows by name.
enum class FloatingWindow {
    Options,           // frmShowSmp
    Parameters,        // frmShowPar
    InterimParameters, // frmShowIntPar
    SequentialMonitor, // frmMonteGroupSeq
    Grid,              // frmGridTable0
    Summary,           // frmSummary
    DistrGraph,        // frmDistrGraph
    Output             // frmOutput
};

class Platform {
  public:
    virtual ~Platform() = default;

    // Shows a message and waits for the answer. An empty title is the program's name.
    virtual Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) = 0;
    virtual void Beep() = 0;

    // Lets waiting events through. Called once per step of a long run, perhaps half a million
    // times a second: an implementation returns at once when it has pumped a moment ago.
    virtual void DoEvents() = 0;

    // Seconds of a clock that never runs backwards.
    virtual f64 Timer() = 0;

    // A long run shows how far it has come: total steps, then one call per step.
    virtual void ShowProgress(i32 total) = 0;
    virtual void StepProgress() = 0;
    virtual void HideProgress() = 0;

    // Asks for the kind of a new window; nothing when the user cancels.
    virtual std::optional<i16> AskWindowKind(bool offerSimulation) = 0;

    // Child windows, addressed by kind and number. A child shows the current analysis only.
    virtual void OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo,
                           const std::string& caption) = 0;
    virtual void RaiseChild(i16 windowKind, i16 windowNo) = 0;

    // The current child window takes labels, texts and colours from the state.
    virtual void RefreshChild() = 0;

    // The option window takes what the test offers, and what is chosen, from the state.
    virtual void RefreshOptions() = 0;

    virtual void Show(FloatingWindow window) = 0;
    virtual void Hide(FloatingWindow window) = 0;

    // The entries of "Current Analysis" take their state from GetInfoEnabled.
    virtual void RefreshMenus() = 0;

    // Ends the program: closes the main window, with the questions of its children.
    virtual void CloseMain() = 0;
};

// The platform in use; there is always exactly one after SetPlatform.
Platform& ThePlatform();
void SetPlatform(Platform& platform);

// A message with the exclamation icon and one OK button.
void ShowMessage(const std::string& text);

} // namespace quorvanta
