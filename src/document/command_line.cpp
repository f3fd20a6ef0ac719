#include "document/session.h"
#include "core/text.h"

namespace velk::document {

using namespace core;

CommandLine CleanCommandLine(std::string_view raw) {
  const std::string text = Trim(raw);
  CommandLine line;
  if (text.size() < 3) return line;
  if (text.front() == '"') {
    const std::size_t close = text.find('"', 1);
    line.name = text.substr(1, close == std::string::npos ? std::string::npos : close - 1);
  } else {
    line.name = text.substr(0, text.find(' '));
  }
  if (!line.name.empty() && line.name.front() == '$') {
    line.name.erase(0, 1);
    line.handedOver = true;
  }
  return line;
}

}  // namespace velk::document
