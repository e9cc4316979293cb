// The options of `kalmora rotate`. What it does is in rotate.cpp, which needs the toolkit: the small
// picture inside a photo is turned by way of its pixels.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/rotate.h"
#include "cli/verbs.h"

namespace kalmora {

void AddRotateVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<RotateOptions>();
    CLI::App* verb = app.add_subcommand("rotate", "Turn a JPEG clockwise without loss");
    verb->add_flag("--json", options->json, "Print an array with one object");
    verb->add_option("FILE", options->file, "The photo")->required();
    verb->add_option("DEGREES", options->degrees, "90, 180 or 270")
        ->required()
        ->check(CLI::IsMember({90, 180, 270}));
    verb->callback([options, &run] {
        run = [options](const StartOptions& start) { return RunRotate(start, *options); };
    });
}

}  // namespace kalmora
