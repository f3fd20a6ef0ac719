#include "core/atomic_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

namespace velk::core {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTitle = "File Write Error";
constexpr const char* kMarker = ".part";

platform::Outcome Failure(const fs::path& target, const std::string& reason) {
  return {-1, {kTitle, target.string() + ": " + reason, platform::Buttons::Ok, platform::Icon::Critical, true}};
}

std::string SystemReason(int error) { return std::strerror(error); }

// Creates the temporary file: ".NAME.XXXXXX.part.EXT" beside the target.
fs::path MakeTemporary(const fs::path& target, int& error) {
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const std::string suffix = std::string(kMarker) + target.extension().string();
  std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string() + suffix;
  std::vector<char> buffer(pattern.begin(), pattern.end());
  buffer.push_back('\0');
  const int fd = mkstemps(buffer.data(), static_cast<int>(suffix.size()));
  if (fd < 0) {
    error = errno;
    return {};
  }
  // A new file gets the permissions the user's umask gives, a replaced one keeps its own.
  struct stat existing {};
  mode_t mode = 0;
  if (stat(target.c_str(), &existing) == 0) {
    mode = existing.st_mode & 07777;
  } else {
    const mode_t mask = umask(0);
    umask(mask);
    mode = 0666 & ~mask;
  }
  fchmod(fd, mode);
  close(fd);
  return fs::path(buffer.data());
}

// Flushes the file's bytes to the disk; 0 or the error number.
int SyncFile(const fs::path& file) {
  const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  const int result = fsync(fd) == 0 ? 0 : errno;
  close(fd);
  return result;
}

void SyncFolder(const fs::path& target) {
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const int fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  fsync(fd);  // the rename is already visible; this only makes it survive a power cut
  close(fd);
}

}  // namespace

platform::Outcome WriteAtomically(const fs::path& target, const PathWriter& write) {
  if (target.empty() || !target.has_filename()) return Failure(target, "not a file name");
  int error = 0;
  const fs::path temporary = MakeTemporary(target, error);
  if (temporary.empty()) return Failure(target, SystemReason(error));
  std::string reason;
  try {
    reason = write(temporary);
  } catch (const std::bad_alloc&) {
    reason = "Data Size is too large!";
  }
  if (reason.empty() && (error = SyncFile(temporary)) != 0) reason = SystemReason(error);
  if (reason.empty() && std::rename(temporary.c_str(), target.c_str()) != 0) reason = SystemReason(errno);
  if (!reason.empty()) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    return Failure(target, reason);
  }
  SyncFolder(target);
  return {};
}

platform::Outcome WriteAtomically(const fs::path& target, const StreamWriter& write) {
  return WriteAtomically(target, [&](const fs::path& temporary) -> std::string {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) return SystemReason(errno);
    errno = 0;
    const bool wrote = write(out);
    out.flush();
    const int streamError = errno;
    if (!out) return streamError != 0 ? SystemReason(streamError) : "the file could not be written";
    if (!wrote) return "the data could not be written";
    out.close();
    if (!out) return SystemReason(errno != 0 ? errno : EIO);
    return {};
  });
}

}  // namespace velk::core
