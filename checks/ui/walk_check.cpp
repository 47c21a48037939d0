// Every entry of the menus in every window that it is offered in: chosen, solved, run or simulated
// from its start values; its sentence read, its distributions drawn, saved and opened again. What
// came of it is counted, and printed with QUORVANTA_WALK=told.
#include "core/analysis_codec.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/grids.h"
#include "core/records.h"
#include "core/values.h"
#include "output/statement.h"
#include "support/statistics.h"
#include "support/temporary_folder.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

struct Entry {
    QString Name;
    i16 MenuNo = 0;
    bool IsTest = true;
    int ParList = 0; // of a distribution
    int Procedure = 0;
    i16 WindowKind = CalculationWindow;

    friend std::ostream& operator<<(std::ostream& out, const Entry& entry) {
        return out << FromQt(entry.Name);
    }
};

void CollectDistribution(const MenuItem& item, std::vector<Entry>& entries) {
    for (int list = 0; list < static_cast<int>(DistrParList(item.MenuNo).size()); ++list)
        for (int procedure = 0; procedure < 3; ++procedure)
            entries.push_back({ControlName(ToQt(item.Name), item.Index), item.MenuNo, false, list,
                               procedure, CalculationWindow});
}

void Collect(std::span<const MenuItem> items, std::vector<Entry>& entries) {
    for (const MenuItem& item : items) {
        if (item.Action == MenuAction::Test)
            entries.push_back({ControlName(ToQt(item.Name), item.Index), item.MenuNo});
        else if (item.Action == MenuAction::Distribution)
            CollectDistribution(item, entries);
        Collect(item.Children, entries);
    }
}

std::vector<Entry> Entries() {
    std::vector<Entry> menus;
    Collect(MainMenu(), menus);
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < menus.size(); i += checks::StepOfCases(10))
        for (const i16 kind : {CalculationWindow, TableWindow, GraphWindow, SimulationWindow}) {
            entries.push_back(menus[i]);
            entries.back().WindowKind = kind;
        }
    return entries;
}

std::string NameOf(const Entry& entry) {
    constexpr const char* kinds[] = {"calculation", "table", "graph", "simulation"};
    std::string name = (entry.IsTest ? "test" : "distribution") + std::to_string(entry.MenuNo);
    if (!entry.IsTest)
        name += "_" + std::to_string(entry.ParList) + "_" + std::to_string(entry.Procedure);
    return name + "_" + kinds[entry.WindowKind];
}

// How it ended.
enum class Outcome { Value, NoValue, NotOffered };

std::map<std::string, int>& Tally() {
    static std::map<std::string, int> tally;
    return tally;
}

class TellTally : public testing::Environment {
  public:
    void TearDown() override {
        if (std::getenv("QUORVANTA_WALK") == nullptr)
            return;
        for (const auto& [what, count] : Tally())
            std::cout << count << "\t" << what << "\n";
    }
};
[[maybe_unused]] const auto* const tellTally = testing::AddGlobalTestEnvironment(new TellTally);

// Answers the windows that a start or a calculation asks something in: grids are filled with
// figures until they are accepted, everything else is taken as it is proposed.
class Answers {
  public:
    Answers() {
        timer_.setInterval(1);
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start();
    }

    int Refused = 0; // figures that a grid did not take
    int GivenUp = 0; // grids that took none

