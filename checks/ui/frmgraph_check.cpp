// The Graph window: the places of its lines and texts, its settings, and its looks in many cases.
#include "core/records.h"
#include "ui/paint_record.h"
#include "ui/qttext.h"
#include "ui/run_fixture.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QTest>

#include <cmath>
#include <functional>

namespace quorvanta {
namespace {

class GraphWindowCheck : public RunCheck {
  protected:
    GraphWindowCheck() {
        OpenRunWindow(NewGraph);
        AskForSizes("0.9", "0.4", "1.2", "0.2", "0.8 1 1.2");
        // The same picture on every machine; on a screen of 96 dots an inch 3 pixels are 2.25
        // points.
        Edit([](QWidget& dialog) {
            hands::TypeInto(dialog, "txtXmin", "0,4");
            hands::TypeInto(dialog, "txtXmax", "1.2");
            hands::TypeInto(dialog, "txtXtick", "0.2");
            hands::TypeInto(dialog, "txtYmin", "0");
            hands::TypeInto(dialog, "txtYmax", "200");
            hands::TypeInto(dialog, "txtYtick", "50");
        });
    }

    QWidget& Frame() { return *Child().parentWidget(); }
    PaintRecord Drawn() { return RecordPaint(Picture()); }

    // The resolution of the type, dots an inch.
    f64 Dpi() { return Picture().logicalDpiY(); }

    // The places of the plot's edges by the margins: on the left as many digits as the longest
    // number has and 0.1 inch, on the right 0.15 inch or half of the last number, above a line and
    // a half beyond the title, below three lines.
    QRectF Plot(int longestY, int longestX, int titleLines = 1) {
        QFont font("Arial");
        font.setPointSizeF(9);
        font.setBold(true);
        const QFontMetricsF metrics(font, &Picture());
        const f64 digit = metrics.horizontalAdvance('0');
        const f64 line = metrics.height();
        const f64 left = longestY * digit + 0.1 * Dpi();
        const f64 right = Picture().width() - std::max(0.15 * Dpi(), longestX * digit / 2);
        const f64 top = (titleLines + 1.5) * line;
        const f64 bottom = Picture().height() - 3 * line;
        return {QPointF(left, top), QPointF(right, bottom)};
    }

    static QVector<PaintRecord::Line> Curves(const PaintRecord& drawn) {
        QVector<PaintRecord::Line> curves;
        for (const auto& line : drawn.Lines)
            if (line.Pen.widthF() > 1 && line.Points.size() > 2)
                curves << line;
        return curves;
    }

    void ExpectAllTextsInside(const PaintRecord& drawn, const std::string& note) {
        const QRectF all = Picture().rect();
        for (const auto& text : drawn.Texts)
            EXPECT_TRUE(all.contains(text.Box)) << qPrintable(text.String) << ", " << note;
    }

    // The part of a line's height that letters fill: all but a tenth above and below.
    static QRectF Inked(const PaintRecord::Text& text) {
        const f64 blank = text.Box.height() / 10;
        return text.Box.adjusted(0, blank, 0, -blank);
    }

    static void ExpectNoTextsMeet(const PaintRecord& drawn, const std::string& note) {
        for (qsizetype i = 0; i < drawn.Texts.size(); ++i)
            for (qsizetype j = i + 1; j < drawn.Texts.size(); ++j)
                EXPECT_FALSE(Inked(drawn.Texts[i]).intersects(Inked(drawn.Texts[j])))
                    << qPrintable(drawn.Texts[i].String) << " and "
                    << qPrintable(drawn.Texts[j].String) << ", " << note;
    }

    // No curve runs through a text.
    static void ExpectNoCurveMeetsAText(const PaintRecord& drawn, const std::string& note) {
        for (const auto& curve : Curves(drawn))
            for (qsizetype k = 1; k < curve.Points.size(); ++k)
                for (const auto& text : drawn.Texts)
                    for (int step = 0; step <= 50; ++step) {
                        const QPointF at = curve.Points[k - 1] +
                                           (curve.Points[k] - curve.Points[k - 1]) * (step / 50.0);
                        ASSERT_FALSE(Inked(text).contains(at))
                            << qPrintable(text.String) << ", " << note;
                    }
    }

