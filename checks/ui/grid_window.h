// The real window of an input grid, as its user's hands find it.
#pragma once

#include "core/gridchecks.h"
#include "core/gridtable.h"
#include "ui/gridbox.h"
#include "ui/run_fixture.h"

#include <QTableWidget>
#include <QTest>

#include <functional>
#include <string>
#include <utility>

namespace quorvanta {

class GridWindow : public RunCheck {
  protected:
    GridWindow() { OpenTTest(); }

    // The user does this in the window of the next grid.
    void When(std::function<void(QWidget&)> act) {
        hands::WhenModal("frmGridTable", [this, act = std::move(act)](QWidget& grid) {
            window_ = &grid;
            act(grid);
            if (grid.isVisible())
                hands::Click(grid, "cmdCancel");
        });
    }

    bool Ask(const Grid& grid, const std::string& label = "H1: &Mean") {
        return ShowGrids({grid}, label);
    }

    GridBox& Cell() { return *hands::Control<GridBox>(*window_, "txtText"); }
    QTableWidget& Table() { return *hands::Control<QTableWidget>(*window_, "tblGrid"); }

    void TypeText(const QString& text) { QTest::keyClicks(&Cell(), text); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Cell(), key, modifiers);
    }

    // The cell that the box lies over.
    QPoint Place() {
        for (int row = 0; row < Table().rowCount(); ++row)
            for (int column = 0; column < Table().columnCount(); ++column)
                if (Table().visualRect(Table().model()->index(row, column)) == Cell().geometry())
                    return {row + 1, column + 1};
        return {0, 0};
    }

    QString TextAt(int row, int column) { return Table().item(row - 1, column - 1)->text(); }

    void ClickCell(int row, int column) {
        const QRect cell = Table().visualRect(Table().model()->index(row - 1, column - 1));
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, cell.center());
    }

    static Grid Means() {
        return {.Store = 1,
                .Rows = 3,
                .Columns = 2,
                .Title = "Means of groups",
                .RowHeads = "Group",
                .ColumnHeads = "Mean,Standard Deviation"};
    }

    static Grid Correlations() {
        return {.Store = 5,
                .Rows = 3,
                .Columns = 3,
                .Check = CorrelationMatrix(),
                .Symmetric = true,
                .Diagonal = "1"};
    }

    QWidget* window_ = nullptr;
};

} // namespace quorvanta
