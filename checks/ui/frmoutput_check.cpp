// Outputs: the Output window, the choice between picture and text, and what then lies on the
// clipboard, in files and on paper.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/records.h"
#include "core/setup.h"
#include "output/statement.h"
#include "output/surface.h"
#include "support/rtf_reader.h"
#include "ui/childwindow.h"
#include "ui/frmgraph.h"
#include "ui/output_fixture.h"
#include "ui/outputdevices.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QRadioButton>
#include <QTest>

#include <cstdint>
#include <functional>

namespace quorvanta {
namespace {

class OutputWindow : public OutputCheck {
  protected:
    QWidget& Output() { return Top("frmOutput"); }

    // Prints a text: the Output window opens.
    void ShowOutput() {
        Trigger("mnuFile(9)");
        ASSERT_TRUE(IsOpen("frmOutput"));
    }

    // Everything that a Cancel has to leave alone.
    struct Everything {
        AnalysisRecord Record;
        i16 Changed;
        i16 Calculated;
        i16 Cancelled;
        std::string Clipboard;
        std::vector<std::string> Files;

        bool operator==(const Everything&) const = default;
    };
    Everything Now() const {
        return {CurrentRecord(), AnalysisState(AnalysisNo).Changed,
                Calculated,      Cancelled,
                ClipboardText(), folder_.Names()};
    }
};

std::string Plain(const std::u16string& text) {
    return FromQt(QString::fromStdU16String(text));
}

// --- The window -------------------------------------------------------------------------------

TEST_F(OutputWindow, HasItsCaptions) {
    OpenTTest();
    ShowOutput();
    EXPECT_EQ(Output().windowTitle(), "Output");
    const auto caption = [this](const char* name) { return hands::TextOf(Output(), name); };
    EXPECT_EQ(caption("cmdPrintOutput"), "&Print");
    EXPECT_EQ(caption("cmdCopyOutput"), "C&opy");
    EXPECT_EQ(caption("cmdSave"), "&Save");
    EXPECT_EQ(caption("cmdEditOutput"), "&Edit Output");
    EXPECT_EQ(caption("cmdCancel"), "&Cancel");
}

TEST_F(OutputWindow, ShowsTheResultAndTheStatement) {
    OpenTTest();
    Press(PlaceOf("Sample Size &1"));
    ShowOutput();
    const QString text = hands::Control(Output(), "PicOutput")->accessibleDescription();
    EXPECT_TRUE(text.startsWith("Student's t-test, Unpaired, two-sided."));
    EXPECT_TRUE(text.contains("Sample Size 1"));
    EXPECT_TRUE(text.simplified().contains("The test used is Student's t-test, Unpaired, "
                                           "two-sided, at the significance level 0.05."))
        << qPrintable(text);
}

TEST_F(OutputWindow, ClosesByItsButtonAndByEsc) {
    OpenTTest();
    for (const bool byKey : {false, true}) {
        ShowOutput();
        if (byKey)
            QTest::keyClick(&Output(), Qt::Key_Escape);
        else
            hands::Click(Output(), "cmdCancel");
        EXPECT_FALSE(IsOpen("frmOutput"));
    }
    ShowOutput();
    PressAltKey(Output(), Qt::Key_C);
    EXPECT_FALSE(IsOpen("frmOutput"));
}

TEST_F(OutputWindow, ClosesWhenItsResultIsStale) {
    ExpectClosesWhenStale("frmOutput", "mnuFile(9)");
}

TEST_F(OutputWindow, ClosesWhenANewWindowOpens) {
    OpenTTest();
    ShowOutput();
    Trigger("mnuFile(0)");
    EXPECT_FALSE(IsOpen("frmOutput")) << "a new window has no result";
}

TEST_F(OutputWindow, ClosesWhenAnotherWindowComesToTheFront) {
    OpenTTest();
    OpenTTest();
    ShowOutput();
    Window().RaiseChild(CalculationWindow, 1);
    EXPECT_FALSE(IsOpen("frmOutput"));
}

TEST_F(OutputWindow, GivesWayToTheSummary) {
    OpenTTest();
    ShowOutput();
    Trigger("mnuGetInfo(3)");
    EXPECT_FALSE(IsOpen("frmOutput"));
    EXPECT_TRUE(IsOpen("frmSummary"));
}

TEST_F(OutputWindow, FollowsWhatIsEditedInTheTable) {
    OpenRun(TableWindow);
    ShowOutput();
    hands::WhenModal("frmEditTable", [](QWidget& edit) {
        hands::Control<QPlainTextEdit>(edit, "txtTitle")->setPlainText("Another title");
        hands::Click(edit, "cmdOK");
    });
    hands::Click(Child(), "cmdEditTable");
    EXPECT_TRUE(hands::Control(Output(), "PicOutput")
                    ->accessibleDescription()
                    .startsWith("Another title\n"));
}

// --- Its dialog -------------------------------------------------------------------------------

TEST_F(OutputWindow, IsEditedLikeATable) {
    OpenRun(TableWindow);
    ShowOutput();
    const QImage before = Output().grab().toImage();
    bool seen = false;
    hands::WhenModal("frmEditTable", [&seen](QWidget& edit) {
        seen = true;
        EXPECT_EQ(edit.windowTitle(), "Edit Output");
        EXPECT_EQ(Captions(edit),
                  (QStringList{"&Cancel", "&Font Name:", "&No Of Columns:", "&OK",
                               "&Title:", "Font &Bold:", "Font &Size:", "No Of &Decimals:"}));
        hands::Control<QPlainTextEdit>(edit, "txtTitle")->setFocus();
        QTest::keyClick(hands::Control(edit, "txtTitle"), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(hands::Control(edit, "txtTitle"), "New title");
        hands::TypeInto(edit, "txtColumns", "2");
        hands::TypeInto(edit, "txtDecimals", "5");
        hands::TypeInto(edit, "txtFontSize", "14");
        hands::Click(edit, "chkFontBold");
        hands::Click(edit, "cmdOK");
    });
    PressAltKey(Output(), Qt::Key_E);
    ASSERT_TRUE(seen);
    EXPECT_EQ(OutTitle(0), "New title");
    EXPECT_EQ(OutCurveWidth, 2);
    EXPECT_EQ(OutDecimals, 5);
    EXPECT_EQ(OutFontSize, "14");
    EXPECT_EQ(OutFontBold, 0) << "it started bold";
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
    EXPECT_NE(Output().grab().toImage(), before);
    EXPECT_TRUE(
        hands::Control(Output(), "PicOutput")->accessibleDescription().startsWith("New title\n"));
}

TEST_F(OutputWindow, LeavesEverythingWhenTheDialogIsGivenUp) {
    OpenRun(TableWindow);
    ShowOutput();
    const QString shown = hands::Control(Output(), "PicOutput")->accessibleDescription();
    for (const bool byKey : {false, true}) {
        const Everything before = Now();
        hands::WhenModal("frmEditTable", [byKey](QWidget& edit) {
            hands::TypeInto(edit, "txtColumns", "1");
            hands::TypeInto(edit, "txtFontSize", "30");
            hands::Click(edit, "chkFontBold");
            if (byKey)
                QTest::keyClick(&edit, Qt::Key_Escape);
            else
                hands::Click(edit, "cmdCancel");
        });
        hands::Click(Output(), "cmdEditOutput");
        EXPECT_TRUE(Now() == before);
        EXPECT_EQ(hands::Control(Output(), "PicOutput")->accessibleDescription(), shown);
    }
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(OutputWindow, LetsTheTitleOfACalculationBeEdited) {
    OpenTTest();
    const auto retitle = [this](const QString& from, const QString& to) {
        ShowOutput();
        hands::WhenModal("frmEditTable", [&](QWidget& edit) {
            EXPECT_EQ(Captions(edit), (QStringList{"&Cancel", "&Font Name:", "&OK",
                                                   "&Title:", "Font &Bold:", "Font &Size:"}));
            auto* title = hands::Control<QPlainTextEdit>(edit, "txtTitle");
            EXPECT_EQ(title->toPlainText(), from);
            title->setPlainText(to);
            hands::Click(edit, "cmdOK");
        });
        hands::Click(Output(), "cmdEditOutput");
        return hands::Control(Output(), "PicOutput")->accessibleDescription();
    };
    const QString headline = "Student's t-test, Unpaired, two-sided.";
    EXPECT_TRUE(retitle(headline, "Study A\nPhase 2").startsWith("Study A\nPhase 2\n"));
    hands::Click(Output(), "cmdCancel");

    // It goes into the file and comes back; another test starts with its own headline.
    NameNextFile("a.dim");
    Trigger("mnuFile(7)");
    NameNextFile("a.dim");
    Trigger("mnuFile(5)");
    EXPECT_TRUE(retitle("Study A\nPhase 2", "").startsWith(headline)) << "none: the headline";
    Trigger("mnuStudent(1)");
    AcceptOptions();
    EXPECT_TRUE(retitle("Student's t-test, Paired, two-sided.", "x").startsWith("x\n"));
}

// A graph keeps its curve width where a table keeps its columns.
TEST_F(OutputWindow, LeavesTheCurveWidthOfAGraphAlone) {
    OpenRun(GraphWindow);
    OutCurveWidth = 0;
    hands::WhenModal("frmGraphOrText", [](QWidget& question) {
        hands::Click(question, "optForm(1)");
        hands::Click(question, "cmdOK");
    });
    ShowOutput();
    const QString four = hands::Control(Output(), "PicOutput")->accessibleDescription();
    hands::WhenModal("frmEditTable", [](QWidget& edit) {
        EXPECT_FALSE(Captions(edit).contains("&No Of Columns:"));
        hands::TypeInto(edit, "txtDecimals", "6");
        hands::Click(edit, "cmdOK");
    });
    hands::Click(Output(), "cmdEditOutput");
    EXPECT_TRUE(Messages.Texts.isEmpty());
    EXPECT_EQ(OutCurveWidth, 0);
    EXPECT_EQ(OutDecimals, 6);
    EXPECT_NE(hands::Control(Output(), "PicOutput")->accessibleDescription(), four);
}

// --- Copies -----------------------------------------------------------------------------------

TEST_F(OutputWindow, CopiesTextAndRtf) {
    OpenTTest();
    const std::string power = FromQt(Value(PlaceOf("&Power")));
    ShowOutput();
    for (const int way : {0, 1, 2}) {
        EmptyClipboard();
        Messages.Texts.clear();
        if (way == 0)
            hands::Click(Output(), "cmdCopyOutput");
        else if (way == 1)
            PressAltKey(Output(), Qt::Key_O);
        else
            PressCtrlKey(Output(), Qt::Key_C);
        const QStringList formats = QApplication::clipboard()->mimeData()->formats();
        EXPECT_TRUE(formats.contains("text/plain"));
        EXPECT_TRUE(formats.contains("text/rtf"));
        EXPECT_TRUE(formats.contains("application/rtf"));
        EXPECT_NE(ClipboardText().find("Power"), std::string::npos);
        const checks::ShownRtf rtf = checks::Read(ClipboardRtf());
        EXPECT_NE(Plain(rtf.Text).find("\nPower\t" + power + "\n"), std::string::npos);
        EXPECT_NE(Plain(rtf.Text).find(SumStatement()), std::string::npos);
        EXPECT_EQ(Messages.Texts, QStringList{"Calculation Has Been Copied To the Clipboard for "
                                              "Pasting Into Other Applications"});
        EXPECT_EQ(Messages.Titles.back(), "Copy");
        EXPECT_EQ(Cancelled, False);
        EXPECT_TRUE(IsOpen("frmOutput"));
    }
}

TEST_F(OutputWindow, CopiesWhatTextsTheUserHasGiven) {
    OpenRun(TableWindow);
    OutTitle(0) = "{Größe} \\ α ≤ 5 % 😀";
    OutXAxis(0) = "x\\par}";
    Trigger("mnuFile(10)");
    const std::string text = Plain(checks::Read(ClipboardRtf()).Text);
    EXPECT_EQ(text.find("{Größe} \\ α ≤ 5 % 😀\n"), 0U);
    EXPECT_NE(text.find("\nx\\par}\t"), std::string::npos);
    EXPECT_EQ(ClipboardText().find("{Größe} \\ α ≤ 5 % 😀\n"), 0U);
    EXPECT_EQ(Messages.Texts, QStringList{"Table Has Been Copied To the Clipboard for Pasting "
                                          "Into Other Applications"});
}

// --- Files ------------------------------------------------------------------------------------

TEST_F(OutputWindow, SavesAnRtfFile) {
    OpenRun(TableWindow);
    ShowOutput();
    AnalysisState(AnalysisNo).Changed = False;
    NameNextFile("report");
    hands::Click(Output(), "cmdSave");
    EXPECT_EQ(Messages.FileQuestions, QStringList{"Save Table"});
    EXPECT_EQ(Messages.FileProposals, QStringList{"Table1"});
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"report.rtf"});
    const std::string text = Plain(checks::Read(ContentOf("report.rtf")).Text);
    EXPECT_EQ(text.find("Student's t-test, Unpaired, two-sided.\n"), 0U);
    EXPECT_NE(text.find(SumStatement() + "\n"), std::string::npos);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, False);
    EXPECT_TRUE(Messages.Texts.isEmpty());

