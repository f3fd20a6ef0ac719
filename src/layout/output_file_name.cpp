#include "layout/output_file_name.h"

#include <filesystem>

#include "core/text.h"
#include "layout/print_messages.h"

namespace velk::layout {

std::optional<std::string> OutputFileName(const std::string& chosen, std::string_view extension,
                                          platform::Message& refusal) {
  const std::string given = std::filesystem::path(chosen).extension().string();
  if (given.empty()) {
    std::string lower(extension);
    for (char& c : lower) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return chosen + "." + lower;
  }
  if (core::EqualsNoCase(given.substr(1), extension)) return chosen;
  refusal = messages::WrongExtension(extension);
  return std::nullopt;
}

}  // namespace velk::layout
