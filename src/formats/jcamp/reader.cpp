#include "formats/jcamp/reader.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/jcamp/asdf.h"
#include "formats/jcamp/header.h"
#include "formats/jcamp/messages.h"
#include "formats/fid_scaling.h"
#include "formats/jcamp/params.h"
#include "formats/read_result.h"

namespace velk::formats::jcamp {
namespace {

namespace msg = messages;

// A 1D table beyond this is no NMR data set; the limit keeps a damaged count from exhausting memory.
constexpr std::int64_t kMax1DPoints = 16 * 1048576;

// The values that the reader holds while it reads one file.
struct Session {
  JcampHeader header;
  double xFactor = 1, yFactor = 1, realFactor = 1, imagFactor = 1;
  double firstX = 0, lastX = 0, deltaX = 0;
  std::int64_t nPoints = 0;
  std::int64_t complexPoints = 0;
  std::string xUnits;
  bool fid = false;
  bool ntuples = false;
  std::vector<double> real, imag;
  std::size_t count = 0;
  bool haveReal = false, haveImag = false;
  std::optional<double> brukerOffset;
  std::string failure;  // why the file is refused; the labels after it are not read

  bool Fail(std::string reason) {
    failure = std::move(reason);
    return false;
  }
};

void EnterJeolSection(TextCursor& cursor, model::Spectrum1D& s) {
  for (;;) {
    const std::size_t start = cursor.position;
    const std::string line = core::Trim(ReadTextLine(cursor));
    if (line.empty()) return;
    const std::string upper = core::ToUpper(line);
    if (upper.starts_with("$$ END OF JEOL SPECIFIC PARAMETERS") || upper.starts_with("$$ END OF NMR SPECIFIC PARAMETERS"))
      return;
    if (!upper.starts_with("##$")) {
      cursor.position = start;
      return;
    }
    ReadParaJeolJcamp(line, s);
  }
}

// Bruker's "##$OFFSET" is the shift of the first point of a processed spectrum: older exports
// carry it without a "##.SHIFT REFERENCE".
void EnterBrukerSection(TextCursor& cursor, model::Spectrum1D& s, std::optional<double>& firstPointPpm) {
  for (;;) {
    const std::size_t start = cursor.position;
    const std::string line = core::Trim(ReadTextLine(cursor));
    if (line.empty()) return;
    const std::string upper = core::ToUpper(line);
    if (upper.starts_with("$$ END OF BRUKER SPECIFIC PARAMETERS")) return;
    if (upper.starts_with("##") && !upper.starts_with("##$")) {
      cursor.position = start;
      return;
    }
    if (SplitJcampLabel(line).key == "##$OFFSET") firstPointPpm = ParseNumber(JcampLabelText(line));
    ReadParaBruJcamp(line, cursor, s);
  }
}

// "line 212: " and the reason.
std::string AtLine(const TextCursor& cursor, std::size_t position, const std::string& reason) {
  return "line " + std::to_string(LineNumberAt(cursor, position)) + ": " + reason;
}

// Decodes one table into out, or only counts it when out is empty; false with the reason when it
// does not hold exactly count values or fails a check.
bool DecodeTable(TextCursor& cursor, Session& session, std::span<double> out, std::size_t count) {
  AsdfTable table{out, count};
  if (count > 1 && session.xFactor != 0)
    table.xStep = (session.lastX - session.firstX) / static_cast<double>(count - 1) / session.xFactor;
  std::size_t faultAt = 0;
  if (!ReadAsdfTable(cursor, table, &faultAt))
    return session.Fail(AtLine(cursor, faultAt, AsdfFaultText(table.fault, count)));
  if (table.index != count)
    return session.Fail(AtLine(cursor, cursor.position,
                               "the table ends after " + std::to_string(table.index) + " of the " +
                                   std::to_string(count) + " values that " +
                                   (session.ntuples ? "##VAR_DIM=" : "##NPOINTS=") + " declares"));
  return true;
}

// Reads one table into the page; the first table sizes both pages. The table is counted before
// anything is allocated for it, so a size the file does not hold costs no memory.
bool ReadTable(TextCursor& cursor, Session& session, bool imaginaryPage) {
  const std::int64_t count = session.ntuples ? session.complexPoints : session.nPoints;
  if (count < 1) return true;  // a table without its size is skipped
  if (count > kMax1DPoints) return session.Fail(msg::kTooLarge);
  if (session.real.empty()) {
    TextCursor counting = cursor;
    if (!DecodeTable(counting, session, {}, static_cast<std::size_t>(count))) return false;
    const std::int64_t size = session.ntuples ? PaddedFidSize(count) : count;
    session.real.assign(static_cast<std::size_t>(size), 0.0);
    session.imag.assign(static_cast<std::size_t>(size), 0.0);
    session.count = static_cast<std::size_t>(count);
  }
  std::vector<double>& page = imaginaryPage ? session.imag : session.real;
  const std::size_t n = std::min(session.count, page.size());
  if (!DecodeTable(cursor, session, std::span<double>(page).first(n), n)) return false;
  (imaginaryPage ? session.haveImag : session.haveReal) = true;
  return true;
}

// Returns false when the label refuses the file.
bool TakeDataLabel(const std::string& key, const JcampLabel& label, TextCursor& cursor, Session& session) {
  const auto number = [&](std::size_t i) { return JcampNumber(label, i); };
  const std::string first = label.values.empty() ? std::string() : label.values[0];
  if (key == "##DELTAX") session.deltaX = number(0);
  else if (key == "##XUNITS" || key == "##UNITS") session.xUnits = first;
  else if (key == "##XFACTOR") session.xFactor = number(0);
  else if (key == "##YFACTOR") session.yFactor = number(0);
  else if (key == "##FIRSTX" || key == "##FIRST") session.firstX = number(0);
  else if (key == "##LASTX" || key == "##LAST") session.lastX = number(0);
  else if (key == "##NPOINTS") {
    session.nPoints = static_cast<std::int64_t>(std::clamp(number(0), -1.0, 1e12));
    if (session.nPoints <= 0) return session.Fail(msg::kNoPoints);
  } else if (key == "##NTUPLES") {
    session.ntuples = true;
  } else if (key == "##SYMBOL") {
    const bool xri = label.values.size() >= 3 && label.values[0] == "X" && label.values[1] == "R" && label.values[2] == "I";
    if (!xri) return session.Fail(msg::kBadSymbols);
  } else if (key == "##VARDIM") {
    if (label.values.size() < 3 || number(0) != number(1) || number(1) != number(2))
      return session.Fail(msg::kBadDimensions);
    session.complexPoints = static_cast<std::int64_t>(std::clamp(number(0), 0.0, 1e12));
  } else if (key == "##FACTOR") {
    session.xFactor = number(0);
    session.realFactor = JcampNumber(label, 1, 1);
    session.imagFactor = JcampNumber(label, 2, 1);
  } else if (key == "##XYDATA") {
    const std::string& dataClass = session.header.dataClass;
    if ((dataClass.empty() || dataClass.find("XYDATA") != std::string::npos) && first.starts_with("(X++(Y..Y))")) {
      session.ntuples = false;
      session.realFactor = session.yFactor;
      return ReadTable(cursor, session, false);
    }
  } else if (key == "##DATATABLE") {
    if (first.starts_with("(X++(R..R))")) return ReadTable(cursor, session, false);
    if (first.starts_with("(X++(I..I))")) return ReadTable(cursor, session, true);
  }
  return true;
}

void ApplyHeader(const JcampHeader& h, model::Spectrum1D& s) {
  model::NmrParameters& p = s.params;
  if (!h.title.empty()) s.comment = p.COMNT = h.title;
  if (h.observeMHz > 0) p.OFR = static_cast<float>(h.observeMHz);
  if (!h.nucleus.empty()) p.OBNUC = h.nucleus;
  if (h.averages > 0) p.SCANS = p.TOSCN = h.averages;
  if (h.digitiser != 0) p.ADBIT = h.digitiser;
  if (!h.instrument.empty()) s.texts.instrument = h.instrument;
  if (!h.date.empty()) p.DATIM = h.date;
  if (!h.solvent.empty() && p.SLVNT.empty()) p.SLVNT = h.solvent;
  if ((p.EXMOD.empty() || p.EXMOD == "JCAMP-DX") && !h.pulseSequence.empty()) p.EXMOD = h.pulseSequence;
}

// The FID: the X step is the dwell time; the offset of the last 40 % is removed and the largest
// real value scales the points to 1 (from 1e-11, so that an empty FID stays finite).
bool ConvertFid(Session& session, int acquisitionClass, model::Spectrum1D& s) {
  const std::int32_t size = PaddedFidSize(static_cast<std::int64_t>(session.count));
  double dwell = session.count > 1 ? (session.lastX - session.firstX) / static_cast<double>(session.count - 1) : 0;
  if (!(dwell > 0)) dwell = session.xFactor;
  const double width = dwell > 0 ? 1.0 / dwell : 0;
  const std::size_t n = session.count;
  if (model::AllocateSpectrum1D(s, size) != 0) return session.Fail(msg::kDataSize);
  for (std::size_t i = 0; i < n; ++i) {
    // Sign-alternated sampling becomes what the transform expects.
    const double sign = acquisitionClass == 2 && i % 2 == 1 ? -1 : 1;
    s.re[i] = static_cast<float>(sign * session.realFactor * session.real[i]);
    s.im[i] = static_cast<float>(sign * session.imagFactor * session.imag[i]);
  }
  RemoveTailAndScale(std::span(s.re).first(n), std::span(s.im).first(n), 1e-11f);
  s.params.POINT = size;
  s.params.FREQU = static_cast<float>(width);
  s.params.RESOL = width / static_cast<double>(size);
  s.params.ACQTM = static_cast<float>(dwell * static_cast<double>(n));
  return true;
}

// The spectrum: index 0 is the low-frequency end whatever the order in the file. X in Hz is
// counted from 0 ppm; a "##.SHIFT REFERENCE" puts its data point at its shift (files whose X runs
// from the spectral width down to 0 carry one).
bool ConvertSpectrum(Session& session, model::Spectrum1D& s) {
  const std::size_t n = session.count;
  const double sfo = session.header.observeMHz;
  const double step = n > 1 ? (session.lastX - session.firstX) / static_cast<double>(n - 1) : 0;
  const bool hz = core::ToUpper(session.xUnits) == "HZ";
  const double lowX = std::min(session.firstX, session.lastX);
  const double hzPerPoint = hz ? std::fabs(step) : std::fabs(step) * sfo;
  double offset = hz ? lowX / sfo : lowX;
  const double sweep = hzPerPoint * static_cast<double>(n);
  // Hz become ppm through the observe frequency, as the exchange format defines and as every
  // writer (this program's too) turns ppm into Hz. Taking the spectrum's centre for the observe
  // frequency instead would stretch the axis by half the width over the frequency (1e-4 on 13C).
  const double ppmStep = hzPerPoint / sfo;
  const bool turned = step < 0;
  if (session.header.shiftReference) {
    const auto [point, ppm] = *session.header.shiftReference;
    const double filePosition = point - 1;
    const double index = turned ? static_cast<double>(n - 1) - filePosition : filePosition;
    offset = ppm - index * ppmStep;
  }
  if (model::AllocateSpectrum1D(s, static_cast<std::int32_t>(n)) != 0) return session.Fail(msg::kDataSize);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t from = turned ? n - 1 - i : i;
    s.re[i] = static_cast<float>(session.realFactor * session.real[from]);
    s.im[i] = static_cast<float>(session.imagFactor * session.imag[from]);
    s.axisPpm[i] = offset + static_cast<double>(i) * ppmStep;
  }
  s.params.POINT = static_cast<std::int32_t>(n);
  s.params.FREQU = static_cast<float>(sweep);
  s.params.RESOL = hzPerPoint;
  s.params.SMEXR = static_cast<float>(offset);
  s.params.SMTMS = 0;
  s.axisStep = ppmStep;
  s.axisFirst = static_cast<float>(offset);
  return true;
}

// Returns the reason when the file is refused.
std::string ReadFile(const std::filesystem::path& file, model::Spectrum1D& s) {
  const auto bytes = core::ReadWholeFile(file.string());
  if (!bytes) return msg::kCannotOpen;
  TextCursor cursor{*bytes, 0};
  Session session;
  s.params.EXMOD = "JCAMP-DX";
  s.texts.originalFileName = file.string();
  s.texts.fileName = file.filename().string();
  s.texts.instrument = "JCAMP";
  s.texts.dataTypeText = "JCAMP-DX";
  const bool ended = ForEachJcampLabel(cursor, [&](const std::string& key, const JcampLabel& label, const std::string& line) {
    if (key == "$$JEOLSPECIFICPARAMETERS" || key == "$$NMRSPECIFICPARAMETERS") {
      EnterJeolSection(cursor, s);
      return true;
    }
    if (key == "$$BRUKERSPECIFICPARAMETERS") {
      EnterBrukerSection(cursor, s, session.brukerOffset);
      return true;
    }
    if (TakeHeaderLabel(key, label, line, session.header)) {
      const std::string& type = session.header.dataType;
      if (key == "##DATATYPE" && type.find("LINK") == std::string::npos) {
        session.fid = type.find("NMRFID") != std::string::npos;
        if (!session.fid && type.find("NMRSPECTRUM") == std::string::npos) return session.Fail(msg::kNotNmr);
      }
      if (key == "##.OBSERVEFREQUENCY" && !(session.header.observeMHz > 0)) return session.Fail(msg::kNoFrequency);
      return true;
    }
    return TakeDataLabel(key, label, cursor, session);
  });
  if (!session.failure.empty()) return session.failure;
  if (!session.haveReal || session.count == 0) return msg::kNoData;
  if (session.ntuples && !session.haveImag) return msg::kNoImaginary;
  if (!ended) return msg::kTruncated;
  if (!(session.header.observeMHz > 0)) return msg::kNoFrequency;
  ApplyHeader(session.header, s);
  if (!session.header.shiftReference && session.brukerOffset)
    session.header.shiftReference = std::pair{1.0, *session.brukerOffset};
  const bool converted = session.fid ? ConvertFid(session, session.header.acquisitionClass, s) : ConvertSpectrum(session, s);
  return converted ? std::string() : session.failure;
}

}  // namespace

platform::Outcome ReadDataJCAMP(const std::filesystem::path& file, model::Spectrum1D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum1D& fresh) {
    const std::string reason = ReadFile(file, fresh);
    return reason.empty() ? platform::Outcome{} : Refused(msg::kTitle, reason);
  });
}

}  // namespace velk::formats::jcamp
