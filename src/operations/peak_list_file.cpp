#include "operations/peak_list_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "core/atomic_write.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

constexpr const char* kTitle = "2D Peak List";
constexpr const char* kColumns =
    "No.\tF2 (ppm)\tF1 (ppm)\tF2 (Hz)\tF1 (Hz)\tHeight\tF2 point\tF1 point\tF2 position\tF1 position";
constexpr std::uintmax_t kLargestList = 16u << 20;  // far beyond 1000 rows

platform::Outcome NotAList(const std::string& why) {
  return {1, {"File Read Error", "This is not a peak list: " + why, platform::Buttons::Ok, platform::Icon::Warning}};
}

double PpmOf(const model::Spectrum2D& s, int axis, float position) {
  const double step = s.axis[axis].Resolution;
  const double index = step != 0 ? position / step : 0.0;
  return s.extras[axis].ppmFirst + index * s.extras[axis].ppmStep;
}

// Numbers that read back to the same float: nine significant digits.
std::string Exact(float v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", v);
  return text;
}

std::string TextList(const model::Spectrum2D& s, const std::string& name) {
  std::ostringstream out;
  out << kTitle << "\nFile\t" << name << "\nThresholds";
  for (float t : s.peaks.thresholds) out << '\t' << Exact(t);
  out << "\nPeaks\t" << s.peaks.peaks.size() << '\n' << kColumns << '\n';
  for (const PeakRow& r : PeakRows(s))
    out << r.number << '\t' << FixedDecimals(r.ppmF2, 6) << '\t' << FixedDecimals(r.ppmF1, 6) << '\t'
        << FixedDecimals(r.hzF2, 3) << '\t' << FixedDecimals(r.hzF1, 3) << '\t' << Exact(r.peak.Height) << '\t'
        << r.peak.PointF2 << '\t' << r.peak.PointF1 << '\t' << Exact(r.peak.PosF2) << '\t' << Exact(r.peak.PosF1)
        << '\n';
  return out.str();
}

std::string CsvList(const model::Spectrum2D& s) {
  std::ostringstream out;
  out << "No.,F2 (ppm),F1 (ppm),F2 (Hz),F1 (Hz),Height,F2 point,F1 point\n";
  for (const PeakRow& r : PeakRows(s))
    out << r.number << ',' << FixedDecimals(r.ppmF2, 6) << ',' << FixedDecimals(r.ppmF1, 6) << ','
        << FixedDecimals(r.hzF2, 3) << ',' << FixedDecimals(r.hzF1, 3) << ',' << Exact(r.peak.Height) << ','
        << r.peak.PointF2 << ',' << r.peak.PointF1 << '\n';
  return out.str();
}

std::string JsonList(const model::Spectrum2D& s, const std::string& name) {
  nlohmann::ordered_json peaks = nlohmann::ordered_json::array();
  for (const PeakRow& r : PeakRows(s))
    peaks.push_back({{"number", r.number},
                     {"f2_ppm", r.ppmF2},
                     {"f1_ppm", r.ppmF1},
                     {"f2_hz", r.hzF2},
                     {"f1_hz", r.hzF1},
                     {"height", r.peak.Height},
                     {"f2_point", r.peak.PointF2},
                     {"f1_point", r.peak.PointF1}});
  nlohmann::ordered_json list = {{"file", name}, {"count", s.peaks.peaks.size()}, {"peaks", peaks}};
  return list.dump(2) + "\n";
}

std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t tab; (tab = line.find('\t', start)) != std::string::npos; start = tab + 1)
    fields.push_back(line.substr(start, tab - start));
  fields.push_back(line.substr(start));
  return fields;
}

bool ToFloat(const std::string& text, float& v) {
  char* end = nullptr;
  errno = 0;
  v = std::strtof(text.c_str(), &end);
  return !text.empty() && *end == '\0' && errno == 0;
}

bool ToInt(const std::string& text, std::int32_t& v) {
  char* end = nullptr;
  errno = 0;
  const long n = std::strtol(text.c_str(), &end, 10);
  v = static_cast<std::int32_t>(n);
  return !text.empty() && *end == '\0' && errno == 0 && n == v;
}

}  // namespace

