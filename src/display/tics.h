#pragma once
// Tic steps and labels of the axes and the grid.
#include <functional>
#include <string>
#include <vector>

namespace velk::display {

// A round step for the range a..b (signed like b - a) and the first tic inside the range.
// Returns the leading digit of the step (1, 2, 4, 5 or 10); step 0 when a equals b.
int NiceTicStep(double a, double b, double& first, double& span, double& step);
// The first tic for a fixed step; step becomes 0 (no tics) for an empty range or when more than
// 50 steps would be needed. The step takes the sign of b - a.
void FixedTicStart(double a, double b, double& first, double& span, double& step);

struct TicSetting {
  bool automatic = true;  // "AXIS TIC MODE": automatic, or the step and divisions below
  double step = 1.0;
  int divisions = 10;  // minor divisions of a major step
};

struct Tic {
  double value;
  bool major;
  std::string label;  // major tics only
};

// The label of a tic: zero within 1 % of a step of it; exponent form for large or tiny values.
std::string TicLabel(double value, double step);

// The tics of the range a..b. In automatic mode the step grows (at most 11 times) until a step on
// `pixels` pixels, times 0.9, is at least the widest label that `labelWidth` measures.
std::vector<Tic> MakeTics(double a, double b, int pixels, const TicSetting& setting,
                          const std::function<int(const std::string&)>& labelWidth);

}  // namespace velk::display
