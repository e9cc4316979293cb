// Which files of a folder go with a photo of theirs: what other programs know of it, its raw twin, the short
// movie that a phone takes with it. They say nothing of the day on which they were made, or another one.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kalmora {

struct CompanionName {
    std::string name;
    std::size_t stemLength = 0;  // of the letters that it has in common with its photo
};

// A photo has the stem of its companions, whatever the case: "IMG_1.JPG" with "img_1.xmp", "IMG_1.JPG.xmp",
// "IMG_1.CR2" and "IMG_1.MOV". A raw picture without a photo of its name leads itself, and so does a movie.
class FolderCompanions {
public:
    FolderCompanions() = default;
    // `names`: of all files of a folder.
    explicit FolderCompanions(const std::vector<std::string>& names);

    bool IsCompanion(const std::string& name) const { return followers_.contains(name); }
    // In the order of the names; empty for a file that has none.
    const std::vector<CompanionName>& Of(const std::string& photo) const;

private:
    std::unordered_map<std::string, std::vector<CompanionName>> companions_;  // by the photo's name
    std::unordered_set<std::string> followers_;
};

}  // namespace kalmora
