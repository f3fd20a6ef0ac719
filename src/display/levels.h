#pragma once
// Contour levels: the level table of each draw, the altitude list shown to the user, and the rules
// by which the user moves the upper and lower limits.
#include <string>
#include <string_view>
#include <vector>

#include "display/contour.h"

namespace velk::display {

// Steps below 5 become 4, up to 8 become 8, up to 16 become 16, anything above 32.
int NormalizeSteps(int steps);
// The base r of exponential spacing for a spacing code; 0 for linear spacing.
double SpacingBase(int interval);
// Phase-sensitive classes show a negative side unless the power display is on.
bool HasNegativeSide(const ContourSetting& setting, int pulseModeClass);

// Fills the table in place from the setting, the limits (fractions of full scale) and the class.
// Entries that the chosen stride does not reach keep the values they held.
void BuildLevelTable(LevelTable& table, const ContourSetting& setting, float upperLimit, float lowerLimit,
                     int pulseModeClass);

// One line per positive level, highest first, in percent ("#0.000000 %"), aligned on the point.
std::vector<std::string> LevelListText(const LevelTable& table, int steps);

// The code that the free "Exponentiation of" value stands for: its value times 100, or the preset
// code when the value is one of the presets.
int FreeSpacingCode(double value);

// Limit entry: the text is a percentage. Returns true when the value was stored (the caller then
// raises the reuse flag and repaints); otherwise the caller shows the old value again.
bool EnterUpperLimit(std::string_view percentText, float& upper, float lower);
bool EnterLowerLimit(std::string_view percentText, float upper, float& lower);
// One press of a limit arrow: times 1.1 up, divided by 1.1 down. Returns false for a rejected
// step, which ends the repetition of a held arrow.
bool StepUpperLimit(bool up, float& upper, float lower);
bool StepLowerLimit(bool up, float upper, float& lower);
// The limit as the user sees it: percent with "##0.0####", or scientific below the threshold.
std::string FormatLimit(float value, double scientificBelow);
inline constexpr double kScientificUpper = 1e-5;
inline constexpr double kScientificLowerUp = 1e-5;
inline constexpr double kScientificLowerDown = 1e-6;

}  // namespace velk::display
