#include "core/showpar.h"
#include "output/curvestyles.h"
#include "output/scale.h"
#include "output/xyzplot.h"
#include "support/analysis_fixture.h"
#include "support/recording_surface.h"

#include <cmath>
#include <set>

namespace quorvanta::checks {
namespace {

constexpr f64 Width = 6;
constexpr f64 Height = 4;
constexpr f64 C = RecordingSurface::CharacterWidth;
constexpr f64 H = RecordingSurface::LineHeight;
constexpr f32 Missing = 99999.0F;

class Plot : public AnalysisFixture {
  protected:
    void SetUp() override {
        Main();
        OutTitle.ReDim(0, 0);
        OutTitle(0) = "Title";
        OutXAxis(0) = "Difference";
        OutYAxis(0) = "Power";
        OutZLabel.clear();
        SetCurves({0, 1, 2, 3, 4}, {{0, 10, 20, 30, 40}});
    }

    void SetCurves(const std::vector<f32>& x, const std::vector<std::vector<f32>>& curves) {
        TableX.ReDim(1, static_cast<int>(x.size()));
        std::copy(x.begin(), x.end(), TableX.Raw().begin());
        TableY.ReDim(1, static_cast<int>(curves.front().size()), 1,
                     static_cast<int>(curves.size()));
        ZValues.ReDim(1, static_cast<int>(curves.size()));
        for (std::size_t j = 0; j < curves.size(); ++j) {
            ZValues(static_cast<int>(j) + 1) = static_cast<f32>(j + 1) / 10;
            for (std::size_t k = 0; k < curves[j].size(); ++k)
                TableY(static_cast<int>(k) + 1, static_cast<int>(j) + 1) = curves[j][k];
        }
    }

    const RecordingSurface& Draw(f64 width = Width, f64 height = Height) {
        surface = RecordingSurface(width, height);
        surface.Printer = printer;
        EXPECT_TRUE(PlotGraph(surface, PresentationOf(AnalysisNo)));
        return surface;
    }

    // The first line drawn is the frame.
    static const std::vector<Point>& Frame(const RecordingSurface& drawn) {
        return drawn.Lines.front().Points;
    }

    // The lines of the curves: everything after the frame and the ticks.
    std::vector<RecordingSurface::DrawnLine> Curves() const {
        std::vector<RecordingSurface::DrawnLine> curves;
        for (const auto& line : surface.Lines)
            if (line.With.Width != 1)
                curves.push_back(line);
        return curves;
    }

    // Where x and y lie when the axes run from 0 to 4 and from 0 to 40.
    Point At(f64 x, f64 y) const {
        const auto& frame = Frame(surface);
        return {frame[0].X + x / 4 * (frame[1].X - frame[0].X),
                frame[2].Y - y / 40 * (frame[2].Y - frame[1].Y)};
    }

    static void ExpectAt(const Point& found, const Point& expected) {
        EXPECT_NEAR(found.X, expected.X, 1e-9);
        EXPECT_NEAR(found.Y, expected.Y, 1e-9);
    }

    void ExpectAllTextsInside() const {
        for (const auto& text : surface.Texts) {
            EXPECT_GE(text.At.X, 0) << text.Text;
            EXPECT_GE(text.At.Y, 0) << text.Text;
            EXPECT_LE(text.At.X + text.Width, surface.ScaleWidth() + 1e-9) << text.Text;
            EXPECT_LE(text.At.Y + text.Height, surface.ScaleHeight() + 1e-9) << text.Text;
        }
    }

