#include "native/backup.h"

#include <cstring>

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
  if (replacing) {
    fs::rename(target, names.first, error);
    if (error) {
      if (hadFirst) fs::rename(names.second, names.first, error);
      return Failure(error, names.first);
    }
  }
  platform::Outcome outcome = write(target);
  if (!outcome.ok()) {
    fs::remove(target, error);
    if (replacing) fs::rename(names.first, target, error);
    if (hadFirst) fs::rename(names.second, names.first, error);
    return outcome;
  }
  if (hadFirst) fs::remove(names.second, error);
  if (replacing && !keepBackup) fs::remove(names.first, error);
  return outcome;
}

}  // namespace velk::native
