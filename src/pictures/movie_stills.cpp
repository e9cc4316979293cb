#include "pictures/movie_stills.h"

namespace kalmora {

namespace {
MovieStills* movieStills = nullptr;
}

void SetMovieStills(MovieStills* stills) { movieStills = stills; }

std::string MovieStill(const std::string& moviePath) {
    return movieStills ? movieStills->StillOf(moviePath) : std::string();
}

}  // namespace kalmora
