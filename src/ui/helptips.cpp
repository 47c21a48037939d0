#include "ui/helptips.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "output/statement_words.h"
#include "ui/helplibrary.h"
#include "ui/helpsearch.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QHash>
#include <QRegularExpression>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace quorvanta {

namespace {

constexpr const char* KindProperty = "parameterKind";

// The first sentences of a page, by the names of what they are about.
using Sentences = QHash<QString, QString>;

// One for all windows, opened when the first of them asks. It goes before the application does.
HelpLibrary& Library() {
    static std::unique_ptr<HelpLibrary> library;
    if (library == nullptr) {
        library = std::make_unique<HelpLibrary>(HelpLibrary::FindFile());
        qAddPostRoutine([] { library.reset(); });
    }
    return *library;
}

// "H1:Prop.2 - Prop.1" and "H1: Proportion 2 - Proportion 1" are one.
QString KeyOf(const QString& name) {
    QString key = ToQt(SumPhrase(FromQt(name.simplified())));
    while (key.endsWith('.') || key.endsWith(' '))
        key.chop(1);
    return key;
}

QString FirstSentence(const QString& text) {
    static const QRegularExpression sentence(R"(^.*?[.?!](?=\s+["'(]?[A-Z0-9]|$))");
    const QString simple = text.simplified();
    const auto match = sentence.match(simple);
    return match.hasMatch() ? match.captured() : simple;
}

void Collect(const QString& html, const QString& pattern, Sentences& sentences) {
    const QRegularExpression expression(pattern, QRegularExpression::DotMatchesEverythingOption);
    auto matches = expression.globalMatch(html);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString name = PlainText(match.captured(1)).simplified();
        const QString text = PlainText(match.captured(2));
        for (const QString& key : {KeyOf(name), KeyOf(ToQt(SumNameAfterH(FromQt(name))))})
            if (!key.isEmpty() && !sentences.contains(key))
                sentences.insert(key, FirstSentence(text));
    }
}

Sentences SentencesOf(const QString& html) {
    Sentences sentences;
    Collect(html, R"(<h[23]>((?:(?!</h).)*)</h[23]>\s*<p>((?:(?!</p>).)*)</p>)", sentences);
    // "Odds. You enter odds": a name of its own; "Score Test takes ...": part of the sentence.
    Collect(html, R"(<(?:li|p)><b>([^<]*)\.</b>((?:(?!</(?:li|p)>).)*))", sentences);
    Collect(html, R"(<(?:li|p)>(?=<b>([^<]*)</b>(?!,))((?:(?!</(?:li|p)>).)*))", sentences);
    Collect(html,
            R"(<tr><td>((?:(?!</td>).)*)</td>(?:<td>(?:(?!</td>).)*</td>)*?)"
            R"(<td>((?:(?!</td>).)*)</td></tr>)",
            sentences);
    return sentences;
}

// What is read of a page.
struct TipPage {
    Sentences First;
    QList<i32> Links; // the numbers of the pages that it refers to
};

QList<i32> LinksOf(const QString& html) {
    static const QRegularExpression link(R"(<a href="(\d+)\.html)");
    QList<i32> links;
    auto matches = link.globalMatch(html);
    while (matches.hasNext())
        links << matches.next().captured(1).toInt();
    return links;
}

const TipPage& PageAt(i32 number) {
    static QHash<i32, TipPage> pages;
    auto page = pages.find(number);
    if (page == pages.end()) {
        const QUrl url = Library().PageOfNumber(number);
        const QString html =
            Library().HasPage(url) ? QString::fromUtf8(Library().Html(url)) : QString();
        page = pages.insert(number, {SentencesOf(html), LinksOf(html)});
    }
    return *page;
}

} // namespace

QString FirstSentenceOf(i32 number, const std::string& name) {
    return PageAt(number).First.value(KeyOf(ToQt(StripAmpersand(name))));
}

bool Explain(QWidget& widget, const QList<i32>& numbers, const std::string& name) {
    QString tip;
    for (const i32 number : numbers)
        if (tip.isEmpty())
            tip = FirstSentenceOf(number, name);
    // As HTML it is broken into lines.
    widget.setToolTip(tip.isEmpty() ? tip : "<qt>" + tip.toHtmlEscaped() + "</qt>");
    return !tip.isEmpty();
}

bool ExplainOption(QWidget& widget, const std::string& name) {
    QList<i32> numbers{HelpDescription()};
    numbers += PageAt(HelpDescription()).Links;
    numbers += HelpParameters();
    constexpr i32 optionWindow = 22; // forms that many analyses have
    numbers += optionWindow;
    return Explain(widget, numbers, name);
}

void ExplainParameter(QWidget& label, QWidget& box, i16 kind) {
    Explain(label, {HelpParameters()}, ParLabel(kind));
    box.setProperty(KindProperty, kind);
}

std::optional<i16> ExplainedKind(const QWidget& box) {
    const QVariant kind = box.property(KindProperty);
    if (!kind.isValid())
        return std::nullopt;
    return static_cast<i16>(kind.toInt());
}

} // namespace quorvanta
