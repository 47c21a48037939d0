// The Table window: its numbers, blocks, scroll bars and settings, drawn and by keys and mouse.
#include "core/records.h"
#include "core/setup.h"
#include "ui/paint_record.h"
#include "ui/qttext.h"
#include "ui/run_fixture.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <functional>

namespace quorvanta {
namespace {

class TableWindowCheck : public RunCheck {
  protected:
    TableWindowCheck() {
        OpenRunWindow(NewTable);
        AskForSizes("0.9", "0.4", "1.2", "0.2", "0.8 1 1.2");
    }

    QScrollBar& HBar() { return *hands::Control<QScrollBar>(Child(), "HScroll1"); }
    QScrollBar& VBar() { return *hands::Control<QScrollBar>(Child(), "VScroll1"); }
    QWidget& Room() { return *Picture().parentWidget(); } // where the picture is seen
    QWidget& Frame() { return *Child().parentWidget(); }
    PaintRecord Drawn() { return RecordPaint(Picture()); }

    // What a screen reader is told of the table.
    QAccessibleInterface& Heard() { return *QAccessible::queryAccessibleInterface(&Picture()); }
    QVector<QStringList> HeardCells() {
        QVector<QStringList> cells;
        const QAccessibleTableInterface& table = *Heard().tableInterface();
        for (int row = 0; row < table.rowCount(); ++row) {
            cells << QStringList();
            for (int column = 0; column < table.columnCount(); ++column)
                cells.last() << table.cellAt(row, column)->text(QAccessible::Name);
        }
        return cells;
    }

