#pragma once
// The words of the Varian reader.
#include <string>

namespace velk::formats::varian::messages {

inline constexpr const char* kModeTag = "RMV/2DRW (";
inline constexpr const char* kPara1DTag = "ReadParaVarian/RW1D (";
inline constexpr const char* kPara2DTag = "RPV/2DRW (";
inline constexpr const char* kFid1DTag = "ReadDataVarian/RW1D (";
inline constexpr const char* kProc1DTag = "ReadDataVarianProc/RW1D (";
inline constexpr const char* kData2DTag = "RDV/2DRW (";
inline constexpr const char* kQuestionTitle = "Data Type";
inline constexpr const char* kQuestion = "2D Data(Yes) or Array Data(No)?";
inline constexpr const char* kTitle = "Varian";
inline constexpr const char* kSizeTitle = "Data Size Error";
inline constexpr const char* kDataSize = "Data Size is too large!";
inline constexpr const char* kTooLarge = "Too Large Data";
inline constexpr const char* kNoParameters = "no procpar or curpar in the folder or its parent";
inline constexpr const char* kCannotRead = "the file cannot be read";
inline constexpr const char* kBadHeader = "the file header does not describe the data that follow";
inline constexpr const char* kNoFrequency = "the parameter file gives no observe frequency (sfrq)";
inline constexpr const char* kNoPoints = "the data file holds no points";

// Raw data whose increments were not taken at even steps are refused rather than transformed as if
// they were.
inline std::string NonUniformSampling(const std::string& why) {
  return "Non-uniformly sampled data (" + why + "): the F1 increments were not taken at even steps, and this "
         "program transforms evenly sampled data only";
}

}  // namespace velk::formats::varian::messages
