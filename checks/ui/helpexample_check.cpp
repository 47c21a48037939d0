// Every worked example of the help, played in the real windows as its page says: the menu by its
// name, the options by mouse, the values by key, the label or OK by mouse.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/help_numbers.h"
#include "output/format.h"
#include "support/example.h"
#include "support/number.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QTest>

#include <cstdlib>

namespace quorvanta {
namespace {

class ExampleInWindows : public WindowCheck,
                         public testing::WithParamInterface<checks::ExampleTopic> {
  protected:
    // The option of that caption, among those that can be seen; a failure and nothing if there is
    // none.
    QAbstractButton* Option(const std::string& caption) {
        for (QAbstractButton* button : Options().findChildren<QAbstractButton*>())
            if (button->isVisible() && StripAmpersand(FromQt(button->text())) == caption)
                return button;
        ADD_FAILURE() << "no option " << caption;
        return nullptr;
    }

    void Choose(const std::string& caption) {
        if (caption.empty())
            return;
        if (const QAbstractButton* button = Option(caption)) {
            // A box that starts ticked is left alone, as its user would.
            if (!button->isChecked())
                hands::Click(Options(), button->objectName());
            EXPECT_TRUE(button->isChecked()) << caption;
        }
    }

    // These boxes and no others; one may be ticked from the start.
    void Tick(const std::vector<std::string>& captions) {
        for (i16 i = 0; i < NoOfCheck; ++i) {
            const std::string caption = StripAmpersand(CheckLabel(CheckList(i)));
            const bool wanted = std::ranges::find(captions, caption) != captions.end();
            const QAbstractButton* box = Option(caption);
            ASSERT_NE(box, nullptr);
            if (box->isChecked() != wanted)
                hands::Click(Options(), box->objectName());
            EXPECT_EQ(box->isChecked(), wanted) << caption;
        }
    }

    void ChooseParameter(const std::string& caption) {
        auto& list = *hands::Control<QListWidget>(Options(), "lstParList");
        const auto found = list.findItems(ToQt(caption), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << caption;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(found.front()).center());
        hands::Settle();
    }

    void ChooseOptions(const help::Example& example, const QString& newWindow) {
        Trigger(newWindow);
        const MenuItem& entry = help::MenuEntry(example.Menus);
        Trigger(ControlName(ToQt(entry.Name), entry.Index));
        if (!example.Parameter.empty())
            ChooseParameter(example.Parameter);
        Choose(example.Procedure);
        Choose(example.Samples);
        // Some tails are there only once a box is ticked.
        const bool tailsWait = !example.Tails.empty() && !Option(example.Tails)->isEnabled();
        if (tailsWait)
            Tick(example.Ticked);
        Choose(example.Tails);
        if (example.LeftTail)
            Choose("Reject in Left Tail");
        Tick(example.Ticked);
        for (const std::string& caption : example.Chosen)
            Choose(caption);
        if (!example.Adjustment.empty())
            ChooseAdjustment(example.Adjustment);
        if (example.Design.Interim > 0)
            ChooseDesign(example.Design, example.Simulation.Tables);
        else if (example.Simulation.Opened.empty())
            FillGrids(example.Simulation.Tables);
        hands::Click(Options(), "cmdOK");
        hands::Settle();
    }

    // Fills the grids that are asked for one after the other by key, from cell to cell, and accepts
    // each.
    void FillGrids(const std::vector<help::ExampleTable>& tables, std::size_t at = 0) {
        if (at == tables.size())
            return;
        hands::WhenModal("frmGridTable", [this, tables, at](QWidget& grid) {
            const std::string& title = tables[at].Title;
            if (!title.empty()) {
                EXPECT_EQ(FromQt(hands::TextOf(grid, "lblGridTitle")), title);
            }
            QWidget* cell = hands::Control(grid, "txtText");
            for (std::size_t row = 0; row < tables[at].Rows.size(); ++row)
                for (std::size_t column = 0; column < tables[at].Rows[row].size(); ++column) {
                    if (IsLockedCell(static_cast<i16>(row + 1), static_cast<i16>(column + 1)))
                        continue;
                    const std::string& text = tables[at].Rows[row][column];
                    QTest::keyClick(cell, Qt::Key_A, Qt::ControlModifier);
                    QTest::keyClicks(cell, ToQt(text));
                    QTest::keyClick(cell, Qt::Key_Return);
                }
            ++gridsFilled_;
            FillGrids(tables, at + 1);
            hands::Click(grid, "cmdOK");
        });
    }

    int GridsFilled() const { return gridsFilled_; }

  private:
    void ChooseAdjustment(const std::string& name) {
        hands::WhenModal("frmAdjustMethod", [name](QWidget& window) {
            hands::Click(window, ControlName("optMethod", help::AdjustmentOfName(name)));
            hands::Click(window, "cmdOK");
        });
        hands::Click(Options(), "cmdMethod");
    }

    // The number of interim analyses, and the windows that will ask for the boundaries and the
    // fractions, and for these tables.
    void ChooseDesign(const help::ExampleDesign& design,
                      const std::vector<help::ExampleTable>& tables) {
        hands::Click(Options(), ControlName("optInterim", design.Interim));
        std::vector<help::ExampleTable> all;
        if (!design.Levels.empty())
            all.push_back({"", design.Levels});
        if (!design.Fractions.empty())
            all.emplace_back();
        for (const std::string& fraction : design.Fractions)
            all.back().Rows.push_back({fraction});
        all.insert(all.end(), tables.begin(), tables.end());
        if (design.Boundaries.empty())
            return FillGrids(all);
        hands::WhenModal("frmBoundary", [this, design, all](QWidget& window) {
            const i16 type = help::BoundaryOfName(design.Boundaries);
            hands::Click(window, ControlName("OptBoundary", type));
            if (!design.Parameter.empty())
                hands::TypeInto(window, "txtFamilyPar", ToQt(design.Parameter));
            FillGrids(all);
            hands::Click(window, "cmdOK");
        });
    }

    int gridsFilled_ = 0;
};

class HelpExampleInWindows : public ExampleInWindows {
  protected:
    // The row of a label in the window; a failure and -1 if it has none.
    int RowOf(const std::string& label) {
        for (int i = 0; i <= MaxPar; ++i) {
            const QString name = ControlName("cmdParLabel", i);
            if (hands::Control(Child(), name)->isVisible() &&
                StripAmpersand(FromQt(hands::TextOf(Child(), name))) == label)
                return i;
        }
        ADD_FAILURE() << "no label " << label;
        return -1;
    }

