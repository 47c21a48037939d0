// Every rank, survival and goodness-of-fit test in the real window: opened from its menu, options
// accepted, each label pressed. There is a value then, or the words of a search that found none.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/values.h"
#include "support/rank_survival.h"
#include "support/search_messages.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"
#include "ui/window_fixture.h"

#include <ostream>
#include <span>
#include <vector>

namespace quorvanta {
namespace {

struct Entry {
    QString Name;
    i16 MenuNo;

    friend std::ostream& operator<<(std::ostream& out, const Entry& entry) {
        return out << entry.MenuNo;
    }
};

void Collect(std::span<const MenuItem> items, std::vector<Entry>& entries) {
    for (const MenuItem& item : items) {
        if (item.Action == MenuAction::Test && checks::IsRankSurvivalOrFit(item.MenuNo) &&
            HasEquation({.IsTest = True, .TestNo = item.TestNo}))
            entries.push_back({ControlName(ToQt(item.Name), item.Index), item.MenuNo});
        Collect(item.Children, entries);
    }
}

std::vector<Entry> Entries() {
    std::vector<Entry> entries;
    Collect(MainMenu(), entries);
    return entries;
}

class RankSurvivalWalk : public WindowCheck, public testing::WithParamInterface<Entry> {
  protected:
    // The start texts of all boxes, as the window shows them once it has solved for the power; one
    // of its own where the start values have none.
    QStringList StartTexts() {
        QStringList texts;
        for (int i = 0; i <= NoOfPar; ++i) {
            if (!HasValue(FromQt(Value(i))))
                Type(i, "0.8");
            texts << Value(i);
        }
        return texts;
    }

    // A table that a value derives from has no start figures.
    static bool IsTold(const QString& message) {
        return checks::IsSearchMessage(FromQt(message)) || message.endsWith(" Have No Values.");
    }
};

TEST_P(RankSurvivalWalk, SolvesForEachParameterOrSaysThatItCannot) {
    Trigger("mnuFile(0)");
    Trigger(GetParam().Name);
    AcceptOptions();
    const QStringList start = StartTexts();
    Messages.Texts.clear();
    for (int i = 0; i <= NoOfPar; ++i) {
        SCOPED_TRACE(StripAmpersand(ParLabel(ParKind(static_cast<i16>(i)))));
        Press(i);
        const bool isSolved = HasValue(FromQt(Value(i)));
        EXPECT_EQ(isSolved, Messages.Texts.isEmpty());
        for (const QString& message : Messages.Texts)
            EXPECT_TRUE(IsTold(message)) << FromQt(message);
        Messages.Texts.clear();
        Type(i, start[i]);
    }
    EXPECT_EQ(Messages.Texts, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Menus, RankSurvivalWalk, testing::ValuesIn(Entries()),
                         [](const auto& info) { return std::to_string(info.param.MenuNo); });

} // namespace
} // namespace quorvanta
