// The probes of the Bruker reader: they read only the parameter files and say whether a folder
// holds a usable data set and how it is to be processed.
#include <cmath>

#include "core/text.h"
#include "formats/bruker/routines.h"

namespace velk::formats::bruker {
namespace {

model::ModeResult Refused(int code, const std::string& reason) {
  model::ModeResult r;
  r.code = code;
  r.reason = reason;
  return r;
}

}  // namespace

model::ModeResult RMBru(const fs::path& acqus, const fs::path& acqu2s) {
  AcquisitionFile f2, f1;
  if (ParseAcquisitionFile(acqus, f2) != 0 || ParseAcquisitionFile(acqu2s, f1) != 0)
    return Refused(-1, "acqus or acqu2s is missing or unreadable");
  if (!f2.originValid || !f1.originValid) return Refused(-1, "acqus or acqu2s has no Bruker ##ORIGIN");
  if (f2.sfo1 == 0 || f1.sfo1 == 0) return Refused(1, "SFO1 of acqus or acqu2s is 0");
  model::ModeResult r;
  r.code = 0;
  r.modeText = f2.pulseProgram;
  r.kind = std::fabs(f2.sfo1 - f1.sfo1) / f2.sfo1 >= 0.01 ? "HETERO" : "HOMO";
  return r;
}

model::ModeResult RMBruP(const fs::path& procs, const fs::path& proc2s) {
  ProcessingFile f2, f1;
  if (ParseProcessingFile(procs, f2) != 0 || ParseProcessingFile(proc2s, f1) != 0)
    return Refused(-1, "procs or proc2s is missing or unreadable");
  if (!f2.originValid || !f1.originValid) return Refused(-1, "procs or proc2s has no Bruker ##ORIGIN");
  // PH_mod 1 is a phase correction; 2 (magnitude) and 3 (power) are absolute-value spectra.
  const bool phase = f2.phaseMode == 1 || f1.phaseMode == 1;
  const bool hetero = std::fabs(f2.sf - f1.sf) > 0.01 * f1.sf;
  model::ModeResult r;
  r.code = 0;
  r.processed = true;
  r.modeText = hetero ? (phase ? "VPH_HETERO:" : "V_HETERO:") : (phase ? "VPH_HOMO:" : "V_HOMO:");
  r.kind = hetero ? "HETERO" : "HOMO";
  return r;
}

model::ModeResult RMBP(const fs::path& procs, LoadState& state) {
  ProcessingFile p;
  if (ParseProcessingFile(procs, p) != 0 || !p.originValid) return Refused(-1, "procs is missing or not Bruker's");
  if (p.byteOrder) state.ByteOrderCode = *p.byteOrder;
  model::ModeResult r;
  r.code = 0;
  r.processed = true;
  return r;
}

}  // namespace velk::formats::bruker
