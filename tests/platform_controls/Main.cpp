#include <gtest/gtest.h>

#include "platform/controls/EventGuard.h"

// The application of these tests is the guarded one, as the program's is.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    tallymar::GuardedApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
