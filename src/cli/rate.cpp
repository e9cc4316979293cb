// kalmora rate: one rating for many photos.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/photo_verb.h"
#include "cli/verbs.h"
#include "media/photo_file.h"

namespace kalmora {

namespace {

struct TypeWord {
    std::string_view word;
    EstimateType type;
};
constexpr std::array<TypeWord, 7> kTypeWords{{{"like", EstimateType::Like},
                                              {"public", EstimateType::Public},
                                              {"good", EstimateType::Good},
                                              {"dislike", EstimateType::Dislike},
                                              {"private", EstimateType::Private},
                                              {"bad", EstimateType::Bad},
                                              {"clear", EstimateType::Clear}}};

struct RateOptions {
    std::vector<std::string> words;  // the files, and the type last
    bool json = false;
};

const TypeWord* FindType(std::string_view word) {
    const auto found = std::find_if(kTypeWords.begin(), kTypeWords.end(),
                                    [word](const TypeWord& known) { return known.word == word; });
    return found == kTypeWords.end() ? nullptr : &*found;
}

int RunRate(const StartOptions& start, RateOptions options) {
    const TypeWord* type = FindType(options.words.back());
    if (!type) {
        std::fprintf(stderr, "kalmora rate: %s is none of like, public, good, dislike, private, bad, clear\n",
                     options.words.back().c_str());
        return 2;
    }
    options.words.pop_back();
    PrepareToWrite(start);
    std::vector<PhotoFile> photos;
    photos.reserve(options.words.size());
    for (const std::string& file : options.words) photos.emplace_back(AbsoluteFilePath(file));
    const std::vector<RewriteResult> results = EstimateAll(photos, type->type);
    FileReport report("rate", options.json ? ReportForm::Json : ReportForm::Lines);
    for (std::size_t i = 0; i < photos.size(); ++i) {
        if (!IsDone(results[i])) {
            report.Failed(options.words[i], results[i]);
            continue;
        }
        const auto& [like, good, privacy] = photos[i].estimations;
        const nlohmann::ordered_json values{{"like", like}, {"good", good}, {"privacy", privacy}};
        const std::string words = options.json
                                      ? NameOf(results[i])
                                      : "like " + std::to_string(like) + ", good " + std::to_string(good) +
                                            ", privacy " + std::to_string(privacy);
        report.Done(options.words[i], words, values);
    }
    return report.Finish();
}

}  // namespace

void AddRateVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<RateOptions>();
    CLI::App* verb =
        app.add_subcommand("rate", "Judge photos: like, public, good, dislike, private, bad or clear");
    verb->add_flag("--json", options->json, "Print an array of objects");
    constexpr int kAtLeast = 2, kAtMost = 1'000'000;
    verb->add_option("FILE... TYPE", options->words, "Photos, then the judgement")
        ->required()
        ->expected(kAtLeast, kAtMost);
    verb->callback(
        [options, &run] { run = [options](const StartOptions& start) { return RunRate(start, *options); }; });
}

}  // namespace kalmora
