// Where things are on this machine; the parts of files.h that tests lead to folders of their own.
#pragma once

#include <string>
#include <vector>

namespace kalmora::files {

// The DCIM folder of the first medium mounted directly below one of the folders; empty when there is none.
std::string FindCameraCardBelow(const std::vector<std::string>& mountFolders);

}  // namespace kalmora::files
