#include "layout/page_frames.h"

#include <algorithm>

#include "core/text.h"
#include "native/fields.h"

namespace velk::layout {
namespace {

constexpr float kMargin = 1.5f;         // cm around the page
constexpr float kCommentHeight = 1.4f;  // cm
constexpr float kTraceDepth = 2.4f;     // cm: the height of the F2 trace, the width of the F1 trace
constexpr float kLevelWidth = 1.6f;     // cm
constexpr float kGap = 0.3f;            // cm between neighbouring frames

// In the print set block the four values at the start belong to the print set itself; the frames
// follow in records of 32 bytes: left, top, width, height, background, line colour, line width,
// and a flag word. A record whose "stored" flag is clear was never written.
constexpr std::size_t kFramesAt = 16;
constexpr std::size_t kFrameRecord = 32;
constexpr std::int32_t kStored = 1, kFilled = 2, kFramed = 4, kHidden = 8;

}  // namespace

std::optional<Paper> PaperOf(std::string_view name, bool landscape) {
  static constexpr struct {
    std::string_view name;
    double width, height;
  } kPapers[] = {{"A3", 29.7, 42.0}, {"A4", 21.0, 29.7}, {"A5", 14.8, 21.0}, {"B4", 25.7, 36.4}, {"B5", 18.2, 25.7}};
  for (const auto& p : kPapers)
    if (core::EqualsNoCase(p.name, name)) return landscape ? Paper{p.height, p.width} : Paper{p.width, p.height};
  return std::nullopt;
}

PageFrames DefaultPageFrames(const Paper& paper) {
  const float w = static_cast<float>(paper.widthCm), h = static_cast<float>(paper.heightCm);
  PageFrames f;
  f[FrameKind::Comment] = {.X = kMargin, .Y = kMargin, .Width = w - 2 * kMargin, .Height = kCommentHeight};
  // The spectrum frame holds the contour with its axes below and to the right of it.
  const float left = kMargin + kLevelWidth + kGap + kTraceDepth + kGap;
  const float top = kMargin + kCommentHeight + kGap + kTraceDepth + kGap;
  const float right = float(kAxisBandRightCm), below = float(kAxisBandBelowCm);
  const bool landscape = w > h;
  const float side = std::max(2.0f, landscape ? std::min(h - top - kMargin - below, (w - left - kMargin) * 0.55f - right)
                                              : std::min(w - left - kMargin - right, (h - top - kMargin) * 0.62f - below));
  f[FrameKind::Spectrum] = {.X = left, .Y = top, .Width = side + right, .Height = side + below};
  f[FrameKind::TraceF2] = {.X = left, .Y = top - kGap - kTraceDepth, .Width = side, .Height = kTraceDepth};
  f[FrameKind::TraceF1] = {.X = left - kGap - kTraceDepth, .Y = top, .Width = kTraceDepth, .Height = side};
  f[FrameKind::Level] = {.X = kMargin, .Y = top, .Width = kLevelWidth, .Height = side};
  if (landscape) {
    const float beside = left + side + right + kGap, upper = top - kGap - kTraceDepth;
    f[FrameKind::Parameter] = {.X = beside, .Y = upper, .Width = std::max(1.0f, w - kMargin - beside),
                               .Height = std::max(1.0f, h - kMargin - upper)};
  } else {
    const float under = top + side + below + kGap;
    f[FrameKind::Parameter] = {.X = kMargin, .Y = under, .Width = w - 2 * kMargin,
                               .Height = std::max(1.0f, h - kMargin - under)};
  }
  return f;
}

PageFrames ReadPageFrames(const std::vector<std::uint8_t>& printSet, const Paper& paper) {
  PageFrames frames = DefaultPageFrames(paper);
  const native::Bytes block(printSet);
  for (std::size_t k = 0; k < kFrameCount; ++k) {
    const std::size_t at = kFramesAt + k * kFrameRecord;
    if (!core::Fits(block, at, kFrameRecord)) break;
    const std::int32_t flags = native::Read<std::int32_t>(block, at + 28);
    PageFrame f;
    f.X = native::Read<float>(block, at);
    f.Y = native::Read<float>(block, at + 4);
    f.Width = native::Read<float>(block, at + 8);
    f.Height = native::Read<float>(block, at + 12);
    if (!(flags & kStored) || !(f.Width > 0 && f.Height > 0) || !(f.Width < 1000 && f.Height < 1000)) continue;
    f.Background = native::Read<std::uint32_t>(block, at + 16) & 0xFFFFFF;
    f.LineColor = native::Read<std::uint32_t>(block, at + 20) & 0xFFFFFF;
    f.LineWidth = std::clamp(native::Read<float>(block, at + 24), 0.0f, 10.0f);
    if (!(f.LineWidth >= 0)) f.LineWidth = 0.2f;  // not a number
    f.Filled = flags & kFilled;
    f.Framed = flags & kFramed;
    f.Shown = !(flags & kHidden);
    frames.frame[k] = f;
  }
  return frames;
}

void WritePageFrames(const PageFrames& frames, std::vector<std::uint8_t>& printSet) {
  printSet.resize(std::max(printSet.size(), kFramesAt + kFrameCount * kFrameRecord), 0);
  for (std::size_t k = 0; k < kFrameCount; ++k) {
    const std::size_t at = kFramesAt + k * kFrameRecord;
    const PageFrame& f = frames.frame[k];
    native::Store(printSet, at, f.X);
    native::Store(printSet, at + 4, f.Y);
    native::Store(printSet, at + 8, f.Width);
    native::Store(printSet, at + 12, f.Height);
    native::Store(printSet, at + 16, f.Background);
    native::Store(printSet, at + 20, f.LineColor);
    native::Store(printSet, at + 24, f.LineWidth);
    native::Store(printSet, at + 28, kStored | (f.Filled ? kFilled : 0) | (f.Framed ? kFramed : 0) | (f.Shown ? 0 : kHidden));
  }
}

}  // namespace velk::layout
