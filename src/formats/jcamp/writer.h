#pragma once
// Writing 1D spectra as JCAMP-DX: XYDATA with this program's own parameter section, and NTUPLES
// with a real and an imaginary page. Both read back through ReadDataJCAMP.
#include <filesystem>
#include <string>

#include "model/spectrum.h"

namespace velk::formats {

// Return 0, or -1 with the reason when the file cannot be written (the old file is then kept).
int WriteDataJCAMPDX(const std::filesystem::path& file, const model::Spectrum1D& s, std::string& reason);
int WriteDataJCAMPDX2(const std::filesystem::path& file, const model::Spectrum1D& s, std::string& reason);

}  // namespace velk::formats
