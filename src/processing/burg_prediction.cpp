#include "processing/burg_prediction.h"

#include <algorithm>

namespace velk::processing {

using cd = std::complex<double>;

std::vector<cd> BurgCoefficients(const cd* x, std::int32_t n, int order) {
  order = std::clamp(order, 0, std::max(n - 1, 0));
  std::vector<cd> f(x, x + n), b(x, x + n), a{1.0};
  for (int m = 0; m < order; ++m) {
    cd num = 0;
    double den = 0;
    for (std::int32_t k = m + 1; k < n; ++k) {
      num += f[k] * std::conj(b[k - 1]);
      den += std::norm(f[k]) + std::norm(b[k - 1]);
    }
    if (!(den > 0)) break;
    const cd reflection = -2.0 * num / den;
    const std::vector<cd> old = a;
    a.push_back(0.0);
    for (int i = 1; i <= m + 1; ++i) a[i] += reflection * std::conj(old[m + 1 - i]);
    // Downwards, so that b[k - 1] is still the error of the previous order.
    for (std::int32_t k = n - 1; k > m; --k) {
      const cd fk = f[k] + reflection * b[k - 1];
      b[k] = b[k - 1] + std::conj(reflection) * f[k];
      f[k] = fk;
    }
  }
  return a;
}

void BurgExtend(cd* x, std::int32_t n, std::int32_t target, int order) {
  if (target <= n || n < 2) return;
  const std::vector<cd> a = BurgCoefficients(x, n, order);
  const auto p = static_cast<std::int32_t>(a.size()) - 1;
  for (std::int32_t k = n; k < target; ++k) {
    cd sum = 0;
    for (std::int32_t i = 1; i <= p; ++i) sum -= a[i] * x[k - i];
    x[k] = sum;
  }
}

}  // namespace velk::processing