std::string FixedDecimals(double v, int decimals) {
  char text[48];
  std::snprintf(text, sizeof text, "%.*f", decimals, v);
  return text;
}

std::vector<PeakRow> PeakRows(const model::Spectrum2D& s) {
  std::vector<PeakRow> rows;
  for (const model::Peak2D& peak : s.peaks.peaks) {
    PeakRow r;
    r.number = static_cast<int>(rows.size()) + 1;
    r.ppmF2 = PpmOf(s, F2, peak.PosF2);
    r.ppmF1 = PpmOf(s, F1, peak.PosF1);
    r.hzF2 = r.ppmF2 * s.extras[F2].absFreq0ppm;
    r.hzF1 = r.ppmF1 * s.extras[F1].absFreq0ppm;
    r.peak = peak;
    rows.push_back(r);
  }
  return rows;
}

std::string FormatPeakList(const model::Spectrum2D& s, const std::string& name, PeakListFormat format) {
  switch (format) {
    case PeakListFormat::Csv:
      return CsvList(s);
    case PeakListFormat::Json:
      return JsonList(s, name);
    case PeakListFormat::Text:
      break;
  }
  return TextList(s, name);
}

platform::Outcome Save_Peak_List(const std::filesystem::path& file, const model::Spectrum2D& s, const std::string& name,
                                 PeakListFormat format) {
  const std::string text = FormatPeakList(s, name, format);
  return core::WriteAtomically(file, [&](std::ostream& out) { return static_cast<bool>(out << text); });
}

platform::Outcome ParsePeakList(const std::string& text, model::PeakTable2D& table) {
  std::istringstream in(text);
  std::string line;
  if (!std::getline(in, line) || line != kTitle) return NotAList("the first line is not \"2D Peak List\"");
  model::PeakTable2D read;
  std::int32_t count = -1;
  bool inRows = false;
  while (std::getline(in, line)) {
    const std::vector<std::string> f = SplitTabs(line);
    if (!inRows) {
      if (f[0] == "Thresholds" && f.size() == 6) {
        for (int i = 0; i < 5; ++i)
          if (!ToFloat(f[i + 1], read.thresholds[i])) return NotAList("a threshold is not a number");
      } else if (f[0] == "Peaks" && f.size() == 2) {
        if (!ToInt(f[1], count) || count < 0) return NotAList("the count of peaks is not a number");
      } else if (line == kColumns) {
        inRows = true;
      }
      continue;
    }
    if (line.empty()) continue;
    if (f.size() != 10) return NotAList("a row has not 10 columns");
    if (read.peaks.size() >= static_cast<std::size_t>(model::kMaxPeaks2D)) break;
    model::Peak2D peak;
    if (!ToFloat(f[5], peak.Height) || !ToInt(f[6], peak.PointF2) || !ToInt(f[7], peak.PointF1) ||
        !ToFloat(f[8], peak.PosF2) || !ToFloat(f[9], peak.PosF1))
      return NotAList("a value of row " + f[0] + " is not a number");
    read.peaks.push_back(peak);
  }
  if (!inRows) return NotAList("the heading of the columns is missing");
  if (count >= 0 && count <= model::kMaxPeaks2D && static_cast<std::size_t>(count) != read.peaks.size())
    return NotAList("the count of peaks does not match the rows");
  table = std::move(read);
  return {};
}

platform::Outcome ReadPeakList(const std::filesystem::path& file, model::PeakTable2D& table) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) return {-1, {"File Read Error", file.string() + ": " + error.message()}};
  if (size > kLargestList) return NotAList("the file is far too large");
  std::ifstream in(file, std::ios::binary);
  std::string text(static_cast<std::size_t>(size), '\0');
  if (!in.read(text.data(), static_cast<std::streamsize>(size)))
    return {-1, {"File Read Error", file.string() + ": cannot be read"}};
  return ParsePeakList(text, table);
}

}  // namespace velk::operations
