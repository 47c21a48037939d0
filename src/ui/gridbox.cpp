#include "ui/gridbox.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

namespace quorvanta {

GridBox::GridBox(QWidget* parent) : ValueBox(parent) {}

// Tab goes from cell to cell, not from control to control.
bool GridBox::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
            emit Step(key.key() == Qt::Key_Tab ? 1 : -1);
            return true;
        }
    }
    return ValueBox::event(event);
}

bool GridBox::IsAtEdge(bool right) const {
    const bool isWhole = selectedText() == text();
    return isWhole || (!hasSelectedText() && cursorPosition() == (right ? text().size() : 0));
}

void GridBox::keyPressEvent(QKeyEvent* event) {
    // Arrow keys of the number pad, and all those of some keyboards, say that they are.
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isPlain = modifiers == Qt::NoModifier;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit Step(1);
        return event->accept();
    case Qt::Key_Up:
    case Qt::Key_Down:
        emit Move(event->key() == Qt::Key_Up ? -1 : 1, 0);
        return event->accept();
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (isPlain && IsAtEdge(event->key() == Qt::Key_Right)) {
            emit Move(0, event->key() == Qt::Key_Left ? -1 : 1);
            return event->accept();
        }
        break;
    case Qt::Key_C:
        if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier)) {
            emit CopyGrid();
            return event->accept();
        }
        break;
    default:
        break;
    }
    if (event->matches(QKeySequence::Paste) && PastesBlock())
        return event->accept();
    if (event->matches(QKeySequence::Undo) && !isUndoAvailable()) {
        emit UndoBlock();
        return event->accept();
    }
    ValueBox::keyPressEvent(event);
}

// What a spreadsheet copies of several cells.
bool GridBox::PastesBlock() {
    const QString text = QApplication::clipboard()->text();
    if (!text.contains('\t') && text.trimmed().indexOf('\n') < 0)
        return false;
    emit PasteBlock(text);
    return true;
}

void GridBox::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    for (QAction* action : menu->actions()) {
        if (!action->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        disconnect(action, &QAction::triggered, nullptr, nullptr);
        connect(action, &QAction::triggered, this, [this] {
            QKeyEvent paste(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
            keyPressEvent(&paste);
        });
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Copy &Grid")), &QAction::triggered, this, &GridBox::CopyGrid);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

} // namespace quorvanta
