#pragma once
// Reading JCAMP-DX files: the header probe of the type detector, the 1D reader (spectra and FIDs
// in XYDATA or NTUPLES form) and the reader of 2D spectra written as "nD NMR SPECTRUM" NTUPLES.
#include <filesystem>
#include <string>

#include "model/format_entry.h"
#include "model/spectrum.h"

namespace velk::formats::jcamp {

// "1D:" and the pulse program for a 1D file; for a 2D spectrum a class name ("V_HOMO",
// "VPH_HETERO" ...), ":" and the pulse sequence. Code 1 and "ERR" for a file without the
// "##JCAMP-DX" label.
model::ModeResult ReadModeJCAMP(const std::filesystem::path& file);

// Code 0, or -1 with the reason for a file that is no 1D NMR data set or is damaged; the record is
// changed only on success.
platform::Outcome ReadDataJCAMP(const std::filesystem::path& file, model::Spectrum1D& s);

// The real plane of an "nD NMR SPECTRUM" with two dimensions. Code 0 or -1 with the reason.
platform::Outcome ReadDataJCAMP2D(const std::filesystem::path& file, model::Spectrum2D& s);

// The entries of the format table.
model::ModeResult ReadModeJcampEntry(const model::DetectedFile& file);
platform::Outcome ReadJcamp1DEntry(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context);
platform::Outcome ReadJcamp2DEntry(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context);

}  // namespace velk::formats::jcamp