    NameNextFile("by key");
    PressCtrlKey(Output(), Qt::Key_S);
    EXPECT_EQ(ContentOf("by key.rtf"), ContentOf("report.rtf"));
}

TEST_F(OutputWindow, GivesUpAtEveryQuestion) {
    OpenRun(GraphWindow);
    EmptyClipboard();
    const Everything before = Now();
    for (const QString entry : {"mnuFile(9)", "mnuFile(10)", "mnuFile(11)"}) {
        for (const bool byKey : {false, true}) {
            bool asked = false;
            hands::WhenModal("frmGraphOrText", [&](QWidget& question) {
                asked = true;
                hands::Click(question, "optForm(1)");
                if (byKey)
                    QTest::keyClick(&question, Qt::Key_Escape);
                else
                    hands::Click(question, "cmdCancel");
            });
            Trigger(entry);
            EXPECT_TRUE(asked);
            EXPECT_TRUE(Now() == before) << qPrintable(entry);
            EXPECT_FALSE(IsOpen("frmOutput"));
        }
    }
    for (const char* form : {"optForm(0)", "optForm(1)"}) {
        hands::WhenModal("frmGraphOrText", [form](QWidget& question) {
            hands::Click(question, form);
            hands::Click(question, "cmdOK");
        });
        Trigger("mnuFile(11)"); // the file dialog is given up
        EXPECT_TRUE(Now() == before);
    }
    EXPECT_EQ(Messages.FileQuestions, (QStringList{"Save Graph", "Save Graph"}));
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(OutputWindow, TellsAFailureInTheStatusLineAlone) {
    OpenRun(TableWindow);
    ShowOutput();
    NameNextFile("missing/a.rtf");
    hands::Click(Output(), "cmdSave");
    EXPECT_TRUE(Messages.Texts.isEmpty());
    EXPECT_EQ(Cancelled, False);
    EXPECT_TRUE(folder_.Names().empty());
}

// --- Graphs -----------------------------------------------------------------------------------

class GraphOutput : public OutputCheck {
  protected:
    GraphOutput() { OpenRun(GraphWindow); }

    QSize SizeInPrint() {
        const auto& graph = *qobject_cast<frmGraph*>(&Child());
        constexpr int dotsPerInch = 300;
        return (graph.PictureInches() * dotsPerInch).toSize();
    }

    void Choose(const char* entry, const char* form) {
        hands::WhenModal("frmGraphOrText", [form](QWidget& question) {
            hands::Click(question, form);
            hands::Click(question, "cmdOK");
        });
        Trigger(entry);
    }

    static std::uint32_t Number(const std::string& bytes, std::size_t at, int width) {
        std::uint32_t number = 0;
        for (int i = width - 1; i >= 0; --i)
            number =
                number << 8U | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
        return number;
    }

    // Black ink on white paper, whatever the palette of the screen is.
    static void ExpectGraph(const QImage& picture) {
        int white = 0;
        int black = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                white += pixel == qRgb(255, 255, 255) ? 1 : 0;
                black += pixel == qRgb(0, 0, 0) ? 1 : 0;
            }
        }
        EXPECT_GT(white, picture.width() * picture.height() / 2);
        EXPECT_GT(black, 1000);
        EXPECT_EQ(picture.pixel(0, 0), qRgb(255, 255, 255));
    }
};

