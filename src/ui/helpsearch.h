// Full-text search over the pages of the help.
#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace quorvanta {

struct HelpHit {
    QString Title;
    QUrl Page;
};

// The text of a page, or of a part of one, without its marks.
QString PlainText(const QString& html);

// A word in small letters without what it ends in: "rounded" and "rounding" are "round", "sizes"
// and "size" are "siz". Not a word of English, but one for all forms of a word.
QString StemOf(const QString& word);

class HelpSearch {
  public:
    void Add(const QUrl& page, const QString& html);

    bool IsEmpty() const { return pages_.isEmpty(); }

    // The pages that have all words, in whatever form ("round up" finds "rounded up"); the last
    // word may be the beginning of one. Upper and lower case are the same; parts that belong
    // together ("t-test") have to stand together. First the page with that very title, then those
    // with the words side by side in it, those that have four or more of them side by side, those
    // that have all in their title, those that have the last one whole, those that have them most
    // often, then those that have other words for the same, and last the pages of proof, which have
    // a little of everything.
    QList<HelpHit> Find(const QString& words) const;

  private:
    // Words in small letters, a blank before and after each: as they stand, and their stems.
    struct Text {
        QString Words;
        QString Stems;
    };
    struct PageText {
        HelpHit Hit;
        Text Title;
        Text Body;
        bool IsProof;
    };
    struct Wanted {
        QString Words;
        QString Stems;
        bool GoesOn; // the beginning of a word will do
    };

    static Text TextOf(const QString& text);
    static QList<Wanted> WantedOf(const QString& words);
    static qsizetype CountOf(const Text& text, const Wanted& wanted);
    static bool HasAll(const Text& text, const QList<Wanted>& wanted);
    static int RankOf(const PageText& page, const QList<Wanted>& wanted, const Text& phrase);
    void FindExactly(const QString& words, QList<const PageText*>& found) const;

    QList<PageText> pages_;
};

} // namespace quorvanta
