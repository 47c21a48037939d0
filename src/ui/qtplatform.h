// The platform of the engine, on Qt.
#pragma once

#include "core/platform.h"

#include <QElapsedTimer>
#include <QString>

class QWidget;

namespace quorvanta {

class frmMain;
class frmProgress;

class QtPlatform : public Platform {
  public:
    explicit QtPlatform(frmMain& window);

    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override;
    void Beep() override;
    void ShowStatus(const std::string& text) override;
    void DoEvents() override;
    f64 Timer() override;
    void ShowProgress(i32 total, const std::string& caption) override;
    void StepProgress() override;
    void HideProgress() override;
    std::optional<i16> AskWindowKind(bool offerSimulation) override;
    std::optional<std::string> AskOpenName(const FileDialog& dialog) override;
    std::optional<std::string> AskSaveName(const FileDialog& dialog) override;
    std::optional<OutputForm> AskOutputForm(OutputAction action) override;
    void CopyText(const std::string& plain, const std::string& rtf,
                  const std::string& html) override;
    void CopyPicture(const Drawing& drawing) override;
    void Print(OutputForm form, const Drawing& drawing) override;
    std::string PictureFile(PictureFormat format, const Drawing& drawing,
                            const PictureNotes& notes) override;
    bool AskGrid() override;
    bool AskBoundary() override;
    bool AskDistribution() override;
    void OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo,
                   const std::string& caption) override;
    void RaiseChild(i16 windowKind, i16 windowNo) override;
    void RefreshChild() override;
    void RefreshSimulation() override;
    void RefreshOptions() override;
    void Show(FloatingWindow window) override;
    void Hide(FloatingWindow window) override;
    bool IsShown(FloatingWindow window) override;
    void RefreshMenus() override;
    void CloseMain() override;

  private:
    QWidget* Front() const;

    frmMain& window_;
    QElapsedTimer clock_;
    qint64 lastPump_ = 0; // of clock_, nanoseconds
};

} // namespace quorvanta
