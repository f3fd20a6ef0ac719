#pragma once
// The 16-byte mode string that opens every stored data set: it records the class and the planes.
#include <string>
#include <string_view>

namespace velk::model {

// "2D HOMO PH RI" and its fellows for a 2D set of the given class; realOnly selects "RR".
// asMagnitude writes a phase-sensitive class as its absolute-value string.
std::string MakeModeString2D(int pulseModeClass, bool realOnly, bool asMagnitude = false);
inline constexpr std::string_view kModeString1D = "1D NORM NORM";

struct ModeStringMeaning {
  bool classKnown = false;  // false: the string leaves PulseModeClass unchanged
  int pulseModeClass = -1;
  bool realOnly = false;
};
// Read by character position: four characters at 3 ("HOMO"/"HETE"), five at 8 ("PH RI" ...).
ModeStringMeaning ReadModeString(std::string_view mode);

}  // namespace velk::model
