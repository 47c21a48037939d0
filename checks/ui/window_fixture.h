// The program's windows, fresh for each check, with a user who answers its messages.
#pragma once

#include "tour/hands.h"
#include "ui/program.h"

#include <QFileDialog>
#include <QMdiArea>
#include <QMessageBox>
#include <QTimer>

#include <deque>
#include <gtest/gtest.h>
#include <memory>

namespace quorvanta {

class ChildWindow;
class ValueBox;

// Answers every message and every question for a file as it comes, and keeps its text.
class MessageReader {
  public:
    MessageReader();

    // The answer of the Esc key.
    static constexpr QMessageBox::StandardButton Escape = QMessageBox::NoButton;

    QStringList Texts;
    QStringList Titles;
    std::deque<QMessageBox::StandardButton> Answers; // in order; after the last: No where offered
    QStringList FileQuestions;                       // titles of the file dialogs
    QStringList FileProposals;                       // the names that they start with
    QStringList FileFolders;                         // the folders that they start in
    std::deque<QString> FileNames; // their answers in order; after the last: given up
    std::deque<int> FileTypes;     // and how many types down the list from the first
    QMessageBox::Icon LastIcon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons LastButtons;

  private:
    void Look();
    void Answer(QMessageBox& box);
    void Answer(QFileDialog& dialog);

    QTimer timer_;
};

class WindowCheck : public testing::Test {
  protected:
    WindowCheck();

    frmMain& Window() { return program_->Window(); }
    QMdiArea& Area() { return *Window().findChild<QMdiArea*>("mdiArea"); }
    ChildWindow& Child() { return *Window().CurrentChild(); }
    QWidget& Options() { return *Window().Floating(FloatingWindow::Options); }

    // Chooses the entry by its control name, as a click on it does.
    void Trigger(const QString& entry);

    // Opens a Calculation window with the unpaired t-test: two-sided, the means as a
    // difference, two sizes.
    void OpenTTest();

    // Takes the start options of an open option window.
    void AcceptOptions();

    ValueBox& Box(int i);
    QWidget& Label(int i);
    QString Value(int i);
    void Type(int i, const QString& text);
    void Press(int i);

    // The place of the parameter of that label in the current list; -1 if it has none.
    static int PlaceOf(const std::string& label);

    // The window is closed by its close box.
    void CloseChild();

    MessageReader Messages;

  private:
    std::unique_ptr<Program> program_;
};

} // namespace quorvanta
