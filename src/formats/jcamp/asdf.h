#pragma once
// The compressed number forms of JCAMP-DX data tables (AFFN, PAC, SQZ, DIF, DUP): decoding of
// single items and whole lines, and encoding of value tables into lines of at most 80 characters.
#include <cstddef>
#include <cstdint>
#include <optional>
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

// What stopped the decoding of a table.
enum class AsdfFault { None, BadCharacter, Abscissa, Ordinate, TooManyValues };

// The running state of one data table while its lines are decoded. index counts the values
// decoded; those beyond the table are a fault. A table without out only counts its values, so
// that a declared size is checked against the file before anything is allocated for it.
struct AsdfTable {
  std::span<double> out;
  std::size_t limit = 0;  // without out: the values counted, not stored, up to this many
  std::size_t index = 0;
  double last = 0;
  bool previousEndedInDif = false;
  // The X check: the abscissa of a line's first value advances by xStep (in the file's X units)
  // per value from what the first line gave; 0 checks nothing.
  double xStep = 0;
  std::optional<double> xOrigin = std::nullopt;
  AsdfFault fault = AsdfFault::None;

  std::size_t Size() const { return out.empty() ? limit : out.size(); }
  bool Full() const { return index >= Size(); }
};

// Decodes one data line (NUL-terminated). The first item is the X check: it must lie within half
// a step (at least one unit, for writers that round it) of where the line's first value belongs.
// After a line that ended in DIF form the first Y value repeats the last value (the Y check),
// must equal it, and takes its place. Returns false with the fault set on a character that fits
// no form, a failed check or a value beyond the table.
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

// Reads data lines into the table until a line begins with "#" or "$" (left for the caller) or
// the file ends. Returns false on a line that does not decode; faultLine is then its position.
bool ReadAsdfTable(TextCursor& cursor, AsdfTable& table, std::size_t* faultLine = nullptr);

// What a fault is, for a message: "the abscissa check fails: a line is missing".
std::string AsdfFaultText(AsdfFault fault, std::size_t declared);

}  // namespace velk::formats::jcamp
