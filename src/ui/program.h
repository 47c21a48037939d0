// The windows of the program on their platform, started.
#pragma once

#include "ui/frmmain.h"
#include "ui/qtplatform.h"

namespace quorvanta {

class Program {
  public:
    // The engine as it starts, and the main window, not yet shown.
    Program();

    frmMain& Window() { return window_; }

  private:
    frmMain window_;
    QtPlatform platform_{window_};
};

} // namespace quorvanta
