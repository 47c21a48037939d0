#include "ui/frmgridtable.h"

#include "core/analysis_state.h"
#include "core/gridpaste.h"
#include "core/reading.h"
#include "core/typed_text.h"
#include "ui/accessible.h"
#include "ui/darkstyle.h"
#include "ui/gridbox.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quorvanta {

namespace {

constexpr int CellCharacters = 9;

// Heads, and room for a figure of the usual length in every cell.
void DressTable(QTableWidget& table, int rows, int columns, const std::string& rowHeads,
                const std::string& columnHeads, int dataColumns) {
    DarkStyle::Dress(table);
    table.setRowCount(rows);
    table.setColumnCount(columns);
    for (int row = 0; row < rows; ++row)
        table.setVerticalHeaderItem(
            row, new QTableWidgetItem(ToQt(
                     GridHeadOf(rowHeads, static_cast<i16>(rows), static_cast<i16>(row + 1)))));
    for (int column = 0; column < dataColumns; ++column)
        table.setHorizontalHeaderItem(
            column, new QTableWidgetItem(ToQt(GridHeadOf(columnHeads, static_cast<i16>(dataColumns),
                                                         static_cast<i16>(column + 1)))));
    const int width = table.fontMetrics().horizontalAdvance('0') * CellCharacters +
                      2 * table.fontMetrics().height();
    table.horizontalHeader()->setMinimumSectionSize(width);
    table.resizeColumnsToContents();
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() * 7 / 4);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setTabKeyNavigation(false);
}

// The whole table, as far as the screen has room.
QSize SizeOf(const QTableWidget& table) {
    int width = table.verticalHeader()->sizeHint().width() + 2 * table.frameWidth();
    for (int column = 0; column < table.columnCount(); ++column)
        width += table.columnWidth(column);
    int height = table.horizontalHeader()->sizeHint().height() + 2 * table.frameWidth();
    for (int row = 0; row < table.rowCount(); ++row)
        height += table.rowHeight(row);
    width += 1;
    height += 1;
    const QSize screen = table.screen()->availableSize();
    const QSize room(screen.width() * 3 / 4, screen.height() * 3 / 5);
    const int bar = table.verticalScrollBar()->sizeHint().width();
    return {std::min(height > room.height() ? width + bar : width, room.width()),
            std::min(width > room.width() ? height + bar : height, room.height())};
}

QTableWidgetItem* FigureItem(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QLabel* MakeTitle(const std::string& title, QWidget* parent) {
    auto* label = new QLabel(ToQt(title), parent);
    label->setObjectName("lblGridTitle");
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setVisible(!title.empty());
    return label;
}

} // namespace

// --- frmGridTable -------------------------------------------------------------------------------

