#pragma once
// What a save writes: all four planes, the real plane only, or the power spectrum; the mode
// string that says so; and the choice the user makes between them.
#include <optional>
#include <string>
#include <vector>

#include "model/spectrum.h"
#include "native/block_2d.h"
#include "platform/prompt.h"

namespace velk::native {

enum class SaveMode : int { AllPlanes = 0, RealOnly = 1, PowerSpectrum = 2 };

// The planes and mode string for the set of the given class; realOnly: only RR holds data.
// Classes 0 and 3 keep four planes when all are saved; class 2 saves sqrt(RR^2 + IR^2);
// the power spectrum is sqrt(RR^2 + IR^2 + RI^2 + II^2); classes 1 and 4 keep RR alone.
PlaneSet MakePlaneSet(const model::Spectrum2D& s, int pulseModeClass, bool realOnly, SaveMode mode);

// The size dialog as the logic sees it.
struct SaveSizeDialog {
  std::string title;
  std::vector<std::string> options;  // all planes, real only
  int preset = 0;                    // the option chosen at the start
  std::string recommendation;        // empty unless the data were symmetrized or baseline corrected
};
SaveSizeDialog MakeSaveSizeDialog(std::int32_t f2Points, std::int32_t f1Points, std::int16_t modified);
// A size in megabytes in the format "###0.0#".
std::string MegabyteText(double megabytes);

struct SaveSituation {
  int pulseModeClass = -1;
  bool realOnly = false;
  bool magnitudeDisplay = false;
  std::int16_t modified = 0;
  std::int32_t f2Points = 0, f1Points = 0;
};
// Asks the user what to save where a choice exists; nothing when the user cancelled.
std::optional<SaveMode> ChooseSaveMode(platform::Prompt& prompt, const SaveSituation& situation);

}  // namespace velk::native
