#include "tour/tour.h"

#include "tour/hands.h"
#include "ui/childwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMenuBar>
#include <QPainter>
#include <QPixmap>
#include <QTest>

namespace quorvanta {

namespace {

// One run through the windows, with its story and its pictures.
class Guide {
  public:
    Guide(frmMain& window, std::ostream& tell, QString pictureFolder)
        : window_(window), tell_(tell), pictureFolder_(std::move(pictureFolder)) {}

    void Tell(const QString& line) { tell_ << qPrintable(line) << std::endl; }

    // The windows as they stand on the screen, without the frames that the desktop adds.
    void Picture(const QString& name) {
        if (pictureFolder_.isEmpty())
            return;
        hands::Settle();
        QRect area = window_.geometry();
        QWidgetList shown{&window_};
        for (QWidget* other : QApplication::topLevelWidgets()) {
            if (other == &window_ || !other->isVisible())
                continue;
            area = area.united(other->geometry());
            shown << other;
        }
        const qreal ratio = window_.devicePixelRatio();
        QPixmap picture(area.size() * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(QApplication::palette().color(QPalette::Mid));
        QPainter painter(&picture);
        painter.setPen(QApplication::palette().color(QPalette::Shadow));
        for (QWidget* each : shown) {
            const QRect place = each->geometry().translated(-area.topLeft());
            painter.drawPixmap(place.topLeft(), each->grab());
            painter.drawRect(place.adjusted(0, 0, -1, -1));
        }
        painter.end();
        ++pictureNo_;
        const QString path =
            QDir(pictureFolder_).filePath(QString("%1-%2.png").arg(pictureNo_).arg(name));
        if (picture.save(path))
            Tell("  picture: " + path);
        else
            Tell("  picture not saved: " + path);
    }

    void Type(const QString& label, const QString& text) {
        hands::TypeInto(*Child(), BoxOf(label), text);
        Tell(QString("  types %1 into \"%2\"").arg(text, label));
    }

    // The value box beside the label of that text.
    QString BoxOf(const QString& label) {
        for (int i = 0; i <= MaxPar; ++i) {
            const QString name = QString("cmdParLabel(%1)").arg(i);
            if (hands::Control(*Child(), name)->isVisible() &&
                hands::TextOf(*Child(), name) == label)
                return QString("txtParValue(%1)").arg(i);
        }
        qFatal("No label %s", qPrintable(label));
    }

    static QString LabelOf(const QString& box) {
        return QString(box).replace("txtParValue", "cmdParLabel");
    }

    QString Press(const QString& label) {
        const QString box = BoxOf(label);
        hands::Click(*Child(), LabelOf(box));
        const QString value = hands::TextOf(*Child(), box);
        Tell(QString("  presses \"%1\" and reads %2").arg(label, value));
        return value;
    }

    ChildWindow* Child() {
        ChildWindow* child = window_.CurrentChild();
        if (child == nullptr)
            qFatal("No child window");
        return child;
    }

  private:
    frmMain& window_;
    std::ostream& tell_;
    QString pictureFolder_;
    int pictureNo_ = 0;
};

} // namespace

TourReading RunTour(frmMain& window, std::ostream& tell, const QString& pictureFolder) {
    Guide guide(window, tell, pictureFolder);
    TourReading reading;

    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        guide.Tell("The main window is not drawn.");
    guide.Tell("The main window is open; no analysis yet.");
    constexpr int patience = 500; // milliseconds; without a window manager it never happens
    (void)QTest::qWaitForWindowActive(&window, patience);
    guide.Picture("main-window");

    const QStringList road{"&Parametric Tests", "&Student's t-test", "&Unpaired"};
    guide.Tell("Chooses the menu " + road.join(" > ") + ".");
    hands::WhenModal("frmNewWindow", [&guide](QWidget& question) {
        guide.Tell("Is asked for a window and takes \"New &Calculation\".");
        guide.Picture("new-window");
        hands::Click(question, "optWindow(0)");
        hands::Click(question, "cmdCont");
    });
    hands::ChooseMenu(*window.menuBar(), road);

    QWidget* options = hands::TopWindow("frmShowSmp");
    if (options == nullptr)
        qFatal("The options did not open");
    guide.Tell("Chooses two-sided, the mean of group 2 as a difference and its size as a ratio.");
    hands::Click(*options, "optTails(1)");
    hands::Click(*options, "optIntPar0(1)");
    hands::Click(*options, "optIntPar1(2)");
    guide.Picture("options");
    hands::Click(*options, "cmdOK");

    reading.Headline = hands::TextOf(*guide.Child(), "lblHead1");
    guide.Tell("The Calculation window says: " + reading.Headline);
    guide.Picture("start-values");
    guide.Tell("Types the values of the plan.");
    guide.Type("S&ignificance Level", "0.05");
    guide.Type("&Power", "0.80");
    guide.Type("H&0: Mean 2 - Mean 1", "0");
    guide.Type("H1: M&ean 2 - Mean 1", "0.5");
    guide.Type("&Standard Deviation", "1");
    guide.Type("Sample Size &2 / Sample Size 1", "1");
    guide.Picture("values-typed");
    guide.Tell("Asks for the sample size.");
    reading.SampleSize = guide.Press("Sample Size &1");
    guide.Picture("sample-size");

    guide.Tell("Asks for the power that this whole number of subjects has.");
    reading.Power = guide.Press("&Power");
    guide.Picture("power");
    guide.Tell(QString("Result: %1 subjects in each group, power %2.")
                   .arg(reading.SampleSize, reading.Power));
    return reading;
}

} // namespace quorvanta