TEST_F(GraphOutput, AsksForPictureOrText) {
    const struct {
        const char* Entry;
        QString Caption;
        QString Action;
    } questions[] = {{"mnuFile(9)", "Print Graph", "Print"},
                     {"mnuFile(10)", "Copy Graph to Clipboard", "Copy"},
                     {"mnuFile(11)", "Save Graph", "Save"}};
    for (const auto& told : questions) {
        bool asked = false;
        hands::WhenModal("frmGraphOrText", [&](QWidget& question) {
            asked = true;
            EXPECT_EQ(question.windowTitle(), told.Caption);
            EXPECT_EQ(hands::TextOf(question, "optForm(0)"),
                      told.Action + " as Picture (Bitmap format)");
            EXPECT_EQ(hands::TextOf(question, "optForm(1)"), told.Action + " as Text (RTF format)");
            EXPECT_EQ(hands::TextOf(question, "cmdOK"), told.Action);
            EXPECT_TRUE(hands::Control<QRadioButton>(question, "optForm(0)")->isChecked());
            QTest::keyClick(&question, Qt::Key_Escape);
        });
        Trigger(told.Entry);
        EXPECT_TRUE(asked);
    }
}

TEST_F(GraphOutput, IsCopiedAsAPicture) {
    EmptyClipboard();
    Choose("mnuFile(10)", "optForm(0)");
    const QMimeData* data = QApplication::clipboard()->mimeData();
    ASSERT_TRUE(data->hasImage());
    EXPECT_FALSE(data->hasText());
    const QImage picture = QApplication::clipboard()->image();
    EXPECT_EQ(picture.size(), SizeInPrint());
    ExpectGraph(picture);
    EXPECT_EQ(Messages.Texts, QStringList{"Graph Has Been Copied To the Clipboard for Pasting "
                                          "Into Other Applications"});
    EXPECT_EQ(Messages.Titles, QStringList{"Copy"});
}

