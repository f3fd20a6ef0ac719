#pragma once
// The command line answers the program's questions without a person: messages go to stderr and
// every question takes its default answer.
#include "platform/prompt.h"

namespace velk::cli {

class CliPrompt final : public platform::Prompt {
 public:
  platform::Answer Ask(const platform::Message& message) override;
  std::optional<int> Choose(const std::string& title, const std::vector<std::string>& choices) override;
  std::optional<std::string> ChooseFile(const std::string& title, const std::vector<platform::FileFilter>& filters,
                                        bool forSaving) override;
};

}  // namespace velk::cli
