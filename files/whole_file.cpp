// Whole-file writes through a partial file, flushed to the disk before the rename.
#include "files/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace galeris {

WholeFileWriter::WholeFileWriter(std::string path)
    : path_(std::move(path)), partial_(path_ + ".partial") {
  // A file being replaced keeps its permissions.
  struct stat old {};
  const mode_t mode = ::stat(path_.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0666;
  fd_ = ::open(partial_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  ok_ = fd_ >= 0;
}

WholeFileWriter::~WholeFileWriter() {
  if (fd_ < 0) return;
  ::close(fd_);
  ::unlink(partial_.c_str());
}

bool WholeFileWriter::Append(std::string_view bytes) {
  const std::size_t start = written_;
  while (ok_ && !bytes.empty()) {
    const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      ok_ = false;
      break;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
    written_ += static_cast<std::size_t>(n);
  }
#if defined(__linux__)
  // The disk starts on what is written while the rest is still being made, so the flush at
  // the end has less to wait for.
  if (ok_ && written_ > start)
    ::sync_file_range(fd_, static_cast<off_t>(start), static_cast<off_t>(written_ - start),
                      SYNC_FILE_RANGE_WRITE);
#endif
  return ok_;
}

bool WholeFileWriter::Commit() {
  if (fd_ < 0) return false;
  bool ok = ok_ && ::fsync(fd_) == 0;
  ok = ::close(fd_) == 0 && ok;
  fd_ = -1;
  ok = ok && std::rename(partial_.c_str(), path_.c_str()) == 0;
  if (!ok) ::unlink(partial_.c_str());
  ok_ = false;
  return ok;
}

bool WriteWholeFile(const std::string& path, const std::string& bytes) {
  WholeFileWriter writer(path);
  return writer.Append(bytes) && writer.Commit();
}

}  // namespace galeris
