#include "processing/linear_prediction.h"

#include <algorithm>
#include <utility>

#include "processing/lp_solver.h"
#include "processing/messages.h"
#include "processing/parallel.h"

namespace velk::processing {
namespace {

using model::Plane;

enum class Direction { Forward, Backward };
enum class Failure { None, InvGJ, Root };

// Scratch of one thread for a whole run: matrices sized once for Order and Points.
struct LpScratch {
  ComplexMatrix M, H, A, b, Hb, c;
  std::vector<std::int16_t> permutation;
  std::vector<float> pRe, pIm, rRe, rIm;
  std::vector<double> qRe, qIm;
  std::vector<float> traceRe, traceIm;
};

LpScratch MakeScratch(const LpSetting& s, std::int32_t traceLength) {
  LpScratch w;
  w.M.Resize(s.Points, s.Order);
  w.H.Resize(s.Order, s.Points);
  w.b.Resize(s.Points, 1);
  w.pRe.resize(s.Order + 1);
  w.pIm.resize(s.Order + 1);
  w.rRe.resize(s.Order + 1);
  w.rIm.resize(s.Order + 1);
  w.qRe.resize(s.Order + 1);
  w.qIm.resize(s.Order + 1);
  w.traceRe.resize(traceLength);
  w.traceIm.resize(traceLength);
  return w;
}

// A trace seen through its buffer: reads past the buffer give 0.
struct Trace {
  float* re;
  float* im;
  std::int32_t length;
  float Re(std::int64_t i) const { return i >= 0 && i < length ? re[i] : 0.0f; }
  float Im(std::int64_t i) const { return i >= 0 && i < length ? im[i] : 0.0f; }
};

// Normal equations for start s (1-based); the coefficients end up in w.c.
Failure Solve(const Trace& d, Direction dir, std::int32_t s, LpScratch& w) {
  const std::int32_t order = w.M.columns, points = w.M.rows;
  // Forward: M(k,h) = d(h+k+s-2), b(k) = d(Order+k+s-1); backward: M(k,h) = d(h+k+s-1), b(k) = d(s+k-1).
  const std::int64_t first = dir == Direction::Forward ? s : s + 1;       // index of M(1,1)
  const std::int64_t target = dir == Direction::Forward ? order + s : s;  // index of b(1)
  for (std::int32_t k = 0; k < points; ++k) {
    for (std::int32_t h = 0; h < order; ++h) {
      w.M.re[w.M.index(k, h)] = d.Re(first + k + h);
      w.M.im[w.M.index(k, h)] = d.Im(first + k + h);
      w.H.re[w.H.index(h, k)] = d.Re(first + k + h);
      w.H.im[w.H.index(h, k)] = -d.Im(first + k + h);
    }
    w.b.re[k] = d.Re(target + k);
    w.b.im[k] = d.Im(target + k);
  }
  ComplexMatMul(w.H, w.M, w.A);
  if (!InvertComplexMatrix(w.A, w.permutation)) return Failure::InvGJ;
  ComplexMatMul(w.H, w.b, w.Hb);
  ComplexMatMul(w.A, w.Hb, w.c);
  return Failure::None;
}

// Roots of the characteristic polynomial, reflected into the unit circle, multiplied out again:
// q(h) multiplies the sample h steps away. Forward polynomials take c newest first.
Failure Stabilise(Direction dir, LpScratch& w) {
  const std::int32_t order = w.M.columns;
  w.pRe[0] = 1;
  w.pIm[0] = 0;
  for (std::int32_t k = 1; k <= order; ++k) {
    const std::int32_t from = dir == Direction::Forward ? order - k : k - 1;
    w.pRe[k] = -w.c.re[from];
    w.pIm[k] = -w.c.im[from];
  }
  for (int n = order + 1; n >= 2;) {
    float x = 0.5f, y = 0.5f;
    if (PolynomialRoot(w.pRe.data(), w.pIm.data(), n, x, y, 100) == 0) return Failure::Root;
    --n;
    w.rRe[n] = -x;
    w.rIm[n] = -y;
  }
  for (std::int32_t j = 1; j <= order; ++j) {
    const double m = double(w.rRe[j]) * w.rRe[j] + double(w.rIm[j]) * w.rIm[j];
    if (m > 1) {
      w.rRe[j] = static_cast<float>(w.rRe[j] / m);
      w.rIm[j] = static_cast<float>(w.rIm[j] / m);
    }
  }
  std::fill(w.qRe.begin(), w.qRe.end(), 0.0);
  std::fill(w.qIm.begin(), w.qIm.end(), 0.0);
  w.qRe[0] = 1;
  for (std::int32_t j = 1; j <= order; ++j)
    for (std::int32_t k = j; k >= 1; --k) {
      const double r = w.rRe[j], i = w.rIm[j];
      w.qRe[k] += w.qRe[k - 1] * r - w.qIm[k - 1] * i;
      w.qIm[k] += w.qRe[k - 1] * i + w.qIm[k - 1] * r;
    }
  for (std::int32_t k = 1; k <= order; ++k) {
    w.qRe[k] = -w.qRe[k];
    w.qIm[k] = -w.qIm[k];
  }
  return Failure::None;
}

// The plain coefficients as q(h): the backward direction without the stability check.
void TakeCoefficients(LpScratch& w) {
  for (std::int32_t h = 1; h <= w.M.columns; ++h) {
    w.qRe[h] = w.c.re[h - 1];
    w.qIm[h] = w.c.im[h - 1];
  }
}

std::string FailureLine(std::int64_t trace, std::int32_t s, Failure f) {
  return " " + std::to_string(trace) + "   " + std::to_string(s) +
         std::string(f == Failure::InvGJ ? messages::kFailedInvGJ : messages::kFailedRoot);
}

struct Attempts {
  std::int32_t wrapOffset;  // the start wraps to 1 when Points + Order + s + wrapOffset > data count
  std::int32_t dataCount;
  std::int64_t traceNumber;
  std::vector<std::pair<std::int64_t, std::string>>* lines;  // null in the previews
};

// Up to eleven attempts, the start moving on by one after each failure; the last failure, or None.
Failure Coefficients(const Trace& d, Direction dir, const LpSetting& s, bool stabilise, const Attempts& a,
                     LpScratch& w) {
  std::int32_t start = dir == Direction::Forward ? s.Start : s.BackPoints;
  for (int attempt = 1;; ++attempt) {
    Failure f = Solve(d, dir, start, w);
    if (f == Failure::None) {
      if (!stabilise) {
        TakeCoefficients(w);
        return Failure::None;
      }
      f = Stabilise(dir, w);
      if (f == Failure::None) return f;
    }
    if (a.lines) a.lines->emplace_back(a.traceNumber, FailureLine(a.traceNumber, start, f));
    ++start;
    if (s.Points + s.Order + start + a.wrapOffset > a.dataCount) start = 1;
    if (attempt > 10) return f;
  }
}

void ExtendForward(const Trace& d, std::int32_t order, std::int32_t n0, std::int32_t n1, const LpScratch& w) {
  for (std::int32_t i = n0; i < std::min(n1, d.length); ++i) {
    double re = 0, im = 0;
    for (std::int32_t h = 1; h <= order; ++h) {
      re += w.qRe[h] * d.Re(i - h) - w.qIm[h] * d.Im(i - h);
      im += w.qRe[h] * d.Im(i - h) + w.qIm[h] * d.Re(i - h);
    }
    d.re[i] = static_cast<float>(re);
    d.im[i] = static_cast<float>(im);
  }
}

void ExtendBackward(const Trace& d, std::int32_t order, std::int32_t back, const LpScratch& w) {
  for (std::int32_t j = std::min(back, d.length) - 1; j >= 0; --j) {
    double re = 0, im = 0;
    for (std::int32_t h = 1; h <= order; ++h) {
      re += w.qRe[h] * d.Re(j + h) - w.qIm[h] * d.Im(j + h);
      im += w.qRe[h] * d.Im(j + h) + w.qIm[h] * d.Re(j + h);
    }
    d.re[j] = static_cast<float>(re);
    d.im[j] = static_cast<float>(im);
  }
}

// The work of one trace in a matrix run.
struct TraceJob {
  Direction dir;
  const LpSetting& s;
  std::int32_t dataCount, n0, n1;
  std::int32_t wrapOffset;
};

void PredictTrace(const Trace& d, const TraceJob& job, std::int64_t number,
                  std::vector<std::pair<std::int64_t, std::string>>& lines, LpScratch& w) {
  const bool stabilise = job.dir == Direction::Forward || job.s.StabilityCheck == 1;
  const Attempts attempts{job.wrapOffset, job.dataCount, number, &lines};
  if (Coefficients(d, job.dir, job.s, stabilise, attempts, w) != Failure::None) return;
  if (job.dir == Direction::Forward)
    ExtendForward(d, job.s.Order, job.n0, job.n1, w);
  else
    ExtendBackward(d, job.s.Order, job.s.BackPoints, w);
}

enum class Along { Columns, Rows };

bool RunMatrix(Plane& X, Plane& Y, Along along, std::int32_t traces, std::int32_t offset, std::int32_t length,
               const TraceJob& job, const LpRun& run) {
  if (traces <= 0 || job.s.Order < 1 || job.s.Points < 1) return true;
  const int threads = ResolveThreads(run.workers.threads);
  std::vector<LpScratch> scratch;
  for (int t = 0; t < threads; ++t) scratch.push_back(MakeScratch(job.s, length));
  std::vector<std::vector<std::pair<std::int64_t, std::string>>> lines(threads);
  static platform::NoProgress none;
  platform::Progress& progress = run.workers.progress ? *run.workers.progress : none;
  const bool finished = ForEachChunk(traces, 1, threads, progress, [&](std::int64_t t, std::int32_t, int worker) {
    LpScratch& w = scratch[worker];
    const auto index = static_cast<std::int32_t>(t);
    if (along == Along::Rows) {
      const Trace d{X.row(index).data() + offset, Y.row(index).data() + offset, length};
      PredictTrace(d, job, t, lines[worker], w);
      return;
    }
    for (std::int32_t j = 0; j < length; ++j) {
      w.traceRe[j] = X.at(index, j + offset);
      w.traceIm[j] = Y.at(index, j + offset);
    }
    const Trace d{w.traceRe.data(), w.traceIm.data(), length};
    PredictTrace(d, job, t, lines[worker], w);
    for (std::int32_t j = 0; j < length; ++j) {
      X.at(index, j + offset) = w.traceRe[j];
      Y.at(index, j + offset) = w.traceIm[j];
    }
  });
  std::vector<std::pair<std::int64_t, std::string>> all;
  for (auto& part : lines) all.insert(all.end(), part.begin(), part.end());
  std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& line : all) run.list.push_back(std::move(line.second));
  return finished;
}

platform::Message Error(std::string_view title, std::string_view text) {
  return {std::string(title), std::string(text), platform::Buttons::Ok, platform::Icon::Warning, true};
}

}  // namespace

