#include "formats/registry.h"

#include <array>

#include "formats/jcamp/reader.h"
#include "formats/varian/entry.h"
#include "native/ver4_file.h"

namespace velk::formats {

model::FormatTable Formats() {
  // One entry per extension word; formats whose reader has not been written have no entry, and
  // the detector then answers "ERR" with that reason.
  static const std::array kEntries{
      model::FormatEntry{".DX", model::kJcamp, ReadModeJcampEntry, ReadJcamp2DEntry, ReadJcamp1DEntry},
      model::FormatEntry{".JDX", model::kJcamp, ReadModeJcampEntry, ReadJcamp2DEntry, ReadJcamp1DEntry},
      model::FormatEntry{".VARF", model::kVarian, ReadModeVarianFid, ReadVarian2DFid, ReadVarian1DFid},
      model::FormatEntry{".VARD", model::kVarian, ReadModeVarianData, ReadVarian2DData, ReadVarian1DData},
      model::FormatEntry{".VLK1", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4},
      model::FormatEntry{".VLK2", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4},
  };
  return kEntries;
}

}  // namespace velk::formats
