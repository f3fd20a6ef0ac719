#pragma once
// Where the fields of an Alice file lie. The reader and the writer go through the same table, so
// that the writer puts back exactly what the reader takes.
#include <cstdint>
#include <span>
#include <string>
#include <variant>

#include "model/spectrum.h"

namespace velk::formats::alice {

inline constexpr std::uint32_t kShiftNew = 176;  // files marked at 258
inline constexpr std::uint32_t kMarkOld = 82;
inline constexpr std::uint32_t kMarkNew = 258;
inline constexpr std::size_t kMarkLength = 20;

// The pointer table, from the shift on.
inline constexpr std::uint32_t kFirstSection = 146, kFirstSectionLength = 150, kParameterStart = 154,
                               kDataStart = 162, kDataLength = 166, kPointTable = 170, kPointTableLength = 174,
                               kNextSection = 178, kNextSectionLength = 182;

// The parameter block, from its start P (and the shift where the field says so).
inline constexpr std::uint32_t kPoints = 698, kDomain = 786;
inline constexpr std::uint32_t kBlockEnd = 868;        // P + S + this must lie in the file
inline constexpr std::uint32_t kBlockEndNew = 1216;    // and, in shifted files, P + this
inline constexpr std::uint32_t kPointTableBytes = 96;  // name at 0, scale word at 80, keyword at 90

using FloatField = float& (*)(model::Spectrum1D&);
using LongField = std::int32_t& (*)(model::Spectrum1D&);
using WordField = std::int16_t& (*)(model::Spectrum1D&);
using TextField = std::string& (*)(model::Spectrum1D&);

enum class Files { All, Unshifted, Shifted };

struct Field {
  std::uint32_t offset;
  bool shifted;          // the offset adds the shift
  Files files;           // which files hold the field
  std::uint32_t width;   // bytes of a text field
  std::variant<FloatField, LongField, WordField, TextField> target;
};

std::span<const Field> ParameterFields();

}  // namespace velk::formats::alice
