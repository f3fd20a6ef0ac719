#pragma once
// "OB_0ppm.frq": the instruments and their 0 ppm observe frequencies, one line an instrument,
// fields separated by ";".
#include <array>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velk::model {

inline constexpr int kMaxInstrumentLines = 2001;
inline constexpr int kInstrumentFields = 5;
// A line shorter than this counts as empty; the writer pads every line to it.
inline constexpr std::size_t kInstrumentLineWidth = 61;

struct InstrumentFrequency {
  // Instrument identifier, 0 ppm frequency (MHz), then the values of the reference dialogs.
  std::array<std::string, kInstrumentFields> fields;
};
using InstrumentFrequencyTable = std::vector<InstrumentFrequency>;

// A missing file leaves the table as it is (the built-in default is empty).
void ReadInstrumentFrequencies(const std::filesystem::path& file, InstrumentFrequencyTable& table);
bool WriteInstrumentFrequencies(std::ostream& out, const InstrumentFrequencyTable& table);
// The 0 ppm frequency of an instrument, formatted "####.##########" in the file.
std::optional<double> ZeroPpmFrequency(const InstrumentFrequencyTable& table, const std::string& instrument);
std::string FormatFrequency(double megahertz);

}  // namespace velk::model
