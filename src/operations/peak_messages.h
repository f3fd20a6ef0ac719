#pragma once
// The words of the peak tool and its lists, in one place.
#include <string_view>

namespace velk::operations::peak_messages {

// The two kinds of top ("PEAK PICK MODE" 1 and 0), as the tool offers them.
inline constexpr std::string_view kOnDataPoint = "on Data Point";
inline constexpr std::string_view kOnDataPointHint = "Peak Tops are data positions";
inline constexpr std::string_view kVirtualTop = "Vertual Peak Top";
inline constexpr std::string_view kVirtualTopHint = "Peak Tops are caluculated position";

// The printed list.
inline constexpr std::string_view kListHeading = "\\< Peak List";
inline constexpr std::string_view kListFile = "File:  ";
inline constexpr std::string_view kListComment = "\\< Comment:  ";
inline constexpr std::string_view kColumnNumber = "\\< No.";
inline constexpr std::string_view kColumnHeight = "\\< Height";
inline constexpr std::string_view kColumnF2PpmHz = "\\<     F2/ppm(Hz)";
inline constexpr std::string_view kColumnF1PpmHz = "\\<     F1/ppm(Hz)";
inline constexpr std::string_view kColumnF2HzPpm = "\\<     F2/Hz(ppm)";
inline constexpr std::string_view kColumnF1HzPpm = "\\<     F1/Hz(ppm)";
inline constexpr std::string_view kColumnF2KHzPpm = "\\<     F2/kHz(ppm)";
inline constexpr std::string_view kColumnF1KHzPpm = "\\<     F1/kHz(ppm)";

}  // namespace velk::operations::peak_messages
