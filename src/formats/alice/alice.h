#pragma once
// The 1D files of JEOL's Alice program (".als"): a version mark, a pointer table, a parameter
// block and the data, all numbers least significant byte first.
#include <filesystem>

#include "model/format_entry.h"
#include "model/spectrum.h"

namespace velk::formats::alice {

inline constexpr const char* kAliceMarkRead = "WIN NMR VERSION 1.00";   // at 82: no shift
inline constexpr const char* kAliceMarkWritten = "WIN NMR VERSION 1.01"; // at 258: shift 176

// 0 on success; 1 with a message when the file is refused (the record is then unchanged); -1
// when it cannot be read.
platform::Outcome ReadDataAlice(const std::filesystem::path& path, model::Spectrum1D& spectrum,
                                model::ReadContext& context);

// Writes the set in the layout with the mark "WIN NMR VERSION 1.01", to a temporary name first and
// then under its own name. processed says whether the set is a spectrum or a FID.
platform::Outcome WriteDataALS(const std::filesystem::path& path, const model::Spectrum1D& spectrum, bool processed);

model::ModeResult ReadModeAlice(const model::DetectedFile& file);
model::FormatEntry AliceFormatEntry();

}  // namespace velk::formats::alice