  private:
    void Look() {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible() || isBusy_)
            return;
        isBusy_ = true;
        if (modal->objectName() == "frmGridTable")
            Fill(*modal);
        else if (auto* ok = modal->findChild<QPushButton*>("cmdOK"))
            hands::Click(*ok);
        isBusy_ = false;
    }

    // One way after the other: whole numbers, shares of a line, of a column and of the table, and
    // what rises from line to line.
    void Fill(QWidget& grid) {
        auto& table = *hands::Control<QTableWidget>(grid, "tblGrid");
        QWidget* text = hands::Control(grid, "txtText");
        const int rows = table.rowCount();
        const int columns = table.columnCount();
        const auto share = [](int part, int of) {
            return QString::number(double(part) / of, 'g', 12);
        };
        const auto figure = [&](int way, int row, int column) {
            if (title_ == "Hazard and Loss Rates") // starts of intervals, and rates
                return column == 0 ? QString::number(row) : QString("0.2");
            if (title_ == "Strata") // each of the same size, half of it in the first group
                return column == 0 ? share(1, rows) : QString("0.5");
            if (title_.startsWith("Method of Each Family")) // Holm's
                return QString("5");
            if (title_ == "Weight")
                return share(1, rows);
            if (title_ == "Linear Combinations") // a contrast
                return QString::number(column == 0 ? 1 : column == row + 1 ? -1 : 0);
            switch (way) {
            case 0:
                return QString::number(row + 1);
            case 1:
                return share(1, columns);
            case 2:
                return share(1, rows);
            case 3:
                return share(1, rows * columns);
            case 4:
                return share(row + 1, rows + 1);
            case 5:
                return QString::number(column == 0 ? row : 1);
            case 6:
                return QString::number(row == column ? 1 : 0);
            case 7:
                return QString("0");
            default:
                return share(row + 1, rows);
            }
        };
        constexpr int ways = 9;
        if (title_ != hands::TextOf(grid, "lblGridTitle")) {
            title_ = hands::TextOf(grid, "lblGridTitle");
            way_ = 0;
        }
        Refused += way_ > 0 ? 1 : 0;
        if (way_ == ways) {
            ++GivenUp;
            way_ = 0;
            hands::Click(grid, "cmdCancel");
            return;
        }
        for (int i = 0; i < rows * columns; ++i) {
            QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(text, figure(way_, i / columns, i % columns));
            QTest::keyClick(text, Qt::Key_Return);
        }
        ++way_;
        hands::Click(grid, "cmdOK");
    }

    QTimer timer_;
    QString title_;
    int way_ = 0;
    bool isBusy_ = false;
};

class Walk : public WindowCheck, public testing::WithParamInterface<Entry> {
  protected:
    // False where the window kind is not offered, and something said so.
    bool Open() {
        const Entry& entry = GetParam();
        Trigger(ControlName("mnuFile", entry.WindowKind));
        auto* action = Window().findChild<QAction*>(entry.Name);
        if (action == nullptr || !action->isEnabled())
            return false;
        Trigger(entry.Name);
        // What exists as a simulation only is opened in a window for that.
        if (!Options().isVisible() || CurrentWindowKind() != entry.WindowKind)
            return false;
        return entry.IsTest || ChooseParameter();
    }

    bool ChooseParameter() {
        auto& list = *hands::Control<QListWidget>(Options(), "lstParList");
        list.setCurrentRow(GetParam().ParList);
        QWidget* procedure =
            hands::Control(Options(), ControlName("optProcedure", GetParam().Procedure));
        if (!procedure->isVisible() || !procedure->isEnabled())
            return false;
        hands::Click(*procedure);
        return true;
    }

    bool IsSimulation() const { return GetParam().WindowKind == SimulationWindow; }

    Outcome Start() {
        switch (GetParam().WindowKind) {
        case CalculationWindow:
            return Solve();
        case SimulationWindow:
            return Simulate();
        default:
            hands::Click(*Window().Floating(FloatingWindow::Parameters), "cmdOK");
            hands::Settle();
            return Calculated == True ? Outcome::Value : Outcome::NoValue;
        }
    }

    // What has no start value gets one; then each label is pressed in turn, and last the one that
    // was the unknown.
    Outcome Solve() {
        QStringList texts;
        for (int i = 0; i <= NoOfPar; ++i) {
            if (!HasValue(FromQt(Value(i))))
                Type(i, "0.8");
            texts << Value(i);
        }
        const i16 first = UnknownParNo;
        told_.clear();
        solved_ = 0;
        for (int k = 1; k <= NoOfPar + 1; ++k) {
            const int i = (first + k) % (NoOfPar + 1);
            Messages.Texts.clear();
            Press(i);
            const bool isSolved = HasValue(FromQt(Value(i)));
            solved_ += isSolved ? 1 : 0;
            told_ << Messages.Texts;
            EXPECT_EQ(isSolved, Messages.Texts.isEmpty()) << FromQt(Messages.Texts.join("; "));
            if (k <= NoOfPar)
                Type(i, texts[i]);
            else
                return isSolved ? Outcome::Value : Outcome::NoValue;
        }
        return Outcome::NoValue;
    }

    Outcome Simulate() {
        QWidget& dialog = *Window().Floating(FloatingWindow::InterimParameters);
        hands::TypeInto(dialog, "txtMaxNoOfSim", "100");
        hands::TypeInto(dialog, "txtSeed", "7");
        for (int i = 0; i < NoOfPar; ++i) {
            const QString box = ControlName("txtParValue", i);
            if (hands::TextOf(dialog, box).isEmpty())
                hands::TypeInto(dialog, box, "0.8");
        }
        hands::Click(dialog, "cmdOK");
        hands::Settle();
        return Calculated == True ? Outcome::Value : Outcome::NoValue;
    }

