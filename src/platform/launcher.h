#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace velk::platform {

// Starts another program (the 1D sister program) and does not wait for it.
class Launcher {
 public:
  virtual ~Launcher() = default;
  // Returns false when the program could not be started.
  virtual bool Start(const std::filesystem::path& program, const std::vector<std::string>& arguments) = 0;
};

}  // namespace velk::platform
