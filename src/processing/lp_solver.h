#pragma once
// The numeric pieces of linear prediction: complex matrices kept as two single-precision arrays,
// their product, Gauss-Jordan inversion, and one root of a complex polynomial by a damped Newton
// iteration with deflation.
#include <cstdint>
#include <vector>

namespace velk::processing {

struct ComplexMatrix {
  std::int32_t rows = 0, columns = 0;
  std::vector<float> re, im;  // row-major

  void Resize(std::int32_t r, std::int32_t c) {
    rows = r;
    columns = c;
    re.assign(static_cast<std::size_t>(r) * c, 0.0f);
    im.assign(static_cast<std::size_t>(r) * c, 0.0f);
  }
  std::size_t index(std::int32_t r, std::int32_t c) const { return static_cast<std::size_t>(r) * columns + c; }
};

// out = a * b, accumulated in single precision in the order of the inner index.
void ComplexMatMul(const ComplexMatrix& a, const ComplexMatrix& b, ComplexMatrix& out);

// In place; false when a pivot's modulus is <= 1e-15 (the matrix is then left half-eliminated).
bool InvertComplexMatrix(ComplexMatrix& a, std::vector<std::int16_t>& permutation);

inline constexpr int kMaxPolynomialLength = 102;

// One root of the polynomial of n complex coefficients re/im[0 .. n-1], highest power first,
// starting from (x, y). On success returns the iteration count (>= 1), leaves the root in (x, y)
// and the deflated polynomial in re/im[0 .. n-2]; returns 0 when the iteration limit is passed.
int PolynomialRoot(float* re, float* im, int n, float& x, float& y, int limit);

}  // namespace velk::processing
