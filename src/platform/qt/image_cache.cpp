#include "platform/qt/image_cache.h"

#include <iterator>
#include <utility>

#include "platform/qt/decode_limits.h"
#include "platform/qt/pixels.h"

namespace kalmora::qt {

namespace {

// What an entry takes beside its pixels; a remembered failure takes just this.
constexpr std::size_t kEntryBytes = 512;

}  // namespace

const Image& ImageCache::Use(Entries::iterator entry) {
    entries_.splice(entries_.begin(), entries_, entry);
    return entry->image;
}

std::optional<Image> ImageCache::Find(const ImageKey& key) {
    std::lock_guard lock(mutex_);
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return std::nullopt;
    ++hits_;
    return Use(found->second);
}

Image ImageCache::FindNearest(const FileVersion& file, Size wanted) {
    std::lock_guard lock(mutex_);
    auto best = byKey_.end();
    std::int64_t bestPixels = 0;
    bool bestCovers = false;
    for (auto it = byKey_.lower_bound(ImageKey{file, -1, -1, images::Preview::Never});
         it != byKey_.end() && it->first.file == file; ++it) {
        const Image& image = it->second->image;
        if (image.IsEmpty()) continue;
        const Size size = image.GetSize();
        const bool covers = !wanted.IsEmpty() && (size.width >= wanted.width || size.height >= wanted.height);
        const std::int64_t pixels = PixelCount(size);
        const bool isBetter = best == byKey_.end() || (covers != bestCovers ? covers
                                                       : covers             ? pixels < bestPixels
                                                                            : pixels > bestPixels);
        if (!isBetter) continue;
        best = it;
        bestPixels = pixels;
        bestCovers = covers;
    }
    if (best == byKey_.end()) return Image();
    ++hits_;
    return Use(best->second);
}

std::optional<Image> ImageCache::FindOrJoin(const ImageKey& key, std::shared_ptr<Running>& running) {
    std::unique_lock lock(mutex_);
    if (const auto found = byKey_.find(key); found != byKey_.end()) {
        ++hits_;
        return Use(found->second);
    }
    if (const auto joined = running_.find(key); joined != running_.end()) {
        const std::shared_ptr<Running> other = joined->second;
        decoded_.wait(lock, [&] { return other->isDone; });
        ++hits_;
        return other->image;
    }
    running = std::make_shared<Running>();
    running_.emplace(key, running);
    ++decodes_;
    return std::nullopt;
}

Image ImageCache::Finish(const ImageKey& key, const std::shared_ptr<Running>& running, Decoded decoded) {
    const Image image = decoded.image;
    const std::size_t bytes =
        kEntryBytes + (image.IsEmpty() ? 0 : static_cast<std::size_t>(image.Get()->Get().sizeInBytes()));
    {
        std::lock_guard lock(mutex_);
        running->image = image;
        running->isDone = true;
        running_.erase(key);
        if (decoded.keep && bytes <= limit_) {
            Shrink(limit_ - bytes);
            entries_.push_front(Entry{key, image, bytes});
            byKey_[key] = entries_.begin();
            bytes_ += bytes;
        }
    }
    decoded_.notify_all();
    return image;
}

void ImageCache::Shrink(std::size_t limit) {
    while (bytes_ > limit) {
        bytes_ -= entries_.back().bytes;
        byKey_.erase(entries_.back().key);
        entries_.pop_back();
    }
}

images::CacheStatistics ImageCache::Statistics() const {
    std::lock_guard lock(mutex_);
    return images::CacheStatistics{bytes_, limit_, hits_, decodes_};
}

void ImageCache::SetLimit(std::size_t bytes) {
    std::lock_guard lock(mutex_);
    limit_ = bytes;
    Shrink(limit_);
}

void ImageCache::Clear() {
    std::lock_guard lock(mutex_);
    Shrink(0);
}

}  // namespace kalmora::qt
