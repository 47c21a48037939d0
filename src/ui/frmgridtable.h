// frmGridTable: an input grid that is filled; frmGridTable0: those of the current analysis as they
// were filled.
#pragma once

#include "core/gridtable.h"

#include <QDialog>

#include <optional>
#include <string>

class QLabel;
class QPushButton;
class QTableWidget;
class QTabWidget;

namespace quorvanta {

class GridBox;

// One grid of a sequence. A single box moves over the cells; a cell whose text is refused keeps it.
class frmGridTable : public QDialog {
    Q_OBJECT

  public:
    explicit frmGridTable(QWidget* parent);

    // False when the user cancels.
    bool Ask();

    QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeTable();
    QPushButton* MakeButton(const char* name, const QString& caption,
                            void (frmGridTable::*click)());
    void DrawGrid();
    void DrawRow(i16 row);
    void DrawSums();
    // Whether another grid follows can depend on what is typed.
    void ShowOkCaption();
    void PlaceBox();
    void MoveToCell(GridCell cell);
    bool LeaveFor(GridCell cell);
    GridCell Beside(int steps) const;
    void StepTo(int steps);
    void StepInDirection(int rows, int columns);
    void PasteBlock(const QString& text);
    void UndoBlock();

    void txtText_Change();
    void cmdOK_Click();
    void cmdCancel_Click();
    void cmdClearRow_Click();
    void cmdCopyGrid_Click();

    QTableWidget* tblGrid_;
    GridBox* txtText_;
    QLabel* lblSum_; // of all cells, where they have to add up
    QPushButton* cmdOK_ = nullptr;
    GridCell at_{1, 1};
    std::optional<Array2<std::string>> former_; // before a block came in or a row was cleared
};

// A look at the filled grids of the current analysis.
class frmGridTable0 : public QDialog {
    Q_OBJECT

  public:
    explicit frmGridTable0(QWidget* parent);

    void Refresh();

  private:
    QTabWidget* tabs_;
};

} // namespace quorvanta
