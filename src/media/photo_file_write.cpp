// The writing half of PhotoFile.
#include <array>

#include "base/log.h"
#include "media/date_text.h"
#include "media/estimation_writer.h"
#include "media/exif_writer.h"
#include "media/photo_file.h"
#include "media/user_comment.h"
#include "platform/clock.h"

namespace kalmora {

namespace {

std::string WithLineAdded(const std::string* before, const std::string& text) {
    if (!before) return text;
    const bool beginsLine = text.starts_with('\r') || text.starts_with('\n');
    return *before + (beginsLine ? "" : "\r\n") + text;
}

}  // namespace

RewriteResult PhotoFile::WritePngText(std::string_view keyword, std::string_view bytes) {
    facts_.reset();
    return SafeRewrite(path, [&](FileChange& change) {
        PngTextFile png;
        if (!png.Parse(path)) return RewriteResult::Unsupported;
        png.SetText(keyword, bytes);
        return png.PlanRewrite(change);
    });
}

RewriteResult PhotoFile::SetComment(std::optional<std::string> text) {
    comment = std::move(text);
    commentRead = true;
    const std::string words = comment.value_or("");
    facts_.reset();
    if (PngTexts()) return WritePngText(kPngComment, PngCommentBytes(words));
    if (kind != ObjectKind::Image) return RewriteResult::Unsupported;
    facts_.reset();
    return WriteExif(path, std::array{XpCommentEdit(words)});
}

RewriteResult PhotoFile::AppendComment(const std::optional<std::string>& text) {
    if (!text) return RewriteResult::Unchanged;
    return AppendCommentAll({this, 1}, {&*text, 1}).front();
}

RewriteResult PhotoFile::PlanAppendComment(const std::string& text, FileChange& change) {
    facts_.reset();
    commentRead = false;
    const std::string words = WithLineAdded(GetComment(), text);
    RewriteResult result = RewriteResult::Unsupported;
    if (const PngTextFile* png = PngTexts()) {
        PngTextFile changed = *png;
        changed.SetText(kPngComment, PngCommentBytes(words));
        result = changed.PlanRewrite(change);
    } else if (kind == ObjectKind::Image) {
        result = PlanExifChange(path, std::array{XpCommentEdit(words)}, change);
    }
    facts_.reset();
    comment = words;
    return result;
}

RewriteResult PhotoFile::SetShotDate(const SystemTime& shotDate) {
    facts_.reset();
    if (PngTexts()) return WritePngText(kPngCreationTime, StampText(shotDate));
    if (kind != ObjectKind::Image) return RewriteResult::Unsupported;
    facts_.reset();
    return WriteExif(path, DateEdits(shotDate));
}

RewriteResult PhotoFile::WriteTextTag(std::uint16_t tag, std::string_view text) {
    if (kind != ObjectKind::Image) return RewriteResult::Unsupported;
    facts_.reset();
    return WriteExif(path, std::array{TextTagEdit(tag, text)});
}

RewriteResult PhotoFile::PlanEstimate(EstimateType type, FileChange& change) {
    facts_.reset();
    const PngTextFile* png = PngTexts();
    const std::string text = png ? ReadUserComment().value_or("") : UserCommentWords(Metadata());
    Log("Estimate[%d]: %s", static_cast<int>(type), path.c_str());
    const Estimations before = GetEstimations();
    Log("Like = %d, Good = %d, Private = %d", before.like, before.good, before.privacy);
    const SystemTime now = LocalTime();
    const EstimateStep step = StepEstimate(text, before, type, {now.year, now.month, now.day});
    estimations = step.values;
    RewriteResult result = RewriteResult::Unsupported;
    if (png) {
        PngTextFile changed = *png;
        changed.SetText(kPngProperty, step.text);
        result = changed.PlanRewrite(change);
    } else if (kind == ObjectKind::Image) {
        result = PlanExifChange(path, std::array{UserCommentEdit(step.text)}, change);
    }
    facts_.reset();
    return result;
}

RewriteResult PhotoFile::Estimate(EstimateType type) { return EstimateAll({this, 1}, type).front(); }

std::vector<RewriteResult> EstimateAll(std::span<PhotoFile> photos, EstimateType type) {
    std::vector<std::string> paths;
    paths.reserve(photos.size());
    for (const PhotoFile& photo : photos) paths.push_back(photo.path);
    std::vector<bool> rated(photos.size());
    std::vector<RewriteResult> results = SafeRewriteAll(paths, [&](std::size_t index, FileChange& change) {
        rated[index] = true;
        return photos[index].PlanEstimate(type, change);
    });
    // What could not even be looked at is rated all the same, as the object sees it.
    for (std::size_t i = 0; i < photos.size(); ++i)
        if (FileChange unused; !rated[i]) photos[i].PlanEstimate(type, unused);
    return results;
}

std::vector<RewriteResult> AppendCommentAll(std::span<PhotoFile> photos, std::span<const std::string> texts) {
    std::vector<std::string> paths;
    paths.reserve(photos.size());
    for (const PhotoFile& photo : photos) paths.push_back(photo.path);
    std::vector<bool> added(photos.size());
    std::vector<RewriteResult> results = SafeRewriteAll(paths, [&](std::size_t index, FileChange& change) {
        added[index] = true;
        return photos[index].PlanAppendComment(texts[index], change);
    });
    // What could not even be looked at says so all the same, as the object sees it.
    for (std::size_t i = 0; i < photos.size(); ++i)
        if (FileChange unused; !added[i]) photos[i].PlanAppendComment(texts[i], unused);
    return results;
}

}  // namespace kalmora
