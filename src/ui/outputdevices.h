// Where outputs go: the clipboard, printers and bitmaps.
#pragma once

#include "core/platform.h"

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>

class QPrinter;
class QWidget;

namespace quorvanta {

// The text as plain text and as RTF.
void CopyTextToClipboard(const QString& plain, const QByteArray& rtf);

// The drawing on white paper of that size, in the resolution of print.
QImage PictureOf(const Drawing& drawing, QSizeF inches);

// The bytes of a bitmap file of it.
QByteArray BitmapOf(const Drawing& drawing, QSizeF inches);

// Draws on the pages of the printer.
void PrintOn(QPrinter& printer, const Drawing& drawing);

// Shows the pages before they are printed; from there the user chooses a printer, or gives up.
void PrintWithPreview(QWidget* parent, const QString& title, OutputForm form,
                      const Drawing& drawing);

} // namespace quorvanta
