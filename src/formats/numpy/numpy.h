#pragma once
// One plane of a 2D data set as a NumPy .npy file (float32, rows F1 by columns F2, row 0 = F1
// index 0) and a .json beside it that describes the two axes: column i of F2 lies at
// ppm_first + i * ppm_step.
#include <filesystem>
#include <string>

#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::formats::numpy {

// The .json written beside the .npy.
std::filesystem::path AxesFileOf(const std::filesystem::path& npy);

// plane: "RR", "RI", "IR" or "II". Code 1 when the set holds no such plane, -1 when a file
// cannot be written; both files are written atomically, the .npy first.
platform::Outcome WritePlane(const std::filesystem::path& npy, const model::Spectrum2D& s, bool realOnly,
                             const std::string& plane);

}  // namespace velk::formats::numpy
