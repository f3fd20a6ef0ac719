// 2D spectra exported as "nD NMR SPECTRUM" NTUPLES: one "##PAGE= F1=..." per row, each with a
// "(F2++(Y..Y))" table. They fill the real plane; the other planes stay empty.
#include <algorithm>
#include <cmath>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/jcamp/asdf.h"
#include "formats/jcamp/header.h"
#include "formats/jcamp/messages.h"
#include "formats/jcamp/reader.h"
#include "formats/read_result.h"
#include "model/nucleus.h"

namespace velk::formats::jcamp {
namespace {

namespace msg = messages;

// Four planes of this many points stay within what a workstation holds.
constexpr std::int64_t kMax2DPoints = 64 * 1048576;

struct Session2D {
  JcampHeader header;
  int numDim = 0;
  bool symbolsF1F2Y = false;
  std::array<std::string, 2> nuclei;  // F1, F2
  std::array<std::int64_t, 2> points{};
  std::array<double, 2> first{}, last{};
  double yFactor = 1, f2Factor = 1;
  double f1MHz = 0;  // "##$F1 OBSERVE FREQUENCY", which this program's own files state
  bool pagesBegun = false;
  std::int64_t pagesRead = 0;
  bool counting = false;  // the first pass: pages are counted and checked, nothing is stored
  std::string failure;  // why the file is refused; the labels after it are not read

