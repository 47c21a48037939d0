// The help has all of it: every analysis, parameter, check box, option and window is found by the
// name that the user sees, with the help key or with the search.
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/help_numbers.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/setup.h"
#include "ui/helplibrary.h"
#include "ui/helpviewer.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <functional>
#include <map>
#include <set>

namespace quorvanta {
namespace {

HelpLibrary& Library() {
    static HelpLibrary library(HelpLibrary::FindFile());
    return library;
}

// The files of the pages that the search finds, in its order.
const QStringList& Found(const QString& words) {
    static std::map<QString, QStringList> known;
    const auto [entry, isNew] = known.try_emplace(words);
    if (isNew)
        for (const HelpHit& hit : Library().Search(words))
            entry->second << hit.Page.fileName();
    return entry->second;
}

QString Plain(std::string_view caption) {
    return ToQt(StripAmpersand(std::string(caption))).simplified();
}

class HelpCoverage : public WindowCheck {
  protected:
    // Every analysis that the menus offer, with its entries from the menu bar on; its options are
    // open, in a window that can show it.
    static void ForEachAnalysis(const std::function<void(const MenuPath&, const QString&)>& act) {
        for (const i16 kind : {CalculationWindow, SimulationWindow}) {
            FileCommand(kind);
            for (i32 number = 301; number < 900; ++number) {
                const HelpSubject subject = HelpSubjectOf(number);
                if (subject.Topic != HelpTopic::Description)
                    continue;
                const bool isTest = subject.IsTest == True;
                if ((isTest && IsSimOnlyTest(subject.TestNo)) != (kind == SimulationWindow))
                    continue;
                const MenuPath path =
                    isTest ? PathToTest(subject.TestNo) : PathToDistribution(subject.DistrNo);
                isTest ? NewTest(path.back()->MenuNo) : NewDistribution(path.back()->MenuNo);
                ASSERT_TRUE(ChoosingOptions) << number;
                act(path, QString("%1.html").arg(number));
            }
        }
    }
};

TEST_F(HelpCoverage, FindsEveryAnalysisByItsEntryOfTheMenus) {
    int analyses = 0;
    ForEachAnalysis([&analyses](const MenuPath& path, const QString& page) {
        ++analyses;
        QStringList captions;
        for (const MenuItem* item : path)
            captions << Plain(item->Caption);
        EXPECT_TRUE(Found(captions.back()).contains(page)) << qPrintable(captions.join(" > "));
        const QStringList found = Found(captions.join(' '));
        constexpr int few = 5;
        EXPECT_TRUE(found.mid(0, few).contains(page))
            << qPrintable(captions.join(" > ") + ": " + found.mid(0, few).join(' '));
    });
    EXPECT_EQ(analyses, 150);
}

TEST_F(HelpCoverage, FindsEveryParameterByItsLabel) {
    std::set<i16> kinds;
    ForEachAnalysis([&kinds](const MenuPath&, const QString&) {
        for (int form = 0; form < 3; ++form) {
            for (i16 i = 0; i < NoOfIntPar; ++i)
                if (!IntParOption(static_cast<i16>(form), IntParList(i)).empty())
                    ChooseIntPar(i, static_cast<i16>(form));
            SelSetParList();
            for (i16 i = 0; i <= NoOfPar; ++i)
                kinds.insert(ParKind(i));
        }
    });
    EXPECT_GT(kinds.size(), 200U);
    const QByteArray all = Library().Html(Library().PageOfNumber(64));
    for (const i16 kind : kinds) {
        EXPECT_TRUE(all.contains("<a name=\"p" + QByteArray::number(kind) + "\">")) << kind;
        EXPECT_TRUE(Found(Plain(ParLabel(kind))).contains("64.html")) << ParLabel(kind);
    }
}

// A page that tells of it: the description of the analysis, or one that all have.
TEST_F(HelpCoverage, FindsEveryCheckBoxAndEveryFormByItsLabel) {
    std::set<QString> labels;
    ForEachAnalysis([&labels](const MenuPath&, const QString& page) {
        const auto expect = [&](std::string_view label) {
            labels.insert(Plain(label));
            EXPECT_FALSE(Found(Plain(label)).isEmpty()) << label << ", " << qPrintable(page);
        };
        for (i16 i = 0; i < NoOfCheck; ++i)
            expect(CheckLabel(CheckList(i)));
        for (i16 i = 0; i < NoOfIntPar; ++i)
            for (i16 option = 0; option <= 2; ++option)
                if (const std::string_view text = IntParOption(option, IntParList(i));
                    !text.empty())
                    expect(text);
    });
    EXPECT_GT(labels.size(), 60U);
}

// Whatever can be chosen in the option window has a tool tip, which is what the help says of it.
TEST_F(HelpCoverage, ExplainsEveryOption) {
    ForEachAnalysis([this](const MenuPath& path, const QString& page) {
        for (const auto* button : Options().findChildren<QAbstractButton*>()) {
            static const QRegularExpression explained(
                "^(chkCheck|optIntPar|chkLeftTail|cmdMethod)");
            if (button->isVisible() && button->objectName().contains(explained)) {
                EXPECT_FALSE(button->toolTip().isEmpty())
                    << qPrintable(page) << " " << path.back()->Caption << ": "
                    << qPrintable(button->text());
            }
        }
    });
}

// The classes of the windows, from their headers.
QStringList WindowClasses() {
    QStringList classes;
    const QDir folder(SOURCE_DIR "/ui");
    static const QRegularExpression expression(R"(\nclass (frm\w+))");
    for (const QString& name : folder.entryList({"*.h"})) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        auto matches = expression.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext())
            classes << matches.next().captured(1);
    }
    return classes;
}

// With no analysis open, F1 in a window leads to its topic, which the search finds by its title.
TEST_F(HelpCoverage, HasATopicForEveryWindow) {
    const QStringList classes = WindowClasses();
    EXPECT_GT(classes.size(), 20);
    // These stand for the analysis in them, or for the program; what F1 says there has its own
    // checks.
    const std::map<QString, int> others = {{"frmCalc", 23},  {"frmTable", 25},   {"frmGraph", 27},
                                           {"frmMonte", 37}, {"frmShowSmp", 22}, {"frmMain", 20},
                                           {"frmHelp", 53},  {"frmSplash", 20}};
    for (const QString& name : classes) {
        QWidget window;
        window.setObjectName(name);
        const auto other = others.find(name);
        const i32 number = other == others.end() ? HelpNumberAt(window) : other->second;
        EXPECT_NE(number, HelpContents) << qPrintable(name);
        const QUrl page = Library().PageOfNumber(number);
        EXPECT_TRUE(Library().HasPage(page)) << qPrintable(name);
        static const QRegularExpression title("<h1>(.*)</h1>");
        const QString heading = title.match(QString::fromUtf8(Library().Html(page))).captured(1);
        EXPECT_EQ(Found(PlainText(heading)).value(0), page.fileName()) << qPrintable(name);
    }
}

} // namespace
} // namespace quorvanta
