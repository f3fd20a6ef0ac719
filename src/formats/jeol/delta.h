#pragma once
// The JEOL Delta reader (ECP, ECA and Delta software, "*.jdf"): header, parameter records and
// data of 1D and 2D files, FIDs and processed spectra.
#include <filesystem>

#include "model/format_entry.h"
#include "model/spectrum.h"

namespace velk::formats::jeol {

// "How to Read Comments of JEOL Delta".
enum class DeltaCommentMode {
  Separate = 0,          // Sample ID ==> Sample ID, Comment ==> Comment
  SampleIdAsComment = 1, // Sample ID ==> Comment, Comment ==> Comment of Experiment (ExpCm)
  Joined = 2,            // Sample ID + Comment ==> Comment
};

struct DeltaOptions {
  DeltaCommentMode comments = DeltaCommentMode::Separate;
  bool fidBaseline = false;  // "BaseLine Correction of FID": subtract each row's tail level on reading
};

// 0 on success; 1 with a message when the data are refused; -1 when the file cannot be read or
// is no Delta file. The record is changed only on success.
platform::Outcome ReadDataDelta(const std::filesystem::path& path, model::Spectrum1D& spectrum,
                                model::ReadContext& context, const DeltaOptions& options = {});
platform::Outcome ReadData2DDelta(const std::filesystem::path& path, model::Spectrum2D& spectrum,
                                  model::ReadContext& context, const DeltaOptions& options = {});

// The header probe of the type detector: "1D ..." or a 2D mode text whose prefix names the class
// ("VPH_HETERO:" + experiment ...), FID or spectrum by the X axis unit.
model::ModeResult ReadModeDelta(const model::DetectedFile& file);

model::FormatEntry DeltaFormatEntry();

}  // namespace velk::formats::jeol
