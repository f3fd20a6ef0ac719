#pragma once
// Where the program's files live. The old program kept everything in its own folder; on Linux the
// read-only tables, the user's settings, the log and the work files each have their own place.
#include <filesystem>

namespace velk::core {

struct Folders {
  std::filesystem::path data;     // installed tables and help texts (share/velk2d)
  std::filesystem::path config;   // settings and editable tables ($XDG_CONFIG_HOME/velk2d)
  std::filesystem::path log;      // default data log folder ($XDG_STATE_HOME/velk2d/log)
  std::filesystem::path work;     // work, temporary and undo files of the runs
  std::filesystem::path program;  // where the sister programs are installed
};

// The folders of the current user, from the XDG variables and the location of the executable.
Folders DefaultFolders(const std::filesystem::path& executable);
// Creates the writable folders; errors are swallowed (the services that use them report).
void CreateWritableFolders(const Folders& folders);

}  // namespace velk::core
