#include "ui/valuebox.h"

#include "core/reading.h"
#include "ui/colors.h"
#include "ui/qttext.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPalette>
#include <QPointer>
#include <QSignalBlocker>
#include <QStringList>
#include <QStyle>

#include <algorithm>

namespace quorvanta {

namespace {

// Keys that edit or copy text keep their meaning in a box that Ctrl would otherwise send to its
// input grid.
bool IsEditingKey(const QKeyEvent& event) {
    constexpr QKeySequence::StandardKey keys[] = {
        QKeySequence::Copy,
        QKeySequence::Cut,
        QKeySequence::Paste,
        QKeySequence::SelectAll,
        QKeySequence::Undo,
        QKeySequence::Redo,
        QKeySequence::DeleteStartOfWord,
        QKeySequence::DeleteEndOfWord,
        QKeySequence::MoveToPreviousWord,
        QKeySequence::MoveToNextWord,
        QKeySequence::SelectPreviousWord,
        QKeySequence::SelectNextWord,
        QKeySequence::MoveToStartOfDocument,
        QKeySequence::MoveToEndOfDocument,
        QKeySequence::SelectStartOfDocument,
        QKeySequence::SelectEndOfDocument,
    };
    for (const QKeySequence::StandardKey key : keys) {
        if (event.matches(key))
            return true;
    }
    return false;
}

bool IsModifier(int key) {
    return key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Meta;
}

// The icons that all boxes share, as long as the application lives. Those of an icon of its own
// would stay among the kept pixmaps when the box is gone.
class Icons : public QObject {
  public:
    static const Icons& Shared() {
        static QPointer<Icons> icons;
        if (icons.isNull())
            icons = new Icons;
        return *icons;
    }

    const QIcon Mark = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    const QIcon Tables = QApplication::style()->standardIcon(QStyle::SP_FileDialogDetailedView);

  private:
    Icons() : QObject(qApp) {}
};

} // namespace

ValueBox::ValueBox(QWidget* parent)
    : QLineEdit(parent), mark_(addAction(Icons::Shared().Mark, QLineEdit::LeadingPosition)),
      table_(addAction(Icons::Shared().Tables, QLineEdit::TrailingPosition)) {
    mark_->setVisible(false);
    mark_->setObjectName("actReading");
    table_->setVisible(false);
    table_->setObjectName("actTables");
    table_->setToolTip(tr("Calculate the value from tables (F2)"));
    connect(table_, &QAction::triggered, this, &ValueBox::DblClick);
    setAlignment(Qt::AlignRight);
    setLayoutDirection(Qt::LeftToRight); // or "-0.5" would be shown as "0.5-"
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
}

void ValueBox::Write(const QString& text) {
    if (text == this->text())
        return;
    const QSignalBlocker quiet(this);
    setText(text);
}

void ValueBox::Accept(const QString& accepted) {
    const QString typed = text();
    if (accepted == typed)
        return;
    // What was taken out does not occur in what is left, so the cursor moves left by its share.
    const auto left = typed.left(cursorPosition());
    const auto kept = std::count_if(left.begin(), left.end(),
                                    [&accepted](QChar c) { return accepted.contains(c); });
    Write(accepted);
    setCursorPosition(static_cast<int>(kept));
}

void ValueBox::SetVisibleCharacters(int characters) {
    visibleCharacters_ = characters;
    updateGeometry();
}

void ValueBox::SetGrey(bool grey) {
    if (grey_ == grey)
        return;
    grey_ = grey;
    Recolour();
}

void ValueBox::SetBlue(bool blue) {
    if (blue_ == blue)
        return;
    blue_ = blue;
    table_->setVisible(blue);
    Describe();
    Recolour();
}

void ValueBox::SetRefused(bool refused) {
    if (refused_ == refused)
        return;
    refused_ = refused;
    Describe();
    Recolour();
}

void ValueBox::SetResult(bool result) {
    QFont font = this->font();
    if (font.bold() == result)
        return;
    font.setBold(result);
    setFont(font);
}

void ValueBox::SetState(const QString& state) {
    state_ = state;
    Describe();
}

void ValueBox::SetHint(const QString& hint) {
    hint_ = hint;
    Describe();
}

void ValueBox::SetNote(const QString& note) {
    note_ = note;
    mark_->setVisible(!note.isEmpty());
    mark_->setToolTip(note);
    Describe();
}

void ValueBox::Describe() {
    if (!note_.isEmpty())
        setToolTip(note_);
    else if (blue_)
        setToolTip(QStringLiteral(" Doubleclick the textbox to get the value calculated."));
    else
        setToolTip(hint_);
    QStringList all{state_, note_};
    if (blue_)
        all << tr("F2 calculates it from tables");
    if (refused_)
        all << tr("refused");
    all.removeAll("");
    setAccessibleDescription(all.join(", "));
}

QSize ValueBox::sizeHint() const {
    QSize size = QLineEdit::sizeHint();
    // The bold face of a result, whether the box holds one or not: nothing moves when it comes.
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    size.setWidth(metrics.horizontalAdvance(QLatin1Char('0')) * visibleCharacters_ +
                  metrics.height());
    return size;
}

void ValueBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        // The focus only comes back from a message, a menu or another program.
        return;
    default:
        break;
    }
    focusedByMouse_ = event->reason() == Qt::MouseFocusReason;
    selectAll();
    emit GotFocus();
}

