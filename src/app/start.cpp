#include "app/start.h"

#include <cstdio>
#include <memory>

#include "app/app.h"
#include "app/environment.h"
#include "platform/window.h"

namespace kalmora {

namespace {

// Gives the exit code.
int Refuse(const Obstacle& obstacle) {
    std::fprintf(stderr, "kalmora: %s\n", obstacle.words.c_str());
    if (obstacle.kind == Obstacle::Kind::Option) return 1;
    // Who starts it from a menu does not see standard error.
    const auto application = Application::Create("Kalmora", Application::Display::Desktop);
    if (application) ShowMessage(nullptr, "Kalmora", obstacle.words, MessageButtons::Ok);
    return 1;
}

}  // namespace

int RunDesktop(const StartOptions& options) {
    const Obstacle obstacle = FindObstacle(options);
    if (obstacle.kind != Obstacle::Kind::None) return Refuse(obstacle);
    return App(options).Run();
}

}  // namespace kalmora