TEST_F(GraphOutput, IsCopiedAsAText) {
    EmptyClipboard();
    Choose("mnuFile(10)", "optForm(1)");
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasImage());
    EXPECT_NE(Plain(checks::Read(ClipboardRtf()).Text).find(SumStatement()), std::string::npos);
}

// The header as the format has it: 14 bytes of the file, 40 of the picture, rows of whole 4 bytes.
TEST_F(GraphOutput, IsSavedAsABitmap) {
    NameNextFile("graph");
    Choose("mnuFile(11)", "optForm(0)");
    ASSERT_EQ(folder_.Names(), std::vector<std::string>{"graph.bmp"});
    const std::string file = ContentOf("graph.bmp");
    const QSize size = SizeInPrint();
    ASSERT_GT(file.size(), 54U);
    EXPECT_EQ(file.substr(0, 2), "BM");
    EXPECT_EQ(Number(file, 2, 4), file.size());
    EXPECT_EQ(Number(file, 10, 4), 54U) << "where the pixels begin";
    EXPECT_EQ(Number(file, 14, 4), 40U);
    EXPECT_EQ(static_cast<int>(Number(file, 18, 4)), size.width());
    EXPECT_EQ(static_cast<int>(Number(file, 22, 4)), size.height());
    EXPECT_EQ(Number(file, 26, 2), 1U) << "planes";
    EXPECT_EQ(Number(file, 28, 2), 24U) << "bits of a pixel";
    EXPECT_EQ(Number(file, 30, 4), 0U) << "not compressed";
    EXPECT_EQ(Number(file, 38, 4), 11811U) << "300 dots per inch in dots per metre";
    const std::size_t row = (static_cast<std::size_t>(size.width()) * 3 + 3) / 4 * 4;
    EXPECT_EQ(file.size(), 54 + row * static_cast<std::size_t>(size.height()));
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(QByteArray::fromStdString(file), "BMP"));
    ExpectGraph(picture);
    EXPECT_EQ(AnalysisState(AnalysisNo).Changed, True);
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(GraphOutput, IsSavedAsAText) {
    NameNextFile("graph.rtf");
    Choose("mnuFile(11)", "optForm(1)");
    EXPECT_NE(Plain(checks::Read(ContentOf("graph.rtf")).Text).find(SumStatement()),
              std::string::npos);
}

