// The measured table of code page 932 and of the search fold, which lies beside the project on the makers'
// machines. Tests that read it say so when it is absent.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "source_folder.h"

namespace kalmora::test {

struct CodePageRow {
    std::string code;  // one or two bytes
    char32_t character = 0;
    std::string folded;  // bytes
};

inline std::string BytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<char>(std::strtoul(hex.substr(i, 2).c_str(), nullptr, 16)));
    return bytes;
}

// Empty when the table is nowhere above this file or this program.
inline std::vector<CodePageRow> CodePageFacts() {
    std::vector<CodePageRow> rows;
    const auto program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    for (std::filesystem::path folder : {SourceFolder(__FILE__), program}) {
        for (; rows.empty() && folder.has_relative_path(); folder = folder.parent_path()) {
            std::ifstream file(folder / "shared/text/cp932_fold.tsv", std::ios::binary);
            if (!file) continue;
            const std::string content{std::istreambuf_iterator<char>(file), {}};
            for (std::size_t at = 0; at < content.size();) {
                const std::size_t end = std::min(content.find('\n', at), content.size());
                const std::string line = content.substr(at, end - at);
                at = end + 1;
                const std::size_t first = line.find('\t'), second = line.find('\t', first + 1);
                if (line.starts_with('#') || second == std::string::npos) continue;
                const std::string character = line.substr(first + 1, second - first - 1);
                rows.push_back({BytesOfHex(line.substr(0, first)),
                                static_cast<char32_t>(std::strtoul(character.c_str(), nullptr, 16)),
                                BytesOfHex(line.substr(second + 1))});
            }
        }
    }
    return rows;
}

}  // namespace kalmora::test
