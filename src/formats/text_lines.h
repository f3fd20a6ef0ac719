#pragma once
// Line reading and parameter-line splitting shared by every text-based reader (Bruker parameter
// files, JCAMP-DX, Varian procpar).
#include <array>
#include <optional>
#include <string>

#include "core/bytes.h"

namespace velk::formats {

// A read position in a file loaded whole.
struct TextCursor {
  core::Bytes bytes;
  std::size_t position = 0;

  bool AtEnd() const { return position >= bytes.size(); }
};

// One line: leading bytes below 32 are skipped (blank lines vanish), the line ends at byte 10 or
// 13, a Shift-JIS lead byte (129-159, 224-252) takes the next byte with it, single bytes 1-128 and
// 160-223 are kept, and anything else is dropped. At the end of the file the line is empty.
// The bytes stay Shift-JIS; callers decode text values they keep.
std::string ReadTextLine(TextCursor& cursor);

// The number (from 1) of the line that holds the first byte at or after position that is no
// control character: the line a message names.
std::size_t LineNumberAt(const TextCursor& cursor, std::size_t position);

inline constexpr int kParameterValues = 32;
using ParameterValues = std::array<std::string, kParameterValues>;

// Splits "key= value" into the key (its case as in the file) and values: a "<text>" value loses
// its brackets; a "(first..last)" value announces an array that continues on the following lines
// for the keys "##$P", "##$D", "##$CNST" and "##$IN" (stored from the first index on, up to 31).
// values must hold the previous line's values or be empty; values[0] is always overwritten.
void SplitParameterLine(const std::string& line, TextCursor& cursor, std::string& key, ParameterValues& values);

// The plain string-to-number conversion of parameter values: nothing when the text is no number.
std::optional<double> ParseNumber(const std::string& text);

}  // namespace velk::formats
