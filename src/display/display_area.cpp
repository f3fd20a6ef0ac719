#include "display/display_area.h"

#include <utility>

#include "display/view_navigation.h"

namespace velk::display {
namespace {

// kHz per ppm on an axis: the frequency of 0 ppm in MHz over a thousand.
double KHzPerPpm(const model::Spectrum2D& s, int axis) { return s.extras[axis].absFreq0ppm / 1000.0; }

double Convert(double value, const model::Spectrum2D& s, int axis, AreaUnit from, AreaUnit to) {
  if (from == to) return value;
  const double k = KHzPerPpm(s, axis);
  if (to == AreaUnit::KHz) return value * k;
  return k != 0 ? value / k : value;
}

}  // namespace

DisplayArea InUnit(const DisplayArea& a, const model::Spectrum2D& s, AreaUnit unit) {
  return {unit, Convert(a.f2Start, s, model::F2, a.unit, unit), Convert(a.f2End, s, model::F2, a.unit, unit),
          Convert(a.f1Start, s, model::F1, a.unit, unit), Convert(a.f1End, s, model::F1, a.unit, unit)};
}

DisplayArea AreaOfView(const DisplayState& v, const model::Spectrum2D& s, AreaUnit unit) {
  return InUnit({AreaUnit::Ppm, v.ViewF2Start, v.ViewF2End, v.ViewF1Start, v.ViewF1End}, s, unit);
}

DisplayArea DefaultArea(const model::Spectrum2D& s, AreaUnit unit) {
  DisplayState whole;
  ShowFullSpectrum(whole, s);
  return AreaOfView(whole, s, unit);
}

void ExchangeEnds(DisplayArea& area, bool f1) {
  if (f1) std::swap(area.f1Start, area.f1End);
  else std::swap(area.f2Start, area.f2End);
}

void ApplyArea(DisplayState& view, const DisplayArea& area, const model::Spectrum2D& s) {
  const DisplayArea ppm = InUnit(area, s, AreaUnit::Ppm);
  view.ViewF2Start = static_cast<float>(ppm.f2Start);
  view.ViewF2End = static_cast<float>(ppm.f2End);
  view.ViewF1Start = static_cast<float>(ppm.f1Start);
  view.ViewF1End = static_cast<float>(ppm.f1End);
  Check_Start_End(view, s.ppmF2, s.ppmF1, s.axis[model::F2].Point, s.axis[model::F1].Point);
}

}  // namespace velk::display
