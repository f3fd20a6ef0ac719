#include "model/pulse_mode.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <sstream>

#include "model/data_type.h"

namespace velk::model {
namespace {

struct Prefix {
  std::string_view text;
  int pulseModeClass;
};
// Checked in this order; a prefix wins outright.
constexpr std::array<Prefix, 4> kPrefixes{{
    {"V_HETERO", V_HETERO}, {"V_HOMO", V_HOMO}, {"VPH_HETERO", VPH_HETERO}, {"VPH_HOMO", VPH_HOMO}}};

struct NamedClass {
  std::string_view name;
  int pulseModeClass;
};
constexpr std::array<NamedClass, 44> kNames{{
    {"VSCSYNH", 4}, {"VJRESNH", 4}, {"VHMQCBD", 4}, {"VHMBC", 4}, {"VCHSHF", 4}, {"VBDCHSHF", 4},
    {"VCOLOC", 4}, {"VRCHSHF", 4}, {"VCHSL", 4}, {"VCJRES", 4}, {"VLRCJR", 4}, {"V2DINAR", 4},
    {"VHMBCT", 4}, {"VHMQCDBD", 4}, {"VHMQCTB", 4}, {"VHMQCTBD", 4},
    {"VCOSYN", 1}, {"VCOSYNH", 1}, {"VBDCOSYNH", 1}, {"VCOSYSS1", 1}, {"VDQFN", 1}, {"VDQFNH", 1},
    {"VRCOSYNH", 1}, {"VHOHAH", 1}, {"VNOENH", 1}, {"VNOESS1", 1}, {"VNOEHCP", 1}, {"VCONONH", 1},
    {"VROEH", 1}, {"V_HOMO", 1},
    {"VPHHMBC", 2},
    {"VPHCHSHF", 3}, {"VPHCHSL", 3}, {"VPHHSQC", 3}, {"VPHHSQCR", 3}, {"VPHHSQCR2", 3},
    {"VPHHSQCE", 3}, {"VPHHMQCB", 3}, {"VPHHSMBC", 3}, {"VPHHSQCN", 3},
    {"VPHDQFH", 0}, {"VPHNOEH", 0}, {"VPHHOHAH", 0}, {"VPHROEH", 0},
}};

void PresetWindows(PulseModeClassification& c) {
  switch (c.pulseModeClass) {
    case V_HOMO: case V_HETERO: c.windowF1 = c.windowF2 = 1; break;
    case VPH_HMBC: c.windowF1 = 0; c.windowF2 = 1; break;
    case VPH_HOMO: case VPH_HETERO: c.windowF1 = c.windowF2 = 0; break;
    default: break;
  }
}

std::string Upper(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

constexpr std::string_view kCsvHeading =
    "PulseMode,FID Edit,F1 Exchange,F1 Inverse,Phase Mode,Bruker Mode(F1),Bruker Mode(F2),InAdequateMode";

std::vector<std::string> SplitCsv(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream stream(line);
  std::string field;
  while (std::getline(stream, field, ',')) {
    field.erase(0, field.find_first_not_of(" \t\""));
    field.erase(field.find_last_not_of(" \t\r\"") + 1);
    fields.push_back(field);
  }
  return fields;
}

}  // namespace

PulseModeClassification ClassifyPulseMode(std::string_view nameIn) {
  PulseModeClassification c;
  c.name = Upper(nameIn);
  if (c.name.size() >= 6) {
    for (const Prefix& prefix : kPrefixes) {
      if (c.name.starts_with(prefix.text)) {
        c.pulseModeClass = prefix.pulseModeClass;
        c.name = std::string(prefix.text);
        PresetWindows(c);
        return c;
      }
    }
  }
  for (const NamedClass& entry : kNames) {
    if (entry.name == c.name) {
      c.pulseModeClass = entry.pulseModeClass;
      break;
    }
  }
  PresetWindows(c);
  return c;
}

std::string MakeClassName(int pulseModeClass, std::string_view name) {
  static constexpr std::array<std::string_view, 5> kWraps{"VPH_HOMO(", "V_HOMO(", "VPH_HMBC(",
                                                          "VPH_HETERO(", "V_HETERO("};
  if (pulseModeClass < 0 || pulseModeClass > 4) return std::string(name);
  return std::string(kWraps[pulseModeClass]) + std::string(name) + ")";
}

PulseModeTable DefaultPulseModeTable() {
  PulseModeTable table;
  for (const NamedClass& entry : kNames)
    table.push_back(PulseModeRow{std::string(entry.name)});
  return table;
}

const PulseModeRow* FindPulseMode(const PulseModeTable& table, std::string_view name) {
  const auto it = std::find_if(table.begin(), table.end(), [upper = Upper(name)](const PulseModeRow& row) {
    return Upper(row.pulseMode) == upper;
  });
  return it == table.end() ? nullptr : &*it;
}

void ReadPulseModeTable(const std::filesystem::path& file, PulseModeTable& table) {
  std::ifstream in(file);
  std::string line;
  if (!in || !std::getline(in, line)) return;  // the heading
  while (std::getline(in, line)) {
    const std::vector<std::string> f = SplitCsv(line);
    if (f.empty() || f[0].empty()) continue;
    PulseModeRow row{f[0]};
    std::string* values[] = {&row.fidEdit, &row.f1Exchange, &row.f1Inverse, &row.phaseMode,
                             &row.brukerModeF1, &row.brukerModeF2, &row.inadequateMode};
    for (std::size_t i = 0; i < 7 && i + 1 < f.size(); ++i)
      if (!f[i + 1].empty()) *values[i] = f[i + 1];
    const PulseModeRow* existing = FindPulseMode(table, row.pulseMode);
    if (existing) table[static_cast<std::size_t>(existing - table.data())] = row;
    else table.push_back(row);
  }
}

bool WritePulseModeTable(std::ostream& out, const PulseModeTable& table) {
  out << kCsvHeading << "\r\n";
  for (const PulseModeRow& r : table)
    out << r.pulseMode << ',' << r.fidEdit << ',' << r.f1Exchange << ',' << r.f1Inverse << ','
        << r.phaseMode << ',' << r.brukerModeF1 << ',' << r.brukerModeF2 << ',' << r.inadequateMode << "\r\n";
  return static_cast<bool>(out);
}

}  // namespace velk::model
