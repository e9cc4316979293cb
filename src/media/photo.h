// CPhoto: one file of the data folder as a thing on the calendar, whatever its kind: photo, movie, music,
// music list, text or shortcut.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/system_time.h"
#include "media/estimation.h"
#include "media/my_object.h"
#include "media/photo_metadata.h"
#include "media/png_text_file.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

// A still picture for a movie: the path of a picture file, or empty when there is none. Frame capture sets it
// at start, before other threads run; until then movies are not painted. May be slow.
extern std::function<std::string(const std::string& moviePath)> OnMovieFrame;
// Asks the hook.
std::string MovieFrame(const std::string& moviePath);

// Where GetDate found an object's date. Text: the head of a note; File: the file's times.
enum class DateSource { None, Exif, Png, Text, File };

// Cheap to make: only the kind and the extension are found at construction, from the path alone; all else is
// read from the file when it is first asked for, with one look for everything, and kept. Sizes and positions
// are logical pixels. One thread at a time.
class CPhoto : public MyObject {
public:
    enum class Measure { Later, Now };

    CPhoto() = default;
    // An absolute path. Any other leaves an empty object and is no error.
    explicit CPhoto(const std::string& filePath);
    CPhoto(const std::string& filePath, int x, int y, Measure measure);

    // ---- where it stands
    bool placed = false;             // it has a place in its view
    std::int32_t displayWidth = -1;  // on the screen; -1 unknown, 0 when the picture has no size
    std::int32_t displayHeight = -1;
    std::int32_t imageWidth = -1;   // of the upright picture, or of a movie's still; -1 until measured
    std::int32_t imageHeight = -1;  // (a text stands for 1024 by 768)
    std::int32_t layoutX = 0;       // pixels; for DrawInArea a fraction of 0 to 2000
    std::int32_t layoutY = 0;
    std::int32_t drawnX = 0;  // upper left corner of the last paint: HitTest works on it
    std::int32_t drawnY = 0;
    std::int32_t placementTag = -1;  // the view's cell or line for which it was placed

    // ---- what it is
    std::string path;  // empty when the path given was refused
    std::int32_t kind = kKindUnknown;
    std::string extension;                   // lower case, at most 8 bytes, empty when there is none
    SystemTime date;                         // filled by GetDate
    DateSource dateFrom = DateSource::None;  // filled by GetDate

    // ---- what the file says about itself
    bool commentRead = false;
    std::optional<std::string> comment;  // UTF-8
    bool estimationsRead = false;
    Estimations estimations;  // filled by GetEstimations
    CameraValues camera;      // filled by ReadExifValues

    // ---- MyObject
    bool HitTest(int x, int y) const override;  // all four edges of the last paint included
    void Draw(const DrawContext& context) override;
    int Move(int fromX, int fromY, int toX, int toY) override;

    // ---- size and painting. Nothing is painted while `visible` is 0, nor what cannot be read: a picture
    // then gets the display size 0 by 0. An image is painted from its file, a movie from its still with the
    // movie mark over it, anything else as a text card. Images only: reads the size and fits the display size
    // into ThumbnailMaxSize.
    void MeasureImage();
    void DrawScaledToWidth(const DrawContext& context, int width);
    void DrawScaledToHeight(const DrawContext& context, int height);
    void DrawFitted(const DrawContext& context, int boxWidth, int boxHeight);
    void DrawStretched(const DrawContext& context, int width, int height);
    void DrawInArea(const DrawContext& context, int areaWidth, int areaHeight);

    // ---- reading
    // The date of the object: of a text its head or else its file, of anything else its shooting date or else
    // its file. Fills `date` too. False, and no date, when the file is gone.
    bool GetDate(SystemTime& out);
    // The size of the upright picture from the file's head; of a text 1024 by 768. 0 by 0 for a picture that
    // cannot be read, -1 by -1 for what has no size. Asked first, it costs no look of its own.
    Size ImageSize();
    // The user's comment, or null. Stays the object's own.
    const std::string* GetComment();
    // Fills the camera values. All 0 for a file without them, and for one with more than 200 properties.
    void ReadExifValues();
    // True when the file holds a usable shooting date.
    bool ReadShotDate(SystemTime& out);
    // The bytes of the text that holds the estimations.
    std::optional<std::string> ReadUserComment();
    void ReadXpComment();  // fills `comment` from the Exif tag
    // The camera's make, UTF-8.
    std::optional<std::string> ReadMake();
    // The text chunks of a ".png" that is one; null for anything else.
    const PngTextFile* PngTexts();
    // What Exif says; of a file without any, the start values.
    const PhotoMetadata& Metadata();
    // Forgets all that was read, so that a file that has changed is read again.
    void ForgetFile();

    // ---- writing into the file at once, on the road of safe_rewrite. What the object says changes in any
    // case, also when the file could not be written; the result tells whether it was. A ".png" that is one
    // keeps everything in its text chunks, any other image in its Exif block; Unsupported for what is no
    // image. UTF-8; no text stands for an empty one.
    RewriteResult SetComment(std::optional<std::string> text);
    // Adds to the comment on a line of its own; no text does nothing.
    RewriteResult AppendComment(const std::optional<std::string>& text);
    RewriteResult SetShotDate(const SystemTime& shotDate);
    // One judgement more (estimation_writer.h).
    RewriteResult Estimate(EstimateType type);
    // Make and Model and their like.
    RewriteResult WriteTextTag(std::uint16_t tag, std::string_view text);

    // ---- rating and filters
    const Estimations& GetEstimations();
    std::int32_t GetEstimate(int type);  // by EstimateType: 1 like, 2 privacy, 3 good; 0 for any other
    // False, and `visible` 0, when GoodMode or PublicMode hides it; else true and `visible` as it was.
    bool IsVisibleUnderEstimate();
    // False, and `visible` 0, for a picture that SkipSmallImage leaves out: one below SizeOfSmallImage on
    // both sides. Else true.
    bool SkipIfSmall();

    // For many photos: fills what a judgement changes in the file and in the object. Called by EstimateAll.
    RewriteResult PlanEstimate(EstimateType type, FileChange& change);
    // The same for words that are added to the comment. Called by AppendCommentAll.
    RewriteResult PlanAppendComment(const std::string& text, FileChange& change);

private:
    RewriteResult WritePngText(std::string_view keyword, std::string_view bytes);
    bool ReadNoteDate(SystemTime& out) const;
    void EnsureImageSize(const std::string& picture);
    // The file to paint for an image or a movie, its size measured; empty, and display size 0, when there is
    // none.
    std::string PreparePicture();
    void PaintPicture(const DrawContext& context, const std::string& picture);
    void PaintCard(const DrawContext& context);
    bool IsPicture() const { return kind == kKindImage || kind == kKindMovie; }
    void FitLongerSide(int longerSide);

    struct FileFacts {
        std::optional<PhotoMetadata> exif;
        bool pngAsked = false;
        std::optional<PngTextFile> png;
    };
    FileFacts& Facts();
    std::unique_ptr<FileFacts> facts_;
};

// The same judgement about many photos, much faster than one by one. In their order.
std::vector<RewriteResult> EstimateAll(std::span<CPhoto> photos, EstimateType type);
// AppendComment for many photos; one text for each.
std::vector<RewriteResult> AppendCommentAll(std::span<CPhoto> photos, std::span<const std::string> texts);

}  // namespace kalmora
