#include "ui/qtplatform.h"

#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/records.h"
#include "ui/frmboundary.h"
#include "ui/frmgraphortext.h"
#include "ui/frmgridtable.h"
#include "ui/frmmain.h"
#include "ui/frmnewwindow.h"
#include "ui/frmprogress.h"
#include "ui/frmshiftmodel.h"
#include "ui/outputdevices.h"
#include "ui/picturefiles.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

#include <chrono>

namespace quorvanta {

namespace {

QMessageBox::Icon BoxIcon(Icon icon) {
    switch (icon) {
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons BoxButtons(Buttons buttons) {
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Answer BoxAnswer(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Ok:
        return Answer::Ok;
    default:
        return Answer::Cancel;
    }
}

} // namespace

QtPlatform::QtPlatform(frmMain& window) : window_(window) {
    clock_.start();
    SetPlatform(*this);
}

QWidget* QtPlatform::Front() const {
    QWidget* active = QApplication::activeWindow();
    return active != nullptr ? active : &window_;
}

Answer QtPlatform::MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    QWidget* parent = Front();
    QMessageBox box(parent);
    box.setObjectName("msgBox");
    box.setWindowTitle(title.empty() ? ProgramTitle() : ToQt(title));
    // Texts hold "<" and ">" that are no markup, and the line breaks of a text file.
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text).replace("\r\n", "\n"));
    box.setIcon(BoxIcon(icon));
    box.setStandardButtons(BoxButtons(buttons));
    const int button = box.exec();
    // Not every window manager gives the focus back to the window that it came from.
    parent->activateWindow();
    return BoxAnswer(button);
}

void QtPlatform::Beep() {
    QApplication::beep();
}

void QtPlatform::ShowStatus(const std::string& text) {
    constexpr int milliseconds = 20'000;
    if (text.empty())
        window_.statusBar()->clearMessage();
    else
        window_.statusBar()->showMessage(ToQt(text), milliseconds);
}

void QtPlatform::DoEvents() {
    constexpr qint64 nanosecondsBetweenPumps = 1'000'000;
    if (clock_.nsecsElapsed() - lastPump_ < nanosecondsBetweenPumps)
        return;
    // A run that is paused waits for its user, and takes no more of the machine than that.
    if (SimRunning == True && Paused == True) {
        QTimer wake;
        wake.setSingleShot(true);
        wake.start(std::chrono::milliseconds(20));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    lastPump_ = clock_.nsecsElapsed();
}

f64 QtPlatform::Timer() {
    return static_cast<f64>(clock_.nsecsElapsed()) / 1e9;
}

void QtPlatform::ShowProgress(i32 total, const std::string& caption) {
    const FloatFaultsApart apart;
    if (IsTableOrGraph())
        window_.StartRun(total);
    else
        window_.Progress().Start(total, caption.empty() ? ProgramTitle() : ToQt(caption));
}

void QtPlatform::StepProgress() {
    const FloatFaultsApart apart;
    if (IsTableOrGraph())
        window_.StepRun();
    else
        window_.Progress().Step();
}

void QtPlatform::HideProgress() {
    window_.Progress().hide();
    window_.EndRun();
}

std::optional<std::string> QtPlatform::AskOpenName(const FileDialog& dialog) {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return window_.Dialogs().AskOpenName(Front(), dialog);
}

std::optional<std::string> QtPlatform::AskSaveName(const FileDialog& dialog) {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return window_.Dialogs().AskSaveName(Front(), dialog);
}

std::optional<OutputForm> QtPlatform::AskOutputForm(OutputAction action) {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return frmGraphOrText(Front(), action).Ask();
}

void QtPlatform::CopyText(const std::string& plain, const std::string& rtf,
                          const std::string& html) {
    CopyTextToClipboard(ToQt(plain), QByteArray::fromStdString(rtf), ToQt(html));
}

void QtPlatform::CopyPicture(const Drawing& drawing) {
    QApplication::clipboard()->setImage(PictureOf(drawing, window_.PictureInches()));
}

void QtPlatform::Print(OutputForm form, const Drawing& drawing) {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    PrintWithPreview(Front(), ToQt(AnalysisFileName), form, drawing);
}

std::string QtPlatform::PictureFile(PictureFormat format, const Drawing& drawing,
                                    const PictureNotes& notes) {
    return PictureFileOf(format, drawing, window_.PictureInches(), notes).toStdString();
}

std::optional<i16> QtPlatform::AskWindowKind(bool offerSimulation) {
    const FloatFaultsApart apart;
    return frmNewWindow(&window_, offerSimulation).Ask();
}

bool QtPlatform::AskGrid() {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return frmGridTable(Front()).Ask();
}

bool QtPlatform::AskBoundary() {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return frmBoundary(Front()).Ask();
}

bool QtPlatform::AskDistribution() {
    const FloatFaultsApart apart;
    const KeepFront front(window_);
    return frmShiftModel(Front()).Ask();
}

void QtPlatform::OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo,
                           const std::string& caption) {
    window_.OpenChild(windowKind, windowNo, analysisNo, ToQt(caption));
}

void QtPlatform::RaiseChild(i16 windowKind, i16 windowNo) {
    window_.RaiseChild(windowKind, windowNo);
}

void QtPlatform::RefreshChild() {
    const FloatFaultsApart apart;
    window_.RefreshChild();
}

void QtPlatform::RefreshSimulation() {
    const FloatFaultsApart apart;
    window_.RefreshSimulation();
}

void QtPlatform::RefreshOptions() {
    window_.RefreshOptions();
}

void QtPlatform::Show(FloatingWindow window) {
    const FloatFaultsApart apart;
    window_.ShowFloating(window);
}

void QtPlatform::Hide(FloatingWindow window) {
    window_.HideFloating(window);
}

bool QtPlatform::IsShown(FloatingWindow window) {
    const QWidget* floating = window_.Floating(window);
    return floating != nullptr && floating->isVisible();
}

void QtPlatform::RefreshMenus() {
    window_.RefreshMenus();
}

void QtPlatform::CloseMain() {
    window_.close();
}

} // namespace quorvanta
