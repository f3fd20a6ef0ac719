#include "formats/registry.h"

#include <vector>

#include "formats/alice/alice.h"
#include "formats/bruker/bruker.h"
#include "formats/jcamp/reader.h"
#include "formats/jeol/delta.h"
#include "formats/varian/entry.h"
#include "native/ver4_file.h"

namespace velk::formats {

model::FormatTable Formats() {
  // One entry per extension word; formats whose reader has not been written have no entry, and
  // the detector then answers "ERR" with that reason.
  static const std::vector<model::FormatEntry> kEntries{
      {".VLK1", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4},
      {".VLK2", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4},
      {".BRUF", model::kBruker, bruker::ReadModeBruker, bruker::ReadBruker2D, bruker::ReadBruker1D},
      {".BRUD", model::kBruker, bruker::ReadModeBruker, bruker::ReadBruker2D, bruker::ReadBruker1D},
      jeol::DeltaFormatEntry(),
      alice::AliceFormatEntry(),
      {".DX", model::kJcamp, jcamp::ReadModeJcampEntry, jcamp::ReadJcamp2DEntry, jcamp::ReadJcamp1DEntry},
      {".JDX", model::kJcamp, jcamp::ReadModeJcampEntry, jcamp::ReadJcamp2DEntry, jcamp::ReadJcamp1DEntry},
      {".VARF", model::kVarian, varian::ReadModeVarianFid, varian::ReadVarian2DFid, varian::ReadVarian1DFid},
      {".VARD", model::kVarian, varian::ReadModeVarianData, varian::ReadVarian2DData, varian::ReadVarian1DData},
  };
  return kEntries;
}

}  // namespace velk::formats