void ValueBox::mouseReleaseEvent(QMouseEvent* event) {
    // On some desktops the middle button pastes what is selected anywhere.
    if (event->button() == Qt::MiddleButton && QApplication::clipboard()->supportsSelection()) {
        deselect();
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        PasteFrom(QClipboard::Selection);
        event->accept();
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    // The press that gave the focus has put the cursor into the text; unless the user has dragged
    // a selection, the whole text is selected, as with the keyboard.
    if (focusedByMouse_ && !hasSelectedText())
        selectAll();
    focusedByMouse_ = false;
}

void ValueBox::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit DblClick();
}

void ValueBox::keyPressEvent(QKeyEvent* event) {
    // A letter with Alt belongs to a label of the window; the line edit would type it.
    if (event->modifiers() == Qt::AltModifier) {
        event->ignore();
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        PasteFrom(QClipboard::Clipboard);
        event->accept();
        return;
    }
    if (blue_ && event->modifiers() == Qt::ControlModifier && !IsModifier(event->key()) &&
        !IsEditingKey(*event)) {
        emit KeyDownWithCtrl();
        event->accept();
        return;
    }
    if (blue_ && event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        emit DblClick();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit MoveToNext(event->key() == Qt::Key_Down ? 1 : -1);
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void ValueBox::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !recolouring_)
        Recolour();
}

void ValueBox::dragEnterEvent(QDragEnterEvent* event) {
    // A file is for the main window to open; its path is no number.
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QLineEdit::dragEnterEvent(event);
}

void ValueBox::dropEvent(QDropEvent* event) {
    if (event->source() == this || !event->mimeData()->hasText()) {
        QLineEdit::dropEvent(event);
        return;
    }
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    Insert(event->mimeData()->text());
    event->acceptProposedAction();
}

void ValueBox::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    for (QAction* action : menu->actions()) {
        if (!action->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        disconnect(action, &QAction::triggered, nullptr, nullptr);
        connect(action, &QAction::triggered, this, [this] { PasteFrom(QClipboard::Clipboard); });
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void ValueBox::PasteFrom(QClipboard::Mode mode) {
    Insert(QApplication::clipboard()->text(mode));
}

// In the place of the selection; a text of which nothing is left leaves that as it is.
void ValueBox::Insert(const QString& pasted) {
    const QString taken = ToQt(TakePasted(FromQt(pasted)));
    if (!taken.isEmpty())
        insert(taken);
}

void ValueBox::Recolour() {
    QPalette own;
    const bool dark = IsDark(QApplication::palette().color(QPalette::Base));
    if (grey_) {
        own.setColor(QPalette::Base, dark ? DarkNoResultColor : NoResultColor);
        own.setColor(QPalette::Text, dark ? Qt::white : Qt::black);
    }
    if (blue_) {
        own.setColor(QPalette::Text, dark ? QColor(0x7A, 0xB8, 0xFF) : QColor(0, 0, 0xFF));
    }
    if (refused_)
        own.setColor(QPalette::Base, dark ? DarkRefusedColor : RefusedColor);
    recolouring_ = true;
    setPalette(own);
    recolouring_ = false;
}

} // namespace quorvanta
