#pragma once
#include <filesystem>
#include <string>

namespace velk::test {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
struct TempFolder {
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path / name; }
  // Writes bytes (or text) to a file in the folder and returns its path.
  std::filesystem::path Write(const std::string& name, const std::string& content) const;

  std::filesystem::path path;
};

}  // namespace velk::test
