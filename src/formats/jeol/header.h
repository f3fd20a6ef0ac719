#pragma once
// The fixed header at the start of a JEOL Delta file (.jdf).
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/bytes.h"
#include "formats/elements.h"

namespace velk::formats::jeol {

inline constexpr std::uint64_t kHeaderBytes = 1296;
inline constexpr int kX = 0;  // first axis: F2 of a 2D set
inline constexpr int kY = 1;  // second axis: F1

// Unit type codes of axes and parameter records.
enum UnitType : std::uint8_t {
  kUnitNone = 0, kUnitCount = 1, kUnitCelsius = 4, kUnitHertz = 13, kUnitPpm = 26, kUnitSeconds = 28
};
// Unit prefix codes: none, milli, micro, mega, kilo.
enum UnitPrefix : std::uint8_t {
  kPrefixNone = 1, kPrefixMilli = 17, kPrefixMicro = 33, kPrefixMega = 225, kPrefixKilo = 241
};
// Axis types at byte 24 on: how the points of one dimension are stored.
enum AxisType : std::uint8_t { kAxisReal = 1, kAxisComplex = 3, kAxisRealComplex = 4 };

struct Unit {
  std::uint8_t prefix = 0;
  std::uint8_t type = 0;
};

struct DeltaHeader {
  core::ByteOrder dataOrder = core::ByteOrder::Big;    // parameter and data sections
  core::ByteOrder headerOrder = core::ByteOrder::Big;  // the numbers of this header
  int dimensions = 0;
  ElementType elementType = ElementType::Float64;
  std::array<std::uint8_t, 2> axisType{};
  std::array<Unit, 2> unit{};
  std::array<std::int32_t, 2> points{};
  std::array<double, 2> start{}, stop{};
  std::array<double, 2> baseFrequency{};  // MHz
  std::array<std::string, 2> nucleus;
  std::string sampleId, comment, instrument;
  std::uint64_t parameterStart = 0, parameterLength = 0;
  std::uint64_t dataStart = 0, dataLength = 0;
};

// Nothing when the magic "JEOL.NMR" is missing. The header's numbers are taken in the order that
// byte 8 names when they fit the file, otherwise most significant byte first: current instruments
// write the header that way whatever byte 8 says.
std::optional<DeltaHeader> ReadDeltaHeader(core::Bytes bytes);

// True when the parameter section, or both sections, named by the header lie inside the file.
bool ParametersFit(const DeltaHeader& header, std::uint64_t fileSize);
bool SectionsFit(const DeltaHeader& header, std::uint64_t fileSize);
// Why the sections do not fit: "the file is truncated at byte N of the M that its header declares".
std::string SectionsFault(const DeltaHeader& h, std::uint64_t fileSize);

}  // namespace velk::formats::jeol
