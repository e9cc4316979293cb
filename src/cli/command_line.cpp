#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "app/environment.h"
#include "app/start.h"
#include "app/start_options.h"
#include "cli/shot.h"
#include "cli/show.h"

namespace kalmora {

namespace {

constexpr int kWrongUse = 2;
constexpr char kVersion[] = "kalmora " KALMORA_VERSION;

// --home, --data and --log stand before or after the verb.
void AddCommonOptions(CLI::App& app, StartOptions& options) {
    app.add_option("--home", options.home, "Folder of kalmora.ini, the key files and Temp")->type_name("DIR");
    app.add_option("--data", options.data, "Data folder for this run; not saved")->type_name("DIR");
    app.add_option("--log", options.log, "Append diagnostics to this file")->type_name("FILE");
}

CLI::App* AddShot(CLI::App& app, ShotOptions& shot) {
    CLI::App* verb = app.add_subcommand("shot", "Draw a view into a PNG; needs no display");
    verb->add_option("--view", shot.view, "year, month or day; as last saved when left out")
        ->check(CLI::IsMember({"year", "month", "day"}));
    verb->add_flag("--all", shot.all, "The period's objects as one scatter");
    verb->add_option("--date", shot.date, "YYYY-MM-DD; today when left out")->type_name("DATE");
    verb->add_option("--size", shot.size, "Width x height of the window's inside")
        ->type_name("WxH")
        ->capture_default_str();
    verb->add_option("--scale", shot.scale, "Pixels for each unit of length, as on a dense screen")
        ->check(CLI::Range(0.5, 4.0))
        ->capture_default_str();
    verb->add_option("--out", shot.out, "The PNG to write")->type_name("FILE.png")->required();
    verb->add_flag("--json", shot.json, "Print the result as JSON");
    return verb;
}

CLI::App* AddShow(CLI::App& app, ShowOptions& show) {
    CLI::App* verb = app.add_subcommand("show", "Print everything that the program knows about files");
    verb->add_flag("--json", show.json, "Print an array of objects");
    verb->add_option("FILE", show.files, "Files to look at")->required();
    return verb;
}

}  // namespace

int RunCommandLine(int argc, char** argv) {
    CLI::App app(
        "Kalmora, a life-log calendar over an ordinary folder tree. Without a verb it opens its window.",
        "kalmora");
    app.set_version_flag("--version", kVersion);
    app.fallthrough();
    app.require_subcommand(0, 1);
    StartOptions options;
    ShotOptions shot;
    ShowOptions show;
    AddCommonOptions(app, options);
    const CLI::App* shotVerb = AddShot(app, shot);
    const CLI::App* showVerb = AddShow(app, show);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUse;
    }
    if (shotVerb->parsed()) return RunShot(options, shot);
    if (showVerb->parsed()) return RunShow(options, show);
    return RunDesktop(options);
}

}  // namespace kalmora
