#pragma once
// Reads any file the program reads: the type detector names the format, the table of formats
// gives its reader. Commands that take a data file as input start here.
#include <memory>
#include <string>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "model/type_detector.h"
#include "platform/prompt.h"

namespace velk::cli {

struct LoadedData {
  model::Detection detection;
  model::DataWords words;
  std::unique_ptr<model::Spectrum2D> twoD;  // set for a 2D data set
  std::unique_ptr<model::Spectrum1D> oneD;  // set for a 1D data set
  model::Spectrum1D f2, f1;                 // the companion sets of a 2D data set, when the file has them
  int status = 0;                           // 0 read, 1 refused, 2 unreadable
  std::string error;                        // why not, for stderr
};

LoadedData LoadAnyFile(const std::string& path, platform::Prompt& prompt);

}  // namespace velk::cli
