// A user without a plan: random events from one seed on the real windows, for as many steps as are
// asked for, while the invariants are looked at after each of them.
#pragma once

#include "support/temporary_folder.h"
#include "ui/program.h"
#include "ui/watchdog.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <vector>

class QFileDialog;
class QMdiArea;
class QMdiSubWindow;
class QMessageBox;

namespace quorvanta {

class ChildWindow;

// The platform with a clock that its calls move on, and an event pump that comes around after a
// number of calls: what happens during a run does not depend on the speed of the machine.
class SteadyPlatform : public QtPlatform {
  public:
    // The user has a turn at each look at the event queue of a run.
    SteadyPlatform(frmMain& window, std::function<void()> user);

    f64 Timer() override;
    void DoEvents() override;

  private:
    std::function<void()> user_;
    f64 now_ = 0;
    int calls_ = 0;
};

class Monkey : public QObject {
  public:
    explicit Monkey(unsigned seed);
    ~Monkey() override;

    // Takes that many steps, and further ones only to close what is open over the windows. Returns
    // what went wrong, with the way back to it; empty if nothing did.
    std::string Walk(int steps);

    // Walks that took the same steps have the same.
    std::size_t Signature() const { return signature_; }

  protected:
    bool event(QEvent* event) override;

  private:
    struct Choice {
        int Weight;
        void (Monkey::*Do)();
    };

    void Start();
    void AskForTurn();
    void TakeTurn();
    void TakeTurnInARun();
    void Judge();
    void Fail(const std::string& what);
    void Note(const QString& what);

    // Chance. The generator's numbers are the same everywhere, so that a seed is a walk.
    unsigned Below(std::size_t count);
    bool OneIn(int count) { return Below(static_cast<std::size_t>(count)) == 0; }
    template <class Items>
    const auto& OneOf(const Items& items) {
        return items[static_cast<typename Items::size_type>(
            Below(static_cast<std::size_t>(items.size())))];
    }
    void OneOfThese(std::initializer_list<Choice> choices);
    QString SomeNumber();
    QString SomeText();
    QString SomeFile();
    QPoint SomePoint(const QWidget& widget);
    QWidget& SomeWindow();
    QWidget* SomeControl(const QWidget& window);
    QWidget* SomeField(const QWidget& window);
    QMdiSubWindow* SomeFrame();

    // Hands: events from the window system, so that what lies on top gets them, and nothing behind
    // a dialog does.
    void Activate(QWidget& window);
    void ClickAt(QWidget& widget, QPoint at, Qt::MouseButton button, bool twice = false);
    void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void Type(QWidget& window, const QString& text);
    void TypeInto(QWidget& field, const QString& text);
    void Trigger(const QString& entry);

    // What a user does where nothing is asked,
    void ActOnWindows();
    void ChooseTest();
    void ChooseDistribution();
    void ChooseAnyEntry();
    void ClickMenuBar();
    void OpenWindow();
    void UseFiles();
    void StepBackOrForth();
    void StepBackAndForth();
    void ChooseOptionsAgain();
    void OutputSomething();
    void Exit();
    void ClickSomewhere();
    void RightClickSomewhere();
    void DoubleClickSomewhere();
    void PressLabel();
    void OpenGrids();
    void PressOk();
    void TypeSomewhere();
    void TypeNumber();
    void PressSomeKey();
    void PressAccelerator();
    void TurnWheel();
    void ChooseInList();
    void CloseSomeChild();
    void ActivateSomeChild();
    void ArrangeSomeChild();
    void ArrangeMainWindow();
    void ResizeMainWindow();
    void RestoreMainWindow();
    void DropSomeFile();
    void CloseSomeFloating();
    void CopyElsewhere();
    // at an open menu or list,
    void ActOnPopup(QWidget& popup);
    // at a question,
    void ActOnModal(QWidget& modal);
    void FillGrid(QWidget& grid);
    void FillShiftModel(QWidget& dialog);
    void AnswerMessage(QMessageBox& box);
    void AnswerFileDialog(QFileDialog& dialog);
    void GiveUp(QWidget& dialog);
    // and during a run.
    void ActDuringRun();
    void CancelRun();

    frmMain& Window() { return program_->Window(); }
    QMdiArea& Area();
    std::vector<ChildWindow*> Children();

    unsigned seed_;
    std::mt19937 random_;
    checks::TemporaryFolder home_;
    checks::TemporaryFolder folder_; // of the files that are opened and saved
    QString formerHome_;
    QtMessageHandler formerHandler_;
    Watchdog watchdog_;
    std::unique_ptr<SteadyPlatform> platform_;
    std::unique_ptr<Program> program_;
    QWidget otherProgram_;
    QStringList servedTests_;
    QStringList servedDistributions_;
    QEventLoop loop_;
    bool isAsked_ = false; // a turn is on its way
    int depth_ = 0;        // turns that have not come back: each waits for a dialog or a run
    int steps_ = 0;
    int wanted_ = 0;
    int pumps_ = 0;                                                           // of the present run
    i16 runsIn_ = 0;                                                          // its analysis
    bool isPatient_ = false;                                                  // lets it go on
    const bool isTold_ = qEnvironmentVariableIsSet("QUORVANTA_MONKEY_TRAIL"); // each step
    bool hasDone_ = false;                                                    // the present step
    std::size_t signature_ = 0;
    std::string failure_;
};

} // namespace quorvanta
