// Whole-file writes through a partial file, flushed to the disk before the rename.
#include "files/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace galeris {
namespace {

bool WriteAll(int fd, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<std::size_t>(n);
  }
  return true;
}

}  // namespace

bool WriteWholeFile(const std::string& path, const std::string& bytes) {
  const std::string partial = path + ".partial";
  // A file being replaced keeps its permissions.
  struct stat old {};
  const mode_t mode = ::stat(path.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0666;
  const int fd = ::open(partial.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  if (fd < 0) return false;
  bool ok = WriteAll(fd, bytes) && ::fsync(fd) == 0;
  ok = ::close(fd) == 0 && ok;
  ok = ok && std::rename(partial.c_str(), path.c_str()) == 0;
  if (!ok) ::unlink(partial.c_str());
  return ok;
}

}  // namespace galeris
