#pragma once
// A section "## 1D Data NN": one 1D data set with its parameters, data, texts and the sections
// of the 1D editor, which are carried unchanged.
#include <string>

#include "model/spectrum.h"
#include "native/fields.h"

namespace velk::native {

Entry Write1DSection(FileSink& sink, std::string_view tag, const model::Spectrum1D& s, const std::string& fileName);
// False when the block is not a 1D set ("1D NORM NORM" missing) or its data do not fit.
bool Read1DSection(Bytes file, Entry entry, model::Spectrum1D& s);

}  // namespace velk::native
