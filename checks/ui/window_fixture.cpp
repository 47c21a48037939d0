#include "ui/window_fixture.h"

#include "core/analysis_state.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QTest>

namespace quorvanta {

MessageReader::MessageReader() {
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    timer_.start();
}

void MessageReader::Look() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || !modal->isVisible())
        return;
    if (auto* box = qobject_cast<QMessageBox*>(modal))
        Answer(*box);
    else if (auto* dialog = qobject_cast<QFileDialog*>(modal))
        Answer(*dialog);
}

void MessageReader::Answer(QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(name, nullptr);
    FileQuestions << dialog.windowTitle();
    FileProposals << name->text();
    FileFolders << dialog.directory().absolutePath();
    if (FileNames.empty()) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    if (!FileTypes.empty()) {
        auto* type = dialog.findChild<QComboBox*>("fileTypeCombo");
        QTest::keyClick(type, Qt::Key_Home);
        for (int i = 0; i < FileTypes.front(); ++i)
            QTest::keyClick(type, Qt::Key_Down);
        FileTypes.pop_front();
    }
    name->setText(FileNames.front());
    FileNames.pop_front();
    QTest::keyClick(name, Qt::Key_Return);
}

void MessageReader::Answer(QMessageBox& box) {
    EXPECT_EQ(box.objectName(), "msgBox");
    Texts << box.text();
    Titles << box.windowTitle();
    LastIcon = box.icon();
    LastButtons = box.standardButtons();
    QMessageBox::StandardButton answer =
        (LastButtons & QMessageBox::No) != 0 ? QMessageBox::No : QMessageBox::Ok;
    if (!Answers.empty()) {
        answer = Answers.front();
        Answers.pop_front();
    }
    if (answer == Escape) {
        QTest::keyClick(&box, Qt::Key_Escape);
        return;
    }
    ASSERT_NE(box.button(answer), nullptr) << qPrintable(box.text());
    QTest::mouseClick(box.button(answer), Qt::LeftButton);
}

WindowCheck::WindowCheck() : program_(std::make_unique<Program>()) {
    Window().resize(1200, 780);
    Window().show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
}

void WindowCheck::Trigger(const QString& entry) {
    auto* action = Window().findChild<QAction*>(entry);
    ASSERT_NE(action, nullptr) << qPrintable(entry);
    ASSERT_TRUE(action->isEnabled()) << qPrintable(entry);
    // Run from the event loop as a click is, so that run-time errors end where they do then.
    bool begun = false;
    QTimer::singleShot(0, action, [&begun, action] {
        begun = true;
        action->trigger();
    });
    EXPECT_TRUE(QTest::qWaitFor([&begun] { return begun; }));
    hands::Settle();
}

void WindowCheck::OpenTTest() {
    Trigger("mnuFile(0)");
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "optIntPar0(1)");
    AcceptOptions();
}

void WindowCheck::AcceptOptions() {
    ASSERT_TRUE(Options().isVisible());
    hands::Click(Options(), "cmdOK");
    ASSERT_FALSE(Options().isVisible());
}

ValueBox& WindowCheck::Box(int i) {
    return *hands::Control<ValueBox>(Child(), ControlName("txtParValue", i));
}

QWidget& WindowCheck::Label(int i) {
    return *hands::Control(Child(), ControlName("cmdParLabel", i));
}

QString WindowCheck::Value(int i) {
    return Box(i).text();
}

void WindowCheck::Type(int i, const QString& text) {
    hands::TypeInto(Child(), ControlName("txtParValue", i), text);
}

void WindowCheck::Press(int i) {
    hands::Click(Label(i));
}

int WindowCheck::PlaceOf(const std::string& label) {
    for (i16 i = 0; i <= NoOfPar; ++i) {
        if (ParLabel(ParKind(i)) == label)
            return i;
    }
    return -1;
}

void WindowCheck::CloseChild() {
    Child().parentWidget()->close();
    hands::Settle();
}

} // namespace quorvanta
