// A platform without windows and without a user: nothing is shown, and every question is answered
// by the button that ends it.
#pragma once

#include "core/platform.h"

#include <optional>
#include <string>

namespace quorvanta::validation {

class SilentPlatform : public Platform {
  public:
    SilentPlatform() { SetPlatform(*this); }

    Answer MsgBox(const std::string& /*text*/, Buttons buttons, Icon /*icon*/,
                  const std::string& /*title*/) override {
        const bool isYesNo = buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel;
        return isYesNo ? Answer::No : Answer::Ok;
    }
    void Beep() override {}
    void ShowStatus(const std::string& /*text*/) override {}
    void DoEvents() override {}
    f64 Timer() override { return 0; }
    void ShowProgress(i32 /*total*/, const std::string& /*caption*/) override {}
    void StepProgress() override {}
    void HideProgress() override {}
    std::optional<i16> AskWindowKind(bool /*offerSimulation*/) override { return std::nullopt; }
    bool AskGrid() override { return false; }
    bool AskBoundary() override { return false; }
    bool AskDistribution() override { return false; }
    std::optional<std::string> AskOpenName(const FileDialog& /*dialog*/) override {
        return std::nullopt;
    }
    std::optional<std::string> AskSaveName(const FileDialog& /*dialog*/) override {
        return std::nullopt;
    }
    std::optional<OutputForm> AskOutputForm(OutputAction /*action*/) override {
        return std::nullopt;
    }
    void CopyText(const std::string&, const std::string&, const std::string&) override {}
    void CopyPicture(const Drawing& /*drawing*/) override {}
    void Print(OutputForm /*form*/, const Drawing& /*drawing*/) override {}
    std::string PictureFile(PictureFormat, const Drawing&, const PictureNotes&) override {
        return {};
    }
    void OpenChild(i16 /*windowKind*/, i16 /*windowNo*/, i16 /*analysisNo*/,
                   const std::string& /*caption*/) override {}
    void RaiseChild(i16 /*windowKind*/, i16 /*windowNo*/) override {}
    void RefreshChild() override {}
    void RefreshSimulation() override {}
    void RefreshOptions() override {}
    void Show(FloatingWindow /*window*/) override {}
    void Hide(FloatingWindow /*window*/) override {}
    bool IsShown(FloatingWindow /*window*/) override { return false; }
    void RefreshMenus() override {}
    void CloseMain() override {}
};

} // namespace quorvanta::validation
