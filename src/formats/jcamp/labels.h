#pragma once
// Label lines of JCAMP-DX files: "##KEY= values" and "$$ comment" lines.
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "formats/text_lines.h"

namespace velk::formats::jcamp {

inline constexpr std::size_t kJcampValues = 101;  // indices 0 to 100

struct JcampLabel {
  std::string key;                  // upper case, blanks inside kept ("##DATA TYPE"); empty for data lines
  std::vector<std::string> values;  // upper case, split at commas, blanks and tabs
};

// Keeps lines that begin "##" or "$$". The key runs to the first tab or "="; the values are the
// parts of the rest, up to a "$$" comment.
JcampLabel SplitJcampLabel(std::string_view line);

// The text after "=" in its original case, trimmed, without a trailing "$$" comment.
std::string JcampLabelText(std::string_view line);

// Text as the standard compares labels and their fixed values: blanks, "-", "_" and "/" do not
// count and case is folded, so that "##DATATYPE=NMRSPECTRUM" is "##DATA TYPE= NMR SPECTRUM".
std::string CompactJcampText(std::string_view text);

// The key as the label grammar compares it (CompactJcampText), so that "##LONGDATE" is
// "##LONG DATE" and "##JCAMPDX" is "##JCAMP-DX". Keys of "##$" are only upper-cased: vendors'
// own keys differ by their underscores ("##$SW_h" is not "##$SWH").
std::string CompactJcampKey(std::string_view key);

// The first value as a number, or fallback when there is none.
double JcampNumber(const JcampLabel& label, std::size_t index, double fallback = 0);

// Reads label lines up to "##END" or the end of the file and calls visit(key, label, line) with
// the compact key, the split label and the trimmed line; visit returns false to stop early.
// Returns true when "##END" was reached.
template <class Visit>
bool ForEachJcampLabel(TextCursor& cursor, Visit visit) {
  for (;;) {
    const std::string line = core::Trim(ReadTextLine(cursor));
    if (line.empty()) return false;
    const JcampLabel label = SplitJcampLabel(line);
    if (label.key.empty()) continue;
    const std::string key = CompactJcampKey(label.key);
    if (key == "##END") return true;
    if (!visit(key, label, line)) return false;
  }
}

}  // namespace velk::formats::jcamp
