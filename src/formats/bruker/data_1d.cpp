// The data routines of 1D sets: the FID (fid) and the processed spectrum (1r, 1i).
#include <algorithm>
#include <cmath>

#include "formats/bruker/data_file.h"
#include "formats/bruker/messages.h"
#include "formats/fid_scaling.h"

namespace velk::formats::bruker {

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
  RemoveTailAndScale(std::span(s.re).first(points), std::span(s.im).first(points));
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