    // A result of any numbers in place of the calculated one.
    void SetResult(int points, int curves, const std::function<f64(int, int)>& y) {
        TableX.ReDim(1, points);
        TableY.ReDim(1, points, 1, curves);
        ZValues.ReDim(1, curves);
        for (int j = 1; j <= curves; ++j) {
            ZValues(j) = static_cast<f32>(j) / 10;
            for (int k = 1; k <= points; ++k) {
                TableX(k) = static_cast<f32>(k) / 10;
                TableY(k, j) = static_cast<f32>(y(k, j));
            }
        }
        for (int i = 1; i <= 3; ++i)
            OutXAxis(i) = OutYAxis(i) = AutoLimit;
        Child().Refresh();
        hands::Settle();
    }
};

// --- Geometry ---------------------------------------------------------------------------------

TEST_F(GraphWindowCheck, HasItsFrameInTheToldMargins) {
    const PaintRecord drawn = Drawn();
    const QRectF plot = Plot(3, 3);
    ASSERT_FALSE(drawn.Lines.isEmpty());
    const QPolygonF frame = drawn.Lines.front().Points;
    ASSERT_EQ(frame.size(), 5);
    const QPointF corners[] = {plot.topLeft(), plot.topRight(), plot.bottomRight(),
                               plot.bottomLeft(), plot.topLeft()};
    for (int i = 0; i < 5; ++i) {
        EXPECT_NEAR(frame[i].x(), corners[i].x(), 0.01);
        EXPECT_NEAR(frame[i].y(), corners[i].y(), 0.01);
    }
}

// power.t.test(delta, sd, power = 0.9, sig.level = 0.05, strict = TRUE)$n of R 4.2.2.
TEST_F(GraphWindowCheck, DrawsEachCurveThroughTheSizesOfTheTTest) {
    const f64 sizes[3][5] = {{85.0313, 38.3460, 22.0211, 14.4810, 10.4015},
                             {132.3105, 59.3516, 33.8255, 22.0211, 15.6197},
                             {190.0991, 85.0313, 48.2643, 31.2537, 22.0211}};
    const QRectF plot = Plot(3, 3);
    const auto curves = Curves(Drawn());
    ASSERT_EQ(curves.size(), 3);
    for (int j = 0; j < 3; ++j) {
        ASSERT_EQ(curves[j].Points.size(), 5);
        for (int k = 0; k < 5; ++k) {
            const QPointF at = curves[j].Points[k];
            EXPECT_NEAR(at.x(), plot.left() + k * plot.width() / 4, 0.05);
            // 0.3 subjects: what the approximation of the noncentral t distribution leaves.
            EXPECT_NEAR(at.y(), plot.bottom() - sizes[j][k] / 200 * plot.height(),
                        0.3 / 200 * plot.height());
        }
    }
}

TEST_F(GraphWindowCheck, DrawsEachCurveInItsColourStyleAndWidth) {
    const auto curves = Curves(Drawn());
    ASSERT_EQ(curves.size(), 3);
    const QColor colours[] = {Qt::black, QColor(0, 0, 0x80), QColor(0, 0x80, 0)};
    const Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine};
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(curves[j].Pen.color(), colours[j]);
        EXPECT_EQ(curves[j].Pen.style(), styles[j]);
        EXPECT_NEAR(curves[j].Pen.widthF(), 4.0 / 144 * Dpi(), 1e-6) << "4 half points";
    }
    EditText("txtCurveWidth", "0");
    const auto wider = Curves(Drawn());
    ASSERT_FALSE(wider.isEmpty());
    EXPECT_NEAR(wider.last().Pen.widthF(), 3.0 / 144 * Dpi(), 1e-6) << "the number of the curve";
}

