#include "cli/cli_io.h"

#include <iostream>

#include "document/read_data_set.h"
#include "document/write_data_set.h"

namespace velk::cli {

int Complain(std::string_view command, const std::string& subject, const std::string& text, int status) {
  std::cerr << "velk2d-cli " << command << ": " << subject << ": " << text << "\n";
  return status;
}

int StatusOf(const platform::Outcome& outcome) {
  if (outcome.ok()) return kDone;
  return outcome.code == 1 ? kRefused : kFailed;
}

std::string TextOf(const platform::Message& message) {
  if (message.title.empty()) return message.text;
  if (message.text.empty()) return message.title;
  return message.title + ": " + message.text;
}

std::unique_ptr<document::Document> ReadInput(std::string_view command, const std::string& path,
                                              platform::Prompt& prompt, int& status) {
  document::ReadResult read = document::ReadDataSet(path, prompt);
  status = StatusOf(read.outcome);
  if (status != kDone) Complain(command, path, TextOf(read.outcome.message), status);
  return std::move(read.document);
}

int CheckOutput(std::string_view command, const std::filesystem::path& output, const document::Document& input) {
  const std::string why = document::RefuseOverwrite(output, {input.source});
  return why.empty() ? kDone : Complain(command, output.string(), why, kFailed);
}

}  // namespace velk::cli
