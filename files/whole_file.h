// Writing a file whole or not at all: the bytes go to a file beside the target, reach the disk,
// and only then take the target's name, so a crash or a full disk leaves the old file as it was.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace galeris {

// False when the file could not be written; the old file, if any, is then untouched and no
// partial file is left beside it.
bool WriteWholeFile(const std::string& path, const std::string& bytes);

// The same, written piece by piece as the pieces are made. Nothing takes the target's name
// until Commit; a writer dropped before that leaves no partial file.
class WholeFileWriter {
 public:
  explicit WholeFileWriter(std::string path);
  ~WholeFileWriter();
  WholeFileWriter(const WholeFileWriter&) = delete;
  WholeFileWriter& operator=(const WholeFileWriter&) = delete;

  // False once anything has failed; later calls then do nothing.
  bool Append(std::string_view bytes);
  bool Commit();

 private:
  std::string path_, partial_;
  int fd_ = -1;
  bool ok_ = false;
  std::size_t written_ = 0;
};

}  // namespace galeris
