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

namespace kalmora::qt {

// One state of a file.
struct FileVersion {
    std::string path;
    FileTime written;
    std::uint64_t size = 0;
    auto Tie() const { return std::tie(path, written.ticks, size); }
    friend bool operator<(const FileVersion& a, const FileVersion& b) { return a.Tie() < b.Tie(); }
    friend bool operator==(const FileVersion& a, const FileVersion& b) { return a.Tie() == b.Tie(); }
};

// One wish for its picture.
struct ImageKey {
    FileVersion file;
    int width = 0;  // wanted
    int height = 0;
    images::Preview preview = images::Preview::IfEnough;
    auto Tie() const { return std::tie(file, width, height, preview); }
    friend bool operator<(const ImageKey& a, const ImageKey& b) { return a.Tie() < b.Tie(); }
};

// Any thread; the lock is held for look-ups only.
class ImageCache {
public:
    // What a decode gives: a picture, or an empty one that is remembered too (`keep`) or not.
    struct Decoded {
        Image image;
        bool keep = true;
    };

    // The picture from the cache, or by `decode`, which runs without the lock. Who asks for a picture that is
    // being decoded waits for it.
    template <typename Decode>
    Image Get(const ImageKey& key, Decode decode) {
        std::shared_ptr<Running> running;
        if (std::optional<Image> known = FindOrJoin(key, running)) return *known;
        Decoded decoded = decode();
        return Finish(key, running, std::move(decoded));
    }

    // Empty optional when it is not there.
    std::optional<Image> Find(const ImageKey& key);
    // Of all sizes of this file the smallest that is large enough for `wanted`, else the largest.
    Image FindNearest(const FileVersion& file, Size wanted);

    images::CacheStatistics Statistics() const;
    void SetLimit(std::size_t bytes);
    void Clear();

private:
    struct Entry {
        ImageKey key;
        Image image;
        std::size_t bytes = 0;
    };
    using Entries = std::list<Entry>;
    struct Running {
        bool isDone = false;  // guarded by the cache's mutex, as is the picture
        Image image;
    };

    std::optional<Image> FindOrJoin(const ImageKey& key, std::shared_ptr<Running>& running);
    Image Finish(const ImageKey& key, const std::shared_ptr<Running>& running, Decoded decoded);
    const Image& Use(Entries::iterator entry);  // mutex held
    void Shrink(std::size_t limit);             // mutex held

    mutable std::mutex mutex_;
    std::condition_variable decoded_;
    Entries entries_;                                       // guarded by mutex_; the most recently used first
    std::map<ImageKey, Entries::iterator> byKey_;           // guarded by mutex_
    std::map<ImageKey, std::shared_ptr<Running>> running_;  // guarded by mutex_
    std::size_t bytes_ = 0;                                 // guarded by mutex_
    std::size_t limit_ = std::size_t{256} << 20;            // guarded by mutex_
    std::uint64_t hits_ = 0;                                // guarded by mutex_
    std::uint64_t decodes_ = 0;                             // guarded by mutex_
};

}  // namespace kalmora::qt
