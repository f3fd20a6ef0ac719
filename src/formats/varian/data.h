#pragma once
// Varian data files: fid (raw) and data/phasefile (processed), a big-endian file header of 32
// bytes and a block header of 28 bytes before every block.
#include <filesystem>

#include "formats/varian/procpar.h"
#include "model/spectrum.h"

namespace velk::formats::varian {

// Each returns code 0, or -1 with the reason; the record is changed only on success. The
// parameters are those of the set's procpar; pulseModeClass is the class RMV gave.
platform::Outcome ReadDataVarian(const std::filesystem::path& file, const VarianParameters& p, model::Spectrum1D& s);
platform::Outcome ReadDataVarianProc(const std::filesystem::path& file, const VarianParameters& p,
                                     model::Spectrum1D& s);
platform::Outcome ReadDataVarian2D(const std::filesystem::path& file, const VarianParameters& p, int pulseModeClass,
                                   model::Spectrum2D& s);
platform::Outcome ReadDataVarianProc2D(const std::filesystem::path& file, const VarianParameters& p,
                                       model::Spectrum2D& s);

}  // namespace velk::formats::varian
