// Lists of files as programs hand them to each other (text/uri-list, RFC 2483). Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kalmora {

// The local files of the list, in its order, as paths; names keep their bytes, in any encoding.
// Comments, other schemes, other machines' files and what is no address are left out. `host` is the name of
// this machine; without a name, "localhost" and no name at all mean it.
std::vector<std::string> LocalPaths(std::string_view uriList, std::string_view host);

// False when something else than a comment is left out.
bool AreAllLocalPaths(std::string_view uriList, std::string_view host);

// The address of a local file: "file://" and the path, with what has a meaning in addresses written as %HH.
std::string FileUri(std::string_view path);

}  // namespace kalmora