  bool Fail(std::string reason) {
    failure = std::move(reason);
    return false;
  }
};

// Frequency ratios of the nuclei to 1H (IUPAC), for the F1 observe frequency of a heteronuclear
// spectrum, which these files do not state.
double RatioTo1H(const std::string& nucleus) {
  static constexpr std::pair<std::string_view, double> kRatios[] = {
      {"1H", 1.0},        {"2H", 0.15350609}, {"13C", 0.25145020}, {"15N", 0.10136767},
      {"19F", 0.94094011}, {"31P", 0.40480742}, {"29SI", 0.19867187}};
  for (const auto& [name, ratio] : kRatios)
    if (nucleus == name) return ratio;
  return 0;
}

void TakeLabel(const std::string& key, const JcampLabel& label, Session2D& session) {
  const auto number = [&](std::size_t i) { return JcampNumber(label, i); };
  if (key == "##NUMDIM") {
    session.numDim = static_cast<int>(number(0));
  } else if (key == "##SYMBOL") {
    session.symbolsF1F2Y = label.values.size() >= 3 && label.values[0] == "F1" && label.values[1] == "F2" &&
                           label.values[2] == "Y";
  } else if (key == "##.NUCLEUS") {
    for (std::size_t a = 0; a < 2 && a < label.values.size(); ++a)
      session.nuclei[a] = model::NormalizeNucleus(label.values[a]);
  } else if (key == "##VARDIM") {
    for (std::size_t a = 0; a < 2; ++a) session.points[a] = static_cast<std::int64_t>(std::clamp(number(a), 0.0, 1e12));
  } else if (key == "##$F1 OBSERVE FREQUENCY") {
    session.f1MHz = number(0);
  } else if (session.pagesBegun) {
    return;  // the "##FIRST" of every page repeats the axes
  } else if (key == "##FIRST") {
    session.first = {number(0), number(1)};
  } else if (key == "##LAST") {
    session.last = {number(0), number(1)};
  } else if (key == "##FACTOR") {
    session.f2Factor = JcampNumber(label, 1, 1);
    session.yFactor = JcampNumber(label, 2, 1);
  }
}

std::string AtLine(const TextCursor& cursor, std::size_t position, const std::string& reason) {
  return "line " + std::to_string(LineNumberAt(cursor, position)) + ": " + reason;
}

// The planes, once the counting pass has found every declared value in the file.
bool Allocate(Session2D& session, model::Spectrum2D& s) {
  if (session.numDim != 2 || !session.symbolsF1F2Y) return session.Fail(msg::kNot2D);
  const auto [n1, n2] = session.points;
  if (n1 < 1 || n2 < 1) return session.Fail(msg::kNoPoints);
  if (n1 > model::kMaxAxisPoints || n2 > model::kMaxAxisPoints || n1 * n2 > kMax2DPoints)
    return session.Fail(msg::kTooLarge);
  if (session.counting) return true;
  if (model::AllocateSpectrum2D(s, static_cast<std::int32_t>(n2), static_cast<std::int32_t>(n1)) != 0)
    return session.Fail(msg::kDataSize);
  return true;
}

// One page: its values go to one row, index 0 of both axes at the low-frequency end.
bool ReadPage(TextCursor& cursor, Session2D& session, std::vector<double>& row, model::Spectrum2D& s) {
  const auto [n1, n2] = session.points;
  const std::int64_t page = session.pagesRead++;
  if (page >= n1)
    return session.Fail(AtLine(cursor, cursor.position,
                               "page " + std::to_string(page + 1) + " is beyond the " + std::to_string(n1) +
                                   " rows that ##VAR_DIM= declares"));
  std::fill(row.begin(), row.end(), 0.0);
  AsdfTable table{session.counting ? std::span<double>() : std::span<double>(row), row.size()};
  if (n2 > 1 && session.f2Factor != 0)
    table.xStep = (session.last[1] - session.first[1]) / static_cast<double>(n2 - 1) / session.f2Factor;
  std::size_t faultAt = 0;
  if (!ReadAsdfTable(cursor, table, &faultAt))
    return session.Fail(AtLine(cursor, faultAt, "page " + std::to_string(page + 1) + ": " +
                                                    AsdfFaultText(table.fault, row.size())));
  if (table.index != row.size())
    return session.Fail(AtLine(cursor, cursor.position,
                               "page " + std::to_string(page + 1) + " ends after " + std::to_string(table.index) +
                                   " of the " + std::to_string(row.size()) + " values that ##VAR_DIM= declares"));
  if (session.counting) return true;
  const bool f1Turned = session.first[0] > session.last[0];
  const bool f2Turned = session.first[1] > session.last[1];
  const auto r = static_cast<std::int32_t>(f1Turned ? n1 - 1 - page : page);
  for (std::int64_t j = 0; j < n2; ++j) {
    const auto c = static_cast<std::int32_t>(f2Turned ? n2 - 1 - j : j);
    s.RR.at(c, r) = static_cast<float>(session.yFactor * row[static_cast<std::size_t>(j)]);
  }
  return true;
}

void SetAxis(const Session2D& session, int axis, double observeMHz, model::Spectrum2D& s) {
  const std::size_t a = axis == model::F1 ? 0 : 1;
  const std::int64_t n = session.points[a];
  const double hzPerPoint = n > 1 ? std::fabs(session.last[a] - session.first[a]) / static_cast<double>(n - 1) : 0;
  model::AxisInfo& info = s.axis[axis];
  model::AxisExtras& extras = s.extras[axis];
  info.Point = static_cast<std::int32_t>(n);
  info.Resolution = hzPerPoint;
  info.Frequency = static_cast<float>(hzPerPoint * static_cast<double>(n));
  // X in Hz is counted from 0 ppm.
  extras.absFreqCenter = extras.absFreq0ppm = observeMHz;
  extras.ppmFirst = std::min(session.first[a], session.last[a]) / observeMHz;
  extras.ppmStep = hzPerPoint / observeMHz;
  extras.fidPoints = static_cast<std::int32_t>(n);
  extras.nucleus = session.nuclei[a];
  info.RefPoint = 0;
  info.Reference = static_cast<float>(extras.ppmFirst);
}

// Returns the reason when the file is refused.
std::string Finish(const Session2D& session, const std::filesystem::path& file, model::Spectrum2D& s) {
  const JcampHeader& h = session.header;
  const double f2MHz = h.observeMHz;
  if (!(f2MHz > 0)) return msg::kNoFrequency;
  Session2D axes = session;
  if (axes.nuclei[1].empty()) axes.nuclei[1] = h.nucleus;
  if (axes.nuclei[0].empty()) axes.nuclei[0] = axes.nuclei[1];
  const double r1 = RatioTo1H(axes.nuclei[0]), r2 = RatioTo1H(axes.nuclei[1]);
  const double f1MHz = session.f1MHz > 0                                       ? session.f1MHz
                       : axes.nuclei[0] != axes.nuclei[1] && r1 > 0 && r2 > 0 ? f2MHz * r1 / r2
                                                                              : f2MHz;
  SetAxis(axes, model::F1, f1MHz, s);
  SetAxis(axes, model::F2, f2MHz, s);
  model::RebuildPpmTables(s);
  model::NmrParameters& p = s.params;
  p.OFR = static_cast<float>(f2MHz);
  p.OBNUC = axes.nuclei[1];
  p.IRNUC = axes.nuclei[0];
  p.EXMOD = h.pulseSequence.empty() ? "JCAMP-DX" : h.pulseSequence;
  p.COMNT = s.comment = h.title;
  p.SCANS = h.averages;
  p.DATIM = h.date;
  p.SLVNT = h.solvent;
  p.POINT = s.axis[model::F2].Point;
  p.FREQU = s.axis[model::F2].Frequency;
  p.RESOL = s.axis[model::F2].Resolution;
  s.texts.dataTypeText = "JCAMP-DX";
  s.texts.instrument = h.instrument.empty() ? "JCAMP" : h.instrument;
  s.texts.originalFileName = file.string();
  s.texts.fileName = file.filename().string();
  return {};
}

// One pass over the labels and pages; the reason when the file is refused.
std::string ReadPass(TextCursor cursor, Session2D& session, model::Spectrum2D& s) {
  std::vector<double> row;
  const bool ended = ForEachJcampLabel(cursor, [&](const std::string& key, const JcampLabel& label, const std::string& line) {
    if (TakeHeaderLabel(key, label, line, session.header)) return true;
    if (key == "##PAGE") {
      session.pagesBegun = true;
    } else if (key == "##DATATABLE" && !label.values.empty() && label.values[0].starts_with("(F2++(Y..Y))")) {
      if (row.empty()) {
        if (!Allocate(session, s)) return false;
        row.assign(static_cast<std::size_t>(session.points[1]), 0.0);
      }
      return ReadPage(cursor, session, row, s);
    }
    TakeLabel(key, label, session);
    return true;
  });
  if (!session.failure.empty()) return session.failure;
  if (!ended) return msg::kTruncated;
  if (session.pagesRead == 0) return msg::kNoData;
  if (session.pagesRead != session.points[0])
    return "the file holds " + std::to_string(session.pagesRead) + " of the " + std::to_string(session.points[0]) +
           " pages that ##VAR_DIM= declares";
  return {};
}

// A counting pass checks every page against the declared sizes before the planes are allocated.
std::string ReadFile2D(const std::filesystem::path& file, model::Spectrum2D& s) {
  const auto bytes = core::ReadWholeFile(file.string());
  if (!bytes) return msg::kCannotOpen;
  const TextCursor cursor{*bytes, 0};
  Session2D counted;
  counted.counting = true;
  if (std::string reason = ReadPass(cursor, counted, s); !reason.empty()) return reason;
  Session2D session;
  if (std::string reason = ReadPass(cursor, session, s); !reason.empty()) return reason;
  return Finish(session, file, s);
}

}  // namespace

platform::Outcome ReadDataJCAMP2D(const std::filesystem::path& file, model::Spectrum2D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum2D& fresh) {
    const std::string reason = ReadFile2D(file, fresh);
    return reason.empty() ? platform::Outcome{} : Refused(msg::kTitle, reason);
  });
}

}  // namespace velk::formats::jcamp
