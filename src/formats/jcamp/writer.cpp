#include "formats/jcamp/writer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <span>

#include "formats/jcamp/asdf.h"
#include "formats/jcamp/messages.h"
#include "formats/jcamp/params.h"
#include "formats/jcamp/writer_text.h"
#include "formats/read_result.h"

namespace velk::formats::jcamp {
namespace {

namespace msg = messages;

struct Scaled {
  std::vector<std::int64_t> values;  // from the highest index down to index 0
  double factor = 1;                 // the Y factor: file value times factor is the sample
  double minimum = 0, maximum = 0;
};

// The largest magnitude (at least 0.1) maps to 4194304; the table runs from the highest index down.
Scaled Scale(std::span<const float> samples) {
  Scaled out;
  double maximum = 0.1, minimum = 0;
  for (float v : samples) maximum = std::max<double>(maximum, v), minimum = std::min<double>(minimum, v);
  const double scale = kFullScale / std::max(std::fabs(maximum), std::fabs(minimum));
  out.factor = 1.0 / scale;
  out.maximum = maximum;
  out.minimum = minimum;
  for (std::size_t i = samples.size(); i-- > 0;) out.values.push_back(std::llrint(samples[i] * scale));
  return out;
}

struct Axis {
  double hzPerPoint = 0, firstX = 0, lastX = 0, referencePoint = 0;
};

Axis AxisOf(const model::Spectrum1D& s) {
  const std::int32_t n = s.params.POINT;
  const double f = s.params.OFR;
  Axis a;
  a.hzPerPoint = n > 1 ? std::fabs(s.axisPpm[n - 1] - s.axisPpm[0]) * f / (n - 1) : s.params.RESOL;
  a.firstX = s.axisPpm[n - 1] * f;
  a.lastX = s.axisPpm[0] * f;
  a.referencePoint = -s.axisPpm[0] * f;
  return a;
}

void Head(std::string& out, const model::Spectrum1D& s, const Axis& axis, const char* dataClass, bool ruled) {
  const model::NmrParameters& p = s.params;
  Line(out, "##TITLE=", s.comment.empty() ? p.COMNT : s.comment);
  Line(out, "##JCAMP-DX=", "5.00");
  Line(out, "##DATA TYPE=", "NMR SPECTRUM");
  Line(out, "##DATA CLASS=", dataClass);
  // "ORGIN" and "ACQUISITION NODE" are spelled as files of this program have always had them.
  Line(out, "##ORGIN=", "NOT SPECIFIED");
  Line(out, "##OWNER=", "GUEST");
  Line(out, "##DATE=", p.DATIM);
  Line(out, "##SPECTROMETER/DATA SYSTEM=", s.texts.instrument);
  Line(out, "##.OBSERVE FREQUENCY=", Fixed(p.OFR, 9));
  Line(out, "##.OBSERVE NUCLEUS=", "^" + p.OBNUC);
  Line(out, "##.SOLVENT REFERENCE=", Fixed(p.SMEXR, 6));
  Line(out, "##.ACQUISITION NODE=", "SIMULTANEOUS");
  Line(out, "##.AVERAGES=", std::to_string(p.SCANS));
  if (ruled) Line(out, "$$ -----------------------");
  Line(out, "$$ NMR SPECIFIC PARAMETERS");
  for (const auto& [key, value] : JeolParameterLines(s)) Line(out, key + "=", value.empty() ? " " : value);
  Line(out, "##$REFERENCE_POINT=", Fixed(axis.referencePoint, 10, 0));
  Line(out, "$$ END OF NMR SPECIFIC PARAMETERS");
  if (ruled) Line(out, "$$ -------------------------------");
}

void Table(std::string& out, const Scaled& scaled) {
  jcamp::Table(out, scaled.values, static_cast<std::int64_t>(scaled.values.size()) - 1);
}

// The reason a set cannot be written, or nothing.
std::optional<platform::Outcome> Unwritable(const model::Spectrum1D& s) {
  const std::int32_t n = s.params.POINT;
  if (n < 1 || static_cast<std::size_t>(n) > s.re.size() || static_cast<std::size_t>(n) > s.axisPpm.size())
    return Refused(msg::kTitle, msg::kNoPoints);
  if (!(s.params.OFR > 0)) return Refused(msg::kTitle, msg::kNoFrequency);
  return std::nullopt;
}

}  // namespace

platform::Outcome WriteDataJCAMPDX(const std::filesystem::path& file, const model::Spectrum1D& s) {
  if (auto refused = Unwritable(s)) return *refused;
  const std::int32_t n = s.params.POINT;
  const Scaled real = Scale(std::span(s.re).first(n));
  const Axis axis = AxisOf(s);
  std::string out;
  Head(out, s, axis, "XYDATA", false);
  Line(out, "##XUNITS=", "HZ");
  Line(out, "##YUNITS=", "ARBITRARY UNITS");
  Line(out, "##XFACTOR=", Factor(axis.hzPerPoint));
  Line(out, "##YFACTOR=", Factor(real.factor));
  Line(out, "##FIRSTX=", Fixed(axis.firstX, 10));
  Line(out, "##LASTX=", Fixed(axis.lastX, 10));
  Line(out, "##DELTAX=", Fixed(axis.hzPerPoint, 10));
  Line(out, "##MAXY=", Fixed(real.maximum, 10));
  Line(out, "##MINY=", Fixed(real.minimum, 10));
  Line(out, "##NPOINTS=", std::to_string(n));
  Line(out, "##FIRSTY=", Fixed(s.re[n - 1], 6, 1));
  Line(out, "##XYDATA=", "(X++(Y..Y))");
  Table(out, real);
  Line(out, "##END=");
  return WriteText(file, out);
}

platform::Outcome WriteDataJCAMPDX2(const std::filesystem::path& file, const model::Spectrum1D& s) {
  if (auto refused = Unwritable(s)) return *refused;
  if (s.im.size() < static_cast<std::size_t>(s.params.POINT)) return Refused(msg::kTitle, msg::kNoPoints);
  const std::int32_t n = s.params.POINT;
  const Scaled real = Scale(std::span(s.re).first(n));
  const Scaled imag = Scale(std::span(s.im).first(n));
  const Axis axis = AxisOf(s);
  const auto four = [](const std::string& x, double r, double i, const std::string& page) {
    return x + ", " + Fixed(r, 10) + ", " + Fixed(i, 10) + ", " + page;
  };
  std::string out;
  Head(out, s, axis, "NTUPLES", true);
  Line(out, "##NTUPLES=", "NMR SPECTRUM");
  Line(out, "##VAR_NAME=", "FREQUENCY, SPECTRUM/REAL, SPECTRUM/IMAG, PAGE NUMBER");
  Line(out, "##SYMBOL=", "X, R, I, N");
  Line(out, "##VAR_TYPE=", "INDEPENDENT, DEPENDENT, DEPENDENT, PAGE");
  Line(out, "##VAR_FORM=", "AFFN, ASDF, ASDF, AFFN");
  const std::string points = std::to_string(n);
  Line(out, "##VAR_DIM=", points + ", " + points + ", " + points + ", 2");
  Line(out, "##UNITS=", "HZ, ARBITRARY UNITS, ARBITRARY UNITS,");
  Line(out, "##FIRST=", four(Fixed(axis.firstX, 10), s.re[n - 1], s.im[n - 1], "1"));
  Line(out, "##LAST=", four(Fixed(axis.lastX, 10), s.re[0], s.im[0], "2"));
  Line(out, "##MIN=", four(Fixed(std::min(axis.firstX, axis.lastX), 10), real.minimum, imag.minimum, "1"));
  Line(out, "##MAX=", four(Fixed(std::max(axis.firstX, axis.lastX), 10), real.maximum, imag.maximum, "2"));
  Line(out, "##FACTOR=", Factor(axis.hzPerPoint) + ", " + Factor(real.factor) + ", " + Factor(imag.factor) + ", 1");
  Line(out, "$$ Real Data");
  Line(out, "##PAGE=", "N=1");
  Line(out, "##DATA TABLE=", "(X++(R..R)), XYDATA");
  Table(out, real);
  Line(out, "$$ Image Data");
  Line(out, "##PAGE=", "N=2");
  Line(out, "##DATA TABLE=", "(X++(I..I)), XYDATA");
  Table(out, imag);
  Line(out, "##END NTUPLES=", "NMR SPECTRUM");
  Line(out, "##END=");
  return WriteText(file, out);
}

}  // namespace velk::formats::jcamp
