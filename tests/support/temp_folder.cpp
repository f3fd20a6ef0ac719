#include "support/temp_folder.h"

#include <unistd.h>

#include <atomic>
#include <fstream>

namespace velk::test {

TempFolder::TempFolder() {
  static std::atomic<int> counter{0};
  path = std::filesystem::temp_directory_path() /
         ("velk-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
  std::filesystem::remove_all(path);
  std::filesystem::create_directories(path);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::filesystem::path TempFolder::Write(const std::string& name, const std::string& content) const {
  const std::filesystem::path file = path / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

}  // namespace velk::test