    RecordingSurface surface{Width, Height};
    bool printer = false;
};

// y runs from 0 to 40: numbers of two characters.
TEST_F(Plot, TheMargins) {
    const auto& frame = Frame(Draw());
    ASSERT_EQ(frame.size(), 5U);
    ExpectAt(frame[0], {2 * C + 0.1, 2.5 * H});
    ExpectAt(frame[1], {Width - 0.15, 2.5 * H});
    ExpectAt(frame[2], {Width - 0.15, Height - 3 * H});
    ExpectAt(frame[3], {2 * C + 0.1, Height - 3 * H});
    EXPECT_EQ(frame[4], frame[0]);
}

TEST_F(Plot, ALineMoreOfTitleMovesThePlotDown) {
    OutTitle.ReDim(0, 2);
    OutTitle(0) = "One";
    OutTitle(1) = "Two";
    OutTitle(2) = "Three";
    EXPECT_NEAR(Frame(Draw())[0].Y, 4.5 * H, 1e-9);
}

TEST_F(Plot, TitlesAndLabelsAreThere) {
    Draw();
    const auto* title = surface.Find("Title");
    ASSERT_NE(title, nullptr);
    EXPECT_NEAR(title->At.X + title->Width / 2, Width / 2, 1e-9);
    ASSERT_NE(surface.Find("Difference"), nullptr);
    EXPECT_GT(surface.Find("Difference")->At.Y, Frame(surface)[2].Y);
    ASSERT_NE(surface.Find("Power"), nullptr);
    EXPECT_LE(surface.Find("Power")->At.Y + H, Frame(surface)[0].Y);
}

TEST_F(Plot, TheNumbersOfTheTicks) {
    Draw();
    // x: five values, so five steps of 1 from 0, of which the fifth lies above the data; y: ten
    // steps of 5.
    for (const char* number : {"0", "1", "2", "3", "4", "5", "10", "15", "20", "35", "40"})
        EXPECT_NE(surface.Find(number), nullptr) << number;
    EXPECT_EQ(surface.Find("6"), nullptr);
}

// A step for each point of the axis, but not more than 20.
TEST_F(Plot, TheXAxisHasAtMostTwentySteps) {
    const auto ticksOf = [this](int points) {
        std::vector<f32> x;
        for (int k = 0; k < points; ++k)
            x.push_back(static_cast<f32>(k));
        SetCurves(x, {std::vector<f32>(x.size(), 1.0F)});
        Draw();
        const f64 bottom = Frame(surface)[2].Y;
        return std::count_if(surface.Lines.begin(), surface.Lines.end(),
                             [bottom](const auto& line) {
                                 return line.With.Width == 1 && line.Points.size() == 2 &&
                                        line.Points[0].X == line.Points[1].X &&
                                        std::fabs(line.Points[0].Y - bottom) < 0.2;
                             });
    };
    EXPECT_EQ(ticksOf(11), 11 + 1);
    EXPECT_EQ(ticksOf(21), 20 + 1);
    EXPECT_EQ(ticksOf(101), 20 + 1) << "steps of 5, not of 1";
}

TEST_F(Plot, ACurveRunsThroughItsValues) {
    OutXAxis(1) = "0";
    OutXAxis(2) = "4";
    OutYAxis(1) = "0";
    OutYAxis(2) = "40";
    Draw();
    const auto curves = Curves();
    ASSERT_EQ(curves.size(), 1U);
    ASSERT_EQ(curves[0].Points.size(), 5U);
    for (int k = 0; k < 5; ++k)
        ExpectAt(curves[0].Points[static_cast<std::size_t>(k)], At(k, 10.0 * k));
}

TEST_F(Plot, AMissingCellBreaksTheCurve) {
    SetCurves({0, 1, 2, 3, 4}, {{0, 10, Missing, 30, 40}});
    Draw();
    auto curves = Curves();
    ASSERT_EQ(curves.size(), 2U);
    EXPECT_EQ(curves[0].Points.size(), 2U);
    EXPECT_EQ(curves[1].Points.size(), 2U);
    SetCurves({0, 1, 2, 3, 4}, {{0, 10, -Missing, 30, 40}});
    Draw();
    EXPECT_EQ(Curves().size(), 2U);
    SetCurves({0, 1, 2, 3, 4}, {{Missing, 10, 20, 30, Missing}});
    Draw();
    curves = Curves();
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_EQ(curves[0].Points.size(), 3U);
}

TEST_F(Plot, AValueBetweenMissingOnesIsADot) {
    SetCurves({0, 1, 2, 3, 4}, {{Missing, 10, Missing, 30, 40}});
    Draw();
    const auto curves = Curves();
    ASSERT_EQ(curves.size(), 2U);
    ASSERT_EQ(curves[0].Points.size(), 2U);
    EXPECT_EQ(curves[0].Points[0], curves[0].Points[1]);
}

TEST_F(Plot, MissingCellsDontCountForTheLimits) {
    SetCurves({0, 1, 2, 3, 4}, {{0, 10, Missing, 30, 40}, {-Missing, 1, 2, 3, 4}});
    Draw();
    EXPECT_NE(surface.Find("40"), nullptr);
    EXPECT_EQ(surface.Find("100000"), nullptr);
    EXPECT_EQ(surface.Find("-100000"), nullptr);
}

TEST_F(Plot, ARowShorterThanTheAxisEndsItsCurve) {
    SetCurves({0, 1, 2, 3, 4}, {{0, 10, 20}});
    Draw();
    ASSERT_EQ(Curves().size(), 1U);
    EXPECT_EQ(Curves()[0].Points.size(), 3U);
}

// y from 10 to 25 of a line from (0, 0) to (4, 40): it enters at x = 1 and leaves at x = 2.5.
TEST_F(Plot, TypedLimitsBeatTheAutomaticOnesAndCutTheCurve) {
    OutXAxis(1) = "0";
    OutXAxis(2) = "4";
    OutYAxis(1) = "10";
    OutYAxis(2) = "25,0";
    OutYAxis(3) = "2,5";
    Draw();
    const auto& frame = Frame(surface);
    const auto curves = Curves();
    ASSERT_EQ(curves.size(), 1U);
    const auto& points = curves[0].Points;
    ASSERT_EQ(points.size(), 3U);
    const auto x = [&frame](f64 value) {
        return frame[0].X + value / 4 * (frame[1].X - frame[0].X);
    };
    ExpectAt(points.front(), {x(1), frame[2].Y});
    ExpectAt(points.back(), {x(2.5), frame[0].Y});
    for (const char* number : {"10.0", "12.5", "25.0"})
        EXPECT_NE(surface.Find(number), nullptr) << number;
    EXPECT_EQ(surface.Find("40"), nullptr);
}

TEST_F(Plot, ACurveThatLeavesAndComesBackIsInPieces) {
    SetCurves({0, 1, 2, 3, 4}, {{10, 30, 10, 30, 10}});
    OutXAxis(1) = "0";
    OutXAxis(2) = "4";
    OutYAxis(1) = "0";
    OutYAxis(2) = "20";
    Draw();
    EXPECT_EQ(Curves().size(), 3U);
    const auto& frame = Frame(surface);
    for (const auto& line : Curves())
        for (const Point& point : line.Points) {
            EXPECT_GE(point.Y, frame[0].Y - 1e-9);
            EXPECT_LE(point.Y, frame[2].Y + 1e-9);
        }
}

TEST_F(Plot, AnEmptyStateDrawsNothing) {
    TableX = {};
    TableY = {};
    EXPECT_TRUE(PlotGraph(surface, PresentationOf(AnalysisNo)));
    EXPECT_TRUE(surface.Lines.empty());
    EXPECT_TRUE(surface.Texts.empty());
}

TEST_F(Plot, TheSurfaceIsLeftWithAPlainPen) {
    Draw();
    EXPECT_EQ(surface.LastPen.Width, 1);
    EXPECT_EQ(surface.LastPen.Style, 0);
    EXPECT_EQ(surface.LastPen.Colour, 0);
}

// --- Room -------------------------------------------------------------------------------------

TEST_F(Plot, TooNarrowASurfaceIsTold) {
    RecordingSurface narrow(0.3, Height);
    EXPECT_FALSE(PlotGraph(narrow, PresentationOf(AnalysisNo)));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Insufficient Resolution in the X-direction."});
    EXPECT_EQ(PlotProblem(narrow, PresentationOf(AnalysisNo)),
              "Insufficient Resolution in the X-direction.");
    EXPECT_TRUE(narrow.Lines.empty());
}

TEST_F(Plot, TooLowASurfaceIsTold) {
    RecordingSurface low(Width, 5.5 * H);
    EXPECT_FALSE(PlotGraph(low, PresentationOf(AnalysisNo)));
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Insufficient Resolution in the Y-direction."});
    EXPECT_TRUE(low.Lines.empty());
    RecordingSurface enough(Width, 5.5 * H + 0.02);
    EXPECT_TRUE(PlotGraph(enough, PresentationOf(AnalysisNo)));
    EXPECT_EQ(PlotProblem(enough, PresentationOf(AnalysisNo)), "");
}

TEST_F(Plot, NoTextIsCut) {
    OutTitle(0) = "A title that is so long that it takes more than one line of a small picture and "
                  "holds Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichenhersteller too";
    OutXAxis(0) = "The difference between the means of the two samples under the alternative";
    OutYAxis(0) = "The number of subjects that the first of the two samples has to have at least";
    OutZLabel = "Standard deviation that both of the samples have in common";
    SetCurves({0.001F, 0.002F, 0.003F}, {{10000, 20000, 99998}, {1, 2, 3}, {500, 600, 700}});
    for (const f64 width : {2.5, 4.0, 8.0})
        for (const f64 height : {2.5, 6.0}) {
            Draw(width, height);
            ExpectAllTextsInside();
        }
}

TEST_F(Plot, NumbersThatWouldTouchAreLeftOut) {
    SetCurves({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19},
              {std::vector<f32>(20, 5.0F)});
    Draw(2, 1.5);
    f64 rightEdge = 0;
    for (const auto& text : surface.Texts) {
        if (text.At.Y < Frame(surface)[2].Y || text.Text == "Difference")
            continue;
        EXPECT_GT(text.At.X, rightEdge) << text.Text;
        rightEdge = text.At.X + text.Width;
    }
    EXPECT_GT(rightEdge, 0);
}

// --- Pens and legend --------------------------------------------------------------------------

TEST(CurvePens, ColoursGoRoundWithoutLightGreyAndWhite) {
    constexpr i16 colours[] = {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14, 0, 1};
    constexpr i16 styles[] = {0, 1, 2, 3, 4, 0, 1, 2, 3, 4, 0, 1, 2, 3, 4, 0};
    for (i16 j = 1; j <= 16; ++j) {
        EXPECT_EQ(CurvePen(j, 4, false).Colour, colours[j - 1]) << j;
        EXPECT_EQ(CurvePen(j, 4, false).Style, styles[j - 1]) << j;
        EXPECT_EQ(CurvePen(j, 4, false).Width, 4);
    }
}

TEST(CurvePens, WithoutAWidthEachCurveIsWider) {
    EXPECT_EQ(CurvePen(1, 0, false).Width, 1);
    EXPECT_EQ(CurvePen(3, 0, false).Width, 3);
}

TEST(CurvePens, ASolidLineOfAPrinterHasItsOwnWidth) {
    EXPECT_EQ(CurvePen(1, 2, true).Width, 5);
    EXPECT_EQ(CurvePen(2, 2, true).Width, 2);
    EXPECT_EQ(CurvePen(6, 0, true).Width, 5);
    EXPECT_EQ(CurvePen(7, 0, true).Width, 7);
}

// What a file may hold.
TEST(CurvePens, AnyNumberIsAWidthThatCanBeDrawn) {
    EXPECT_EQ(CurvePen(1, -7, false).Width, 1);
    EXPECT_EQ(CurvePen(1, 32767, false).Width, 50);
}

// --- Safe styles ------------------------------------------------------------------------------

class SafeStyles : public Plot {
  protected:
    SafeStyles() { ChosenCurveStyles = CurveStyles::Safe; }
    ~SafeStyles() override { ChosenCurveStyles = CurveStyles::Colours; }