frmGridTable::frmGridTable(QWidget* parent)
    : QDialog(parent), tblGrid_(new QTableWidget(this)), lblSum_(new QLabel(this)) {
    setObjectName("frmGridTable");
    setWindowTitle(ToQt(GridCaption()));
    MakeTable();

    tblGrid_->setLayoutDirection(
        Qt::LeftToRight); // columns as in a matrix, and each minus in front
    txtText_ = new GridBox(tblGrid_->viewport());
    txtText_->setObjectName("txtText");
    connect(txtText_, &ValueBox::textChanged, this, &frmGridTable::txtText_Change);
    connect(txtText_, &GridBox::Step, this, &frmGridTable::StepTo);
    connect(txtText_, &GridBox::Move, this, &frmGridTable::StepInDirection);
    connect(txtText_, &GridBox::PasteBlock, this, &frmGridTable::PasteBlock);
    connect(txtText_, &GridBox::UndoBlock, this, &frmGridTable::UndoBlock);
    connect(txtText_, &GridBox::CopyGrid, this, &frmGridTable::cmdCopyGrid_Click);

    QPushButton* cmdClearRow =
        MakeButton("cmdClearRow", "Clear&Row", &frmGridTable::cmdClearRow_Click);
    QPushButton* cmdCopyGrid =
        MakeButton("cmdCopyGrid", tr("Copy &Grid"), &frmGridTable::cmdCopyGrid_Click);
    cmdCopyGrid->setToolTip(tr("Copies all cells, for a spreadsheet; a block of figures that was "
                               "copied there is pasted into the cells from the box on."));
    QPushButton* cmdCancel = MakeButton("cmdCancel", "&Cancel", &frmGridTable::cmdCancel_Click);
    cmdOK_ = MakeButton("cmdOK", "", &frmGridTable::cmdOK_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdClearRow);
    buttons->addWidget(cmdCopyGrid);
    buttons->addStretch(1);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdOK_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeTitle(CurrentGrid().Title, this));
    column->addWidget(tblGrid_);
    lblSum_->setObjectName("lblSum");
    lblSum_->setAlignment(Qt::AlignRight);
    lblSum_->setVisible(CurrentGrid().AddsUp);
    column->addWidget(lblSum_);
    column->addStretch(1);
    column->addLayout(buttons);
    DrawGrid();
    // Few rows are seen without scrolling, whatever height a window manager gives.
    tblGrid_->setMinimumHeight(SizeOf(*tblGrid_).height());
    MoveToCell(IsLockedCell(1, 1) ? Beside(1) : at_);
}

bool frmGridTable::Ask() {
    return exec() == Accepted;
}

void frmGridTable::MakeTable() {
    const Grid& grid = CurrentGrid();
    tblGrid_->setObjectName("tblGrid");
    tblGrid_->setAccessibleName(ToQt(grid.Title.empty() ? GridCaption() : grid.Title));
    const int columns = grid.Columns + (grid.RowSum ? 1 : 0);
    DressTable(*tblGrid_, grid.Rows, columns, grid.RowHeads, grid.ColumnHeads, grid.Columns);
    for (int row = 0; row < grid.Rows; ++row)
        for (int column = 0; column < columns; ++column)
            tblGrid_->setItem(row, column, FigureItem(""));
    if (grid.RowSum)
        tblGrid_->setHorizontalHeaderItem(grid.Columns, new QTableWidgetItem(""));
    tblGrid_->setMaximumHeight(SizeOf(*tblGrid_).height());
    tblGrid_->setSelectionMode(QAbstractItemView::NoSelection);
    tblGrid_->setFocusPolicy(Qt::NoFocus);
    connect(tblGrid_, &QTableWidget::cellPressed, this, [this](int row, int column) {
        MoveToCell({static_cast<i16>(row + 1), static_cast<i16>(column + 1)});
    });
    for (const QScrollBar* bar : {tblGrid_->verticalScrollBar(), tblGrid_->horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, &frmGridTable::PlaceBox);
    for (const QHeaderView* head : {tblGrid_->verticalHeader(), tblGrid_->horizontalHeader()})
        connect(head, &QHeaderView::sectionResized, this, &frmGridTable::PlaceBox);
}

QPushButton* frmGridTable::MakeButton(const char* name, const QString& caption,
                                      void (frmGridTable::*click)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QSize frmGridTable::sizeHint() const {
    const QSize table = SizeOf(*tblGrid_);
    const QSize other = QDialog::sizeHint() - tblGrid_->sizeHint();
    return {std::max(QDialog::minimumSizeHint().width(), table.width() + other.width()),
            table.height() + other.height()};
}

void frmGridTable::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    PlaceBox();
}

void frmGridTable::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    PlaceBox();
    txtText_->setFocus(Qt::TabFocusReason);
}

// Enter presses the button that has the focus, whatever the desktop thinks of that: it has led from
// cell to cell up to there.
void frmGridTable::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (event->key() == Qt::Key_Escape)
        cmdCancel_Click();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && button != nullptr)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

void frmGridTable::DrawGrid() {
    for (i16 row = 1; row <= CurrentGrid().Rows; ++row)
        DrawRow(row);
    DrawSums();
    ShowOkCaption();
    txtText_->Write(ToQt(GridText(at_.Row, at_.Column)));
}

