#include "operations/peak_print_list.h"

#include <algorithm>
#include <cstdio>

#include "operations/peak_list_file.h"
#include "operations/peak_messages.h"

namespace velk::operations {
namespace {

namespace words = peak_messages;

// At least one decimal and at most `decimals`, trailing zeros beyond the first dropped.
std::string Trimmed(double v, int decimals) {
  std::string s = FixedDecimals(v, std::clamp(decimals, 1, 7));
  const std::size_t point = s.find('.');
  while (s.size() > point + 2 && s.back() == '0') s.pop_back();
  return s;
}

// One axis value in the chosen unit with the other in brackets: Hz to 2 decimals, ppm to 4.
std::string AxisText(double ppm, double hz, const PrintListFormat& f) {
  switch (f.unit) {
    case PrintListUnit::HzPpm:
      return Trimmed(hz, f.decimals) + "(" + FixedDecimals(ppm, 4) + ")";
    case PrintListUnit::KHzPpm:
      return Trimmed(hz / 1000, f.decimals) + "(" + FixedDecimals(ppm, 4) + ")";
    case PrintListUnit::PpmHz:
      break;
  }
  return Trimmed(ppm, f.decimals) + "(" + FixedDecimals(hz, 2) + ")";
}

}  // namespace

PrintList PrintListRows(const model::Spectrum2D& s, const std::string& fileName, const PrintListFormat& format) {
  PrintList list;
  list.heading = {std::string(words::kListHeading), std::string(words::kListFile) + fileName,
                  std::string(words::kListComment) + s.comment};
  const bool hz = format.unit == PrintListUnit::HzPpm, khz = format.unit == PrintListUnit::KHzPpm;
  list.captions = {std::string(words::kColumnNumber),
                   std::string(hz    ? words::kColumnF2HzPpm
                               : khz ? words::kColumnF2KHzPpm
                                     : words::kColumnF2PpmHz),
                   std::string(hz    ? words::kColumnF1HzPpm
                               : khz ? words::kColumnF1KHzPpm
                                     : words::kColumnF1PpmHz),
                   std::string(words::kColumnHeight)};
  char height[32];
  for (const PeakRow& r : PeakRows(s)) {
    std::snprintf(height, sizeof height, "%.6g", r.peak.Height);
    list.rows.push_back(
        {std::to_string(r.number), AxisText(r.ppmF2, r.hzF2, format), AxisText(r.ppmF1, r.hzF1, format), height});
  }
  return list;
}

}  // namespace velk::operations
