// What a screen reader is told of every window: each control has a name, the role that it plays,
// and its value.
#include "tour/hands.h"
#include "tour/windows.h"
#include "ui/program.h"
#include "ui/qttext.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>
#include <set>

namespace quorvanta {
namespace {

// The roles that a control of that kind may have; empty for what is no control.
std::set<QAccessible::Role> RolesOf(const QWidget& widget) {
    if (qobject_cast<const QCheckBox*>(&widget) != nullptr)
        return {QAccessible::CheckBox};
    if (qobject_cast<const QRadioButton*>(&widget) != nullptr)
        return {QAccessible::RadioButton};
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr)
        return {QAccessible::Button, QAccessible::ButtonMenu, QAccessible::CheckBox};
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr)
        return {QAccessible::EditableText};
    if (qobject_cast<const QTextBrowser*>(&widget) != nullptr)
        return {QAccessible::StaticText};
    if (qobject_cast<const QTextEdit*>(&widget) != nullptr ||
        qobject_cast<const QPlainTextEdit*>(&widget) != nullptr)
        return {QAccessible::EditableText, QAccessible::Document};
    if (qobject_cast<const QComboBox*>(&widget) != nullptr)
        return {QAccessible::ComboBox};
    if (qobject_cast<const QAbstractItemView*>(&widget) != nullptr)
        return {QAccessible::Table, QAccessible::List, QAccessible::Tree};
    if (qobject_cast<const QProgressBar*>(&widget) != nullptr)
        return {QAccessible::ProgressBar};
    if (qobject_cast<const QTabWidget*>(&widget) != nullptr)
        return {QAccessible::Client};
    if (qobject_cast<const QMdiSubWindow*>(&widget) != nullptr)
        return {QAccessible::Window};
    if (widget.objectName() == "PicTable")
        return {QAccessible::Table};
    if (widget.objectName().startsWith("pic", Qt::CaseInsensitive))
        return {QAccessible::Graphic, QAccessible::Chart};
    return {};
}

// Reads a window as a screen reader does.
class Reader : public WindowVisitor {
  public:
    void Take(const QString& name, QWidget& window) override {
        hands::Settle();
        name_ = name;
        ++Windows;
        EXPECT_FALSE(Interface(window).text(QAccessible::Name).isEmpty()) << qPrintable(name);
        for (QWidget* widget : window.findChildren<QWidget*>())
            if (widget->isVisibleTo(&window) && !IsPartOfAnother(*widget))
                Look(*widget);
    }

    int Windows = 0;
    int Controls = 0;
    int Cells = 0;
    std::set<QString> Names;

  private:
    static QAccessibleInterface& Interface(QWidget& widget) {
        // Without a screen reader Qt keeps the cells of a list that has changed since.
        if (qobject_cast<QAbstractItemView*>(&widget) != nullptr)
            QAccessible::deleteAccessibleInterface(
                QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
        return *QAccessible::queryAccessibleInterface(&widget);
    }

    // A control that Qt makes of several widgets is read as one.
    static bool IsPartOfAnother(const QWidget& widget) {
        if (widget.objectName().startsWith("qt_") ||
            widget.window()->inherits("QComboBoxPrivateContainer"))
            return true;
        const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
        if (area != nullptr && area->viewport() == &widget)
            return true;
        for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
             parent = parent->parentWidget())
            if (qobject_cast<const QComboBox*>(parent) != nullptr ||
                qobject_cast<const QAbstractItemView*>(parent) != nullptr ||
                qobject_cast<const QLineEdit*>(parent) != nullptr ||
                (parent->inherits("QMdiSubWindow") && widget.objectName().isEmpty()))
                return true;
        return false;
    }

    std::string Where(const QWidget& widget) const {
        return FromQt(name_ + ": " + widget.objectName() + " (" + widget.metaObject()->className() +
                      ")");
    }

    void Look(QWidget& widget) {
        QAccessibleInterface& heard = Interface(widget);
        const std::set<QAccessible::Role> roles = RolesOf(widget);
        const bool takesKeys = (widget.focusPolicy() & Qt::TabFocus) != 0;
        if (roles.empty() && !takesKeys)
            return LookAtText(widget, heard);
        ++Controls;
        Names.insert(name_ + '/' + widget.objectName());
        EXPECT_FALSE(heard.text(QAccessible::Name).trimmed().isEmpty()) << Where(widget);
        EXPECT_FALSE(heard.text(QAccessible::Name).contains('&')) << Where(widget);
        if (name_.startsWith("printPreview") && roles.empty())
            return; // Qt's own view of the pages
        EXPECT_TRUE(roles.count(heard.role()) > 0)
            << Where(widget) << " has the role " << heard.role();
        LookAtValue(widget, heard);
    }