    void ExpectScrolled(int x, int y) {
        EXPECT_EQ(HBar().value(), x);
        EXPECT_EQ(VBar().value(), y);
        EXPECT_EQ(Picture().pos(), QPoint(-x, -y));
    }
};

// --- Numbers ----------------------------------------------------------------------------------

// power.t.test(delta, sd, power = 0.9, sig.level = 0.05, strict = TRUE) of R 4.2.2 gives, for
// delta 0.4, 0.6, 0.8, 1.0, 1.2: sd 0.8: 85.0313, 38.346, 22.0211, 14.481, 10.4015; sd 1: 132.3105,
// 59.3516, 33.8255, 22.0211, 15.6197; sd 1.2: 190.0991, 85.0313, 48.2643, 31.2537, 22.0211. Whole
// subjects are the next whole number.
TEST_F(TableWindowCheck, ShowsTheSizesOfTheTTest) {
    const QVector<QStringList> expected{
        {"0.4", "86", "133", "191"}, {"0.6", "39", "60", "86"}, {"0.8", "23", "34", "49"},
        {"1.0", "15", "23", "32"},   {"1.2", "11", "16", "23"},
    };
    const auto rows = Drawn().Rows();
    ASSERT_GE(rows.size(), expected.size());
    EXPECT_EQ(rows.last(expected.size()), expected);
}

// Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd ed. (1988), table 2.4.1:
// two-tailed 0.05, power 0.80, d = 0.20, 0.50, 0.80 need 393, 64 and 26. His 393 is short of the
// power by a hair: R has 393.4057, 63.7656, 25.5246.
TEST_F(TableWindowCheck, ShowsTheSizesOfCohensTable) {
    Choose(XRole, Mean1);
    hands::TypeInto(Parameters(), FixedBox(Power).objectName(), "0.80");
    TypeIntoBox("txtXminValue", "0.2");
    TypeIntoBox("txtXmaxValue", "0.8");
    TypeIntoBox("txtXstepValue", "0.3");
    TypeIntoBox("txtZValue", "1");
    PressOk();
    const QVector<QStringList> expected{{"0.2", "394"}, {"0.5", "64"}, {"0.8", "26"}};
    const auto rows = Drawn().Rows();
    ASSERT_GE(rows.size(), expected.size());
    EXPECT_EQ(rows.last(expected.size()), expected);
}

// power.t.test(n = 20, delta, sd = 1, sig.level, strict = TRUE) of R 4.2.2, for sig.level 0.01,
// 0.05, 0.1, gives 0.02513, 0.09457, 0.16473; 0.08617, 0.23435, 0.34561; 0.22349, 0.45603,
// 0.58673; 0.43797, 0.69340, 0.79943; 0.67288, 0.86895, 0.92790. The steps of 0.9/5 ask for two
// decimals.
TEST_F(TableWindowCheck, ShowsThePowerOfTheTTest) {
    Choose(YRole, Power);
    Choose(ZRole, Level);
    hands::TypeInto(Parameters(), FixedBox(Size1).objectName(), "20");
    hands::TypeInto(Parameters(), FixedBox(Sd).objectName(), "1");
    TypeIntoBox("txtXminValue", "0.2");
    TypeIntoBox("txtXmaxValue", "1");
    TypeIntoBox("txtZValue", "0.01 0.05 0.1");
    PressOk();
    const QVector<QStringList> expected{
        {"0.2", "0.03", "0.09", "0.16"}, {"0.4", "0.09", "0.23", "0.35"},
        {"0.6", "0.22", "0.46", "0.59"}, {"0.8", "0.44", "0.69", "0.80"},
        {"1.0", "0.67", "0.87", "0.93"},
    };
    EXPECT_EQ(Drawn().Rows().last(5), expected);
}

TEST_F(TableWindowCheck, HasTitleHeadsAndRules) {
    const PaintRecord drawn = Drawn();
    const auto rows = drawn.Rows();
    ASSERT_EQ(rows.size(), 9);
    EXPECT_EQ(rows[0], QStringList{"Student's t-test, Unpaired, two-sided."});
    EXPECT_EQ(rows[1], QStringList{"Sample Size 1"});
    EXPECT_EQ(rows[2], QStringList{"Standard Deviation"});
    EXPECT_EQ(rows[3], (QStringList{"H1: Mean 2 - Mean 1", "0.8", "1", "1.2"}));
    EXPECT_EQ(drawn.Lines.size(), 3) << "over the heads, under them, and at the end";
}

TEST_F(TableWindowCheck, DrawsItsNumbersFlushRight) {
    const PaintRecord drawn = Drawn();
    for (const auto& column : {QStringList{"1.2", "133", "60"}, QStringList{"191", "49"}}) {
        for (const QString& text : column)
            ASSERT_NE(drawn.Find(text), nullptr) << qPrintable(text);
    }
    EXPECT_NEAR(drawn.Find("191")->Box.right(), drawn.Find("49")->Box.right(), 1);
    EXPECT_NEAR(drawn.Find("133")->Box.right(), drawn.Find("34")->Box.right(), 1);
    EXPECT_NEAR(drawn.Find("0.4")->Box.right(), drawn.Find("1.0")->Box.right(), 1);
}

// No size is large enough where the means are equal.
TEST_F(TableWindowCheck, ShowsADashWhereThereIsNoValue) {
    TypeIntoBox("txtXminValue", "0");
    TypeIntoBox("txtXmaxValue", "0.4");
    PressOk();
    EXPECT_TRUE(Messages.Texts.isEmpty());
    const auto rows = Drawn().Rows().last(3);
    EXPECT_EQ(rows[0], (QStringList{"0.0", "-", "-", "-"}));
    EXPECT_EQ(rows[2], (QStringList{"0.4", "86", "133", "191"}));
}

TEST_F(TableWindowCheck, SaysWhatToDoUntilThereIsATable) {
    Trigger(NewTable);
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"), "Choose a test or a distribution from the menus.");
    EXPECT_FALSE(Picture().isVisible());
    EXPECT_FALSE(hands::Control(Child(), "cmdEditTable")->isVisible());
    Trigger("mnuStudent(0)");
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"), "Choose the options, then press OK.");
    AcceptOptions();
    EXPECT_EQ(hands::TextOf(Child(), "lblHint"),
              "Choose the axes and the values at the side, then press OK.");
    PressOk();
    EXPECT_TRUE(Picture().isVisible());
    EXPECT_EQ(hands::TextOf(Child(), "cmdEditTable"), "Edit Table");
    EXPECT_FALSE(hands::Control(Child(), "lblHint")->isVisible());
}

// --- Reading and copying ----------------------------------------------------------------------

TEST_F(TableWindowCheck, CanBeReadToAListener) {
    EXPECT_EQ(Picture().accessibleName(), "Table");
    const QStringList lines = Picture().accessibleDescription().split('\n');
    ASSERT_EQ(lines.size(), 11);
    EXPECT_EQ(lines[0], "Student's t-test, Unpaired, two-sided.");
    EXPECT_EQ(lines[4].simplified(), "H1: Mean 2 - Mean 1 0.8 1 1.2");
    EXPECT_EQ(lines[6].simplified(), "0.4 86 133 191");
    EXPECT_EQ(lines[10].simplified(), "1.2 11 16 23");
}

// The sizes of ShowsTheSizesOfTheTTest, cell by cell.
TEST_F(TableWindowCheck, IsWalkedThroughByItsCells) {
    const QVector<QStringList> expected{
        {"H1: Mean 2 - Mean 1", "Standard Deviation 0.8", "Standard Deviation 1",
         "Standard Deviation 1.2"},
        {"0.4", "86", "133", "191"},
        {"0.6", "39", "60", "86"},
        {"0.8", "23", "34", "49"},
        {"1.0", "15", "23", "32"},
        {"1.2", "11", "16", "23"},
    };
    EXPECT_EQ(HeardCells(), expected);
    EditText("txtColumns", "2"); // as one table still
    EXPECT_EQ(HeardCells(), expected);
    QAccessibleInterface& cell = *Heard().tableInterface()->cellAt(5, 3);
    EXPECT_EQ(cell.role(), QAccessible::Cell);
    EXPECT_EQ(cell.parent(), &Heard());
    EXPECT_EQ(Heard().indexOfChild(&cell), 23);
    EXPECT_EQ(Heard().child(23), &cell);
    EXPECT_EQ(Heard().indexOfChild(&Heard()), -1);
    const auto& place = *cell.tableCellInterface();
    EXPECT_EQ(place.rowHeaderCells().value(0)->text(QAccessible::Name), "1.2");
    EXPECT_EQ(place.rowHeaderCells().value(0)->role(), QAccessible::RowHeader);
    EXPECT_EQ(place.columnHeaderCells().value(0)->text(QAccessible::Name),
              "Standard Deviation 1.2");
    EXPECT_EQ(place.columnHeaderCells().value(0)->role(), QAccessible::ColumnHeader);
    for (const auto& [row, column] : {std::pair{-1, 0}, {0, -1}, {6, 0}, {0, 4}})
        EXPECT_EQ(Heard().tableInterface()->cellAt(row, column), nullptr) << row << ' ' << column;
    EXPECT_EQ(Heard().child(24), nullptr);
    EXPECT_EQ(Heard().child(-1), nullptr);

    TypeIntoBox("txtXmaxValue", "0.8");
    TypeIntoBox("txtZValue", "1");
    PressOk();
    EXPECT_EQ(HeardCells(), (QVector<QStringList>{
                                {"H1: Mean 2 - Mean 1", "Standard Deviation 1"},
                                {"0.4", "133"},
                                {"0.6", "60"},
                                {"0.8", "34"},
                            }));
    EXPECT_FALSE(cell.isValid()) << "the table has shrunk";
    EXPECT_TRUE(cell.text(QAccessible::Name).isEmpty());
}

TEST_F(TableWindowCheck, HasNoCellsUntilThereIsATable) {
    Trigger(NewTable);
    EXPECT_TRUE(HeardCells().isEmpty());
    EXPECT_EQ(Heard().child(0), nullptr);
}

TEST_F(TableWindowCheck, IsCopiedAsTextByTheKeys) {
    hands::Click(Picture());
    EXPECT_EQ(QApplication::focusWidget(), &Picture());
    QApplication::clipboard()->clear();
    QTest::keyClick(&Picture(), Qt::Key_C, Qt::ControlModifier);
    hands::Settle();
    const QString text = QApplication::clipboard()->text();
    EXPECT_TRUE(text.simplified().contains("0.4 86 133 191 0.6 39 60 86")) << qPrintable(text);
}

TEST_F(TableWindowCheck, OpensTheOutputMenuOverAValidResultOnly) {
    ExpectOutputMenuWhileValid();
}

// --- Blocks -----------------------------------------------------------------------------------

TEST_F(TableWindowCheck, GoesOnInAFurtherBlockUnderTheFirst) {
    EditText("txtColumns", "2");
    const PaintRecord drawn = Drawn();
    const auto rows = drawn.Rows();
    ASSERT_EQ(rows.size(), 17);
    EXPECT_EQ(rows[3], (QStringList{"H1: Mean 2 - Mean 1", "0.8", "1"}));
    EXPECT_EQ(rows[4], (QStringList{"0.4", "86", "133"}));
    EXPECT_EQ(rows[11], (QStringList{"H1: Mean 2 - Mean 1", "1.2"}));
    EXPECT_EQ(rows[12], (QStringList{"0.4", "191"}));
    EXPECT_EQ(drawn.Lines.size(), 6);
}

TEST_F(TableWindowCheck, ShowsFifteenColumnsInBlocksOfFour) {
    QStringList sds;
    for (int j = 1; j <= 15; ++j)
        sds << QString::number(0.5 + 0.1 * j);
    TypeIntoBox("txtZValue", sds.join(' '));
    PressOk();
    QStringList heads;
    for (const QStringList& row : Drawn().Rows())
        if (row[0] == "H1: Mean 2 - Mean 1") {
            EXPECT_LE(row.size(), 5);
            heads << row.mid(1);
        }
    EXPECT_EQ(heads, sds);
    EXPECT_TRUE(VBar().isVisible());
}

// --- Scrolling --------------------------------------------------------------------------------

TEST_F(TableWindowCheck, HasBarsOnlyWhereThePictureIsLarger) {
    EXPECT_FALSE(HBar().isVisible());
    EXPECT_FALSE(VBar().isVisible());
    const int thickness = VBar().sizeHint().width();
    const QSize picture = Picture().size() - QSize(thickness, 0); // beside the room of a bar
    const QSize around = Frame().size() - Room().size();

    Frame().resize(picture + around); // exactly as large
    hands::Settle();
    EXPECT_FALSE(HBar().isVisible());
    EXPECT_FALSE(VBar().isVisible());

    Frame().resize(picture.width() + around.width() + 40, picture.height() + around.height() - 30);
    hands::Settle();
    EXPECT_FALSE(HBar().isVisible());
    EXPECT_TRUE(VBar().isVisible());
    EXPECT_EQ(Room().height(), picture.height() - 30);
    EXPECT_EQ(VBar().maximum(), 30);

    Frame().resize(picture.width() + around.width() - 40, picture.height() + around.height() + 60);
    hands::Settle();
    EXPECT_TRUE(HBar().isVisible());
    EXPECT_FALSE(VBar().isVisible());
    EXPECT_EQ(HBar().maximum(), 40 + 10);

    // The bar below takes its room from the height.
    Frame().resize(picture.width() + around.width() - 40, picture.height() + around.height());
    hands::Settle();
    EXPECT_TRUE(HBar().isVisible());
    EXPECT_TRUE(VBar().isVisible());
    EXPECT_EQ(VBar().maximum(), thickness);
    EXPECT_EQ(HBar().maximum(), 40 + thickness + 10);
    EXPECT_EQ(Picture().size(), picture) << "the bars move the picture and nothing else";
}

class ScrolledTable : public TableWindowCheck {
  protected:
    ScrolledTable() {
        Frame().resize(Frame().size() - QSize(60, 80));
        hands::Settle();
        EXPECT_GT(HBar().maximum(), 0);
        EXPECT_GT(VBar().maximum(), 0);
    }

