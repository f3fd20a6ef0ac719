#pragma once
// The words of the contour display, exactly as the program shows them.
#include <array>
#include <string_view>

namespace velk::display::messages {

inline constexpr std::string_view kLevelBarTop = "Top";
inline constexpr std::string_view kLevelBarZero = "0";
inline constexpr std::string_view kLevelBarBottom = "Bottom";
inline constexpr std::string_view kPercent = " %";
inline constexpr std::string_view kQuitDrawing = "Quit Drawing by Right Click!";
inline constexpr std::string_view kSliceF1 = "Slice(F1) at ";
inline constexpr std::string_view kSliceF2 = "Slice(F2) at ";
inline constexpr std::string_view kAltitudesTitle = "Altitudes of Contour";

// The spacing options by code 0..6; codes 100..300 show kFreeSpacing with their value.
inline constexpr std::array<std::string_view, 7> kSpacingOptions{
    "Linear",
    "Exponentiation of 1/2.0",
    "Exponentiation of 1/1.5",
    "Exponentiation of 1/1.2",
    "Exponentiation of 1/1.8",
    "Exponentiation of 1/2.5",
    "Exponentiation of 1/3.0",
};
inline constexpr std::string_view kFreeSpacing = "Exponentiation of";

// The trace kinds offered for each side panel.
inline constexpr std::string_view kTraceHighResolution = "High Resolution 1D Data";
inline constexpr std::string_view kTraceProjection = "Projection of 2D";
inline constexpr std::string_view kTraceProjectionPosNeg = "Projection(Positiv && Negative)";

}  // namespace velk::display::messages
