#pragma once
// The Bruker reader as the format table sees it: raw data (".BRUF": the path of ser or fid) and
// processed data (".BRUD": the path of 2rr or 1r), each with its probe and its readers.
#include "model/format_entry.h"

namespace velk::formats::bruker {

model::ModeResult ReadModeBruker(const model::DetectedFile& file);
platform::Outcome ReadBruker2D(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context);
platform::Outcome ReadBruker1D(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context);

}  // namespace velk::formats::bruker
