#pragma once
// Replacing a file without ever leaving the user without the previous one: before the new file is
// written, the old one becomes the ".$" generation (x.vlk gives x.$lk) and an older ".$" becomes
// ".$$"; a failed write brings both back.
#include <filesystem>
#include <functional>

#include "platform/message.h"

namespace velk::native {

struct BackupNames {
  std::filesystem::path first;   // ".$" generation
  std::filesystem::path second;  // ".$$" generation
};
BackupNames BackupNamesOf(const std::filesystem::path& target);

// Runs write(target) inside the backup protocol. keepBackup is the setting "MAKE FILE BACKUP":
// without it the ".$" file is deleted after a successful write.
platform::Outcome ReplaceWithBackup(const std::filesystem::path& target, bool keepBackup,
                                    const std::function<platform::Outcome(const std::filesystem::path&)>& write);

}  // namespace velk::native