TEST_F(GraphWindowCheck, HasTicksAtItsNumbers) {
    const PaintRecord drawn = Drawn();
    const QRectF plot = Plot(3, 3);
    const char* xNumbers[] = {"0.4", "0.6", "0.8", "1.0", "1.2"};
    for (int k = 0; k < 5; ++k) {
        const f64 x = plot.left() + k * plot.width() / 4;
        const auto* number = drawn.Find(xNumbers[k]);
        ASSERT_NE(number, nullptr) << xNumbers[k];
        EXPECT_NEAR(number->Box.center().x(), x, 1);
        EXPECT_GT(number->Box.top(), plot.bottom());
    }
    const char* yNumbers[] = {"0", "50", "100", "150", "200"};
    for (int k = 0; k < 5; ++k) {
        const f64 y = plot.bottom() - k * plot.height() / 4;
        const auto* number = drawn.Find(yNumbers[k]);
        ASSERT_NE(number, nullptr) << yNumbers[k];
        EXPECT_NEAR(number->Box.center().y(), y, 1);
        EXPECT_NEAR(number->Box.right(), plot.left() - 0.05 * Dpi(), 1);
    }
    int ticks = 0;
    for (const auto& line : drawn.Lines)
        if (line.Points.size() == 2 && line.Pen.widthF() <= 1)
            ++ticks;
    EXPECT_EQ(ticks, 10);
}

TEST_F(GraphWindowCheck, HasTitleLabelsAndLegend) {
    const PaintRecord drawn = Drawn();
    const QRectF plot = Plot(3, 3);
    const auto* title = drawn.Find("Student's t-test, Unpaired, two-sided.");
    ASSERT_NE(title, nullptr);
    EXPECT_NEAR(title->Box.center().x(), Picture().width() / 2.0, 1);
    EXPECT_LT(title->Box.bottom(), plot.top());
    const auto* y = drawn.Find("Sample Size 1");
    ASSERT_NE(y, nullptr);
    EXPECT_LE(y->Box.bottom(), plot.top());
    EXPECT_GE(y->Box.top(), title->Box.bottom() - 1);
    const auto* x = drawn.Find("H1: Mean 2 - Mean 1");
    ASSERT_NE(x, nullptr);
    EXPECT_NEAR(x->Box.center().x(), plot.center().x(), 1);
    EXPECT_GT(x->Box.top(), plot.bottom());
    // Falling curves leave the upper right corner free.
    const auto* head = drawn.Find("Standard Deviation");
    ASSERT_NE(head, nullptr);
    EXPECT_TRUE(plot.contains(head->Box));
    EXPECT_GT(head->Box.left(), plot.center().x());
    int samples = 0;
    for (const auto& line : drawn.Lines)
        if (line.Points.size() == 2 && line.Pen.widthF() > 1) {
            EXPECT_EQ(line.Points[0].y(), line.Points[1].y());
            EXPECT_GT(line.Points[0].y(), head->Box.bottom());
            ++samples;
        }
    EXPECT_EQ(samples, 3);
}

// A two-sided test finds no size for a difference of 0 and the same one on either side of it.
TEST_F(GraphWindowCheck, BreaksACurveAtAMissingCell) {
    TypeIntoBox("txtXminValue", "-1");
    TypeIntoBox("txtXmaxValue", "1");
    TypeIntoBox("txtXstepValue", "0.5");
    TypeIntoBox("txtZValue", "1");
    PressOk();
    EXPECT_TRUE(Messages.Texts.isEmpty());
    Edit([](QWidget& dialog) {
        hands::TypeInto(dialog, "txtXmin", "-1");
        hands::TypeInto(dialog, "txtXmax", "1");
        hands::TypeInto(dialog, "txtXtick", "0.5");
    });
    const QRectF plot = Plot(3, 4);
    QVector<QPolygonF> pieces;
    for (const auto& line : Drawn().Lines)
        if (line.Pen.widthF() > 1)
            pieces << line.Points;
    ASSERT_EQ(pieces.size(), 3) << "two pieces and the sample of the legend";
    // R: 22.0211 at 1 and -1, 85.0313 at 0.5 and -0.5.
    const QPointF places[] = {{0, 22.0211}, {0.25, 85.0313}, {0.75, 85.0313}, {1, 22.0211}};
    for (int i = 0; i < 4; ++i) {
        const QPointF at = pieces[i / 2][i % 2];
        EXPECT_NEAR(at.x(), plot.left() + places[i].x() * plot.width(), 0.05);
        EXPECT_NEAR(at.y(), plot.bottom() - places[i].y() / 200 * plot.height(),
                    0.3 / 200 * plot.height());
    }
}

