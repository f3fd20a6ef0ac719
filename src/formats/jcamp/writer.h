#pragma once
// Writing 1D spectra as JCAMP-DX: XYDATA with this program's own parameter section, and NTUPLES
// with a real and an imaginary page. Both read back through ReadDataJCAMP.
#include <filesystem>
#include <string>

#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::formats::jcamp {

// Code 0, or -1 with the reason when the set or the file cannot be written; the file is written
// through WriteAtomically, so a failed write keeps the old file.
platform::Outcome WriteDataJCAMPDX(const std::filesystem::path& file, const model::Spectrum1D& s);
platform::Outcome WriteDataJCAMPDX2(const std::filesystem::path& file, const model::Spectrum1D& s);

}  // namespace velk::formats::jcamp
