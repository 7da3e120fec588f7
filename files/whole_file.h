// Writing a file whole or not at all: the bytes go to a file beside the target, reach the disk,
// and only then take the target's name, so a crash or a full disk leaves the old file as it was.
#pragma once

#include <string>

namespace galeris {

// False when the file could not be written; the old file, if any, is then untouched and no
// partial file is left beside it.
bool WriteWholeFile(const std::string& path, const std::string& bytes);

}  // namespace galeris
