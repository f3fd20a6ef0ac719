#include "formats/registry.h"

#include "formats/alice/alice.h"
#include "formats/jeol/delta.h"

namespace velk::formats {

model::FormatTable Formats() {
  // One entry per extension word; formats whose reader has not been written have no entry, and
  // the detector then answers "ERR" with that reason.
  static const model::FormatEntry kEntries[] = {
      DeltaFormatEntry(),
      AliceFormatEntry(),
  };
  return kEntries;
}

}  // namespace velk::formats
