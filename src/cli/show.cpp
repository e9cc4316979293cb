#include "cli/show.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/environment.h"
#include "cli/before_reading.h"
#include "cli/iso_date.h"
#include "cli/shown_name.h"
#include "cli/verbs.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

using Json = nlohmann::ordered_json;

// The record's keys, in the order in which they are printed.
constexpr const char* kKeys[] = {
    "path",     "kind",    "extension",  "date",  "dateFrom",     "width",        "height",
    "iso",      "shutter", "brightness", "flash", "exposureBias", "exposureTime", "exposureProgram",
    "aperture", "mode",    "face",       "make",  "comment",      "like",         "good",
    "privacy"};

std::string AbsolutePath(const std::string& path) {
    return files::IsAbsolute(path) ? path : files::Join(files::CurrentFolder(), path);
}

const char* NameOf(DateSource source) {
    switch (source) {
        case DateSource::Exif:
            return "exif";
        case DateSource::Png:
            return "png";
        case DateSource::Text:
            return "text";
        case DateSource::File:
            return "file";
        case DateSource::None:
            break;
    }
    return nullptr;
}

Json TextOrNull(const std::string* text) { return text ? Json(*text) : Json(nullptr); }

// One record is made and filled again for each file: making its keys again would cost more than reading a
// photo.
class RecordWriter {
public:
    RecordWriter() {
        for (const char* key : kKeys) record_[key] = nullptr;
    }

    const Json& Fill(const std::string& path) {
        PhotoFile photo(path);
        const Size size = photo.ImageSize();  // first, so that one look at the file serves everything
        SystemTime date;
        const bool dated = photo.GetDate(date) && IsRealDate(date);
        const CameraValues& camera = photo.Metadata().camera;
        const auto make = photo.ReadMake();
        next_ = 0;
        Put(path);
        Put(static_cast<int>(photo.kind));
        Put(photo.extension);
        Put(dated ? Json(IsoDate(date)) : Json(nullptr));
        const char* source = dated ? NameOf(photo.dateFrom) : nullptr;
        Put(source ? Json(source) : Json(nullptr));
        Put(size.width);
        Put(size.height);
        for (const int value :
             {camera.iso, camera.shutter, camera.brightness, camera.flash, camera.exposureBias,
              camera.exposureTime, camera.exposureProgram, camera.aperture, camera.mode, camera.face})
            Put(value);
        Put(TextOrNull(make ? &*make : nullptr));
        Put(TextOrNull(photo.GetComment()));
        const Estimations& estimations = photo.GetEstimations();
        for (const int value : {estimations.like, estimations.good, estimations.privacy}) Put(value);
        return record_;
    }

private:
    void Put(Json value) {
        (record_.get_ref<Json::object_t&>().begin() + next_++)->second = std::move(value);
    }

    Json record_ = Json::object();
    std::ptrdiff_t next_ = 0;
};

std::string Dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

void PrintPlainly(const Json& record, std::string& out) {
    for (const auto& [key, value] : record.items()) {
        if (value.is_null()) continue;
        out += key == "path"
                   ? ShownOnOutput(value.get_ref<const std::string&>())
                   : "  " + key + ": " + (value.is_string() ? value.get<std::string>() : Dump(value));
        out += '\n';
    }
}

// Adds the names in a list, one a line. False when it cannot be read.
bool AddListed(const std::string& listFile, std::vector<std::string>& names) {
    std::ifstream file;
    if (listFile != "-") file.open(listFile, std::ios::binary);
    std::istream& lines = listFile == "-" ? std::cin : file;
    if (!lines) return false;
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) names.push_back(line);
    return true;
}

void Flush(std::string& out) {
    std::fwrite(out.data(), 1, out.size(), stdout);
    out.clear();
}

}  // namespace

int RunShow(const StartOptions& start, const ShowOptions& options) {
    std::vector<std::string> names = options.files;
    if (!options.listFile.empty() && !AddListed(options.listFile, names)) {
        std::fprintf(stderr, "kalmora show: %s: cannot be read\n", options.listFile.c_str());
        return 1;
    }
    PrepareFolders(start);
    ConnectRooms();
    LoadEnvironment(start);
    const std::vector<std::string> torn = MakeWholeBeforeReading("show");
    RecordWriter writer;
    std::string out;
    bool allRead = true;
    bool first = true;
    if (options.json) out += '[';
    for (const std::string& name : names) {
        const std::string path = AbsolutePath(name);
        if (!files::Exists(path)) {
            std::fprintf(stderr, "kalmora show: %s: no such file\n", ShownOnErrors(name).c_str());
            allRead = false;
            continue;
        }
        // It has been reported already.
        if (std::find(torn.begin(), torn.end(), path) != torn.end()) {
            allRead = false;
            continue;
        }
        const Json& record = writer.Fill(path);
        if (options.json) {
            if (!first) out += ",\n ";
            out += Dump(record);
        } else {
            PrintPlainly(record, out);
        }
        first = false;
        if (out.size() > (1u << 16)) Flush(out);
    }
    if (options.json) out += "]\n";
    Flush(out);
    return allRead ? 0 : 1;
}

void AddShowVerb(CLI::App& app, VerbRun& run) {
    auto options = std::make_shared<ShowOptions>();
    CLI::App* verb = app.add_subcommand("show", "Print everything that the program knows about files");
    verb->add_flag("--json", options->json, "Print an array of objects");
    CLI::Option_group* what = verb->add_option_group("what");
    what->add_option("FILE", options->files, "Files to look at");
    what->add_option("--files-from", options->listFile, "More files, one name a line; - for standard input")
        ->type_name("FILE");
    what->require_option(1, 2);
    verb->callback(
        [options, &run] { run = [options](const StartOptions& start) { return RunShow(start, *options); }; });
}

}  // namespace kalmora
