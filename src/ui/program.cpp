#include "ui/program.h"

#include "core/analysis.h"
#include "core/menus.h"

namespace quorvanta {

Program::Program() {
    Main();
    UpdateMenus();
}

} // namespace quorvanta