TEST_F(GraphWindowCheck, ShowsASingleValueAsADot) {
    TypeIntoBox("txtXminValue", "1");
    TypeIntoBox("txtXmaxValue", "1.1");
    TypeIntoBox("txtXstepValue", "0.2");
    PressOk();
    int dots = 0;
    for (const auto& line : Drawn().Lines)
        if (line.Points.size() == 1) {
            EXPECT_GE(line.Pen.widthF(), 0.06 * Dpi() - 0.01);
            EXPECT_EQ(line.Pen.capStyle(), Qt::RoundCap);
            ++dots;
        }
    EXPECT_EQ(dots, 3);
}

TEST_F(GraphWindowCheck, CutsTheCurvesAtTypedLimits) {
    EditText("txtYmax", "100");
    const QRectF plot = Plot(3, 3);
    for (const auto& curve : Curves(Drawn()))
        for (const QPointF& at : curve.Points) {
            EXPECT_GE(at.y(), plot.top() - 0.01);
            EXPECT_LE(at.y(), plot.bottom() + 0.01);
        }
}

TEST_F(GraphWindowCheck, FindsRoundLimitsByItself) {
    Edit([](QWidget& dialog) {
        for (const char* field :
             {"txtXmin", "txtXmax", "txtXtick", "txtYmin", "txtYmax", "txtYtick"})
            hands::TypeInto(dialog, field, "Auto");
    });
    const PaintRecord drawn = Drawn();
    // 5 values of x: five steps of 0.2 that hold 0.4 to 1.2; y from 10.4 to 190.1: ten of 20.
    for (const char* number : {"0.4", "1.2", "1.4", "0", "20", "180", "200"})
        EXPECT_NE(drawn.Find(number), nullptr) << number;
    for (const char* number : {"0.2", "1.6", "220", "-20", "10"})
        EXPECT_EQ(drawn.Find(number), nullptr) << number;
}

// --- Edit Graph -------------------------------------------------------------------------------

TEST_F(GraphWindowCheck, EditsItsSettingsUnderTheirLabels) {
    Edit(
        [](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Edit Graph");
            const struct {
                const char* Label;
                const char* Field;
                Qt::Key Letter; // 0: none, or one that another field has too
            } fields[] = {{"&Title:", "txtTitle", Qt::Key_T},
                          {"&Xmin:", "txtXmin", {}},
                          {"X&max:", "txtXmax", Qt::Key_M},
                          {"Xt&ick:", "txtXtick", Qt::Key_I},
                          {"&Label:", "txtXLabel", Qt::Key_L},
                          {"&Ymin:", "txtYmin", Qt::Key_Y},
                          {"Yma&x:", "txtYmax", {}},
                          {"Ytic&k:", "txtYtick", Qt::Key_K},
                          {"L&abel:", "txtYLabel", Qt::Key_A},
                          {"&ZAxis:", "txtZLabel", Qt::Key_Z},
                          {"&Font Name:", "cbFontName", Qt::Key_F},
                          {"Font &Size:", "txtFontSize", Qt::Key_S},
                          {"Curve Width:", "txtCurveWidth", {}}};
            for (const auto& field : fields) {
                QWidget* control = hands::Control(dialog, field.Field);
                const QLabel* buddy = nullptr;
                for (const QLabel* label : dialog.findChildren<QLabel*>())
                    if (label->buddy() == control)
                        buddy = label;
                ASSERT_NE(buddy, nullptr) << field.Field;
                EXPECT_EQ(buddy->text(), field.Label);
                if (field.Letter == Qt::Key())
                    continue;
                QTest::keyClick(&dialog, field.Letter, Qt::AltModifier);
                EXPECT_TRUE(control->hasFocus()) << field.Field;
            }
            QStringList heads;
            for (const QGroupBox* box : dialog.findChildren<QGroupBox*>())
                heads << box->title();
            EXPECT_EQ(heads, (QStringList{"XAxis:", "YAxis:"}));
            EXPECT_EQ(hands::TextOf(dialog, "chkFontBold"), "Font &Bold");
            EXPECT_EQ(hands::TextOf(dialog, "cmdOK"), "&OK");
            EXPECT_EQ(hands::TextOf(dialog, "cmdCancel"), "&Cancel");
            EXPECT_EQ(hands::TextOf(dialog, "txtXmin"), "0,4") << "as it was typed";
            EXPECT_EQ(hands::TextOf(dialog, "txtXLabel"), "H1: Mean 2 - Mean 1");
            EXPECT_EQ(hands::TextOf(dialog, "txtYLabel"), "Sample Size 1");
            EXPECT_EQ(hands::TextOf(dialog, "txtZLabel"), "Standard Deviation");
            EXPECT_EQ(hands::TextOf(dialog, "txtCurveWidth"), "4");
        },
        "cmdCancel");
}

