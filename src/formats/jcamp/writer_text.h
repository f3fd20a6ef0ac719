#pragma once
// The line and number forms that the JCAMP-DX writers share, and the one way they reach the disk.
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "platform/message.h"

namespace velk::formats::jcamp {

// A number with at most `decimals` places and at least `minimum`, without trailing zeros.
std::string Fixed(double value, int decimals, int minimum = 0);

// Factors keep twelve significant digits: with fixed decimals a factor near 1e-7 would keep only
// three, and the values would not come back to within one table step.
std::string Factor(double value);

// "label value" and a line break ("##$" labels take a tab); control characters in the value
// become blanks so that it stays on its line.
void Line(std::string& out, const std::string& label, std::string value = {});

// The DIF/DUP lines of a table of integers, each line's X check counting down from firstX.
void Table(std::string& out, std::span<const std::int64_t> values, std::int64_t firstX);

// Integers of the tables span at most 23 bits: 4194304 is the largest magnitude written.
inline constexpr double kFullScale = 4194304.0;

// The text through WriteAtomically.
platform::Outcome WriteText(const std::filesystem::path& file, const std::string& text);

}  // namespace velk::formats::jcamp
