#pragma once
#include "model/format_entry.h"

namespace velk::formats {

// Every format the program reads: its extension word, header probe and readers.
model::FormatTable Formats();

}  // namespace velk::formats
