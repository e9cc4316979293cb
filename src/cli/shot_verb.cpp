// The options of `kalmora shot`. What it does is in shot.cpp, which needs the toolkit.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/shot.h"
#include "cli/verbs.h"

namespace kalmora {

void AddShotVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<ShotOptions>();
    CLI::App* verb = app.add_subcommand("shot", "Draw a view into a PNG; needs no display");
    verb->add_option("--view", options->view, "year, month or day; as last saved when left out")
        ->check(CLI::IsMember({"year", "month", "day"}));
    verb->add_flag("--all", options->all, "The period's objects as one scatter");
    verb->add_option("--date", options->date, "YYYY-MM-DD; today when left out")->type_name("DATE");
    verb->add_option("--size", options->size, "Width x height of the window's inside")
        ->type_name("WxH")
        ->capture_default_str();
    verb->add_option("--scale", options->scale, "Pixels for each unit of length, as on a dense screen")
        ->check(CLI::Range(0.5, 4.0))
        ->capture_default_str();
    verb->add_option("--out", options->out, "The PNG to write")->type_name("FILE.png")->required();
    verb->add_flag("--json", options->json, "Print the result as JSON");
    verb->callback(
        [options, &run] { run = [options](const StartOptions& start) { return RunShot(start, *options); }; });
}

}  // namespace kalmora
