#pragma once
// The words of the JCAMP-DX reader and writer.
namespace velk::formats::jcamp_messages {

inline constexpr const char* kReadTag = "ReadDataJCAMP/RDW1D (";
inline constexpr const char* kRead2DTag = "ReadDataJCAMP2D/RDW2D (";
inline constexpr const char* kTitle = "JCAMP-DX";
inline constexpr const char* kNoLabel = "the file holds no ##JCAMP-DX label";
inline constexpr const char* kNotNmr = "the data type is neither NMR SPECTRUM nor NMR FID";
inline constexpr const char* kNoFrequency = "the observe frequency is missing or zero";
inline constexpr const char* kNoPoints = "the number of points is missing or zero";
inline constexpr const char* kBadSymbols = "the table symbols are not X, R, I";
inline constexpr const char* kBadDimensions = "the table dimensions differ";
inline constexpr const char* kBadTable = "a data table line holds a character of no number form";
inline constexpr const char* kTruncated = "the file ends before its ##END= label";
inline constexpr const char* kNoData = "the file holds no data table";
inline constexpr const char* kNot2D = "the file holds no 2D spectrum (##NUMDIM= 2, symbols F1, F2, Y)";
inline constexpr const char* kTooLarge = "Too Large Data";
inline constexpr const char* kDataSize = "Data Size is too large!";
inline constexpr const char* kCannotOpen = "the file cannot be read";

}  // namespace velk::formats::jcamp_messages
