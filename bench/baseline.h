// What the jobs cost at the least: a program that reads one kind of photo and does nothing else. The measured
// code is held against these; nothing of the program's own is used in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// The date and the camera values of a photo whose Exif segment is the first.
struct Basics {
    char date[20];
    std::uint32_t iso, flash, exposureProgram;
    std::uint32_t exposureTime, shutter, aperture, brightness, exposureBias;  // numerators
    std::uint64_t thumbnailOffset;                                            // in the file; 0: none
    std::uint32_t thumbnailLength;
};

enum class Read { BasicsOnly, ThumbnailToo };

// Opens the file, reads its first 4 KiB (once more 64 KiB when what is wanted lies further), closes it. False
// when there is no date.
bool ReadBasics(const char* path, Read what, Basics& basics);

// Pixels of the embedded thumbnail, 0 when there is none: one read of 64 KiB and a decode, rows thrown away.
std::size_t DecodeThumbnail(const char* path);

// Pixels of the photo decoded at an eighth of its width and height, the fastest way that the library knows,
// rows thrown away.
std::size_t DecodeEighth(const char* path);

// Seconds of processor time that this thread has used; what else runs on the machine is not in it.
double ThreadSeconds();
// Seconds on the clock.
double WallSeconds();

std::vector<std::string> ReadList(const char* path);
double Median(std::vector<double> values);

// Does the job for each path on so many threads and gives the sum of the results.
std::size_t ForEach(const std::vector<std::string>& paths, int threads,
                    const std::function<std::size_t(const char* path)>& job);

}  // namespace bench