// --- Paper ------------------------------------------------------------------------------------

class Printing : public OutputWindow {
  protected:
    // The pages that the preview shows before it is closed by Esc.
    int PagesOf(const QString& title, const std::function<void()>& print) {
        int pages = 0;
        hands::WhenModal("printPreview", [&](QWidget& preview) {
            EXPECT_EQ(preview.windowTitle(), title);
            auto* shown = preview.findChild<QPrintPreviewWidget*>();
            EXPECT_TRUE(QTest::qWaitFor([shown] { return shown->pageCount() > 0; }));
            pages = shown->pageCount();
            orientation_ = shown->orientation();
            QTest::keyClick(&preview, Qt::Key_Escape);
        });
        print();
        return pages;
    }

    QPageLayout::Orientation orientation_ = QPageLayout::Portrait;
};

TEST_F(Printing, ShowsThePagesOfATextFirst) {
    OpenTTest();
    ShowOutput();
    const Everything before = Now();
    const QString title = "Calculation 1";
    EXPECT_EQ(PagesOf(title, [this] { hands::Click(Output(), "cmdPrintOutput"); }), 1);
    EXPECT_EQ(PagesOf(title, [this] { PressAltKey(Output(), Qt::Key_P); }), 1);
    EXPECT_EQ(PagesOf(title, [this] { PressCtrlKey(Output(), Qt::Key_P); }), 1);
    EXPECT_TRUE(Now() == before);
    EXPECT_TRUE(Messages.Texts.isEmpty());
}

