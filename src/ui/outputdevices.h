// Where outputs go: the clipboard and printers.
#pragma once

#include "core/platform.h"

#include <QByteArray>
#include <QString>

class QPrinter;
class QWidget;

namespace quorvanta {

// The text as plain text, as RTF and as HTML.
void CopyTextToClipboard(const QString& plain, const QByteArray& rtf, const QString& html);

// Draws on the pages of the printer.
void PrintOn(QPrinter& printer, const Drawing& drawing);

// Shows the pages before they are printed; from there the user chooses a printer, or gives up.
void PrintWithPreview(QWidget* parent, const QString& title, OutputForm form,
                      const Drawing& drawing);

} // namespace quorvanta
