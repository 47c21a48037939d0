// Saves a picture of every window: quorvanta_screenshots folder light|dark dots-per-inch.
// The same program gives the same files, as far as the fonts of the machine are the same: nothing
// blinks, and no picture is taken before the windows have come to rest.
#include "tour/hands.h"
#include "tour/windows.h"
#include "ui/application.h"
#include "ui/frmvalidate.h"
#include "ui/program.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QProgressBar>
#include <QTest>

#include <algorithm>
#include <iostream>
#include <map>

namespace quorvanta {

namespace {

QPalette DarkPalette() {
    const QColor window(45, 45, 48);
    const QColor text(235, 235, 235);
    const QColor faint(140, 140, 140);
    QPalette dark(window, window);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor ink = group == QPalette::Disabled ? faint : text;
        dark.setColor(group, QPalette::WindowText, ink);
        dark.setColor(group, QPalette::Text, ink);
        dark.setColor(group, QPalette::ButtonText, ink);
        dark.setColor(group, QPalette::Base, QColor(30, 30, 30));
        dark.setColor(group, QPalette::AlternateBase, QColor(37, 37, 38));
        dark.setColor(group, QPalette::Highlight, QColor(42, 110, 187));
        dark.setColor(group, QPalette::HighlightedText, Qt::white);
        dark.setColor(group, QPalette::Link, QColor(102, 178, 255));
        dark.setColor(group, QPalette::LinkVisited, QColor(190, 160, 255));
        dark.setColor(group, QPalette::PlaceholderText, faint);
    }
    return dark;
}

int Distance(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

constexpr qsizetype mostColours = 128;

// The most frequent colours of the picture, each farther than that from all others; of more than
// can be had the first, and one more.
QList<QRgb> Palette(const std::vector<std::pair<int, QRgb>>& byFrequency, int distance) {
    QList<QRgb> colours;
    for (const auto& [frequency, colour] : byFrequency) {
        const auto isNear = [colour = colour, distance](QRgb other) {
            return Distance(colour, other) <= distance;
        };
        if (colours.size() <= mostColours && std::ranges::none_of(colours, isNear))
            colours << colour;
    }
    return colours;
}

// A picture of few colours, in which every colour is as close to its own as they allow: a third of
// the bytes, and no difference that one could see.
QImage WithFewColours(const QImage& picture) {
    std::map<QRgb, int> frequencies;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++frequencies[picture.pixel(x, y)];
    std::vector<std::pair<int, QRgb>> byFrequency;
    for (const auto& [colour, frequency] : frequencies)
        byFrequency.emplace_back(-frequency, colour);
    std::ranges::sort(byFrequency);
    QList<QRgb> colours;
    for (int distance = 0; distance == 0 || colours.size() > mostColours; ++distance)
        colours = Palette(byFrequency, distance);

    std::map<QRgb, int> places;
    for (const auto& [colour, frequency] : frequencies) {
        const auto nearest = std::ranges::min_element(
            colours, {}, [colour = colour](QRgb other) { return Distance(colour, other); });
        places[colour] = static_cast<int>(nearest - colours.begin());
    }
    QImage few(picture.size(), QImage::Format_Indexed8);
    few.setColorTable(colours);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            few.setPixel(x, y, static_cast<uint>(places[picture.pixel(x, y)]));
    return few;
}

// Lists take their final width a little after their entries, and the button that clears a box
// comes slowly.
void ComeToRest() {
    constexpr int milliseconds = 400;
    QTest::qWait(milliseconds);
    hands::Settle();
}

class Photographer : public WindowVisitor {
  public:
    Photographer(frmMain& window, QString folder) : window_(window), folder_(std::move(folder)) {}

    void Take(const QString& name, QWidget& window) override {
        ComeToRest();
        Save(name, window.grab());
    }

    void TakeAll(const QString& name) override {
        ComeToRest();
        QPixmap picture = window_.grab();
        QPainter painter(&picture);
        painter.setPen(QApplication::palette().color(QPalette::Shadow));
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other != &window_ && other->isVisible()) {
                const QRect place(other->pos() - window_.pos(), other->size());
                painter.drawPixmap(place.topLeft(), other->grab());
                painter.drawRect(place.adjusted(-1, -1, 0, 0));
            }
        painter.end();
        Save(name, picture);
    }

    void Check(int checks) const {
        if (saved_ < checks)
            qFatal("Only %d pictures", saved_);
    }

  private:
    void Save(const QString& name, const QPixmap& picture) {
        const QString path = QDir(folder_).filePath(name + ".png");
        constexpr int smallest = 0; // by compression alone
        const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
        if (!WithFewColours(image).save(path, "PNG", smallest))
            qFatal("Can't save %s", qPrintable(path));
        std::cout << qPrintable(path) << std::endl;
        ++saved_;
    }

    frmMain& window_;
    QString folder_;
    int saved_ = 0;
};

// Its report told, with the values of the program itself.
void TakeValidation(frmMain& window, Photographer& photographer) {
    const QDir home(QDir::homePath());
    frmValidate validation(&window, VALIDATE_PROGRAM, home.filePath("Quorvanta Validation.pdf"),
                           home.filePath("Quorvanta Validation.txt"));
    validation.show();
    const auto& bar = *hands::Control<QProgressBar>(validation, "pgrProgress");
    constexpr int longest = 120000; // milliseconds
    (void)QTest::qWaitFor([&bar] { return bar.isHidden(); }, longest);
    photographer.Take("frmValidate", validation);
}

} // namespace

} // namespace quorvanta

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: quorvanta_screenshots folder light|dark dots-per-inch" << std::endl;
        return 1;
    }
    quorvanta::hands::UseMemoryForDisplay(QByteArray(argv[3]).toInt());
    quorvanta::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (!QDir().mkpath(arguments[1]))
        qFatal("Can't make %s", qPrintable(arguments[1]));
    QApplication::setStyle("Fusion");
    QApplication::setCursorFlashTime(0); // no cursor comes and goes
    if (arguments[2] == "dark")
        QApplication::setPalette(quorvanta::DarkPalette());
    quorvanta::Program program;
    quorvanta::Photographer photographer(program.Window(), arguments[1]);
    quorvanta::WalkWindows(program.Window(), photographer);
    quorvanta::TakeValidation(program.Window(), photographer);
    photographer.Check(20);
    return 0;
}
