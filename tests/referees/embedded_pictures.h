// What photos hold beside their picture, in the eyes of another program: embedded pictures and trailers, byte
// for byte.
#pragma once

#include <cstdio>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace kalmora::test {

// Tag to bytes, as the other program prints them.
using Embedded = std::map<std::string, std::string>;

// Of all files of a folder, by one call. Empty when the program is not there.
inline std::map<std::string, Embedded> EmbeddedIn(const std::string& folder) {
    const std::string command =
        "cd '" + folder + "' && exiftool -j -a -G1 -b -Preview:all -Trailer . 2>/dev/null";
    std::map<std::string, Embedded> files;
    std::FILE* pipe = popen(command.c_str(), "r");  // NOLINT(bugprone-command-processor): as a user would
    if (!pipe) return files;
    std::string output;
    std::vector<char> block(1u << 16);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), length);
    pclose(pipe);
    const auto records = nlohmann::json::parse(output, nullptr, false);
    if (!records.is_array()) return files;
    for (const auto& record : records) {
        const auto name = std::filesystem::path(record["SourceFile"].get<std::string>()).filename().string();
        Embedded& embedded = files[name];
        for (const auto& [key, value] : record.items())
            if (key != "SourceFile")
                embedded[key] = value.is_string()
                                    ? value.get<std::string>()
                                    : value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }
    return files;
}

}  // namespace kalmora::test
