// Where a file that comes in is to stand: in its day's folder, under a name that no other file has.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "store/import_result.h"

namespace kalmora {

// 0 when two files count as the same: both have a shooting date and it is the same to the second, or else
// they have the same size. 1 when a is the larger, -1 when b is. A missing file has size 0. Any thread.
int CompareImportFiles(const std::string& a, const std::string& b);

enum class Naming {
    Keep,   // as it is called; a second file of that name gets a number in brackets
    Number  // 0001.jpg, 0002.jpg, ...
};

// Chooses the names of one import. One thread.
class TargetNames {
public:
    enum class Form { File, Shortcut };  // what will stand there: the file, or "name.lnk" that points at it

    explicit TargetNames(Naming naming, Form form = Form::File) : naming_(naming), form_(form) {}

    struct Choice {
        std::string path = {};                    // empty: it is not to be imported,
        ImportResult why = ImportResult::Copied;  // for this reason
        std::string standing = {};                // of Same: the file that the day has
        bool isTaken = false;                     // numbers only: another file stands there already
        bool mustWait = false;  // a reserved name has to stand on the disk before this can be told
    };
    // Makes the folder; removes a source called "Thumbs.db", unless files are numbered.
    Choice Choose(const std::string& source, const std::string& folder);
    // The same without touching anything.
    Choice Look(const std::string& source, const std::string& folder);

    // A file is on its way to this path.
    void Reserve(const std::string& path) { reserved_.insert(path); }
    void ForgetReserved() { reserved_.clear(); }

private:
    Choice ChooseByName(const std::string& source, const std::string& folder);
    Choice ChooseByNumber(const std::string& source, const std::string& folder);
    bool IsTaken(const std::string& path) const;
    bool IsSame(const std::string& path, const std::string& source) const;

    const Naming naming_;
    const Form form_;
    std::unordered_set<std::string> reserved_;
    std::unordered_map<std::string, int> nextNumber_;  // by folder: all below it are known to be taken
};

// "IMG.JPG" with 1 is "IMG[1].jpg"; the extension is that of the file that stands in the way, `standing`. A
// name that would be longer than the system takes loses letters of its stem.
std::string NumberedName(std::string_view name, std::string_view standing, int number);

// The choice for one file, by the settings: a new path, or none when it is not to be copied. Any thread.
std::optional<std::string> MakeTargetPath(const std::string& source, const std::string& root, int year,
                                          int month, int day);

}  // namespace kalmora
