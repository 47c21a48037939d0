#include "ui/frmhelp.h"

#include "core/help_numbers.h"
#include "core/program_name.h"
#include "ui/accessible.h"
#include "ui/helppage.h"

#include <QAction>
#include <QHeaderView>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace quorvanta {

namespace {

enum Tab { ContentsTab, IndexTab, SearchTab };

constexpr int UrlRole = Qt::UserRole;

QWidget* Column(QWidget* parent, std::initializer_list<QWidget*> widgets) {
    auto* frame = new QWidget(parent);
    auto* column = new QVBoxLayout(frame);
    for (QWidget* widget : widgets)
        column->addWidget(widget);
    return frame;
}

} // namespace

frmHelp::frmHelp(const QString& file) : library_(file), txtPage_(new HelpPage(library_, this)) {
    setObjectName("frmHelp");
    setWindowTitle(tr("%1 Help").arg(ProgramName));

    tabHelp_ = new QTabWidget(this);
    tabHelp_->setObjectName("tabHelp");
    NameTabs(*tabHelp_, tr("Ways to find a page"));
    tabHelp_->addTab(MakeContents(), tr("&Contents"));
    tabHelp_->addTab(MakeIndex(), tr("&Index"));
    tabHelp_->addTab(MakeSearch(), tr("&Search"));
    connect(tabHelp_, &QTabWidget::currentChanged, this, &frmHelp::tabHelp_Click);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(tabHelp_);
    splitter->addWidget(MakePage());
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    const int character = fontMetrics().averageCharWidth();
    splitter->setSizes({56 * character, 104 * character});
    setCentralWidget(splitter);
    MakeToolBar();
    connect(txtPage_, &QTextBrowser::sourceChanged, this, &frmHelp::PageChanged);

    const QSize comfortable(160 * character, 46 * fontMetrics().height());
    resize(comfortable.boundedTo(screen()->availableSize() * 9 / 10));
    ShowContents();
}

