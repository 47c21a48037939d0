// The text of a PDF file as Qt writes it (ISO 32000-1), for the checks alone.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QString>

namespace quorvanta::checks {

class PdfReader {
  public:
    explicit PdfReader(const QByteArray& file) {
        static const QRegularExpression object(R"((\d+) 0 obj\n(.*?)\nendobj)",
                                               QRegularExpression::DotMatchesEverythingOption);
        auto all = object.globalMatch(QString::fromLatin1(file));
        while (all.hasNext()) {
            const auto match = all.next();
            objects_[match.captured(1).toInt()] = match.captured(2);
        }
    }

    // The characters of all pages in the order in which they are drawn, by the tables that say what
    // the glyphs of each font stand for; not every blank is a glyph.
    QString Text() const {
        static const QRegularExpression shown(R"(/F(\d+) [0-9.]+ Tf|<([0-9A-F]+)> Tj)");
        QString text;
        for (const QString& object : objects_) {
            const QString content = Stream(object);
            if (!content.contains(" Tj"))
                continue;
            QHash<int, QString> glyphs;
            auto all = shown.globalMatch(content);
            while (all.hasNext()) {
                const auto match = all.next();
                if (!match.captured(1).isEmpty())
                    glyphs = Glyphs(match.captured(1).toInt());
                for (qsizetype i = 0; i + 4 <= match.captured(2).size(); i += 4)
                    text += glyphs.value(match.captured(2).mid(i, 4).toInt(nullptr, 16));
            }
        }
        return text;
    }

  private:
    // Unpacked; empty where the object has none.
    static QString Stream(const QString& object) {
        const qsizetype begin = object.indexOf("stream\n");
        if (begin < 0)
            return {};
        if (!object.left(begin).contains("/FlateDecode"))
            return object.mid(begin + 7);
        const QByteArray packed = object.mid(begin + 7).toLatin1();
        const QByteArray anyLength(4, '\1'); // what qUncompress wants before the data of zlib
        return QString::fromLatin1(qUncompress(anyLength + packed));
    }

    QHash<int, QString> Glyphs(int font) const {
        static const QRegularExpression table(R"(/ToUnicode (\d+) 0 R)");
        static const QRegularExpression range(
            R"(<([0-9A-Fa-f]{4})> <([0-9A-Fa-f]{4})> \[?([^\]\n]+))");
        static const QRegularExpression code(R"(<([0-9A-Fa-f]+)>)");
        const QString object = objects_.value(font);
        const QString map = Stream(objects_.value(table.match(object).captured(1).toInt()));
        QHash<int, QString> glyphs;
        auto all = range.globalMatch(map);
        while (all.hasNext()) {
            const auto match = all.next();
            int glyph = match.captured(1).toInt(nullptr, 16);
            auto codes = code.globalMatch(match.captured(3));
            while (codes.hasNext()) {
                const QString units = codes.next().captured(1);
                QString characters;
                for (qsizetype i = 0; i + 4 <= units.size(); i += 4)
                    characters += QChar(units.mid(i, 4).toUShort(nullptr, 16));
                glyphs[glyph++] = characters;
            }
        }
        return glyphs;
    }

    QMap<int, QString> objects_; // by number
};

} // namespace quorvanta::checks
