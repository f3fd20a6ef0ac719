#pragma once
// The questions of the logic as Qt dialogs: message boxes with the fixed button sets, a list to
// choose from, and the file dialogs with their filters. A question asked on a worker thread is
// shown by the interface thread while the worker waits for the answer.
#include <QString>

#include "platform/prompt.h"

class QWidget;

namespace velk::platform::qt {

class QtPrompt final : public Prompt {
 public:
  explicit QtPrompt(QWidget* parent) : parent_(parent) {}

  Answer Ask(const Message& message) override;
  std::optional<int> Choose(const std::string& title, const std::vector<std::string>& choices) override;
  std::optional<std::string> ChooseFile(const std::string& title, const std::vector<FileFilter>& filters,
                                        bool forSaving) override;

  // The folder a file dialog starts in.
  void SetFolder(const QString& folder) { folder_ = folder; }
  const QString& Folder() const { return folder_; }

 private:
  QWidget* parent_;
  QString folder_;
};

// The Qt filter text of the filters: "Label (pattern pattern)".
QString FilterText(const std::vector<FileFilter>& filters);

}  // namespace velk::platform::qt
