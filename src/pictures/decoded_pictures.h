// The decoded pictures in memory: the least recently used go first when they take more bytes than the limit.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>

#include "base/system_time.h"
#include "platform/image.h"

namespace kalmora {

// One state of a file.
struct FileVersion {
    std::string path;
    FileTime written;
    std::uint64_t size = 0;
    auto Tie() const { return std::tie(path, written.ticks, size); }
    friend bool operator<(const FileVersion& a, const FileVersion& b) { return a.Tie() < b.Tie(); }
    friend bool operator==(const FileVersion& a, const FileVersion& b) { return a.Tie() == b.Tie(); }
};

// One request for its picture.
struct PictureKey {
    FileVersion file;
    int width = 0;  // wanted
    int height = 0;
    images::Preview preview = images::Preview::IfEnough;
    auto Tie() const { return std::tie(file, width, height, preview); }
    friend bool operator<(const PictureKey& a, const PictureKey& b) { return a.Tie() < b.Tie(); }
};

struct CacheStatistics {
    std::size_t bytes = 0;
    std::size_t limit = 0;
    std::uint64_t hits = 0;
    std::uint64_t decodes = 0;
};

// Any thread; the lock is held for look-ups only.
class DecodedPictures {
public:
    // The picture from memory, or by `decode`, which gives an images::DecodedPicture and runs without the
    // lock. That a file holds no picture is remembered too. Who asks for a picture that is being decoded
    // waits for it.
    template <typename Decode>
    Image Get(const PictureKey& key, Decode decode) {
        std::shared_ptr<Running> running;
        if (std::optional<Image> known = FindOrJoin(key, running)) return *known;
        images::DecodedPicture decoded = decode();
        return Finish(key, running, std::move(decoded));
    }

    // Empty optional when it is not there.
    std::optional<Image> Find(const PictureKey& key);
    // Of all sizes of this file the smallest that is large enough for `wanted`, else the largest.
    Image FindNearest(const FileVersion& file, Size wanted);

    CacheStatistics Statistics() const;
    void SetLimit(std::size_t bytes);
    void Clear();

private:
    struct Entry {
        PictureKey key;
        Image image;
        std::size_t bytes = 0;
    };
    using Entries = std::list<Entry>;
    struct Running {
        bool isDone = false;  // guarded by the cache's mutex, as is the picture
        Image image;
    };

    std::optional<Image> FindOrJoin(const PictureKey& key, std::shared_ptr<Running>& running);
    Image Finish(const PictureKey& key, const std::shared_ptr<Running>& running,
                 images::DecodedPicture decoded);
    const Image& Use(Entries::iterator entry);  // mutex held
    void Shrink(std::size_t limit);             // mutex held

    mutable std::mutex mutex_;
    std::condition_variable decoded_;
    Entries entries_;                                // guarded by mutex_; the most recently used first
    std::map<PictureKey, Entries::iterator> byKey_;  // guarded by mutex_
    std::map<PictureKey, std::shared_ptr<Running>> running_;  // guarded by mutex_
    std::size_t bytes_ = 0;                                   // guarded by mutex_
    std::size_t limit_ = std::size_t{256} << 20;              // guarded by mutex_
    std::uint64_t hits_ = 0;                                  // guarded by mutex_
    std::uint64_t decodes_ = 0;                               // guarded by mutex_
};

}  // namespace kalmora
