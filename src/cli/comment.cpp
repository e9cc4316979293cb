// kalmora comment: the words of a photo.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/photo_verb.h"
#include "cli/verbs.h"
#include "media/photo_file.h"

namespace kalmora {

namespace {

struct CommentOptions {
    std::string file;
    std::string text;
    bool append = false;
    bool json = false;
};

int RunComment(const StartOptions& start, const CommentOptions& options) {
    PrepareToWrite(start);
    PhotoFile photo(AbsoluteFilePath(options.file));
    const RewriteResult result =
        options.append ? photo.AppendComment(options.text) : photo.SetComment(options.text);
    FileReport report("comment", options.json ? ReportForm::Json : ReportForm::Lines);
    if (IsDone(result))
        report.Done(options.file, NameOf(result), {{"comment", photo.comment.value_or("")}});
    else
        report.Failed(options.file, result);
    return report.Finish();
}

}  // namespace

void AddCommentVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<CommentOptions>();
    CLI::App* verb = app.add_subcommand("comment", "Write a comment into a photo");
    verb->add_flag("--append", options->append, "On a line of its own behind the comment that is there");
    verb->add_flag("--json", options->json, "Print an array with one object");
    verb->add_option("FILE", options->file, "The photo")->required();
    verb->add_option("TEXT", options->text, "The comment; empty takes it out")->required();
    verb->callback([options, &run] {
        run = [options](const StartOptions& start) { return RunComment(start, *options); };
    });
}

}  // namespace kalmora
