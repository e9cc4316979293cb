// ImportBatch: files on their way into their days, many at once.
//
// Making a file safe on the disk costs milliseconds; a batch waits once for all of its copies. Each copy
// has a scratch name until it is whole and flushed, then it gets its name, and nothing is replaced.
// A source that is to go stays until its copy has been read back and compared; inside one volume it gets
// another name instead and is never copied.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "import/import_arrivals.h"
#include "import/import_journal.h"
#include "import/import_names.h"
#include "platform/transfer.h"

namespace kalmora {

class BatchListener {
public:
    virtual ~BatchListener() = default;
    // Gets the files of a batch, in the order in which they came, once all is done with them that can be. May
    // add files to the batch.
    virtual void OnFinished(std::span<ImportedFile> files) = 0;
};

// One thread.
class ImportBatch {
public:
    enum class Source { Stays, Goes };
    // The listener outlives the batch.
    ImportBatch(TargetNames names, BatchListener& listener) : names_(std::move(names)), listener_(listener) {}

    struct Companion {
        ImportedFile file;
        std::size_t stemLength = 0;  // see TargetNames::Companion
    };
    // Takes a file (`source` and whatever the caller wants to keep with it) into the folder of its day, and
    // before it what goes with it: when a move is cut off, the photo that gives the others' day is still
    // there. Finishes the batch when it has become large.
    void Add(ImportedFile file, const std::string& dayFolder, Source source,
             std::vector<Companion> companions = {});
    // A file of which nothing is left to be done but the report.
    void AddFinished(ImportedFile file);
    void Finish();
    bool IsEmpty() const { return files_.empty(); }

    // Records moves between volumes there; see import_journal.h. Not owned; may be null.
    void UseJournal(ImportJournal* journal) { journal_ = journal; }
    // Records there which words a file is to get, before it appears. Not owned; may be null.
    void UseArrivals(ArrivalJournal* arrivals) { arrivals_ = arrivals; }
    // Is shown how far each large file is that has to be copied, and may end that: the file then stays where
    // it is, and is a failure. Not owned; may be null.
    void UseListener(TransferListener* listener) { transfer_ = listener; }

private:
    struct Waiting {
        std::size_t index = 0;  // in files_
        files::NewCopy copy;
        std::string folder;
        bool goes = false;  // its source goes
        bool appeared = false;
    };
    using Choose = std::function<TargetNames::Choice()>;
    void Place(ImportedFile file, const std::string& dayFolder, Source source, const Choose& choose);
    ImportResult TryPlaces(ImportedFile& file, const std::string& dayFolder, Source source,
                           const Choose& choose);
    std::optional<ImportResult> MoveByName(ImportedFile& file, const TargetNames::Choice& choice) const;
    ImportResult StartCopy(ImportedFile& file, const std::string& dayFolder, Source source,
                           const TargetNames::Choice& choice);
    void CheckCopies();
    void RecordMoves();
    void RecordWords(const Waiting& one);
    void LetAppear(Waiting& waiting);
    void RemoveSources();

    TargetNames names_;
    BatchListener& listener_;
    ImportJournal* journal_ = nullptr;
    ArrivalJournal* arrivals_ = nullptr;
    TransferListener* transfer_ = nullptr;
    std::vector<ImportedFile> files_;
    std::vector<Waiting> waiting_;
    std::uint64_t bytes_ = 0;  // of what waits
};

}  // namespace kalmora
