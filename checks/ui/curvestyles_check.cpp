// Curves for those who don't see every colour: how far their colours are apart, and how they are
// chosen and drawn.
#include "core/analysis_state.h"
#include "output/curvestyles.h"
#include "output/distrplot.h"
#include "ui/childwindow.h"
#include "ui/colors.h"
#include "ui/graphpicture.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QComboBox>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvanta {
namespace {

using Triple = std::array<f64, 3>;

f64 Linear(f64 c) {
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

Triple Times(const std::array<Triple, 3>& matrix, const Triple& v) {
    Triple product{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            product[i] += matrix[i][k] * v[k];
    return product;
}

enum class Sight { Full, Protanopia, Deuteranopia };

// The linear components as that eye takes them for: F. Vienot, H. Brettel and J. D. Mollon,
// "Digital video colourmaps for checking the legibility of displays by dichromats", Color Research
// and Application 24, 1999, equations 4 to 6.
Triple Seen(const QColor& color, Sight sight) {
    const Triple rgb = {Linear(static_cast<f64>(color.redF())),
                        Linear(static_cast<f64>(color.greenF())),
                        Linear(static_cast<f64>(color.blueF()))};
    if (sight == Sight::Full)
        return rgb;
    const std::array<Triple, 3> toLms = {
        {{17.8824, 43.5161, 4.11935}, {3.45565, 27.1554, 3.86714}, {0.0299566, 0.184309, 1.46709}}};
    const std::array<Triple, 3> toRgb = {{{0.0809444479, -0.130504409, 0.116721066},
                                          {-0.0102485335, 0.0540193266, -0.113614708},
                                          {-0.000365296938, -0.00412161469, 0.693511405}}};
    Triple lms = Times(toLms, rgb);
    if (sight == Sight::Protanopia)
        lms[0] = 2.02344 * lms[1] - 2.52581 * lms[2];
    else
        lms[1] = 0.494207 * lms[0] + 1.24827 * lms[2];
    return Times(toRgb, lms);
}

// The distance of two colours in CIE 1976 L*a*b* (ISO 11664-4), with the white of sRGB.
f64 Distance(const QColor& a, const QColor& b, Sight sight) {
    const auto lab = [sight](const QColor& color) {
        const std::array<Triple, 3> toXyz = {
            {{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
        const Triple white = {0.9505, 1, 1.089};
        Triple xyz = Times(toXyz, Seen(color, sight));
        Triple f{};
        for (std::size_t i = 0; i < 3; ++i) {
            const f64 t = std::max(0.0, xyz[i] / white[i]);
            f[i] = t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116;
        }
        return Triple{116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
    };
    const Triple one = lab(a);
    const Triple other = lab(b);
    return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

f64 SmallestDistance(const std::vector<QColor>& colors, Sight sight) {
    f64 smallest = 1000;
    for (std::size_t i = 0; i < colors.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            smallest = std::min(smallest, Distance(colors[i], colors[j], sight));
    return smallest;
}

std::vector<QColor> SafeColors(const QColor& ink, const QColor& paper) {
    std::vector<QColor> colors;
    for (int j = 1; j <= 7; ++j)
        colors.push_back(TableColor(SafeColour(j), ink, paper));
    return colors;
}

// A difference of 2.3 can just be seen; side by side in thin lines it takes several times as much.
TEST(SafeColours, StayApartForEveryEye) {
    EXPECT_NEAR(Distance(Qt::black, Qt::white, Sight::Full), 100, 0.1);
    EXPECT_NEAR(Distance(Qt::black, Qt::white, Sight::Deuteranopia), 100, 0.5);
    std::vector<QColor> told;
    for (i16 number = 0; number <= 6; ++number)
        told.push_back(TableColor(number, Qt::black, Qt::white));
    for (const Sight sight : {Sight::Full, Sight::Protanopia, Sight::Deuteranopia}) {
        EXPECT_GT(SmallestDistance(SafeColors(Qt::black, Qt::white), sight), 14);
        EXPECT_GT(SmallestDistance(SafeColors(Qt::white, QColor(30, 30, 30)), sight), 7) << "dark";
        EXPECT_TRUE(sight == Sight::Full ||
                    SmallestDistance(told, sight) <
                        SmallestDistance(SafeColors(Qt::black, Qt::white), sight))
            << "or there would be no need";
    }
}

class CurveStylesChosen : public OutputCheck {
  protected:
    CurveStylesChosen() { ChosenCurveStyles = CurveStyles::Colours; }
    ~CurveStylesChosen() override { ChosenCurveStyles = CurveStyles::Colours; }

    static void Choose(QWidget& edit, CurveStyles styles) {
        auto* list = hands::Control<QComboBox>(edit, "cbCurveStyles");
        list->setFocus();
        QTest::keyClick(list, styles == CurveStyles::Safe ? Qt::Key_Down : Qt::Key_Up);
        hands::Click(edit, "cmdOK");
    }
    QImage Picture(int graph) {
        return Window()
            .findChild<QWidget*>(ControlName("frmGraph", graph))
            ->findChild<GraphPicture*>()
            ->grab()
            .toImage();
    }
    void EditInFront(CurveStyles styles) {
        hands::WhenModal("frmEditGraph", [styles](QWidget& edit) { Choose(edit, styles); });
        hands::Click(Child(), "cmdEditGraph");
    }
};

// They are those of every graph, and back again; a file knows nothing of them.
TEST_F(CurveStylesChosen, HoldForAllGraphsAndNoFile) {
    OpenRun(GraphWindow);
    OpenRun(GraphWindow);
    hands::Settle();
    const QImage behind = Picture(1);
    const QImage inFront = Picture(2);
    NameNextFile("a.dim");
    Trigger("mnuFile(7)");
    const std::string file = ContentOf("a.dim");
    EditInFront(CurveStyles::Safe);
    EXPECT_EQ(ChosenCurveStyles, CurveStyles::Safe);
    EXPECT_NE(Picture(1), behind);
    EXPECT_NE(Picture(2), inFront);
    NameNextFile("a.dim");
    Messages.Answers = {QMessageBox::Yes};
    Trigger("mnuFile(7)");
    EXPECT_EQ(Messages.Texts.size(), 1);
    EXPECT_EQ(ContentOf("a.dim"), file);
    EditInFront(CurveStyles::Colours);
    EXPECT_EQ(Picture(1), behind);
    EXPECT_EQ(Picture(2), inFront);
}

TEST_F(CurveStylesChosen, AreGivenUpWithTheDialog) {
    OpenRun(GraphWindow);
    hands::WhenModal("frmEditGraph", [](QWidget& edit) {
        auto* list = hands::Control<QComboBox>(edit, "cbCurveStyles");
        EXPECT_EQ(list->currentText(), "Sixteen Colours");
        QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(list->currentText(), "Safe for Colour Blindness and Print");
        hands::Click(edit, "cmdCancel");
    });
    hands::Click(Child(), "cmdEditGraph");
    EXPECT_EQ(ChosenCurveStyles, CurveStyles::Colours);
}

TEST_F(CurveStylesChosen, AreThoseOfADistributionGraphToo) {
    OpenTTest();
    Trigger("mnuGetInfo(4)");
    QWidget& graph = Top("frmDistrGraph");
    const QImage colours = hands::Control(graph, "picDistrGraph")->grab().toImage();
    hands::WhenModal("frmEditGraph", [](QWidget& edit) { Choose(edit, CurveStyles::Safe); });
    hands::Click(graph, "cmdEdit");
    EXPECT_NE(hands::Control(graph, "picDistrGraph")->grab().toImage(), colours);
    NameNextFile("d.svg");
    hands::Click(graph, "cmdSave");
    EXPECT_NE(ContentOf("d.svg").find("#d55e00"), std::string::npos);
}

} // namespace
} // namespace quorvanta
