// The desktop's clipboard: what was copied in any program. GUI thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kalmora::clipboard {

// False without an Application, and where no text is to be had.
bool HasText();
// The text as UTF-8, with the line ends that it was copied with, at most `limit` bytes of it (cut before the
// character that would pass the limit). Empty optional when no text is there, when its owner does not hand it
// over in time (waits at most 1 s), or when the owner marks it as a password.
std::optional<std::string> ReadText(std::size_t limit = 16u << 20);
// False when the clipboard cannot be had.
bool WriteText(std::string_view utf8);

// Reports each change of the clipboard, by this program too, as long as the object lives.
class Watch {
public:
    // `changed` runs on the GUI thread, soon after the change; several changes at once may be one report.
    // What it reads is what the clipboard holds then. Null without an Application.
    static std::unique_ptr<Watch> Create(std::function<void()> changed);
    virtual ~Watch() = default;
};

}  // namespace kalmora::clipboard