TEST_F(GraphWindowCheck, FollowsTheEyeWithTheTabKeyInEditGraph) {
    Edit(
        [](QWidget& dialog) {
            hands::Control(dialog, "txtTitle")->setFocus();
            for (const char* name :
                 {"txtTitle", "txtXmin", "txtXmax", "txtXtick", "txtXLabel", "txtYmin", "txtYmax",
                  "txtYtick", "txtYLabel", "txtZLabel", "cbFontName", "txtFontSize", "chkFontBold",
                  "txtCurveWidth", "cbCurveStyles", "cmdOK", "cmdCancel"}) {
                EXPECT_EQ(QApplication::focusWidget(), hands::Control(dialog, name)) << name;
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
        },
        "cmdCancel");
}

TEST_F(GraphWindowCheck, TakesTextsAndType) {
    Edit([](QWidget& dialog) {
        ReplaceTitle(dialog, "First line\nSecond line");
        hands::TypeInto(dialog, "txtXLabel", "Difference");
        hands::TypeInto(dialog, "txtYLabel", "Subjects");
        hands::TypeInto(dialog, "txtZLabel", "SD");
        hands::TypeInto(dialog, "txtFontSize", "12");
        hands::Click(dialog, "chkFontBold");
    });
    const PaintRecord drawn = Drawn();
    for (const char* text : {"First line", "Second line", "Difference", "Subjects", "SD"}) {
        const auto* found = drawn.Find(text);
        ASSERT_NE(found, nullptr) << text;
        EXPECT_EQ(found->Font.pointSizeF(), 12);
        EXPECT_FALSE(found->Font.bold());
    }
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
}

TEST_F(GraphWindowCheck, StaysAsItWasWhenTheEditIsGivenUp) {
    const QImage before = Picture().grab().toImage();
    AnalysisState(AnalysisNo).Changed = False;
    Edit(
        [](QWidget& dialog) {
            ReplaceTitle(dialog, "Other");
            hands::TypeInto(dialog, "txtXmax", "9");
        },
        "cmdCancel");
    EXPECT_EQ(Picture().grab().toImage(), before);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
}

TEST_F(GraphWindowCheck, RefusesSettingsThatCantBe) {
    const QImage before = Picture().grab().toImage();
    for (const char* field : {"txtXmin", "txtYtick", "txtFontSize", "txtCurveWidth"})
        ExpectRefused(field, "", "A Value Is Missing.", "Can't Calculate.");
    ExpectRefused("txtXmin", "low", "Xmin Has To Be a Number or Auto.");
    ExpectRefused("txtYmax", "1e3", "Ymax Has To Be a Number or Auto.");
    ExpectRefused("txtXmin", "1.2", "Xmin Must Be < Xmax.");
    ExpectRefused("txtYmin", "300", "Ymin Must Be < Ymax.");
    ExpectRefused("txtXtick", "0", "Xtick Has To Be Greater Than 0.");
    ExpectRefused("txtCurveWidth", "51", "Curve Width Has To Be a Whole Number from 0 to 50.");
    EXPECT_EQ(Picture().grab().toImage(), before);
}

TEST_F(GraphWindowCheck, IsEditedByADoubleClickAndByReturnOnTheButton) {
    EXPECT_EQ(hands::TextOf(Child(), "cmdEditGraph"), "Edit Graph");
    ExpectEditedByMouseAndKeys();
}

// --- Room -------------------------------------------------------------------------------------

TEST_F(GraphWindowCheck, TellsOnceThatItIsTooLowAndDrawsAgainWithRoom) {
    Edit([](QWidget& dialog) {
        ReplaceTitle(dialog, "1\n2\n3\n4\n5\n6\n7");
        hands::TypeInto(dialog, "txtFontSize", "16");
    });
    const QSize roomy = Frame().size();
    Frame().resize(400, 240);
    hands::Settle();
    Frame().resize(380, 230);
    hands::Settle();
    const QStringList told{"Insufficient Resolution in the Y-direction."};
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Messages.Texts.isEmpty(); }));
    hands::Settle();
    EXPECT_EQ(Messages.Texts, told);
    EXPECT_TRUE(Picture().isVisible());
    EXPECT_TRUE(Curves(Drawn()).isEmpty());
    EXPECT_NE(Picture().grab().toImage(), QImage()) << "the message stands in the picture";
    EXPECT_FALSE(Drawn().Texts.isEmpty());
    Frame().resize(roomy);
    hands::Settle();
    EXPECT_EQ(Curves(Drawn()).size(), 3);
    EXPECT_EQ(Messages.Texts, told);
}

