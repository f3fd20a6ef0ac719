#include "formats/registry.h"

#include <array>

#include "formats/jcamp/reader.h"

namespace velk::formats {

model::FormatTable Formats() {
  // One entry per extension word; formats whose reader has not been written have no entry, and
  // the detector then answers "ERR" with that reason.
  static const std::array kEntries{
      model::FormatEntry{".DX", model::kJcamp, ReadModeJcampEntry, ReadJcamp2DEntry, ReadJcamp1DEntry},
      model::FormatEntry{".JDX", model::kJcamp, ReadModeJcampEntry, ReadJcamp2DEntry, ReadJcamp1DEntry},
  };
  return kEntries;
}

}  // namespace velk::formats
