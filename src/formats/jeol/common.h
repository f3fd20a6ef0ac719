#pragma once
// What the 1D and 2D Delta readers share: loading, the domain decision, axes, the frequency split
// and the comment fields.
#include <filesystem>
#include <vector>

#include "formats/jeol/delta.h"
#include "formats/jeol/header.h"
#include "formats/jeol/params.h"

namespace velk::formats::jeol {

struct DeltaFile {
  std::vector<std::uint8_t> bytes;
  DeltaHeader header;
  std::vector<DeltaRecord> records;
};

// Loads the whole file and reads header and records. Code -1 when the file cannot be read or the
// magic is wrong, 1 with invalidText when the sections do not fit the file.
platform::Outcome LoadDeltaFile(const std::filesystem::path& path, DeltaFile& file, const char* invalidText);

// The data-domain question: 0 for a FID, anything else for a spectrum. The FID is the preset
// answer, which a cancelled question keeps.
int AskDataDomain(platform::Prompt& prompt);
// FID or spectrum by the X axis unit; any other unit is a question to the user.
bool IsSpectrumDomain(const DeltaHeader& header, platform::Prompt& prompt);

// The header's values of both axes before the records are applied.
DeltaSettings SettingsFromHeader(const DeltaHeader& header);

// One axis after the conversion of the header's start and stop values.
struct AxisExtent {
  double start = 0, stop = 0;  // ppm for a spectrum, seconds for a FID
  bool hertz = false;          // the axis was in Hz (its width rules differ)
  double startRaw = 0, stopRaw = 0;  // as the header has them, after the prefix
  std::int32_t refIndex = 0;
};
// Hz axes become ppm by the observe frequency; the offset becomes the stop value in ppm.
AxisExtent ConvertAxis(const DeltaHeader& header, int axis, bool spectrum, double frequencyMHz, DeltaAxis& settings);

// The observe frequency split into the 10 kHz base, a coarse offset in kHz and a fine one in Hz.
struct FrequencySplit {
  double coarseKHz = 0;
  float fineHz = 0;
};
FrequencySplit SplitFrequency(double frequencyMHz);

// Width and resolution of one axis. False when the set must be refused.
struct AxisWidth {
  double sweepHz = 0;
  double hzPerPoint = 0;
  double acquisitionTime = 0;
  std::int32_t refIndex = 0;
};
bool WidthOfSpectrumAxis(const AxisExtent& extent, const DeltaAxis& axis, std::int32_t points,
                         std::int32_t stepPoints, AxisWidth& width);
bool WidthOfFidAxis(const AxisExtent& extent, const DeltaAxis& axis, std::int32_t points, AxisWidth& width);

// The spectrometer frequency of a spectrum: the frequency at 0 ppm seen from the reference point.
double SpectrumFrequency(const AxisWidth& width, std::int32_t points, double sfoMHz, double offsetPpm);

// The sample ID and comment fields by the option.
void ApplyComments(const DeltaHeader& header, DeltaCommentMode mode, model::DescriptiveTexts& texts,
                   std::string& comment, model::NmrParameters& p);

// Texts and values both readers set the same way once the file was accepted.
void FillCommonFields(const std::filesystem::path& path, const DeltaFile& file, const DeltaSettings& settings,
                      const DeltaOptions& options, model::DescriptiveTexts& texts, std::string& comment,
                      model::NmrParameters& p);

}  // namespace velk::formats::jeol