    // Opens the grids of a blue box, if the step has some, fills them by key from cell to cell, and
    // accepts them.
    void FillTables(const help::ExampleStep& step) {
        if (step.Opened.empty())
            return;
        const int before = GridsFilled();
        FillGrids(step.Tables);
        const QString box = ControlName("txtParValue", RowOf(step.Opened));
        QTest::mouseDClick(hands::Control(Child(), box), Qt::LeftButton);
        hands::Settle();
        EXPECT_EQ(GridsFilled(), before + static_cast<int>(step.Tables.size()))
            << "other grids for " << step.Opened;
        for (const auto& [label, text] : step.Derived)
            EXPECT_EQ(FromQt(hands::TextOf(Child(), ControlName("txtParValue", RowOf(label)))),
                      text)
                << label;
    }

    // The page has its number from its analysis: they have to be the same.
    static void ExpectMenusOfItsNumber() {
        const HelpSubject subject = HelpSubjectOf(GetParam().Number);
        if (subject.Topic != HelpTopic::Example)
            return;
        const MenuPath path = subject.IsTest == True ? PathToTest(subject.TestNo)
                                                     : PathToDistribution(subject.DistrNo);
        std::vector<std::string> captions;
        for (const MenuItem* item : path)
            captions.push_back(StripAmpersand(item->Caption));
        EXPECT_EQ(captions, GetParam().Example.Menus);
    }
};

TEST_P(HelpExampleInWindows, SaysWhatTheWindowShows) {
    const help::Example& example = GetParam().Example;
    ExpectMenusOfItsNumber();
    ChooseOptions(example, "mnuFile(0)");
    for (const help::ExampleStep& step : example.Steps) {
        for (const auto& [label, text] : step.Typed)
            hands::TypeInto(Child(), ControlName("txtParValue", RowOf(label)), ToQt(text));
        FillTables(step);
        const int row = RowOf(step.Pressed);
        hands::Click(Child(), ControlName("cmdParLabel", row));
        checks::ExpectReading(step,
                              {FromQt(hands::TextOf(Child(), ControlName("txtParValue", row))),
                               ParValue(UnknownParNo), IsCountKind(ParKind(UnknownParNo))});
    }
    if (HelpSubjectOf(GetParam().Number).Topic == HelpTopic::Example) {
        EXPECT_EQ(HelpExample(), GetParam().Number);
    }
    QStringList told;
    for (const std::string& message : example.Told)
        told << ToQt(message);
    EXPECT_EQ(Messages.Texts, told);
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpExampleInWindows, testing::ValuesIn(checks::ReadExamples()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

class HelpRunInWindows : public ExampleInWindows {
  protected:
    QWidget& Parameters() { return *Window().Floating(FloatingWindow::Parameters); }

    // Opens the list and picks the entry by key, as far from the present one as it stands.
    void PickAxis(int role, const std::string& label) {
        const QString name = ControlName("cbYXZPar", role);
        auto& list = *hands::Control<QComboBox>(Parameters(), name);
        const int wanted = list.findText(ToQt(label));
        ASSERT_GE(wanted, 0) << label;
        hands::Click(Parameters(), name);
        QWidget& entries = *list.view();
        const int steps = wanted - list.currentIndex();
        for (int i = 0; i < std::abs(steps); ++i)
            QTest::keyClick(&entries, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        QTest::keyClick(&entries, Qt::Key_Return);
        hands::Settle();
        EXPECT_EQ(FromQt(list.currentText()), label);
    }

    // The box of a fixed parameter, by its label.
    QString BoxOf(const std::string& label) {
        for (int i = 0; i <= MaxPar; ++i) {
            const auto* text = Parameters().findChild<QLabel*>(ControlName("lblParLabel", i));
            if (text != nullptr && text->isVisible() &&
                StripAmpersand(FromQt(text->text())) == label)
                return ControlName("txtParValue", i);
        }
        ADD_FAILURE() << "no label " << label;
        return "cmdOK";
    }

    void TypeAll(const help::ExampleRun& run) {
        PickAxis(0, run.Y);
        PickAxis(1, run.X);
        PickAxis(2, run.Z);
        const std::pair<const char*, std::string> texts[] = {{"txtXminValue", run.Min},
                                                             {"txtXmaxValue", run.Max},
                                                             {"txtXstepValue", run.Step},
                                                             {"txtZValue", run.Values}};
        for (const auto& [box, text] : texts)
            hands::TypeInto(Parameters(), box, ToQt(text));
        for (const auto& [label, text] : run.Set)
            hands::TypeInto(Parameters(), BoxOf(label), ToQt(text));
        hands::Click(Parameters(), "cmdOK");
    }

    // The words of the drawn table's row of that x.
    QStringList DrawnRow(const std::string& x) {
        const QString table = hands::Control(Child(), "PicTable")->accessibleDescription();
        for (const QString& line : table.split('\n')) {
            const QStringList words = line.simplified().split(' ');
            if (words.front() == ToQt(x))
                return words;
        }
        return {};
    }

    void ExpectRow(const help::ExampleRun& run, int k) {
        const help::RunRow& row = run.Rows[static_cast<std::size_t>(k - 1)];
        EXPECT_NEAR(static_cast<f64>(TableX(k)), checks::ParseNumber(row.X), 1e-5);
        QStringList shown{ToQt(row.X)};
        for (std::size_t j = 0; j < row.Exact.size(); ++j) {
            SCOPED_TRACE(row.X + ", column " + std::to_string(j + 1));
            shown << ToQt(row.Shown[j]);
            const checks::ExampleReading reading{
                row.Shown[j], static_cast<f64>(TableY(k, static_cast<int>(j) + 1)),
                IsCountKind(TableYKind)};
            checks::ExpectReading({.Pressed = run.Y,
                                   .Shown = row.Shown[j],
                                   .Exact = row.Exact[j],
                                   .Tolerance = run.Tolerance},
                                  reading);
        }
        if (run.Window == "Table") {
            EXPECT_EQ(DrawnRow(row.X), shown);
        }
    }
};

TEST_P(HelpRunInWindows, ShowsWhatThePageSays) {
    const help::Example& example = GetParam().Example;
    const help::ExampleRun& run = example.Run;
    ChooseOptions(example, run.Window == "Table" ? "mnuFile(1)" : "mnuFile(2)");
    TypeAll(run);
    ASSERT_EQ(Messages.Texts, QStringList());
    ASSERT_EQ(TableX.HighBound(), static_cast<int>(run.Rows.size()));
    EXPECT_TRUE(
        hands::Control(Child(), run.Window == "Table" ? "PicTable" : "PicGraph")->isVisible());
    for (int k = 1; k <= TableX.HighBound(); ++k)
        ExpectRow(run, k);
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpRunInWindows, testing::ValuesIn(checks::ReadRuns()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

class HelpSimulationInWindows : public ExampleInWindows {
  protected:
    QWidget& Dialog() { return *Window().Floating(FloatingWindow::InterimParameters); }

    // The box of a parameter, by its label.
    QString BoxOf(const std::string& label) {
        for (int i = 0; i <= MaxPar; ++i) {
            const QString name = ControlName("lblParName", i);
            if (hands::Control(Dialog(), name)->isVisible() &&
                StripAmpersand(FromQt(hands::TextOf(Dialog(), name))) == label)
                return ControlName("txtParValue", i);
        }
        ADD_FAILURE() << "no label " << label;
        return "cmdOK";
    }

    // The windows that ask for the distributions from here to there, one after the other.
    static void AnswerDistributions(const std::vector<help::ExampleDistribution>& distributions,
                                    std::size_t at, std::size_t end) {
        if (at == end)
            return;
        hands::WhenModal("frmShiftModel", [distributions, at, end](QWidget& window) {
            const help::ExampleDistribution& chosen = distributions[at];
            hands::Click(window,
                         ControlName("OptDistribution", help::ButtonOfDistribution(chosen.Name)));
            for (std::size_t k = 0; k < chosen.Parameters.size(); ++k)
                hands::TypeInto(window, ControlName("txtDistrPar", static_cast<int>(k)),
                                ToQt(chosen.Parameters[k]));
            AnswerDistributions(distributions, at + 1, end);
            hands::Click(window, "cmdOK");
        });
    }

    // Each blue box, with the distributions that it asks for.
    void ChooseDistributions(const std::vector<help::ExampleDistribution>& distributions) {
        for (std::size_t at = 0; at < distributions.size();) {
            std::size_t end = at + 1;
            while (end < distributions.size() &&
                   distributions[end].Label == distributions[at].Label)
                ++end;
            AnswerDistributions(distributions, at, end);
            QTest::mouseDClick(hands::Control(Dialog(), BoxOf(distributions[at].Label)),
                               Qt::LeftButton);
            hands::Settle();
            at = end;
        }
    }

    // The grids of the blue box.
    void OpenGrids(const help::ExampleSimulation& simulation) {
        FillGrids(simulation.Tables);
        QTest::mouseDClick(hands::Control(Dialog(), BoxOf(simulation.Opened)), Qt::LeftButton);
        hands::Settle();
        EXPECT_EQ(GridsFilled(), static_cast<int>(simulation.Tables.size()));
    }

    // What the window shows.
    checks::SimulationReading Reading() {
        checks::SimulationReading reading;
        const auto shown = [this](const QString& label) {
            return FromQt(hands::TextOf(Child(), label));
        };
        for (int row = 0; row <= MaxPar; ++row) {
            const auto* head = Child().findChild<QLabel*>(ControlName("lblInterimAnalysis", row));
            if (head == nullptr || !head->isVisible())
                break;
            reading.Estimates.push_back({FromQt(head->text())});
            for (const char* column :
                 {"lblSignEstimate", "lblPowerEstimate", "lblPrAcceptEstimate"})
                reading.Estimates.back().push_back(shown(ControlName(column, row)));
        }
        reading.Averages = {shown("lblASNH0Est"), shown("lblASNH1Est")};
        const auto& table = *hands::Control<QTableWidget>(Child(), "tblReject");
        for (int column = 0; column < table.columnCount() && table.isVisible(); ++column)
            reading.RejectionHeads.push_back(FromQt(table.horizontalHeaderItem(column)->text()));
        for (int test = 0; test < table.rowCount() && table.isVisible(); ++test) {
            reading.Rejections.push_back({std::to_string(test + 1)});
            for (int column = 0; column < table.columnCount(); ++column)
                reading.Rejections.back().push_back(FromQt(table.item(test, column)->text()));
        }
        return reading;
    }
};

TEST_P(HelpSimulationInWindows, ShowsWhatThePageSays) {
    const help::Example& example = GetParam().Example;
    const help::ExampleSimulation& simulation = example.Simulation;
    ChooseOptions(example, "mnuFile(3)");
    for (const auto& [label, text] : simulation.Set)
        hands::TypeInto(Dialog(), BoxOf(label), ToQt(text));
    for (std::size_t k = 0; k < simulation.Levels.size(); ++k)
        hands::TypeInto(Dialog(), ControlName("txtRejectH0", static_cast<int>(k)),
                        ToQt(simulation.Levels[k]));
    ChooseDistributions(simulation.Distributions);
    if (!simulation.Opened.empty())
        OpenGrids(simulation);
    hands::TypeInto(Dialog(), "txtMaxNoOfSim", ToQt(simulation.Maximum));
    hands::TypeInto(Dialog(), "txtSeed", ToQt(simulation.Seed));
    hands::Click(Dialog(), "cmdOK");
    if (!example.Design.Levels.empty())
        hands::Click(Dialog(), "cmdOK"); // the first one has shown them
    QStringList told;
    for (const std::string& message : example.Told)
        told << ToQt(message);
    EXPECT_EQ(Messages.Texts, told);
    EXPECT_EQ(hands::TextOf(Child(), "lblSimValue"), ToQt(" " + simulation.Maximum));
    checks::ExpectSimulation(simulation, Reading());
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpSimulationInWindows,
                         testing::ValuesIn(checks::ReadSimulations()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

} // namespace
} // namespace quorvanta
