#include "core/folders.h"

#include <cstdlib>

namespace velk::core {
namespace {

std::filesystem::path FromEnvironment(const char* name, const std::filesystem::path& fallback) {
  const char* value = std::getenv(name);
  return value && *value ? std::filesystem::path(value) : fallback;
}

}  // namespace

Folders DefaultFolders(const std::filesystem::path& executable) {
  const std::filesystem::path home = FromEnvironment("HOME", "/tmp");
  Folders f;
  f.program = executable.parent_path();
  // An installed program finds its tables in ../share/velk2d; a build tree beside its sources.
  f.data = f.program.parent_path() / "share" / "velk2d";
  if (!std::filesystem::exists(f.data)) f.data = std::filesystem::path(VELK_SOURCE_DATA_DIR);
  f.config = FromEnvironment("XDG_CONFIG_HOME", home / ".config") / "velk2d";
  const std::filesystem::path state = FromEnvironment("XDG_STATE_HOME", home / ".local" / "state") / "velk2d";
  f.log = state / "log";
  f.work = state / "work";
  return f;
}

void CreateWritableFolders(const Folders& folders) {
  std::error_code ignored;
  for (const auto& folder : {folders.config, folders.log, folders.work})
    std::filesystem::create_directories(folder, ignored);
}

}  // namespace velk::core
