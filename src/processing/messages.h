#pragma once
// The words the processing layer shows or writes, in one place.
#include <string_view>

namespace velk::processing::messages {

inline constexpr std::string_view kDataSizeTooLarge = "Data Size is too large!";
inline constexpr std::string_view kDataSizeError = "Data Size Error";
inline constexpr std::string_view kNotSupported = "Non supported Data !";
inline constexpr std::string_view kArithmeticTitle = "Error";
inline constexpr std::string_view kWindowDividesByZero = "Division by zero: the window function is zero everywhere";

// Linear prediction.
inline constexpr std::string_view kLpSettingError = "LP Setting Error";
inline constexpr std::string_view kSetLpFills = "Set LP Fills or LP_Back for Row and/or Column";
inline constexpr std::string_view kCheckLpParameter = "Check LP Parameter";
inline constexpr std::string_view kIllegalLpParameter = "Illegal LP parameter";
inline constexpr std::string_view kLpError = "LP Error";
inline constexpr std::string_view kDataError = "Data Error";
inline constexpr std::string_view kCannotInvGJ = "Can not calculate(InvGJ)!";
inline constexpr std::string_view kCannotRootForward = "Can not calculate(root)!";
inline constexpr std::string_view kCannotRootBackward = "Can not calculate(Root)!";
inline constexpr std::string_view kOrderAbovePoints = "Prediction Order should be less than Points for Calculation";
inline constexpr std::string_view kOutsideData = "Start point or End point exceeds the Data!";
inline constexpr std::string_view kLpParameterError = "LP Parameter Error";
inline constexpr std::string_view kFailedInvGJ = " (InvGJ)";
inline constexpr std::string_view kFailedRoot = " (Root)";
inline constexpr std::string_view kLpIsNotSet = "LP is not set";
inline constexpr std::string_view kGoAnyway = "Anyway, go FT conversion?";

// The FT window.
inline constexpr std::string_view kExitWithoutFft = "Exit without FFT";
inline constexpr std::string_view kFtEnd = "FT end";

}  // namespace velk::processing::messages
