// Parameter routines of 2D data: acqus and acqu2s for raw data, procs and proc2s (with the
// acquisition files and parm.txt) for processed data.
#include <algorithm>
#include <cmath>

#include "formats/bruker/routines.h"
#include "model/nucleus.h"

namespace velk::formats::bruker {
namespace {

using model::F1;
using model::F2;


// The power of two that is at least n, from 1 (so 1 stays 1 and 0 gives 0).
std::int32_t PowerOfTwoAtLeast(std::int32_t n) {
  if (n <= 0) return 0;
  std::int32_t size = 1;
  while (size < n && size <= model::kMaxAxisPoints) size *= 2;
  return size;
}

// Axis of a time-domain set as its spectrum will come out: index 0 at the low-frequency end and
// the carrier at index size / 2.
void SetRawAxis(model::Spectrum2D& s, int axis, std::int32_t size, float widthHz, double sfo1, double bf1) {
  s.axis[axis].Point = size;
  s.axis[axis].Frequency = widthHz;
  s.axis[axis].Resolution = widthHz / static_cast<double>(size);
  model::AxisExtras& e = s.extras[axis];
  e.absFreqCenter = sfo1;
  e.absFreq0ppm = bf1 > 0 ? bf1 : sfo1;
  e.ppmStep = s.axis[axis].Resolution / e.absFreq0ppm;
  e.ppmFirst = (sfo1 - e.absFreq0ppm) / e.absFreq0ppm * 1e6 - (size / 2) * e.ppmStep;
  s.axis[axis].RefPoint = 0;
  s.axis[axis].Reference = static_cast<float>(e.ppmFirst);
}

int SequentialFlag(std::int16_t aqMod) { return aqMod == 1 || aqMod == 3 ? 0 : 1; }

}  // namespace

int RPBru(const fs::path& acqus, const fs::path& acqu2s, model::Spectrum2D& s, LoadState& state) {
  AcquisitionFile f2, f1;
  state.DataTypeCode = 0;
  if (ParseAcquisitionFile(acqus, f2) != 0) return FailParameterRoutine(state, "RPBru", true);
  if (!f2.originValid) return -1;
  if (f2.byteOrder) state.ByteOrderCode = *f2.byteOrder;
  if (f2.dataType) state.DataTypeCode = *f2.dataType;
  state.F2SequentialFlag = static_cast<std::int16_t>(SequentialFlag(f2.aqMod.value_or(0)));
  ApplyAcquisitionKeys(f2, s.params, s.texts, s.vendor);
  s.extras[F2].nucleus = s.params.OBNUC = ChosenNucleus(f2);
  s.extras[F2].acqMod = f2.aqMod.value_or(0);
  state.PointsInFile2D = f2.td;
  if (f2.swHz <= 0 || f2.td <= 0) return 1;
  state.AcquiredComplexPoints = static_cast<std::int32_t>(std::nearbyint(f2.td / 2.0));
  state.F2Size = PaddedSize(state.AcquiredComplexPoints);
  s.params.ACQTM = static_cast<float>(state.F2Size / f2.swHz);
  s.params.OFR = static_cast<float>(f2.sfo1);
  s.params.OBFIN = f2.offsetHz;

  if (ParseAcquisitionFile(acqu2s, f1) != 0) return FailParameterRoutine(state, "RPBru", true);
  if (!f1.originValid) return -1;
  state.F1Rows = f1.td;
  state.F1Size = PowerOfTwoAtLeast(f1.td);
  const int c = state.pulseModeClass;
  if (model::IsPhaseSensitive(c)) {
    state.F1Size /= 2;
    state.F1Rows /= 2;
  }
  // SW_H of the F1 file is stale in real files; its width in ppm times its frequency is not.
  const float f1Width = f1.swPpm > 0 && f1.sfo1 > 0 ? static_cast<float>(f1.swPpm * f1.sfo1) : f1.swHz;
  if (state.F1Size == 0 || state.F2Size == 0 || f2.sfo1 == 0 || f1.sfo1 == 0 || !(f1Width > 0)) return 1;
  if (state.F2Size > model::kMaxAxisPoints || state.F1Size > model::kMaxAxisPoints) return 1;
  const bool homonuclear = c == model::VPH_HOMO || c == model::V_HOMO;
  SetRawAxis(s, F2, state.F2Size, f2.swHz, f2.sfo1, f2.bf1);
  SetRawAxis(s, F1, state.F1Size, f1Width, homonuclear ? f2.sfo1 : f1.sfo1, homonuclear ? f2.bf1 : f1.bf1);
  s.extras[F1].nucleus = homonuclear ? s.extras[F2].nucleus : ChosenNucleus(f1);
  s.extras[F1].acqMod = f1.aqMod.value_or(0);
  s.extras[F2].fidPoints = state.AcquiredComplexPoints;
  s.extras[F1].fidPoints = state.F1Rows;
  // A defined F1 quadrature scheme says whether F1 was sampled sequentially; AQ_mod of the F1 file
  // is 0 in current files whatever the scheme.
  const int fnMode = f1.fnMode;
  state.F1SequentialFlag = static_cast<std::int16_t>(
      fnMode != model::kQuadUndefined ? (fnMode == model::kQuadQSEQ || fnMode == model::kQuadTPPI)
                                      : SequentialFlag(f1.aqMod.value_or(0)));
  if (c == model::V_HOMO || c == model::V_HETERO) state.F1SequentialFlag = 0;
  s.extras[F2].adMode = state.F2SequentialFlag ? 1 : 2;
  s.extras[F1].adMode = state.F1SequentialFlag ? 1 : 2;
  s.vendor.quadratureF1 = fnMode;
  s.cycleTime = s.params.ACQTM + s.params.PD;
  state.DecimalFlag = f2.ymaxDot && f2.yminDot ? std::min(f2.ymaxDot, f2.yminDot) : std::max(f2.ymaxDot, f2.yminDot);
  return 0;
}

int RPBruAc(const fs::path& acqus, const fs::path& acqu2s, model::Spectrum2D& s, LoadState& state) {
  AcquisitionFile f2, f1;
  if (ParseAcquisitionFile(acqus, f2) != 0 || ParseAcquisitionFile(acqu2s, f1) != 0)
    return FailParameterRoutine(state, "RPBruAc", true);
  if (!f2.originValid || !f1.originValid) return -1;
  const std::string keptDate = s.params.DATIM;
  ApplyAcquisitionKeys(f2, s.params, s.texts, s.vendor);
  if (s.params.DATIM.empty()) s.params.DATIM = keptDate;
  s.extras[F2].nucleus = s.params.OBNUC = ChosenNucleus(f2);
  const int c = state.pulseModeClass;
  s.extras[F1].nucleus = c == model::VPH_HOMO || c == model::V_HOMO ? s.extras[F2].nucleus : ChosenNucleus(f1);
  s.extras[F2].acqMod = f2.aqMod.value_or(0);
  s.extras[F1].acqMod = f1.aqMod.value_or(0);
  s.extras[F2].fidPoints = static_cast<std::int32_t>(std::nearbyint(f2.td / 2.0));
  s.extras[F1].fidPoints = f1.td;
  s.vendor.quadratureF1 = f1.fnMode;
  return 0;
}

int RPBruP(const fs::path& procs, const fs::path& proc2s, model::Spectrum2D& s, LoadState& state) {
  std::array<ProcessingFile, 2> files;  // F2, F1
  state.DataTypeCode = 0;
  s.texts.instrument = "Bruker";
  if (ParseProcessingFile(procs, files[0]) != 0 || ParseProcessingFile(proc2s, files[1]) != 0)
    return FailParameterRoutine(state, "RPBruP", true);
  if (files[0].byteOrder) state.ByteOrderCode = *files[0].byteOrder;
  if (files[0].dataType) state.DataTypeCode = *files[0].dataType;
  state.DecimalFlag = files[0].maxiDot;
  state.XDimF2 = files[0].xdim;
  state.XDimF1 = files[1].xdim;
  for (int k = 0; k < 2; ++k) {
    const ProcessingFile& p = files[k];
    const int axis = k == 0 ? F2 : F1;
    const double carrier = (p.offsetPpm * p.sf - p.swHz / 2.0) * 1e-6 + p.sf;
    if (p.si < 1 || !(p.swHz > 0) || carrier == 0 || !(p.sf > 0) || !p.originValid) return 1;
    if (p.si > model::kMaxAxisPoints) return 1;
    s.axis[axis].Point = p.si;
    s.axis[axis].Frequency = p.swHz;
    s.axis[axis].Resolution = p.swHz / static_cast<double>(p.si);
    model::AxisExtras& e = s.extras[axis];
    e.absFreqCenter = carrier;
    e.absFreq0ppm = p.sf;
    e.ppmStep = s.axis[axis].Resolution / p.sf;
    e.ppmFirst = p.offsetPpm - (p.si - 1) * e.ppmStep;
    e.nucleus.clear();
    if (p.window) e.windowNumber = static_cast<std::int16_t>(*p.window);
    s.axis[axis].RefPoint = p.si - 1;
    s.axis[axis].Reference = p.offsetPpm;
  }
  state.PointsInFile2D = files[0].si;
  state.F2Size = files[0].si;
  state.F1Size = files[1].si;
  s.params.OFR = static_cast<float>(s.extras[F2].absFreqCenter);
  s.params.ACQTM = static_cast<float>(files[0].si / files[0].swHz);
  if (const std::string date = DateFromComment(files[0].dateComment); !date.empty()) s.params.DATIM = date;
  return 0;
}

int RPBruTxt(const fs::path& parmTxt, model::Spectrum2D& s, LoadState& state) {
  std::vector<ListingValue> listing;
  if (ParseListing(parmTxt, listing) != 0) return FailParameterRoutine(state, "RPBruTxt", true);
  const auto fill = [](std::string& field, const std::string& value) { if (field.empty()) field = value; };
  for (const ListingValue& v : listing) {
    if (v.key == "PULPROG") fill(s.params.EXMOD, v.value);
    else if (v.key == "PROBHD") fill(s.texts.probeHead, v.value);
    else if (v.key == "GRDPROG") fill(s.texts.gradientProgram, v.value);
    else if (v.key == "SOLVENT") fill(s.params.SLVNT, v.value);
    else if ((v.key == "NUC1" || v.key == "NUCLEUS") && v.axis != 0) {
      std::string& nucleus = s.extras[v.axis == 2 ? F2 : F1].nucleus;
      if (nucleus.empty() || nucleus == "?" || nucleus == "??" || nucleus == "NUL")
        nucleus = model::NormalizeNucleus(v.value);
    }
  }
  return 0;
}

}  // namespace velk::formats::bruker
