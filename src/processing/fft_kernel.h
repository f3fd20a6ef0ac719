#pragma once
// The reference transform: forward (e^-i), unscaled, natural order in and out, radix 2 by
// decimation in frequency with the shared sine table. Every other transform is measured against it.
#include <cstdint>

#include "processing/sine_table.h"

namespace velk::processing {

// In place on n points (a power of two, not checked). Element k of the result is the sum over m
// of x[m] * exp(-2 pi i k m / n); no factor 1/n. T is float for matrix traces and double for the
// temporaries of the sequential forms.
template <class T>
void FftKernel(T* re, T* im, std::int32_t n, const SineTable& table = SharedSineTable());

// Exchanges the two halves so that index 0 is the lowest frequency and n/2 the carrier.
template <class T>
void HalfSwap(T* re, T* im, std::int32_t n);

}  // namespace velk::processing
