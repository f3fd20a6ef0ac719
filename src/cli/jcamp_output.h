#pragma once
// convert to JCAMP-DX: a 1D data set as it is, a 2D data set one trace at a time.
#include <filesystem>
#include <optional>
#include <string>

#include "cli/read_input.h"

namespace velk::cli {

struct JcampOutputOptions {
  std::string trace;                 // "f1" or "f2"; required for a 2D data set
  std::optional<std::int32_t> index; // the row (f2) or column (f1) of the trace
  std::string form = "xydata";       // "xydata" or "ntuples"
};

// Writes the file and says what was written. Code 1 when the data or the options do not fit
// (nothing is written), -1 when the file cannot be written (an earlier file stays as it was).
platform::Outcome WriteJcampOutput(const std::filesystem::path& out, const LoadedData& data,
                                   const JcampOutputOptions& options, std::string& written);

}  // namespace velk::cli
