// The validation as its user meets it: the program quorvanta-validate, and the window that starts
// it.
#include "core/analysis_state.h"
#include "ui/frmvalidate.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

namespace quorvanta {
namespace {

constexpr const char* oneCase =
    "# Exact values computed by checks/reference/means.py (scipy).\n"
    "Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n"
    "menu 0\t2\t2\t0\t\t1=1,2=0\t0=0.05;62=0.5;61=0;2=1;4=64;37=64\t1\t";

struct Ended {
    int ExitCode = -1;
    QString Out;
    QString Error;
};

Ended RunProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    constexpr int longest = 600000; // milliseconds; sanitizers take their time
    EXPECT_TRUE(process.waitForFinished(longest));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

Ended Validate(const QStringList& arguments) {
    return RunProgram(frmValidate::InstalledProgram(), arguments);
}

class ValidateProgram : public testing::Test {
  protected:
    QString Path(const std::string& name) const { return ToQt(folder_.Path(name)); }

    std::string ContentOf(const std::string& name) const {
        std::ifstream file(folder_.Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // A folder of data with one case that expects this power.
    QString DataExpecting(const std::string& exact) const {
        std::filesystem::create_directories(folder_.Path("data/validation"));
        folder_.Write("data/validation/means.tsv", oneCase + exact + "\t0.002\n");
        return Path("data");
    }

    checks::TemporaryFolder folder_;
};

// All cases of the tests, and four tables of functions, of critical values and of whole sizes.
int FilesOfData() {
    constexpr int tables = 4;
    const std::filesystem::directory_iterator cases(std::string(CHECK_DATA_DIR) + "/validation");
    return tables + static_cast<int>(std::distance(begin(cases), end(cases)));
}

// The names of the cases of a report, in their order.
std::vector<std::string> CasesIn(const std::string& text) {
    static const std::regex line("(?:^|\n)([a-z_]+ \\d+) +(?:PASS|FAIL|no bound) ");
    std::vector<std::string> names;
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at)
        names.push_back((*at)[1]);
    return names;
}

TEST_F(ValidateProgram, ValidatesAllDataAndReportsItTwice) {
    const Ended run = Validate({"--text", Path("r.txt"), "--pdf", Path("r.pdf"), "--progress"});
    EXPECT_EQ(run.ExitCode, 0) << qPrintable(run.Error);
    const std::string text = ContentOf("r.txt");
    const std::vector<std::string> cases = CasesIn(text);
    EXPECT_GT(cases.size(), 14000U);
    EXPECT_TRUE(run.Out.contains(QString("progress %1 %1\n").arg(cases.size())));
    const QString summary = run.Out.trimmed().section('\n', -1);
    EXPECT_TRUE(summary.startsWith("PASS: ")) << qPrintable(summary);
    EXPECT_NE(text.find(FromQt(summary)), std::string::npos);
    for (const char* fact : {"\nDate ", "\nProgram  ", "\nProgram file ", "\nCompiler ", "\nQt ",
                             "\nOperating system "})
        EXPECT_NE(text.find(fact), std::string::npos) << fact;
    EXPECT_NE(text.find("\nReference values  part of the program, " +
                        std::to_string(FilesOfData()) + " files, SHA-256 "),
              std::string::npos);

    const std::string pdf = ContentOf("r.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF-1."));
    EXPECT_NE(pdf.find("%%EOF", pdf.size() - 16), std::string::npos);
    const Ended pages = RunProgram("pdftotext", {"-layout", Path("r.pdf"), "-"});
    EXPECT_EQ(pages.ExitCode, 0);
    EXPECT_EQ(CasesIn(FromQt(pages.Out)), cases);
}

TEST_F(ValidateProgram, TellsByItsExitCodeWhetherAllAgree) {
    const Ended right = Validate({"--data", DataExpecting("0.8014596"), "--text", Path("r.txt")});
    EXPECT_EQ(right.ExitCode, 0) << qPrintable(right.Error);
    EXPECT_NE(ContentOf("r.txt").find("NOT those of the program, but of "), std::string::npos);
    const Ended wrong = Validate(
        {"--data", DataExpecting("0.8114596"), "--text", Path("r.txt"), "--pdf", Path("r.pdf")});
    EXPECT_EQ(wrong.ExitCode, 1);
    EXPECT_TRUE(wrong.Out.contains("means 1: expected 0.8114596, found 0.80"))
        << qPrintable(wrong.Out);
    EXPECT_TRUE(wrong.Out.contains("FAIL: 0 of 1 cases"));
    EXPECT_NE(ContentOf("r.txt").find("means 1  FAIL"), std::string::npos);
    EXPECT_EQ(CasesIn(FromQt(RunProgram("pdftotext", {"-layout", Path("r.pdf"), "-"}).Out)),
              CasesIn(ContentOf("r.txt")));
}

TEST_F(ValidateProgram, SaysWhyItCantValidate) {
    for (const QStringList& arguments :
         {QStringList{"--no-such-option"}, QStringList{"file.txt"},
          QStringList{"--data", Path("no folder")}, QStringList{"--data", Path("")},
          QStringList{"--data", DataExpecting("nonsense")},
          QStringList{"--data", DataExpecting("0.8014596"), "--text", Path("no/such/r.txt")}}) {
        if (arguments.contains("--text"))
            DataExpecting("0.8014596");
        else if (arguments.contains(Path("")))
            std::filesystem::remove_all(folder_.Path("data"));
        else if (arguments.contains(Path("data")))
            DataExpecting("nonsense");
        const Ended run = Validate(arguments);
        EXPECT_EQ(run.ExitCode, 2) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(run.Error.contains("quorvanta-validate: ")) << qPrintable(run.Error);
        EXPECT_FALSE(run.Out.contains("PASS"));
    }
}

TEST_F(ValidateProgram, SaysHowItIsUsed) {
    const Ended help = Validate({"--help"});
    EXPECT_EQ(help.ExitCode, 0);
    for (const char* word : {"--text", "--pdf", "--data", "--write-data", "Exit status: 0"})
        EXPECT_TRUE(help.Out.contains(word)) << word;
    EXPECT_EQ(Validate({"--version"}).Out, "Quorvanta 3.0\n");
}

TEST_F(ValidateProgram, CarriesTheDataOfTheRepository) {
    EXPECT_EQ(Validate({"--write-data", Path("written")}).ExitCode, 0);
    int files = 0;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder_.Path("written"))) {
        if (!entry.is_regular_file())
            continue;
        const std::string name = entry.path().lexically_relative(folder_.Path("written")).string();
        std::ifstream original(std::string(CHECK_DATA_DIR) + "/" + name, std::ios::binary);
        EXPECT_EQ(ContentOf("written/" + name),
                  std::string(std::istreambuf_iterator<char>(original), {}))
            << name;
        ++files;
    }
    EXPECT_EQ(files, FilesOfData());
}

