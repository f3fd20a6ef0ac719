#include "processing/window_expressions.h"

#include <algorithm>

namespace velk::processing {

WindowExpressions DefaultWindowExpressions() {
  WindowExpressions e;
  // t runs over the FID's time; Start and End are the region of the function in percent of it.
  e.initial = {
      "\\< W(t) = exp(-\\g1 p\\g0 \\'b7BF\\'b7t)",
      "\\< W(t) = sin(\\g1 p\\g0 \\'b7(t - Start)/(End - Start))",
      "\\< W(t) = sin\\+1 2\\+0 (\\g1 p\\g0 \\'b7(t - Start)/(End - Start))",
      "\\< W(t) = exp(\\g1 p\\g0 \\'b7BF\\'b7t - (\\g1 p\\g0 \\'b7GF\\'b7(t - t\\-1 peak\\-0 ))\\+1 2\\+0 )",
      "\\< W(x) = a\\-1 0\\-0  - a\\-1 1\\-0 cos(2\\g1 p\\g0 x) + a\\-1 2\\-0 cos(4\\g1 p\\g0 x) - "
      "a\\-1 3\\-0 cos(6\\g1 p\\g0 x)",
  };
  e.current = e.initial;
  return e;
}

namespace {
bool Valid(int type) { return type >= 0 && type < kWindowTypes; }
}  // namespace

void SetInitialExpression(WindowExpressions& expressions, int type) {
  if (Valid(type)) expressions.current[type] = expressions.initial[type];
}

void SetCurrentExpression(WindowExpressions& expressions, int type, std::string text) {
  if (Valid(type)) expressions.current[type] = std::move(text);
}

const std::string& CurrentExpression(const WindowExpressions& expressions, int type) {
  return expressions.current[std::clamp(type, 0, kWindowTypes - 1)];
}

}  // namespace velk::processing
