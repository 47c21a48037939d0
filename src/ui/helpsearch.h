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

class HelpSearch {
  public:
    void Add(const QUrl& page, const QString& html);

    bool IsEmpty() const { return pages_.isEmpty(); }

    // The pages that have all words; the last word may be the beginning of one. Upper and lower
    // case are the same; parts that belong together ("t-test") have to stand together. First the
    // pages that have them in their title, then those that have them most often.
    QList<HelpHit> Find(const QString& words) const;

  private:
    struct PageText {
        HelpHit Hit;
        QString Title; // words in small letters, a blank before and after each
        QString Text;
    };

    QList<PageText> pages_;
};

} // namespace quorvanta
