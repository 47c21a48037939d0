// The help files, opened: their pages, contents, index and full-text search.
#pragma once

#include "core/types.h"
#include "ui/helpsearch.h"

#include <QHelpEngine>
#include <QUrl>

namespace quorvanta {

class HelpLibrary {
  public:
    // The library of a help collection. A file that is missing or broken leaves it empty. Nothing
    // is ever written: the files may lie in a folder of the system.
    explicit HelpLibrary(const QString& file);

    // The help collection of this program: beside it, in the share folder of its installation, or
    // where the build puts it. Empty if there is none.
    static QString FindFile();

    bool IsOpen() const { return open_; }

    // The page of a help number; where there is none, a page that says what the number stands for.
    QUrl PageOfNumber(i32 number) const;

    // The page is one of the help, and not made to say that there is none.
    bool HasPage(const QUrl& page) const;

    // The HTML of a page.
    QByteArray Html(const QUrl& page) const;

    // Qt's part of the library: contents and index.
    QHelpEngine& Engine() { return engine_; }

    QList<HelpHit> Search(const QString& words);

  private:
    QString NumberHtml(i32 number) const;
    void ReadPages();

    QHelpEngine engine_;
    HelpSearch search_; // filled by the first search
    bool open_ = false;
};

} // namespace quorvanta
