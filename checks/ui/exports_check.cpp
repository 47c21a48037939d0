// The files and clipboard forms that results go out in, read back by readers of those forms.
#include "core/analysis_state.h"
#include "output/distrplot.h"
#include "output/document.h"
#include "output/statement.h"
#include "support/csv_reader.h"
#include "support/pdf_reader.h"
#include "support/refusals.h"
#include "ui/output_fixture.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QStatusBar>
#include <QSvgRenderer>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QXmlStreamReader>

#include <cstdlib>

namespace quorvanta {
namespace {

constexpr auto NastyTitle = "<b>\"Größe\" & 'α' ≤ 5 %</b> \\ {x} ]]> 😀";

class Exports : public OutputCheck {
  protected:
    QByteArray Saved(const std::string& name) {
        NameNextFile(name);
        Trigger("mnuFile(11)");
        return QByteArray::fromStdString(ContentOf(name));
    }
    // Of a graph, as a picture.
    QByteArray SavedPicture(const std::string& name) {
        hands::WhenModal("frmGraphOrText",
                         [](QWidget& question) { hands::Click(question, "cmdOK"); });
        return Saved(name);
    }

    static QSize SizeInPrint() { return (QSizeF(6.6, 4.6) * 300).toSize(); }
};

// The cells of the tables in a page, as a reader of HTML lays them out; one after another.
QList<QList<QStringList>> TablesOf(const QTextDocument& page) {
    QList<QList<QStringList>> tables;
    for (QTextFrame* frame : page.rootFrame()->childFrames()) {
        const auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr)
            continue;
        QList<QStringList> rows;
        for (int k = 0; k < table->rows(); ++k) {
            QStringList row;
            for (int j = 0; j < table->columns(); ++j) {
                const QTextTableCell cell = table->cellAt(k, j);
                QTextCursor cursor = cell.firstCursorPosition();
                cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
                row << cursor.selectedText();
            }
            rows << row;
        }
        tables << rows;
    }
    return tables;
}

// The numbers of the run stand in the cells, below the heads.
void ExpectRunIn(const QList<QStringList>& rows) {
    const auto heads = static_cast<int>(rows.size()) - TableX.HighBound();
    for (int k = 1; k <= TableX.HighBound(); ++k) {
        const QStringList& row = rows[heads + k - 1];
        ASSERT_EQ(row.size(), TableY.HighBound2() + 1);
        EXPECT_NEAR(row[0].toDouble(), f64{TableX(k)}, 1e-6);
        for (int j = 1; j <= TableY.HighBound2(); ++j)
            EXPECT_NEAR(row[j].toDouble(), f64{TableY(k, j)}, 0.0005001) << k << ", " << j;
    }
    for (int j = 1; j <= TableY.HighBound2(); ++j)
        EXPECT_NEAR(rows[heads - 1][j].toDouble(), f64{ZValues(j)}, 1e-6);
}

// --- Tables -----------------------------------------------------------------------------------

TEST_F(Exports, ATableGoesToTheClipboardInThreeForms) {
    OpenRun(TableWindow);
    OutTitle(0) = NastyTitle;
    Trigger("mnuFile(10)");
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(data->text().toStdString(), PlainText(ResultDocument()));
    EXPECT_EQ(data->data("text/rtf").toStdString(), RtfOf(ResultDocument()));
    EXPECT_EQ(data->html().toStdString(), HtmlOf(ResultDocument()));
    QTextDocument page;
    page.setHtml(data->html());
    const auto tables = TablesOf(page);
    ASSERT_EQ(tables.size(), 1);
    ExpectRunIn(tables[0]);
    EXPECT_TRUE(page.toPlainText().startsWith(QString(NastyTitle) + '\n'));
    const QString plain = page.toPlainText();
    EXPECT_TRUE(plain.simplified().endsWith(ToQt(SumStatement()).simplified() + " Quorvanta 3.0"));
    EXPECT_EQ(page.metaInformation(QTextDocument::DocumentTitle), NastyTitle);
}

TEST_F(Exports, ATableIsSavedAsAWebPage) {
    OpenRun(TableWindow);
    OutXAxis(0) = NastyTitle;
    OutCurveWidth = 1; // a block for each column
    const QByteArray html = Saved("t.html");
    EXPECT_EQ(html.toStdString(), HtmlOf(ResultDocument()));
    QTextDocument page;
    page.setHtml(QString::fromUtf8(html));
    const auto tables = TablesOf(page);
    ASSERT_EQ(tables.size(), TableY.HighBound2());
    for (const auto& rows : tables)
        EXPECT_EQ(rows[rows.size() - TableX.HighBound() - 1][0], NastyTitle);
}

TEST_F(Exports, ATableIsSavedAsCsv) {
    OpenRun(TableWindow);
    OutTitle(0) = NastyTitle;
    OutCurveWidth = 1;
    Saved("t.csv");
    const auto records = checks::ReadCsv(ContentOf("t.csv"));
    QList<QStringList> rows;
    for (const auto& record : records) {
        QStringList row;
        for (std::size_t j = 0; j + 3 < record.size(); ++j)
            row << ToQt(record[j]);
        rows << row;
    }
    for (int j = 1; j <= TableY.HighBound2(); ++j)
        rows[0][j].remove(QRegularExpression("^.* = |\\)$"));
    ExpectRunIn(rows);
    EXPECT_EQ(records[1][records[1].size() - 3], NastyTitle);
    EXPECT_EQ(records[1][records[1].size() - 2], SumStatement());
}

// The name that is typed chooses, else the filter of the dialog.
TEST_F(Exports, TheChosenFilterGivesTheExtension) {
    OpenRun(TableWindow);
    Messages.FileTypes = {2, 2, 1};
    NameNextFile("Phase 2.5");
    Trigger("mnuFile(11)");
    NameNextFile("b.rtf");
    Trigger("mnuFile(11)");
    NameNextFile("c");
    Trigger("mnuFile(11)");
    NameNextFile("d");
    Trigger("mnuFile(11)");
    EXPECT_EQ(folder_.Names(),
              (std::vector<std::string>{"Phase 2.5.csv", "b.rtf", "c.html", "d.rtf"}));
    EXPECT_EQ(ContentOf("Phase 2.5.csv"), CsvOf(ResultDocument()));
    EXPECT_EQ(ContentOf("b.rtf"), RtfOf(ResultDocument()));
}

// --- Pictures ---------------------------------------------------------------------------------

// The text of all elements of that name.
QStringList TextsOf(const QByteArray& xml, const QString& name) {
    QStringList texts;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            texts << reader.readElementText(QXmlStreamReader::IncludeChildElements);
    EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    return texts;
}

// The share of pixels that are not alike in two pictures made a quarter as large.
f64 Difference(const QImage& a, const QImage& b) {
    const QSize size = a.size() / 4;
    const auto grey = [size](const QImage& image) {
        return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_Grayscale8);
    };
    const QImage one = grey(a);
    const QImage other = grey(b);
    f64 sum = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            sum += std::abs(one.constScanLine(y)[x] - other.constScanLine(y)[x]) / 255.0;
    return sum / (size.width() * size.height());
}

