// What the tests of the settings file share: files of any content, and the lines that are written.
#pragma once

#include <ostream>
#include <string>

#include "store/settings_file.h"
#include "store/store_fixture.h"
#include "text/text.h"

namespace kalmora {

inline void PrintTo(const Color& color, std::ostream* out) {
    *out << int{color.red} << ',' << int{color.green} << ',' << int{color.blue};
}

class SettingsFileTest : public StoreTest {
protected:
    // Loads a settings file of this content, which is UTF-8 here and code page 932 on disk.
    void Load(const std::string& content) { LoadBytes(text::ToCp932(content)); }
    void LoadBytes(const std::string& bytes) {
        EXPECT_EQ(LoadSettings(Put("kalmora.ini", bytes)), FileRead::Read);
    }

    // A golden file as it is on disk: code page 932, with the home folder in it.
    std::string Golden(const std::string& name) const {
        std::string content = GoldenText(name);
        for (std::size_t at = 0; (at = content.find("<HOME>", at)) != std::string::npos;)
            content.replace(at, 6, home);
        return text::ToCp932(content);
    }
    // What depends on the machine: the programs and the card that it has.
    void SetMachine() const {
        State().settings.ImportDirectory = "/media/card/DCIM";
        State().settings.TextEditor = "xdg-open";
        State().settings.PathOfOrbinGet = At("OrbinGet");
        State().settings.PathOfOrbinLib = At("OrbinLib");
        State().settings.PathOfJpegTran = "/usr/bin/jpegtran";
    }
    static std::string LineOf(const std::string& key) {
        const std::string content = MakeSettingsText();
        const std::size_t start = content.find("\n" + key + "=");
        if (start == std::string::npos) return "no " + key;
        return content.substr(start + 1, content.find('\n', start + 1) - start - 1);
    }
};

}  // namespace kalmora