// --- The window ----------------------------------------------------------------------------------

class ValidateWindow : public OutputCheck {
  protected:
    // Chooses "About...", presses its button; `act` then has the window of the validation.
    void ValidateFromAbout(std::function<void(QWidget&)> act) {
        hands::WhenModal("frmAbout", [act](QWidget& about) {
            if (act)
                hands::WhenModal("frmValidate", act);
            hands::Click(about, "cmdValidate");
            hands::Click(about, "cmdOK");
        });
        Trigger("mnuHelp(3)");
    }
};

bool WaitFor(const std::function<bool()>& isTrue) {
    constexpr int longest = 600000; // milliseconds; sanitizers take their time
    return QTest::qWaitFor(isTrue, longest);
}

TEST_F(ValidateWindow, ReportsBesideAnOpenAnalysisAndLeavesItAlone) {
    OpenTTest();
    Press(4);
    const QString solved = Value(4);
    std::vector<std::string> texts;
    for (int kind = 0; kind <= MaxKind; ++kind)
        texts.push_back(ParText(kind));
    NameNextFile("report.pdf");
    QString result;
    ValidateFromAbout([&result](QWidget& window) {
        auto& bar = *hands::Control<QProgressBar>(window, "pgrProgress");
        EXPECT_TRUE(WaitFor([&] { return bar.value() > 0 && bar.value() < bar.maximum(); }));
        EXPECT_EQ(hands::TextOf(window, "cmdCancel"), "Cancel");
        EXPECT_TRUE(WaitFor([&] { return bar.isHidden(); }));
        result = hands::TextOf(window, "lblResult");
        hands::Click(window, "cmdOK");
    });
    EXPECT_TRUE(result.startsWith("PASS: ")) << qPrintable(result);
    EXPECT_TRUE(result.contains("report.pdf")) << qPrintable(result);
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"report.pdf", "report.txt"}));
    EXPECT_NE(ContentOf("report.txt").find("\nStarted from "), std::string::npos);
    EXPECT_TRUE(ContentOf("report.pdf").starts_with("%PDF-"));
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Validation Report"});
    EXPECT_EQ(Value(4), solved);
    for (int kind = 0; kind <= MaxKind; ++kind)
        EXPECT_EQ(ParText(kind), texts[static_cast<std::size_t>(kind)]) << kind;
    Press(4);
    EXPECT_EQ(Value(4), solved);
}

