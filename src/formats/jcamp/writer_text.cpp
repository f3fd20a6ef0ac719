#include "formats/jcamp/writer_text.h"

#include <cstdio>

#include "core/atomic_write.h"
#include "formats/jcamp/asdf.h"

namespace velk::formats::jcamp {

std::string Fixed(double value, int decimals, int minimum) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  std::string s = text;
  if (s.find('.') == std::string::npos) return s;
  const std::size_t dot = s.find('.');
  while (s.size() > dot + 1 + static_cast<std::size_t>(minimum) && s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s == "-0" ? "0" : s;
}

std::string Factor(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.12g", value);
  return text;
}

void Line(std::string& out, const std::string& label, std::string value) {
  for (char& c : value)
    if (static_cast<unsigned char>(c) < 32) c = ' ';
  out += label;
  if (!value.empty()) out += (label.starts_with("##$") ? "\t" : " ") + value;
  out += '\n';
}

void Table(std::string& out, std::span<const std::int64_t> values, std::int64_t firstX) {
  for (const std::string& line : EncodeDifDupLines(values, firstX, -1)) Line(out, line);
}

platform::Outcome WriteText(const std::filesystem::path& file, const std::string& text) {
  return core::WriteAtomically(file, core::StreamWriter([&](std::ostream& out) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    return static_cast<bool>(out);
  }));
}

}  // namespace velk::formats::jcamp
