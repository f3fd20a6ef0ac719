#pragma once
// Classification of pulse sequence names into the five processing classes, and the table
// PulseModeSet.csv by which a user overrides the defaults per sequence.
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace velk::model {

struct PulseModeClassification {
  int pulseModeClass = -1;
  std::string name;      // shortened to the prefix when a prefix decided
  int windowF1 = 0;      // window function numbers preset by the class
  int windowF2 = 0;
};

PulseModeClassification ClassifyPulseMode(std::string_view name);
// "VPH_HOMO(" + name + ")" and its fellows; the name alone for an unknown class.
std::string MakeClassName(int pulseModeClass, std::string_view name);

// One row of PulseModeSet.csv; a value "0" means the default.
struct PulseModeRow {
  std::string pulseMode;
  std::string fidEdit = "0", f1Exchange = "0", f1Inverse = "0", phaseMode = "0";
  std::string brukerModeF1 = "0", brukerModeF2 = "0", inadequateMode = "0";
};
using PulseModeTable = std::vector<PulseModeRow>;

// The built-in table: one row per known sequence, every value "0".
PulseModeTable DefaultPulseModeTable();
// A missing or unreadable file leaves the table as it is.
void ReadPulseModeTable(const std::filesystem::path& file, PulseModeTable& table);
bool WritePulseModeTable(std::ostream& out, const PulseModeTable& table);
const PulseModeRow* FindPulseMode(const PulseModeTable& table, std::string_view name);

}  // namespace velk::model
