#pragma once
// Coded text to rich text and back, for the rich text editors and for text pasted from a word
// processor.
#include <cstdint>
#include <string>
#include <string_view>

namespace velk::layout {

// The font and colour the text is written in when no code says otherwise.
struct BaseFont {
  std::string name = "Arial";
  double points = 10;
  std::uint32_t color = 0;  // blue-green-red
};

// An RTF document of the text. Font 0 is the base font and font 1 Symbol (for the Greek codes);
// colour 1 is the base colour, and every "\c:" gets its own entry after it.
std::string RtfFromInternal(std::string_view text, const BaseFont& base);

// The internal form of an RTF document, ending with the end mark. A text that doesn't begin
// "{\rtf" is plain text and is returned as it is. The size set at the head is taken as the base
// size; sizes, fonts and colours equal to the base give the off-codes.
std::string InternalFromRtf(std::string_view rtf, const BaseFont& base);

}  // namespace velk::layout
