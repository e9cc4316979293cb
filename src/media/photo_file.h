// PhotoFile: one file of the data folder, of any kind (photo, movie, music, music list, text or
// shortcut): its properties, and what is written into it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/geometry.h"
#include "base/system_time.h"
#include "media/camera_values.h"
#include "media/estimation.h"
#include "media/photo_metadata.h"
#include "media/png_text_file.h"
#include "rewrite/safe_rewrite.h"
#include "store/extension_table.h"

namespace kalmora {

// Where GetDate found a file's date. Text: the head of a note; File: the file's times.
enum class DateSource { None, Exif, Png, Text, File };

// Cheap to make: only the kind and the extension are found at construction, from the path alone; all else is
// read from the file when it is first asked for, with one look for everything, and kept. One thread at a
// time.
class PhotoFile {
public:
    PhotoFile() = default;
    // An absolute path. Any other leaves an empty object and is no error.
    explicit PhotoFile(const std::string& filePath);

    // ---- what it is
    std::string path;  // empty when the path given was refused
    ObjectKind kind = ObjectKind::Unknown;
    std::string extension;                   // lower case, at most 8 bytes, empty when there is none
    SystemTime date;                         // filled by GetDate
    DateSource dateFrom = DateSource::None;  // filled by GetDate
    std::int32_t imageWidth = -1;            // pixels of the upright picture, or of a movie's still; -1 until
    std::int32_t imageHeight = -1;           // measured (a text counts as 1024 by 768)

    // ---- what the file says about itself
    bool commentRead = false;
    std::optional<std::string> comment;  // UTF-8
    bool estimationsRead = false;
    Estimations estimations;  // filled by GetEstimations
    CameraValues camera;      // filled by ReadExifValues

    // ---- reading
    // The date of the file: of a text its head or else its file, of anything else its shooting date or else
    // its file. Fills `date` too. False, and no date, when the file is gone.
    bool GetDate(SystemTime& out);
    // The size of the upright picture from the file's head; of a text 1024 by 768. 0 by 0 for a picture that
    // cannot be read, -1 by -1 for what has no size. Asked first, it costs no look of its own.
    Size ImageSize();
    // Measures the picture that represents the file (itself, or a movie's still) into imageWidth and
    // imageHeight, once. False when it has no size.
    bool MeasurePicture(const std::string& picture);
    // The user's comment, or null. Stays the object's own.
    const std::string* GetComment();
    // Fills the camera values. All 0 for a file without them, and for one with more than 200 properties.
    void ReadExifValues() { camera = Metadata().camera; }
    // True when the file holds a usable shooting date.
    bool ReadShotDate(SystemTime& out);
    // The bytes of the text that holds the estimations.
    std::optional<std::string> ReadUserComment();
    void ReadXpComment();  // fills `comment` from the Exif tag
    // The camera's make, UTF-8.
    std::optional<std::string> ReadMake() { return Metadata().make; }
    // The text chunks of a ".png" that is one; null for anything else.
    const PngTextFile* PngTexts();
    // What Exif says; of a file without any, the start values.
    const PhotoMetadata& Metadata();
    // Forgets all that was read, so that a file that has changed is read again.
    void ForgetFile();

    const Estimations& GetEstimations();
    std::int32_t GetEstimate(int type);  // by EstimateType: 1 like, 2 privacy, 3 good; 0 for any other
    // False when GoodMode or PublicMode hides it.
    bool IsShownUnderEstimate();

    // ---- writing into the file at once, with SafeRewrite. What the object says changes in any case, also
    // when the file could not be written; the result says whether it was. A ".png" that is one keeps
    // everything in its text chunks, any other image in its Exif block; Unsupported for what is no image.
    // UTF-8; no text means an empty one.
    RewriteResult SetComment(std::optional<std::string> text);
    // Adds to the comment on a line of its own; no text does nothing.
    RewriteResult AppendComment(const std::optional<std::string>& text);
    RewriteResult SetShotDate(const SystemTime& shotDate);
    // Adds one rating (estimation_writer.h).
    RewriteResult Estimate(EstimateType type);
    // Make and Model and their like.
    RewriteResult WriteTextTag(std::uint16_t tag, std::string_view text);

    // For many photos: fills what a rating changes in the file and in the object. Called by EstimateAll.
    RewriteResult PlanEstimate(EstimateType type, FileChange& change);
    // The same for words that are added to the comment. Called by AppendCommentAll.
    RewriteResult PlanAppendComment(const std::string& text, FileChange& change);

private:
    RewriteResult WritePngText(std::string_view keyword, std::string_view bytes);
    bool ReadNoteDate(SystemTime& out) const;

    struct FileFacts {
        std::optional<PhotoMetadata> exif;
        bool pngAsked = false;
        std::optional<PngTextFile> png;
    };
    FileFacts& Facts();
    std::unique_ptr<FileFacts> facts_;
};

// The same rating for many photos, much faster than one by one. In their order.
std::vector<RewriteResult> EstimateAll(std::span<PhotoFile> photos, EstimateType type);
// AppendComment for many photos; one text for each.
std::vector<RewriteResult> AppendCommentAll(std::span<PhotoFile> photos, std::span<const std::string> texts);

}  // namespace kalmora
