#pragma once
// DataTypeCode: dimension in bits 12-15, processed flag in bit 8, format number in the low byte.
#include <cstdint>
#include <optional>
#include <string_view>

namespace velk::model {

using DataTypeCode = std::int32_t;
inline constexpr DataTypeCode kUnknownType = -1;
inline constexpr DataTypeCode kProcessedBit = 0x100;

enum FormatNumber : int {
  kAlice = 0, kJeolGx = 1, kLambda = 2, kDelta = 3, kBruker = 4, kAlpha = 5, kVarian = 6,
  kNuts = 7, kBrukerAspect = 8, kCmx = 9, kGe = 10, kVer3 = 11, kVer4 = 12, kJcamp = 13,
  kCsv = 14, kMsl = 15, kSiemens = 16, kMacImport = 17, kFormatCount = 18
};

constexpr int Dimension(DataTypeCode code) { return code < 0 ? 0 : (code >> 12) & 0xF; }
constexpr bool IsProcessed(DataTypeCode code) { return code >= 0 && (code & kProcessedBit) != 0; }
constexpr int FormatOf(DataTypeCode code) { return code < 0 ? -1 : code & 0xFF; }
constexpr DataTypeCode MakeTypeCode(int dimension, bool processed, int format) {
  return (dimension << 12) | (processed ? kProcessedBit : 0) | format;
}
// A code handed to the 1D program: its value with the low 12 bits cleared is 0x1000.
constexpr bool IsOneDimensional(DataTypeCode code) { return code >= 0 && (code & ~0xFFF) == 0x1000; }

// The detector's tags per format: 2D FID, 2D spectrum, 1D (empty where a format has none).
struct FormatTags {
  std::string_view fid2D, spectrum2D, oneD;
  std::string_view name;  // the data type text a reader writes into the record
};
const FormatTags& TagsOf(int format);
// The tag of a code, or "ERR" for an unknown code.
std::string_view TagOf(DataTypeCode code);

enum PulseModeClass : int {
  kUnknownClass = -1, VPH_HOMO = 0, V_HOMO = 1, VPH_HMBC = 2, VPH_HETERO = 3, V_HETERO = 4
};

// Phase-sensitive classes keep the imaginary parts through the transform.
constexpr bool IsPhaseSensitive(int c) { return c == VPH_HOMO || c == VPH_HMBC || c == VPH_HETERO; }
// Homonuclear classes have one frequency on both axes.
constexpr bool IsHomonuclear(int c) { return c == VPH_HOMO || c == V_HOMO; }
constexpr bool IsHeteronuclear(int c) { return c == VPH_HMBC || c == VPH_HETERO || c == V_HETERO; }
// The class of the same kind of experiment processed the other way ("PHA" or "ABS"): HMBC
// counts with the heteronuclear classes.
constexpr int ClassForMethod(int c, bool phaseSensitive) {
  if (c == kUnknownClass || IsPhaseSensitive(c) == phaseSensitive) return c;
  if (phaseSensitive) return IsHomonuclear(c) ? VPH_HOMO : VPH_HETERO;
  return IsHomonuclear(c) ? V_HOMO : V_HETERO;
}

}  // namespace velk::model