void frmHelp::MakeToolBar() {
    auto* bar = addToolBar(tr("Help"));
    bar->setObjectName("tbrHelp");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [this, bar](const char* name, const QString& text, QKeySequence key,
                                 auto&& slot) {
        QAction* action = bar->addAction(text, this, slot);
        action->setObjectName(name);
        action->setShortcut(key);
        action->setToolTip(text + " (" + key.toString(QKeySequence::NativeText) + ")");
        return action;
    };
    QAction* back = add("cmdBack", tr("Back"), QKeySequence(Qt::ALT | Qt::Key_Left),
                        [this] { txtPage_->backward(); });
    QAction* forward = add("cmdForward", tr("Forward"), QKeySequence(Qt::ALT | Qt::Key_Right),
                           [this] { txtPage_->forward(); });
    back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    forward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    for (QAction* action : {back, forward})
        action->setEnabled(false);
    connect(txtPage_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(txtPage_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    add("cmdHome", tr("Start page"), QKeySequence(Qt::ALT | Qt::Key_Home),
        [this] { ShowNumber(HelpContents); });
    bar->addSeparator();
    add("cmdFind", tr("Find in page"), QKeySequence::Find, [this] { cmdFind_Click(); });
    add("cmdPrint", tr("Print"), QKeySequence::Print, [this] { cmdPrint_Click(); });
    bar->addSeparator();
    add("cmdLarger", tr("Larger"), QKeySequence::ZoomIn, [this] { txtPage_->zoomIn(); });
    add("cmdSmaller", tr("Smaller"), QKeySequence::ZoomOut, [this] { txtPage_->zoomOut(); });
}

QWidget* frmHelp::MakeContents() {
    QHelpContentWidget* contents = library_.Engine().contentWidget();
    contents->setObjectName("treContents");
    contents->setAccessibleName(tr("Contents"));
    contents->setIndentation(2 * fontMetrics().averageCharWidth());
    contents->header()->setStretchLastSection(false);
    contents->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(contents, &QHelpContentWidget::linkActivated, this, &frmHelp::GoTo);
    connect(contents, &QTreeView::clicked, this, [this, contents](const QModelIndex& index) {
        const auto* model = qobject_cast<QHelpContentModel*>(contents->model());
        if (const QHelpContentItem* item = model->contentItemAt(index))
            GoTo(item->url());
    });
    connect(library_.Engine().contentModel(), &QHelpContentModel::contentsCreated, this,
            [this, contents] {
                contents->expandToDepth(0);
                SelectInContents(txtPage_->source());
            });
    return Column(this, {contents});
}

QWidget* frmHelp::MakeIndex() {
    QHelpIndexWidget* index = library_.Engine().indexWidget();
    index->setObjectName("lstIndex");
    index->setAccessibleName(tr("Words of the index"));
    txtIndex_ = new QLineEdit(this);
    txtIndex_->setObjectName("txtIndex");
    txtIndex_->setPlaceholderText(tr("Type a word"));
    txtIndex_->setAccessibleName(tr("Word to look up in the index"));
    txtIndex_->setClearButtonEnabled(true);
    connect(txtIndex_, &QLineEdit::textChanged, index,
            [index](const QString& text) { index->filterIndices(text); });
    connect(txtIndex_, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
    connect(index, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& link) { GoTo(link.url); });
    connect(index, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& links) { GoToOneOf(links); });
    return Column(this, {txtIndex_, index});
}

QWidget* frmHelp::MakeSearch() {
    txtSearch_ = new QLineEdit(this);
    txtSearch_->setObjectName("txtSearch");
    txtSearch_->setPlaceholderText(tr("Type words to search for"));
    txtSearch_->setAccessibleName(tr("Words to search for in all pages"));
    txtSearch_->setClearButtonEnabled(true);
    lblSearch_ = new QLabel(this);
    lblSearch_->setObjectName("lblSearch");
    lblSearch_->setWordWrap(true);
    lstSearch_ = new QListWidget(this);
    lstSearch_->setObjectName("lstSearch");
    lstSearch_->setAccessibleName(tr("Pages found"));
    lstSearch_->setWordWrap(true);
    connect(txtSearch_, &QLineEdit::textChanged, this, &frmHelp::txtSearch_Change);
    connect(txtSearch_, &QLineEdit::returnPressed, this, &frmHelp::GoToResult);
    connect(lstSearch_, &QListWidget::itemActivated, this, &frmHelp::GoToResult);
    connect(lstSearch_, &QListWidget::itemClicked, this, &frmHelp::GoToResult);
    return Column(this, {txtSearch_, lblSearch_, lstSearch_});
}

QWidget* frmHelp::MakePage() {
    txtPage_->setObjectName("txtPage");
    txtPage_->setAccessibleName(tr("Page of the help"));
    QWidget* page = Column(this, {txtPage_, MakeFindBar()});
    page->layout()->setContentsMargins(0, 0, 0, 0);
    return page;
}

QWidget* frmHelp::MakeFindBar() {
    fraFind_ = new QWidget(this);
    fraFind_->setObjectName("fraFind");
    txtFind_ = new QLineEdit(fraFind_);
    txtFind_->setObjectName("txtFind");
    auto* label = new QLabel(tr("F&ind:"), fraFind_);
    label->setBuddy(txtFind_);
    auto* next = new QPushButton(tr("&Next"), fraFind_);
    next->setObjectName("cmdFindNext");
    auto* previous = new QPushButton(tr("&Previous"), fraFind_);
    previous->setObjectName("cmdFindPrevious");
    lblFind_ = new QLabel(fraFind_);
    lblFind_->setObjectName("lblFind");
    auto* row = new QHBoxLayout(fraFind_);
    for (QWidget* widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(txtFind_),
                            static_cast<QWidget*>(next), static_cast<QWidget*>(previous)})
        row->addWidget(widget);
    row->addWidget(lblFind_, 1);
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { txtFind_Change(false); });
    connect(next, &QPushButton::clicked, this, [this] { txtFind_Change(false); });
    connect(previous, &QPushButton::clicked, this, [this] { txtFind_Change(true); });
    for (const bool backward : {false, true}) {
        auto* again = new QAction(this);
        again->setShortcuts(backward ? QKeySequence::FindPrevious : QKeySequence::FindNext);
        connect(again, &QAction::triggered, this, [this, backward] { txtFind_Change(backward); });
        addAction(again);
    }
    fraFind_->hide();
    return fraFind_;
}

