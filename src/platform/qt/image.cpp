#include "platform/image.h"

#include <cstdlib>
#include <optional>

#include "platform/files.h"
#include "platform/qt/decoding_gate.h"
#include "platform/qt/encode.h"
#include "platform/qt/image_cache.h"
#include "platform/qt/measure.h"
#include "platform/qt/picture_decoder.h"
#include "platform/qt/pixels.h"
#include "platform/qt/prefetch.h"

namespace kalmora {

namespace images {

namespace {

// Never destroyed: threads that load pictures may outlive main.
qt::ImageCache& Cache() {
    static auto* cache = new qt::ImageCache;
    return *cache;
}

qt::Prefetcher& Prefetcher() {
    static auto* prefetcher = [] {
        auto* made =
            new qt::Prefetcher([](const qt::ImageWish& wish) { Load(wish.path, wish.wanted, wish.preview); });
        // Where no Application's end has seen to it before.
        std::atexit([] { qt::EndDecoding(); });
        return made;
    }();
    return *prefetcher;
}

std::optional<qt::ImageKey> KeyOf(const std::string& path, Size wanted, Preview preview) {
    const std::optional<files::FileStatus> status = files::GetStatus(path);
    if (!status || !status->isRegular) return std::nullopt;
    if (wanted.IsEmpty()) wanted = Size{};
    return qt::ImageKey{qt::FileVersion{path, status->written, status->size}, wanted.width, wanted.height,
                        preview};
}

}  // namespace

Image Load(const std::string& path, Size wanted, Preview preview) {
    const std::optional<qt::ImageKey> key = KeyOf(path, wanted, preview);
    if (!key) return Image();
    return Cache().Get(*key, [&] {
        qt::DecodedPicture decoded = qt::DecodePictureFile(path, wanted, preview, qt::ThePreviewReader());
        return qt::ImageCache::Decoded{decoded.image, decoded.outcome != qt::DecodeOutcome::Unreadable};
    });
}

Image LoadCached(const std::string& path, Size wanted, bool nearest, Preview preview) {
    const std::optional<qt::ImageKey> key = KeyOf(path, wanted, preview);
    if (!key) return Image();
    const Image exact = Cache().Find(*key).value_or(Image());
    return exact.IsEmpty() && nearest ? Cache().FindNearest(key->file, wanted) : exact;
}

void Prefetch(const std::string& path, Size wanted, Preview preview) {
    Prefetcher().Add(qt::ImageWish{path, wanted, preview});
}

void CancelPrefetch() { Prefetcher().Cancel(); }

void WaitForPrefetch() { Prefetcher().Wait(); }

CacheStatistics GetCacheStatistics() { return Cache().Statistics(); }

void SetCacheLimit(std::size_t bytes) { Cache().SetLimit(bytes); }

void ClearCache() { Cache().Clear(); }

bool SavePng(const Image& image, const std::string& path) {
    return !image.IsEmpty() && qt::WritePng(image.Get()->Get(), path);
}

bool SaveJpeg(const Image& image, const std::string& path, int quality) {
    return !image.IsEmpty() && qt::WriteJpeg(image.Get()->Get(), path, quality);
}

}  // namespace images

bool qt::EndDecoding() {
    // As long as a user hardly notices.
    constexpr int kPatienceMs = 500;
    images::CancelPrefetch();
    return DecodingGate::Instance().Close(kPatienceMs);
}

}  // namespace kalmora
