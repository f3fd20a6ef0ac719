#include "display/tracer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace velk::display {
namespace {

using platform::Point;
using platform::Surface;

// Device coordinates round half to even; a value that is not a number (damaged data) goes to 0
// rather than into an undefined conversion.
int Rnd(double v) {
  if (std::isnan(v)) return 0;
  return static_cast<int>(std::nearbyint(std::clamp(v, -1e9, 1e9)));
}

int Sgn(int v) { return (v > 0) - (v < 0); }

// The indices of the visible grid lines on one axis, with one beyond each edge of the window.
void VisibleRange(const std::vector<float>& pos, float viewStart, float viewEnd, int& first, int& last) {
  const float lo = std::min(viewStart, viewEnd);
  const float hi = std::max(viewStart, viewEnd);
  const bool ascending = pos.front() <= pos.back();
  first = 0;
  last = static_cast<int>(pos.size()) - 1;
  for (int i = 0; i < static_cast<int>(pos.size()); ++i) {
    if (ascending ? pos[i] < lo : pos[i] > hi) {
      first = i;
    } else if (ascending ? pos[i] > hi : pos[i] < lo) {
      last = i;
      break;
    }
  }
}

// Narrows first..last to the grid lines whose pixels fall inside lo..hi, again keeping one line
// beyond each edge. Which edge comes first follows the direction in which the pixels run.
void NarrowToClip(const std::vector<int>& pixel, int a, int b, int& first, int& last) {
  const int lo = std::min(a, b);
  const int hi = std::max(a, b);
  const bool ascending = pixel[first] <= pixel[last];
  const int from = first;
  const int to = last;
  for (int i = from; i <= to; ++i) {
    if (ascending ? pixel[i] < lo : pixel[i] > hi) {
      first = i;
    } else if (ascending ? pixel[i] > hi : pixel[i] < lo) {
      last = i;
      break;
    }
  }
}

std::vector<int> PixelTable(const std::vector<float>& pos, float viewStart, float viewEnd, int start, int extent) {
  const float scale = static_cast<float>(extent) / (viewEnd - viewStart);
  std::vector<int> pixel(pos.size());
  for (std::size_t i = 0; i < pos.size(); ++i) pixel[i] = Rnd((pos[i] - viewStart) * scale + start);
  return pixel;
}

struct Frame {
  std::vector<int> x, y;  // device position of every grid column and row
  int colFirst = 0, colLast = 0, rowFirst = 0, rowLast = 0;
  std::vector<float> stripMax, stripMin;  // extremes of the two rows of each strip, visible columns
};

Frame MakeFrame(const ContourGrid& grid, const Placement& placement, const ClipRect& clip) {
  Frame f;
  VisibleRange(grid.ColPpm, grid.ViewColStart, grid.ViewColEnd, f.colFirst, f.colLast);
  VisibleRange(grid.RowPpm, grid.ViewRowStart, grid.ViewRowEnd, f.rowFirst, f.rowLast);
  f.x = PixelTable(grid.ColPpm, grid.ViewColStart, grid.ViewColEnd, placement.colStart, placement.colExtent);
  f.y = PixelTable(grid.RowPpm, grid.ViewRowStart, grid.ViewRowEnd, placement.rowStart, placement.rowExtent);
  NarrowToClip(f.y, clip.top, clip.bottom, f.rowFirst, f.rowLast);
  NarrowToClip(f.x, clip.left, clip.right, f.colFirst, f.colLast);

  // A strip whose corners all lie at or below a level draws nothing for it; these extremes let
  // the level loop pass over such strips without visiting their cells.
  std::vector<float> rowMax(grid.Rows + 1), rowMin(grid.Rows + 1);
  for (int r = f.rowFirst; r <= f.rowLast; ++r) {
    const float* v = grid.row(r);
    float hi = -std::numeric_limits<float>::infinity();
    float lo = std::numeric_limits<float>::infinity();
    for (int c = f.colFirst; c <= f.colLast; ++c) {
      hi = std::max(hi, v[c]);
      lo = std::min(lo, v[c]);
    }
    rowMax[r] = hi;
    rowMin[r] = lo;
  }
  f.stripMax.assign(grid.Rows + 1, 0.0f);
  f.stripMin.assign(grid.Rows + 1, 0.0f);
  for (int r = f.rowFirst; r < f.rowLast; ++r) {
    f.stripMax[r] = std::max(rowMax[r], rowMax[r + 1]);
    f.stripMin[r] = std::min(rowMin[r], rowMin[r + 1]);
  }
  return f;
}

// The values of one level, multiplied by its sign, so that every level is traced as a positive
// one: negation is exact, so this is the same as multiplying each value read.
template <int Sign>
float Signed(float v) {
  return Sign > 0 ? v : -v;
}

// The first column from `col` on at which the top or the bottom row is inside. A cell whose four
// corners are all outside draws nothing and leaves no run open, so the walk jumps over such cells.
template <int Sign>
int NextInsideColumn(const float* top, const float* bottom, int col, int last, double t) {
  while (col <= last && !(Signed<Sign>(top[col]) > t) && !(Signed<Sign>(bottom[col]) > t)) ++col;
  return col;
}

// Crossing of the level on an edge between values a (at pa) and b (at pb), rounded after the
// division: (pb*(a-t) + pa*(t-b)) / (a-b).
int Cross(int pa, int pb, double a, double b, double t) { return Rnd((pb * (a - t) + pa * (t - b)) / (a - b)); }

// One cell: corners A (x0,y0), B (x0,y1), C (x1,y0), D (x1,y1).
struct Cell {
  double a, b, c, d, t;
  int x0, x1, y0, y1;
  int xt() const { return Cross(x0, x1, a, c, t); }
  int xb() const { return Cross(x0, x1, b, d, t); }
  int yr() const { return Cross(y0, y1, c, d, t); }
};

template <int Sign>
void TraceLinesStrip(Surface& s, const ContourGrid& grid, const Frame& f, int r, float t) {
  const float* top = grid.row(r);
  const float* bottom = grid.row(r + 1);
  Cell k{Signed<Sign>(top[f.colFirst]), Signed<Sign>(bottom[f.colFirst]), 0, 0, t, f.x[f.colFirst], 0, f.y[r],
         f.y[r + 1]};
  const int yl = k.a == k.b ? k.y0 : Cross(k.y0, k.y1, k.a, k.b, t);
  if (Sgn(k.y0 - yl) * Sgn(k.y1 - yl) < 1) s.MoveTo(k.x0, yl);

  for (int col = f.colFirst + 1; col <= f.colLast; ++col) {
    if (!(k.a > t) && !(k.b > t)) {
      col = NextInsideColumn<Sign>(top, bottom, col, f.colLast, t);
      if (col > f.colLast) break;
      k.a = Signed<Sign>(top[col - 1]);
      k.b = Signed<Sign>(bottom[col - 1]);
      k.x0 = f.x[col - 1];
    }
    k.c = Signed<Sign>(top[col]);
    k.d = Signed<Sign>(bottom[col]);
    k.x1 = f.x[col];
    const int code = (k.a > t) << 3 | (k.c > t) << 2 | (k.d > t) << 1 | (k.b > t);  // A C D B
    switch (code) {
      case 0b1000: s.LineTo(k.xt(), k.y0); break;
      case 0b1001: s.MoveTo(k.xt(), k.y0); s.LineTo(k.xb(), k.y1); break;
      case 0b1010:
        // B exactly on the level counts with "T or above" here: the top-to-right piece only.
        if (k.b < t) s.LineTo(k.xb(), k.y1);
        s.MoveTo(k.xt(), k.y0);
        s.LineTo(k.x1, k.yr());
        break;
      case 0b1011: s.MoveTo(k.xt(), k.y0); s.LineTo(k.x1, k.yr()); break;
      case 0b1101: s.MoveTo(k.xb(), k.y1); s.LineTo(k.x1, k.yr()); break;
      case 0b1100: s.LineTo(k.x1, k.yr()); break;
      case 0b1110: s.LineTo(k.xb(), k.y1); break;
      case 0b0001: s.LineTo(k.xb(), k.y1); break;
      case 0b0010: s.MoveTo(k.xb(), k.y1); s.LineTo(k.x1, k.yr()); break;
      case 0b0011: s.LineTo(k.x1, k.yr()); break;
      case 0b0101: s.LineTo(k.xb(), k.y1); s.MoveTo(k.xt(), k.y0); s.LineTo(k.x1, k.yr()); break;
      case 0b0100: s.MoveTo(k.xt(), k.y0); s.LineTo(k.x1, k.yr()); break;
      case 0b0110: s.MoveTo(k.xt(), k.y0); s.LineTo(k.xb(), k.y1); break;
      case 0b0111: s.LineTo(k.xt(), k.y0); break;
      default: break;  // all in or all out
    }
    k.a = k.c;
    k.b = k.d;
    k.x0 = k.x1;
  }
}

// The two chains of a run in fill mode. "Extend" overwrites the x of a chain's last point, so that
// a straight stretch of inside cells costs no points; "add" appends.
struct Chains {
  std::vector<Point> upper, lower, polygon;
  static void Extend(std::vector<Point>& chain, int x) { chain.back().x = x; }
  void Begin(std::initializer_list<Point> u, std::initializer_list<Point> l) {
    upper.assign(u);
    lower.assign(l);
  }
  void Draw(Surface& s) {
    polygon.assign(upper.begin(), upper.end());
    polygon.insert(polygon.end(), lower.rbegin(), lower.rend());
    s.Polygon(polygon);
  }
};

enum RunState { kNone = 0, kOpen = 1, kClosed = -1 };

template <int Sign>
void TraceFilledStrip(Surface& s, const ContourGrid& grid, const Frame& f, int r, float t, Chains& ch, int& yl) {
  const float* top = grid.row(r);
  const float* bottom = grid.row(r + 1);
  Cell k{Signed<Sign>(top[f.colFirst]), Signed<Sign>(bottom[f.colFirst]), 0, 0, t, f.x[f.colFirst], 0, f.y[r],
         f.y[r + 1]};
  if (k.a != k.b) yl = Cross(k.y0, k.y1, k.a, k.b, t);
  int run = kNone;
  auto& up = ch.upper;
  auto& lo = ch.lower;

  for (int col = f.colFirst + 1; col <= f.colLast; ++col) {
    if (!(k.a > t) && !(k.b > t)) {
      const int next = NextInsideColumn<Sign>(top, bottom, col, f.colLast, t);
      if (next > col) run = kNone;  // the cells passed over close nothing: both edges are outside
      col = next;
      if (col > f.colLast) break;
      k.a = Signed<Sign>(top[col - 1]);
      k.b = Signed<Sign>(bottom[col - 1]);
      k.x0 = f.x[col - 1];
    }
    k.c = Signed<Sign>(top[col]);
    k.d = Signed<Sign>(bottom[col]);
    k.x1 = f.x[col];
    const int x0 = k.x0, x1 = k.x1, y0 = k.y0, y1 = k.y1;
    const bool open = run == kOpen;
    const bool cIn = k.c > t, dIn = k.d > t;
    const int yr = cIn != dIn ? k.yr() : yl;
    const int code = (k.a > t) << 3 | (k.b > t) << 2 | cIn << 1 | dIn;  // A B C D
    switch (code) {
      case 0b0000: run = kNone; break;
      case 0b0100:
        if (!open) ch.Begin({{x0, yl}}, {{x0, y1}, {k.xb(), y1}});
        else Chains::Extend(lo, k.xb());
        run = kClosed;
        break;
      case 0b0001:
        if (!open) ch.Begin({{x1, yr}}, {{k.xb(), y1}, {x1, y1}});
        run = kOpen;
        break;
      case 0b0101:
        if (!open) ch.Begin({{x0, yl}, {x1, yr}}, {{x0, y1}, {x1, y1}});
        else up.push_back({x1, yr}), Chains::Extend(lo, x1);
        run = kOpen;
        break;
      case 0b0010:
        if (!open) ch.Begin({{k.xt(), y0}, {x1, y0}}, {{x1, yr}});
        run = kOpen;
        break;
      case 0b0110:
        if (!open) {
          ch.Begin({{x0, yl}, {k.xt(), y0}, {x1, y0}}, {{x0, y1}, {k.xb(), y1}, {x1, yr}});
        } else {
          up.push_back({k.xt(), y0}), up.push_back({x1, y0});
          Chains::Extend(lo, k.xb()), lo.push_back({x1, yr});
        }
        run = kOpen;
        break;
      case 0b0011:
        if (!open) ch.Begin({{k.xt(), y0}, {x1, y0}}, {{k.xb(), y1}, {x1, y1}});
        run = kOpen;
        break;
      case 0b0111:
        if (!open) ch.Begin({{x0, yl}, {k.xt(), y0}, {x1, y0}}, {{x0, y1}, {x1, y1}});
        else up.push_back({k.xt(), y0}), up.push_back({x1, y0}), Chains::Extend(lo, x1);
        run = kOpen;
        break;
      case 0b1100:
        if (!open) ch.Begin({{x0, y0}, {k.xt(), y0}}, {{x0, y1}, {k.xb(), y1}});
        else Chains::Extend(up, k.xt()), Chains::Extend(lo, k.xb());
        run = kClosed;
        break;
      case 0b1000:
        if (!open) ch.Begin({{x0, y0}, {k.xt(), y0}}, {{x0, yl}});
        else Chains::Extend(up, k.xt());
        run = kClosed;
        break;
      case 0b1001:
      case 0b1101:
        // A and D inside, C outside. B below the level (a saddle) keeps the band along both sides.
        if (k.b < t) {
          if (!open) ch.Begin({{x0, y0}, {k.xt(), y0}, {x1, yr}}, {{x0, yl}, {k.xb(), y1}, {x1, y1}});
          else Chains::Extend(up, k.xt()), up.push_back({x1, yr}), lo.push_back({k.xb(), y1}), lo.push_back({x1, y1});
        } else {
          if (!open) ch.Begin({{x0, y0}, {k.xt(), y0}, {x1, yr}}, {{x0, y1}, {x1, y1}});
          else Chains::Extend(up, k.xt()), up.push_back({x1, yr}), Chains::Extend(lo, x1);
        }
        run = kOpen;
        break;
      case 0b1010:
        if (!open) ch.Begin({{x0, y0}, {x1, y0}}, {{x0, yl}, {x1, yr}});
        else Chains::Extend(up, x1), lo.push_back({x1, yr});
        run = kOpen;
        break;
      case 0b1110:
        if (!open) ch.Begin({{x0, y0}, {x1, y0}}, {{x0, y1}, {k.xb(), y1}, {x1, yr}});
        else Chains::Extend(up, x1), Chains::Extend(lo, k.xb()), lo.push_back({x1, yr});
        run = kOpen;
        break;
      case 0b1011:
        if (!open) ch.Begin({{x0, y0}, {x1, y0}}, {{x0, yl}, {k.xb(), y1}, {x1, y1}});
        else Chains::Extend(up, x1), lo.push_back({k.xb(), y1}), lo.push_back({x1, y1});
        run = kOpen;
        break;
      case 0b1111:
        if (!open) ch.Begin({{x0, y0}, {x1, y0}}, {{x0, y1}, {x1, y1}});
        else Chains::Extend(up, x1), Chains::Extend(lo, x1);
        run = kOpen;
        break;
    }
    // A run that closed here, or is still open at the last visible column, becomes one polygon.
    if (run != kNone && (run == kClosed || col == f.colLast) && up.size() + lo.size() > 2) {
      ch.Draw(s);
      up.clear();
      lo.clear();
    }
    k.a = k.c;
    k.b = k.d;
    k.x0 = k.x1;
    yl = yr;
  }
}

template <int Sign>
void TraceLevel(Surface& s, const ContourGrid& grid, const Frame& f, float t, bool lines, Chains& chains) {
  int yl = 0;
  for (int r = f.rowFirst; r < f.rowLast; ++r) {
    if ((Sign > 0 ? f.stripMax[r] : -f.stripMin[r]) <= t) continue;
    if (lines) TraceLinesStrip<Sign>(s, grid, f, r, t);
    else TraceFilledStrip<Sign>(s, grid, f, r, t, chains, yl);
  }
}

}  // namespace

