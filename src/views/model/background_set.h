// BackgroundSet: the background pictures and the music of the period in view.
#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace kalmora {

// Filled by the loaders, read by painting and by the music commands. Any thread; own mutex.
class BackgroundSet {
public:
    void Clear();     // forgets both lists; the set is valid again only when something is added
    void SetValid();  // a period has been scanned, even when it had nothing

    void AddImage(const std::string& path);  // and draws ImageCursor again
    void AddMusic(const std::string& path, bool cursorToFirst);

    bool IsValid() const;
    std::string CurrentImage() const;  // empty when there is none
    void PickRandomImage();

    std::vector<std::string> Music() const;
    std::string CurrentMusic() const;  // empty when there is none
    bool HasMusic(const std::string& path) const;
    void StepMusic(int step);  // +1 or -1, wrapping
    void PickRandomMusic();
    // Another piece than the current one, by at most five draws; after five equal draws the cursor stays.
    void PickOtherMusic();

private:
    mutable std::mutex mutex_;
    bool valid_ = false;
    std::vector<std::string> images_;
    std::size_t imageCursor_ = 0;
    std::vector<std::string> music_;
    std::size_t musicCursor_ = 0;
};

}  // namespace kalmora
