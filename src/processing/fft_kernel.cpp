#include "processing/fft_kernel.h"

#include <cmath>
#include <utility>

namespace velk::processing {
namespace {

template <class T>
void BitReverse(T* re, T* im, std::int32_t n) {
  std::int32_t j = n / 2;
  for (std::int32_t i = 1; i < n; ++i) {
    if (j < i) {
      std::swap(re[i], re[j]);
      std::swap(im[i], im[j]);
    }
    std::int32_t k = n / 2;
    while (k >= 1 && k <= j) {
      j -= k;
      k /= 2;
    }
    j += k;
  }
}

}  // namespace

template <class T>
void FftKernel(T* re, T* im, std::int32_t n, const SineTable& s) {
  const std::int64_t step = std::lrint(static_cast<double>(kTableSize) / n);
  std::int32_t length = n;
  std::int64_t blocks = 1;
  while (length > 1) {
    length /= 2;
    std::int64_t start = 0;
    for (std::int64_t b = 0; b < blocks; ++b) {
      std::int64_t i = start;
      std::int64_t j = start + length;
      std::int64_t ks = 0;
      std::int64_t kc = ks + kTableSize / 4;
      for (std::int32_t m = 0; m < length; ++m) {
        // The differences are carried in double precision; every stored element is rounded to T.
        const double xt = static_cast<double>(re[i]) - static_cast<double>(re[j]);
        const double yt = static_cast<double>(im[i]) - static_cast<double>(im[j]);
        re[i] = re[j] + re[i];
        im[i] = im[j] + im[i];
        const double sine = s[ks];
        const double cosine = s[kc];
        re[j] = static_cast<T>(sine * yt + cosine * xt);
        im[j] = static_cast<T>(cosine * yt - sine * xt);
        ks += step * blocks;
        kc += step * blocks;
        ++i;
        ++j;
      }
      start += 2 * length;
    }
    blocks *= 2;
  }
  BitReverse(re, im, n);
}

template <class T>
void HalfSwap(T* re, T* im, std::int32_t n) {
  const std::int32_t half = n / 2;
  for (std::int32_t i = 0; i < half; ++i) {
    std::swap(re[i], re[half + i]);
    std::swap(im[i], im[half + i]);
  }
}

template void FftKernel<float>(float*, float*, std::int32_t, const SineTable&);
template void FftKernel<double>(double*, double*, std::int32_t, const SineTable&);
template void HalfSwap<float>(float*, float*, std::int32_t);
template void HalfSwap<double>(double*, double*, std::int32_t);

}  // namespace velk::processing
