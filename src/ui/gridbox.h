// The box that moves over the cells of an input grid.
#pragma once

#include "ui/valuebox.h"

namespace quorvanta {

class GridBox : public ValueBox {
    Q_OBJECT

  public:
    explicit GridBox(QWidget* parent);

  signals:
    // To the next cell, or to the one before (-1).
    void Step(int steps);
    // To the cell in this direction.
    void Move(int rows, int columns);
    // A block of figures comes in.
    void PasteBlock(const QString& text);
    void CopyGrid();
    // Nothing was typed that the box could take back.
    void UndoBlock();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    bool PastesBlock();
    bool IsAtEdge(bool right) const;
};

} // namespace quorvanta
