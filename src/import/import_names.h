// Where an imported file is to lie: in its day's folder, under a name that no other file has.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "import/import_result.h"
#include "import/import_same.h"

namespace kalmora {

enum class Naming {
    Keep,   // as it is called; a second file of that name gets a number in brackets
    Number  // 0001.jpg, 0002.jpg, ...
};

// Chooses the names of one import. One thread.
class TargetNames {
public:
    enum class Form { File, Shortcut };  // what will lie there: the file, or "name.lnk" that points at it
    // What is done about a name under which a file is on its way.
    enum class OnReserved { Wait, CompareSources };

    explicit TargetNames(Naming naming, Form form = Form::File, SameBy sameBy = SameBy::DateOrSize,
                         OnReserved onReserved = OnReserved::Wait)
        : naming_(naming), form_(form), sameBy_(sameBy), onReserved_(onReserved) {}

    struct Incoming {
        std::string source;
        std::string words = {};  // that will be added to its comment
    };
    // A file that goes with a photo and, where that is possible, keeps a common name with it. Its name is the
    // photo's stem (or what looks like it), `stemLength` bytes, and something more.
    struct Companion {
        Incoming file;
        std::size_t stemLength = 0;
    };
    struct Choice {
        std::string path = {};                    // empty: it is not to be imported,
        ImportResult why = ImportResult::Copied;  // for this reason
        std::string existing = {};                // of Same and Differs: the file that the day has
        int number = 0;                           // in its name, in brackets or as its name; 0: none
        bool mustWait = false;  // a reserved name has to exist on the disk before this is known
    };
    // Makes the folder; removes a source called "Thumbs.db", unless files are numbered. A name that is free
    // is taken only when it is free for the companions as well.
    Choice Choose(const Incoming& file, const std::string& folder,
                  std::span<const Companion> companions = {});
    Choice Choose(const std::string& source, const std::string& folder) {
        return Choose(Incoming{source}, folder);
    }
    // The same for a companion of a photo that has this number; when that name belongs to another file it
    // gets one of its own.
    Choice ChooseBeside(const Companion& companion, const std::string& folder, int number);
    // The same without touching anything.
    Choice Look(const Incoming& file, const std::string& folder, std::span<const Companion> companions = {});
    Choice Look(const std::string& source, const std::string& folder) {
        return Look(Incoming{source}, folder);
    }
    Choice LookBeside(const Companion& companion, const std::string& folder, int number);

    // A file is on its way to this path.
    void Reserve(const std::string& path, const std::string& source = {}) { reserved_[path] = source; }
    void ForgetReserved() { reserved_.clear(); }

private:
    enum class Place { Free, Same, Other, Reserved };
    Place LookAt(const std::string& path, const Incoming& file) const;
    bool AreFree(std::span<const Companion> companions, const std::string& folder, int number,
                 bool& mustWait) const;
    std::string NameBeside(const Companion& companion, int number) const;
    Choice ChooseByName(const Incoming& file, const std::string& folder,
                        std::span<const Companion> companions);
    Choice ChooseByNumber(const Incoming& file, const std::string& folder,
                          std::span<const Companion> companions);
    Choice SameOrDiffers(const std::string& path, const Incoming& file, int number) const;
    bool IsTaken(const std::string& path) const;
    bool IsSame(const std::string& path, const Incoming& file) const;
    // Empty when the folder exists or was made.
    std::optional<Choice> MakeSure(const std::string& folder) const;

    // What a folder held that has a number for its name before this import.
    struct Numbered {
        std::string path, extension;
        int number = 0;
        std::uint64_t size = 0;
        bool isLink = false;  // a shortcut lies there, and the path is without ".lnk"
    };
    const std::vector<Numbered>& NumberedIn(const std::string& folder);

    const Naming naming_;
    const Form form_;
    const SameBy sameBy_;
    const OnReserved onReserved_;
    std::unordered_map<std::string, std::string> reserved_;  // path to source
    std::unordered_map<std::string, int> nextNumber_;        // by folder and extension: all below are taken
    std::unordered_map<std::string, std::vector<Numbered>> numbered_;  // by folder
};

// "IMG.JPG" with 1 is "IMG[1].jpg"; the extension is that of the file in the way, `existing`. A
// name that would be longer than the system takes loses letters of its stem.
std::string NumberedName(std::string_view name, std::string_view existing, int number);

// The choice for one file, by the settings: a new path, or none when it is not to be copied. Any thread.
std::optional<std::string> MakeTargetPath(const std::string& source, const std::string& root, int year,
                                          int month, int day);

}  // namespace kalmora
