#include "pictures/decoded_pictures.h"

#include <iterator>
#include <utility>

namespace kalmora {

namespace {

// What an entry takes beside its pixels; a remembered failure takes just this.
constexpr std::size_t kEntryBytes = 512;

}  // namespace

const Image& DecodedPictures::Use(Entries::iterator entry) {
    entries_.splice(entries_.begin(), entries_, entry);
    return entry->image;
}

std::optional<Image> DecodedPictures::Find(const PictureKey& key) {
    std::lock_guard lock(mutex_);
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return std::nullopt;
    ++hits_;
    return Use(found->second);
}

Image DecodedPictures::FindNearest(const FileVersion& file, Size wanted) {
    std::lock_guard lock(mutex_);
    auto best = byKey_.end();
    std::int64_t bestPixels = 0;
    bool bestCovers = false;
    for (auto it = byKey_.lower_bound(PictureKey{file, -1, -1, images::Preview::Never});
         it != byKey_.end() && it->first.file == file; ++it) {
        const Image& image = it->second->image;
        if (image.IsEmpty()) continue;
        const Size size = image.GetSize();
        const bool covers = !wanted.IsEmpty() && (size.width >= wanted.width || size.height >= wanted.height);
        const std::int64_t pixels = std::int64_t{size.width} * size.height;
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

std::optional<Image> DecodedPictures::FindOrJoin(const PictureKey& key, std::shared_ptr<Running>& running) {
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

Image DecodedPictures::Finish(const PictureKey& key, const std::shared_ptr<Running>& running,
                              images::DecodedPicture decoded) {
    const Image image = decoded.image;
    const std::size_t bytes = kEntryBytes + image.ByteCount();
    {
        std::lock_guard lock(mutex_);
        running->image = image;
        running->isDone = true;
        running_.erase(key);
        if (decoded.outcome != images::DecodeOutcome::Unreadable && bytes <= limit_) {
            Shrink(limit_ - bytes);
            entries_.push_front(Entry{key, image, bytes});
            byKey_[key] = entries_.begin();
            bytes_ += bytes;
        }
    }
    decoded_.notify_all();
    return image;
}

void DecodedPictures::Shrink(std::size_t limit) {
    while (bytes_ > limit) {
        bytes_ -= entries_.back().bytes;
        byKey_.erase(entries_.back().key);
        entries_.pop_back();
    }
}

CacheStatistics DecodedPictures::Statistics() const {
    std::lock_guard lock(mutex_);
    return CacheStatistics{bytes_, limit_, hits_, decodes_};
}

void DecodedPictures::SetLimit(std::size_t bytes) {
    std::lock_guard lock(mutex_);
    limit_ = bytes;
    Shrink(limit_);
}

void DecodedPictures::Clear() {
    std::lock_guard lock(mutex_);
    Shrink(0);
}

}  // namespace kalmora
