// Runs a fuzz target over files: each argument is one, or a folder whose files are meant. It passes when the
// target comes back from all of them; a crash or a sanitizer's report is the failure. A folder without a file
// fails as well, for then nothing was tried.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length);

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        if (!fs::is_directory(argv[i], error)) {
            inputs.emplace_back(argv[i]);
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(argv[i], error))
            if (entry.is_regular_file(error)) inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());

    for (const fs::path& input : inputs) {
        std::ifstream file(input, std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "%s cannot be read\n", input.c_str());
            return 1;
        }
        // The name goes out first, so that it is the last line before a crash.
        std::fprintf(stderr, "%s\n", input.filename().c_str());
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    if (inputs.empty()) std::fprintf(stderr, "no input files\n");
    return inputs.empty() ? 1 : 0;
}
