#include "core/floating_windows.h"

#include "core/platform.h"

namespace quorvanta {

void HideOutputs() {
    for (const auto window :
         {FloatingWindow::Summary, FloatingWindow::DistrGraph, FloatingWindow::Output})
        ThePlatform().Hide(window);
}

} // namespace quorvanta
