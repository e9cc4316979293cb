// Decoded pictures in memory: loaded at the size in which they are drawn, kept up to a limit, fetched ahead.
//
// Pictures are upright, sizes are those of the upright picture. Any thread may call anything; the lock is
// never held while a file is read or decoded.
#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>

#include "pictures/decoded_pictures.h"
#include "pictures/prefetch.h"
#include "platform/image.h"

namespace kalmora {

// The state that the file is in now; empty when it is not there or no regular file.
std::optional<FileVersion> VersionOf(const std::string& path);

class PictureCache {
public:
    enum class Exactness {
        Exact,    // decoded for the very size that is wanted
        Nearest,  // else the best of any size
    };

    PictureCache();

    // What reads orientations and embedded thumbnails; null for none. It must outlive the cache. What was
    // decoded before stays as it is. Not handed over in the constructor, as the reader belongs to a higher
    // room and the one cache of the process is made on first use.
    void UsePreviews(const images::PreviewReader* reader) { reader_ = reader; }

    // The upright size in pixels from the file's head, nothing decoded. 0 by 0 when it is no readable
    // picture.
    Size Measure(const std::string& path) const;

    // The picture as images::Decode gives it. Answers from memory when the file (path, last-write time, size)
    // was decoded for the same size before; who asks for a picture that is being decoded waits for it.
    Image Load(const std::string& path, Size wanted, images::Preview preview = images::Preview::IfEnough);

    // From memory only; never touches more than the file's time stamp, never decodes. Empty when it is not
    // there.
    Image LoadCached(const std::string& path, Size wanted, Exactness exactness,
                     images::Preview preview = images::Preview::IfEnough);

    // Decodes into memory on threads of its own, soon; a repeated request counts once.
    void Prefetch(const std::string& path, Size wanted, images::Preview preview = images::Preview::IfEnough);
    // Forgets the requests that have not begun.
    void CancelPrefetch() { prefetcher_.Cancel(); }
    // Blocks until no request is left; for `shot` and for tests.
    void WaitForPrefetch() { prefetcher_.Wait(); }

    CacheStatistics Statistics() const { return pictures_.Statistics(); }
    void SetLimit(std::size_t bytes) { pictures_.SetLimit(bytes); }  // 256 MB at the start
    void Clear() { pictures_.Clear(); }

private:
    std::atomic<const images::PreviewReader*> reader_ = nullptr;
    DecodedPictures pictures_;
    Prefetcher prefetcher_;  // last: its threads use the rest
};

// The one of the process, which all workers share. It is never destroyed, since they may outlive main.
PictureCache& Pictures();

}  // namespace kalmora
