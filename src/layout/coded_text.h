#pragma once
// Coded text: every label, comment and parameter line is one string that can carry Greek letters,
// super- and subscripts, font, size and colour changes. A string in the internal form begins with
// "\<"; a control is a backslash, two characters and the blank that belongs to it ("\i1 ",
// "\f:Arial: ", "\c:&HFF: "). A string without the start mark is plain text, in which a backslash
// is an ordinary character.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velk::layout {

enum class CodeKind {
  Text,       // a run of characters (a "\\" is one backslash in it)
  Hex,        // "\'b4": one character by its code, in value
  Start,      // "\<"
  End,        // "\>": nothing after it is drawn
  Italic,     // on/off
  Bold,
  Underline,
  Strike,
  Super,      // "\+1 ", "\+0 "
  Sub,        // "\-1 ", "\-0 "
  Over,       // "\d1 ": the overscript opened by "\=("; a "," inside it separates the two parts
  Greek,      // the Symbol font on/off
  Font,       // "\f:" name ": " (on) or "\f0 " (off)
  Size,       // "\p:" points ": " (on) or "\p0 " (off)
  Color,      // "\c:&H" digits ": " (on) or "\c0 " (off)
  Tab,        // "\tb "
  LineBreak,  // "\cr "
};

struct Code {
  CodeKind kind = CodeKind::Text;
  bool on = true;          // for the switches; an off-code has on = false
  std::string text;        // Text: the characters; Font: the name
  double value = 0;        // Hex: the character code; Size: points; Color: the blue-green-red word
  friend bool operator==(const Code&, const Code&) = default;
};

inline constexpr std::string_view kStartMark = "\\< ";

// True when the string is in the internal form.
bool IsCoded(std::string_view text);

// The codes of a string. Plain text comes as one Text code; unknown controls are skipped with their
// two characters; adjacent characters are joined into one Text code.
std::vector<Code> ParseCodedText(std::string_view text);
// The internal form of a list of codes, starting with the start mark when the list holds one.
std::string WriteCodedText(const std::vector<Code>& codes);
// One code as it stands in the internal form.
std::string WriteCode(const Code& code);

// The plain text: all controls removed, a "\'" code kept as its character (Latin-1, as UTF-8),
// "\cr " a line end. The first line goes to `first`, everything after it to `rest`.
struct StrippedText {
  std::string first;
  std::string rest;
};
StrippedText StripCodes(std::string_view text);

// Appends one character, by its code point, in UTF-8.
void AppendUtf8(std::string& out, char32_t cp);

// Size and colour as they are written inside their controls: "10", "10.5"; "&HFF".
std::string FormatPoints(double points);
std::string FormatColorWord(std::uint32_t color);

}  // namespace velk::layout
