#include "ui/picturefiles.h"

#include "core/program_name.h"
#include "output/html.h"
#include "ui/paintsurface.h"
#include "ui/qttext.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace quorvanta {

namespace {

constexpr f64 InchesPerMetre = 1 / 0.0254;
constexpr int DotsPerInch = 300;

// Bytes that a device writes; none of them if it failed.
template <class Write>
QByteArray BytesOf(Write write) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return write(buffer) ? bytes : QByteArray();
}

QByteArray ImageFile(const QImage& image, const char* format) {
    return BytesOf([&](QBuffer& buffer) { return image.save(&buffer, format); });
}

std::string Description(const PictureNotes& notes) {
    return notes.Statement + "\n" + ProgramNameAndVersion;
}

// What the text is drawn as where control characters would break the file.
std::string WithoutControls(std::string_view text) {
    QString shown = ToQt(text);
    shown.removeIf([](QChar c) {
        return c.category() == QChar::Other_Control || c == QChar(0xFFFE) || c == QChar(0xFFFF);
    });
    return FromQt(shown);
}

// The generator writes the name of the font and the texts as they are.
class SvgSurface : public PaintSurface {
  public:
    using PaintSurface::PaintSurface;

    void SetFont(const Font& font) override {
        Font named = font;
        std::erase_if(named.Name, [](char c) {
            return c == '<' || c == '>' || c == '&' || c == '"' || c == '\'';
        });
        named.Name = WithoutControls(named.Name);
        PaintSurface::SetFont(named);
    }
    void Text(Point upperLeft, std::string_view text) override {
        PaintSurface::Text(upperLeft, WithoutControls(text));
    }
};

QByteArray SvgDrawing(const Drawing& drawing, QSizeF inches) {
    return BytesOf([&](QBuffer& buffer) {
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setResolution(DotsPerInch);
        generator.setSize((inches * DotsPerInch).toSize());
        generator.setTitle("");
        generator.setDescription("");
        generator.setViewBox(QRectF({}, inches * DotsPerInch));
        QPainter painter;
        if (!painter.begin(&generator))
            return false;
        painter.fillRect(QRectF({}, inches * DotsPerInch), Qt::white);
        SvgSurface surface(painter, {.Inches = inches, .TurnPage = {}});
        drawing(surface);
        return painter.end();
    });
}

// The generator would write title and description as they are, so they are put in afterwards.
QByteArray SvgOf(const Drawing& drawing, QSizeF inches, const PictureNotes& notes) {
    QByteArray svg = SvgDrawing(drawing, inches);
    const qsizetype body = svg.indexOf("<defs>");
    if (body < 0)
        return {};
    const std::string texts = "<title>" + MarkupText(notes.Title) + "</title>\n<desc>" +
                              MarkupText(Description(notes)) + "</desc>\n";
    return svg.insert(body, QByteArray::fromStdString(texts));
}

QByteArray PngOf(const Drawing& drawing, QSizeF inches, const PictureNotes& notes) {
    QImage image = PictureOf(drawing, inches);
    image.setText("Title", ToQt(notes.Title));
    image.setText("Description", ToQt(notes.Statement));
    image.setText("Software", ProgramNameAndVersion);
    return ImageFile(image, "PNG");
}

// The notes in the words of the Extensible Metadata Platform (ISO 16684-1).
QByteArray MetadataOf(const PictureNotes& notes) {
    const auto text = [](const char* name, const std::string& value) {
        const std::string element = std::string("dc:") + name;
        return "<" + element + "><rdf:Alt><rdf:li xml:lang=\"x-default\">" + MarkupText(value) +
               "</rdf:li></rdf:Alt></" + element + ">";
    };
    return QByteArray::fromStdString(
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
        "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">\n" +
        text("title", notes.Title) + "\n" + text("description", notes.Statement) +
        "\n<xmp:CreatorTool>" + MarkupText(ProgramNameAndVersion) +
        "</xmp:CreatorTool>\n</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n"
        "<?xpacket end=\"w\"?>");
}

// A page that is as large as the picture with the statement below it.
QByteArray PdfOf(const Drawing& drawing, QSizeF inches, const PictureNotes& notes) {
    return BytesOf([&](QBuffer& buffer) {
        constexpr f64 margin = 0.1; // inches
        QPdfWriter writer(&buffer);
        writer.setTitle(ToQt(notes.Title));
        writer.setCreator(ProgramNameAndVersion);
        writer.setDocumentXmpMetadata(MetadataOf(notes));
        const f64 perInch = writer.resolution();
        const QString text = ToQt(Description(notes));
        const QFont font("Arial", 9);
        const QRectF room(QPointF(margin, inches.height()) * perInch,
                          QSizeF(inches.width() - 2 * margin, 100) * perInch);
        const QRectF place =
            QFontMetricsF(font, &writer).boundingRect(room, Qt::TextWordWrap, text);
        const QSizeF page(inches.width(), place.bottom() / perInch + margin);
        writer.setPageSize(QPageSize(page, QPageSize::Inch, {}, QPageSize::ExactMatch));
        writer.setPageMargins({});
        QPainter painter;
        if (!painter.begin(&writer))
            return false;
        PaintSurface surface(painter, {.Inches = inches, .TurnPage = {}});
        drawing(surface);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(room, Qt::TextWordWrap, text);
        return painter.end();
    });
}

} // namespace

QByteArray PictureFileOf(PictureFormat format, const Drawing& drawing, QSizeF inches,
                         const PictureNotes& notes) {
    switch (format) {
    case PictureFormat::Png:
        return PngOf(drawing, inches, notes);
    case PictureFormat::Svg:
        return SvgOf(drawing, inches, notes);
    case PictureFormat::Pdf:
        return PdfOf(drawing, inches, notes);
    case PictureFormat::Bitmap:
        break;
    }
    return ImageFile(PictureOf(drawing, inches).convertToFormat(QImage::Format_RGB888), "BMP");
}

QImage PictureOf(const Drawing& drawing, QSizeF inches) {
    QImage image((inches * DotsPerInch).toSize(), QImage::Format_RGB32);
    const int dotsPerMetre = qRound(DotsPerInch * InchesPerMetre);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSurface surface(painter, {.Inches = inches, .TurnPage = {}});
    drawing(surface);
    return image;
}

} // namespace quorvanta