void frmGridTable::DrawRow(i16 row) {
    for (i16 column = 1; column <= CurrentGrid().Columns; ++column) {
        QTableWidgetItem& item = *tblGrid_->item(row - 1, column - 1);
        item.setText(ToQt(GridText(row, column)));
        if (IsLockedCell(row, column))
            item.setFlags(Qt::NoItemFlags);
    }
}

void frmGridTable::DrawSums() {
    lblSum_->setText(ToQt(GridSumText()));
    if (!CurrentGrid().RowSum)
        return;
    for (i16 row = 1; row <= CurrentGrid().Rows; ++row) {
        QTableWidgetItem& item = *tblGrid_->item(row - 1, CurrentGrid().Columns);
        item.setText(ToQt(RowSumText(row)));
        item.setFlags(Qt::ItemIsEnabled);
    }
}

void frmGridTable::ShowOkCaption() {
    cmdOK_->setText(ToQt(GridOkCaption()));
}

void frmGridTable::PlaceBox() {
    if (txtText_ == nullptr)
        return;
    const QModelIndex index = tblGrid_->model()->index(at_.Row - 1, at_.Column - 1);
    txtText_->setGeometry(tblGrid_->visualRect(index));
}

// Stores the text of the box; false if it is refused on the way to that cell.
bool frmGridTable::LeaveFor(GridCell cell) {
    const Leaving leaving = cell.Row == at_.Row ? Leaving::Cell : Leaving::Row;
    const bool isGood = GridOK(at_.Row, at_.Column, FromQt(txtText_->text()), leaving);
    DrawRow(at_.Row);
    return isGood;
}

void frmGridTable::MoveToCell(GridCell cell) {
    const Grid& grid = CurrentGrid();
    if (cell.Row < 1 || cell.Row > grid.Rows || cell.Column < 1 || cell.Column > grid.Columns ||
        IsLockedCell(cell.Row, cell.Column)) {
        txtText_->setFocus();
        return;
    }
    const bool isSame = cell.Row == at_.Row && cell.Column == at_.Column;
    if (!isSame && !LeaveFor(cell)) {
        txtText_->SetRefused(true);
        txtText_->setFocus();
        txtText_->selectAll();
        return;
    }
    txtText_->SetRefused(false);
    at_ = cell;
    txtText_->Write(ToQt(GridText(cell.Row, cell.Column)));
    txtText_->SetNote(ToQt(ReadingNote(FromQt(txtText_->text()))));
    txtText_->setAccessibleName(ToQt(GridHeadOf(grid.RowHeads, grid.Rows, cell.Row) + ", " +
                                     GridHeadOf(grid.ColumnHeads, grid.Columns, cell.Column)));
    tblGrid_->scrollTo(tblGrid_->model()->index(cell.Row - 1, cell.Column - 1));
    PlaceBox();
    txtText_->setFocus();
    txtText_->selectAll();
}

// The cell so many steps on, row after row, past those that can't be entered; (0, 0) beyond the
// first or the last.
GridCell frmGridTable::Beside(int steps) const {
    const int columns = CurrentGrid().Columns;
    const int cells = CurrentGrid().Rows * columns;
    for (int n = (at_.Row - 1) * columns + at_.Column - 1 + steps; n >= 0 && n < cells;
         n += steps) {
        const GridCell cell{static_cast<i16>(n / columns + 1), static_cast<i16>(n % columns + 1)};
        if (!IsLockedCell(cell.Row, cell.Column))
            return cell;
    }
    return {};
}

// Behind the last cell comes the button that accepts the grid, before the first the one that
// cancels.
void frmGridTable::StepTo(int steps) {
    const GridCell next = Beside(steps);
    if (next.Row > 0)
        return MoveToCell(next);
    if (steps > 0)
        cmdOK_->setFocus(Qt::TabFocusReason);
    else
        findChild<QPushButton*>("cmdCancel")->setFocus(Qt::BacktabFocusReason);
}

