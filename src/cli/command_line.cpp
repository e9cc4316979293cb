#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

#include "app/start.h"
#include "app/start_options.h"
#include "cli/manual.h"
#include "cli/verbs.h"
#include "platform/files.h"

namespace kalmora {

namespace {

constexpr int kFailed = 1, kWrongUse = 2;
constexpr char kVersion[] = "kalmora " KALMORA_VERSION;

// In the order in which --help lists them.
constexpr void (*kVerbs[])(CLI::App&, VerbRun&) = {AddShotVerb,   AddShowVerb,   AddIndexVerb, AddUpdateVerb,
                                                   AddSearchVerb, AddImportVerb, AddRateVerb,  AddCommentVerb,
                                                   AddDateVerb,   AddRotateVerb};

// They stand before or after the verb.
void AddCommonOptions(CLI::App& app, StartOptions& options) {
    app.add_option("--home", options.home, "Folder of kalmora.ini, the key files and Temp")->type_name("DIR");
    app.add_option("--data", options.data, "Data folder for this run; not saved")->type_name("DIR");
    app.add_option("--log", options.log, "Append diagnostics to this file")->type_name("FILE");
}

// All that can be given, from one place for the parser and for the manual.
void Describe(CLI::App& app, StartOptions& options, VerbRun& run) {
    app.set_version_flag("--version", kVersion);
    app.fallthrough();
    app.require_subcommand(0, 1);
    AddCommonOptions(app, options);
    for (const auto addVerb : kVerbs) addVerb(app, run);
}

// A folder that is named and not there is a mistake, never a new folder, and an empty name (of a variable
// that is not set, say) is never the current one. The exit status, or nothing when all is well.
std::optional<int> RefuseFolders(const CLI::App& app, const StartOptions& options) {
    for (const char* name : {"--home", "--data"})
        if (const CLI::Option* option = app.get_option(name);
            option->count() > 0 && option->results().back().empty()) {
            std::fprintf(stderr, "kalmora: %s: an empty name\n", name);
            return kWrongUse;
        }
    if (options.data.empty() || files::IsFolder(options.data)) return std::nullopt;
    std::fprintf(stderr, "kalmora: %s: no such folder\n", options.data.c_str());
    return app.got_subcommand("search") ? kWrongUse : kFailed;  // a search that finds nothing says 1
}

constexpr char kSummary[] =
    "Kalmora, a life-log calendar over an ordinary folder tree. Without a verb it opens its window.";

}  // namespace

std::string CommandLineManual() {
    CLI::App app(kSummary, "kalmora");
    StartOptions options;
    VerbRun run;
    Describe(app, options, run);
    return ManualPage(app);
}

int RunCommandLine(int argc, char** argv) {
    CLI::App app(kSummary, "kalmora");
    StartOptions options;
    VerbRun run = RunDesktop;
    Describe(app, options, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUse;
    }
    if (const auto refused = RefuseFolders(app, options)) return *refused;
    return run(options);
}

}  // namespace kalmora
