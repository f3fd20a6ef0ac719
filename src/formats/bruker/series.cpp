// Pseudo-2D sets: relaxation and diffusion experiments store 1D FIDs one after the other along a
// list of delays, loop counts, pulses or gradient strengths, in a ser file like a true 2D set.
// They are known by their pulse program or by the list the spectrometer leaves beside the data.
#include <array>
#include <string_view>

#include "core/text.h"
#include "formats/bruker/routines.h"

namespace velk::formats::bruker {

std::string SeriesOf(const fs::path& experiment, const std::string& pulseProgram) {
  static constexpr std::array<std::string_view, 7> kPrograms{"T1IR", "T1RHO", "CPMG", "LEDBP", "STEBP", "DSTE", "DOSY"};
  static constexpr std::array<const char*, 4> kLists{"vdlist", "vclist", "vplist", "difflist"};
  const std::string program = core::ToUpper(pulseProgram);
  std::string named;
  for (std::string_view p : kPrograms)
    if (program.find(p) != std::string::npos) named = pulseProgram;
  for (const char* list : kLists)
    if (HasLength(Sibling(experiment, list))) named += (named.empty() ? "" : ", ") + std::string(list);
  return named;
}

}  // namespace velk::formats::bruker
