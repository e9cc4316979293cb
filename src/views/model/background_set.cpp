#include "views/model/background_set.h"

#include <algorithm>

#include "base/random.h"

namespace kalmora {

void BackgroundSet::Clear() {
    std::lock_guard lock(mutex_);
    valid_ = false;
    images_.clear();
    music_.clear();
    imageCursor_ = musicCursor_ = 0;
}

void BackgroundSet::SetValid() {
    std::lock_guard lock(mutex_);
    valid_ = true;
}

void BackgroundSet::AddImage(const std::string& path) {
    std::lock_guard lock(mutex_);
    valid_ = true;
    images_.push_back(path);
    imageCursor_ = static_cast<std::size_t>(Random()) % images_.size();
}

void BackgroundSet::AddMusic(const std::string& path, bool cursorToFirst) {
    std::lock_guard lock(mutex_);
    valid_ = true;
    music_.push_back(path);
    musicCursor_ = cursorToFirst ? 0 : music_.size() - 1;
}

bool BackgroundSet::IsValid() const {
    std::lock_guard lock(mutex_);
    return valid_;
}

std::string BackgroundSet::CurrentImage() const {
    std::lock_guard lock(mutex_);
    return valid_ && imageCursor_ < images_.size() ? images_[imageCursor_] : std::string();
}

void BackgroundSet::PickRandomImage() {
    std::lock_guard lock(mutex_);
    if (!images_.empty()) imageCursor_ = static_cast<std::size_t>(Random()) % images_.size();
}

std::vector<std::string> BackgroundSet::Music() const {
    std::lock_guard lock(mutex_);
    return music_;
}

std::string BackgroundSet::CurrentMusic() const {
    std::lock_guard lock(mutex_);
    return musicCursor_ < music_.size() ? music_[musicCursor_] : std::string();
}

bool BackgroundSet::HasMusic(const std::string& path) const {
    std::lock_guard lock(mutex_);
    return std::find(music_.begin(), music_.end(), path) != music_.end();
}

void BackgroundSet::StepMusic(int step) {
    std::lock_guard lock(mutex_);
    if (!valid_ || music_.empty()) return;
    const std::size_t count = music_.size();
    musicCursor_ = step > 0 ? (musicCursor_ + 1) % count : (musicCursor_ + count - 1) % count;
}

void BackgroundSet::PickRandomMusic() {
    std::lock_guard lock(mutex_);
    if (!music_.empty()) musicCursor_ = static_cast<std::size_t>(Random()) % music_.size();
}

void BackgroundSet::PickOtherMusic() {
    std::lock_guard lock(mutex_);
    if (!valid_ || music_.empty()) return;
    for (int draw = 0; draw < 5; ++draw) {
        const std::size_t next = static_cast<std::size_t>(Random()) % music_.size();
        if (next == musicCursor_) continue;
        musicCursor_ = next;
        return;
    }
}

}  // namespace kalmora