    // Figures of a table that a value derives from have no start values: they are entered once they
    // are missed.
    bool MissesTables() const {
        return std::ranges::any_of(told_ + Messages.Texts, [](const QString& message) {
            return message.endsWith(" No Values.") || message.contains("Weighted");
        });
    }
    static bool FillTables() {
        for (i16 i = 0; i <= NoOfPar; ++i)
            if (SelIsTablePar(i) && !SelTableGrids(i).empty()) {
                GetFromTable(i);
                hands::Settle();
                return true;
            }
        return false;
    }

    // Messages are of the fixed words; which ones came is counted.
    void Tell(const QString& message) {
        const std::string text = FromQt(message);
        EXPECT_FALSE(message.contains("Run-time")) << text;
        ++Tally()["told: " + text + " (" + NameOf(GetParam()) + ")"];
    }

    void ReadStatement() {
        Trigger("mnuGetInfo(3)");
        QWidget* summary = Window().Floating(FloatingWindow::Summary);
        ASSERT_TRUE(summary->isVisible());
        const QString text = hands::Control<QTextEdit>(*summary, "txtSummary")->toPlainText();
        EXPECT_GT(text.size(), 40);
        EXPECT_TRUE(text.trimmed().endsWith('.')) << FromQt(text);
        EXPECT_FALSE(text.contains("99999")) << FromQt(text);
        summary->close();
    }

    void LookAtDistributions() {
        auto* action = Window().findChild<QAction*>("mnuGetInfo(4)");
        if (!action->isEnabled()) {
            ++Tally()["without distributions"];
            return;
        }
        Trigger("mnuGetInfo(4)");
        QWidget* graph = Window().Floating(FloatingWindow::DistrGraph);
        ++Tally()[graph->isVisible() ? "with distributions" : "distributions not shown"];
        graph->close();
    }

    void SaveAndReopen() {
        StoreAnalysis();
        const auto before = EncodeAnalysis(Analysis(AnalysisNo));
        ASSERT_TRUE(before);
        const std::string statement = SumStatement();
        const QString path = ToQt(folder_.Path("walk.dim"));
        Messages.FileNames = {path};
        Trigger("mnuFile(7)");
        CloseChild();
        ASSERT_EQ(AnalysisNo, 0);
        Messages.FileNames = {path};
        Trigger("mnuFile(5)");
        ASSERT_EQ(AnalysisNo, 1);
        EXPECT_EQ(SumStatement(), statement);
        EXPECT_EQ(Calculated, ToFlag(!statement.empty()));
    }

    QStringList told_; // by a calculation
    int solved_ = 0;
    checks::TemporaryFolder folder_;
    Answers answers_;
};

TEST_P(Walk, IsSetUpSolvedSavedAndOpenedAgain) {
    const std::string kind = NameOf(GetParam()).substr(NameOf(GetParam()).rfind('_') + 1);
    if (!Open()) {
        ++Tally()[kind + ": not offered"];
        return;
    }
    AcceptOptions();
    Messages.Texts.clear();
    Outcome outcome = Start();
    if (outcome == Outcome::NoValue && MissesTables() && FillTables()) {
        Messages.Texts.clear();
        outcome = Start();
    }
    if (GetParam().WindowKind == CalculationWindow) {
        Tally()["parameters solved"] += solved_;
        Tally()["parameters not solved"] += NoOfPar + 1 - solved_;
        for (const QString& message : told_)
            Tell(message);
    }
    EXPECT_TRUE(outcome == Outcome::Value || !Messages.Texts.isEmpty()) << "without a word";
    ++Tally()[kind + (outcome == Outcome::Value ? ": with a result" : ": without a result")];
    for (const QString& message : Messages.Texts)
        Tell(message);
    EXPECT_EQ(answers_.GivenUp, 0) << FromQt(Messages.Texts.join("; "));
    if (outcome == Outcome::NoValue || answers_.Refused == 0) {
        EXPECT_EQ(outcome == Outcome::Value, Messages.Texts.isEmpty());
    }
    Messages.Texts.clear();
    if (outcome != Outcome::Value)
        return;
    ReadStatement();
    LookAtDistributions();
    SaveAndReopen();
    EXPECT_EQ(Messages.Texts, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Menus, Walk, testing::ValuesIn(Entries()),
                         [](const auto& info) { return NameOf(info.param); });

} // namespace
} // namespace quorvanta
