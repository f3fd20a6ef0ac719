#include "model/mode_string.h"

#include <array>

#include "model/data_type.h"

namespace velk::model {
namespace {

struct ModeRow {
  std::string_view text;
  int pulseModeClass;
  bool realOnly;
};

constexpr std::array<ModeRow, 7> kRows{{
    {"2D HOMO PH RI", VPH_HOMO, false},
    {"2D HOMO PH RR", VPH_HOMO, true},
    {"2D HOMO AB AB", V_HOMO, true},
    {"2D HETE PH RI", VPH_HETERO, false},
    {"2D HETE PH RR", VPH_HETERO, true},
    {"2D HETE AB RR", VPH_HMBC, true},
    {"2D HETE AB AB", V_HETERO, true},
}};

}  // namespace

std::string MakeModeString2D(int pulseModeClass, bool realOnly, bool asMagnitude) {
  switch (pulseModeClass) {
    case VPH_HOMO:
      if (asMagnitude) return "2D HOMO AB AB";
      return realOnly ? "2D HOMO PH RR" : "2D HOMO PH RI";
    case V_HOMO: return "2D HOMO AB AB";
    case VPH_HMBC: return "2D HETE AB RR";
    case VPH_HETERO:
      if (asMagnitude) return "2D HETE AB AB";
      return realOnly ? "2D HETE PH RR" : "2D HETE PH RI";
    case V_HETERO: return "2D HETE AB AB";
    default: return "2D HOMO AB AB";
  }
}

ModeStringMeaning ReadModeString(std::string_view mode) {
  ModeStringMeaning meaning;
  const std::string_view kind = mode.size() >= 7 ? mode.substr(3, 4) : std::string_view{};
  if (kind != "HOMO" && kind != "HETE") return meaning;
  const std::string_view planes = mode.size() >= 13 ? mode.substr(8, 5) : mode.substr(std::min<size_t>(8, mode.size()));
  meaning.classKnown = true;
  // "AB RR" under "HOMO" is no class at all, deliberately.
  if (kind == "HOMO" && planes == "AB RR") {
    meaning.pulseModeClass = kUnknownClass;
    meaning.realOnly = true;
    return meaning;
  }
  for (const ModeRow& row : kRows) {
    if (row.text.substr(3, 4) == kind && row.text.substr(8, 5) == planes) {
      meaning.pulseModeClass = row.pulseModeClass;
      meaning.realOnly = row.realOnly;
      return meaning;
    }
  }
  meaning.pulseModeClass = kUnknownClass;
  return meaning;
}

}  // namespace velk::model
