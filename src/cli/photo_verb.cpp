#include "cli/photo_verb.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/environment.h"
#include "cli/shown_name.h"
#include "platform/files.h"

namespace kalmora {

using Json = nlohmann::ordered_json;

struct FileReport::State {
    std::string verb;
    ReportForm form;
    Json records = Json::array();
    bool allDone = true;
};

void PrepareToWrite(const StartOptions& start) {
    PrepareFolders(start);
    ConnectRooms();
    LoadEnvironment(start);
}

std::string AbsoluteFilePath(const std::string& path) {
    return files::IsAbsolute(path) ? path : files::Join(files::CurrentFolder(), path);
}

FileReport::FileReport(std::string verb, ReportForm form)
    : state_(std::make_unique<State>(State{std::move(verb), form})) {}

FileReport::~FileReport() = default;

void FileReport::Done(const std::string& file, const std::string& words, const Json& details) {
    if (state_->form == ReportForm::Lines) {
        std::printf("%s: %s\n", ShownOnOutput(file).c_str(), words.c_str());
        return;
    }
    Json record{{"file", file}, {"result", words}};
    record.update(details);
    state_->records.push_back(std::move(record));
}

void FileReport::Failed(const std::string& file, const std::string& words, const std::string& reason) {
    state_->allDone = false;
    std::fprintf(stderr, "kalmora %s: %s: %s%s%s\n", state_->verb.c_str(), ShownOnErrors(file).c_str(),
                 words.c_str(), reason.empty() ? "" : ": ", reason.c_str());
    if (state_->form != ReportForm::Json) return;
    Json record{{"file", file}, {"result", words}};
    if (!reason.empty()) record["reason"] = reason;
    state_->records.push_back(std::move(record));
}

void FileReport::Failed(const std::string& file, RewriteResult result) {
    const char* reason = ReasonOf(result);
    Failed(file, NameOf(result), reason ? reason : "");
}

int FileReport::Finish() {
    if (state_->form == ReportForm::Json)
        std::printf("%s\n", state_->records.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    std::fflush(stdout);
    return state_->allDone ? 0 : 1;
}

}  // namespace kalmora
