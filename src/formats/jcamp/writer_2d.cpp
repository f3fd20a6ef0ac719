// 2D spectra as "nD NMR SPECTRUM" NTUPLES, in the layout that exchange files of other programs
// use: one "##PAGE= F1=..." per row, from the high-frequency end, each a "(F2++(Y..Y))" table
// that also runs from the high-frequency end. The real plane is written, with one Y factor for
// the whole plane.
#include <algorithm>
#include <cmath>

#include "formats/jcamp/messages.h"
#include "formats/jcamp/writer.h"
#include "formats/jcamp/writer_text.h"
#include "formats/read_result.h"

namespace velk::formats::jcamp {
namespace {

namespace msg = messages;
using model::F1;
using model::F2;

// The frequency that turns the axis's ppm into Hz from 0 ppm.
double AxisMHz(const model::Spectrum2D& s, model::Axis axis) {
  const model::AxisExtras& e = s.extras[axis];
  if (e.absFreq0ppm > 0) return e.absFreq0ppm;
  if (e.absFreqCenter > 0) return e.absFreqCenter;
  return s.params.OFR;
}

struct AxisHz {
  std::int32_t points = 0;
  double mhz = 0;
  double high = 0, low = 0;  // Hz of the highest index and of index 0
};

AxisHz AxisOf(const model::Spectrum2D& s, model::Axis axis) {
  const std::vector<float>& ppm = axis == F1 ? s.ppmF1 : s.ppmF2;
  AxisHz a;
  a.points = s.axis[axis].Point;
  a.mhz = AxisMHz(s, axis);
  a.high = ppm[static_cast<std::size_t>(a.points - 1)] * a.mhz;
  a.low = ppm[0] * a.mhz;
  return a;
}

std::optional<platform::Outcome> Unwritable(const model::Spectrum2D& s) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (n1 < 1 || n2 < 1 || n1 > s.RR.rows || n2 > s.RR.stride || s.ppmF1.size() < static_cast<std::size_t>(n1) ||
      s.ppmF2.size() < static_cast<std::size_t>(n2))
    return Refused(msg::kTitle, msg::kNoPoints);
  if (!(AxisMHz(s, F1) > 0) || !(AxisMHz(s, F2) > 0)) return Refused(msg::kTitle, msg::kNoFrequency);
  return std::nullopt;
}

std::string Nucleus(const std::string& name) { return name.empty() ? "1H" : name; }

}  // namespace

platform::Outcome WriteDataJCAMPDX2D(const std::filesystem::path& file, const model::Spectrum2D& s,
                                     bool phaseSensitive) {
  if (auto refused = Unwritable(s)) return *refused;
  const AxisHz f1 = AxisOf(s, F1), f2 = AxisOf(s, F2);
  float largest = 0, smallest = 0;
  for (std::int32_t r = 0; r < f1.points; ++r)
    for (float v : s.RR.row(r).first(static_cast<std::size_t>(f2.points)))
      largest = std::max(largest, v), smallest = std::min(smallest, v);
  const double full = std::max({std::fabs(double{largest}), std::fabs(double{smallest}), 1e-30});
  const double scale = kFullScale / full;
  const auto three = [](const std::string& a, const std::string& b, double y) {
    return a + ", " + b + ", " + Fixed(y, 10);
  };
  const model::NmrParameters& p = s.params;
  std::string out;
  Line(out, "##TITLE=", s.comment.empty() ? p.COMNT : s.comment);
  Line(out, "##JCAMP-DX=", "6.00");
  Line(out, "##DATA TYPE=", "nD NMR SPECTRUM");
  Line(out, "##DATA CLASS=", "NTUPLES");
  Line(out, "##NUMDIM=", "2");
  Line(out, "##ORIGIN=", s.texts.instrument.empty() ? "NOT SPECIFIED" : s.texts.instrument);
  Line(out, "##OWNER=", "GUEST");
  Line(out, "##LONG DATE=", p.DATIM);
  Line(out, "##.OBSERVE FREQUENCY=", Fixed(f2.mhz, 9));
  Line(out, "##.OBSERVE NUCLEUS=", "^" + Nucleus(s.extras[F2].nucleus));
  // The F1 frequency that exchange files leave to be guessed from the nuclei.
  Line(out, "##$F1 OBSERVE FREQUENCY=", Fixed(f1.mhz, 9));
  Line(out, "##.PULSE SEQUENCE=", p.EXMOD);
  Line(out, "##.SOLVENT NAME=", p.SLVNT);
  Line(out, "##.AVERAGES=", std::to_string(p.SCANS));
  Line(out, "##.ACQUISITION SCHEME=", phaseSensitive ? "PHASE SENSITIVE" : "NOT PHASE SENSITIVE");
  Line(out, "##NTUPLES=", "nD NMR SPECTRUM");
  Line(out, "##VAR_NAME=", "FREQUENCY1, FREQUENCY2, SPECTRUM");
  Line(out, "##SYMBOL=", "F1, F2, Y");
  Line(out, "##.NUCLEUS=", Nucleus(s.extras[F1].nucleus) + ", " + Nucleus(s.extras[F2].nucleus));
  Line(out, "##VAR_TYPE=", "INDEPENDENT, INDEPENDENT, DEPENDENT");
  Line(out, "##VAR_FORM=", "AFFN, AFFN, ASDF");
  Line(out, "##VAR_DIM=", std::to_string(f1.points) + ", " + std::to_string(f2.points) + ", " +
                              std::to_string(static_cast<std::int64_t>(f1.points) * f2.points));
  Line(out, "##UNITS=", "HZ, HZ, ARBITRARY UNITS");
  const float firstY = s.RR.at(f2.points - 1, f1.points - 1), lastY = s.RR.at(0, 0);
  Line(out, "##FIRST=", three(Fixed(f1.high, 10), Fixed(f2.high, 10), firstY));
  Line(out, "##LAST=", three(Fixed(f1.low, 10), Fixed(f2.low, 10), lastY));
  Line(out, "##MIN=", three(Fixed(std::min(f1.low, f1.high), 10), Fixed(std::min(f2.low, f2.high), 10), smallest));
  Line(out, "##MAX=", three(Fixed(std::max(f1.low, f1.high), 10), Fixed(std::max(f2.low, f2.high), 10), largest));
  // The F2 factor makes the X check of a line the index of its first point.
  const double f2Step = f2.points > 1 ? std::fabs(f2.high - f2.low) / (f2.points - 1) : 1.0;
  Line(out, "##FACTOR=", "1, " + Factor(f2Step) + ", " + Factor(1.0 / scale));
  std::vector<std::int64_t> values(static_cast<std::size_t>(f2.points));
  for (std::int32_t r = f1.points - 1; r >= 0; --r) {
    Line(out, "##PAGE=", "F1=" + Fixed(s.ppmF1[static_cast<std::size_t>(r)] * f1.mhz, 6));
    Line(out, "##DATA TABLE=", "(F2++(Y..Y)), PROFILE");
    for (std::int32_t c = 0; c < f2.points; ++c)
      values[static_cast<std::size_t>(f2.points - 1 - c)] = std::llrint(s.RR.at(c, r) * scale);
    Table(out, values, f2.points - 1);
  }
  Line(out, "##END NTUPLES=", "nD NMR SPECTRUM");
  Line(out, "##END=");
  return WriteText(file, out);
}

}  // namespace velk::formats::jcamp
