#pragma once
// The bracket notation the user types in the "Text Input" box: "\i(" ... ")" italic, "\-(" ... ")"
// subscript, "\g(" ... ")" Greek, "\f:Arial(" ... ")", "\p12(" ... ")", "\cFF(" ... ")" and so on.
// Ordinary brackets are counted, so that a ")" closes the right thing.
#include <string>
#include <string_view>

namespace velk::layout {

// The most brackets that are open at once; deeper ones are not remembered.
inline constexpr int kBracketDepth = 100;

// The internal form of typed text. A string already in the internal form is returned as it is.
// An unclosed bracket stays open to the end of the string.
std::string InternalFromBracket(std::string_view text);
// The bracket notation of an internal string; a plain string is returned as it is.
std::string BracketFromInternal(std::string_view text);

}  // namespace velk::layout
