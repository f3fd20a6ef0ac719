#pragma once
// A user's own file extensions tied to data types ("USER EXTENSION DEF" for 2D, "USER EXTENSION
// 1D D" for 1D). Each entry of the list is "name;pattern;code", e.g. "Lab ECP;*.nmr;&H2003": the
// code is one of the settings' data type codes (&H2000 Alice ... &H2006 Varian).
#include <string>
#include <vector>

#include "model/type_detector.h"
#include "platform/prompt.h"

namespace velk::core {

inline constexpr std::size_t kUserExtensionSlots = 6;

// The entries that parse, at most six; an entry with an unknown code is skipped.
std::vector<model::UserExtension> ParseUserExtensions(const std::vector<std::string>& entries);
// The Open dialog's extra filters: "name(pattern)" with the pattern.
std::vector<platform::FileFilter> UserExtensionFilters(const std::vector<model::UserExtension>& extensions);

}  // namespace velk::core
