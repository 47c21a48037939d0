// A long session: one analysis after another is opened, solved, saved and closed, in one process,
// and none of them leaves memory behind.
//
// QUORVANTA_SOAK sets how many there are, 1000 for a long day.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/records.h"
#include "core/save_file.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPixmapCache>

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>
#include <vector>

#ifdef __GLIBC__
#if __GLIBC_PREREQ(2, 33)
#define QUORVANTA_MEMORY_IS_TOLD
#include <malloc.h>
#endif
#endif

namespace quorvanta {
namespace {

// The bytes that are allocated; nothing where the C library does not tell, or does not know since a
// sanitizer has taken its place.
std::optional<f64> BytesInUse() {
#ifdef QUORVANTA_MEMORY_IS_TOLD
    const auto info = ::mallinfo2();
    constexpr f64 leastOfAProgram = 1e6;
    const f64 bytes = static_cast<f64>(info.uordblks) + static_cast<f64>(info.hblkhd);
    if (bytes > leastOfAProgram)
        return bytes;
#endif
    return std::nullopt;
}

int Wanted(int usual) {
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue("QUORVANTA_SOAK", &isSet);
    return isSet ? value : usual;
}

// Analyses that come round again and again, spread over the menus, each in a window of its kind.
struct Station {
    i16 WindowKind;
    QString Entry;
};
constexpr int Stations = 25;

void Collect(std::span<const MenuItem> items, i16 windowKind, std::vector<Station>& stations) {
    for (const MenuItem& item : items) {
        const AnalysisKey key{.IsTest = True, .TestNo = item.TestNo};
        const QString name = ToQt(item.Name);
        const bool isServed = windowKind == SimulationWindow
                                  ? HasSimWindow(item.MenuNo) && HasSimulation(key)
                                  : HasEquation(key);
        // Designs ask for their boundaries.
        if (item.Action == MenuAction::Test && isServed && !name.startsWith("mnuGrpSeq"))
            stations.push_back({windowKind, ControlName(name, item.Index)});
        Collect(item.Children, windowKind, stations);
    }
}

std::vector<Station> Round() {
    constexpr i16 kinds[] = {CalculationWindow, TableWindow, CalculationWindow, GraphWindow,
                             SimulationWindow};
    std::vector<Station> round;
    for (int i = 0; i < Stations; ++i) {
        std::vector<Station> all;
        Collect(MainMenu(), kinds[static_cast<std::size_t>(i) % std::size(kinds)], all);
        round.push_back(all[all.size() * static_cast<std::size_t>(i) / Stations]);
    }
    return round;
}

class Soak : public OutputCheck {
  protected:
    // What is kept of drawings comes and goes with the time: here nothing of them is kept.
    Soak() { QPixmapCache::setCacheLimit(0); }
    ~Soak() override { QPixmapCache::setCacheLimit(keptBefore_); }

    // The analysis, as the menus start it or as it was saved, is solved, saved and closed.
    void GoThrough(const Station& station, const std::string& file, bool isSaved) {
        if (isSaved) {
            NameNextFile(file);
            Trigger("mnuFile(5)"); // tables and graphs are calculated at once
        } else {
            Trigger(ControlName("mnuFile", station.WindowKind));
            Trigger(station.Entry);
            AcceptOptions();
        }
        ASSERT_EQ(AnalysisNo, 1);
        if (station.WindowKind == CalculationWindow)
            SolveForThePower();
        else if (station.WindowKind == SimulationWindow)
            RunSomeReplicates();
        else if (!isSaved)
            hands::Click(*Window().Floating(FloatingWindow::Parameters), "cmdOK");
        NameNextFile(file);
        Messages.Answers = {QMessageBox::Yes}; // the file is replaced
        Trigger("mnuFile(7)");
        EXPECT_EQ(AnalysisState(1).Changed, False) << "saved";
        CloseChild();
        ASSERT_EQ(AnalysisNo, 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ForgetMessages();
    }

    void SolveForThePower() {
        Type(LevelParNo, "0.04");
        Press(PowerParNo);
    }

    void RunSomeReplicates() {
        QWidget& dialog = *Window().Floating(FloatingWindow::InterimParameters);
        if (hands::TextOf(dialog, "txtMaxNoOfSim") != "20")
            hands::TypeInto(dialog, "txtMaxNoOfSim", "20");
        hands::Click(dialog, "cmdOK");
    }

    // Texts that the hands keep are no loss of the program.
    void ForgetMessages() {
        Messages.Answers.clear();
        for (QStringList* texts : {&Messages.Texts, &Messages.Titles, &Messages.FileQuestions,
                                   &Messages.FileProposals, &Messages.FileFolders})
            texts->clear();
    }

  private:
    int keptBefore_ = QPixmapCache::cacheLimit();
};

// After a hundred, each station has been passed four times, from its menu and from its file, and
// what is made once for all is there. From then on the mean of two rounds goes up and down by what
// lists keep in reserve, some kilobytes. What each analysis may add, 20 bytes, is less than any
// object, text or record takes: a hundred analyses that keep 100 bytes each are seen, and a
// thousand that keep 25.
TEST_F(Soak, LeavesNoMemoryBehind) {
    if (!BytesInUse())
        GTEST_SKIP() << "the C library does not tell how much memory is allocated";
    constexpr int warmUp = 100;
    const int count = std::max(Wanted(200), warmUp + 2 * Stations);
    const std::vector<Station> round = Round();
    std::vector<f64> readings;
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i % Stations);
        SCOPED_TRACE(round[place].Entry.toStdString() + " as " + std::to_string(i + 1));
        const std::string file = "soak" + std::to_string(place) + ".dim";
        ASSERT_NO_FATAL_FAILURE(GoThrough(round[place], file, i / Stations % 2 == 1));
        readings.push_back(BytesInUse().value());
    }
    const auto meanOfTwoRounds = [&readings](int end) {
        constexpr int both = 2 * Stations;
        return std::accumulate(readings.begin() + end - both, readings.begin() + end, 0.0) / both;
    };
    constexpr f64 reserves = 5000;
    constexpr f64 perAnalysis = 20;
    const f64 growth = meanOfTwoRounds(count) - meanOfTwoRounds(warmUp);
    EXPECT_LT(growth, reserves + perAnalysis * (count - warmUp));
}

} // namespace
} // namespace quorvanta
