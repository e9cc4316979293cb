#include "pictures/picture_cache.h"

#include "pictures/measure_picture.h"
#include "platform/files.h"

namespace kalmora {

using images::Preview;

namespace {

std::optional<PictureKey> KeyOf(const std::string& path, Size wanted, Preview preview) {
    const std::optional<FileVersion> file = VersionOf(path);
    if (!file) return std::nullopt;
    if (wanted.IsEmpty()) wanted = Size{};
    return PictureKey{*file, wanted.width, wanted.height, preview};
}

}  // namespace

std::optional<FileVersion> VersionOf(const std::string& path) {
    const std::optional<files::FileStatus> status = files::GetStatus(path);
    if (!status || !status->isRegular) return std::nullopt;
    return FileVersion{path, status->written, status->size};
}

PictureCache::PictureCache()
    : prefetcher_(
          [this](const PictureRequest& request) { Load(request.path, request.wanted, request.preview); }) {}

Size PictureCache::Measure(const std::string& path) const { return MeasurePicture(path, reader_); }

Image PictureCache::Load(const std::string& path, Size wanted, Preview preview) {
    const std::optional<PictureKey> key = KeyOf(path, wanted, preview);
    if (!key) return Image();
    return pictures_.Get(*key, [&] { return images::Decode(path, wanted, preview, reader_); });
}

Image PictureCache::LoadCached(const std::string& path, Size wanted, Exactness exactness, Preview preview) {
    const std::optional<PictureKey> key = KeyOf(path, wanted, preview);
    if (!key) return Image();
    const Image exact = pictures_.Find(*key).value_or(Image());
    return exact.IsEmpty() && exactness == Exactness::Nearest ? pictures_.FindNearest(key->file, wanted)
                                                              : exact;
}

void PictureCache::Prefetch(const std::string& path, Size wanted, Preview preview) {
    prefetcher_.Add(PictureRequest{path, wanted, preview});
}

PictureCache& Pictures() {
    static auto* const pictures = new PictureCache;
    return *pictures;
}

}  // namespace kalmora
