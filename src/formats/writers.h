#pragma once
// The writers of the formats the program writes, in the one shape the registry lists them in.
#include "formats/registry.h"

namespace velk::formats {

platform::Outcome WriteVer4(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                            std::string& written);
platform::Outcome WriteJcamp(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                             std::string& written);
platform::Outcome WriteAlice(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                             std::string& written);
platform::Outcome WriteNumpy(const std::filesystem::path& file, const DataSetRef& data, const WriteChoices& choices,
                             std::string& written);

}  // namespace velk::formats
