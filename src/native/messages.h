#pragma once
// The words the Ver.4 reader and writer show, in one place.
#include <string>
#include <string_view>

#include "platform/message.h"

namespace velk::native::messages {

inline constexpr std::string_view kDataError = "Data Error";
inline constexpr std::string_view kDataError2D = "Data Error(RDR V4 in DRW 2D)";
inline constexpr std::string_view kDataSizeError = "Data Size Error";

inline constexpr std::string_view kInvalidData = "Invalid Data";
inline constexpr std::string_view kInvalid2DData = "Invalid 2D Data";
inline constexpr std::string_view kInvalidF1Data = "Invalid F1 Data";
inline constexpr std::string_view kInvalidF2Data = "Invalid F2 Data";
inline constexpr std::string_view kTooLargeData = "Too Large Data";
inline constexpr std::string_view kDataSizeTooLarge = "Data Size is too large!";
inline constexpr std::string_view kBad1DFile = "Data is too Large, or Parameter Error";

// The save-size choice.
inline constexpr std::string_view kCutDownTitle = "Cut down of Saved Data Size";
inline constexpr std::string_view kSaveAllBefore = "Save All Data(incl.Image)(ca ";
inline constexpr std::string_view kSaveAllAfter = " Mbyte)";
inline constexpr std::string_view kSaveRealBefore = "Save Real only(ca ";
inline constexpr std::string_view kSaveRealAfter = " Mbyte:Phase of saved Data can not be corrected.）";
inline constexpr std::string_view kRecommendRealOnly =
    "recommend [Save Real only], because this data was Symmetrized or BaseLine corrected.";
inline constexpr std::string_view kConfirmingTitle = "Confirming!";
inline constexpr std::string_view kConfirmRealOnly = "Phase of saved Data can not be corrected. OK?";
inline constexpr std::string_view kConfirmingPowerTitle = "Confirming(PowerSpectrum)!";
inline constexpr std::string_view kAskPowerSpectrum = "Save as PowerSpectrum?";

// The routine tags of the log and of write failures.
inline constexpr std::string_view kReadTag = "RDR V4";
inline constexpr std::string_view kWriteTag = "WDR V4";
inline constexpr std::string_view kWriteLog1D = "WriteDataR4/RW1D (";

inline platform::Message Error(std::string_view title, std::string_view text) {
  return {std::string(title), std::string(text), platform::Buttons::Ok, platform::Icon::Critical, true};
}

}  // namespace velk::native::messages