    // A text says itself.
    void LookAtText(QWidget& widget, QAccessibleInterface& heard) {
        const auto* label = qobject_cast<const QLabel*>(&widget);
        if (label == nullptr || label->text().isEmpty() || label->textFormat() == Qt::RichText)
            return;
        EXPECT_EQ(heard.role(), QAccessible::StaticText) << Where(widget);
        QString text = label->text().simplified();
        EXPECT_TRUE(
            heard.text(QAccessible::Name).simplified().remove('&').contains(text.remove('&')))
            << Where(widget) << ": " << qPrintable(heard.text(QAccessible::Name));
        static const QRegularExpression number("^[<>-]?[0-9. ]+$");
        EXPECT_TRUE(!number.match(text).hasMatch() ||
                    heard.text(QAccessible::Name).size() > text.size())
            << Where(widget) << " is " << qPrintable(text) << " of what?";
    }

    void LookAtValue(QWidget& widget, QAccessibleInterface& heard) {
        if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) {
            EXPECT_EQ(heard.text(QAccessible::Value), box->text()) << Where(widget);
        } else if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
            EXPECT_EQ(heard.text(QAccessible::Value), list->currentText()) << Where(widget);
        } else if (const auto* text = qobject_cast<const QTextEdit*>(&widget)) {
            EXPECT_EQ(heard.text(QAccessible::Value), text->toPlainText()) << Where(widget);
        } else if (const auto* lines = qobject_cast<const QPlainTextEdit*>(&widget)) {
            EXPECT_EQ(heard.text(QAccessible::Value), lines->toPlainText()) << Where(widget);
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            EXPECT_EQ(static_cast<bool>(heard.state().checked), button->isChecked())
                << Where(widget);
        } else if (const auto* progress = qobject_cast<const QProgressBar*>(&widget)) {
            ASSERT_NE(heard.valueInterface(), nullptr) << Where(widget);
            EXPECT_EQ(heard.valueInterface()->currentValue().toInt(), progress->value());
        } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget)) {
            LookAtCells(*view, heard);
        } else if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
            QAccessibleInterface& bar = Interface(*tabs->tabBar());
            EXPECT_EQ(bar.role(), QAccessible::PageTabList) << Where(widget);
            EXPECT_FALSE(bar.text(QAccessible::Name).isEmpty()) << Where(widget);
            for (int i = 0; i < tabs->count(); ++i)
                EXPECT_EQ(bar.child(i)->text(QAccessible::Name), tabs->tabText(i).remove('&'));
        } else if (qobject_cast<const QMdiSubWindow*>(&widget) == nullptr) {
            EXPECT_FALSE(heard.text(QAccessible::Description).isEmpty()) << Where(widget);
        }
    }

    void LookAtCells(const QAbstractItemView& view, QAccessibleInterface& heard) {
        auto* table = heard.tableInterface();
        if (table == nullptr || view.model() == nullptr)
            return;
        for (int row = 0; row < std::min(table->rowCount(), 20); ++row)
            for (int column = 0; column < table->columnCount(); ++column) {
                QAccessibleInterface* cell = table->cellAt(row, column);
                ASSERT_NE(cell, nullptr) << Where(view);
                ++Cells;
                EXPECT_EQ(cell->text(QAccessible::Name),
                          view.model()->index(row, column, view.rootIndex()).data().toString())
                    << Where(view) << " row " << row << ", column " << column;
            }
    }

    QString name_;
};

TEST(Accessibility, EveryMenuAndEntryHasAName) {
    Program program;
    int entries = 0;
    for (QMenu* menu : program.Window().findChildren<QMenu*>()) {
        auto* heard = QAccessible::queryAccessibleInterface(menu);
        const QString name = heard->text(QAccessible::Name);
        EXPECT_TRUE(!name.isEmpty() && !name.contains('&')) << qPrintable(menu->objectName());
        EXPECT_EQ(heard->role(), QAccessible::PopupMenu) << qPrintable(menu->objectName());
        for (int i = 0; i < heard->childCount(); ++i) {
            QAccessibleInterface* entry = heard->child(i);
            if (entry->role() == QAccessible::Separator)
                continue;
            ++entries;
            EXPECT_FALSE(entry->text(QAccessible::Name).isEmpty()) << qPrintable(name);
            EXPECT_FALSE(entry->text(QAccessible::Name).contains('&')) << qPrintable(name);
        }
    }
    EXPECT_GT(entries, 200);
}

TEST(Accessibility, EveryControlOfEveryWindowSaysWhatItIs) {
    Program program;
    Reader reader;
    WalkWindows(program.Window(), reader);
    EXPECT_GT(reader.Windows, 50);
    EXPECT_GT(reader.Controls, 300);
    EXPECT_GT(reader.Cells, 30);
    for (const char* control :
         {"frmCalc/txtParValue(3)", "frmGridTable/tblGrid", "frmMonteGroupSeq/picBoundary",
          "frmDistrGraph/picDistrGraph", "frmGraph/PicGraph", "frmTable/PicTable"})
        EXPECT_TRUE(reader.Names.count(control) > 0) << control;
}

} // namespace
} // namespace quorvanta
