#include "ui/output_fixture.h"

#include "core/analysis_state.h"
#include "core/records.h"
#include "core/save_file.h"
#include "core/setup.h"
#include "ui/qttext.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QTest>

#include <algorithm>

namespace quorvanta {

void OutputCheck::OpenRun(i16 windowKind) {
    Trigger(ControlName("mnuFile", windowKind));
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "optIntPar0(1)");
    AcceptOptions();
    hands::Click(*Window().Floating(FloatingWindow::Parameters), "cmdOK");
    ASSERT_EQ(Calculated, True);
}

QWidget& OutputCheck::Top(const QString& name) {
    QWidget* window = hands::TopWindow(name);
    if (window == nullptr)
        qFatal("Not open: %s", qPrintable(name));
    return *window;
}

bool OutputCheck::IsOpen(const QString& name) const {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return true;
    }
    return false;
}

void OutputCheck::ExpectClosesWhenStale(const QString& window, const QString& entry) {
    OpenTTest();
    Trigger(entry);
    EXPECT_TRUE(IsOpen(window));
    Type(PlaceOf("&Standard Deviation"), "2");
    EXPECT_FALSE(IsOpen(window));
    Press(PlaceOf("&Power"));
    Trigger(entry);
    EXPECT_TRUE(IsOpen(window));
    Press(PlaceOf("Sample Size &1"));
    EXPECT_FALSE(IsOpen(window));
    OpenRun(TableWindow);
    Trigger(entry);
    EXPECT_TRUE(IsOpen(window));
    hands::TypeInto(*Window().Floating(FloatingWindow::Parameters), "txtXminValue", "0.1");
    EXPECT_FALSE(IsOpen(window));
}

void OutputCheck::PressCtrlKey(QWidget& window, Qt::Key key) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, key, Qt::ControlModifier);
    hands::Settle();
}

void OutputCheck::PressAltKey(QWidget& window, Qt::Key key) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, key, Qt::AltModifier);
    // A button shows for a moment that it is pressed, and acts then.
    EXPECT_TRUE(QTest::qWaitFor([&window] {
        return std::ranges::none_of(window.findChildren<QAbstractButton*>(),
                                    [](const QAbstractButton* each) { return each->isDown(); });
    }));
    hands::Settle();
}

QStringList OutputCheck::Captions(const QWidget& window) {
    QStringList captions;
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        if (!each->isVisibleTo(&window))
            continue;
        const auto* label = qobject_cast<const QLabel*>(each);
        const auto* button = qobject_cast<const QAbstractButton*>(each);
        const QString text = label ? label->text() : button ? button->text() : QString();
        if (!text.isEmpty())
            captions << text;
    }
    captions.sort();
    return captions;
}

void OutputCheck::NameNextFile(const std::string& name) {
    Messages.FileNames.push_back(ToQt(folder_.Path(name)));
}

std::string OutputCheck::ContentOf(const std::string& name) const {
    constexpr std::size_t plenty = 1U << 26U;
    return LoadFile(folder_.Path(name), plenty).value_or("(no such file)");
}

const AnalysisRecord& OutputCheck::CurrentRecord() {
    StoreAnalysis();
    return Analysis(AnalysisNo);
}

std::string OutputCheck::ClipboardText() {
    return FromQt(QApplication::clipboard()->text());
}

std::string OutputCheck::ClipboardRtf() {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(data->data("text/rtf"), data->data("application/rtf"));
    return data->data("text/rtf").toStdString();
}

void OutputCheck::EmptyClipboard() {
    QApplication::clipboard()->clear();
}

} // namespace quorvanta