bool LpForwardF1(Plane& X, Plane& Y, const LpSetting& s, std::int32_t fidLength, std::int32_t targetLength,
                 std::int32_t columns, const LpRun& run) {
  if (targetLength <= fidLength) return true;
  const TraceJob job{Direction::Forward, s, fidLength, fidLength, targetLength, -1};
  return RunMatrix(X, Y, Along::Columns, columns, 0, std::min(targetLength, X.rows), job, run);
}

bool LpForwardF2(Plane& X, Plane& Y, const LpSetting& s, std::int32_t fidLength, std::int32_t targetLength,
                 std::int32_t rows, const LpRun& run) {
  if (targetLength <= fidLength) return true;
  const TraceJob job{Direction::Forward, s, fidLength, fidLength, targetLength, -1};
  return RunMatrix(X, Y, Along::Rows, rows, 0, std::min(targetLength, X.stride), job, run);
}

bool LpBackwardF1(Plane& X, Plane& Y, const LpSetting& s, std::int32_t dataRows, std::int32_t columns,
                  const LpRun& run) {
  const TraceJob job{Direction::Backward, s, dataRows, 0, 0, 0};
  return RunMatrix(X, Y, Along::Columns, columns, 0, std::min(dataRows, X.rows), job, run);
}

bool LpBackwardF2(Plane& X, Plane& Y, const LpSetting& s, std::int32_t dataPoints, std::int32_t size,
                  std::int32_t fidShift, std::int32_t rows, const LpRun& run) {
  const std::int32_t f = std::max(fidShift, 0);
  if (s.Points + s.Order + s.BackPoints + f > size) return true;
  const TraceJob job{Direction::Backward, s, dataPoints - f, 0, 0, 0};
  return RunMatrix(X, Y, Along::Rows, rows, f, std::min(dataPoints, X.stride) - f, job, run);
}