class PictureExports : public Exports {
  protected:
    PictureExports() {
        OpenRun(GraphWindow);
        OutTitle(0) = NastyTitle;
        OutFontName = "Deja\"Vu <Sans> & 'x'";
    }

    // The bitmap, which is checked by itself.
    QImage Bitmap() {
        QImage image;
        EXPECT_TRUE(image.loadFromData(SavedPicture("g.bmp"), "BMP"));
        return image;
    }
};

TEST_F(PictureExports, APngIsThePictureWithItsNotes) {
    const QByteArray png = SavedPicture("g.png");
    QImage image;
    ASSERT_TRUE(image.loadFromData(png, "PNG"));
    EXPECT_EQ(image.dotsPerMeterX(), 11811);
    EXPECT_EQ(image.text("Title"), NastyTitle);
    EXPECT_EQ(image.text("Description").simplified(), ToQt(SumStatement()).simplified());
    EXPECT_EQ(image.text("Software"), "Quorvanta 3.0");
    EXPECT_EQ(image.convertToFormat(QImage::Format_RGB888),
              Bitmap().convertToFormat(QImage::Format_RGB888));
}

TEST_F(PictureExports, AnSvgIsThePictureWithItsNotes) {
    const QByteArray svg = SavedPicture("g.svg");
    EXPECT_EQ(TextsOf(svg, "title"), QStringList{NastyTitle});
    EXPECT_EQ(TextsOf(svg, "desc"), QStringList{ToQt(SumStatement()) + "\nQuorvanta 3.0"});
    EXPECT_TRUE(TextsOf(svg, "text").join("").contains(NastyTitle)) << "a part for each script";
    QSvgRenderer renderer(svg);
    ASSERT_TRUE(renderer.isValid());
    const QImage bitmap = Bitmap();
    QImage drawn(bitmap.size(), QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    EXPECT_LT(Difference(drawn, bitmap), 0.01);
    QImage blank = bitmap;
    blank.fill(Qt::white);
    EXPECT_GT(Difference(drawn, blank), 0.01);
}

// A control character is no text that XML could hold.
TEST_F(PictureExports, ControlCharactersBreakNoSvg) {
    OutTitle(0) = "a\x01"
                  "b\x1F"
                  "c";
    OutXAxis(0) = "x\x08y";
    const QByteArray svg = SavedPicture("g.svg");
    EXPECT_EQ(TextsOf(svg, "title"), QStringList{"abc"});
    EXPECT_TRUE(TextsOf(svg, "text").contains("xy"));
}

// The unfiltered object of the metadata, and the texts of the page by their Unicode tables.
TEST_F(PictureExports, APdfHasTheStatementBelowThePicture) {
    const QByteArray pdf = SavedPicture("g.pdf");
    ASSERT_TRUE(pdf.startsWith("%PDF-1."));
    EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
    const qsizetype begin = pdf.indexOf("<x:xmpmeta");
    const qsizetype end = pdf.indexOf("</x:xmpmeta>");
    ASSERT_TRUE(begin > 0 && end > begin);
    const QByteArray metadata = pdf.mid(begin, end - begin) + "</x:xmpmeta>";
    EXPECT_EQ(TextsOf(metadata, "title"), QStringList{NastyTitle});
    EXPECT_EQ(TextsOf(metadata, "description"), QStringList{ToQt(SumStatement())});
    EXPECT_EQ(TextsOf(metadata, "CreatorTool"), QStringList{"Quorvanta 3.0"});
    // Some fonts draw letters together.
    QString drawn = checks::PdfReader(pdf).Text().normalized(QString::NormalizationForm_KC);
    EXPECT_TRUE(drawn.contains("Größe")) << qPrintable(drawn);
    QString statement = ToQt(SumStatement()) + "Quorvanta 3.0";
    EXPECT_TRUE(drawn.remove(QRegularExpression("\\s")).contains(statement.remove(' ')))
        << qPrintable(drawn);
    const auto box = QRegularExpression("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]")
                         .match(QString::fromLatin1(pdf));
    ASSERT_TRUE(box.hasMatch());
    const QSizeF inches = QSizeF(Bitmap().size()) / 300;
    EXPECT_NEAR(box.captured(1).toDouble(), inches.width() * 72, 1);
    EXPECT_GT(box.captured(2).toDouble(), inches.height() * 72 + 20) << "room for the statement";
}

// --- The other pictures -----------------------------------------------------------------------

TEST_F(Exports, TheDistributionGraphIsSavedWithItsStatement) {
    OpenTTest();
    Trigger("mnuGetInfo(4)");
    NameNextFile("d.svg");
    hands::Click(Top("frmDistrGraph"), "cmdSave");
    const QByteArray svg = QByteArray::fromStdString(ContentOf("d.svg"));
    EXPECT_TRUE(QSvgRenderer(svg).isValid());
    EXPECT_EQ(TextsOf(svg, "desc"), QStringList{ToQt(SumStatement()) + "\nQuorvanta 3.0"});
    EXPECT_TRUE(TextsOf(svg, "text").contains(ToQt(DistrGraph().XAxis(0))));
}

// --- Failures ---------------------------------------------------------------------------------

TEST_F(Exports, AFileThatCantBeWrittenStaysAsItWas) {
    OpenRun(TableWindow);
    for (const std::string name : {"a.html", "a.csv"}) {
        const QByteArray before = Saved(name);
        ASSERT_GT(before.size(), 100);
        OutTitle(0) = name;
        Messages.Answers = {QMessageBox::Yes};
        const checks::FileSizeLimit fullDisk(100);
        EXPECT_EQ(Saved(name), before);
        EXPECT_EQ(Messages.Texts.back(), ToQt(name) + " Already Exists.\n\nReplace It?");
        EXPECT_EQ(Window().statusBar()->currentMessage(), "The Output Can't Be Saved. The File " +
                                                              ToQt(folder_.Path(name)) +
                                                              " Can't Be Written.");
    }
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.csv", "a.html"}));
}

} // namespace
} // namespace quorvanta