TEST_F(GraphWindowCheck, TellsThatItIsTooNarrow) {
    SetResult(3, 1, [](int k, int) { return -1e-6 * k; });
    Frame().resize(Frame().minimumSizeHint().width(), 700);
    EditText("txtFontSize", "40");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Messages.Texts.isEmpty(); }));
    EXPECT_EQ(Messages.Texts, QStringList{"Insufficient Resolution in the X-direction."});
}

// --- Looks ------------------------------------------------------------------------------------

TEST_F(GraphWindowCheck, CutsAndCoversNoTextInAnyType) {
    for (const char* size : {"8", "9", "12", "14", "18", "24"}) {
        EditText("txtFontSize", size);
        const PaintRecord drawn = Drawn();
        EXPECT_NE(drawn.Find("0.8"), nullptr);
        ExpectAllTextsInside(drawn, size);
        ExpectNoTextsMeet(drawn, size);
        ExpectNoCurveMeetsAText(drawn, size);
    }
}

TEST_F(GraphWindowCheck, PutsTheLegendBesideCurvesThatLeaveItNoPlace) {
    for (const int curves : {10, 15, 30}) {
        SetResult(12, curves, [](int k, int j) { return std::sin(k * j); });
        const PaintRecord drawn = Drawn();
        const std::string note = std::to_string(curves);
        ExpectAllTextsInside(drawn, note);
        ExpectNoTextsMeet(drawn, note);
        ExpectNoCurveMeetsAText(drawn, note);
        int samples = 0;
        for (const auto& line : drawn.Lines)
            samples += line.Points.size() == 2 && line.Pen.widthF() > 1 ? 1 : 0;
        EXPECT_EQ(samples, curves);
    }
}

TEST_F(GraphWindowCheck, ShowsLongTextsInLines) {
    SetResult(12, 3, [](int k, int j) { return 10.0 * k * j; });
    Edit([](QWidget& dialog) {
        ReplaceTitle(dialog,
                     "A title that is so long that it takes more than one line of the picture "
                     "however wide the picture of the graph may be on the screen, and another "
                     "half of a line\nA second line");
        hands::TypeInto(dialog, "txtXLabel",
                        "The difference between the means of the two samples under the alternative "
                        "hypothesis, in units of the standard deviation");
        hands::TypeInto(dialog, "txtYLabel",
                        "The number of subjects that the first of the two samples has to have so "
                        "that the power is reached in all of the cases");
        hands::TypeInto(dialog, "txtZLabel", "Standard deviation that both samples have in common");
    });
    const QSize usual = Frame().size();
    for (const QSize size : {usual, QSize(420, 520), QSize(900, 420)}) {
        Frame().resize(size);
        hands::Settle();
        const PaintRecord drawn = Drawn();
        const std::string note = std::to_string(size.width());
        ExpectAllTextsInside(drawn, note);
        ExpectNoTextsMeet(drawn, note);
        EXPECT_EQ(Curves(drawn).size(), 3);
    }
}

