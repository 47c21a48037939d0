// Windows in large type and from right to left: no text is cut off, no control lies over another,
// and none leaves its window.
#include "output/xyzplot.h"
#include "tour/hands.h"
#include "tour/windows.h"
#include "ui/distrpicture.h"
#include "ui/picturefiles.h"
#include "ui/plotpicture.h"
#include "ui/program.h"
#include "ui/qttext.h"
#include "ui/simpicture.h"
#include "ui/valuebox.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionComboBox>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <typeinfo>

namespace quorvanta {
namespace {

class Surveyor : public WindowVisitor {
  public:
    void Take(const QString& name, QWidget& window) override {
        hands::Settle();
        name_ = name;
        if (name.startsWith("printPreview") || name.startsWith("frmCmdialog"))
            return; // Qt's own
        ++Windows;
        (void)window.grab(); // lays out a window that isn't shown
        ExpectOnScreen(window);
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&window) || IsApart(*widget, window))
                continue;
            ++Controls;
            ExpectTextInFull(*widget);
            ExpectInside(*widget, window);
            ExpectApartFromSiblings(*widget);
        }
    }

    int Windows = 0;
    int Controls = 0;

  private:
    // What scrolls, what Qt makes a control of, and what is there for the focus alone.
    static bool IsApart(const QWidget& widget, const QWidget& window) {
        if (widget.objectName().startsWith("qt_") || widget.objectName() == "txtHide" ||
            widget.isWindow())
            return true;
        for (const QWidget* parent = widget.parentWidget(); parent != nullptr && parent != &window;
             parent = parent->parentWidget())
            if (parent->inherits("QAbstractScrollArea") || parent->inherits("QTabBar") ||
                parent->inherits("QComboBox") || parent->inherits("QMdiSubWindow") ||
                parent->inherits("QLineEdit") || parent->isWindow())
                return true;
        return widget.parentWidget()->inherits("QMdiSubWindow") ||
               widget.parentWidget()->inherits("QAbstractScrollArea");
    }

    std::string Where(const QWidget& widget) const {
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        const auto* label = qobject_cast<const QLabel*>(&widget);
        const QString text = button ? button->text() : label ? label->text().left(40) : QString();
        return FromQt(QString("%1: %2 (%3) %4 at %5,%6 %7x%8")
                          .arg(name_, widget.objectName(), widget.metaObject()->className(), text)
                          .arg(widget.x())
                          .arg(widget.y())
                          .arg(widget.width())
                          .arg(widget.height()));
    }

    void ExpectOnScreen(const QWidget& window) const {
        const QSize room = window.screen()->availableSize();
        EXPECT_LE(window.width(), room.width()) << Where(window);
        EXPECT_LE(window.height(), room.height()) << Where(window);
    }

    void ExpectTextInFull(const QWidget& widget) const {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            const bool wraps = label->wordWrap();
            const QSize needed =
                wraps ? QSize(0, label->heightForWidth(label->width())) : label->minimumSizeHint();
            EXPECT_GE(label->width(), needed.width()) << Where(widget);
            EXPECT_GE(label->height(), needed.height()) << Where(widget);
        } else if (const auto* box = qobject_cast<const QGroupBox*>(&widget)) {
            EXPECT_GE(box->width(),
                      box->fontMetrics().size(Qt::TextShowMnemonic, box->title()).width())
                << Where(widget);
            EXPECT_GE(box->height(), box->minimumSizeHint().height()) << Where(widget);
        } else if (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                   qobject_cast<const QComboBox*>(&widget) != nullptr) {
            const QSize needed = widget.minimumSizeHint();
            EXPECT_GE(widget.width(), needed.width()) << Where(widget);
            EXPECT_GE(widget.height(), needed.height()) << Where(widget);
        } else if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
            EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << Where(widget);
            EXPECT_GE(widget.width(), widget.minimumSizeHint().width()) << Where(widget);
        }
    }

    void ExpectInside(const QWidget& widget, const QWidget& window) const {
        const QRect place(widget.mapTo(&window, QPoint()), widget.size());
        // From right to left Qt's splitter is one pixel off.
        const QMargins slack(1, 1, 1, 1);
        EXPECT_TRUE((window.rect() + slack).contains(place)) << Where(widget);
        EXPECT_TRUE((widget.parentWidget()->rect() + slack).contains(widget.geometry()))
            << Where(widget);
    }

    void ExpectApartFromSiblings(const QWidget& widget) const {
        for (const QObject* child : widget.parentWidget()->children()) {
            const auto* other = qobject_cast<const QWidget*>(child);
            if (other == nullptr || other <= &widget || other->isHidden() || other->isWindow() ||
                other->objectName() == "txtHide" || other->inherits("QRubberBand") ||
                other->inherits("QSplitterHandle"))
                continue;
            EXPECT_FALSE(widget.geometry().intersects(other->geometry()))
                << Where(widget) << " and " << Where(*other);
        }
    }

    QString name_;
};

