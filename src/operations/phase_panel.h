#pragma once
// The number rules of the phase panel: the zero order wraps into -180 .. 180 degrees, the first
// order stops at -1800 and 1800, the scroll bars count tenths of a degree, and the step labels add
// fixed amounts.
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace velk::operations {

inline constexpr float kPhase1Limit = 1800.0f;
inline constexpr int kPhase0ScrollLimit = 1800;  // tenths of a degree

// The labels beside each scroll bar and their steps in degrees, by the label's position.
inline constexpr std::array<std::string_view, 14> kPhaseStepLabels{
    "-10", "-5", "-2", "-1", "-0.5", "-0.2", "-0.1", "+0.1", "+0.2", "+0.5", "+1", "+2", "+5", "+10"};
inline constexpr std::array<float, 14> kPhaseSteps{-10, -5, -2, -1, -0.5f, -0.2f, -0.1f, 0.1f, 0.2f, 0.5f, 1, 2, 5, 10};

// 360 added or taken away until the value lies in -180 .. 180.
float WrapPhase0(float degrees);
float ClampPhase1(float degrees);
// A scroll bar value of the zero order: below -1800 it gains 3600, above 1800 it loses 3600.
int WrapPhase0Scroll(int tenths);
// The scroll bar position of a phase: value times 10, rounded.
int PhaseScrollValue(float degrees);
// A step label pressed: the step added, then wrapped (zero order) or clamped (first order).
float StepPhase0(float phase0, int label);
float StepPhase1(float phase1, int label);
// Text typed into the zero or first order field; nothing when it is not a number.
std::optional<float> ParsePhase0(std::string_view text);
std::optional<float> ParsePhase1(std::string_view text);
// The fields' format "#####0.0#": at least one and at most two decimals.
std::string FormatPhase(float degrees);

}  // namespace velk::operations