    using Strokes = std::vector<std::vector<Point>>;

    // The mark of curve j around the origin.
    static Strokes MarkOf(int j) {
        RecordingSurface alone(1, 1);
        DrawCurveMark(alone, j, {0, 0});
        Strokes strokes;
        for (const auto& line : alone.Lines)
            strokes.push_back(line.Points);
        return strokes;
    }
};

TEST_F(SafeStyles, CurvesDifferWithoutTheirColours) {
    constexpr int different = 35;
    for (int j = 1; j <= different; ++j)
        for (int k = 1; k < j; ++k) {
            const bool sameLine = CurvePen(static_cast<i16>(j), 4, false).Style ==
                                  CurvePen(static_cast<i16>(k), 4, false).Style;
            EXPECT_FALSE(sameLine && MarkOf(j) == MarkOf(k)) << j << " and " << k;
        }
    EXPECT_EQ(MarkOf(1), MarkOf(8));
    for (int j = 1; j <= 7; ++j)
        for (int k = 1; k < j; ++k)
            EXPECT_NE(SafeColour(j), SafeColour(k)) << j << " and " << k;
}

TEST_F(SafeStyles, CurvesHaveTheirMarksAtTheirPoints) {
    OutZLabel = "Level";
    SetCurves({0, 1, 2}, {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}});
    Draw();
    for (int j = 1; j <= 3; ++j) {
        const auto strokes = MarkOf(j);
        int marks = 0;
        for (const auto& line : surface.Lines) {
            const bool isStroke =
                line.With.Colour == SafeColour(j) && line.Points.size() == strokes.front().size() &&
                line.Points.size() > 3 && std::fabs(line.Points[0].X - line.Points[1].X) < 0.1;
            marks += isStroke ? 1 : 0;
            EXPECT_TRUE(!isStroke || line.With.Style == SolidLine);
        }
        EXPECT_EQ(marks, 4) << "three points and the legend, curve " << j;
    }
}

// Hundreds of points have as many marks as can be told from each other.
TEST_F(SafeStyles, MarksKeepApart) {
    std::vector<Point> line;
    for (int k = 0; k <= 500; ++k)
        line.push_back({k * 0.01, 1 + 0.001 * k});
    for (int j = 1; j <= 3; ++j) {
        const auto marks = CurveMarks(line, j);
        EXPECT_GE(marks.size(), 11U);
        EXPECT_LE(marks.size(), 13U);
        for (std::size_t k = 1; k < marks.size(); ++k)
            EXPECT_GE(marks[k].X - marks[k - 1].X, 0.38);
    }
    EXPECT_NE(CurveMarks(line, 1).front(), CurveMarks(line, 2).front());
    EXPECT_EQ(CurveMarks(std::vector<Point>{{0, 0}}, 2).size(), 1U) << "a dot";
}

TEST_F(Plot, NoCurveHasAMarkUnlessItIsAskedFor) {
    SetCurves({0, 1, 2}, {{1, 2, 3}, {2, 4, 6}});
    Draw();
    const std::size_t plain = surface.Lines.size();
    ChosenCurveStyles = CurveStyles::Safe;
    Draw();
    EXPECT_GT(surface.Lines.size(), plain);
    ChosenCurveStyles = CurveStyles::Colours;
    Draw();
    EXPECT_EQ(surface.Lines.size(), plain);
}

TEST_F(Plot, TheLegendShowsEachCurve) {
    OutZLabel = "Level";
    SetCurves({0, 1, 2}, {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}});
    Draw();
    ASSERT_NE(surface.Find("Level"), nullptr);
    for (i16 j = 1; j <= 3; ++j) {
        const auto* entry = surface.Find("0." + std::to_string(j));
        ASSERT_NE(entry, nullptr);
        const Pen pen = CurvePen(j, 4, false);
        bool hasSample = false;
        for (const auto& line : surface.Lines)
            hasSample =
                hasSample || (line.With.Colour == pen.Colour && line.With.Style == pen.Style &&
                              line.Points.size() == 2 && line.Points[1].X <= entry->At.X &&
                              line.Points[0].Y == line.Points[1].Y &&
                              line.Points[0].Y > entry->At.Y && line.Points[0].Y < entry->At.Y + H);
        EXPECT_TRUE(hasSample) << j;
    }
}

