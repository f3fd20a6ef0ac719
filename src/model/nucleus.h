#pragma once
#include <string>
#include <string_view>

namespace velk::model {

// The canonical spelling of a nucleus name: "proton", "H1", " h " all give "1H".
std::string NormalizeNucleus(std::string_view text);
// The two common nuclei of the readers' axis tests: "1H", "H1", "NUL", "13C", "C13".
bool IsCommonNucleus(std::string_view name);

}  // namespace velk::model
