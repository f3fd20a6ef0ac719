#pragma once
// The words of the Varian reader.
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

}  // namespace velk::formats::varian::messages
