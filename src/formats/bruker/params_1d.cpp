// Parameter routines of 1D data: acqus for FIDs, procs (with acqus or parm.txt) for spectra.
#include <cmath>

#include "core/text.h"
#include "formats/text_lines.h"
#include "formats/bruker/routines.h"
#include "model/nucleus.h"

namespace velk::formats::bruker {
namespace {

bool IsUnsetNucleus(const std::string& nucleus) {
  return nucleus.empty() || nucleus == "?" || nucleus == "??" || nucleus == "NUL";
}

void SetAxisFromProcs(const ProcessingFile& p, model::Spectrum1D& s) {
  const std::int32_t n = s.params.POINT;
  s.axisStep = n > 0 ? s.params.RESOL / p.sf : 0;
  s.axisFirst = static_cast<float>(p.offsetPpm - (n - 1) * s.axisStep);
  for (std::int32_t i = 0; i < n && static_cast<std::size_t>(i) < s.axisPpm.size(); ++i)
    s.axisPpm[i] = (i - (n - 1)) * s.axisStep + p.offsetPpm;
}

}  // namespace

void ApplyAcquisitionKeys(const AcquisitionFile& a, model::NmrParameters& p, model::DescriptiveTexts& texts,
                          model::VendorAcquisition& vendor) {
  texts.instrument = a.instrument.empty() ? "Bruker" : a.instrument;
  if (a.originValid) texts.dataTypeText = "Bruker";
  p.EXMOD = a.pulseProgram;
  texts.probeHead = a.probeHead;
  texts.gradientProgram = a.gradientProgram;
  p.DEADT = a.deadTime;
  p.DUMMY = a.dummyScans;
  p.FILTR = a.filterWidth;
  p.CSPED = a.spinRate;
  p.SLVNT = a.solvent;
  p.IRNUC = model::NormalizeNucleus(a.decoupledNucleus);
  p.RGAIN = a.receiverGain;
  p.SCANS = p.TOSCN = p.TIMES = a.scans;
  if (a.temperatureK) p.CTEMP = *a.temperatureK - 273.15f;
  if (const std::string date = DateFromSeconds(a.date); !date.empty()) p.DATIM = date;
  for (int i = 0; i < 4; ++i) p.PW[i] = a.pulses[i + 1];
  for (int i = 0; i < 5; ++i) p.PI[i] = a.delays[i + 1];
  if (p.PD == 0) p.PD = a.delays[1];
  vendor.pulses = a.pulses;
  vendor.delays = a.delays;
  vendor.constants = a.constants;
  vendor.increments = a.increments;
  vendor.groupDelay = a.groupDelay > 0 ? a.groupDelay : TabulatedGroupDelay(a.decimation, a.filterVersion);
  vendor.decimation = a.decimation;
  vendor.filterVersion = a.filterVersion;
  texts.instrumentId = texts.instrument;
}

std::string ChosenNucleus(const AcquisitionFile& a) {
  // Current files leave NUCLEUS empty in the F1 file; NUC1 names the nucleus there as well.
  return model::NormalizeNucleus(a.nucleus == "OFF" || a.nucleus.empty() ? a.nuc1 : a.nucleus);
}

int ReadParaBru(const fs::path& acqus, model::Spectrum1D& s, LoadState& state) {
  AcquisitionFile a;
  state.DataTypeCode = 0;
  if (ParseAcquisitionFile(acqus, a) != 0) return FailParameterRoutine(state, "ReadParaBru", false);
  ApplyAcquisitionKeys(a, s.params, s.texts, s.vendor);
  model::NmrParameters& p = s.params;
  if (a.byteOrder) state.ByteOrderCode = *a.byteOrder;
  if (a.dataType) state.DataTypeCode = *a.dataType;
  if (a.aqMod) state.AcquisitionClass = *a.aqMod == 1 ? 0 : *a.aqMod == 2 ? 1 : 2;
  state.PointsInFile1D = a.td;
  state.originValid = a.originValid;
  int code = 0;
  if (a.td < 10 || a.sfo1 == 0 || a.swHz == 0 || a.td / 2 > model::kMaxAxisPoints || !a.originValid) {
    code = 1;
  } else {
    p.OFR = static_cast<float>(a.sfo1);
    s.absFreqCenter = a.sfo1;
    s.absFreq0ppm = a.bf1 > 0 ? a.bf1 : a.sfo1;
    p.OBFIN = a.offsetHz;
    p.FREQU = a.swHz;
    p.ACQTM = (a.td / 2.0f) / a.swHz;
    state.ComplexPoints = static_cast<std::int32_t>(std::nearbyint(a.td / 2.0));
    p.POINT = PaddedSize(state.ComplexPoints);
    p.RESOL = a.swHz / p.POINT;
    p.OBNUC = ChosenNucleus(a);
    state.DecimalFlag = std::max(a.ymaxDot, a.yminDot);
  }
  return code;
}

int ReadParaBruAQ(const fs::path& acqus, model::Spectrum1D& s, LoadState& state) {
  AcquisitionFile a;
  if (ParseAcquisitionFile(acqus, a) != 0) return FailParameterRoutine(state, "ReadParaBruAQ", false);
  const std::string keptDate = s.params.DATIM;
  ApplyAcquisitionKeys(a, s.params, s.texts, s.vendor);
  if (s.params.DATIM.empty()) s.params.DATIM = keptDate;
  if (IsUnsetNucleus(s.params.OBNUC)) s.params.OBNUC = ChosenNucleus(a);
  return 0;
}

int ReadParaBruProc(const fs::path& procs, model::Spectrum1D& s, LoadState& state) {
  ProcessingFile p;
  state.DataTypeCode = 0;
  s.texts.instrument = "Bruker";
  if (ParseProcessingFile(procs, p) != 0) return FailParameterRoutine(state, "ReadParaBruProc", false);
  if (p.byteOrder) state.ByteOrderCode = *p.byteOrder;
  if (p.dataType) state.DataTypeCode = *p.dataType;
  state.PointsInFile1D = p.si;
  state.DecimalFlag = std::max(p.ymaxDot, p.yminDot);
  const double carrier = (p.offsetPpm * p.sf - p.swHz / 2.0) * 1e-6 + p.sf;
  state.originValid = p.originValid;
  if (p.si < 10 || carrier == 0 || p.swHz == 0 || p.si > model::kMaxAxisPoints || !p.originValid) return 1;
  model::NmrParameters& n = s.params;
  n.OFR = static_cast<float>(carrier);
  // The centre of the processed spectrum and its 0 ppm (SF, which holds the vendor's referencing).
  s.absFreqCenter = carrier;
  s.absFreq0ppm = p.sf;
  n.OBFIN = static_cast<float>(carrier * 1e6 - (static_cast<float>(carrier) - 0.01) * 1e6);
  n.FREQU = p.swHz;
  n.POINT = p.si;
  n.ACQTM = p.si / p.swHz;
  n.RESOL = p.swHz / static_cast<double>(p.si);
  n.OBNUC.clear();
  if (const std::string date = DateFromComment(p.dateComment); !date.empty()) n.DATIM = date;
  if (AllocateSpectrum1D(s, p.si) != 0) return 1;
  SetAxisFromProcs(p, s);
  return 0;
}

int ReadParaBruTxt(const fs::path& parmTxt, model::Spectrum1D& s, LoadState& state, int overwrite) {
  std::vector<ListingValue> listing;
  if (ParseListing(parmTxt, listing) != 0) return FailParameterRoutine(state, "ReadParaBruTxt", false);
  model::NmrParameters& p = s.params;
  const auto fillText = [](std::string& field, const std::string& value) { if (field.empty()) field = value; };
  const auto fillNumber = [overwrite](auto& field, const std::string& value, bool sizeField) {
    const auto number = ParseNumber(value);
    if (number && (field == 0 || (sizeField && overwrite == 1))) field = static_cast<std::remove_reference_t<decltype(field)>>(*number);
  };
  for (const ListingValue& v : listing) {
    if (v.key == "PULPROG") fillText(p.EXMOD, v.value);
    else if (v.key == "PROBHD") fillText(s.texts.probeHead, v.value);
    else if (v.key == "GRDPROG") fillText(s.texts.gradientProgram, v.value);
    else if (v.key == "INSTRUM") fillText(s.texts.instrument, v.value);
    else if (v.key == "SOLVENT") fillText(p.SLVNT, v.value);
    else if (v.key == "AQ") fillNumber(p.ACQTM, v.value, false);
    else if (v.key == "SI") fillNumber(p.POINT, v.value, true);
    else if (v.key == "NS") fillNumber(p.SCANS, v.value, false);
    else if (v.key == "DS") fillNumber(p.DUMMY, v.value, false);
    else if (v.key == "RG") fillNumber(p.RGAIN, v.value, false);
    else if (v.key == "SWH") fillNumber(p.FREQU, v.value, true);
    else if (v.key == "SF") fillNumber(p.OFR, v.value, true);
    else if ((v.key == "NUC1" || v.key == "NUCLEUS") && IsUnsetNucleus(p.OBNUC)) p.OBNUC = model::NormalizeNucleus(v.value);
    else if (v.key == "TE" && !(p.CTEMP > -273.15f) && ParseNumber(v.value))
      p.CTEMP = static_cast<float>(*ParseNumber(v.value) - 273.15);
  }
  if (p.POINT > 0 && p.FREQU > 0) p.RESOL = p.FREQU / p.POINT;
  return p.POINT > 0 && p.FREQU > 0 ? 0 : 1;
}

}  // namespace velk::formats::bruker
