// Colours that stay legible on light and on dark paper.
#pragma once

#include "core/types.h"

#include <QColor>

namespace quorvanta {

// True for a background that light texts stand on.
bool IsDark(const QColor& background);

// The contrast of two colours, 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
f64 Contrast(const QColor& a, const QColor& b);

// The colour of that number, as a pen has it (output/surface.h). On dark paper the darker ones are
// made lighter until they can be told from it; number 0 is the ink itself.
QColor TableColor(i16 number, const QColor& ink, const QColor& paper);

} // namespace quorvanta
