// The data routines of 1D sets: the FID (fid) and the processed spectrum (1r, 1i).
#include <algorithm>
#include <cmath>

#include "formats/bruker/data_file.h"
#include "formats/bruker/messages.h"

namespace velk::formats::bruker {
namespace {

// The mean of the last 40 % of each channel is the receiver's offset; it is subtracted.
void RemoveOffset(model::Spectrum1D& s, std::int32_t points) {
  const std::int32_t n = static_cast<std::int32_t>(std::nearbyint(0.4 * points));
  if (n <= 0) return;
  for (std::vector<float>* channel : {&s.re, &s.im}) {
    double sum = 0;
    for (std::int32_t i = points - n; i < points; ++i) sum += (*channel)[i];
    const float mean = static_cast<float>(sum / n);
    for (std::int32_t i = 0; i < points; ++i) (*channel)[i] -= mean;
  }
}

void ScaleToMaximum(model::Spectrum1D& s, std::int32_t paddedSize) {
  float maximum = 0.1f;
  for (std::int32_t i = 0; i < paddedSize; ++i) maximum = std::max(maximum, std::fabs(s.re[i]));
  for (std::int32_t i = 0; i < paddedSize; ++i) {
    s.re[i] /= maximum;
    s.im[i] /= maximum;
  }
}

}  // namespace

platform::Outcome ReadDataBru(const fs::path& fid, model::Spectrum1D& s, LoadState& state,
                              model::ReadContext& context) {
  const std::int32_t points = state.ComplexPoints;
  if (points <= 0 || s.params.POINT < points) return {1, messages::InvalidData()};
  DataFile data;
  if (auto failure = LoadDataFile(fid, static_cast<std::uint64_t>(state.PointsInFile1D), false,
                                  2 * static_cast<std::uint64_t>(points), state, context.prompt, data))
    return {1, *failure};
  std::vector<float> values(2 * static_cast<std::size_t>(points));
  DecodeElements(data.bytes, 0, values.size(), data.type, data.order, values);
  if (AllocateSpectrum1D(s, s.params.POINT) != 0) return {1, messages::DataSizeTooLarge()};
  for (std::int32_t i = 0; i < points; ++i) {
    s.re[i] = values[2 * i];
    s.im[i] = -values[2 * i + 1];  // this vendor's imaginary channel has the opposite sign
  }
  RemoveOffset(s, points);
  ScaleToMaximum(s, s.params.POINT);
  return {};
}

platform::Outcome ReadDataBruProc(const fs::path& file, const std::string& tag, model::Spectrum1D& s,
                                  LoadState& state, model::ReadContext& context) {
  const std::int32_t n = s.params.POINT;
  if (n <= 0 || s.re.size() < static_cast<std::size_t>(n)) return {1, messages::InvalidData()};
  DataFile data;
  if (auto failure = LoadDataFile(file, static_cast<std::uint64_t>(state.PointsInFile1D), tag == "1R",
                                  static_cast<std::uint64_t>(n), state, context.prompt, data))
    return {1, *failure};
  std::vector<float> values(static_cast<std::size_t>(n));
  DecodeElements(data.bytes, 0, values.size(), data.type, data.order, values);
  // The file runs from high to low frequency; the record from low to high.
  std::vector<float>& target = tag == "1R" ? s.re : s.im;
  for (std::int32_t i = 0; i < n; ++i) target[i] = values[n - 1 - i];
  return {};
}

}  // namespace velk::formats::bruker
