#include "ui/helppage.h"

#include "ui/helplibrary.h"

#include <QApplication>
#include <QPrinter>
#include <QScrollBar>
#include <QTextDocument>

namespace quorvanta {

namespace {

// Between two colours, so that it can be read on the background of either palette.
QColor Blend(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int from, int to) {
        return static_cast<int>(from + (to - from) * share);
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QString Style(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    constexpr double quiet = 0.25;
    constexpr double faint = 0.7;
    return QString("body { color: %1; }"
                   "h1 { font-size: x-large; margin-bottom: 12px; }"
                   "h2 { font-size: large; margin-top: 18px; margin-bottom: 6px; }"
                   "h3 { font-size: medium; margin-top: 14px; margin-bottom: 4px; }"
                   "p, ul, ol { margin-top: 4px; margin-bottom: 8px; }"
                   "a { color: %2; }"
                   "table { border-collapse: collapse; border-style: solid; border-color: %3;"
                   " margin-top: 6px; margin-bottom: 10px; }"
                   "th { text-align: left; }"
                   ".formula { margin-left: 32px; margin-top: 8px; margin-bottom: 10px; }"
                   ".facts { color: %4; }")
        .arg(text.name(), palette.color(QPalette::Link).name(), Blend(text, base, faint).name(),
             Blend(text, base, quiet).name());
}

QPalette PaperPalette() {
    QPalette paper(Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Link, Qt::black);
    return paper;
}

} // namespace

HelpPage::HelpPage(HelpLibrary& library, QWidget* parent)
    : QTextBrowser(parent), library_(library) {
    document()->setDocumentMargin(fontMetrics().height());
    Restyle();
}

void HelpPage::Restyle() {
    document()->setDefaultStyleSheet(Style(palette()));
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
    if (type == QTextDocument::HtmlResource)
        return library_.Html(name);
    return QTextBrowser::loadResource(type, name);
}

void HelpPage::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    Restyle();
    const int place = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(place);
}

bool HelpPage::FindText(const QString& text, bool backward) {
    const QTextDocument::FindFlags flags =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (find(text, flags))
        return true;
    const QTextCursor here = textCursor();
    QTextCursor from = here;
    from.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
    setTextCursor(from);
    if (find(text, flags))
        return true;
    setTextCursor(here);
    return false;
}

void HelpPage::PrintOn(QPrinter& printer) const {
    QTextDocument paper;
    paper.setDefaultFont(document()->defaultFont());
    paper.setDefaultStyleSheet(Style(PaperPalette()));
    paper.setHtml(QString::fromUtf8(library_.Html(source())));
    paper.setMetaInformation(QTextDocument::DocumentTitle, documentTitle());
    paper.print(&printer);
}

} // namespace quorvanta
