// What the logic needs of a windowing platform. Nothing else in the engine knows that windows
// exist: src/ui implements this on Qt, the checks with a scripted platform.
#pragma once

#include "core/types.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvanta {

enum class Icon { None, Exclamation, Question, Information, Critical };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
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

class Surface;

// A file dialog: what it says and what it starts with.
struct FileDialog {
    std::string Title;
    std::string Filter;   // pairs of a name and a mask: "All Files (*.*)|*.*|..."
    i16 FilterIndex = 1;  // the pair in use, from 1
    std::string FileName; // the name proposed
    std::string Folder;   // to start in; empty: that of the last file
    // Added to a name to save to that ends with none of the masks, where the mask in use has none.
    std::string DefaultExtension;
};

enum class OutputAction { Print, Copy, Save };
enum class OutputForm { Picture, Text };

// The forms of a picture's file. All but the bitmap carry notes.
enum class PictureFormat { Bitmap, Png, Svg, Pdf };

// What a reader needs to make a picture again, beside the name of the program. UTF-8, any text.
struct PictureNotes {
    std::string Title;
    std::string Statement;
};

// Draws an output on any surface that it is handed, as often as it is asked to.
using Drawing = std::function<void(Surface&)>;

// Messages, the clock, and how far a long run has come.
class Messages {
  public:
    virtual ~Messages() = default;

    // Shows a message and waits for the answer. An empty title is the program's name.
    virtual Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) = 0;
    virtual void Beep() = 0;

    // A line at the foot of the main window, which waits for no answer. An empty text takes the
    // former one away.
    virtual void ShowStatus(const std::string& text) = 0;

    // Lets waiting events through. Called once per step of a long run, perhaps half a million
    // times a second: an implementation returns at once when it has pumped a moment ago.
    virtual void DoEvents() = 0;

    // Seconds of a clock that never runs backwards.
    virtual f64 Timer() = 0;

    // A long run shows how far it has come: total steps, then one call per step. An empty caption
    // is the program's name.
    virtual void ShowProgress(i32 total, const std::string& caption) = 0;
    virtual void StepProgress() = 0;
    virtual void HideProgress() = 0;
};

// The windows, which take what they show from the state.
class Windows {
  public:
    virtual ~Windows() = default;

    // Asks for the kind of a new window; nothing when the user cancels.
    virtual std::optional<i16> AskWindowKind(bool offerSimulation) = 0;

    // Lets the user fill the current input grid (core/gridtable.h) until it is accepted; false when
    // he cancels.
    virtual bool AskGrid() = 0;

    // Lets the user choose the boundaries of a design (groupseq/boundchoice.h) until they are
    // accepted; false when he cancels.
    virtual bool AskBoundary() = 0;

    // Lets the user choose a distribution (montecarlo/shiftmodel.h) until it is accepted; false
    // when he cancels.
    virtual bool AskDistribution() = 0;

    // Child windows, addressed by kind and number. A child shows the current analysis only.
    virtual void OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo,
                           const std::string& caption) = 0;
    virtual void RaiseChild(i16 windowKind, i16 windowNo) = 0;

    // The current child window, and the parameter window beside it, take labels, texts, colours
    // and the result from the state.
    virtual void RefreshChild() = 0;

    // The simulation window takes the estimates, and what its buttons say, from the state. Called
    // as often as the estimates change: an implementation draws no more of them than can be seen.
    virtual void RefreshSimulation() = 0;

    // The option window takes what the test offers, and what is chosen, from the state.
    virtual void RefreshOptions() = 0;

    // The floating windows by name; what each of them is and when it goes: core/floating_windows.h.
    virtual void Show(FloatingWindow window) = 0;
    virtual void Hide(FloatingWindow window) = 0;
    virtual bool IsShown(FloatingWindow window) = 0;

    // The entries of "Current Analysis" take their state from GetInfoEnabled.
    virtual void RefreshMenus() = 0;

    // Ends the program: closes the main window, with the questions of its children.
    virtual void CloseMain() = 0;
};

// Files, clipboard and printer.
class OutputDevices {
  public:
    virtual ~OutputDevices() = default;

    // Asks for a file that exists, and for a name to save to (which asks before it overwrites);
    // nothing when the user cancels. Both remember their folder for the run.
    virtual std::optional<std::string> AskOpenName(const FileDialog& dialog) = 0;
    virtual std::optional<std::string> AskSaveName(const FileDialog& dialog) = 0;

    // Asks whether a graph goes out as a picture or as a text; nothing when the user cancels.
    virtual std::optional<OutputForm> AskOutputForm(OutputAction action) = 0;

    // Outputs. A text goes to the clipboard as plain text, as RTF and as HTML. Printing shows a
    // preview; a picture starts on a page that is wider than high.
    virtual void CopyText(const std::string& plain, const std::string& rtf,
                          const std::string& html) = 0;
    virtual void CopyPicture(const Drawing& drawing) = 0;
    virtual void Print(OutputForm form, const Drawing& drawing) = 0;
    // The drawing as the bytes of a file; empty if they can't be made.
    virtual std::string PictureFile(PictureFormat format, const Drawing& drawing,
                                    const PictureNotes& notes) = 0;
};

// All of it in one. Whatever an implementation lays out, paints or waits for, in the midst of a
// calculation, it leaves the flags of floating-point faults (core/fault.h) as they were.
class Platform : public Messages, public Windows, public OutputDevices {};

// The platform in use; there is always exactly one after SetPlatform.
Platform& ThePlatform();
void SetPlatform(Platform& platform);

// A message with the exclamation icon and one OK button.
void ShowMessage(const std::string& text);

} // namespace quorvanta
