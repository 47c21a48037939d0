// A platform without windows: records every message word for word and plays the user's answers.
#pragma once

#include "core/platform.h"

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace quorvanta {

struct Message {
    std::string Text;
    Buttons ShownButtons = Buttons::Ok;
    Icon ShownIcon = Icon::None;
    std::string Title;
};

class ScriptedPlatform : public Platform {
  public:
    ScriptedPlatform() { SetPlatform(*this); }

    std::vector<Message> Messages;
    std::deque<Answer> Answers; // played in order; after the last: Ok, or No where that is offered
    std::deque<std::optional<i16>> WindowKinds;        // answers of AskWindowKind
    std::deque<std::optional<std::string>> FileNames;  // answers of the file dialogs
    std::deque<std::optional<OutputForm>> OutputForms; // answers of AskOutputForm
    std::deque<std::function<bool()>> GridFillings;    // answers of AskGrid; after the last: cancel
    std::deque<std::function<bool()>> BoundaryChoices; // the same of AskBoundary
    std::deque<std::function<bool()>> DistrChoices;    // the same of AskDistribution
    std::vector<FileDialog> FileDialogs;               // the dialogs shown
    std::vector<OutputAction> FormsAsked;
    std::string PlainClipboard;
    std::string RtfClipboard;
    std::string HtmlClipboard;
    std::vector<Drawing> Printed;
    std::vector<OutputForm> PrintedForms;
    std::vector<Drawing> CopiedPictures;
    std::string BitmapBytes = "BM";    // what PictureFile answers for a bitmap,
    std::string PictureBytes = "P";    // and for any other form
    std::vector<PictureNotes> Notes;   // of the files of pictures
    std::vector<std::string> Children; // captions of the windows opened
    std::set<FloatingWindow> Shown;
    std::vector<std::string> Statuses; // lines of the status line
    int Beeps = 0;
    int Refreshes = 0;
    int SimRefreshes = 0;
    int Yields = 0;
    i32 ProgressTotal = 0;
    i32 ProgressSteps = 0;
    bool ProgressShown = false;
    std::string ProgressCaption;
    bool MainClosed = false;
    f64 Clock = 0;
    f64 ClockStep = 0;                // seconds that pass between two looks at the clock
    std::function<void()> OnDoEvents; // what the user does during a run

    // The texts of all messages so far.
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Message& message : Messages)
            texts.push_back(message.Text);
        return texts;
    }

    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override {
        Messages.push_back({text, buttons, icon, title});
        if (Answers.empty())
            return buttons == Buttons::YesNoCancel || buttons == Buttons::YesNo ? Answer::No
                                                                                : Answer::Ok;
        const Answer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    void Beep() override { ++Beeps; }
    void ShowStatus(const std::string& text) override { Statuses.push_back(text); }
    void DoEvents() override {
        ++Yields;
        if (OnDoEvents)
            OnDoEvents();
    }
    f64 Timer() override {
        Clock += ClockStep;
        return Clock;
    }
    void ShowProgress(i32 total, const std::string& caption) override {
        ProgressShown = true;
        ProgressCaption = caption;
        ProgressTotal = total;
        ProgressSteps = 0;
    }
    void StepProgress() override { ++ProgressSteps; }
    void HideProgress() override { ProgressShown = false; }
    std::optional<i16> AskWindowKind(bool /*offerSimulation*/) override {
        if (WindowKinds.empty())
            return std::nullopt;
        const auto kind = WindowKinds.front();
        WindowKinds.pop_front();
        return kind;
    }
    bool AskGrid() override { return Play(GridFillings); }
    bool AskBoundary() override { return Play(BoundaryChoices); }
    bool AskDistribution() override { return Play(DistrChoices); }
    std::optional<std::string> AskOpenName(const FileDialog& dialog) override {
        return NextFileName(dialog);
    }
    std::optional<std::string> AskSaveName(const FileDialog& dialog) override {
        return NextFileName(dialog);
    }
    std::optional<OutputForm> AskOutputForm(OutputAction action) override {
        FormsAsked.push_back(action);
        if (OutputForms.empty())
            return std::nullopt;
        const auto form = OutputForms.front();
        OutputForms.pop_front();
        return form;
    }
    void CopyText(const std::string& plain, const std::string& rtf,
                  const std::string& html) override {
        PlainClipboard = plain;
        RtfClipboard = rtf;
        HtmlClipboard = html;
    }
    void CopyPicture(const Drawing& drawing) override { CopiedPictures.push_back(drawing); }
    void Print(OutputForm form, const Drawing& drawing) override {
        PrintedForms.push_back(form);
        Printed.push_back(drawing);
    }
    std::string PictureFile(PictureFormat format, const Drawing& /*drawing*/,
                            const PictureNotes& notes) override {
        Notes.push_back(notes);
        return format == PictureFormat::Bitmap ? BitmapBytes : PictureBytes;
    }
    void OpenChild(i16 /*windowKind*/, i16 /*windowNo*/, i16 /*analysisNo*/,
                   const std::string& caption) override {
        Children.push_back(caption);
    }
    void RaiseChild(i16 /*windowKind*/, i16 /*windowNo*/) override {}
    void RefreshChild() override { ++Refreshes; }
    void RefreshSimulation() override { ++SimRefreshes; }
    void RefreshOptions() override {}
    void Show(FloatingWindow window) override { Shown.insert(window); }
    void Hide(FloatingWindow window) override { Shown.erase(window); }
    bool IsShown(FloatingWindow window) override { return Shown.count(window) > 0; }
    void RefreshMenus() override {}
    void CloseMain() override { MainClosed = true; }

  private:
    static bool Play(std::deque<std::function<bool()>>& answers) {
        if (answers.empty())
            return false;
        const auto answer = answers.front();
        answers.pop_front();
        return answer();
    }
    std::optional<std::string> NextFileName(const FileDialog& dialog) {
        FileDialogs.push_back(dialog);
        if (FileNames.empty())
            return std::nullopt;
        const auto name = FileNames.front();
        FileNames.pop_front();
        return name;
    }
};

} // namespace quorvanta
