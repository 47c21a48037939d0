#include "ui/helpsearch.h"

#include <algorithm>

namespace quorvanta {

namespace {

// The letters and digits of a text as words in small letters, a blank before and after each.
QString Words(const QString& text) {
    QString words(" ");
    for (const QChar c : text) {
        if (c.isLetterOrNumber())
            words += c.toLower();
        else if (!c.isMark() && !words.endsWith(' '))
            words += ' ';
    }
    if (!words.endsWith(' '))
        words += ' ';
    return words;
}

// Marks within a line leave a word whole: "n" and its index are one.
bool IsInLine(const QString& tag) {
    static const QStringList tags{"i", "b", "sub", "sup", "code", "a"};
    return tags.contains(tag);
}

QString WithoutTags(const QString& html) {
    QString text;
    for (qsizetype at = 0; at < html.size();) {
        const qsizetype open = html.indexOf('<', at);
        if (open < 0)
            return text + html.mid(at);
        text += html.mid(at, open - at);
        const qsizetype close = html.indexOf('>', open);
        if (close < 0)
            return text;
        QString tag = html.mid(open + 1, close - open - 1).section(' ', 0, 0);
        tag.remove('/');
        if (!IsInLine(tag))
            text += ' ';
        at = close + 1;
    }
    return text;
}

QString PlainText(const QString& html) {
    QString text = WithoutTags(html);
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&amp;", "&");
}

QString Between(const QString& text, const QString& begin, const QString& end) {
    const qsizetype first = text.indexOf(begin);
    const qsizetype last = text.indexOf(end, first);
    return first < 0 || last < 0 ? QString()
                                 : text.mid(first + begin.size(), last - first - begin.size());
}

bool HasAll(const QString& text, const QStringList& wanted) {
    return std::all_of(wanted.begin(), wanted.end(),
                       [&text](const QString& word) { return text.contains(word); });
}

} // namespace

void HelpSearch::Add(const QUrl& page, const QString& html) {
    const QString title = PlainText(Between(html, "<title>", "</title>"));
    pages_.append(
        {{title, page}, Words(title), Words(PlainText(Between(html, "<body>", "</body>")))});
}

QList<HelpHit> HelpSearch::Find(const QString& words) const {
    QStringList wanted;
    for (const QString& word : words.split(' ', Qt::SkipEmptyParts))
        if (const QString found = Words(word); found != " ")
            wanted << found;
    if (wanted.isEmpty())
        return {};
    if (!words.endsWith(' '))
        wanted.last().chop(1);

    struct Found {
        const PageText* Page;
        bool InTitle;
        qsizetype Count;
    };
    QList<Found> found;
    for (const PageText& page : pages_) {
        if (!HasAll(page.Text, wanted))
            continue;
        qsizetype count = 0;
        for (const QString& word : wanted)
            count += page.Text.count(word);
        found.append({&page, HasAll(page.Title, wanted), count});
    }
    std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        return a.InTitle != b.InTitle ? a.InTitle : a.Count > b.Count;
    });
    QList<HelpHit> hits;
    for (const Found& one : found)
        hits << one.Page->Hit;
    return hits;
}

} // namespace quorvanta
