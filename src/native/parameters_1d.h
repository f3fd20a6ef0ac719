#pragma once
// The parameter block of a 1D section: 2560 bytes counted from its tag.
#include "model/spectrum.h"
#include "native/fields.h"

namespace velk::native {

void DecodeParameters1D(Bytes block, model::Spectrum1D& s);
std::vector<std::uint8_t> EncodeParameters1D(const model::Spectrum1D& s);

}  // namespace velk::native
