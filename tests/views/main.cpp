// The views draw and measure text, so their tests run on an application without a display.
#include <gmock/gmock.h>

#include "app/environment.h"
#include "platform/window.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const auto application = kalmora::Application::Create("Kalmora", kalmora::Application::Display::None);
    if (!application) return 1;
    kalmora::ConnectRooms();
    return RUN_ALL_TESTS();
}