// Past cells that can't be entered.
void frmGridTable::StepInDirection(int rows, int columns) {
    const auto isInside = [](int row, int column) {
        return row >= 1 && row <= CurrentGrid().Rows && column >= 1 &&
               column <= CurrentGrid().Columns;
    };
    int row = at_.Row + rows;
    int column = at_.Column + columns;
    while (isInside(row, column) && IsLockedCell(static_cast<i16>(row), static_cast<i16>(column))) {
        row += rows;
        column += columns;
    }
    MoveToCell({static_cast<i16>(row), static_cast<i16>(column)});
}

void frmGridTable::PasteBlock(const QString& text) {
    former_ = GridText;
    PasteIntoGrid(at_.Row, at_.Column, FromQt(text));
    DrawGrid();
}

// The second time it takes itself back.
void frmGridTable::UndoBlock() {
    if (!former_)
        return;
    std::swap(*former_, GridText);
    DrawGrid();
    txtText_->selectAll();
}

void frmGridTable::txtText_Change() {
    former_.reset();
    const std::string typed = OnlyAllowed(FromQt(txtText_->text()));
    txtText_->Accept(ToQt(typed));
    GridOK(at_.Row, at_.Column, typed, Leaving::Nothing);
    txtText_->SetNote(ToQt(ReadingNote(typed)));
    txtText_->SetRefused(false);
    if (CurrentGrid().Symmetric)
        DrawRow(at_.Column);
    DrawSums();
    ShowOkCaption();
}

void frmGridTable::cmdOK_Click() {
    const auto refused = AcceptGrid();
    if (!refused)
        return accept();
    at_ = *refused;
    if (IsLockedCell(at_.Row, at_.Column))
        at_ = Beside(-1).Row > 0 ? Beside(-1) : Beside(1);
    DrawGrid();
    MoveToCell(at_);
    txtText_->SetRefused(true);
}

void frmGridTable::cmdCancel_Click() {
    reject();
}

void frmGridTable::cmdClearRow_Click() {
    former_ = GridText;
    ClearGridRow(at_.Row);
    DrawGrid();
    txtText_->setFocus();
}

void frmGridTable::cmdCopyGrid_Click() {
    QApplication::clipboard()->setText(ToQt(GridAsText()));
    txtText_->setFocus();
}

// --- frmGridTable0 ------------------------------------------------------------------------------

frmGridTable0::frmGridTable0(QWidget* parent) : QDialog(parent), tabs_(new QTabWidget(this)) {
    setObjectName("frmGridTable0");
    tabs_->setObjectName("tabGrids");
    NameTabs(*tabs_, tr("Input grids"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(tabs_);
}

void frmGridTable0::Refresh() {
    setWindowTitle(tr("Tables of ") + ToQt(AnalysisFileName));
    while (tabs_->count() > 0)
        delete tabs_->widget(0);
    for (const FilledGrid& grid : FilledGrids()) {
        auto* page = new QWidget(tabs_);
        auto* table = new QTableWidget(page);
        table->setLayoutDirection(Qt::LeftToRight);
        const int rows = grid.Cells.HighBound1();
        const int columns = grid.Cells.HighBound2();
        DressTable(*table, rows, columns, grid.RowHeads, grid.ColumnHeads, columns);
        for (i16 row = 1; row <= rows; ++row)
            for (i16 at = 1; at <= columns; ++at)
                table->setItem(row - 1, at - 1, FigureItem(ToQt(grid.Cells(row, at))));
        table->setMinimumSize(SizeOf(*table));
        table->setAccessibleName(ToQt(grid.Title));
        auto* inner = new QVBoxLayout(page);
        inner->addWidget(table);
        const std::string name =
            grid.Title.empty() ? "Table " + std::to_string(tabs_->count() + 1) : grid.Title;
        tabs_->addTab(page, ToQt(name).replace("&", "&&"));
    }
}

} // namespace quorvanta
