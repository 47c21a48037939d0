#include "ui/run_fixture.h"

#include "core/catalogue.h"
#include "core/setup.h"
#include "ui/qttext.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>

#include <algorithm>

namespace quorvanta {

void RunCheck::OpenRunWindow(const QString& entry) {
    Trigger(entry);
    Trigger("mnuStudent(0)");
    hands::Click(Options(), "optIntPar0(1)");
    hands::Click(Options(), "optIntPar1(2)");
    AcceptOptions();
    ASSERT_EQ(NoOfPar, Size2);
}

void RunCheck::AskForSizes(const QString& power, const QString& min, const QString& max,
                           const QString& step, const QString& sds) {
    Choose(YRole, Size1);
    Choose(XRole, Mean1);
    Choose(ZRole, Sd);
    hands::TypeInto(Parameters(), FixedBox(Power).objectName(), power);
    TypeIntoBox("txtXminValue", min);
    TypeIntoBox("txtXmaxValue", max);
    TypeIntoBox("txtXstepValue", step);
    TypeIntoBox("txtZValue", sds);
    PressOk();
}

QComboBox& RunCheck::List(int k) {
    return *hands::Control<QComboBox>(Parameters(), ControlName("cbYXZPar", k));
}

QLineEdit& RunCheck::ParBox(const QString& name) {
    return *hands::Control<QLineEdit>(Parameters(), name);
}

QLineEdit& RunCheck::FixedBox(i16 parNo) {
    int i = 0;
    while (FixedPar(static_cast<i16>(i)) != parNo)
        ++i;
    return ParBox(ControlName("txtParValue", i));
}

void RunCheck::Choose(int k, i16 parNo) {
    QComboBox& list = List(k);
    hands::Click(list);
    QAbstractItemView* entries = list.view();
    ASSERT_TRUE(QTest::qWaitFor([entries] { return entries->isVisible(); }));
    QTest::keyClick(entries, Qt::Key_Home);
    for (i16 i = 0; i < parNo; ++i)
        QTest::keyClick(entries, Qt::Key_Down);
    QTest::keyClick(entries, Qt::Key_Return);
    hands::Settle();
    ASSERT_FALSE(entries->isVisible());
}

void RunCheck::TypeIntoBox(const QString& name, const QString& text) {
    hands::TypeInto(Parameters(), name, text);
}

QWidget& RunCheck::Picture() {
    const bool isTable = Child().WindowKind() == TableWindow;
    return *hands::Control(Child(), isTable ? "PicTable" : "PicGraph");
}

QString RunCheck::EditButton() {
    return Child().WindowKind() == TableWindow ? "cmdEditTable" : "cmdEditGraph";
}

QString RunCheck::EditWindow() {
    return Child().WindowKind() == TableWindow ? "frmEditTable" : "frmEditGraph";
}

void RunCheck::Edit(const std::function<void(QWidget&)>& act, const char* button) {
    bool done = false;
    hands::WhenModal(EditWindow(), [&](QWidget& dialog) {
        act(dialog);
        hands::Click(dialog, button);
        done = true;
    });
    hands::Click(Child(), EditButton());
    EXPECT_TRUE(done);
}

void RunCheck::EditText(const char* field, const QString& text) {
    Edit([&](QWidget& dialog) { Replace(dialog, field, text); });
}

void RunCheck::Replace(QWidget& dialog, const char* field, const QString& text) {
    hands::TypeInto(dialog, field, text);
    if (text.isEmpty())
        QTest::keyClick(hands::Control(dialog, field), Qt::Key_Delete);
}

void RunCheck::ReplaceTitle(QWidget& dialog, const QString& text) {
    auto* title = hands::Control<QPlainTextEdit>(dialog, "txtTitle");
    hands::Click(*title->viewport());
    QTest::keyClick(title, Qt::Key_A, Qt::ControlModifier);
    const QStringList lines = text.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0)
            QTest::keyClick(title, Qt::Key_Return);
        QTest::keyClicks(title, lines[i]);
    }
}

void RunCheck::ExpectRefused(const char* field, const QString& text, const QString& message,
                             const QString& title) {
    Messages.Texts.clear();
    Messages.Titles.clear();
    Edit(
        [&](QWidget& dialog) {
            Replace(dialog, field, text);
            hands::Click(dialog, "cmdOK");
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(hands::TextOf(dialog, field), text);
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            EXPECT_EQ(QApplication::focusWidget(), hands::Control(dialog, field));
        },
        "cmdCancel");
    EXPECT_EQ(Messages.Texts, QStringList{message});
    EXPECT_EQ(Messages.Titles, QStringList{title});
}

void RunCheck::ExpectEditedByMouseAndKeys() {
    int opened = 0;
    const auto giveUp = [&opened](QWidget& dialog) {
        ++opened;
        QTest::keyClick(&dialog, Qt::Key_Escape);
    };
    hands::WhenModal(EditWindow(), giveUp);
    QTest::mouseDClick(&Picture(), Qt::LeftButton);
    EXPECT_EQ(opened, 1);
    hands::WhenModal(EditWindow(), giveUp);
    QWidget& edit = *hands::Control(Child(), EditButton());
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(opened, 2);
}

void RunCheck::ExpectOutputMenuWhileValid() {
    auto& menu = *Window().findChild<QMenu*>("mnuOutput");
    QTest::mouseClick(&Picture(), Qt::RightButton);
    EXPECT_TRUE(menu.isVisible());
    menu.hide();
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    QTest::mouseClick(&Picture(), Qt::RightButton);
    EXPECT_FALSE(menu.isVisible());
}

namespace {

// How dark the darkest point of what the widget shows is, the frame of the focus left out: 0 black,
// 255 white.
int Darkest(QWidget& widget) {
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    int darkest = 255;
    for (int y = 1; y < image.height() - 1; ++y)
        for (int x = 1; x < image.width() - 1; ++x)
            darkest = std::min(darkest, qGray(image.pixel(x, y)));
    return darkest;
}

} // namespace

void RunCheck::ExpectDimmedWhileStale() {
    const QString name = Picture().accessibleName();
    const QSize size = Picture().size();
    const auto expectStale = [&](bool isStale) {
        hands::Settle();
        EXPECT_EQ(hands::Control(Child(), "lblStale")->isVisible(), isStale);
        EXPECT_EQ(Picture().accessibleName(), name + (isStale ? ", not up to date" : ""));
        EXPECT_EQ(Picture().size(), size) << "nothing moves";
        const int darkest = Darkest(Picture());
        EXPECT_TRUE(isStale ? darkest > 100 && darkest < 200 : darkest < 60) << darkest;
    };
    expectStale(false);
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    expectStale(true);
    const auto* says = hands::Control<QLabel>(Child(), "lblStale");
    EXPECT_EQ(says->text(), "Not up to date: press OK.");
    EXPECT_GE(says->width(), says->sizeHint().width()) << "not cut";
    PressOk();
    expectStale(false);
    // A run that is refused leaves it so.
    const QString step = hands::TextOf(Parameters(), "txtXstepValue");
    TypeIntoBox("txtXstepValue", "0");
    expectStale(true);
    PressOk();
    expectStale(true);
    TypeIntoBox("txtXstepValue", step);
    expectStale(true);
}

} // namespace quorvanta
