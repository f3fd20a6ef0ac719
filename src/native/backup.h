#pragma once
// Replacing a file without ever leaving the user without the previous one: before the new file is
// written, the old one also becomes the ".$" generation (x.vlk gives x.$lk) and an older ".$"
// becomes ".$$"; the new file is written through WriteAtomically, and a failed write brings both
// generations back.
#include <filesystem>
#include <functional>

#include "platform/message.h"

namespace velk::native {

struct BackupNames {
  std::filesystem::path first;   // ".$" generation
  std::filesystem::path second;  // ".$$" generation
};
BackupNames BackupNamesOf(const std::filesystem::path& target);

// Runs write(temporary) inside the backup protocol; the temporary file then replaces target. keepBackup is the setting "MAKE FILE BACKUP":
// without it the ".$" file is deleted after a successful write.
platform::Outcome ReplaceWithBackup(const std::filesystem::path& target, bool keepBackup,
                                    const std::function<platform::Outcome(const std::filesystem::path&)>& write);

}  // namespace velk::native