// A tab that begins with a box to type into is chosen in order to type.
void frmHelp::tabHelp_Click(int tab) {
    if (tab == IndexTab)
        txtIndex_->setFocus();
    if (tab == SearchTab)
        txtSearch_->setFocus();
}

void frmHelp::ShowContents() {
    ShowNumber(HelpContents);
    tabHelp_->setCurrentIndex(ContentsTab);
    library_.Engine().contentWidget()->setFocus();
}

void frmHelp::ShowSearch() {
    tabHelp_->setCurrentIndex(SearchTab);
    txtSearch_->setFocus();
    txtSearch_->selectAll();
}

void frmHelp::ShowNumber(i32 number) {
    GoTo(library_.PageOfNumber(number));
    txtPage_->setFocus();
}

bool frmHelp::ShowParameter(i32 number, i16 kind) {
    QUrl place = library_.PageOfNumber(number);
    if (!library_.HasPage(place))
        return false;
    place.setFragment(QStringLiteral("p%1").arg(kind));
    if (isVisible() && txtPage_->source() == place)
        return false;
    GoTo(place);
    txtPage_->setFocus();
    return true;
}

void frmHelp::GoTo(const QUrl& page) {
    if (page.isValid() && page != txtPage_->source())
        txtPage_->setSource(page, QTextDocument::HtmlResource);
}

void frmHelp::GoToOneOf(const QList<QHelpLink>& links) {
    auto* choice = new QMenu(this);
    choice->setObjectName("mnuIndexPages");
    choice->setAttribute(Qt::WA_DeleteOnClose);
    for (const QHelpLink& link : links)
        choice->addAction(link.title, this, [this, url = link.url] { GoTo(url); });
    choice->popup(txtIndex_->mapToGlobal(txtIndex_->rect().bottomLeft()));
}

void frmHelp::GoToResult() {
    if (const QListWidgetItem* item = lstSearch_->currentItem())
        GoTo(item->data(UrlRole).toUrl());
}

void frmHelp::PageChanged(const QUrl& page) {
    setWindowTitle(tr("%1 - %2 Help").arg(txtPage_->documentTitle(), ProgramName));
    SelectInContents(page);
}

void frmHelp::SelectInContents(const QUrl& page) {
    QHelpContentWidget* contents = library_.Engine().contentWidget();
    const QModelIndex index = contents->indexOf(page.adjusted(QUrl::RemoveFragment));
    if (index.isValid())
        contents->setCurrentIndex(index);
}

void frmHelp::cmdPrint_Click() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        txtPage_->PrintOn(printer);
}

void frmHelp::cmdFind_Click() {
    fraFind_->show();
    lblFind_->clear();
    txtFind_->setFocus();
    txtFind_->selectAll();
}

void frmHelp::txtFind_Change(bool backward) {
    if (txtFind_->text().isEmpty())
        return cmdFind_Click();
    const bool found = txtPage_->FindText(txtFind_->text(), backward);
    lblFind_->setText(found ? QString() : tr("Not on this page."));
}

void frmHelp::txtSearch_Change() {
    const QList<HelpHit> hits = library_.Search(txtSearch_->text());
    lstSearch_->clear();
    for (const HelpHit& hit : hits) {
        auto* item = new QListWidgetItem(hit.Title, lstSearch_);
        item->setData(UrlRole, hit.Page);
    }
    lstSearch_->setCurrentRow(0);
    if (txtSearch_->text().trimmed().isEmpty())
        lblSearch_->clear();
    else if (hits.isEmpty())
        lblSearch_->setText(tr("No page has all these words."));
    else
        lblSearch_->setText(hits.size() == 1 ? tr("1 page") : tr("%1 pages").arg(hits.size()));
}

void frmHelp::HideFindBar() {
    fraFind_->hide();
    txtPage_->setFocus();
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && fraFind_->isVisible())
        return HideFindBar();
    QMainWindow::keyPressEvent(event);
}

} // namespace quorvanta