TEST_F(Printing, BreaksALongTableIntoPages) {
    OpenRun(TableWindow);
    QWidget& parameters = *Window().Floating(FloatingWindow::Parameters);
    hands::TypeInto(parameters, "txtXminValue", "0.01");
    hands::TypeInto(parameters, "txtXmaxValue", "0.9");
    hands::TypeInto(parameters, "txtXstepValue", "0.01");
    hands::TypeInto(parameters, "txtZValue", "0.01 0.02 0.03 0.04 0.05");
    hands::Click(parameters, "cmdOK");
    ASSERT_EQ(TableY.Raw().size(), 90U * 5U);
    ShowOutput();
    // Two blocks of ninety rows with their heads; a page has 60 to 75 lines of 9 points.
    const int pages = PagesOf("Table 1", [this] { hands::Click(Output(), "cmdPrintOutput"); });
    EXPECT_GE(pages, 3);
    EXPECT_LE(pages, 4);
    EXPECT_EQ(orientation_, QPageLayout::Portrait);
}

TEST_F(Printing, PrintsAGraphAsAPicture) {
    OpenRun(GraphWindow);
    const Everything before = Now();
    hands::WhenModal("frmGraphOrText", [](QWidget& question) { hands::Click(question, "cmdOK"); });
    EXPECT_EQ(PagesOf("Graph 1", [this] { Trigger("mnuFile(9)"); }), 1);
    EXPECT_EQ(orientation_, QPageLayout::Landscape);
    EXPECT_TRUE(Now() == before);
}

TEST_F(Printing, TurnsThePagesOfThePrinter) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(ToQt(folder_.Path("page.pdf")));
    PrintOn(printer, [](Surface& surface) {
        EXPECT_TRUE(surface.IsPrinter());
        EXPECT_TRUE(surface.HasPages());
        surface.SetFont({"Arial", 9, false});
        surface.Text({0, 0}, "first");
        surface.NewPage();
        surface.Text({0, 0}, "second");
    });
    const std::string file = ContentOf("page.pdf");
    EXPECT_EQ(file.substr(0, 5), "%PDF-");
    EXPECT_NE(file.find("/Count 2"), std::string::npos) << "pages";
}

} // namespace
} // namespace quorvanta
