#pragma once
// The fixed frames of the printed page: the spectrum with its axes, the F2 trace above it, the F1
// trace beside it, the level bar, the parameter block and the comment. Each has its place and
// size in centimetres from the page's top-left corner, a background and a frame line. The frames
// are kept in the data set's print set block, so that a page comes back as it was left.
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/surface.h"

namespace velk::layout {

struct Paper {
  double widthCm = 21, heightCm = 29.7;  // A4 portrait
  friend bool operator==(const Paper&, const Paper&) = default;
};
// "A4", "A3", "A5", "B4", "B5" (JIS B sizes), turned for landscape; nothing for another name.
std::optional<Paper> PaperOf(std::string_view name, bool landscape);

// The spectrum frame keeps bands for its axes below and to the right of the contour.
inline constexpr double kAxisBandBelowCm = 1.2;
inline constexpr double kAxisBandRightCm = 2.0;

enum class FrameKind { Spectrum, TraceF2, TraceF1, Level, Parameter, Comment };
inline constexpr std::size_t kFrameCount = 6;

struct PageFrame {
  float X = 0, Y = 0, Width = 0, Height = 0;  // cm
  platform::Color Background = platform::kWhite;
  bool Filled = false;  // false: the background is transparent
  platform::Color LineColor = 0x808080;
  float LineWidth = 0.2f;  // mm
  bool Framed = false;     // a line around the frame
  bool Shown = true;
  friend bool operator==(const PageFrame&, const PageFrame&) = default;
};

struct PageFrames {
  std::array<PageFrame, kFrameCount> frame{};
  PageFrame& operator[](FrameKind k) { return frame[static_cast<std::size_t>(k)]; }
  const PageFrame& operator[](FrameKind k) const { return frame[static_cast<std::size_t>(k)]; }
  friend bool operator==(const PageFrames&, const PageFrames&) = default;
};

// The page as it starts: the comment along the top, the spectrum as a square with the F2 trace
// above it and the F1 trace and the level bar to its left, and the parameter block below it
// (portrait) or to its right (landscape), out to the margin.
PageFrames DefaultPageFrames(const Paper& paper);

// The frames kept in the print set block of a data set (the bytes after its tag); a frame never
// stored there, or stored with no area, is the default one.
PageFrames ReadPageFrames(const std::vector<std::uint8_t>& printSet, const Paper& paper);
// Stores the frames in the block, leaving every other byte as it was.
void WritePageFrames(const PageFrames& frames, std::vector<std::uint8_t>& printSet);

}  // namespace velk::layout
