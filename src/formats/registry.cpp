#include "formats/registry.h"

#include <array>

namespace velk::formats {

model::FormatTable Formats() {
  // One entry per extension word; formats whose reader has not been written have no entry, and
  // the detector then answers "ERR" with that reason.
  static const std::array<model::FormatEntry, 0> kEntries{};
  return kEntries;
}

}  // namespace velk::formats