TEST_F(GraphWindowCheck, ShowsTinyHugeAndNegativeValues) {
    const std::function<f64(int, int)> cases[] = {
        [](int k, int j) { return 1e-6 * (k - 6) * j; },
        [](int k, int j) { return -8000.0 * k + j; },
        [](int, int) { return 5.0; },
        [](int k, int j) { return 1 - std::exp(-k * j); },
    };
    for (const auto& y : cases) {
        SetResult(12, 2, y);
        const PaintRecord drawn = Drawn();
        const std::string note = std::to_string(y(1, 1));
        ExpectAllTextsInside(drawn, note);
        ExpectNoTextsMeet(drawn, note);
        EXPECT_EQ(Curves(drawn).size(), 2) << note;
    }
}

TEST_F(GraphWindowCheck, IsLegibleOnADarkScreen) {
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    hands::Settle();
    SetResult(3, 14, [](int k, int j) { return k * j; });
    const PaintRecord drawn = Drawn();
    for (const auto& text : drawn.Texts)
        EXPECT_EQ(text.Ink, QColor(Qt::white));
    const auto luminance = [](const QColor& color) { // relative, of WCAG 2.1
        const auto linear = [](f64 c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    for (const auto& line : drawn.Lines)
        EXPECT_GE((luminance(line.Pen.color()) + 0.05) / (luminance(QColor(30, 30, 30)) + 0.05),
                  4.5)
            << qPrintable(line.Pen.color().name());
    QApplication::setPalette(usual);
}

TEST_F(GraphWindowCheck, IsDrawnAtTheResolutionOfTheScreen) {
    const QPixmap picture = Picture().grab();
    EXPECT_EQ(picture.width(), std::lround(Picture().width() * Picture().devicePixelRatio()));
}

// --- The rest ---------------------------------------------------------------------------------

TEST_F(GraphWindowCheck, CanBeReadToAListener) {
    EXPECT_EQ(Picture().accessibleName(), "Graph");
    const QString description = Picture().accessibleDescription();
    EXPECT_TRUE(description.startsWith("Student's t-test, Unpaired, two-sided.\n"));
    EXPECT_TRUE(description.simplified().contains("0.4 86 133 191"));
    // It goes with the drawing, not with what is typed since.
    hands::TypeInto(Parameters(), FixedBox(Level).objectName(), "0.01");
    Child().Refresh();
    EXPECT_EQ(Picture().accessibleDescription(), description);
}

TEST_F(GraphWindowCheck, StaysAsDrawnUntilOk) {
    const auto lines = [this] {
        QVector<QPolygonF> points;
        for (const PaintRecord::Line& line : Drawn().Lines)
            points << line.Points;
        return points;
    };
    const auto before = lines();
    const auto rows = Drawn().Rows();
    Choose(XRole, Power);
    TypeIntoBox("txtXminValue", "0.7");
    EXPECT_EQ(lines(), before);
    EXPECT_EQ(Drawn().Rows(), rows);
    PressOk();
    EXPECT_NE(lines(), before);
    EXPECT_NE(Drawn().Find("Power"), nullptr);
}

TEST_F(GraphWindowCheck, OpensTheOutputMenuOverAValidResultOnly) {
    ExpectOutputMenuWhileValid();
}

TEST_F(GraphWindowCheck, IsDrawnFromItsOwnResultBehindAnother) {
    const QImage first = Picture().grab().toImage();
    OpenRunWindow(NewGraph);
    PressOk();
    EditText("txtFontSize", "14");
    const auto frames = Area().subWindowList();
    ASSERT_EQ(frames.size(), 2);
    EXPECT_EQ(hands::Control(*frames[0]->widget(), "PicGraph")->grab().toImage(), first);
    Area().setActiveSubWindow(frames[0]);
    hands::Settle();
    EXPECT_EQ(Calculated, True);
    EXPECT_EQ(hands::Control(Child(), "PicGraph")->property("objectName"), "PicGraph");
    EXPECT_EQ(Curves(Drawn()).size(), 3);
    EXPECT_EQ(Drawn().Texts[0].Font.pointSizeF(), 9);
}

TEST_F(GraphWindowCheck, IsDimmedWhileStale) {
    ExpectDimmedWhileStale();
}

} // namespace
} // namespace quorvanta