platform::Outcome LpForwardTrace(float* re, float* im, const LpSetting& s, std::int32_t fidLength,
                                 std::int32_t targetLength) {
  if (s.Order < 1 || s.Points < 1 || targetLength <= fidLength) return {};
  LpScratch w = MakeScratch(s, 0);
  const Trace d{re, im, targetLength};
  const Failure f = Coefficients(d, Direction::Forward, s, true, {0, fidLength, 0, nullptr}, w);
  if (f != Failure::None)
    return {1, Error(messages::kDataError, f == Failure::InvGJ ? messages::kCannotInvGJ : messages::kCannotRootForward)};
  ExtendForward(d, s.Order, fidLength, targetLength, w);
  return {};
}

platform::Outcome LpBackwardTrace(float* re, float* im, const LpSetting& s, std::int32_t fidLength) {
  if (s.Order < 1 || s.Points < 1) return {};
  LpScratch w = MakeScratch(s, 0);
  const Trace d{re, im, fidLength};
  const Failure f = Coefficients(d, Direction::Backward, s, s.StabilityCheck == 1, {0, fidLength, 0, nullptr}, w);
  if (f != Failure::None)
    return {1, Error(messages::kDataError, f == Failure::InvGJ ? messages::kCannotInvGJ : messages::kCannotRootBackward)};
  ExtendBackward(d, s.Order, s.BackPoints, w);
  return {};
}

