#pragma once
// The words of the INADEQUATE commands, in one place.
#include <string_view>

namespace velk::operations::inadequate_messages {

inline constexpr std::string_view kChangeTitle = "Change INADEQUATE Spectrum";
inline constexpr std::string_view kModeOn = "Proceed as INADEQUATE Spectrum";
inline constexpr std::string_view kModeOff = "Normal (Clear INADEQUATE Mode)";
inline constexpr std::string_view kChangeNote =
    "Special Peak Picking is used for INADEQUATE Spectrum. Appropriate Direction for Slope 2 Line should be "
    "selected.";
inline constexpr std::string_view kExtendTitle = "Extend INADEQUATE Spectrum ";
inline constexpr std::string_view kExtendNote =
    "Span of F1 asis of 2D-INADEQUATE Spectrum needs two times of F2 axis. If the same spans are used for F1 and F2 "
    "axis, outer area data appears as folded data.  However, this folded data do not overlap the spectrum and can be "
    "moved to original position.";
inline constexpr std::string_view kDataSizeError = "Data Size Error";
inline constexpr std::string_view kDataSizeTooLarge = "Data Size is too large!";
// "Direction of Slope 2 Line" guides the user to the inversion of F1.
inline constexpr std::string_view kSlopeDirection =
    "To change \"Direction of Slope 2 Line\"\nExecute \"Invert F1 Axis\" in \"Invert Spectrum\" window.";
inline constexpr std::string_view kInvertTitle = "Invet Spectrum (INADEQUATE)";
inline constexpr std::string_view kUndoCaption = "UnDo(Tnadwquate Extension)";

}  // namespace velk::operations::inadequate_messages
