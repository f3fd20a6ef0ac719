#include "cli/cli_prompt.h"

#include <iostream>

namespace velk::cli {

platform::Answer CliPrompt::Ask(const platform::Message& message) {
  std::cerr << message.title << ": " << message.text << "\n";
  switch (message.buttons) {
    case platform::Buttons::Ok: return platform::Answer::Ok;
    case platform::Buttons::OkCancel: return platform::Answer::Ok;
    case platform::Buttons::YesNo:
    case platform::Buttons::YesNoCancel: return platform::Answer::Yes;
    case platform::Buttons::RetryCancel: return platform::Answer::Cancel;
    case platform::Buttons::SaveDontSaveCancel: return platform::Answer::Cancel;
  }
  return platform::Answer::Cancel;
}

std::optional<int> CliPrompt::Choose(const std::string&, const std::vector<std::string>& choices) {
  if (choices.empty()) return std::nullopt;
  return 0;
}

std::optional<std::string> CliPrompt::ChooseFile(const std::string&, const std::vector<platform::FileFilter>&, bool) {
  return std::nullopt;
}

}  // namespace velk::cli
