// Runs the program itself, as a script would.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kalmora::test {

struct Outcome {
    int status = -1;
    std::string out;  // standard output
};

class CommandLineTest : public testing::Test {
protected:
    CommandLineTest() : folder_(files::MakeTemporaryFolder()) {}
    ~CommandLineTest() override { files::RemoveFolderTree(folder_); }

    std::string Path(const std::string& name) const { return folder_ + "/" + name; }

    // Runs the program in the test's folder, with its home there. The arguments are shell words.
    Outcome Run(const std::string& arguments) const {
        const std::string command = "cd '" + folder_ + "' && '" KALMORA_PROGRAM "' --home '" + folder_ +
                                    "/home' " + arguments + " 2>'" + folder_ + "/errors'";
        Outcome outcome;
        std::FILE* pipe =
            popen(command.c_str(), "r");  // NOLINT(bugprone-command-processor): a script does this
        if (!pipe) return outcome;
        std::array<char, 4096> block;
        while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe))
            outcome.out.append(block.data(), length);
        const int ended = pclose(pipe);
        outcome.status = ended >= 0 && (ended & 0x7F) == 0 ? (ended >> 8) & 0xFF : 128;
        return outcome;
    }
    std::string Errors() const { return files::ReadWholeFile(Path("errors")).value_or(""); }
    void Write(const std::string& name, std::string_view content) const {
        ASSERT_EQ(files::WriteWholeFile(Path(name), content), files::FileResult::Done);
    }

    std::string folder_;
};

}  // namespace kalmora::test
