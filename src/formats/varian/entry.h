#pragma once
// The Varian entries of the format table.
#include "model/format_entry.h"

namespace velk::formats::varian {

model::ModeResult ReadModeVarianFid(const model::DetectedFile& file);
model::ModeResult ReadModeVarianData(const model::DetectedFile& file);
platform::Outcome ReadVarian1DFid(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context);
platform::Outcome ReadVarian1DData(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context);
platform::Outcome ReadVarian2DFid(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context);
platform::Outcome ReadVarian2DData(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context);

}  // namespace velk::formats::varian