bool TraceContour(Surface& surface, const ContourGrid& grid, const LevelTable& levels, const Placement& placement,
                  const ClipRect& clip, int penWidth, platform::Progress& progress, int displayMode) {
  if (grid.Values.empty() || grid.Cols < 1 || grid.Rows < 1 || grid.ViewColEnd == grid.ViewColStart ||
      grid.ViewRowEnd == grid.ViewRowStart)
    return true;
  const Frame frame = MakeFrame(grid, placement, clip);
  const bool lines = displayMode != 0;

  if (grid.FillBackground == 1) {
    surface.SetPen(grid.BackgroundColor, 1);
    surface.SetBrush(grid.BackgroundColor);
    const Point corners[4] = {{clip.left, clip.top}, {clip.right, clip.top}, {clip.right, clip.bottom},
                              {clip.left, clip.bottom}};
    surface.Polygon(corners);
  }

  Chains chains;
  chains.upper.reserve(6 * static_cast<std::size_t>(grid.Cols) + 1);
  chains.lower.reserve(4 * static_cast<std::size_t>(grid.Cols) + 1);
  for (int n = 0; n < levels.DrawCount; ++n) {
    if (!progress.Step(n, levels.DrawCount)) return false;
    const int i = levels.DrawIndex[n];
    const int sign = levels.DrawSign[n];
    const float t = levels.Level[i] * static_cast<float>(sign);
    surface.SetPen(levels.Color[i], lines ? penWidth : 1);
    if (!lines) surface.SetBrush(levels.Color[i]);
    if (sign >= 0) TraceLevel<1>(surface, grid, frame, t, lines, chains);
    else TraceLevel<-1>(surface, grid, frame, t, lines, chains);
  }
  return progress.Step(levels.DrawCount, levels.DrawCount);
}

}  // namespace velk::display
