#pragma once
// The level and scale of a 1D FID as the readers leave it.
#include <cstdint>
#include <span>

namespace velk::formats {

// The mean of the last 40 % of the real and of the imaginary points is subtracted from every
// point; then both parts are divided by the largest absolute real value (at least floor: 0.1 for
// the instruments' files, 1e-11 for JCAMP-DX, whose values may be scaled to any size), which is
// returned (the FID's maximum).
float RemoveTailAndScale(std::span<float> re, std::span<float> im, float floor = 0.1f);

// The size a FID of count complex points is kept at: the smallest power of two, at least 2.
std::int32_t PaddedFidSize(std::int64_t count);

}  // namespace velk::formats
