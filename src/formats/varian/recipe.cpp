#include "formats/varian/recipe.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/text.h"
#include "model/nucleus.h"

namespace velk::formats::varian {
namespace {

using model::F1;
using model::F2;

std::int32_t PowerOfTwoAtLeast(double n) {
  std::int32_t size = 1;
  while (size < n && size < (1 << 24)) size *= 2;
  return size;
}

// Window, size, phase and shift of one axis; suffix "" for F2 and "1" for F1.
model::VendorAxisRecipe AxisRecipe(const VarianParameters& p, const std::string& suffix, std::int32_t points) {
  const auto number = [&](const char* name) { return VarianNumber(p, name + suffix, 0); };
  model::VendorAxisRecipe r;
  const double fn = number("FN");
  r.si = PowerOfTwoAtLeast(fn >= 4 ? fn / 2 : points);
  r.window = model::kVendorCombined;
  r.lb = number("LB");
  r.gf = number("GF");
  r.gfs = number("GFS");
  r.sb = number("SB");
  r.sbs = number("SBS");
  r.leftShift = static_cast<std::int32_t>(std::clamp(std::lrint(number("LSFID")), -(1L << 24), 1L << 24));
  const double rp = number("RP"), lp = number("LP");
  r.phc0 = rp + lp;
  r.phc1 = -lp;
  r.fcor = VarianNumber(p, "FPMULT" + suffix, 1);
  r.phaseMode = 1;
  return r;
}

}  // namespace

F1Channel F1ChannelOf(const VarianParameters& p) {
  const std::string tn = model::NormalizeNucleus(VarianText(p, "TN"));
  const double sfrq = VarianNumber(p, "SFRQ");
  const std::string source = core::ToUpper(VarianText(p, "REFSOURCE1"));
  F1Channel c{tn, sfrq, 0, false};
  if (source == "DFRQ" || source == "DFRQ2") {
    const std::string which = source == "DFRQ" ? "DN" : "DN2";
    c.nucleus = model::NormalizeNucleus(VarianText(p, which));
    c.mhz = VarianNumber(p, source);
    c.heteronuclear = !c.nucleus.empty() && c.nucleus != tn;
  } else if (source != "SFRQ") {
    const std::string dn = model::NormalizeNucleus(VarianText(p, "DN"));
    c.heteronuclear = dn != tn && dn != "NUL" && !dn.empty();
    if (c.heteronuclear) c.nucleus = dn, c.mhz = VarianNumber(p, "DFRQ");
  }
  if (!(c.mhz > 0)) c.mhz = sfrq;
  const double reference = source.empty() ? 0 : VarianNumber(p, "REFFRQ1");
  c.zeroPpmMhz = reference > 0 ? reference : c.mhz;
  return c;
}

namespace {

// Forward prediction along F1 (proc1 'lp', lpopt1 'f'): lpfilt1 complex coefficients, the
// increments extended to strtext1 - 1 + lpext1 points.
void F1Prediction(const VarianParameters& p, model::VendorAxisRecipe& f1, std::int32_t f1Points) {
  if (core::ToUpper(VarianText(p, "PROC1")) != "LP" || core::ToUpper(VarianText(p, "LPOPT1")) != "F") return;
  const double coefficients = VarianNumber(p, "LPFILT1", 8), start = VarianNumber(p, "STRTEXT1", f1Points + 1);
  const double extension = VarianNumber(p, "LPEXT1", 0);
  if (!(coefficients >= 1 && extension >= 1 && start >= 1)) return;
  const bool pairs = core::ToUpper(VarianText(p, "ARRAY")) == "PHASE";
  f1.predictionMode = 2;
  f1.ncoef = static_cast<std::int32_t>(std::min(2 * coefficients, 4096.0));
  f1.lpbin = static_cast<std::int32_t>(std::min((start - 1 + extension) * (pairs ? 2 : 1), 1e6));
}

}  // namespace

std::optional<model::VendorRecipe> VarianRecipe(const VarianParameters& p, std::int32_t f2Points,
                                                std::int32_t f1Points, const std::string& source) {
  static constexpr std::array<const char*, 8> kProcessing{"FN", "LB", "GF", "SB", "RP", "LP", "FN1", "LB1"};
  if (std::none_of(kProcessing.begin(), kProcessing.end(), [&](const char* name) { return p.contains(name); }))
    return std::nullopt;
  model::VendorRecipe r;
  r.family = model::kVarianRecipe;
  r.axis[F2] = AxisRecipe(p, "", f2Points);
  r.axis[F1] = AxisRecipe(p, "1", f1Points);
  F1Prediction(p, r.axis[F1], f1Points);
  r.f1Scheme = 3;  // States: two blocks per increment
  r.source = source;
  return r;
}

std::string NonUniformSamplingOf(const VarianParameters& p, const std::filesystem::path& folder) {
  if (core::ToUpper(VarianText(p, "SAMPLING")) == "SPARSE") return "sampling 'sparse' in procpar";
  std::error_code error;
  if (std::filesystem::is_regular_file(folder / "sampling.sch", error)) return "a sampling.sch beside the fid";
  return {};
}

}  // namespace velk::formats::varian