    void Wheel(int dx, int dy, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        // Qt hands a wheel event on to the parents only when it comes from the desktop.
        QWidget& scrolled = *Room().parentWidget();
        const QPointF at(20, 20);
        QWheelEvent event(at, scrolled.mapToGlobal(at), {}, {dx, dy}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&scrolled, &event);
        hands::Settle();
    }
};

TEST_F(ScrolledTable, FollowsItsBars) {
    VBar().setValue(25);
    HBar().setValue(15);
    ExpectScrolled(15, 25);
    QTest::mouseClick(&VBar(), Qt::LeftButton, {}, QPoint(VBar().width() / 2, VBar().height() - 3));
    EXPECT_GT(VBar().value(), 25) << "the arrow at the end";
    ExpectScrolled(15, VBar().value());
}

TEST_F(ScrolledTable, FollowsTheKeys) {
    Picture().setFocus();
    const int line = VBar().singleStep();
    QTest::keyClick(&Picture(), Qt::Key_Down);
    ExpectScrolled(0, line);
    QTest::keyClick(&Picture(), Qt::Key_Right);
    ExpectScrolled(line, line);
    QTest::keyClick(&Picture(), Qt::Key_Up);
    QTest::keyClick(&Picture(), Qt::Key_Left);
    ExpectScrolled(0, 0);
    QTest::keyClick(&Picture(), Qt::Key_End);
    ExpectScrolled(0, VBar().maximum());
    QTest::keyClick(&Picture(), Qt::Key_Home);
    ExpectScrolled(0, 0);
    QTest::keyClick(&Picture(), Qt::Key_PageDown);
    ExpectScrolled(0, std::min(VBar().maximum(), Room().height()));
    QTest::keyClick(&Picture(), Qt::Key_PageUp);
    ExpectScrolled(0, 0);
}

TEST_F(ScrolledTable, FollowsTheWheel) {
    Wheel(0, -120);
    EXPECT_GT(VBar().value(), 0);
    EXPECT_EQ(HBar().value(), 0);
    Wheel(0, 1200);
    ExpectScrolled(0, 0);
    Wheel(-120, 0);
    EXPECT_GT(HBar().value(), 0);
    Wheel(1200, 0);
    Wheel(0, -120, Qt::ShiftModifier);
    EXPECT_GT(HBar().value(), 0);
    EXPECT_EQ(VBar().value(), 0);
}

TEST_F(ScrolledTable, ComesBackWhenTheWindowGrows) {
    VBar().setValue(VBar().maximum());
    HBar().setValue(HBar().maximum());
    Frame().resize(Frame().size() + QSize(80, 100));
    hands::Settle();
    EXPECT_FALSE(VBar().isVisible());
    EXPECT_FALSE(HBar().isVisible());
    EXPECT_EQ(Picture().pos(), QPoint(0, 0));
}

// --- Edit Table -------------------------------------------------------------------------------

TEST_F(TableWindowCheck, EditsItsSettingsUnderTheirLabels) {
    Edit(
        [](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Edit Table");
            const struct {
                const char* Label;
                const char* Field;
                Qt::Key Letter;
            } fields[] = {{"&Title:", "txtTitle", Qt::Key_T},
                          {"&No Of Columns:", "txtColumns", Qt::Key_N},
                          {"No Of &Decimals:", "txtDecimals", Qt::Key_D},
                          {"&Font Name:", "cbFontName", Qt::Key_F},
                          {"Font &Size:", "txtFontSize", Qt::Key_S}};
            auto* form = qobject_cast<QFormLayout*>(dialog.layout());
            ASSERT_NE(form, nullptr);
            for (const auto& field : fields) {
                QWidget* control = hands::Control(dialog, field.Field);
                auto* label = qobject_cast<QLabel*>(form->labelForField(control));
                ASSERT_NE(label, nullptr) << field.Field;
                EXPECT_EQ(label->text(), field.Label);
                QTest::keyClick(&dialog, field.Letter, Qt::AltModifier);
                EXPECT_TRUE(control->hasFocus()) << field.Field;
            }
            EXPECT_EQ(hands::TextOf(dialog, "chkFontBold"), "Font &Bold:");
            EXPECT_EQ(hands::TextOf(dialog, "txtColumns"), "4");
            EXPECT_EQ(hands::TextOf(dialog, "txtDecimals"), "Auto");
            EXPECT_EQ(hands::TextOf(dialog, "txtFontSize"), "9");
            EXPECT_EQ(hands::Control<QFontComboBox>(dialog, "cbFontName")->currentText(), "Arial");
            EXPECT_TRUE(hands::Control<QCheckBox>(dialog, "chkFontBold")->isChecked());
        },
        "cmdCancel");
}

TEST_F(TableWindowCheck, TakesATitleOfSeveralLines) {
    Edit([](QWidget& dialog) { ReplaceTitle(dialog, "First line\nSecond line, longer"); });
    const auto rows = Drawn().Rows();
    EXPECT_EQ(rows[0], QStringList{"First line"});
    EXPECT_EQ(rows[1], QStringList{"Second line, longer"});
    EXPECT_EQ(rows.size(), 10);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
}

TEST_F(TableWindowCheck, TakesDecimals) {
    EditText("txtDecimals", "2");
    const QStringList row = Drawn().Rows().last(5)[0];
    EXPECT_EQ(row.join(' ').count('.'), 4) << "with x";
    EXPECT_NEAR(row[2].toDouble(), 132.3105, 0.1) << "R";
    EditText("txtDecimals", "Auto");
    EXPECT_NE(Drawn().Find("133"), nullptr);
    EXPECT_EQ(OutDecimals, AutoDecimals);
}

TEST_F(TableWindowCheck, TakesAType) {
    Edit([](QWidget& dialog) {
        auto* name = hands::Control<QFontComboBox>(dialog, "cbFontName");
        name->lineEdit()->selectAll();
        QTest::keyClicks(name->lineEdit(), "Courier");
        hands::TypeInto(dialog, "txtFontSize", "12,5");
        hands::Click(dialog, "chkFontBold");
    });
    const PaintRecord drawn = Drawn();
    ASSERT_NE(drawn.Find("133"), nullptr);
    EXPECT_EQ(drawn.Find("133")->Font.family(), "Courier");
    EXPECT_EQ(drawn.Find("133")->Font.pointSizeF(), 12.5);
    EXPECT_FALSE(drawn.Find("133")->Font.bold());
}

TEST_F(TableWindowCheck, StaysAsItWasWhenTheEditIsGivenUp) {
    const QImage before = Picture().grab().toImage();
    AnalysisState(AnalysisNo).Changed = False;
    const auto change = [](QWidget& dialog) {
        ReplaceTitle(dialog, "Other");
        hands::TypeInto(dialog, "txtColumns", "1");
        hands::TypeInto(dialog, "txtFontSize", "20");
    };
    Edit(change, "cmdCancel");
    EXPECT_EQ(Picture().grab().toImage(), before);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
    EXPECT_EQ(Cancelled, False);
    EXPECT_EQ(Calculated, True);
    Edit([](QWidget& dialog) { EXPECT_EQ(hands::TextOf(dialog, "txtColumns"), "4"); }, "cmdCancel");
}

TEST_F(TableWindowCheck, RefusesSettingsThatCantBe) {
    const QImage before = Picture().grab().toImage();
    ExpectRefused("txtColumns", "", "A Value Is Missing.", "Can't Calculate.");
    ExpectRefused("txtFontSize", "", "A Value Is Missing.", "Can't Calculate.");
    ExpectRefused("txtColumns", "0", "No Of Columns Has To Be a Whole Number from 1 to 100.");
    ExpectRefused("txtDecimals", "9", "No Of Decimals Has To Be a Whole Number from 0 to 8.");
    ExpectRefused("txtFontSize", "big", "Font Size Has To Be a Number from 1 to 200.");
    EXPECT_EQ(Picture().grab().toImage(), before);
}

TEST_F(TableWindowCheck, IsEditedByADoubleClickAndByReturnOnTheButton) {
    ExpectEditedByMouseAndKeys();
}

// --- Looks ------------------------------------------------------------------------------------

TEST_F(TableWindowCheck, CutsNoTextInAnyType) {
    for (const char* size : {"8", "9", "14", "24"}) {
        Edit([size](QWidget& dialog) {
            ReplaceTitle(dialog,
                         "A title that is longer than all the columns of the table together\n2");
            hands::TypeInto(dialog, "txtFontSize", size);
        });
        const QRectF all = Picture().rect();
        const PaintRecord drawn = Drawn();
        EXPECT_EQ(drawn.Texts.size(), 2 + 1 + 1 + 4 + 5 * 4);
        for (const auto& text : drawn.Texts)
            EXPECT_TRUE(all.contains(text.Box)) << qPrintable(text.String) << " at " << size;
        for (qsizetype i = 0; i < drawn.Texts.size(); ++i)
            for (qsizetype j = i + 1; j < drawn.Texts.size(); ++j)
                EXPECT_FALSE(drawn.Texts[i]
                                 .Box.adjusted(1, 1, -1, -1)
                                 .intersects(drawn.Texts[j].Box.adjusted(1, 1, -1, -1)))
                    << qPrintable(drawn.Texts[i].String) << ", "
                    << qPrintable(drawn.Texts[j].String);
    }
}

TEST_F(TableWindowCheck, HasTheInkAndThePaperOfThePalette) {
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    hands::Settle();
    EXPECT_EQ(Drawn().Find("133")->Ink, QColor(Qt::white));
    const QImage picture = Picture().grab().toImage();
    EXPECT_EQ(picture.pixelColor(2, 2), QColor(35, 35, 35));
    QApplication::setPalette(usual);
}

// --- Several windows --------------------------------------------------------------------------

TEST_F(TableWindowCheck, KeepsItsResultBesideATableOfAnotherTest) {
    const QImage first = Picture().grab().toImage();
    const QString description = Picture().accessibleDescription();
    Trigger(NewTable);
    Trigger("mnuStudent(1)");
    AcceptOptions();
    PressOk();
    ASSERT_EQ(Calculated, True);
    const QString second = Picture().accessibleDescription();
    EXPECT_TRUE(second.startsWith("Student's t-test, Paired"));
    EditText("txtColumns", "1");

    const auto frames = Area().subWindowList();
    ASSERT_EQ(frames.size(), 2);
    QWidget& behind = *hands::Control(*frames[0]->widget(), "PicTable");
    EXPECT_EQ(behind.grab().toImage(), first) << "a window behind is drawn from its own result";
    Area().setActiveSubWindow(frames[0]);
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(Picture().accessibleDescription(), description);
    EXPECT_EQ(List(XRole).currentIndex(), Mean1);
    EXPECT_EQ(hands::TextOf(Parameters(), "txtZValue"), "0.8 1 1.2");
    Edit([](QWidget& dialog) { EXPECT_EQ(hands::TextOf(dialog, "txtColumns"), "4"); }, "cmdCancel");
    Area().setActiveSubWindow(frames[1]);
    hands::Settle();
    EXPECT_EQ(Calculated, True);
    Edit([](QWidget& dialog) { EXPECT_EQ(hands::TextOf(dialog, "txtColumns"), "1"); }, "cmdCancel");
}

TEST_F(TableWindowCheck, StaysStaleWhileAnotherWasInFront) {
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    ASSERT_EQ(Calculated, False);
    const QString drawn = Picture().accessibleDescription();
    OpenRunWindow(NewGraph);
    PressOk();
    EXPECT_EQ(Calculated, True);
    Area().setActiveSubWindow(Area().subWindowList()[0]);
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(Calculated, False);
    EXPECT_EQ(Picture().accessibleDescription(), drawn);
    EXPECT_EQ(FixedBox(Level).text(), "0.01");
}

TEST_F(TableWindowCheck, HasTheFocusWhenItIsClickedBehindAnother) {
    OpenRunWindow(NewTable);
    PressOk();
    QWidget& behind = *hands::Control(*Area().subWindowList()[0]->widget(), "PicTable");
    const QPoint corner = behind.rect().bottomLeft() + QPoint(3, -3); // seen beside the other
    QTest::mouseClick(&behind, Qt::LeftButton, {}, corner);
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 1);
    EXPECT_EQ(QApplication::focusWidget(), &behind);
    Area().setActiveSubWindow(Area().subWindowList()[1]); // as the Window menu does
    hands::Settle();
    EXPECT_EQ(AnalysisNo, 2);
    EXPECT_EQ(QApplication::focusWidget(), &Picture());
}

TEST_F(TableWindowCheck, BeginsEmptyWhenItIsOpenedAgain) {
    Messages.Answers = {QMessageBox::No};
    CloseChild();
    EXPECT_EQ(Messages.Texts, QStringList{"Table 1 Has Been Changed.\n\nSave Analysis?"});
    EXPECT_FALSE(Parameters().isVisible());
    OpenRunWindow(NewTable);
    EXPECT_FALSE(Picture().isVisible());
    EXPECT_EQ(Calculated, False);
    EXPECT_TRUE(Parameters().isVisible());
    PressOk();
    EXPECT_TRUE(Picture().isVisible());
}

// The bar of a table that is higher than the main window takes its room beside the columns.
TEST_F(TableWindowCheck, CutsNoColumnInItsFirstSize) {
    OpenRunWindow(NewTable);
    AskForSizes("0.9", "0.4", "1.9", "0.02", "0.8 1 1.2");
    ASSERT_TRUE(VBar().isVisible());
    EXPECT_FALSE(HBar().isVisible());
}

TEST_F(TableWindowCheck, IsDimmedWhileStale) {
    ExpectDimmedWhileStale();
    // An output calculates first.
    Trigger("mnuFile(10)");
    EXPECT_FALSE(hands::Control(Child(), "lblStale")->isVisible());
}

} // namespace
} // namespace quorvanta