platform::Message CheckLpBack(const LpSetting& s, std::int32_t dataPoints) {
  const bool ok = s.Order <= s.Points && s.BackPoints + s.Points + s.Order <= dataPoints && s.Order > 0 &&
                  s.Points > 0 && s.BackPoints > 0;
  return ok ? platform::Message{} : Error(messages::kLpError, messages::kIllegalLpParameter);
}

namespace {

// The text of the first failing forward check, or empty.
std::string_view ForwardProblem(const LpSetting& s, std::int32_t dataPoints) {
  if (s.Order > s.Points) return messages::kOrderAbovePoints;
  if (s.Points + s.Order + s.Start - 1 > dataPoints || s.Order < 1 || s.Points < 1 || s.Start < 0)
    return messages::kOutsideData;
  return {};
}

std::string_view BackwardProblem(const LpSetting& s, std::int32_t dataPoints) {
  if (s.Order > s.Points) return messages::kOrderAbovePoints;
  if (s.Points + s.Order + s.BackPoints > dataPoints || s.Order < 1 || s.Points < 1 || s.BackPoints < 0)
    return messages::kOutsideData;
  return {};
}

// The four checks in the dialog's order: F1 forward, F2 forward, F2 backward, F1 backward.
std::string_view LastProblem(const LpAxisCheck& f1, const LpAxisCheck& f2) {
  std::string_view found;
  auto keep = [&](std::string_view text) {
    if (!text.empty()) found = text;
  };
  if (f1.forward) keep(ForwardProblem(*f1.setting, f1.dataPoints));
  if (f2.forward) keep(ForwardProblem(*f2.setting, f2.dataPoints));
  if (f2.setting->BackwardOn) keep(BackwardProblem(*f2.setting, f2.dataPoints));
  if (f1.setting->BackwardOn) keep(BackwardProblem(*f1.setting, f1.dataPoints));
  return found;
}

}  // namespace

platform::Message CheckLpDialog(LpAxisCheck f1, LpAxisCheck f2) {
  for (LpAxisCheck* axis : {&f1, &f2}) {
    LpSetting& s = *axis->setting;
    s.Start = std::max(s.Start, 10);
    s.Start = std::min(s.Start, axis->dataPoints - s.Order - s.Points + 1);
  }
  const std::string_view text = LastProblem(f1, f2);
  return text.empty() ? platform::Message{} : Error(messages::kLpParameterError, text);
}

platform::Message CheckLpSequence(const LpAxisCheck& f1, const LpAxisCheck& f2) {
  return LastProblem(f1, f2).empty() ? platform::Message{}
                                     : Error(messages::kLpSettingError, messages::kCheckLpParameter);
}

}  // namespace velk::processing
