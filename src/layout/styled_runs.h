#pragma once
// Coded text as runs of characters that share one look, the form a rich text control holds. The
// editor shows the runs of a text; what the person made goes back as RTF, which the RTF reader
// turns into the internal form, so that typed text and text pasted from a word processor take the
// same road.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "layout/rtf_text.h"

namespace velk::layout {

struct RunStyle {
  bool bold = false, italic = false, underline = false, strike = false;
  bool greek = false;      // the Symbol font: its letters are shown as Greek letters
  int script = 0;          // 1 superscript, -1 subscript
  std::string font;        // empty: the base font
  double points = 0;       // 0: the base size
  std::optional<std::uint32_t> color;  // none: the base colour (blue-green-red)
  friend bool operator==(const RunStyle&, const RunStyle&) = default;
};

// Text in UTF-8; a tab is '\t' and a line break '\n'. Greek runs hold the Greek letters themselves.
struct StyledRun {
  std::string text;
  RunStyle style;
  friend bool operator==(const StyledRun&, const StyledRun&) = default;
};

// The runs of a coded or plain text, up to its end mark. "\'" codes become their characters.
std::vector<StyledRun> RunsFromInternal(std::string_view text);

// An RTF document of the runs: font 0 the base font, font 1 Symbol for the Greek runs.
std::string RtfFromRuns(const std::vector<StyledRun>& runs, const BaseFont& base);

// The runs in the internal form with every look opened and closed like brackets, nested, and all
// closed at the end: the form the bracket notation can show without changing its meaning.
std::string NestedInternalFromRuns(const std::vector<StyledRun>& runs);

// The letters of a text as the Symbol font shows them (Greek), and back to the letters typed.
std::string GreekFromLatin(std::string_view text);
std::string LatinFromGreek(std::string_view text);

}  // namespace velk::layout
