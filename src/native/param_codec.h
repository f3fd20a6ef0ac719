#pragma once
// One list of fields serves both directions: a parameter block's layout is written down once as a
// visit of the record, and the decoder and the encoder below walk it.
#include <cstdint>
#include <string>

#include "native/fields.h"

namespace velk::native {

// Fills the record from the block.
struct FieldDecoder {
  Bytes block;

  void Word(std::uint64_t at, std::int16_t& value) const { value = Read<std::int16_t>(block, at); }
  void Long(std::uint64_t at, std::int32_t& value) const { value = Read<std::int32_t>(block, at); }
  void Float(std::uint64_t at, float& value) const { value = Read<float>(block, at); }
  void Double(std::uint64_t at, double& value) const { value = Read<double>(block, at); }
  void Text(std::uint64_t at, std::size_t width, std::string& value) const { value = ReadText(block, at, width); }
  // A value read as 0 or less (or below 0 when zero is allowed) keeps what stood in the record.
  void FloatKept(std::uint64_t at, float& value, bool zeroAllowed) const {
    const float read = Read<float>(block, at);
    if (read > 0 || (zeroAllowed && read == 0)) value = read;
  }
};

// Writes the record into a block that already holds the carried bytes. Numbers are written as
// they are; a text is written only when it reads back differently, so that the bytes of a text
// written elsewhere (blanks, zeros inside) stay as they were when the user did not change it.
struct FieldEncoder {
  MutableBytes block;

  void Word(std::uint64_t at, std::int16_t value) const { Store(block, at, value); }
  void Long(std::uint64_t at, std::int32_t value) const { Store(block, at, value); }
  void Float(std::uint64_t at, float value) const { Store(block, at, value); }
  void Double(std::uint64_t at, double value) const { Store(block, at, value); }
  void Text(std::uint64_t at, std::size_t width, const std::string& value) const {
    if (ReadText(block, at, width) != value) StoreText(block, at, width, value);
  }
  void FloatKept(std::uint64_t at, float value, bool) const { Store(block, at, value); }
};

// "RGAIN" is stored as -1 when it is 32768 or more.
inline std::int32_t StoredGain(std::int32_t gain) { return gain >= 32768 ? -1 : gain; }

// The window function number is written as a word; old files hold a float or a long there.
std::int16_t ReadWindowNumber(Bytes block, std::uint64_t at);
void StoreWindowNumber(MutableBytes block, std::uint64_t at, std::int16_t number);

}  // namespace velk::native
