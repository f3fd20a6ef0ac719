#pragma once
// The compressed number forms of JCAMP-DX data tables (AFFN, PAC, SQZ, DIF, DUP): decoding of
// single items and whole lines, and encoding of value tables into lines of at most 80 characters.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace velk::formats::jcamp {

enum class AsdfForm { End, Absolute, Difference, Duplicate, Unknown, Error };

struct AsdfItem {
  AsdfForm form = AsdfForm::End;
  double value = 0;  // the number; for Difference the step; for Duplicate the total count
};

// Decodes the item that starts at position (after blanks, tabs and commas) of a NUL-terminated
// line and moves position past it. A "$" (checksum or comment) and the NUL end the line.
AsdfItem DecodeAsdf(const char* line, std::size_t& position);

// The running state of one data table while its lines are decoded.
struct AsdfTable {
  std::span<double> out;
  std::size_t index = 0;
  double last = 0;
  bool previousEndedInDif = false;

  bool Full() const { return index >= out.size(); }
};

// Decodes one data line (NUL-terminated): the first item is the X check and is dropped. After a
// line that ended in DIF form the first Y value repeats the last value (the Y check) and takes
// its place. Returns false on a character that fits no form.
bool DecodeAsdfLine(const char* line, AsdfTable& table);

enum class AsdfCode { Affn, Pac, Sqz, Dif, Dup };

// One number in the given form: SQZ, DIF and DUP replace the first digit by their character.
std::string EncodeAsdf(std::int64_t number, AsdfCode form);

inline constexpr std::size_t kAsdfLineLength = 80;

// The values in DIF/DUP form, one string per line without its line break. Every line starts with
// the X check firstX + k * xStep of its first value k and a blank; a line that ends in DIF form is
// followed by a line that repeats its last value first; the last such line holds the check alone.
std::vector<std::string> EncodeDifDupLines(std::span<const std::int64_t> values, std::int64_t firstX,
                                           std::int64_t xStep);

}  // namespace velk::formats::jcamp

#include "formats/text_lines.h"

namespace velk::formats::jcamp {

// Reads data lines into the table until it is full or a line begins with "#" or "$"; that line
// is left for the caller. Returns false on a line that does not decode.
bool ReadAsdfTable(TextCursor& cursor, AsdfTable& table);

}  // namespace velk::formats::jcamp
