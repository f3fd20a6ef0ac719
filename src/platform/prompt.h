#pragma once
// Everything the logic asks of the user goes through this interface: the GUI answers with dialogs,
// the command line with flags and defaults, tests with scripted answers.
#include <optional>
#include <string>
#include <vector>

#include "platform/message.h"

namespace velk::platform {

struct FileFilter {
  std::string label;    // "Ver.4 Format(*.vlk2)"
  std::string pattern;  // "*.vlk2"
};

class Prompt {
 public:
  virtual ~Prompt() = default;
  // Shows a message and returns the button the user pressed.
  virtual Answer Ask(const Message& message) = 0;
  // Lets the user choose one of the texts; returns its index, or nothing when cancelled.
  virtual std::optional<int> Choose(const std::string& title, const std::vector<std::string>& choices) = 0;
  // A file name to open or save with the given filters; nothing when cancelled.
  virtual std::optional<std::string> ChooseFile(const std::string& title, const std::vector<FileFilter>& filters,
                                                bool forSaving) = 0;
};

}  // namespace velk::platform
