#pragma once
// A Prompt for tests: answers from a script and records every message it was shown.
#include <deque>

#include "platform/prompt.h"

namespace velk::test {

class ScriptedPrompt final : public platform::Prompt {
 public:
  std::deque<platform::Answer> answers;  // taken in order; Cancel when the script runs out
  std::deque<std::optional<int>> choices;
  std::deque<std::optional<std::string>> files;
  std::vector<platform::Message> shown;

  platform::Answer Ask(const platform::Message& message) override {
    shown.push_back(message);
    return Take(answers, platform::Answer::Cancel);
  }
  std::optional<int> Choose(const std::string& title, const std::vector<std::string>&) override {
    shown.push_back({title, "", platform::Buttons::OkCancel});
    return Take(choices, std::optional<int>{});
  }
  std::optional<std::string> ChooseFile(const std::string& title, const std::vector<platform::FileFilter>&,
                                        bool) override {
    shown.push_back({title, "", platform::Buttons::OkCancel});
    return Take(files, std::optional<std::string>{});
  }

 private:
  template <class T>
  static T Take(std::deque<T>& queue, T fallback) {
    if (queue.empty()) return fallback;
    T value = queue.front();
    queue.pop_front();
    return value;
  }
};

}  // namespace velk::test
