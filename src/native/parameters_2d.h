#pragma once
// The parameter block of the 2D section: 2560 bytes counted from its tag.
#include "model/spectrum.h"
#include "native/fields.h"

namespace velk::native {

inline constexpr std::size_t kParameterBlockSize = 2560;

// Fills the record from the block (the block starts at the tag). Fields the file gives as 0 or
// less where that means "not set" keep the record's value.
void DecodeParameters2D(Bytes block, model::Spectrum2D& s);
// The block to write: the carried bytes of the record (or zeros) with every field of the record
// written over them.
std::vector<std::uint8_t> EncodeParameters2D(const model::Spectrum2D& s);

// The solvent field's history: 8 bytes at one place, a longer name split over two fields.
std::string ReadSolvent2D(Bytes block);
void StoreSolvent2D(MutableBytes block, const std::string& solvent);

}  // namespace velk::native
