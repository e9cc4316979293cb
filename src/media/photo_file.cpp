#include "media/photo_file.h"

#include <algorithm>

#include "formats/orientation.h"
#include "media/date_text.h"
#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {

namespace {

// One more than elsewhere: meant, and held by PhotoTest.TakesALongerExtensionThanOtherRooms.
constexpr std::size_t kLongestPhotoExtension = kLongestExtension + 1;
constexpr std::int32_t kTextWidth = 1024, kTextHeight = 768;
// The next line as a buffer of 255 characters takes it: with its line feed, or cut; a cut line continues in
// the next.
std::string_view TakeLine(std::string_view& rest) {
    constexpr std::size_t kLongestLine = 255;
    const std::size_t feed = rest.find('\n');
    const std::size_t length =
        std::min({feed == std::string_view::npos ? rest.size() : feed + 1, kLongestLine, rest.size()});
    const std::string_view line = rest.substr(0, length);
    rest.remove_prefix(length);
    return line;
}

}  // namespace

PhotoFile::PhotoFile(const std::string& filePath) {
    if (!files::IsAbsolute(filePath)) return;
    path = filePath;
    kind = ClassifyFile(path);
    extension = GetExtension(path, kLongestPhotoExtension);
    if (kind == ObjectKind::Text) {
        imageWidth = kTextWidth;
        imageHeight = kTextHeight;
    }
}

PhotoFile::FileFacts& PhotoFile::Facts() {
    if (!facts_) facts_ = std::make_unique<FileFacts>();
    return *facts_;
}

const PhotoMetadata& PhotoFile::Metadata() {
    FileFacts& facts = Facts();
    if (!facts.exif) ReadPhotoMetadata(path, facts.exif.emplace());
    return *facts.exif;
}

const PngTextFile* PhotoFile::PngTexts() {
    if (extension != "png") return nullptr;
    FileFacts& facts = Facts();
    if (!facts.pngAsked) {
        facts.pngAsked = true;
        if (!facts.png.emplace().Parse(path)) facts.png.reset();
    }
    return facts.png ? &*facts.png : nullptr;
}

void PhotoFile::ForgetFile() {
    facts_.reset();
    commentRead = estimationsRead = false;
    comment.reset();
    if (kind != ObjectKind::Text) imageWidth = imageHeight = -1;
}

bool PhotoFile::ReadNoteDate(SystemTime& out) const {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::array<std::uint8_t, 520> buffer;  // two lines and a mark
    files::InputFile file;
    if (!file.Open(path)) return false;
    const std::size_t length = file.ReadAt(0, buffer);
    std::string_view rest(reinterpret_cast<const char*>(buffer.data()), length);
    if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
    std::string_view line = TakeLine(rest);
    if (text::StartsWithNoCase(line, "[Schedule]") || text::StartsWithNoCase(line, "[Diary]"))
        line = TakeLine(rest);
    return ParseNoteDate(line, out);
}

bool PhotoFile::GetDate(SystemTime& out) {
    date = {};
    if (kind == ObjectKind::Text ? ReadNoteDate(date) : ReadShotDate(date)) {
        dateFrom = kind == ObjectKind::Text ? DateSource::Text
                   : PngTexts()             ? DateSource::Png
                                            : DateSource::Exif;
    } else {
        const auto fileDate = GetFileDate(path);
        dateFrom = fileDate ? DateSource::File : DateSource::None;
        date = fileDate.value_or(SystemTime{});
    }
    out = date;
    return dateFrom != DateSource::None;
}

Size PhotoFile::ImageSize() {
    if (kind != ObjectKind::Image) return {imageWidth, imageHeight};
    if (!Facts().exif) ReadPhotoMetadata(path, Facts().exif.emplace(), StoredSize::Read);
    const PhotoMetadata& metadata = Metadata();
    if (metadata.storedSize.IsEmpty()) return Pictures().Measure(path);
    return SwapsSides(metadata.orientation) ? Size{metadata.storedSize.height, metadata.storedSize.width}
                                            : metadata.storedSize;
}

bool PhotoFile::MeasurePicture(const std::string& picture) {
    if (imageWidth < 0 || imageHeight < 0) {
        const Size size = Pictures().Measure(picture);
        imageWidth = size.width;
        imageHeight = size.height;
    }
    return imageWidth > 0 && imageHeight > 0;
}

bool PhotoFile::ReadShotDate(SystemTime& out) {
    if (const PngTextFile* png = PngTexts()) {
        const std::string* stamp = png->GetText(kPngCreationTime);
        return stamp && ParseStampDate(*stamp, out);
    }
    return ShotDateOf(Metadata(), out);
}

const std::string* PhotoFile::GetComment() {
    constexpr std::size_t kShortestPath = 5;
    if (!commentRead) {
        commentRead = true;
        comment.reset();
        if (path.size() >= kShortestPath) {
            if (const PngTextFile* png = PngTexts()) {
                if (const std::string* stored = png->GetText(kPngComment)) comment = PngCommentText(*stored);
            } else {
                ReadXpComment();
            }
        }
    }
    return comment ? &*comment : nullptr;
}

void PhotoFile::ReadXpComment() {
    commentRead = true;
    comment = Metadata().xpComment;
}

std::optional<std::string> PhotoFile::ReadUserComment() {
    if (const PngTextFile* png = PngTexts()) {
        const std::string* stored = png->GetText(kPngProperty);
        return stored ? std::optional(*stored) : std::nullopt;
    }
    return UserCommentText(Metadata());
}

const Estimations& PhotoFile::GetEstimations() {
    if (!estimationsRead) {
        estimationsRead = true;
        const auto stored = ReadUserComment();
        estimations = stored ? ParseEstimations(*stored) : Estimations{};
    }
    return estimations;
}

std::int32_t PhotoFile::GetEstimate(int type) {
    const Estimations& values = GetEstimations();
    switch (static_cast<EstimateType>(type)) {
        case EstimateType::Like:
            return values.like;
        case EstimateType::Public:
            return values.privacy;
        case EstimateType::Good:
            return values.good;
        default:
            return 0;
    }
}

bool PhotoFile::IsShownUnderEstimate() {
    const Settings& settings = State().settings;
    return !(settings.GoodMode == 1 && GetEstimations().good < 0) &&
           !(settings.PublicMode == 1 && GetEstimations().privacy < 0);
}

}  // namespace kalmora
