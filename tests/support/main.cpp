// The main function of every test program. Death tests run in a fresh process, so that a test which has
// started threads or a window system before does not disturb them.
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    return RUN_ALL_TESTS();
}
