// The help file, opened: its pages, contents, index and full-text search.
#pragma once

#include "core/types.h"

#include <QHelpEngine>
#include <QHelpSearchEngine>
#include <QTemporaryDir>
#include <QUrl>

namespace quorvanta {

class HelpLibrary : public QObject {
    Q_OBJECT

  public:
    // The library of a help file. A file that is missing or broken leaves it empty.
    explicit HelpLibrary(const QString& file, QObject* parent = nullptr);

    // The help file of this program: beside it, in the share folder of its installation, or where
    // the build puts it. Empty if there is none.
    static QString FindFile();

    bool IsOpen() const { return open_; }

    // The page of a help number; where there is none, a page that says what the number stands for.
    QUrl PageOfNumber(i32 number) const;

    // The HTML of a page.
    QByteArray Html(const QUrl& page) const;

    QHelpEngine& Engine() { return *engine_; }

    // Looks for pages that hold all words, the last of them perhaps not yet typed to its end.
    // Found follows, unless another search is asked for before: then that one's.
    void Search(const QString& words);

  signals:
    void Found(const QList<QHelpSearchResult>& results);

  private:
    void SearchNow();
    void SearchDone();
    QString NumberHtml(i32 number) const;

    // The collection and its search index, which Qt keeps in files, live as long as the window:
    // nothing is left behind, and no program reads what another is writing.
    QTemporaryDir folder_;
    QHelpEngine* engine_;
    QHelpSearchEngine* search_;
    bool open_ = false;
    bool indexed_ = false;
    bool searching_ = false;
    QString wanted_;   // by the last call of Search
    QString searched_; // by the search that is under way, or was last
};

} // namespace quorvanta
