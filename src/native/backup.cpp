#include "native/backup.h"

#include "core/atomic_write.h"
#include "native/messages.h"

namespace velk::native {

namespace fs = std::filesystem;

BackupNames BackupNamesOf(const fs::path& target) {
  const std::string extension = target.extension().string();
  const std::string rest = extension.size() > 2 ? extension.substr(2) : std::string();
  fs::path first = target, second = target;
  first.replace_extension(".$" + rest);
  second.replace_extension(".$$" + rest);
  return {first, second};
}

namespace {

platform::Outcome Failure(const std::error_code& error, const fs::path& file) {
  return {-1, messages::Error(messages::kWriteTag, error.message() + " (" + file.string() + ")")};
}

}  // namespace

// The target stays where it is while the new file is written: the ".$" generation is a second
// name of the same file (a copy where the file system has no hard links), and the finished file
// is renamed over the target. The target name therefore always holds the old or the whole new
// file, even when the process is killed half way.
platform::Outcome ReplaceWithBackup(const fs::path& target, bool keepBackup,
                                    const std::function<platform::Outcome(const fs::path&)>& write) {
  const BackupNames names = BackupNamesOf(target);
  std::error_code error;
  const bool replacing = fs::exists(target, error);
  const bool hadFirst = replacing && fs::exists(names.first, error);
  if (hadFirst) {
    fs::rename(names.first, names.second, error);
    if (error) return Failure(error, names.second);
  }
  const auto restore = [&] {
    std::error_code ignored;
    if (replacing) fs::remove(names.first, ignored);
    if (hadFirst) fs::rename(names.second, names.first, ignored);
  };
  if (replacing) {
    fs::create_hard_link(target, names.first, error);
    if (error) fs::copy_file(target, names.first, fs::copy_options::overwrite_existing, error);
    if (error) {
      restore();
      return Failure(error, names.first);
    }
  }
  platform::Outcome written;
  const platform::Outcome saved = core::WriteAtomically(target, [&](const fs::path& temporary) {
    written = write(temporary);
    return written.ok() ? std::string() : written.message.text;
  });
  if (!saved.ok()) {
    restore();
    return written.ok() ? platform::Outcome{-1, messages::Error(messages::kWriteTag, saved.message.text)} : written;
  }
  if (hadFirst) fs::remove(names.second, error);
  if (replacing && !keepBackup) fs::remove(names.first, error);
  return saved;
}

}  // namespace velk::native
