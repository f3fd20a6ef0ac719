#include "layout/page_look.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "layout/print_set.h"

namespace velk::layout {
namespace {

platform::Color ColorOf(const core::Settings& set, std::string_view key) {
  return static_cast<platform::Color>(core::Number(set, key)) & 0xFFFFFF;
}

// A frame's background shows unless its transparency is on; its line shows when it has a width.
FrameLook FrameOf(const core::Settings& set, std::string_view background, std::string_view transparency,
                  std::string_view line, std::string_view width) {
  FrameLook f;
  f.background = ColorOf(set, background);
  f.transparent = core::Number(set, transparency) != 0;
  if (!line.empty()) {
    f.line = ColorOf(set, line);
    f.lineWidth = std::max(0.0, core::Number(set, width));
  }
  return f;
}

}  // namespace

TextFont PrintSetFont(const core::Settings& set, const std::string& group) {
  TextFont font;
  font.name = core::Text(set, group + " FONT NAME");
  font.points = core::Number(set, group + " FONT SIZE");
  if (!(font.points > 0)) font.points = TextFont{}.points;
  font.bold = core::Number(set, group + " FONT BOLD") != 0;
  font.italic = core::Number(set, group + " FONT ITALIC") != 0;
  return font;
}

void SetPrintSetFont(const TextFont& font, core::Settings& set, const std::string& group) {
  core::Set(set, group + " FONT NAME", font.name);
  core::SetNumber(set, group + " FONT SIZE", font.points);
  core::SetNumber(set, group + " FONT BOLD", font.bold ? 1 : 0);
  core::SetNumber(set, group + " FONT ITALIC", font.italic ? 1 : 0);
}

TextFont DefaultParameterFont() {
  static const TextFont font = PrintSetFont(DefaultPrintSet(), "PARA");
  return font;
}

PageLook LookOf(const core::Settings& set) {
  PageLook look;
  look.paper = FrameOf(set, "PAPER COLOR", "PAPERR COL TRANS", {}, {});
  auto frame = [&](FrameKind k) -> FrameLook& { return look.frames[static_cast<std::size_t>(k)]; };
  frame(FrameKind::Spectrum) = FrameOf(set, "2D BG COLOR", "2D BG COL TRANS", "WAKU CO", "WIDTH WAKU");
  frame(FrameKind::TraceF2) = FrameOf(set, "F2 1D BG COLOR", "F2 BG COL TRANS", "F2 1D WAKU COL", "WIDTH WAKU");
  frame(FrameKind::TraceF1) = FrameOf(set, "F1 1D BG COLOR", "F1 BG COL TRANS", "F1 1D WAKU COL", "WIDTH WAKU");
  frame(FrameKind::Level) = FrameOf(set, "LEVEL BG COLOR", "LEVEL BG COL TRANS", "LEVEL WAKU COL", "WIDTH WAKU");
  frame(FrameKind::Parameter) = FrameOf(set, "PARAMETER BG COL", "PAR BG COL TRANS", "PARA WAKU COL", "PARA WAKU WIDTH");
  look.axis = ColorOf(set, "AXIS COL");
  look.trace = ColorOf(set, "1D SPEC COL");
  look.parameter = ColorOf(set, "PARAMETER COL");
  look.grid = ColorOf(set, "GRID COL");
  look.peakLine = ColorOf(set, "PEAK LINE COL");
  look.inadequate = ColorOf(set, "INADEQUATE COL");
  look.sliceLine = ColorOf(set, "SLICE LINE COL");
  look.gridWidth = core::Number(set, "WIDTH GRID");
  look.peakLineWidth = core::Number(set, "WIDTH PEAK LINE");
  look.inadequateWidth = core::Number(set, "WIDTH INADEQUATE");
  look.sliceLineWidth = core::Number(set, "WIDTH SLICE LINE");
  look.axisWidth = core::Number(set, "WIDTH AXIS");
  look.traceWidth = core::Number(set, "WIDTH 1D SPEC");
  look.contourWidth = core::Number(set, "WIDTH 2D SPEC");
  look.levelBarWidth = core::Number(set, "WIDTH COLOR BAR");
  look.axisFont = PrintSetFont(set, "AXIS");
  return look;
}

int PenWidth(double width, double dotsPerInch) {
  return std::max(1, static_cast<int>(std::lrint(width * dotsPerInch / kWidthUnitsPerInch)));
}

display::ViewLook ViewLookOf(const PageLook& look, double dpi) {
  const auto frame = [&](FrameKind k) { return look.frames[static_cast<std::size_t>(k)]; };
  display::ViewLook v;
  v.frameContour = frame(FrameKind::Spectrum).line;
  v.frameF2 = frame(FrameKind::TraceF2).line;
  v.frameF1 = frame(FrameKind::TraceF1).line;
  v.frameWidth = frame(FrameKind::Spectrum).lineWidth > 0 ? PenWidth(frame(FrameKind::Spectrum).lineWidth, dpi) : 0;
  v.axis = look.axis;
  v.axisWidth = PenWidth(look.axisWidth, dpi);
  v.font = {look.axisFont.name, 0, look.axisFont.bold, look.axisFont.italic};
  v.trace = look.trace;
  v.traceWidth = PenWidth(look.traceWidth, dpi);
  v.contourWidth = PenWidth(look.contourWidth, dpi);
  v.levelBarWidth = PenWidth(look.levelBarWidth, dpi);
  return v;
}

}  // namespace velk::layout
