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

QString Between(const QString& text, const QString& begin, const QString& end) {
    const qsizetype first = text.indexOf(begin);
    const qsizetype last = text.indexOf(end, first);
    return first < 0 || last < 0 ? QString()
                                 : text.mid(first + begin.size(), last - first - begin.size());
}

bool HasVowel(QStringView word) {
    return std::any_of(word.begin(), word.end(),
                       [](QChar c) { return QStringView(u"aeiouy").contains(c); });
}

// The ending goes, if what is left can be a word.
bool TakeOff(QString& word, const char* ending, const char* by = "") {
    constexpr qsizetype shortest = 3;
    const auto length = static_cast<qsizetype>(qstrlen(ending));
    const QStringView rest = QStringView(word).first(std::max<qsizetype>(word.size() - length, 0));
    if (!word.endsWith(QLatin1String(ending)) || rest.size() < shortest || !HasVowel(rest))
        return false;
    word.chop(length);
    word += QLatin1String(by);
    return true;
}

// "planned" has left "plann"; "all", "less" and "fizz" have their two letters by themselves.
void Undouble(QString& word) {
    const qsizetype n = word.size();
    if (n > 3 && word[n - 1] == word[n - 2] && !QStringView(u"aeioulsz").contains(word[n - 1]))
        word.chop(1);
}

// Other words for the same, as the pages have them. A short list, of what is looked for.
constexpr struct {
    const char* Asked;
    const char* Written;
} synonyms[] = {
    {"effect size", "difference standard deviation"},
    {"cohen's d", "difference standard deviation"},
    {"cohens d", "difference standard deviation"},
    {"ttest", "t-test"},
    {"t test", "t-test"},
    {"chi squared", "chi-square"},
    {"chisquare", "chi-square"},
    {"chi2", "chi-square"},
    {"alpha", "significance level"},
    {"type i error", "significance level"},
    {"type 1 error", "significance level"},
    {"beta", "power"},
    {"type ii error", "power"},
    {"type 2 error", "power"},
    {"sd", "standard deviation"},
    {"sigma", "standard deviation"},
    {"cv", "coefficient of variation"},
    {"ci", "confidence interval"},
    {"number of subjects", "sample size"},
    {"number of patients", "sample size"},
    {"tost", "two one-sided"},
    {"noninferiority", "non-inferiority"},
    {"cross over", "crossover"},
    {"relative risk", "ratio proportions"},
    {"risk difference", "difference proportions"},
    {"matched", "paired"},
    {"precision", "width interval"},
    {"plot", "graph"},
    {"chart", "graph"},
    {"export", "save"},
};

bool IsProofPage(const QString& html) {
    return html.contains("<body class=\"proof\">");
}

} // namespace

QString PlainText(const QString& html) {
    QString text = WithoutTags(html);
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&amp;", "&");
}

QString StemOf(const QString& word) {
    QString stem = word;
    if (!TakeOff(stem, "ies", "y") && !TakeOff(stem, "sses", "ss") && !stem.endsWith("ss") &&
        !stem.endsWith("us") && !stem.endsWith("is"))
        TakeOff(stem, "s");
    if (TakeOff(stem, "ing") || TakeOff(stem, "ed"))
        Undouble(stem);
    TakeOff(stem, "e");
    return stem;
}

HelpSearch::Text HelpSearch::TextOf(const QString& text) {
    const QString words = quorvanta::Words(text);
    QString stems(" ");
    for (const QString& word : words.split(' ', Qt::SkipEmptyParts))
        stems += StemOf(word) + ' ';
    return {words, stems};
}

void HelpSearch::Add(const QUrl& page, const QString& html) {
    const QString title = PlainText(Between(html, "<title>", "</title>"));
    const qsizetype body = html.indexOf("<body");
    pages_.append(
        {{title, page},
         TextOf(title),
         TextOf(PlainText(body < 0 ? QString() : Between(html.mid(body), ">", "</body>"))),
         IsProofPage(html)});
}

QList<HelpSearch::Wanted> HelpSearch::WantedOf(const QString& words) {
    QList<Wanted> wanted;
    for (const QString& word : words.split(' ', Qt::SkipEmptyParts))
        if (const Text text = TextOf(word); text.Words != " ")
            wanted.append({text.Words, text.Stems, false});
    if (!wanted.isEmpty() && !words.endsWith(' ')) {
        wanted.last().Words.chop(1);
        wanted.last().GoesOn = true;
    }
    return wanted;
}

qsizetype HelpSearch::CountOf(const Text& text, const Wanted& wanted) {
    const qsizetype count = text.Stems.count(wanted.Stems);
    return wanted.GoesOn ? std::max(count, text.Words.count(wanted.Words)) : count;
}

bool HelpSearch::HasAll(const Text& text, const QList<Wanted>& wanted) {
    return std::all_of(wanted.begin(), wanted.end(),
                       [&text](const Wanted& one) { return CountOf(text, one) > 0; });
}

// How near a page comes to what was asked: it has that title; has the words side by side in its
// title, or many of them, which mean little alone, in its text; has them in its title; has them.
int HelpSearch::RankOf(const PageText& page, const QList<Wanted>& wanted, const Text& phrase) {
    constexpr qsizetype many = 4;
    if (page.Title.Words == phrase.Words)
        return 0;
    if (page.Title.Stems.contains(phrase.Stems))
        return 1;
    if (wanted.size() >= many && page.Body.Stems.contains(phrase.Stems))
        return 2;
    return HasAll(page.Title, wanted) ? 3 : 4;
}

void HelpSearch::FindExactly(const QString& words, QList<const PageText*>& found) const {
    const QList<Wanted> wanted = WantedOf(words);
    if (wanted.isEmpty())
        return;
    struct Found {
        const PageText* Page;
        int Rank;
        bool HasWhole; // not the beginning of a longer word only
        qsizetype Count;
    };
    const Text phrase = TextOf(words);
    QList<Wanted> whole = wanted;
    whole.last().GoesOn = false;
    QList<Found> pages;
    for (const PageText& page : pages_) {
        if (found.contains(&page) || !HasAll(page.Body, wanted))
            continue;
        qsizetype count = 0;
        for (const Wanted& one : wanted)
            count += CountOf(page.Body, one);
        pages.append({&page, RankOf(page, wanted, phrase), HasAll(page.Body, whole), count});
    }
    std::stable_sort(pages.begin(), pages.end(), [](const Found& a, const Found& b) {
        if (a.Rank != b.Rank)
            return a.Rank < b.Rank;
        return a.HasWhole != b.HasWhole ? a.HasWhole : a.Count > b.Count;
    });
    for (const Found& one : pages)
        found << one.Page;
}

QList<HelpHit> HelpSearch::Find(const QString& words) const {
    QList<const PageText*> found;
    FindExactly(words, found);
    const QString asked = quorvanta::Words(words);
    for (const auto& synonym : synonyms) {
        const QString name = quorvanta::Words(QLatin1String(synonym.Asked));
        if (asked.contains(name))
            FindExactly(QString(asked).replace(name, ' ' + QLatin1String(synonym.Written) + ' '),
                        found);
    }
    std::stable_partition(found.begin(), found.end(),
                          [](const PageText* page) { return !page->IsProof; });
    QList<HelpHit> hits;
    for (const PageText* page : found)
        hits << page->Hit;
    return hits;
}

} // namespace quorvanta
