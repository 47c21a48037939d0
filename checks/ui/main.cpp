#include "support/temporary_folder.h"
#include "tour/hands.h"
#include "ui/application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Nobody's own files are seen or touched, nor those of checks that run at the same time.
    const quorvanta::checks::TemporaryFolder home;
    qputenv("HOME", QByteArray::fromStdString(home.Path("")));
    qunsetenv("XDG_CONFIG_HOME");
    quorvanta::hands::UseMemoryForDisplay();
    quorvanta::Application application(argc, argv);
    quorvanta::Application::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