struct Setting {
    const char* Name;
    f64 Points; // 0: as it is
    Qt::LayoutDirection Direction;
};

void PrintTo(const Setting& setting, std::ostream* out) {
    *out << setting.Name;
}

class Layouts : public testing::TestWithParam<Setting> {
  protected:
    Layouts() : font_(QApplication::font()) {
        if (GetParam().Points > 0) {
            QFont large = font_;
            large.setPointSizeF(GetParam().Points);
            QApplication::setFont(large);
        }
        QApplication::setLayoutDirection(GetParam().Direction);
    }
    ~Layouts() override {
        QApplication::setFont(font_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

  private:
    QFont font_;
};

TEST_P(Layouts, LeaveEveryControlWhole) {
    Program program;
    Surveyor surveyor;
    WalkWindows(program.Window(), surveyor);
    EXPECT_GT(surveyor.Windows, 45);
    EXPECT_GT(surveyor.Controls, 450);
}

// What the widget shows with windows from right to left is what it shows otherwise.
template <class Widget>
void ExpectTheSameBothWays(const std::function<Widget*()>& make) {
    QImage pictures[2];
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        const std::unique_ptr<Widget> widget(make());
        widget->resize(widget->sizeHint());
        pictures[direction] = widget->grab().toImage();
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(pictures[0], pictures[1]) << typeid(Widget).name();
}

// A number with its minus behind it, or an axis with its ends exchanged, would be another number.
TEST(RightToLeft, NumbersAndPicturesStayAsTheyAre) {
    const Program program;
    ExpectTheSameBothWays<ValueBox>([] {
        auto* box = new ValueBox(nullptr);
        box->Write("-0.25");
        return box;
    });
    ExpectTheSameBothWays<DistrPicture>([] {
        auto* picture = new DistrPicture(nullptr);
        DistrCurve curve;
        curve.Label = "H0";
        curve.Points = {{-3.5, 0}, {0, 1}, {3.8, 0}};
        picture->Draw({curve});
        return picture;
    });
    ExpectTheSameBothWays<SimPicture>([] {
        auto* picture = new SimPicture(nullptr);
        std::vector<SimPoint> points(2);
        points[0].SimNo = 10;
        points[1].SimNo = 20;
        points[1].Power = 0.5F;
        picture->Draw(points, "Power");
        return picture;
    });
    Presentation plot;
    plot.Title = {"(1)"};
    plot.X.ReDim(1, 2);
    plot.X(1) = -2;
    plot.X(2) = -1;
    plot.Y.ReDim(1, 2, 1, 1);
    plot.Y(1, 1) = -5;
    plot.Y(2, 1) = -3;
    ExpectTheSameBothWays<PlotPicture>([&plot] {
        auto* picture = new PlotPicture("picture", nullptr);
        picture->Draw(plot, "words");
        return picture;
    });
    QImage files[2];
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        files[direction] =
            PictureOf([&plot](Surface& surface) { PlotGraph(surface, plot); }, QSizeF(3, 2));
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(files[0], files[1]);
}

INSTANTIATE_TEST_SUITE_P(Desktops, Layouts,
                         testing::Values(Setting{"usual", 0, Qt::LeftToRight},
                                         Setting{"rightToLeft", 0, Qt::RightToLeft},
                                         Setting{"large", 18, Qt::LeftToRight},
                                         Setting{"largeRightToLeft", 20, Qt::RightToLeft}),
                         [](const auto& info) { return std::string(info.param.Name); });

} // namespace
} // namespace quorvanta
