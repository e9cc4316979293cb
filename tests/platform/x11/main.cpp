// The tests of what only a real desktop shows: an X server and a window manager
// (tests/scenario/run_on_display).
#include <gtest/gtest.h>

#include <cstdio>

#include "platform/window.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const auto application = kalmora::Application::Create("Kalmora", kalmora::Application::Display::Desktop);
    if (!application) {
        std::fprintf(stderr, "no display\n");
        return 1;
    }
    return RUN_ALL_TESTS();
}
