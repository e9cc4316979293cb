// The tests of the toolkit's side of the seam share one Application on a display without a screen, as one
// process has one only.
#include <gtest/gtest.h>

#include <cstdio>

#include "platform/window.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const auto application = kalmora::Application::Create("Kalmora", kalmora::Application::Display::None);
    if (!application) {
        std::fprintf(stderr, "no application\n");
        return 1;
    }
    return RUN_ALL_TESTS();
}
