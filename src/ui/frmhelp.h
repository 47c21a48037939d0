// frmHelp: the help in a window of its own: contents, index and search at the left, the page at the
// right.
#pragma once

#include "core/types.h"
#include "ui/helplibrary.h"

#include <QMainWindow>

class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;
struct QHelpLink;

namespace quorvanta {

class HelpPage;

class frmHelp : public QMainWindow {
    Q_OBJECT

  public:
    // The viewer of a help file.
    explicit frmHelp(const QString& file);

    void ShowContents();
    void ShowSearch();
    void ShowNumber(i32 number);

    // Shows what the page of that number says of a kind of parameter; false, and nothing else, if
    // there is no such page or if it is what is shown.
    bool ShowParameter(i32 number, i16 kind);

    void tabHelp_Click(int tab);
    void cmdPrint_Click();
    void cmdFind_Click();
    void txtFind_Change(bool backward);
    void txtSearch_Change();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeToolBar();
    QWidget* MakeContents();
    QWidget* MakeIndex();
    QWidget* MakeSearch();
    QWidget* MakePage();
    QWidget* MakeFindBar();
    void GoTo(const QUrl& page);
    void GoToOneOf(const QList<QHelpLink>& links);
    void GoToResult();
    void PageChanged(const QUrl& page);
    void SelectInContents(const QUrl& page);
    void HideFindBar();

    HelpLibrary library_;
    HelpPage* txtPage_;
    QTabWidget* tabHelp_ = nullptr;
    QLineEdit* txtIndex_ = nullptr;
    QLineEdit* txtSearch_ = nullptr;
    QListWidget* lstSearch_ = nullptr;
    QLabel* lblSearch_ = nullptr;
    QWidget* fraFind_ = nullptr;
    QLineEdit* txtFind_ = nullptr;
    QLabel* lblFind_ = nullptr;
};

} // namespace quorvanta
