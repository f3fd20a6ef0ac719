#include "display/display_grid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "model/data_type.h"

namespace velk::display {
namespace {

// A line of grid points whose elements are "lanes" floats wide: one float for the column
// direction (one data row at a time), a whole grid row for the row direction (all columns at once).
struct Lanes {
  float* data;
  std::size_t width;
  float* at(std::int64_t i) const { return data + static_cast<std::size_t>(i) * width; }
};

// Each output point keeps the largest value of its group of `stride` source points, cut at the end
// of the range. By magnitude with the sign kept for signed data, a plain maximum otherwise; the held
// value starts at 0 and only a strictly larger one replaces it, so ties keep the earlier point.
void ThinLine(const float* source, int intervals, int stride, Lanes out, int outIntervals, bool bySize) {
  if (out.width == 1 && bySize) {  // the column direction: one value at a time
    for (int j = 0; j <= outIntervals; ++j) {
      float held = 0.0f;
      const int last = std::min(j * stride + stride - 1, intervals);
      for (int i = j * stride; i <= last; ++i)
        if (std::fabs(source[i]) > std::fabs(held)) held = source[i];
      out.data[j] = held;
    }
    return;
  }
  for (int j = 0; j <= outIntervals; ++j) {
    float* held = out.at(j);
    std::fill(held, held + out.width, 0.0f);
    const int last = std::min(j * stride + stride - 1, intervals);
    for (int i = j * stride; i <= last; ++i) {
      const float* v = source + static_cast<std::size_t>(i) * out.width;
      if (bySize) {
        for (std::size_t k = 0; k < out.width; ++k)
          if (std::fabs(v[k]) > std::fabs(held[k])) held[k] = v[k];
      } else {
        for (std::size_t k = 0; k < out.width; ++k)
          if (v[k] > held[k]) held[k] = v[k];
      }
    }
  }
}

// Midpoint weights of the cubic and of the fifth-order interpolation (9/16, 1/16; 150/256,
// 25/256, 3/256).
void FillMidpoints(Lanes out, int outIntervals, int factor, bool fifthOrder) {
  const auto element = [&](std::int64_t i) -> const float* {
    return i < 0 || i > outIntervals ? nullptr : out.at(i);  // beyond either end counts as 0
  };
  const auto value = [](const float* p, std::size_t k) { return p ? static_cast<double>(p[k]) : 0.0; };
  for (int d = factor; d >= 2; d /= 2) {
    for (std::int64_t x = 0; x <= outIntervals - 1; x += d) {
      const float* a[6] = {element(x - 2 * d), element(x - d), element(x),
                           element(x + d),     element(x + 2 * d), element(x + 3 * d)};
      float* mid = out.at(x + d / 2);
      for (std::size_t k = 0; k < out.width; ++k) {
        const double inner = value(a[2], k) + value(a[3], k);
        const double outer = value(a[1], k) + value(a[4], k);
        mid[k] = static_cast<float>(
            fifthOrder ? 0.5859375 * inner - 0.09765625 * outer + 0.01171875 * (value(a[0], k) + value(a[5], k))
                       : 0.5625 * inner - 0.0625 * outer);
      }
    }
  }
}

// Resamples `intervals`+1 source elements into outIntervals+1 output elements by the factor.
void ResampleLine(const float* source, int intervals, double factor, Lanes out, int outIntervals, bool bySize,
                  bool fifthOrder) {
  if (factor < 1.0) {
    ThinLine(source, intervals, static_cast<int>(std::lrint(1.0 / factor)), out, outIntervals, bySize);
    return;
  }
  const int f = static_cast<int>(std::lrint(factor));
  for (int i = 0; i <= intervals; ++i)
    std::copy_n(source + static_cast<std::size_t>(i) * out.width, out.width, out.at(static_cast<std::int64_t>(i) * f));
  FillMidpoints(out, outIntervals, f, fifthOrder);
}

// The axis position of every grid point: every stride-th data point when thinned; when enlarged,
// f equal steps between neighbouring data points, the last on the next data point.
std::vector<float> AxisPositions(const std::vector<float>& ppm, int first, int intervals, double factor,
                                 int outIntervals) {
  std::vector<float> out(static_cast<std::size_t>(outIntervals) + 1);
  if (factor < 1.0) {
    const int stride = static_cast<int>(std::lrint(1.0 / factor));
    for (int j = 0; j <= outIntervals; ++j) out[j] = ppm[first + j * stride];
    return out;
  }
  const int f = static_cast<int>(std::lrint(factor));
  out[0] = ppm[first];
  for (int i = 0; i < intervals; ++i) {
    const double step = (static_cast<double>(ppm[first + i + 1]) - ppm[first + i]) / f;
    for (int k = 1; k <= f; ++k) out[i * f + k] = static_cast<float>(ppm[first + i] + k * step);
  }
  return out;
}

// One data row of the shown number, from column first to first + intervals.
void ShownRow(const GridSource& src, ShownValue kind, int row, int first, int intervals, std::vector<float>& out) {
  const model::Spectrum2D& s = src.spectrum;
  const float* rr = s.RR.row(row).data() + first;
  if (kind == ShownValue::Signed) {
    std::copy_n(rr, intervals + 1, out.begin());
    return;
  }
  const float* ir = s.IR.row(row).data() + first;
  const float* ri = s.RI.row(row).data() + first;
  const float* ii = s.II.row(row).data() + first;
  for (int i = 0; i <= intervals; ++i) {
    double sum = static_cast<double>(rr[i]) * rr[i] + static_cast<double>(ir[i]) * ir[i];
    if (kind == ShownValue::FourQuadrant)
      sum += static_cast<double>(ri[i]) * ri[i] + static_cast<double>(ii[i]) * ii[i];
    out[i] = static_cast<float>(std::sqrt(sum));
  }
}

bool PlaneHolds(const model::Plane& p, int colLast, int rowLast) {
  return colLast < p.stride && rowLast < p.rows &&
         p.data.size() >= static_cast<std::size_t>(p.stride) * static_cast<std::size_t>(p.rows);
}

bool DataCover(const GridSource& src, ShownValue kind, int colFirst, int colLast, int rowFirst, int rowLast) {
  const model::Spectrum2D& s = src.spectrum;
  if (colFirst < 0 || rowFirst < 0 || colLast >= s.axis[model::F2].Point || rowLast >= s.axis[model::F1].Point)
    return false;
  if (static_cast<int>(s.ppmF2.size()) <= colLast || static_cast<int>(s.ppmF1.size()) <= rowLast) return false;
  if (!PlaneHolds(s.RR, colLast, rowLast)) return false;
  if (kind == ShownValue::Signed) return true;
  if (!PlaneHolds(s.IR, colLast, rowLast)) return false;
  return kind == ShownValue::TwoQuadrant || (PlaneHolds(s.RI, colLast, rowLast) && PlaneHolds(s.II, colLast, rowLast));
}

}  // namespace

ShownValue ShownValueOf(int pulseModeClass, const ContourSetting& setting) {
  if (pulseModeClass == model::VPH_HMBC) return ShownValue::TwoQuadrant;
  if (setting.PowerSpectrum == 1) return ShownValue::FourQuadrant;
  return ShownValue::Signed;
}

double GridFactor(int intervals, int pixels) {
  double f = 1.0;
  if (pixels < intervals) {
    if (pixels <= std::lrint(intervals / 2.0)) {
      while (intervals * f / 2.0 >= pixels) f /= 2.0;
    }
  } else {
    while (intervals * f < pixels) f *= 2.0;
  }
  return f;
}

int CappedPixels(int extent, int cap, int displayDimension) {
  return std::min(extent, cap > 0 ? cap : displayDimension);
}

bool MakeDisplayGrid(ContourGrid& grid, const GridSource& source, int colFirst, int colLast, int rowFirst,
                     int rowLast, int colPixels, int rowPixels, bool reuse) {
  const int colIntervals = colLast - colFirst;
  const int rowIntervals = rowLast - rowFirst;
  const double colFactor = GridFactor(colIntervals, colPixels);
  const double rowFactor = GridFactor(rowIntervals, rowPixels);
  if (reuse && !grid.Values.empty() && colFactor == grid.ColFactor && rowFactor == grid.RowFactor &&
      colFirst == grid.DataColFirst && colLast == grid.DataColLast && rowFirst == grid.DataRowFirst &&
      rowLast == grid.DataRowLast)
    return false;

  grid.ColFactor = static_cast<float>(colFactor);
  grid.RowFactor = static_cast<float>(rowFactor);
  grid.DataColFirst = colFirst;
  grid.DataColLast = colLast;
  grid.DataRowFirst = rowFirst;
  grid.DataRowLast = rowLast;
  const ShownValue kind = ShownValueOf(source.pulseModeClass, source.setting);
  if (colPixels < 3 || rowPixels < 3 || colIntervals < 2 || rowIntervals < 2 ||
      !DataCover(source, kind, colFirst, colLast, rowFirst, rowLast))
    return false;

  const int cols = static_cast<int>(colIntervals * colFactor);
  const int rows = static_cast<int>(rowIntervals * rowFactor);
  const bool fifthOrder = source.setting.Interpolation != 0;
  const std::size_t width = static_cast<std::size_t>(cols) + 1;

  // The column direction for every data row into a work array, then the row direction from it.
  std::vector<float> work(width * (static_cast<std::size_t>(rowIntervals) + 1));
  std::vector<float> line(static_cast<std::size_t>(colIntervals) + 1);
  for (int r = 0; r <= rowIntervals; ++r) {
    ShownRow(source, kind, rowFirst + r, colFirst, colIntervals, line);
    ResampleLine(line.data(), colIntervals, colFactor, Lanes{work.data() + r * width, 1}, cols, true, fifthOrder);
  }
  grid.Values.assign(width * (static_cast<std::size_t>(rows) + 1), 0.0f);
  ResampleLine(work.data(), rowIntervals, rowFactor, Lanes{grid.Values.data(), width}, rows,
               kind == ShownValue::Signed, fifthOrder);

  grid.Cols = cols;
  grid.Rows = rows;
  grid.ColPpm = AxisPositions(source.spectrum.ppmF2, colFirst, colIntervals, colFactor, cols);
  grid.RowPpm = AxisPositions(source.spectrum.ppmF1, rowFirst, rowIntervals, rowFactor, rows);
  return true;
}

}  // namespace velk::display
