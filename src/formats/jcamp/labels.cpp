#include "formats/jcamp/labels.h"

#include "core/text.h"
#include "formats/text_lines.h"

namespace velk::formats::jcamp {
namespace {

std::string_view WithoutComment(std::string_view text) {
  const std::size_t comment = text.find("$$");
  return comment == std::string_view::npos ? text : text.substr(0, comment);
}

}  // namespace

JcampLabel SplitJcampLabel(std::string_view rawLine) {
  JcampLabel label;
  const std::string line = core::ToUpper(core::Trim(rawLine));
  if (!line.starts_with("##") && !line.starts_with("$$")) return label;
  const std::size_t split = line.find_first_of("\t=");
  label.key = core::Trim(line.substr(0, split));
  if (split == std::string::npos) return label;
  const std::string_view rest = WithoutComment(std::string_view(line).substr(split + 1));
  std::size_t at = 0;
  while (label.values.size() < kJcampValues) {
    at = rest.find_first_not_of(", \t", at);
    if (at == std::string_view::npos) break;
    const std::size_t end = std::min(rest.find_first_of(", \t", at), rest.size());
    label.values.emplace_back(rest.substr(at, end - at));
    at = end;
  }
  return label;
}

std::string JcampLabelText(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  return core::Trim(WithoutComment(line.substr(equals + 1)));
}

std::string CompactJcampText(std::string_view text) {
  std::string compact;
  for (char c : text)
    if (c != ' ' && c != '\t' && c != '-' && c != '_' && c != '/') compact += c;
  return core::ToUpper(compact);
}

std::string CompactJcampKey(std::string_view key) {
  if (key.starts_with("##$")) return core::ToUpper(key);
  return CompactJcampText(key);
}

double JcampNumber(const JcampLabel& label, std::size_t index, double fallback) {
  if (index >= label.values.size()) return fallback;
  return ParseNumber(label.values[index]).value_or(fallback);
}

}  // namespace velk::formats::jcamp
