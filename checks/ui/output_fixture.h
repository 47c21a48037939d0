// Windows with results, and the windows that give them out.
#pragma once

#include "core/records.h"
#include "support/temporary_folder.h"
#include "ui/window_fixture.h"

#include <QStringList>

namespace quorvanta {

class OutputCheck : public WindowCheck {
  protected:
    // A Table or Graph window with the unpaired t-test and its start values, run.
    void OpenRun(i16 windowKind);

    // The window of that name, which has to be there.
    QWidget& Top(const QString& name);
    bool IsOpen(const QString& name) const;

    // The window that this entry opens goes away by whatever makes its result stale: a typed value,
    // a new result, an axis of a table.
    void ExpectClosesWhenStale(const QString& window, const QString& entry);

    // Types the access key of one of the window's controls.
    static void PressAltKey(QWidget& window, Qt::Key key);

    // Types a key with Ctrl in the window.
    static void PressCtrlKey(QWidget& window, Qt::Key key);

    // The texts of all labels, buttons and check boxes of the window that can be seen.
    static QStringList Captions(const QWidget& window);

    // The file dialog is answered with this file of the folder.
    void NameNextFile(const std::string& name);

    std::string ContentOf(const std::string& name) const;

    // The record of the current analysis, brought up to date.
    static const AnalysisRecord& CurrentRecord();

    static std::string ClipboardText();
    static std::string ClipboardRtf();
    static void EmptyClipboard();

    checks::TemporaryFolder folder_;
};

} // namespace quorvanta
