// The verbs of the command line. Each adds itself to the parser and says what to run; command_line.cpp lists
// them.
#pragma once

#include <functional>

#include "app/start_options.h"

namespace CLI {
class App;
}

namespace kalmora {

// Set by the verb that was given; runs after parsing and gives the exit status.
using VerbRun = std::function<int(const StartOptions& start)>;

void AddShotVerb(CLI::App& app, VerbRun& run);
void AddShowVerb(CLI::App& app, VerbRun& run);
void AddIndexVerb(CLI::App& app, VerbRun& run);
void AddUpdateVerb(CLI::App& app, VerbRun& run);
void AddSearchVerb(CLI::App& app, VerbRun& run);
void AddImportVerb(CLI::App& app, VerbRun& run);
void AddRateVerb(CLI::App& app, VerbRun& run);
void AddCommentVerb(CLI::App& app, VerbRun& run);
void AddDateVerb(CLI::App& app, VerbRun& run);
void AddRotateVerb(CLI::App& app, VerbRun& run);

}  // namespace kalmora
