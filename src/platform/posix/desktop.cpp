// Opening things with the desktop's programs.
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/process.h"
#include "platform/shell.h"

namespace kalmora::shell {

namespace {

constexpr char kOpener[] = "xdg-open";

// The words of a command; blanks inside quotation marks belong to a word.
std::vector<std::string> WordsOf(const std::string& command) {
    std::vector<std::string> words;
    std::string word;
    bool isInWord = false;
    char quote = '\0';
    for (const char c : command) {
        if (quote != '\0') {
            if (c == quote)
                quote = '\0';
            else
                word.push_back(c);
        } else if (c == '"' || c == '\'') {
            quote = c;
            isInWord = true;
        } else if (c == ' ' || c == '\t') {
            if (isInWord) words.push_back(std::move(word));
            word.clear();
            isInWord = false;
        } else {
            word.push_back(c);
            isInWord = true;
        }
    }
    if (isInWord) words.push_back(std::move(word));
    return words;
}

// A name that begins like an option is not meant as one.
std::string AsArgument(const std::string& target) { return target.starts_with('-') ? "./" + target : target; }

bool StartWith(std::vector<std::string> command, const std::string& target) {
    if (command.empty() || target.empty() || files::FindProgram(command.front()).empty()) return false;
    command.push_back(AsArgument(target));
    return StartProcess(command);
}

}  // namespace

bool Open(const std::string& target) { return StartWith({kOpener}, target); }

bool OpenWithEditor(const std::string& editor, const std::string& path) {
    if (editor.empty() || editor == kOpener) return Open(path);
    // The path of a program may have blanks in it: the whole is tried before its words.
    if (!files::FindProgram(editor).empty()) return StartWith({editor}, path);
    return StartWith(WordsOf(editor), path);
}

std::string DefaultOpener() { return kOpener; }

}  // namespace kalmora::shell