TEST_F(Plot, TheLegendLiesWhereNoCurveRuns) {
    OutZLabel = "Level";
    SetCurves({0, 1, 2, 3, 4}, {{0, 10, 20, 30, 40}, {0, 11, 22, 33, 44}});
    Draw();
    const auto* head = surface.Find("Level");
    ASSERT_NE(head, nullptr);
    // Rising curves leave the upper left corner free.
    EXPECT_LT(head->At.X, Frame(surface)[0].X + 0.3);
    EXPECT_LT(head->At.Y, Frame(surface)[0].Y + 0.3);
    // Falling ones don't.
    SetCurves({0, 1, 2, 3, 4}, {{40, 30, 20, 10, 0}, {44, 33, 22, 11, 0}});
    Draw();
    head = surface.Find("Level");
    const bool lowerLeftOrUpperRight = head->At.X > Width / 2 || head->At.Y > Height / 2;
    EXPECT_TRUE(lowerLeftOrUpperRight);
}

class CrowdedPlot : public Plot {
  protected:
    // A zigzag through the whole plot: no place in it is free.
    void SetUp() override {
        Plot::SetUp();
        OutZLabel = "Level";
        SetCurves({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {{0, 40, 0, 40, 0, 40, 0, 40, 0, 40}});
        OutXAxis(1) = "0";
        OutXAxis(2) = "9";
        OutYAxis(1) = "0";
        OutYAxis(2) = "40";
    }
};

TEST_F(CrowdedPlot, HasItsLegendBesideIt) {
    Draw();
    const f64 right = Frame(surface)[1].X;
    // The sample, 0.45, and 3 times the padding of 0.06 go with the 3 characters of the entry,
    // which is wider than the head; the padding twice around them; half of the last number, "9".
    const f64 legend = 0.45 + 3 * 0.06 + 3 * C + 2 * 0.06;
    EXPECT_NEAR(right, Width - 0.1 - legend - C / 2, 1e-9);
    for (const char* text : {"Level", "0.1"}) {
        ASSERT_NE(surface.Find(text), nullptr) << text;
        EXPECT_GT(surface.Find(text)->At.X, right) << text;
    }
    ExpectAllTextsInside();
}

TEST_F(CrowdedPlot, KeepsALegendThatWouldTakeTooMuch) {
    Draw(1.5, 3);
    EXPECT_NEAR(Frame(surface)[1].X, 1.5 - 0.15, 1e-9);
    ASSERT_NE(surface.Find("0.1"), nullptr);
    EXPECT_LT(surface.Find("0.1")->At.X, 1.5 - 0.15);
}

TEST_F(Plot, ALegendOfManyCurvesStaysInside) {
    OutZLabel = "Level";
    std::vector<std::vector<f32>> curves;
    for (int j = 0; j < 30; ++j)
        curves.push_back({static_cast<f32>(j), static_cast<f32>(2 * j)});
    SetCurves({0, 1}, curves);
    Draw();
    ExpectAllTextsInside();
    EXPECT_NE(surface.Find("3"), nullptr); // the last z-value, 30/10
}

TEST_F(Plot, WithoutAZLabelThereIsNoLegend) {
    SetCurves({0, 1, 2}, {{1, 2, 3}, {2, 4, 6}});
    Draw();
    for (const auto& line : Curves())
        EXPECT_EQ(line.Points.size(), 3U) << "a sample of a legend";
}

TEST_F(Plot, TheTypeOfTheSettings) {
    OutFontName = "Serif";
    OutFontSize = "12,5";
    OutFontBold = 0;
    Draw();
    EXPECT_EQ(surface.LastFont.Name, "Serif");
    EXPECT_EQ(surface.LastFont.Size, 12.5);
    EXPECT_FALSE(surface.LastFont.Bold);
    for (const char* size : {"", "x", "0", "-3", "1000", "99999999999999999999999999999999999"}) {
        OutFontSize = size;
        EXPECT_EQ(TypeOf("", OutFontSize, false).Size, 9) << size;
    }
}

// --- Axes -------------------------------------------------------------------------------------

FixedArray<std::string, 0, 3> Axis(const std::string& low, const std::string& high,
                                   const std::string& tick) {
    FixedArray<std::string, 0, 3> axis;
    axis(1) = low;
    axis(2) = high;
    axis(3) = tick;
    return axis;
}

TEST(Axes, AutomaticOnesAreRound) {
    const AxisScale scale = ScaleAxis({0.72F, 0.91F}, 10, Axis("Auto", "Auto", "Auto"));
    EXPECT_NEAR(scale.Low, 0.72, 1e-6); // a = 0.019: 36 to 46 steps of 0.02
    EXPECT_NEAR(scale.High, 0.92, 1e-6);
    EXPECT_NEAR(scale.Step, 0.02, 1e-6);
    EXPECT_EQ(scale.Format, "0.0#");
}

TEST(Axes, ATypedLimitIsOneEndAndTheOtherIsFound) {
    const AxisScale low = ScaleAxis({0.72F, 0.91F}, 10, Axis("0", "Auto", "Auto"));
    EXPECT_EQ(low.Low, 0);
    EXPECT_NEAR(low.High, 1, 1e-6);
    EXPECT_NEAR(low.Step, 0.1, 1e-6);
    const AxisScale high = ScaleAxis({0.72F, 0.91F}, 10, Axis("", "1", "auto"));
    EXPECT_EQ(high.High, 1);
    EXPECT_LE(high.Low, 0.72);
}

TEST(Axes, TicksStartAtARoundNumberUnlessTheyAreTyped) {
    const AxisScale found = ScaleAxis({0, 1}, 10, Axis("0.03", "1", "Auto"));
    EXPECT_NEAR(found.FirstTick, 0.1, 1e-6);
    const AxisScale typed = ScaleAxis({0, 1}, 10, Axis("0.03", "1", "0.25"));
    EXPECT_EQ(typed.FirstTick, 0.03);
    EXPECT_EQ(typed.Step, 0.25);
    EXPECT_EQ(typed.Format, "0.0#");
}

TEST(Axes, TypedLimitsThatLeaveNoAxisDontCount) {
    for (const auto& axis : {Axis("1", "0", "Auto"), Axis("1", "1", "Auto")}) {
        const AxisScale scale = ScaleAxis({0, 1}, 10, axis);
        EXPECT_EQ(scale.Low, 0);
        EXPECT_EQ(scale.High, 1);
    }
}

TEST(Axes, ALimitBeyondTheDataLeavesAnAxisAllTheSame) {
    const AxisScale above = ScaleAxis({0, 1}, 10, Axis("5", "Auto", "Auto"));
    EXPECT_EQ(above.Low, 5);
    EXPECT_GT(above.High, 5);
    const AxisScale below = ScaleAxis({0, 1}, 10, Axis("Auto", "-5", "Auto"));
    EXPECT_EQ(below.High, -5);
    EXPECT_LT(below.Low, -5);
}

TEST(Axes, ATickThatWouldCoverTheAxisDoesntCount) {
    for (const char* tick : {"0", "-1", "0.000001"})
        EXPECT_NEAR(ScaleAxis({0, 1}, 10, Axis("Auto", "Auto", tick)).Step, 0.1, 1e-6) << tick;
}

TEST(Axes, TextsThatAreNoLimits) {
    for (const char* text : {"", "Auto", "auto", "1e5", "x", "-", ".", "12 apples"})
        EXPECT_FALSE(TypedLimit(text).has_value()) << text;
    EXPECT_FALSE(TypedLimit(std::string(400, '9')).has_value());
    EXPECT_EQ(TypedLimit("-0,5"), -0.5);
    EXPECT_EQ(TypedLimit(" 12 "), 12.0);
}

TEST(Axes, HugeLimitsEnd) {
    const std::string huge(30, '9');
    for (const auto& axis :
         {Axis(huge, "Auto", "Auto"), Axis("Auto", huge, "Auto"),
          Axis("-" + huge.substr(1), huge, "1"), Axis("16777217", "16777217.5", "")}) {
        const AxisScale scale = ScaleAxis({0, 1}, 10, axis);
        EXPECT_LT(scale.Low, scale.High);
        EXPECT_GT(scale.Step, 0);
    }
}

// --- Presentations ----------------------------------------------------------------------------

// --- Areas and marks -----------------------------------------------------------------------------

// The upright lines of a drawing inside its frame, but for the frame's own and the ticks.
std::vector<std::vector<Point>> UprightLines(const RecordingSurface& drawn) {
    const auto& frame = drawn.Lines.front().Points;
    std::vector<std::vector<Point>> upright;
    for (const auto& line : drawn.Lines) {
        const bool isUpright = line.Points.size() == 2 && line.Points[0].X == line.Points[1].X;
        constexpr f64 tick = 0.06;
        if (isUpright && std::fabs(line.Points[0].Y - line.Points[1].Y) > tick + 1e-9 &&
            line.Points[0].X > frame[0].X && line.Points[0].X < frame[1].X)
            upright.push_back(line.Points);
    }
    return upright;
}

// A curve at 0 up to x = 2 and at 20 from there on, in a frame from 0 to 4 and from 0 to 40.
TEST_F(Plot, AnAreaIsHatchedFromTheAxisToTheCurve) {
    SetCurves({0, 2, 2, 4}, {{0, 0, 20, 20}});
    Presentation plot = PresentationOf(AnalysisNo);
    for (auto* axis : {&plot.XAxis, &plot.YAxis}) {
        (*axis)(1) = "0";
        (*axis)(2) = axis == &plot.XAxis ? "4" : "40";
    }
    plot.Areas = {{1, 1, 3}};
    RecordingSurface drawn(Width, Height);
    ASSERT_TRUE(PlotGraph(drawn, plot));
    const auto& frame = Frame(drawn);
    const f64 left = frame[0].X;
    const f64 width = frame[1].X - left;
    const f64 bottom = frame[2].Y;
    const f64 height = bottom - frame[0].Y;
    const auto lines = UprightLines(drawn);
    EXPECT_GT(lines.size(), 15U);
    for (const auto& line : lines) {
        const f64 x = (line[0].X - left) / width * 4;
        EXPECT_GE(x, 2 - 1e-9) << "nothing to hatch where the curve is on the axis";
        EXPECT_LE(x, 3 + 1e-9);
        EXPECT_NEAR(std::max(line[0].Y, line[1].Y), bottom, 1e-9);
        EXPECT_NEAR(std::min(line[0].Y, line[1].Y), bottom - height / 2, 1e-9);
    }
}

TEST_F(Plot, AMarkGoesFromTheTopToTheBottom) {
    Presentation plot = PresentationOf(AnalysisNo);
    plot.XAxis(1) = "0";
    plot.XAxis(2) = "4";
    plot.Marks = {1, 5, -1}; // the others are outside
    RecordingSurface drawn(Width, Height);
    ASSERT_TRUE(PlotGraph(drawn, plot));
    const auto& frame = Frame(drawn);
    const auto lines = UprightLines(drawn);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NEAR(lines[0][0].X, frame[0].X + (frame[1].X - frame[0].X) / 4, 1e-9);
    EXPECT_NEAR(std::fabs(lines[0][1].Y - lines[0][0].Y), frame[2].Y - frame[0].Y, 1e-9);
}

TEST_F(Plot, TheLegendMayHaveWords) {
    SetCurves({0, 1}, {{0, 1}, {1, 2}});
    Presentation plot = PresentationOf(AnalysisNo);
    plot.ZLabel = "Hypothesis";
    plot.ZTexts = {"H0", "H1"};
    RecordingSurface drawn(Width, Height);
    ASSERT_TRUE(PlotGraph(drawn, plot));
    EXPECT_NE(drawn.Find("H0"), nullptr);
    EXPECT_NE(drawn.Find("H1"), nullptr);
    EXPECT_EQ(drawn.Find("0.1"), nullptr) << "not the numbers";
}

TEST_F(Plot, AWindowBehindPresentsItsOwnResult) {
    for (int window = 0; window < 2; ++window) {
        FileCommand(GraphWindow);
        NewTest(static_cast<i16>(window));
        AcceptOptions();
        RunOrCancel();
    }
    OutTitle.ReDim(0, 1);
    OutTitle(1) = "second line";
    const Presentation behind = PresentationOf(1);
    const Presentation front = PresentationOf(2);
    EXPECT_EQ(behind.Title, std::vector<std::string>{"Student's t-test, Unpaired, two-sided."});
    EXPECT_EQ(front.Title.back(), "second line");
    EXPECT_EQ(front.Y, TableY);
    EXPECT_NE(behind.Y, front.Y);
    ChildActivated(1);
    EXPECT_EQ(PresentationOf(1).Y, behind.Y);
    EXPECT_EQ(PresentationOf(1).Title, behind.Title);
    EXPECT_EQ(PresentationOf(2).Y, front.Y);
    EXPECT_EQ(PresentationOf(2).Title, front.Title);
    EXPECT_EQ(PresentationOf(2).XAxis, front.XAxis);
    EXPECT_EQ(PresentationOf(2).ZLabel, front.ZLabel);
    EXPECT_EQ(PresentationOf(2).Type.Size, 9);
}

// --- Lines ------------------------------------------------------------------------------------

TEST(LinesOfText, BreakAtBlanks) {
    const RecordingSurface surface(6, 4);
    EXPECT_EQ(BreakLines(surface, "one two three", 7 * C),
              (std::vector<std::string>{"one two", "three"}));
    EXPECT_EQ(BreakLines(surface, "one", 100), std::vector<std::string>{"one"});
    EXPECT_TRUE(BreakLines(surface, "", 100).empty());
    EXPECT_TRUE(BreakLines(surface, "   ", 100).empty());
}

TEST(LinesOfText, AWordWiderThanALineIsBroken) {
    const RecordingSurface surface(6, 4);
    EXPECT_EQ(BreakLines(surface, "a Größenwahn b", 4 * C + 1e-9),
              (std::vector<std::string>{"a", "Größ", "enwa", "hn b"}));
    EXPECT_EQ(BreakLines(surface, "ab", 0.1 * C), (std::vector<std::string>{"a", "b"}));
}

} // namespace
} // namespace quorvanta::checks
