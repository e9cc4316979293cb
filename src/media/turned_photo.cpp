#include "media/turned_photo.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "base/log.h"
#include "media/exif_reader.h"
#include "media/jpeg_picture.h"
#include "media/jpeg_segments.h"
#include "media/jpeg_turner.h"
#include "media/multi_picture_index.h"
#include "media/places_behind.h"
#include "media/turned_exif.h"
#include "media/turned_jpeg.h"
#include "platform/jpeg.h"

namespace kalmora {

namespace {

constexpr std::uint64_t kMostPictureBytes = 1u << 30;
constexpr int kWholeTurn = 360;

bool IsMirrored(int orientation) {
    return orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
}

// Its picture turned, and what the tool's warning was about, if it gave one.
struct TurnedPicture {
    std::string data;    // see DataOf
    std::string strays;  // in front of the original's end marker
};

// The bytes that a decoder passes over in front of the end marker. False when the data are not whole.
bool FindStrays(ByteWindow& file, const JpegPicture& picture, std::string& strays) {
    constexpr std::string_view kEnd = "\xFF\xD9";
    constexpr std::size_t kReadAhead = 8;  // bytes that a decoder may have taken before it was content
    const auto original = file.Copy(0, picture.end, kMostPictureBytes);
    if (!original) return false;
    const jpeg::Examination examination = jpeg::Examine(*original);
    if (examination.health == jpeg::Health::Damaged) return false;
    std::string_view rest = std::string_view(*original).substr(0, original->size() - kEnd.size());
    while (rest.ends_with('\xFF')) rest.remove_suffix(1);
    if (examination.strayBeforeEnd == 0 || examination.strayBeforeEnd + kReadAhead > rest.size()) return true;
    // The shortest beginning that is whole.
    std::size_t end = rest.size() - static_cast<std::size_t>(examination.strayBeforeEnd);
    for (std::size_t tooShort = end - kReadAhead; tooShort < end;) {
        const std::size_t middle = (tooShort + end) / 2;
        const std::string beginning = std::string(rest.substr(0, middle)).append(kEnd);
        if (jpeg::Examine(beginning).health == jpeg::Health::Damaged)
            tooShort = middle + 1;
        else
            end = middle;
    }
    strays = rest.substr(end);
    return true;
}

TurnPlan TurnData(ByteWindow& file, const std::string& path, const JpegPicture& picture, Size stored,
                  const JpegTurner& turner, TurnedPicture& turned) {
    const bool isFollowed = file.Has(picture.end, 1);
    const bool isProgressive = std::any_of(picture.parts.begin(), picture.parts.end(),
                                           [](const JpegPart& part) { return part.IsProgressive(); });
    JpegTurner::Result result =
        turner.TurnFile(path, {.optimize = isFollowed, .progressive = isFollowed && isProgressive});
    if (result.outcome == JpegTurner::Outcome::Failed) return TurnPlan::ToolFailed;
    if (result.outcome == JpegTurner::Outcome::Warned && !FindStrays(file, picture, turned.strays))
        return TurnPlan::Damaged;
    turned.data = DataOf(result.jpeg, turner.SwapsSides() ? Size{stored.height, stored.width} : stored);
    return turned.data.empty() ? TurnPlan::ToolFailed : TurnPlan::Ready;
}

// The segment that holds a place in the file.
const JpegPart* PartAt(const JpegPicture& picture, std::uint64_t place) {
    const auto found = std::find_if(
        picture.parts.begin(), picture.parts.end(),
        [place](const JpegPart& part) { return place >= part.offset && place < part.offset + part.length; });
    return found == picture.parts.end() ? nullptr : &*found;
}

}  // namespace

TurnPlan PlanTurn(const std::string& path, int degrees, const std::string& tool,
                  const std::string& scratchFolder, FileChange& change) {
    ByteWindow file;
    if (!file.Open(path)) return TurnPlan::NotJpeg;
    const auto stored = ReadJpegFrameSize(file);
    if (!stored || stored->IsEmpty()) return TurnPlan::NotJpeg;
    const auto picture = FindJpegPicture(file);
    if (!picture || picture->end > kMostPictureBytes) return TurnPlan::Damaged;
    exif::Block block;
    const bool hasBlock = exif::ReadBlock(file, block);
    const int orientation = hasBlock ? exif::FirstNumber(file, block, exif::Tag::Orientation) : 0;
    const JpegTurner turner(tool, scratchFolder, IsMirrored(orientation) ? kWholeTurn - degrees : degrees);

    TurnedPicture turned;
    if (const TurnPlan result = TurnData(file, path, *picture, *stored, turner, turned);
        result != TurnPlan::Ready)
        return result;
    std::string head = HeadOf(file, *picture);
    if (head.empty()) return TurnPlan::Damaged;
    const JpegPart* const exifPart = hasBlock ? PartAt(*picture, block.start) : nullptr;
    if (exifPart) TurnExif(head, block, exifPart->offset + exifPart->length, *stored, turner);

    change.oldLength = picture->end;
    change.content = WholeJpeg(head, turned.data, turned.strays);
    if (!file.Has(picture->end, 1)) {
        MovePlacesBehind(file, *picture, change.content);
        return TurnPlan::Ready;
    }
    FillUp(change.content, static_cast<std::size_t>(picture->end));
    if (change.content.size() == picture->end) return TurnPlan::Ready;
    Log("longer by %d bytes when turned, with something behind it: %s",
        static_cast<int>(change.content.size() - picture->end), path.c_str());
    const bool mayMove = MayMoveBehind(file, *picture, exifPart ? &block : nullptr) &&
                         MovePlacesBehind(file, *picture, change.content);
    return mayMove ? TurnPlan::Ready : TurnPlan::WouldMove;
}

}  // namespace kalmora
