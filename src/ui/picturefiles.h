// Pictures as images and as the bytes of files.
#pragma once

#include "core/platform.h"

#include <QByteArray>
#include <QImage>
#include <QSizeF>

namespace quorvanta {

// The drawing on white paper of that size, in the resolution of print.
QImage PictureOf(const Drawing& drawing, QSizeF inches);

// The bytes of a file of it; empty if they can't be made.
//
// A bitmap is the image and nothing else. The others name the program and carry the notes: PNG as
// its texts Title, Description and Software, SVG as the elements title and desc; on the page of a
// PDF the statement stands below the picture, and its metadata have title, statement and program.
// The texts of SVG and PDF are texts, which can be searched.
QByteArray PictureFileOf(PictureFormat format, const Drawing& drawing, QSizeF inches,
                         const PictureNotes& notes);

} // namespace quorvanta
