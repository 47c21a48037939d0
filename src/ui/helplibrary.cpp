#include "ui/helplibrary.h"

#include "core/general.h"
#include "core/help_numbers.h"
#include "core/program_name.h"
#include "ui/qttext.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHelpLink>

namespace quorvanta {

namespace {

constexpr const char* HelpFileName = "quorvanta.qhc";
constexpr const char* HelpNamespace = "quorvanta.help";
constexpr const char* PageRoot = "qthelp://quorvanta.help/help/";
constexpr const char* NumberPrefix = "number-";

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
        return QObject::tr("the menu %1").arg(name);
    case HelpTopic::Description:
        return QObject::tr("the description of %1").arg(name);
    case HelpTopic::Example:
        return QObject::tr("the example of %1").arg(name);
    case HelpTopic::Parameters:
        return QObject::tr("the parameters of %1: %2").arg(name, ToQt(HelpChoicesInWords(subject)));
    case HelpTopic::None:
        break;
    }
    return QObject::tr("nothing: no menu and no analysis has it");
}

} // namespace

HelpLibrary::HelpLibrary(const QString& file) : engine_(file) {
    engine_.setReadOnly(true);
    engine_.setUsesFilterEngine(true);
    open_ = QFileInfo(file).isReadable() && engine_.setupData() &&
            engine_.registeredDocumentations().contains(HelpNamespace);
}

QString HelpLibrary::FindFile() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {".", "../share/quorvanta", "../../help"}) {
        const QFileInfo file(program, QDir(folder).filePath(HelpFileName));
        if (file.isReadable())
            return file.canonicalFilePath();
    }
    return {};
}

QUrl HelpLibrary::PageOfNumber(i32 number) const {
    const QList<QHelpLink> links =
        open_ ? engine_.documentsForIdentifier(QString::number(number)) : QList<QHelpLink>();
    if (!links.isEmpty())
        return links.front().url;
    return QUrl(PageRoot + QString(NumberPrefix) + QString::number(number));
}

bool HelpLibrary::HasPage(const QUrl& page) const {
    return open_ && !page.fileName().startsWith(NumberPrefix);
}

QByteArray HelpLibrary::Html(const QUrl& page) const {
    const QString name = page.fileName();
    if (name.startsWith(NumberPrefix))
        return NumberHtml(name.mid(static_cast<int>(qstrlen(NumberPrefix))).toInt()).toUtf8();
    return engine_.fileData(page);
}

QString HelpLibrary::NumberHtml(i32 number) const {
    const HelpSubject subject = HelpSubjectOf(number);
    QString text = QObject::tr("<p>The help number %1 stands for %2.</p>")
                       .arg(number)
                       .arg(SubjectText(subject).toHtmlEscaped());
    if (!open_)
        text +=
            QObject::tr("<p>The help file %1 is missing from the program's folders, or it can't be "
                        "read. Install %2 anew.</p>")
                .arg(HelpFileName, ProgramName);
    else
        text += QObject::tr("<p>This version of the help has no topic for it.</p>");
    const i32 description = HelpDescriptionOf(subject);
    if (description != 0)
        text += QObject::tr("<p>In the menus: %1.</p>").arg(MenuText(subject).toHtmlEscaped());
    const auto link = [this, &text](i32 topic, const QString& title) {
        const QUrl page = PageOfNumber(topic);
        if (HasPage(page))
            text += QString("<p><a href=\"%1\">%2</a></p>").arg(page.toString(), title);
    };
    if (description != 0 && description != number)
        link(description, QObject::tr("The description of this analysis"));
    link(0, QObject::tr("The contents of the help"));
    return QString("<html><head><title>%1</title></head><body><h1>%1</h1>%2</body></html>")
        .arg(QObject::tr("Help number %1").arg(number), text);
}

QList<HelpHit> HelpLibrary::Search(const QString& words) {
    if (search_.IsEmpty() && open_)
        ReadPages();
    return search_.Find(words);
}

void HelpLibrary::ReadPages() {
    for (const QUrl& page : engine_.files(HelpNamespace, QString(), "html"))
        search_.Add(page, QString::fromUtf8(engine_.fileData(page)));
}

} // namespace quorvanta
