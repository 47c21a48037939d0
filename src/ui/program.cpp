#include "ui/program.h"

#include "core/analysis.h"
#include "core/setup.h"

namespace quorvanta {

Program::Program() {
    Main();
    UpdateMenus();
}

} // namespace quorvanta
