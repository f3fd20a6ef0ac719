#pragma once
// Writing spectra as JCAMP-DX: 1D as XYDATA with this program's own parameter section, or as
// NTUPLES with a real and an imaginary page (both read back through ReadDataJCAMP); 2D as
// "nD NMR SPECTRUM" NTUPLES with one page per F1 row (read back through ReadDataJCAMP2D).
#include <filesystem>
#include <string>

#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::formats::jcamp {

// Code 0, or -1 with the reason when the set or the file cannot be written; the file is written
// through WriteAtomically, so a failed write keeps the old file.
platform::Outcome WriteDataJCAMPDX(const std::filesystem::path& file, const model::Spectrum1D& s);
platform::Outcome WriteDataJCAMPDX2(const std::filesystem::path& file, const model::Spectrum1D& s);
// The real plane; phaseSensitive names the acquisition scheme the file states.
platform::Outcome WriteDataJCAMPDX2D(const std::filesystem::path& file, const model::Spectrum2D& s,
                                     bool phaseSensitive);

}  // namespace velk::formats::jcamp
