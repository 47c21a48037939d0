// A page of the help: text in the colours of the palette, with links, history and printing.
#pragma once

#include <QTextBrowser>

class QPrinter;

namespace quorvanta {

class HelpLibrary;

class HelpPage : public QTextBrowser {
    Q_OBJECT

  public:
    HelpPage(HelpLibrary& library, QWidget* parent);

    // Goes to the next place of a text after the selection, or the one before it, round the end of
    // the page; false if the page doesn't have it.
    bool FindText(const QString& text, bool backward);

    // Prints the page black on white, whatever the colours of the screen.
    void PrintOn(QPrinter& printer) const;

    QVariant loadResource(int type, const QUrl& name) override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void Restyle();

    HelpLibrary& library_;
};

} // namespace quorvanta
