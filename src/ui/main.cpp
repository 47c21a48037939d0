#include "ui/application.h"
#include "ui/frmsplash.h"
#include "ui/program.h"

int main(int argc, char** argv) {
    quorvanta::Application application(argc, argv);
    quorvanta::Program program;
    quorvanta::frmSplash().exec();
    program.Window().show();
    return quorvanta::Application::exec();
}
