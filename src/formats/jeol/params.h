#pragma once
// The parameter section of a JEOL Delta file: fixed-size records of name, unit and value, and the
// names this program takes from it.
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "formats/jeol/header.h"
#include "model/nmr_parameters.h"

namespace velk::formats::jeol {

struct DeltaRecord {
  std::string name;  // upper case
  Unit unit;
  int valueType = 0;  // 0 text, 1 integer, anything else double
  std::string text;
  std::int32_t integer = 0;  // also the rounded copy of a double below 2^31 in magnitude
  double real = 0;           // also the copy of an integer
};

// Nothing when the section's record size or count does not fit the section and the file.
std::optional<std::vector<DeltaRecord>> ReadDeltaRecords(core::Bytes bytes, const DeltaHeader& header);

// What one axis has from the header and the records together.
struct DeltaAxis {
  std::string nucleus;       // canonical name
  double frequencyMHz = 0;   // observe frequency
  double offsetPpm = 0;      // chemical shift of the reference point
  double sweepHz = 0;        // spectral width
  double resolutionHz = 0;   // Hz per point
  std::int32_t points = 0;   // informative only
};

struct DeltaSettings {
  std::array<DeltaAxis, 2> axis;  // X (F2) first
  bool flipF1 = false;
  std::optional<std::int64_t> dateSeconds;  // since 1990-01-01
  // Read but without a field in the data set's records.
  double x90Microseconds = 0;
  std::string filterMode, adcCard;
};

// Applies the records in file order, a later record overriding an earlier one. The Y names,
// "FILTER_WIDTH" and "Y_FREQ_FLIP" are read only for a 2D file.
void ApplyDeltaRecords(std::span<const DeltaRecord> records, bool twoD, DeltaSettings& settings,
                       model::NmrParameters& p);

// The canonical nucleus of a JEOL name: "Proton", "1H", "Carbon13", "Nitrogen15" give "1H",
// "1H", "13C", "15N" (element names with a mass number take the symbol of the element).
std::string DeltaNucleus(const std::string& name);

// "dd/mmm/yyyy  hh:nn:ss" of a count of seconds since 1990-01-01, without a time zone.
std::string DeltaDateText(std::int64_t seconds);

// Unit conversions by prefix code.
double ToMicroseconds(double value, std::uint8_t prefix);
double ToSeconds(double value, std::uint8_t prefix);
double ToHertz(double value, std::uint8_t prefix);
double ToMegahertz(double value, std::uint8_t prefix);

}  // namespace velk::formats::jeol
