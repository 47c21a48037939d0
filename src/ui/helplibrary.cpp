#include "ui/helplibrary.h"

#include "core/analysis.h"
#include "core/general.h"
#include "core/help_numbers.h"
#include "ui/qttext.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHelpLink>
#include <QRegularExpression>

namespace quorvanta {

namespace {

constexpr const char* fileName = "quorvanta.qch";
constexpr const char* pageRoot = "qthelp://quorvanta.help/help/";
constexpr const char* numberPrefix = "number-";
constexpr int mostResults = 100;

// Words as the search engine wants them: each in quotes, so that "t-test" is no formula of its
// query language, and all required; the last one may go on.
QString Query(const QString& words) {
    static const QRegularExpression gap("[\\s\"]+");
    QStringList query;
    for (const QString& word : words.split(gap, Qt::SkipEmptyParts))
        query << '"' + word + '"';
    return query.isEmpty() ? QString() : query.join(' ') + '*';
}

QString MenuText(const HelpSubject& subject) {
    const MenuPath path =
        subject.IsTest == True ? PathToTest(subject.TestNo) : PathToDistribution(subject.DistrNo);
    QStringList captions;
    for (const MenuItem* item : path)
        captions << ToQt(StripAmpersand(item->Caption));
    return captions.join(" › ");
}

// "the description of ...": what a number stands for.
QString SubjectText(const HelpSubject& subject) {
    const QString name = ToQt(HelpSubjectName(subject));
    switch (subject.Topic) {
    case HelpTopic::Menu:
        return HelpLibrary::tr("the menu %1").arg(name);
    case HelpTopic::Description:
        return HelpLibrary::tr("the description of %1").arg(name);
    case HelpTopic::Example:
        return HelpLibrary::tr("the example of %1").arg(name);
    case HelpTopic::Parameters:
        return HelpLibrary::tr("the parameters of %1: %2")
            .arg(name, ToQt(HelpChoicesInWords(subject)));
    case HelpTopic::None:
        break;
    }
    return HelpLibrary::tr("nothing: no menu and no analysis has it");
}

} // namespace

HelpLibrary::HelpLibrary(const QString& file, QObject* parent)
    : QObject(parent), engine_(new QHelpEngine(QDir(folder_.path()).filePath("help.qhc"), this)),
      search_(new QHelpSearchEngine(engine_, this)) {
    engine_->setReadOnly(false);
    engine_->setUsesFilterEngine(true);
    open_ = folder_.isValid() && engine_->setupData() && !file.isEmpty() &&
            engine_->registerDocumentation(file) && engine_->setupData();
    connect(search_, &QHelpSearchEngine::indexingFinished, this, [this] {
        indexed_ = true;
        SearchNow();
    });
    connect(search_, &QHelpSearchEngine::searchingFinished, this, &HelpLibrary::SearchDone);
    if (open_)
        search_->reindexDocumentation();
}

QString HelpLibrary::FindFile() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {".", "../share/quorvanta", "../../help"}) {
        const QFileInfo file(program, QDir(folder).filePath(fileName));
        if (file.isReadable())
            return file.canonicalFilePath();
    }
    return {};
}

QUrl HelpLibrary::PageOfNumber(i32 number) const {
    const QList<QHelpLink> links =
        open_ ? engine_->documentsForIdentifier(QString::number(number)) : QList<QHelpLink>();
    if (!links.isEmpty())
        return links.front().url;
    return QUrl(pageRoot + QString(numberPrefix) + QString::number(number));
}

QByteArray HelpLibrary::Html(const QUrl& page) const {
    const QString name = page.fileName();
    if (name.startsWith(numberPrefix))
        return NumberHtml(name.mid(static_cast<int>(qstrlen(numberPrefix))).toInt()).toUtf8();
    return engine_->fileData(page);
}

QString HelpLibrary::NumberHtml(i32 number) const {
    const HelpSubject subject = HelpSubjectOf(number);
    QString text = tr("<p>The help number %1 stands for %2.</p>")
                       .arg(number)
                       .arg(SubjectText(subject).toHtmlEscaped());
    if (!open_)
        text += tr("<p>The help file %1 is missing from the program's folders, or it can't be "
                   "read. Install %2 anew.</p>")
                    .arg(fileName, ProgramName);
    else
        text += tr("<p>This version of the help has no topic for it.</p>");
    const i32 description = HelpDescriptionOf(subject);
    if (description != 0)
        text += tr("<p>In the menus: %1.</p>").arg(MenuText(subject).toHtmlEscaped());
    const auto link = [this, &text](i32 topic, const QString& title) {
        const QUrl page = PageOfNumber(topic);
        if (!page.fileName().startsWith(numberPrefix))
            text += QString("<p><a href=\"%1\">%2</a></p>").arg(page.toString(), title);
    };
    if (description != 0 && description != number)
        link(description, tr("The description of this analysis"));
    link(0, tr("The contents of the help"));
    return QString("<html><head><title>%1</title></head><body><h1>%1</h1>%2</body></html>")
        .arg(tr("Help number %1").arg(number), text);
}

void HelpLibrary::Search(const QString& words) {
    wanted_ = Query(words);
    if (!open_ || wanted_.isEmpty())
        emit Found({});
    else
        SearchNow();
}

void HelpLibrary::SearchNow() {
    if (!indexed_ || searching_ || wanted_.isEmpty())
        return;
    searching_ = true;
    searched_ = wanted_;
    search_->search(searched_);
}

void HelpLibrary::SearchDone() {
    searching_ = false;
    if (wanted_ == searched_)
        emit Found(search_->searchResults(0, mostResults));
    else
        SearchNow();
}

} // namespace quorvanta
