#include "ui/accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace quorvanta {

namespace {

constexpr const char* IsPicture = "isPicture";
constexpr const char* Cells = "accessibleCells";

class TableInterface;

// One cell. It lives as long as its table's interface and reads what stands there now; a cell that
// the table no longer has is not valid.
class CellInterface : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    CellInterface(TableInterface& table, int row, int column)
        : table_(table), row_(row), column_(column) {}

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QString text(QAccessible::Text part) const override;
    void setText(QAccessible::Text /*part*/, const QString& /*text*/) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override { return false; }
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override { return column_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    TableInterface& table_;
    int row_;
    int column_;
};

// A picture of a table. Nothing in it can be selected.
class TableInterface : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit TableInterface(QWidget* picture) : QAccessibleWidget(picture, QAccessible::Table) {}
    TableInterface(const TableInterface&) = delete;
    TableInterface& operator=(const TableInterface&) = delete;

    QList<QStringList> Rows() const {
        return widget()->property(Cells).value<QList<QStringList>>();
    }
    QString TextAt(int row, int column) const { return Rows().value(row).value(column); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QAccessibleInterface* child(int index) const override {
        const int columns = columnCount();
        return columns > 0 && index >= 0 ? cellAt(index / columns, index % columns) : nullptr;
    }
    int childCount() const override { return rowCount() * columnCount(); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        if (child == nullptr || child->parent() != this)
            return -1;
        const auto* cell = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
        return cell->rowIndex() * columnCount() + cell->columnIndex();
    }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override {
        if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
            return nullptr;
        QAccessible::Id& id = cells_[{row, column}];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(
                new CellInterface(const_cast<TableInterface&>(*this), row, column));
        return QAccessible::accessibleInterface(id);
    }
    int selectedCellCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override { return {}; }
    QString columnDescription(int column) const override { return TextAt(0, column); }
    QString rowDescription(int row) const override { return TextAt(row, 0); }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    int columnCount() const override {
        qsizetype columns = 0;
        for (const QStringList& row : Rows())
            columns = std::max(columns, row.size());
        return static_cast<int>(columns);
    }
    int rowCount() const override { return static_cast<int>(Rows().size()); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool isRowSelected(int /*row*/) const override { return false; }
    bool selectRow(int /*row*/) override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {} // cells read anew

  protected:
    ~TableInterface() override {
        for (const QAccessible::Id id : std::as_const(cells_))
            QAccessible::deleteAccessibleInterface(id);
    }

  private:
    mutable QHash<std::pair<int, int>, QAccessible::Id> cells_; // those that were asked for
};

bool CellInterface::isValid() const {
    return table_.isValid() && row_ < table_.rowCount() && column_ < table_.columnCount();
}

QWindow* CellInterface::window() const {
    return table_.window();
}

QAccessibleInterface* CellInterface::parent() const {
    return &table_;
}

QString CellInterface::text(QAccessible::Text part) const {
    return part == QAccessible::Name ? table_.TextAt(row_, column_) : QString();
}

QRect CellInterface::rect() const {
    return table_.rect();
}

QAccessible::Role CellInterface::role() const {
    if (row_ == 0)
        return QAccessible::ColumnHeader;
    return column_ == 0 ? QAccessible::RowHeader : QAccessible::Cell;
}

QAccessible::State CellInterface::state() const {
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = table_.state().invisible;
    return state;
}

void* CellInterface::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
}

QList<QAccessibleInterface*> CellInterface::columnHeaderCells() const {
    return row_ == 0 ? QList<QAccessibleInterface*>() : QList{table_.cellAt(0, column_)};
}

QList<QAccessibleInterface*> CellInterface::rowHeaderCells() const {
    return row_ == 0 || column_ == 0 ? QList<QAccessibleInterface*>()
                                     : QList{table_.cellAt(row_, 0)};
}

QAccessibleInterface* PictureInterface(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->property(IsPicture).toBool())
        return nullptr;
    if (widget->property(Cells).isValid())
        return new TableInterface(widget); // Qt takes it over
    return new QAccessibleWidget(widget, QAccessible::Graphic);
}

} // namespace

void MakeAccessiblePicture(QWidget& widget) {
    widget.setProperty(IsPicture, true);
    widget.setLayoutDirection(Qt::LeftToRight);
    QAccessible::installFactory(PictureInterface); // once only, however often it is called
}

void SetAccessibleCells(QWidget& picture, const QList<QStringList>& rows) {
    const bool wasTable = picture.property(Cells).isValid();
    picture.setProperty(Cells, QVariant::fromValue(rows));
    if (!wasTable) // what was taken for a mere picture until now
        QAccessible::deleteAccessibleInterface(
            QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&picture)));
    QAccessibleTableModelChangeEvent event(&picture, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

void NameTabs(QTabWidget& tabs, const QString& name) {
    tabs.setAccessibleName(name);
    tabs.tabBar()->setAccessibleName(name);
}

} // namespace quorvanta
