#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "app/environment.h"
#include "app/start.h"
#include "app/start_options.h"
#include "cli/manual.h"
#include "cli/verbs.h"

namespace kalmora {

namespace {

constexpr int kRunFailed = 1;
constexpr int kWrongUse = 2;
constexpr char kVersion[] = "kalmora " KALMORA_VERSION;

// In the order in which --help lists them.
constexpr void (*kVerbs[])(CLI::App&, VerbRun&) = {AddShotVerb,   AddShowVerb,   AddIndexVerb, AddUpdateVerb,
                                                   AddSearchVerb, AddImportVerb, AddRateVerb,  AddCommentVerb,
                                                   AddDateVerb,   AddRotateVerb};

// A script's variable that is not set must not become the current folder.
const CLI::Validator& NamesSomething() {
    static const CLI::Validator check(
        [](const std::string& value) { return value.empty() ? std::string("an empty name") : std::string(); },
        "");
    return check;
}

// They may come before or after the verb.
void AddCommonOptions(CLI::App& app, StartOptions& options) {
    app.add_option("--home", options.home, "Folder of kalmora.ini, the key files and Temp")
        ->type_name("DIR")
        ->check(NamesSomething());
    app.add_option("--data", options.data, "Data folder for this run; not saved")
        ->type_name("DIR")
        ->check(NamesSomething());
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

// A result that could not be printed, as on a full disk, is none.
int AfterPrinting(int status) {
    std::cout.flush();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    std::fputs("kalmora: standard output cannot be written\n", stderr);
    return status == 0 ? 1 : status;
}

constexpr char kSummary[] =
    "Kalmora, a life-log calendar over an ordinary folder tree. Without a verb it opens its window.";

// Says why the verb does not run, and gives the exit status.
int Refuse(const CLI::App& app, const Obstacle& obstacle) {
    std::fprintf(stderr, "kalmora: %s\n", obstacle.words.c_str());
    // The 1 of a search says that nothing was found.
    return app.got_subcommand("search") ? kWrongUse : kRunFailed;
}

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
    VerbRun run;
    Describe(app, options, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return AfterPrinting(app.exit(error) == 0 ? 0 : kWrongUse);
    }
    if (!run) return AfterPrinting(RunDesktop(options));
    const Obstacle obstacle = FindObstacle(options);
    return obstacle.kind == Obstacle::Kind::None ? AfterPrinting(run(options)) : Refuse(app, obstacle);
}

}  // namespace kalmora
