// The still pictures that represent movies.
#pragma once

#include <string>

namespace kalmora {

// Who takes a picture out of a movie: frame capture. Any thread.
class MovieStills {
public:
    virtual ~MovieStills() = default;
    // The path of a picture file; empty when there is none. May be slow.
    virtual std::string StillOf(const std::string& moviePath) = 0;
};

// Set at start, before other threads run; it must live as long as pictures are painted. Null, as without any
// call: no movie has a still. For the whole process, as the picture cache is: whatever paints a movie, in any
// view and on any worker, asks here.
void SetMovieStills(MovieStills* stills);
// Asks them.
std::string MovieStill(const std::string& moviePath);

}  // namespace kalmora
