// A label that shows its accelerator and leaves the key to its window: in a window whose letters
// are those of menus too, a label's letter counts while the focus is near it.
#pragma once

#include <QKeySequence>
#include <QLabel>

class QKeyEvent;

namespace quorvanta {

class MnemonicLabel : public QLabel {
    Q_OBJECT

  public:
    // The control that gets the focus.
    MnemonicLabel(QWidget* control, QWidget* parent);

    // The text with the mark of its letter; who has it read to them hears it without.
    void setText(const QString& text);

    QWidget* Control() const { return control_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* control_;
};

// Gives the focus to the control of the visible label under this window whose letter the key is;
// where several have it, to the one after the focus. False if none has it.
bool FocusByMnemonic(const QWidget& window, const QKeyEvent& key);

// True if the key is the letter of a visible label under this window.
bool HasMnemonic(const QWidget& window, const QKeyEvent& key);

} // namespace quorvanta
