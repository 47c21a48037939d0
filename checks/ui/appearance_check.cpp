// What is drawn: nothing cut, everything legible, in light and dark palettes, with large fonts and
// at twice the resolution (for which this suite runs a second time).
#include "core/analysis_state.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "ui/childwindow.h"
#include "ui/frmnewwindow.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStyleFactory>
#include <QTableWidget>

#include <cmath>

namespace quorvanta {
namespace {

// Relative luminance and contrast ratio as the Web Content Accessibility Guidelines 2.1 define
// them; 4.5 is their minimum for text.
f64 Luminance(const QColor& color) {
    const auto linear = [](f64 c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(static_cast<f64>(color.redF())) +
           0.7152 * linear(static_cast<f64>(color.greenF())) +
           0.0722 * linear(static_cast<f64>(color.blueF()));
}

f64 Contrast(const QColor& a, const QColor& b) {
    const f64 la = Luminance(a);
    const f64 lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

constexpr f64 legible = 4.5;

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    return dark;
}

void ExpectNothingCut(const QWidget& window) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName() == "txtHide")
            continue;
        const bool hasText = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                             qobject_cast<const QGroupBox*>(widget) != nullptr ||
                             qobject_cast<const QLineEdit*>(widget) != nullptr;
        if (hasText) {
            EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
                << qPrintable(widget->objectName());
            EXPECT_GE(widget->height(), widget->minimumSizeHint().height())
                << qPrintable(widget->objectName());
        }
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            const int needed = label->wordWrap() ? label->heightForWidth(label->width())
                                                 : label->sizeHint().height();
            EXPECT_GE(label->height(), needed) << qPrintable(label->text());
        }
        if (const auto* box = qobject_cast<const QGroupBox*>(widget)) {
            EXPECT_GE(box->width(), box->fontMetrics().horizontalAdvance(box->title()))
                << qPrintable(box->title());
        }
    }
}

class Appearance : public WindowCheck {
  protected:
    Appearance() : palette_(QApplication::palette()), font_(QApplication::font()) {}
    ~Appearance() override {
        QApplication::setPalette(palette_);
        QApplication::setFont(font_);
    }

    static void ExpectLegible(const ValueBox& box) {
        EXPECT_GE(
            Contrast(box.palette().color(QPalette::Text), box.palette().color(QPalette::Base)),
            legible)
            << qPrintable(box.accessibleName());
    }

    // Both kinds of boxes that have colours of their own: grey, and blue on either background.
    void ExpectEveryBoxLegible() {
        OpenTTest();
        HasGridData = True;
        for (const int blue : {2, int{UnknownParNo}}) {
            ParKind(blue) = 34;
            ParText(Kind::SdOfMeans) = "1";
            for (const i16 calculated : {True, False}) {
                Calculated = calculated;
                Child().Refresh();
                for (int i = 0; i <= NoOfPar; ++i)
                    ExpectLegible(Box(i));
            }
        }
    }

    QPalette palette_;
    QFont font_;
};

TEST_F(Appearance, CutsNoText) {
    OpenTTest();
    ExpectNothingCut(Child());
    Trigger("mnuStudent(0)");
    ExpectNothingCut(Options());
    frmNewWindow question(&Window(), true);
    question.show();
    hands::Settle();
    ExpectNothingCut(question);
}

TEST_F(Appearance, CutsNoTextInLargeType) {
    QFont large = font_;
    large.setPointSizeF(font_.pointSizeF() * 2);
    QApplication::setFont(large);
    OpenTTest();
    ExpectNothingCut(Child());
    Trigger("mnuStudent(0)");
    ExpectNothingCut(Options());
    frmNewWindow question(&Window(), true);
    question.show();
    hands::Settle();
    ExpectNothingCut(question);
}

// Every label of the catalogue in the place of a parameter.
TEST_F(Appearance, ShowsEveryLabelInFull) {
    for (i16 kind = 0; kind <= MaxKind; kind = static_cast<i16>(kind + NoOfPar + 1)) {
        Trigger("mnuFile(0)");
        Trigger("mnuStudent(0)");
        AcceptOptions();
        for (i16 i = 0; i <= NoOfPar; ++i)
            ParKind(i) = static_cast<i16>(std::min<int>(kind + i, MaxKind));
        Child().Refresh();
        Child().FitToContent();
        hands::Settle();
        for (i16 i = 0; i <= NoOfPar; ++i) {
            const QString text = ToQt(ParLabel(ParKind(i)));
            const QFontMetrics metrics = Label(i).fontMetrics();
            EXPECT_GE(Label(i).width(), metrics.size(Qt::TextShowMnemonic, text).width())
                << qPrintable(text);
        }
        Messages.Answers = {QMessageBox::No};
        CloseChild();
    }
}

TEST_F(Appearance, IsLegibleInALightPalette) {
    ExpectEveryBoxLegible();
}

TEST_F(Appearance, IsLegibleInADarkPalette) {
    QApplication::setPalette(DarkPalette());
    ExpectEveryBoxLegible();
    EXPECT_EQ(Box(3).palette().color(QPalette::Base), QColor(35, 35, 35));
}

