// The outside program that turns a JPEG without loss:
//
//     <tool> -copy all [-optimize] [-progressive] [-perfect] -rotate <degrees> <picture> <result>
//
// It reads the picture where it is and writes its result into the Temp folder, under scratch names that
// begin with "$" and are gone when a call returns. The caller holds the Temp folder's lock; one call at a
// time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kalmora {

class JpegTurner {
public:
    struct Options {
        bool optimize = false;     // the shortest code tables for these very data
        bool progressive = false;  // in many scans, as the original
        bool perfect = false;      // fails where an edge would not turn along
    };
    enum class Outcome {
        Turned,
        Warned,  // it made something, and something about the original was not as it should be
        Failed   // not started, not content, or nothing made
    };
    struct Result {
        Outcome outcome = Outcome::Failed;
        std::string jpeg;
    };

    // Degrees clockwise: 90, 180 or 270.
    JpegTurner(std::string tool, std::string scratchFolder, int degrees)
        : tool_(std::move(tool)), scratchFolder_(std::move(scratchFolder)), degrees_(degrees) {}

    int Degrees() const { return degrees_; }
    bool SwapsSides() const { return degrees_ % 180 != 0; }

    // Waits for the tool, as long as that takes. A failure goes to the log.
    Result TurnFile(const std::string& path, const Options& options) const;
    // A small picture, its edges too: without loss where that can be and the result takes at most `most`
    // bytes, otherwise encoded again. Empty when neither can be.
    std::string TurnSmall(std::string_view jpeg, std::size_t most) const;

private:
    std::string tool_, scratchFolder_;
    int degrees_;
};

}  // namespace kalmora
