// The box of a parameter's value, with the colours that say what its text is.
#pragma once

#include <QClipboard>
#include <QColor>
#include <QLineEdit>

namespace quorvanta {

// The background of the unknown's box while it holds no result.
inline const QColor NoResultColor(0xC0, 0xC0, 0xC0);
// The same on a dark screen, where that would be the brightest of all boxes.
inline const QColor DarkNoResultColor(0x44, 0x44, 0x44);
// The background of a text that was refused.
inline const QColor RefusedColor(0xFF, 0xD0, 0xD0);
inline const QColor DarkRefusedColor(0x70, 0x20, 0x20);

class ValueBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit ValueBox(QWidget* parent = nullptr);

    // A text written by the program: no change is reported. An equal text leaves the cursor, the
    // selection and the history of undo as they are.
    void Write(const QString& text);

    // What the program has made of a typed text: only characters taken out, the cursor stays where
    // it was among those left.
    void Accept(const QString& accepted);

    // The widest text that shows without scrolling, in digits; 12 to begin with.
    void SetVisibleCharacters(int characters);

    // Grey: the unknown without a result. Otherwise the background of the palette.
    void SetGrey(bool grey);
    bool IsGrey() const { return grey_; }

    // Blue: the value can be derived from an input grid; a button in the box, and F2, open it.
    void SetBlue(bool blue);

    // Stands out as the one whose text was refused.
    void SetRefused(bool refused);

    // Stands out: the value is the result.
    void SetResult(bool result);

    // What the box is, for those who don't see it: "calculated".
    void SetState(const QString& state);

    // What the box says of its value when it is pointed at.
    void SetHint(const QString& hint);

    // Marked with a sign: its text is read as another number than it seems to say, as the note
    // tells. An empty note takes the mark away.
    void SetNote(const QString& note);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  signals:
    void GotFocus();
    void DblClick();
    void KeyDownWithCtrl();
    void MoveToNext(int step);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void Recolour();
    void Describe();
    void PasteFrom(QClipboard::Mode mode);
    void Insert(const QString& pasted);

    QAction* mark_;
    QAction* table_; // of a blue box
    QString state_;
    QString hint_;
    QString note_;
    int visibleCharacters_ = 12;
    bool grey_ = false;
    bool blue_ = false;
    bool refused_ = false;
    bool recolouring_ = false; // the change of the palette is our own
    bool focusedByMouse_ = false;
};

} // namespace quorvanta
