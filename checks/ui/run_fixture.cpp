#include "ui/run_fixture.h"

#include "ui/qttext.h"

#include <QAbstractItemView>
#include <QScrollArea>
#include <QTest>

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

} // namespace quorvanta
