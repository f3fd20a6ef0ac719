#pragma once
// Forward extension of a complex signal by an autoregressive model fitted with Burg's recursion
// (reflection coefficients from the forward and backward errors together). Burg's coefficients
// always give a stable predictor, so an extension several times the signal's length stays bounded.
#include <complex>
#include <cstdint>
#include <vector>

namespace velk::processing {

// The prediction coefficients a[1..order] (a[0] = 1) of x[0 .. n-1]: x[k] ~ -sum a[i] x[k - i].
// Fewer than order + 1 points give the coefficients of the order they allow.
std::vector<std::complex<double>> BurgCoefficients(const std::complex<double>* x, std::int32_t n, int order);

// x[n .. target-1] predicted from x[0 .. n-1]; x holds at least target points.
void BurgExtend(std::complex<double>* x, std::int32_t n, std::int32_t target, int order);

}  // namespace velk::processing
