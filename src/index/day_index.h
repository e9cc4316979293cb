// DayIndex: the records of one calendar day, and the file $calendar.cidx that keeps them in the day's folder.
//
// The file is a cache: it can always be rebuilt from the folder. docs/formats.md describes it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/stop_token.h"
#include "index/index_entry.h"

namespace kalmora {

inline constexpr char kIndexFileName[] = "$calendar.cidx";

// One thread works on a DayIndex at a time. A day that has been published by its month (MonthIndex::Day) is
// never changed any more and may be read by all.
class DayIndex {
public:
    DayIndex() = default;
    DayIndex(const DayIndex& other);
    DayIndex& operator=(const DayIndex& other);
    DayIndex(int dayYear, int dayMonth, int dayNumber) : year(dayYear), month(dayMonth), day(dayNumber) {}

    std::vector<EntryPointer> entries;    // in byte order of the path, each path once
    std::vector<IndexTimeKey> timeOrder;  // by date; keys whose path is no entry any more are passed over
    std::string folder;                   // the day's folder; empty when it did not exist
    std::string dataRoot;                 // the root to use; empty: CurrentDataRoot. Used up by a load.
    std::string indexPath;                // the index file
    int year = 0, month = 0, day = 0;
    // Memory differs from the file; cleared by whoever has written it, also in a published day.
    mutable std::atomic<bool> dirty = false;

    // Fills the record from the index file; where that is missing, unreadable or of another version, from the
    // folder, and writes the file. True also when the day has no folder, and when the file could not be
    // written: the records serve from memory then. False when stopped; what was read until then stays.
    bool Load(int year, int month, int day, const StopToken& stop = {});
    // The same, but leaves the writing (while `dirty` is set) to the caller: see index_batch.h.
    bool LoadUnwritten(int year, int month, int day, const StopToken& stop = {});

    // Reads the folder and its sub-folders: unknown files are read and added, changed ones are read again.
    // Ends the walk of a folder after its first sub-folder, as the .cpp says; linked folders are walked
    // too, each once, and end nothing. False when the folder cannot
    // be listed or when stopped; what was added until then stays.
    bool LoadFolder(const std::string& path, const StopToken& stop = {});

    // The file's entry, read when it is new or stale. Never null.
    EntryPointer Add(const std::string& path);
    // Null when there is none.
    EntryPointer Find(std::string_view path) const;

    // Writes the index file if the record is dirty and the day's folder stands. False when it could not be
    // written: the old file is whole then, and dirty stays set.
    bool Write();
    // The content of the index file: at most so many bytes, for which comments are cut, all at one length.
    // Empty when the records do not fit without any comment either.
    std::string MakeText(std::size_t longest) const;
    std::string MakeText() const;  // as many as the reader takes

    // Compares the records with the day's folder: LoadFolder, then the records of files that have gone are
    // dropped, then Write. A day without a folder is empty afterwards. Always true. The index file is not
    // read.
    bool Update(int year, int month, int day, const StopToken& stop = {});
    // The same, but leaves the writing to the caller. False when it was stopped: nothing is to be written
    // then.
    bool UpdateUnwritten(int year, int month, int day, const StopToken& stop = {});

private:
    struct FolderWalk {
        StopToken stop;
        std::vector<EntryPointer> added;
        std::vector<bool> seen;  // of the entries that stood before: their file stands
        int depth = 0;
        std::vector<std::pair<std::uint64_t, std::uint64_t>> links;  // folders that links have led to
        bool leavesOutGone = false;  // a name without a file behind it gets no record
    };
    void Clear();
    void SetFolder(const std::string& path);
    std::string FolderBelow(const std::string& root) const;
    bool Rebuild(const StopToken& stop);
    bool UpdateIndex(const StopToken& stop);
    enum class WalkEnd { Finished, Stopped, Unreadable };
    WalkEnd WalkFolder(const std::string& path, FolderWalk& walk);
    WalkEnd WalkLink(const std::string& path, FolderWalk& walk);
    void Meet(const std::string& path, FolderWalk& walk);
    void TakeIn(std::vector<EntryPointer>& added);
    bool DropGoneFiles(const std::vector<EntryPointer>& unseen, const StopToken& stop);
    void SortTimeOrder();
};

}  // namespace kalmora
