#pragma once
// Numbers as the page prints them: fixed patterns of the parameter list ("####0.0##") and the
// mantissa-exponent form with a raised exponent in the text codes.
#include <string>
#include <string_view>

namespace velk::layout {

// A pattern of digit places: "0" always written, "#" written when needed, one optional ".":
// "####0.0##" gives at least one whole digit and one to three decimals.
std::string FormatNumber(double value, std::string_view pattern);

// How the exponent form writes its times sign and minus: as the typographic signs, or as the
// plain "x" and "-" for fonts that lack them.
enum class ExponentSigns { Symbol, Plain };

// Values whose decimal exponent lies between -3 and 3 come as plain decimals ("12.5", "0.0012",
// "3.0"; digits 0 gives a whole number); others as a mantissa with `digits` decimals (at most 5)
// times a power of ten, the exponent raised with "\+1 " ... "\+0 ": "1.50×10\+1 -5\+0 ".
std::string FormatPlainOrExp(double value, int digits, ExponentSigns signs);

}  // namespace velk::layout
