// jpegtran with two file names. The program turns pictures with
//
//     jpegtran -copy all -rotate 90 SOURCE TARGET
//
// while the jpegtran of this system takes its target only by -outfile and writes to standard output
// otherwise. This one lies beside the program, takes both, and becomes the real one. Any other command line
// goes through as it is.
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kNotFound = 127;  // as a shell says it

// The switches of jpegtran that take a word, and how much of each may be left out.
constexpr std::array<std::string_view, 11> kSwitchesWithWord{
    "-copy",     "-crop",    "-drop",    "-flip",   "-icc",  "-maxmemory",
    "-maxscans", "-outfile", "-restart", "-rotate", "-scans"};
constexpr std::size_t kShortestSwitch = 3;

bool TakesWord(std::string_view argument) {
    // "-c" alone could be several; jpegtran then takes it for -copy, and so do the others for their first.
    if (argument == "-wipe") return true;
    return std::any_of(kSwitchesWithWord.begin(), kSwitchesWithWord.end(), [&](std::string_view known) {
        return argument == known || (argument.size() >= kShortestSwitch && known.starts_with(argument));
    });
}

// Puts -outfile in front of the second of two file names.
std::vector<std::string> WithOutfile(const std::vector<std::string>& arguments) {
    std::size_t at = 0;
    bool hasOutfile = false;
    while (at < arguments.size() && arguments[at].starts_with('-') && arguments[at].size() > 1) {
        hasOutfile = hasOutfile || arguments[at].starts_with("-outf");
        at += TakesWord(arguments[at]) ? (arguments[at] == "-drop" ? 3 : 2) : 1;
    }
    if (hasOutfile || arguments.size() < 2 || at != arguments.size() - 2) return arguments;
    std::vector<std::string> result(arguments.begin(), arguments.end() - 2);
    result.insert(result.end(), {"-outfile", arguments.back(), arguments[at]});
    return result;
}

// Fronts like this one that have been passed already, by device and file, so that two of them in PATH do not
// call each other for ever.
constexpr char kPassed[] = "KALMORA_JPEGTRAN_PASSED";

std::string KeyOf(const struct stat& file) {
    return std::to_string(file.st_dev) + "." + std::to_string(file.st_ino) + " ";
}

// The first jpegtran in PATH, or in the usual places, that is not one of ours.
std::string FindReal(const std::string& passed) {
    const char* path = std::getenv("PATH");
    std::string folders = (path ? std::string(path) + ":" : std::string()) + "/usr/local/bin:/usr/bin:/bin";
    for (std::size_t begin = 0; begin <= folders.size();) {
        const std::size_t end = std::min(folders.find(':', begin), folders.size());
        const std::string candidate = folders.substr(begin, end - begin) + "/jpegtran";
        struct stat found {};
        if (end > begin && stat(candidate.c_str(), &found) == 0 && S_ISREG(found.st_mode) &&
            access(candidate.c_str(), X_OK) == 0 && passed.find(KeyOf(found)) == std::string::npos)
            return candidate;
        begin = end + 1;
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    // A picture must not be written any more once the calling program has ended.
    prctl(PR_SET_PDEATHSIG, SIGKILL);

    const char* before = std::getenv(kPassed);
    std::string passed = before ? before : "";
    struct stat self {};
    if (stat("/proc/self/exe", &self) == 0) passed += KeyOf(self);
    setenv(kPassed, passed.c_str(), 1);

    std::string real = FindReal(passed);
    if (real.empty()) {
        std::fputs("jpegtran: the machine has none of its own; the package libjpeg-turbo-progs has it\n",
                   stderr);
        return kNotFound;
    }
    std::vector<std::string> arguments = WithOutfile({argv + 1, argv + argc});
    std::vector<char*> words{real.data()};
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    execv(real.c_str(), words.data());
    std::perror(real.c_str());
    return kNotFound;
}
