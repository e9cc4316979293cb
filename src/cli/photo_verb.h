// What the verbs that write into photos share: the environment, and the report about each file.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "app/start_options.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

// Folders, settings and what connects the rooms, as every run needs them.
void PrepareToWrite(const StartOptions& start);

std::string AbsoluteFilePath(const std::string& path);

enum class ReportForm { Lines, Json };

// Results, one a file: lines on standard output (failures on standard error), or one JSON array with an
// object a file.
class FileReport {
public:
    FileReport(std::string verb, ReportForm form);
    ~FileReport();

    // `words` say the result; `details` is an object whose members come behind "file" and "result".
    void Done(const std::string& file, const std::string& words, const nlohmann::ordered_json& details);
    // `reason` says more about the words; a member "reason", unless it is empty.
    void Failed(const std::string& file, const std::string& words, const std::string& reason = {});
    void Failed(const std::string& file, RewriteResult result);
    // Prints what was not printed yet; gives the exit status: 0, or 1 when a file failed.
    int Finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kalmora
