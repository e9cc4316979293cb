#include "index/index_batch.h"

#include <utility>

#include "platform/files.h"

namespace kalmora {

namespace {
constexpr std::size_t kMostFiles = 128;  // each is an open file until the flush
constexpr std::size_t kMostBytes = 16u << 20;
}  // namespace

void IndexBatch::Add(std::shared_ptr<const DayIndex> day) {
    if (!day || !day->dirty || day->indexPath.empty() || !files::IsFolder(day->folder)) return;
    // A day that changes again before it was written needs one writing.
    std::erase_if(waiting_, [&](const Waiting& one) { return one.day->indexPath == day->indexPath; });
    std::string content = day->MakeText();
    if (content.empty()) {
        allWritten_ = false;
        return;
    }
    bytes_ += content.size();
    waiting_.push_back({std::move(day), std::move(content)});
    if (waiting_.size() >= kMostFiles || bytes_ >= kMostBytes) WriteWaiting();
}

bool IndexBatch::Finish() {
    WriteWaiting();
    return std::exchange(allWritten_, true);
}

void IndexBatch::WriteWaiting() {
    std::vector<files::NewContent> contents;
    contents.reserve(waiting_.size());
    for (const Waiting& one : waiting_) contents.push_back({one.day->indexPath, one.content});
    const std::vector<files::FileResult> results = files::WriteWholeFiles(contents);
    for (std::size_t i = 0; i < waiting_.size(); ++i) {
        if (results[i] == files::FileResult::Done)
            waiting_[i].day->dirty = false;
        else
            allWritten_ = false;
    }
    waiting_.clear();
    bytes_ = 0;
}

}  // namespace kalmora
