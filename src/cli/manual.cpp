#include "cli/manual.h"

#include <CLI/CLI.hpp>
#include <span>
#include <string_view>
#include <vector>

namespace kalmora {

namespace {

struct Entry {
    const char* name;
    const char* text;
};

constexpr Entry kEnvironment[] = {
    {"KALMORA_HOME",
     "The folder that --home would name. Without either the home is the folder of the program where a "
     "kalmora.ini stands there, and otherwise kalmora in XDG_DATA_HOME."},
    {"XDG_DATA_HOME", "Where programs keep the user's data; ~/.local/share when it is not set."},
    {"KALMORA_LOG", "The file that --log would name."},
    {"DISPLAY, WAYLAND_DISPLAY", "Where the window is shown. The verbs need neither."},
};

constexpr Entry kFiles[] = {
    {"kalmora.ini", "The settings. Written when the program ends."},
    {"KeyConfig.dat, KeyConfig4SS.dat, KeyConfig4Editor.dat",
     "Which key runs which command: in the calendar, in the slide show, in the editor."},
    {"extension.dat", "Which file is a picture, a text, a movie, a piece of music."},
    {"$calendar.cidx", "In each day folder: what a search needs to know of its files. Can be rebuilt."},
    {"Temp", "Copies of files that are being rewritten. Emptied at each start and end."},
};

constexpr Entry kExitStatus[] = {
    {"0", "Done."}, {"1", "Failed; standard error says why."}, {"2", "Wrong use."}};

// What is a command or a sign of the page's own language is taken as text.
std::string Plain(std::string_view text) {
    std::string out;
    bool atLineStart = true;
    for (const char c : text) {
        if (atLineStart && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
        atLineStart = c == '\n';
    }
    return out;
}

std::string Bold(std::string_view text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string Heading(std::string_view title) { return ".SH " + std::string(title) + "\n"; }

std::string Item(const std::string& term, std::string_view text) {
    return ".TP\n" + term + "\n" + Plain(text) + "\n";
}

std::string Items(std::string_view title, std::span<const Entry> entries) {
    std::string page = Heading(title);
    for (const Entry& entry : entries) page += Item(Bold(entry.name), entry.text);
    return page;
}

// "-h, --help", "--home DIR", "FILE...".
std::string TermOf(const CLI::Option& option) {
    if (option.get_positional()) {
        std::string name = option.get_single_name();
        if (option.get_items_expected_max() > 1 && name.find("...") == std::string::npos) name += "...";
        return Italic(name);
    }
    std::string term;
    for (const std::string& name : option.get_snames()) term += (term.empty() ? "" : ", ") + Bold("-" + name);
    for (const std::string& name : option.get_lnames())
        term += (term.empty() ? "" : ", ") + Bold("--" + name);
    // After a colon the parser says how it checks the value.
    const std::string value = option.get_type_name();
    const bool hasValue = option.get_items_expected_max() > 0 && !value.empty();
    return hasValue ? term + " " + Italic(value.substr(0, value.find(':'))) : term;
}

// Those of its groups included, which the parser keeps as verbs without a name.
std::vector<const CLI::Option*> AllOptionsOf(const CLI::App& app) {
    std::vector<const CLI::Option*> all = app.get_options();
    for (const CLI::App* group :
         app.get_subcommands([](const CLI::App* sub) { return sub->get_name().empty(); }))
        for (const CLI::Option* option : group->get_options()) all.push_back(option);
    return all;
}

std::string OptionsOf(const CLI::App& app) {
    std::string page;
    for (const CLI::Option* option : AllOptionsOf(app))
        // Each verb has --help; once is enough.
        if (app.get_parent() == nullptr || option != app.get_help_ptr())
            page += Item(TermOf(*option), option->get_description());
    return page;
}

std::string UseOf(const CLI::App& verb) {
    std::string use = ".B kalmora " + Plain(verb.get_name()) + "\n[" + Italic("OPTION") + "]...\n";
    for (const CLI::Option* option : AllOptionsOf(verb))
        if (option->get_positional()) use += TermOf(*option) + "\n";
    return use;
}

}  // namespace

std::string ManualPage(const CLI::App& app) {
    const auto isVerb = [](const CLI::App* verb) { return !verb->get_name().empty(); };
    const auto verbs = app.get_subcommands(isVerb);
    std::string page = ".\\\" Made from the table of options when the program was built.\n";
    page += ".TH KALMORA 1 \"\" \"" + Plain(app.version()) + "\" \"User Commands\"\n";
    page += Heading("NAME") + "kalmora \\- a life\\-log calendar over an ordinary folder tree\n";
    page += Heading("SYNOPSIS") + ".B kalmora\n[" + Italic("OPTION") + "]...\n";
    for (const CLI::App* verb : verbs) page += ".br\n" + UseOf(*verb);
    page += Heading("DESCRIPTION") + Plain(app.get_description()) + "\n";
    page += Heading("OPTIONS") +
            "They stand before or after the verb. Each verb has its own \\fB\\-\\-help\\fR.\n" +
            OptionsOf(app);
    page += Heading("VERBS") + "Results go to standard output, messages to standard error.\n";
    for (const CLI::App* verb : verbs)
        page += ".SS " + Plain(verb->get_name()) + "\n" + Plain(verb->get_description()) + ".\n" +
                OptionsOf(*verb);
    page += Items("EXIT STATUS", kExitStatus);
    page += Items("ENVIRONMENT", kEnvironment);
    page += Items("FILES", kFiles);
    return page;
}

}  // namespace kalmora
