#include "tour/hands.h"
#include "ui/application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    quorvanta::hands::UseMemoryForDisplay();
    quorvanta::Application application(argc, argv);
    quorvanta::Application::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
