// The data routines of 2D sets: the raw ser file and the processed 2rr, 2ri, 2ir, 2ii.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "core/text.h"
#include "formats/bruker/data_file.h"
#include "formats/bruker/messages.h"

namespace velk::formats::bruker {
namespace {

using model::Plane;


// Rows in the file: 1024-byte blocks per row as the spectrometers write them; an older layout pads
// rows to multiples of 256 complex points, which is taken when the file length says so.
std::uint64_t RawRowStride(std::uint64_t complexPoints, ElementType type, std::uint64_t fileRows,
                           std::uint64_t fileLength) {
  const std::uint64_t blocks = RowStrideValues(2 * complexPoints, type);
  const std::uint64_t padded256 = ((complexPoints - 1) / 256 + 1) * 256 * 2;
  const std::uint64_t width = ElementWidth(type);
  if (fileLength != fileRows * blocks * width && fileLength == fileRows * padded256 * width) return padded256;
  return blocks;
}

// Echo E and anti-echo A rows of one increment become its cosine and sine rows:
// cos = E + A, sin = i (E - A), each with its real and imaginary F2 parts. The sign of the sine row
// is the one that puts the vendor's own processed peaks where ours are (cyclosporin HSQC).
void CombineEchoAntiecho(std::span<float> echoRe, std::span<float> echoIm, std::span<float> antiRe,
                         std::span<float> antiIm, std::int32_t points) {
  for (std::int32_t j = 0; j < points; ++j) {
    const float er = echoRe[j], ei = echoIm[j], ar = antiRe[j], ai = antiIm[j];
    echoRe[j] = er + ar;
    echoIm[j] = ei + ai;
    antiRe[j] = ai - ei;
    antiIm[j] = er - ar;
  }
}

// The mean of points rnd(0.8 n) .. n-1 of each row is the receiver's offset.
void SubtractTailMean(Plane& plane, std::int32_t rows, std::int32_t n) {
  const std::int32_t from = static_cast<std::int32_t>(std::nearbyint(0.8 * n));
  if (from >= n) return;
  for (std::int32_t r = 0; r < rows; ++r) {
    const auto row = plane.row(r);
    double sum = 0;
    for (std::int32_t j = from; j < n; ++j) sum += row[j];
    const float mean = static_cast<float>(sum / (n - from));
    for (std::int32_t j = 0; j < n; ++j) row[j] -= mean;
  }
}

// Increments of rowsPerIncrement rows each that the file holds whole; the last row needs no padding.
std::int32_t WholeIncrements(std::uint64_t length, std::uint64_t stride, std::uint64_t rowValues, std::uint64_t width,
                             int rowsPerIncrement) {
  const std::uint64_t rowBytes = stride * width;
  if (rowBytes == 0 || length < rowValues * width) return 0;
  const std::uint64_t rows = (length - rowValues * width) / rowBytes + 1;
  return static_cast<std::int32_t>(std::min<std::uint64_t>(rows / rowsPerIncrement, INT32_MAX));
}

void NoteProcessing(model::Spectrum2D& s, const std::string& line) {
  for (std::string& slot : s.processing)
    if (slot.empty()) {
      slot = line;
      return;
    }
}

void NoteRawReading(model::Spectrum2D& s, bool phaseSensitive, int fnMode, bool negateOdd) {
  char text[160];
  const char* scheme = fnMode >= 0 && fnMode <= 6 ? messages::kQuadratureNames[fnMode] : "unknown";
  std::snprintf(text, sizeof text, "Bruker F1 quadrature %s (FnMODE %d): %s%s", scheme, fnMode,
                phaseSensitive ? "phase-sensitive row pairs" : "one row per increment (absolute value)",
                !phaseSensitive ? ""
                : fnMode == model::kQuadEchoAntiecho ? ", echo/anti-echo pairs recombined on reading"
                : negateOdd ? ", every other row pair negated" : "");
  NoteProcessing(s, text);
  if (s.vendor.groupDelay > 0) {
    const double whole = std::nearbyint(s.vendor.groupDelay);
    std::snprintf(text, sizeof text,
                  "Bruker digital filter GRPDLY %.4f: FID shift %d points, %.4f point left as first-order phase",
                  s.vendor.groupDelay, static_cast<int>(whole), s.vendor.groupDelay - whole);
    NoteProcessing(s, text);
  }
}

}  // namespace

bool PreparePlanes(model::Spectrum2D& s, std::int32_t f2, std::int32_t f1, bool zeroed) {
  const std::int32_t columns = std::max(f2, model::kMinAxisPoints), rows = std::max(f1, model::kMinAxisPoints);
  const auto fits = [&](const Plane& p) {
    return p.stride == columns && p.rows == rows && p.data.size() == static_cast<std::size_t>(columns) * rows;
  };
  if (!zeroed && fits(s.RR) && fits(s.IR) && fits(s.RI) && fits(s.II) &&
      s.ppmF2.size() == static_cast<std::size_t>(columns) && s.ppmF1.size() == static_cast<std::size_t>(rows))
    return true;
  return AllocateSpectrum2D(s, f2, f1) == 0;
}

void LendPlanes(model::Spectrum2D& from, model::Spectrum2D& to) {
  to.RR = std::move(from.RR);
  to.IR = std::move(from.IR);
  to.RI = std::move(from.RI);
  to.II = std::move(from.II);
  to.ppmF1 = std::move(from.ppmF1);
  to.ppmF2 = std::move(from.ppmF2);
  to.workTraces = std::move(from.workTraces);
}

platform::Outcome RDBru(const fs::path& ser, model::Spectrum2D& s, LoadState& state, model::ReadContext& context) {
  const bool phase = model::IsPhaseSensitive(state.pulseModeClass);
  const std::uint64_t complexPoints = static_cast<std::uint64_t>(state.AcquiredComplexPoints);
  if (complexPoints == 0 || state.F1Rows <= 0 || state.F2Size < state.AcquiredComplexPoints ||
      state.F1Size < state.F1Rows)
    return {1, messages::Invalid2DData()};
  const std::uint64_t fileRows = static_cast<std::uint64_t>(state.F1Rows) * (phase ? 2 : 1);
  std::error_code error;
  const std::uint64_t length = fs::file_size(ser, error);
  if (error) return {-1, messages::InvalidData()};
  ChooseDataType(length, 2 * complexPoints * fileRows, false, state, context.prompt);
  DataFile data;
  const ElementType type = state.DataTypeCode == 2 ? ElementType::Float64
                           : state.DataTypeCode == 1 ? ElementType::Float32 : ElementType::Int32;
  const std::uint64_t stride = RawRowStride(complexPoints, type, fileRows, length);
  // An acquisition stopped early leaves fewer rows than TD says; its whole increments are read.
  const std::int32_t increments = WholeIncrements(length, stride, 2 * complexPoints, ElementWidth(type), phase ? 2 : 1);
  const std::int32_t rows = std::min(state.F1Rows, std::max(increments, 1));
  const std::uint64_t readRows = static_cast<std::uint64_t>(rows) * (phase ? 2 : 1);
  // The last row need not be padded.
  if (auto failure = LoadDataFile(ser, 0, false, (readRows - 1) * stride + 2 * complexPoints, state,
                                  context.prompt, data))
    return {1, *failure};
  if (rows < state.F1Rows) {
    char text[120];
    std::snprintf(text, sizeof text, "Acquisition stopped early: %d of %d increments in the ser file", rows,
                  state.F1Rows);
    NoteProcessing(s, text);
    s.extras[model::F1].fidPoints = rows;
  }
  if (!PreparePlanes(s, state.F2Size, state.F1Size, true)) return {1, messages::DataSizeTooLarge()};
  const int fnMode = s.vendor.quadratureF1;
  const bool echoAntiecho = phase && fnMode == model::kQuadEchoAntiecho;
  const bool negateOdd = phase && fnMode != model::kQuadStates && !echoAntiecho;
  std::vector<float> values(2 * complexPoints);
  const auto readRow = [&](std::uint64_t fileRow, Plane& re, Plane& im, std::int32_t r, bool negate) {
    DecodeElements(data.bytes, fileRow * stride * ElementWidth(data.type), values.size(), data.type, data.order,
                   values);
    const float sign = negate ? -1.0f : 1.0f;
    auto reRow = re.row(r), imRow = im.row(r);
    for (std::uint64_t j = 0; j < complexPoints; ++j) {
      reRow[j] = sign * values[2 * j];
      imRow[j] = sign * values[2 * j + 1];
    }
  };
  const auto points = static_cast<std::int32_t>(complexPoints);
  for (std::int32_t r = 0; r < rows; ++r) {
    if (!context.progress.Step(r, rows)) return {1, {}};  // quit: nothing to say
    if (!phase) {
      readRow(r, s.RR, s.IR, r, false);
      continue;
    }
    const bool negate = negateOdd && r % 2 == 1;
    readRow(2 * static_cast<std::uint64_t>(r), s.RR, s.IR, r, negate);
    readRow(2 * static_cast<std::uint64_t>(r) + 1, s.RI, s.II, r, negate);
    if (echoAntiecho) CombineEchoAntiecho(s.RR.row(r), s.IR.row(r), s.RI.row(r), s.II.row(r), points);
  }
  if (context.fidBaseline) {
    const std::array<Plane*, 4> planes{&s.RR, &s.IR, &s.RI, &s.II};
    for (std::size_t k = 0; k < (phase ? 4u : 2u); ++k) SubtractTailMean(*planes[k], rows, points);
  }
  s.vendor.echoAntiechoCombined = echoAntiecho;
  // The digital filter's onset: the nearest whole number of points goes to the FID shift, so that
  // what is left (a fraction of a point) is a small first-order phase.
  if (s.vendor.groupDelay > 0) s.fidShift = static_cast<std::int32_t>(std::nearbyint(s.vendor.groupDelay));
  NoteRawReading(s, phase, fnMode, negateOdd);
  return {};
}

platform::Outcome RDBruP(const fs::path& file, model::Spectrum2D& s, LoadState& state, model::ReadContext& context) {
  const std::string name = core::ToUpper(file.filename().string());
  const std::string tag = name.size() >= 3 ? name.substr(name.size() - 3) : name;
  Plane* target = tag == "2RR" ? &s.RR : tag == "2RI" ? &s.RI : tag == "2IR" ? &s.IR : tag == "2II" ? &s.II : nullptr;
  if (target == nullptr) return {-1, messages::InvalidData()};
  const std::int32_t f2 = state.F2Size, f1 = state.F1Size, x2 = state.XDimF2, x1 = state.XDimF1;
  if (f2 <= 0 || f1 <= 0) return {1, messages::Invalid2DData()};
  if (f2 > model::kMaxAxisPoints || f1 > model::kMaxAxisPoints) return {1, messages::TooLargeData()};
  if (x2 <= 0 || x1 <= 0 || x2 > f2 || x1 > f1 || f2 % x2 != 0 || f1 % x1 != 0) return {1, messages::BadSubmatrix()};
  const std::uint64_t total = static_cast<std::uint64_t>(f2) * static_cast<std::uint64_t>(f1);
  const bool first = tag == "2RR";
  DataFile data;
  if (auto failure = LoadDataFile(file, first ? total : 0, first, total, state, context.prompt, data))
    return {1, *failure};
  // Every point of the plane is written below: planes of the right size are used as they are.
  if (first && !PreparePlanes(s, f2, f1, false)) return {1, messages::DataSizeTooLarge()};
  if (target->stride < f2 || target->rows < f1) return {1, messages::Invalid2DData()};
  // Submatrices of x1 rows by x2 columns, in file order; both axes are turned so that index 0 is
  // the low-frequency end.
  const std::uint64_t width = ElementWidth(data.type);
  std::uint64_t offset = 0;
  for (std::int32_t bi = 0; bi < f1 / x1; ++bi) {
    if (!context.progress.Step(bi, f1 / x1)) return {1, {}};  // quit: nothing to say
    for (std::int32_t bj = 0; bj < f2 / x2; ++bj)
      for (std::int32_t i = 0; i < x1; ++i, offset += x2 * width) {
        const auto run = target->row(f1 - 1 - i - bi * x1).subspan(static_cast<std::size_t>(f2 - (bj + 1) * x2), x2);
        DecodeElements(data.bytes, offset, run.size(), data.type, data.order, run, true);
      }
  }
  return {};
}

}  // namespace velk::formats::bruker