TEST_F(ValidateWindow, LeavesNothingWhenItIsCancelled) {
    for (const bool byKey : {false, true}) {
        NameNextFile("report.pdf");
        ValidateFromAbout([byKey](QWidget& window) {
            auto& bar = *hands::Control<QProgressBar>(window, "pgrProgress");
            EXPECT_TRUE(WaitFor([&] { return bar.value() > 0; }));
            if (byKey)
                QTest::keyClick(&window, Qt::Key_Escape);
            else
                hands::Click(window, "cmdCancel");
            EXPECT_TRUE(WaitFor([&] { return !window.isVisible(); }));
        });
        EXPECT_TRUE(folder_.Names().empty());
    }
}

TEST_F(ValidateWindow, AsksBeforeItReplacesEitherReport) {
    folder_.Write("report.txt", "mine");
    NameNextFile("report.pdf");
    Messages.Answers = {QMessageBox::Cancel};
    ValidateFromAbout({});
    EXPECT_EQ(Messages.Texts, QStringList{"report.txt Already Exists.\n\nReplace It?"});
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"report.txt"});
    EXPECT_EQ(ContentOf("report.txt"), "mine");
}

TEST_F(ValidateWindow, NothingHappensWithoutAName) {
    ValidateFromAbout({});
    EXPECT_EQ(Messages.FileQuestions.size(), 1);
    EXPECT_TRUE(folder_.Names().empty());
}

// A window whose validation was told to be done by this program.
QString ResultOf(const QString& program, const checks::TemporaryFolder& folder) {
    frmValidate window(nullptr, program, ToQt(folder.Path("no/such/report.pdf")),
                       ToQt(folder.Path("no/such/report.txt")));
    window.show();
    EXPECT_TRUE(
        WaitFor([&] { return window.findChild<QProgressBar*>("pgrProgress")->isHidden(); }));
    EXPECT_EQ(hands::TextOf(window, "cmdOK"), "OK");
    return hands::TextOf(window, "lblResult");
}

TEST_F(ValidateWindow, SaysWhyThereIsNoResult) {
    EXPECT_EQ(ResultOf(ToQt(folder_.Path("no-such-program")), folder_),
              "The validation could not be done.\n\nThe program quorvanta-validate can't be "
              "started.");
    folder_.Write("broken", "#!/bin/sh\necho 'no memory' >&2\nexit 2\n");
    std::filesystem::permissions(folder_.Path("broken"), std::filesystem::perms::owner_all);
    EXPECT_EQ(ResultOf(ToQt(folder_.Path("broken")), folder_),
              "The validation could not be done.\n\nno memory");
    folder_.Write("silent", "#!/bin/sh\necho 'PASS: 1 of 1'\n");
    std::filesystem::permissions(folder_.Path("silent"), std::filesystem::perms::owner_all);
    EXPECT_TRUE(ResultOf(ToQt(folder_.Path("silent")), folder_)
                    .startsWith("PASS: 1 of 1\n\nThe report could not be written to "));
}

} // namespace
} // namespace quorvanta
