// The engine's checks, in the locale of the process as the program's windows take it over: where
// that has a decimal comma, no number may change.
#include <clocale>
#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (std::setlocale(LC_ALL, "") == nullptr)
        std::fputs("The locale of the environment is not on this machine; checks run in \"C\".\n",
                   stderr);
    return RUN_ALL_TESTS();
}