TEST_F(Appearance, FollowsAChangeOfThePalette) {
    OpenTTest();
    ParKind(2) = 34;
    HasGridData = True;
    Child().Refresh();
    const QColor blue = Box(2).palette().color(QPalette::Text);
    QApplication::setPalette(DarkPalette());
    hands::Settle();
    EXPECT_NE(Box(2).palette().color(QPalette::Text), blue);
    ExpectLegible(Box(2));
    ExpectLegible(Box(3));
    const QImage area = Area().viewport()->grab().toImage();
    EXPECT_LT(area.pixelColor(area.width() - 3, area.height() - 3).lightness(), 128);
}

// No box is brighter than those that hold a value.
TEST_F(Appearance, DoesNotGlareInADarkPalette) {
    QApplication::setPalette(DarkPalette());
    OpenTTest();
    Type(3, "0.4");
    ASSERT_TRUE(Box(1).IsGrey());
    EXPECT_LT(Box(1).palette().color(QPalette::Base).lightness(), 128);
    EXPECT_GT(Contrast(Box(1).palette().color(QPalette::Base), QColor(35, 35, 35)), 1.3)
        << "and still told apart";
    ExpectLegible(Box(1));
}

// The strongest contrast to its ground within the buttons of a window's title bar.
f64 ButtonContrast(QMdiSubWindow& frame) {
    const QImage image = frame.grab().toImage();
    const qreal ratio = image.devicePixelRatio();
    const int title = static_cast<int>(frame.fontMetrics().height() * ratio);
    const int width = 4 * title;
    f64 strongest = 1;
    const QColor ground = image.pixelColor(image.width() / 3, title / 2);
    for (int y = title / 3; y < title; ++y)
        for (int x = image.width() - width; x < image.width() - title / 2; ++x)
            strongest = std::max(strongest, Contrast(image.pixelColor(x, y), ground));
    return strongest;
}

TEST_F(Appearance, ShowsTheButtonsOfAnInactiveWindow) {
    for (const bool isDark : {false, true}) {
        if (isDark)
            QApplication::setPalette(DarkPalette());
        Trigger("mnuFile(0)");
        Trigger("mnuFile(0)");
        auto* behind = Area().subWindowList().front();
        ASSERT_NE(behind, Area().activeSubWindow());
        constexpr f64 visible = 3; // the minimum of the same guidelines for what is no text
        EXPECT_GT(ButtonContrast(*behind), visible) << (isDark ? "dark" : "light");
    }
}

// Between the first two cells of the first row.
TEST_F(Appearance, ShowsTheLinesOfATable) {
    OpenTTest();
    for (const bool isDark : {false, true}) {
        if (isDark)
            QApplication::setPalette(DarkPalette());
        hands::WhenModal("frmGridTable", [isDark](QWidget& window) {
            auto& table = *hands::Control<QTableWidget>(window, "tblGrid");
            const QImage image = table.viewport()->grab().toImage();
            const QRect cell = table.visualRect(table.model()->index(1, 0));
            const qreal ratio = image.devicePixelRatio();
            const auto colorAt = [&](int x) {
                return image.pixelColor(static_cast<int>(x * ratio),
                                        static_cast<int>((cell.top() + 2) * ratio));
            };
            EXPECT_GT(Contrast(colorAt(cell.right() + 1), colorAt(cell.right() - 1)), 1.3)
                << (isDark ? "dark" : "light");
            hands::Click(window, "cmdCancel");
        });
        ShowGrids({{.Store = 1, .Rows = 3, .Columns = 2}}, "H1: &Mean");
    }
}

TEST_F(Appearance, DrawsAtTheResolutionOfTheScreen) {
    OpenTTest();
    const QPixmap picture = Child().grab();
    const qreal ratio = Window().screen()->devicePixelRatio();
    EXPECT_EQ(picture.devicePixelRatio(), ratio);
    EXPECT_EQ(picture.width(), std::lround(Child().width() * ratio));
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        EXPECT_EQ(ratio, qgetenv("QT_SCALE_FACTOR").toDouble());
    }
}

TEST_F(Appearance, AlignsTheColumns) {
    OpenTTest();
    for (int i = 1; i <= NoOfPar; ++i) {
        EXPECT_EQ(Label(i).x(), Label(0).x());
        EXPECT_EQ(Label(i).width(), Label(0).width());
        EXPECT_EQ(Box(i).x(), Box(0).x());
        EXPECT_EQ(Box(i).width(), Box(0).width());
        EXPECT_EQ(Box(i).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    }
    EXPECT_GE(Box(0).width(), Box(0).fontMetrics().horizontalAdvance("0123456789.12"));
}

TEST_F(Appearance, MovesNothingWhenTheUnknownChanges) {
    OpenTTest();
    const QRect label = Label(5).geometry();
    const QSize window = Child().size();
    Press(5);
    EXPECT_EQ(Label(5).geometry(), label);
    EXPECT_EQ(Child().size(), window);
}

} // namespace
} // namespace quorvanta
