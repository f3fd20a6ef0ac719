#include "model/frequency_table.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace velk::model {
namespace {

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

void ReadInstrumentFrequencies(const std::filesystem::path& file, InstrumentFrequencyTable& table) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return;
  table.clear();
  std::string line;
  while (std::getline(in, line) && table.size() < static_cast<std::size_t>(kMaxInstrumentLines)) {
    for (char& c : line)
      if (static_cast<unsigned char>(c) < ' ') c = ' ';
    if (line.size() < kInstrumentLineWidth) continue;
    InstrumentFrequency entry;
    std::size_t start = 0;
    for (int f = 0; f < kInstrumentFields && start <= line.size(); ++f) {
      const std::size_t end = std::min(line.find(';', start), line.size());
      entry.fields[f] = Trimmed(line.substr(start, end - start));
      start = end + 1;
    }
    table.push_back(entry);
  }
}

bool WriteInstrumentFrequencies(std::ostream& out, const InstrumentFrequencyTable& table) {
  for (const InstrumentFrequency& entry : table) {
    std::string line;
    for (int f = 0; f < kInstrumentFields; ++f) line += (f ? ";" : "") + entry.fields[f];
    line.resize(std::max(line.size(), kInstrumentLineWidth), ' ');
    out << line << "\r\n";
  }
  return static_cast<bool>(out);
}

std::optional<double> ZeroPpmFrequency(const InstrumentFrequencyTable& table, const std::string& instrument) {
  for (const InstrumentFrequency& entry : table) {
    if (entry.fields[0] != instrument) continue;
    char* end = nullptr;
    const double value = std::strtod(entry.fields[1].c_str(), &end);
    if (end != entry.fields[1].c_str()) return value;
  }
  return std::nullopt;
}

std::string FormatFrequency(double megahertz) {
  char text[48];
  std::snprintf(text, sizeof text, "%.10f", megahertz);
  std::string s(text);
  s.erase(s.find_last_not_of('0') + 1);  // "#" digits: no trailing zeros
  return s;
}

}  // namespace velk::model
